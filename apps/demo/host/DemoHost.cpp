#include "DemoHost.h"

#include "HostClipboard.h"

#include "framework/IQzGuiHelper.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzCursorMgr.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <sys/stat.h>

namespace
{

const wchar_t* const kClassName = L"QzGuiDemoHost";
// The main window takes double clicks, as a game's window does for its GUI's sake.
const UINT kClassDoubleClicks = 0x0008; // CS_DBLCLKS
const DWORD kFrameMs = 16;
const char* const kLayoutFile = "DemoLayout.ini";
const DWORD kFlyingDialogId = 300;
// F5 flies the flying window in or out; F12 switches the manager's debug mode.
const int kFlyKey = VK_F5;
const WPARAM kDebugKey = 0x7B; // VK_F12

// The windows of the sample layout besides the showcase: id and label.
struct DemoDialog
{
    DWORD nId;
    const char* pszLabel;
};
const DemoDialog kDialogs[] = {
    {201, "1 centred, margins"}, {202, "2 stretched"},
    {203, "0 plain, offsets"},   {204, "4 animation group"},
    {205, "6 outline"},          {206, "5 bitmap file"},
    {300, "Flies in (F5)"},      {400, "Topmost, front effect"},
};

bool MakeFolder(const std::string& path)
{
    std::string partial;
    for (size_t i = 0; i <= path.size(); ++i)
    {
        if (i == path.size() || path[i] == '/')
        {
            if (!partial.empty())
                mkdir(partial.c_str(), 0755);
        }
        if (i < path.size())
            partial.push_back(path[i]);
    }
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

CDemoHost::CDemoHost(int width, int height, DemoRenderer renderer)
    : m_nWidth(width), m_nHeight(height), m_pScreen(CDemoScreen::Create(renderer, width, height))
{
    QzPlatform::SetRenderDevice(&m_pScreen->GetDevice());
}

CDemoHost::~CDemoHost()
{
    // The host unregisters its dialogs and deletes them before it releases the manager.
    if (m_pGuiMgr)
    {
        m_pGuiMgr->RemoveDialog(&m_showcase);
        m_pGuiMgr->RemoveDialog(&m_controls);
        m_pGuiMgr->RemoveDialog(&m_collections);
        m_pGuiMgr->RemoveDialog(&m_loginDialog);
        for (auto& dialog : m_vecDialogs)
            m_pGuiMgr->RemoveDialog(dialog.get());
    }
    m_vecDialogs.clear();
    m_pFlyingDialog = nullptr;
    if (m_pGuiMgr)
        m_pGuiMgr->Release();
    m_pGuiMgr = nullptr;
    if (m_hWnd)
        DestroyWindow(m_hWnd);
    QzPlatform::SetRenderDevice(nullptr);
}

bool CDemoHost::Create(bool bDebug)
{
    WNDCLASSW wc = {};
    wc.style = kClassDoubleClicks;
    wc.lpfnWndProc = &CDemoHost::WindowProc;
    wc.lpszClassName = kClassName;
    RegisterClassW(&wc);
    m_nClassStyle = wc.style;
    m_hWnd = CreateWindowExW(0, kClassName, L"QzGui demo", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                             m_nWidth, m_nHeight, nullptr, nullptr, nullptr, nullptr);
    if (!m_hWnd)
        return false;
    SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    // The client's window is the active one and has the keyboard, as on Windows after start-up.
    SetFocus(m_hWnd);
    m_pGuiMgr = QzGui::CreateGuiMgr();
    if (!m_pGuiMgr ||
        !m_pGuiMgr->Init(GetModuleHandleA(nullptr), m_hWnd, CShowcaseDialog::kId, kLayoutFile))
        return false;
    if (bDebug)
        QzGui::GetGuiHelper()->DebugOn();
    if (QzGui::CQzCursorMgr* cursors = m_pGuiMgr->GetCursorMgr())
        cursors->SetCursorByName("Normal");
    AddDialogs();
    if (auto* mgr = dynamic_cast<QzGui::CQzGuiMgr*>(m_pGuiMgr))
    {
        for (QzGui::CQzDialog* dialog : mgr->GetDialogs())
        {
            if (dialog->IsVisible())
                m_vecResident.push_back(dialog);
        }
        m_places.NotePlaced(*mgr);
    }
    return true;
}

// The hosted system keeps a class's style but has no GetClassLong to read it back, and makes no
// double clicks itself: the host that registered the class answers for it.
bool CDemoHost::WantsDoubleClicks() const
{
    return (m_nClassStyle & kClassDoubleClicks) != 0;
}

void CDemoHost::AddDialogs()
{
    m_pGuiMgr->AddDialog(&m_showcase, nullptr, false);
    m_showcase.ShowWindow(SW_SHOW);
    m_pGuiMgr->AddDialog(&m_controls, nullptr, false);
    m_controls.ShowWindow(SW_SHOW);
    m_pPanelCaption = std::make_unique<CPanelCaption>(m_pGuiMgr, CControlsDialog::kPanelId);
    m_pGuiMgr->SetDrawHook(m_pPanelCaption.get(), CControlsDialog::kPanelId);
    for (const DemoDialog& entry : kDialogs)
    {
        m_vecDialogs.push_back(std::make_unique<CLabelDialog>(entry.nId, entry.pszLabel));
        CLabelDialog* dialog = m_vecDialogs.back().get();
        m_pGuiMgr->AddDialog(dialog, nullptr, false);
        if (entry.nId == kFlyingDialogId)
            m_pFlyingDialog = dialog;
        else
            dialog->ShowWindow(SW_SHOW);
    }
    // Hidden until "Bag" and "Login"; above the others when shown.
    m_pGuiMgr->AddDialog(&m_collections, nullptr, false);
    m_pGuiMgr->AddDialog(&m_loginDialog, nullptr, false);
}

void CDemoHost::ToggleFlyingDialog()
{
    if (!m_pFlyingDialog)
        return;
    m_pFlyingDialog->ShowWindow(m_pFlyingDialog->IsWindowVisible() ? SW_HIDE : SW_SHOW);
}

void CDemoHost::ToggleDebugMode()
{
    if (m_pGuiMgr)
        m_pGuiMgr->SetDebugMode(m_pGuiMgr->GetDebugMode() ? 0 : 1);
}

bool CDemoHost::IsResident(const QzGui::CQzDialog* dialog) const
{
    return std::find(m_vecResident.begin(), m_vecResident.end(), dialog) != m_vecResident.end();
}

// Escape closes the topmost dialog the user opened, as games close their windows, unless the
// keys are being typed into a box: a bound edit box (its system window has the focus) or a
// window of the manager with the key focus.
bool CDemoHost::CloseTopDialog()
{
    auto* mgr = dynamic_cast<QzGui::CQzGuiMgr*>(m_pGuiMgr);
    if (!mgr || mgr->GetKeyFocus() || GetFocus() != m_hWnd)
        return false;
    const std::list<QzGui::CQzDialog*>& dialogs = mgr->GetDialogs();
    for (auto it = dialogs.rbegin(); it != dialogs.rend(); ++it)
    {
        QzGui::CQzDialog* dialog = *it;
        if (dialog->GetParent() || !dialog->IsVisible() || IsResident(dialog))
            continue;
        dialog->ShowWindow(SW_HIDE);
        return true;
    }
    return false;
}

// Before a move is routed the pointer is the "Normal" cursor of ini/Cursor.ini again, as
// Windows gives a window its class cursor (none here: the manager's own) on every move; the
// window the move reaches may set a system cursor (an edit box its I-beam).
void CDemoHost::ResetCursor()
{
    if (QzGui::CQzCursorMgr* cursors = m_pGuiMgr->GetCursorMgr())
    {
        cursors->SetCursorByName(nullptr);
        cursors->SetCursorByName("Normal");
    }
}

// After the move, the cursor the window under the pointer names: the host asks that window with
// WM_SETCURSOR, as Windows asks a window on every move.
void CDemoHost::UpdateCursor(LPARAM lParam)
{
    const POINT pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (QzGui::CQzDialog* dialog = m_pGuiMgr->DialogFromPoint(pt))
        dialog->SendMessage(WM_SETCURSOR, 0, 0);
}

LRESULT CDemoHost::OnHostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_pGuiMgr)
        return 0;
    if (message == WM_MOUSEMOVE)
        ResetCursor();
    const BOOL handled = m_pGuiMgr->OnMessage(message, wParam, lParam);
    if (message == WM_MOUSEMOVE)
        UpdateCursor(lParam);
    if (handled)
        return 1;
    // What no window took belongs to the game: here, a key that flies a window, Escape that
    // closes one and the characters the showcase prints.
    if (message == WM_KEYDOWN && wParam == static_cast<WPARAM>(kFlyKey))
    {
        ToggleFlyingDialog();
        return 1;
    }
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE && CloseTopDialog())
        return 1;
    if (message == WM_CHAR)
    {
        m_showcase.OnChar(static_cast<wchar_t>(wParam));
        return 1;
    }
    return 0;
}

