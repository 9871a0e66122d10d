// Shared pieces of the hosted window system tests: a record of every message the test window
// procedures receive, two recording classes (one ANSI, one Unicode) whose procedures pass
// everything on to DefWindowProc, and a fixture that resets the system around each test.
#pragma once

#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace QzTest
{

struct RecordedMessage
{
    HWND hwnd;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
    char kind;         // 'A' or 'W': the procedure that saw it, or a test's own tag
    std::wstring text; // WM_SETTEXT text and CREATESTRUCT title, as the procedure saw them
};

std::vector<RecordedMessage>& Recorded();
// The recorded messages of one number, in order.
std::vector<RecordedMessage> RecordedOf(UINT msg);
std::vector<UINT> RecordedNumbers(HWND hwnd);
// Every recorded message as (window, number, wParam), in order.
using Delivery = std::tuple<HWND, UINT, WPARAM>;
std::vector<Delivery> RecordedDeliveries();
// The wParam of every recorded message of one number, in order.
std::vector<WPARAM> RecordedWParams(UINT msg);
// Expects the window text to be kWideTwoChars, whichever kind of caller reads it.
void ExpectTwoCharText(HWND hwnd);

LRESULT CALLBACK RecordingProcA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK RecordingProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

extern const char kAnsiClass[];
extern const wchar_t kWideClass[];

// GBK bytes of the two characters U+4E2D U+6587.
extern const char kGbkTwoChars[];
extern const wchar_t kWideTwoChars[];

class SystemWindowsTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    HWND CreateAnsi(HWND parent = nullptr, DWORD style = 0);
    HWND CreateWide(HWND parent = nullptr, DWORD style = 0);
    // Dispatches every posted message with the given kind of the message loop.
    int PumpA();
    int PumpW();
};

} // namespace QzTest
