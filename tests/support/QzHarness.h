// The test harness: what a game host gives the library, under a test's control. It resets the
// hosted system, takes the clock into manual mode, installs a recording device and captures the
// log, and creates the host's main window, whose messages go to a handler the test sets (the
// GUI manager's OnMessage once there is one). Input is sent the way a Win32 host sends it:
// posted to the main window (keys and characters to the focused window) and then pumped.
#pragma once

#include "support/LogCapture.h"
#include "support/RecordingDevice.h"

#include "platform/system/QzSystem.h"

#include <functional>
#include <string>

namespace QzTest
{

class Harness
{
public:
    using MessageHandler = std::function<LRESULT(UINT message, WPARAM wParam, LPARAM lParam)>;

    static constexpr DWORD kStartTime = 100000;
    static constexpr DWORD kFrameMs = 16;

    explicit Harness(int width = 1024, int height = 768);
    ~Harness();
    Harness(const Harness&) = delete;
    Harness& operator=(const Harness&) = delete;

    HWND MainWindow() const { return m_hWnd; }
    RecordingDevice& Device() { return m_device; }
    LogCapture& Log() { return m_log; }

    // The handler sees every message of the main window; what it returns nonzero is taken as
    // handled, the rest goes to DefWindowProcW.
    void SetMessageHandler(MessageHandler handler) { m_handler = std::move(handler); }
    // Moves the main window (its top-left is the client origin of the library's coordinates).
    void MoveMainWindow(int x, int y);

    // The millisecond clock the library reads (QzPlatform::NowMs).
    void SetTime(DWORD ms);
    void Advance(DWORD ms);
    DWORD Now() const;

    // Mouse input in client coordinates of the main window; the wheel in screen coordinates,
    // as Windows sends it.
    void MouseMove(int x, int y, WPARAM keys = 0);
    void LButtonDown(int x, int y);
    void LButtonUp(int x, int y);
    void LButtonDblClk(int x, int y);
    void Click(int x, int y);
    void RButtonDown(int x, int y);
    void RButtonUp(int x, int y);
    void MButtonDown(int x, int y);
    void MButtonUp(int x, int y);
    void Wheel(int screenX, int screenY, int delta);

    // Keyboard input to the focused window (the main window when nothing has the focus); the
    // key state that GetKeyState reports follows.
    void KeyDown(int vk);
    void KeyUp(int vk);
    void Key(int vk);
    void Char(wchar_t ch);
    void Type(const std::wstring& text);

    // Dispatches every posted message.
    void Pump();
    // One frame: pump, BeginFrame, draw, EndFrame, then the clock moves on by kFrameMs.
    void Frame(const std::function<void()>& draw = {});

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    void PostMouse(UINT message, int x, int y, WPARAM keys);
    HWND KeyTarget() const;

    RecordingDevice m_device;
    LogCapture m_log;
    MessageHandler m_handler;
    HWND m_hWnd = nullptr;
};

} // namespace QzTest