LRESULT CALLBACK CDemoHost::WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* host = reinterpret_cast<CDemoHost*>(GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    if (host && host->OnHostMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

void CDemoHost::PumpMessages()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        // The game's loop looks at its keys before it dispatches them: F12 is the debug key.
        const bool repeat = (msg.lParam & (1 << 30)) != 0;
        if (msg.message == WM_KEYDOWN && msg.wParam == kDebugKey && !repeat)
        {
            ToggleDebugMode();
            continue;
        }
        DispatchMessageW(&msg);
    }
}

void CDemoHost::RunFrame()
{
    PumpMessages();
    PollBundle();
    m_pScreen->GetDevice().BeginFrame();
    if (m_pGuiMgr)
    {
        m_pGuiMgr->Show();
        if (m_pLiveReload)
            m_pLiveReload->GetPanel().Draw(m_pScreen->GetDevice());
        // The software cursor is the host's to draw, last, above everything, unless a window
        // set a system cursor, which the window shows instead.
        QzGui::CQzCursorMgr* cursors = m_pGuiMgr->GetCursorMgr();
        if (cursors && !::GetCursor())
            cursors->DrawCursor();
    }
    m_pScreen->GetDevice().EndFrame();
}

void CDemoHost::PostMouse(UINT message, int x, int y, WPARAM keys, int wheel)
{
    QzPlatform::Host::SetCursorPos(x, y);
    if (message != WM_MOUSEWHEEL)
    {
        PostMessageW(m_hWnd, message, keys, MAKELPARAM(x, y));
        return;
    }
    RECT rc = {};
    GetWindowRect(m_hWnd, &rc);
    PostMessageW(m_hWnd, WM_MOUSEWHEEL, MAKEWPARAM(keys, wheel),
                 MAKELPARAM(x + rc.left, y + rc.top));
}

