// A data root for the layout manager's tests: the harness (captured log, fresh hosted system),
// a temporary folder as the current directory, and a layout manager without a GUI manager.
#pragma once

#include "layout/QzGuiInfoMgr.h"
#include "support/GeometryPrint.h"
#include "support/QzHarness.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace QzLayoutTest
{

using QzGui::CQzGuiInfoMgr;
using QzGui::IQzGuiWndInfo;

// A record's place and size (x, y, w, h), to compare in one expectation.
using Place = std::array<DWORD, 4>;
inline Place PlaceOf(const IQzGuiWndInfo* pInfo)
{
    return {pInfo->GetX(), pInfo->GetY(), pInfo->GetWidth(), pInfo->GetHeight()};
}

class LayoutTest : public ::testing::Test
{
protected:
    void WriteIni(const std::string& name, const std::string& text) const
    {
        data.Write("ini/" + name, text);
    }
    // Writes ini/<name> and loads it as the layout file.
    BOOL Load(const std::string& text, const std::string& name = "Layout.ini")
    {
        WriteIni(name, text);
        return mgr.LoadLayout(name.c_str());
    }
    IQzGuiWndInfo* Record(DWORD parent, DWORD ctrl) { return mgr.GetWndInfo(parent, ctrl, 2, 0); }
    QzTest::LogCapture& Log() { return harness.Log(); }

    QzTest::Harness harness{800, 600};
    QzTest::TempDataDir data;
    CQzGuiInfoMgr mgr;
};

} // namespace QzLayoutTest
