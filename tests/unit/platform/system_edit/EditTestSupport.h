// Shared pieces of the EDIT class tests: a fixture that resets the hosted system around each
// test and gives a parent window that records the WM_COMMAND notifications it gets, helpers to
// create edit windows of either kind, to type, press keys and pump messages as a host does.
#pragma once

#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace QzTest
{

using Range = std::pair<DWORD, DWORD>;

struct Notification
{
    WORD id;
    WORD code;
    HWND from;
};

class EditTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // A child edit window of the parent, id 7, 100 x 24 unless told; CreateEditA is the ANSI kind.
    HWND CreateEdit(DWORD style, int width = 100, int height = 24, const wchar_t* text = L"");
    HWND CreateEditA(DWORD style, const char* text = "");

    // Every notification code the parent got, in order; the list is then empty.
    std::vector<WORD> TakeCodes();
    const std::vector<Notification>& Notifications() const;

    static std::wstring TextW(HWND hwnd);
    // WM_KEYDOWN with Shift and Ctrl held as asked (GetKeyState), released afterwards.
    static void Press(HWND hwnd, int vk, bool shift = false, bool ctrl = false);
    // Dispatches every queued message through the wide or the ANSI loop; answers how many.
    static int Pump(bool ansi = false);
    static Range Sel(HWND hwnd);
    // The clipboard's CF_UNICODETEXT, or "<none>".
    static std::wstring ClipboardText();
    static void SetClipboardW(const std::wstring& text);
    static void SetClipboardA(const std::string& text);

    static LRESULT Send(HWND hwnd, UINT msg, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(hwnd, msg, wParam, lParam);
    }
    static void SetSel(HWND hwnd, int start, int end) { Send(hwnd, EM_SETSEL, WPARAM(start), end); }
    // WM_CHAR for each character, sent as the message loop would deliver it.
    static void Type(HWND hwnd, const std::wstring& text)
    {
        for (wchar_t ch : text)
            Send(hwnd, WM_CHAR, static_cast<WPARAM>(ch), 1);
    }

    HWND m_hParent = nullptr;
};

} // namespace QzTest