void CDemoHost::PostInput(const DemoInput& input)
{
    switch (input.kind)
    {
    case DemoInput::Mouse:
        PostMouse(input.message, input.x, input.y, input.keys, input.wheel);
        break;
    case DemoInput::Key:
        PostKey(input);
        break;
    case DemoInput::Char:
        PostMessageW(KeyboardTarget(), WM_CHAR, static_cast<WPARAM>(input.code),
                     static_cast<LPARAM>(input.lParam));
        break;
    case DemoInput::Compose:
        KeyboardTarget();
        QzPlatform::Host::InjectImeComposition(QzPlatform::Utf8ToWide(input.text).c_str());
        break;
    case DemoInput::Result:
        PostImeResult(input.text);
        break;
    case DemoInput::Clipboard:
        PumpMessages();
        WriteHostClipboardText(input.text);
        break;
    case DemoInput::Size:
        Resize(input.x, input.y);
        break;
    case DemoInput::Shot:
        break;
    }
}

// GetKeyState answers for the key and the modifiers as they are once the key message is taken
// from the queue: everything posted before is handled first.
void CDemoHost::PostKey(const DemoInput& input)
{
    HWND target = KeyboardTarget();
    QzPlatform::Host::SetKeyState(VK_SHIFT, (input.modifiers & kModShift) != 0);
    QzPlatform::Host::SetKeyState(VK_CONTROL, (input.modifiers & kModControl) != 0);
    QzPlatform::Host::SetKeyState(VK_MENU, (input.modifiers & kModAlt) != 0);
    const bool down = input.message == WM_KEYDOWN || input.message == WM_SYSKEYDOWN;
    if (input.vk != VK_SHIFT && input.vk != VK_CONTROL && input.vk != VK_MENU)
        QzPlatform::Host::SetKeyState(input.vk, down);
    PostMessageW(target, input.message, static_cast<WPARAM>(input.vk),
                 static_cast<LPARAM>(input.lParam));
}

