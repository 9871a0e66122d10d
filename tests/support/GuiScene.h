// A GUI manager as a game host runs one, under a test's control: a temporary data root with the
// files the test gives (an empty layout file ini/Test.ini and effect placement unless given),
// the manager created on the harness's main window and initialised with "Test.ini" on a
// 1024 x 768 screen, and every message of the main window passed to its OnMessage. Records can
// be put straight into its layout manager.
#pragma once

#include "support/GeometryPrint.h"
#include "support/QzHarness.h"
#include "support/TempDataDir.h"

#include "framework/QzGuiMgr.h"
#include "layout/QzGuiWndInfo.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace QzTest
{

// A message as a window's procedure got it.
struct Seen
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// How many of the messages are `message`.
inline int CountOf(const std::vector<Seen>& seen, UINT message)
{
    int count = 0;
    for (const Seen& s : seen)
        count += s.message == message ? 1 : 0;
    return count;
}

class GuiScene : public ::testing::Test
{
protected:
    // Path under the data root and its text; a null text writes no file.
    using Files = std::initializer_list<std::pair<const char*, const char*>>;
    using Extras = std::initializer_list<std::pair<const char*, const char*>>;

    explicit GuiScene(Files files = {});
    ~GuiScene() override;

    // The record of window nId under nParent: the rectangle relative to the parent, extra keys.
    QzGui::CQzGuiWndInfo* AddRecord(DWORD nParent, DWORD nId, RECT rc, Extras extras = {});
    // One frame of the harness in which the manager draws its dialogs.
    void Frame();
    std::vector<DrawCall> Calls(DrawKind kind) { return m_harness.Device().Calls(kind); }
    // The trace lines of the calls of one kind drawn so far.
    std::string Trace(DrawKind kind) { return RecordingDevice::Trace(Calls(kind)); }

    Harness m_harness;
    TempDataDir m_root;
    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    // What OnMessage answered to the last mouse message from the main window; -1 before one.
    BOOL m_nMouseResult = -1;
};

} // namespace QzTest