// A result the focus window's input context refuses (no context, or a closed one) reaches the
// window as the characters the user typed.
void CDemoHost::PostImeResult(const std::string& text)
{
    HWND target = KeyboardTarget();
    const std::wstring wide = QzPlatform::Utf8ToWide(text);
    if (QzPlatform::Host::InjectImeResult(wide.c_str()))
        return;
    for (wchar_t ch : wide)
        PostMessageW(target, WM_CHAR, static_cast<WPARAM>(ch), 1);
}

void CDemoHost::Resize(int width, int height)
{
    width = std::clamp(width, 1, 8192);
    height = std::clamp(height, 1, 8192);
    if (width == m_nWidth && height == m_nHeight)
        return;
    m_nWidth = width;
    m_nHeight = height;
    if (m_pScreen->Resize(width, height))
        QzPlatform::SetRenderDevice(&m_pScreen->GetDevice());
    if (m_hWnd)
        MoveWindow(m_hWnd, 0, 0, width, height, TRUE);
    if (m_pGuiMgr)
        m_pGuiMgr->SetScreenSize(width, height);
    // The layout may place dialogs by the screen's size: they are where it put them.
    if (auto* mgr = dynamic_cast<QzGui::CQzGuiMgr*>(m_pGuiMgr))
        m_places.NotePlaced(*mgr);
}

void CDemoHost::RunStep(const DemoStep& step)
{
    switch (step.kind)
    {
    case DemoStep::Frame:
        for (int i = 0; i < step.value; ++i)
        {
            QzPlatform::Host::AdvanceTime(kFrameMs);
            RunFrame();
        }
        break;
    case DemoStep::Wait:
        for (int waited = 0; waited < step.value; waited += kFrameMs)
        {
            QzPlatform::Host::AdvanceTime(kFrameMs);
            RunFrame();
        }
        break;
    case DemoStep::Move:
        PostMouse(WM_MOUSEMOVE, step.x, step.y, 0);
        break;
    case DemoStep::Down:
        PostMouse(WM_LBUTTONDOWN, step.x, step.y, MK_LBUTTON);
        break;
    case DemoStep::Up:
        PostMouse(WM_LBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::RDown:
        PostMouse(WM_RBUTTONDOWN, step.x, step.y, MK_RBUTTON);
        break;
    case DemoStep::RUp:
        PostMouse(WM_RBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::Click:
        PostMouse(WM_LBUTTONDOWN, step.x, step.y, MK_LBUTTON);
        PostMouse(WM_LBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::Wheel:
        PostMouse(WM_MOUSEWHEEL, step.x, step.y, 0, step.value);
        break;
    case DemoStep::Key:
        PressKey(step.value, step.modifier);
        break;
    case DemoStep::Char:
    {
        HWND target = KeyboardTarget();
        for (wchar_t ch : QzPlatform::Utf8ToWide(step.text))
            PostMessageW(target, WM_CHAR, static_cast<WPARAM>(ch), 1);
        break;
    }
    case DemoStep::Compose:
        TurnImeOn(KeyboardTarget());
        QzPlatform::Host::InjectImeComposition(QzPlatform::Utf8ToWide(step.text).c_str());
        break;
    case DemoStep::Ime:
        TurnImeOn(KeyboardTarget());
        QzPlatform::Host::InjectImeResult(QzPlatform::Utf8ToWide(step.text).c_str());
        break;
    case DemoStep::Reload:
        ReloadFiles({std::string("ini/") + kLayoutFile});
        break;
    case DemoStep::Shot:
        break;
    }
}

// Keyboard input goes to the window that has the focus once the input before it (a click that
// binds an edit box, say) has been handled, as Windows routes it from its input queue.
HWND CDemoHost::KeyboardTarget()
{
    PumpMessages();
    return GetFocus() ? GetFocus() : m_hWnd;
}

// The user who composes has the input method on (Ctrl+Space, or the language bar) in the window
// that has the focus.
void CDemoHost::TurnImeOn(HWND hWnd)
{
    HIMC hImc = ImmGetContext(hWnd);
    if (!hImc)
        return;
    ImmSetOpenStatus(hImc, TRUE);
    ImmReleaseContext(hWnd, hImc);
}

// The messages of a key are dispatched while it is down, so that GetKeyState answers for it
// and for the modifier held around it as it would while the user holds them.
void CDemoHost::PressKey(int nKey, int nModifier)
{
    HWND target = KeyboardTarget();
    if (nModifier)
    {
        QzPlatform::Host::SetKeyState(nModifier, true);
        PostMessageW(target, WM_KEYDOWN, static_cast<WPARAM>(nModifier), 1);
    }
    QzPlatform::Host::SetKeyState(nKey, true);
    PostMessageW(target, WM_KEYDOWN, static_cast<WPARAM>(nKey), 1);
    // The characters TranslateMessage makes of keys without text: Backspace, Tab, Enter and
    // Escape are their own; Ctrl+letter is its control character (Ctrl+V is 0x16).
    if (nModifier == VK_CONTROL && nKey >= 'A' && nKey <= 'Z')
        PostMessageW(target, WM_CHAR, static_cast<WPARAM>(nKey - 'A' + 1), 1);
    else if (nModifier != VK_CONTROL &&
             (nKey == VK_BACK || nKey == VK_TAB || nKey == VK_RETURN || nKey == VK_ESCAPE))
        PostMessageW(target, WM_CHAR, static_cast<WPARAM>(nKey), 1);
    PumpMessages();
    QzPlatform::Host::SetKeyState(nKey, false);
    PostMessageW(target, WM_KEYUP, static_cast<WPARAM>(nKey), 0xC0000001);
    if (nModifier)
    {
        PumpMessages();
        QzPlatform::Host::SetKeyState(nModifier, false);
        PostMessageW(target, WM_KEYUP, static_cast<WPARAM>(nModifier), 0xC0000001);
    }
}

void CDemoHost::UseManualClock(DWORD startMs)
{
    if (m_bManualClock)
        return;
    QzPlatform::Host::SetTime(startMs);
    m_bManualClock = true;
}

bool CDemoHost::RunScript(const CDemoScript& script, const std::string& outDir, std::string& error)
{
    // The manual clock starts once; a second script goes on from where the first stopped.
    UseManualClock();
    RunFrame();
    for (const DemoStep& step : script.Steps())
    {
        if (step.kind == DemoStep::Shot)
        {
            RunFrame();
            if (!SaveShot(outDir, step.text, error))
                return false;
            continue;
        }
        RunStep(step);
    }
    return true;
}

bool CDemoHost::SaveShot(const std::string& outDir, const std::string& name, std::string& error)
{
    if (!MakeFolder(outDir))
    {
        error = outDir + ": cannot create the folder";
        return false;
    }
    const std::string path = outDir + "/" + name + ".png";
    if (!m_pScreen->SavePng(path))
    {
        error = path + ": cannot write";
        return false;
    }
    return true;
}

bool CDemoHost::WatchBundle(const std::string& root)
{
    if (!m_pLiveReload)
        m_pLiveReload = std::make_unique<CLiveReload>(root);
    return m_pLiveReload->Start();
}

void CDemoHost::PollBundle()
{
    if (!m_pLiveReload)
        return;
    const std::vector<std::string> files = m_pLiveReload->Poll();
    if (!files.empty())
        ReloadFiles(files);
}

bool CDemoHost::ReloadFiles(const std::vector<std::string>& files)
{
    auto* mgr = dynamic_cast<QzGui::CQzGuiMgr*>(m_pGuiMgr);
    if (!mgr)
        return false;
    if (!m_pLiveReload)
        m_pLiveReload = std::make_unique<CLiveReload>(".");
    if (!m_pLiveReload->Check(files))
        return false;
    m_places.Save(*mgr);
    m_collections.SaveState();
    CLiveReload::Reload(*mgr, files);
    m_places.Restore(*mgr);
    m_collections.RestoreState();
    return true;
}

const CReloadPanel* CDemoHost::GetReloadPanel() const
{
    return m_pLiveReload ? &m_pLiveReload->GetPanel() : nullptr;
}
