// What every fuzz target shares: the platform's memory files in place of the disk, so that an
// input reaches the readers without a system call; quiet log and diagnostic sinks, so that the
// thousands of data errors a run provokes cost little; and a render device that knows every
// image, so that drawing goes all the way to the device. The targets that drive a GUI manager
// share its host and a screen of dialogs and windows.
#pragma once

#include "framework/QzBaseWindow.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "platform/render/NullRenderDevice.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzLog.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/kernel/QzProfileCache.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace QzFuzz
{

class CQuietSinks : public QzPlatform::ILogSink, public QzPlatform::IDiagnosticSink
{
public:
    void Write(const QzPlatform::LogRecord&) override {}
    bool Discards() const override { return true; }
    void OnAssert(const char*, const char*, int) override {}
    void OnLogMsg(const std::string&) override {}
};

// Every image exists: "name_<w>x<h>.png" is w by h pixels (1 to 4096), any other 64 by 32;
// pixels are transparent in a checkerboard. Nothing is drawn.
class CFuzzDevice : public QzPlatform::CNullRenderDevice
{
public:
    QzPlatform::TextureId LoadTexture(const std::string& path) override
    {
        int width = 64;
        int height = 32;
        const size_t cross = path.find_last_of('x');
        if (cross != std::string::npos && cross > 0)
        {
            const size_t start = path.find_last_not_of("0123456789", cross - 1) + 1;
            const int w = std::atoi(path.substr(start, cross - start).c_str());
            const int h = std::atoi(path.c_str() + cross + 1);
            if (w > 0 && w <= 4096 && h > 0 && h <= 4096)
            {
                width = w;
                height = h;
            }
        }
        return static_cast<QzPlatform::TextureId>((width << 13) | height);
    }
    QzPlatform::SizeI GetTextureSize(QzPlatform::TextureId texture) const override
    {
        QzPlatform::SizeI size;
        size.cx = static_cast<int>(texture >> 13);
        size.cy = static_cast<int>(texture & 0x1FFF);
        return size;
    }
    bool IsTransparent(QzPlatform::TextureId texture, int x, int y) const override
    {
        const QzPlatform::SizeI size = GetTextureSize(texture);
        return x < 0 || y < 0 || x >= size.cx || y >= size.cy || ((x ^ y) & 1) != 0;
    }
};

// The folder the memory files are named from: the current directory at start. Nothing is
// written there.
inline std::filesystem::path& DataRoot()
{
    static std::filesystem::path root;
    return root;
}

// Once per process, from LLVMFuzzerInitialize: memory files, the quiet sinks, a fixed log
// time, the device, and kept look digests checked against the controls every frame (a change
// that does not forget the digest stops the program, a finding).
inline void Setup()
{
    setenv("QZGUI_CHECK_LOOKS", "1", 0); // QZGUI_CHECK_LOOKS=0 leaves the checks out
    static CQuietSinks sinks;
    static CFuzzDevice device;
    QzPlatform::SetRenderDevice(&device);
    QzPlatform::SetLogSink(&sinks);
    QzPlatform::SetDiagnosticSink(&sinks);
    QzPlatform::SetTimeTextForTesting("2000-01-01 00:00:00");
    QzPlatform::Host::UseMemoryFiles(true);
    DataRoot() = std::filesystem::current_path();
}

// Forgets the profile files read so far. An input that ends with more allocations than it
// freed is run a second time by libFuzzer, to look for a leak: a target whose input leaves its
// profile files in the cache (each input's file read in place of the last) calls this at the
// end, so that what an input allocates it also frees.
inline void ForgetProfiles()
{
    QzPlatform::CQzProfileCache::Instance().Reset();
}

// Replaces the memory file with the bytes.
inline void WriteFile(const char* relative, const uint8_t* data, size_t size)
{
    QzPlatform::Host::SetMemoryFile(relative,
                                    std::string(reinterpret_cast<const char*>(data), size));
}

inline void WriteFile(const char* relative, const std::string& text)
{
    QzPlatform::Host::SetMemoryFile(relative, text);
}

inline void RemoveFile(const char* relative)
{
    QzPlatform::Host::RemoveMemoryFile(relative);
}

// The host of the manager targets: its main window (made by each screen), and as its resource
// module a data file without dialog templates, so that a window without a record gets none
// generated (and the executable is not read as one for every input).
struct FuzzHost
{
    HWND hWnd = nullptr;
    HMODULE hModule = nullptr;
};

inline FuzzHost& Host()
{
    static FuzzHost host;
    return host;
}

// Once per process, after Setup: the resource module and the host window's class.
inline void SetupHost()
{
    WriteFile("NoTemplates.dll", "not a module");
    Host().hModule =
        LoadLibraryExA((DataRoot() / "NoTemplates.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = L"QzFuzzHost";
    RegisterClassW(&wc);
}

// A window that draws its background and front effect, takes the capture on a press and on the
// release notifies its dialog, as a button does; a closing one hides its dialog instead, as a
// close button does.
class CFuzzCtrl : public QzGui::CQzBaseWindow
{
public:
    explicit CFuzzCtrl(bool bCloses) : m_bCloses(bCloses) {}

    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
    BOOL Show() override
    {
        DrawBack();
        DrawFrontEffect();
        return 1;
    }
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_LBUTTONDOWN && GetMgr())
            GetMgr()->SetCapture(this);
        if (message != WM_LBUTTONUP)
            return CQzBaseWindow::SendMessage(message, wParam, lParam);
        if (GetMgr() && GetMgr()->IsCapture(this))
            GetMgr()->ReleaseCapture();
        CQzBaseWindow* pParent = GetParent();
        if (!pParent)
            return 1;
        if (m_bCloses)
            pParent->ShowWindow(SW_HIDE);
        else
            pParent->SendMessage(WM_COMMAND, GetId(), GetFullId());
        return 1;
    }

private:
    bool m_bCloses;
};

// Puts the text on the clipboard as CF_TEXT, the window owning it.
inline void PutOnClipboard(HWND hOwner, const std::string& text)
{
    if (!OpenClipboard(hOwner))
        return;
    EmptyClipboard();
    HGLOBAL hData = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* p = hData ? GlobalLock(hData) : nullptr)
    {
        std::memcpy(p, text.c_str(), text.size() + 1);
        GlobalUnlock(hData);
        SetClipboardData(CF_TEXT, hData);
    }
    CloseClipboard();
}

// The input targets read 6-byte steps: a kind, a byte, and a signed 32-bit value.
constexpr size_t kStepSize = 6;

inline int32_t StepValue(const uint8_t* step)
{
    int32_t value = 0;
    std::memcpy(&value, step + 2, sizeof(value));
    return value;
}

// Text that comes four bytes a step into pending: a zero byte, or reaching nMax bytes, ends
// it; then it moves to text and true is returned.
inline bool AddTextStep(std::string& pending, const uint8_t* step, size_t nMax, std::string& text)
{
    pending.append(reinterpret_cast<const char*>(step + 2), 4);
    if (pending.find('\0') == std::string::npos && pending.size() < nMax)
        return false;
    text = pending.c_str();
    pending.clear();
    return true;
}

// A GUI manager on a host window of its own (Host().hWnd while it lives) with the layout file
// ini/Fuzz.ini at a fixed clock, and the dialogs and windows a target adds, made and ended in the
// order a host makes and ends them. The host window goes last, and the edit shell's hidden system
// windows, its children, with it, as when a game closes.
//
// Making and ending a manager costs more than most inputs do, so the input targets share one
// (Shared) and start every input from the same state instead (BeginInput, EndInput): no dialog,
// no capture, key focus or debug mode, the clock at its start, and the layout as the file gives
// it. An input that crashes is run again alone in a fresh process (fuzz/run.sh), which tells
// whether it fails by itself.
class CFuzzScreen
{
public:
    CFuzzScreen()
    {
        QzPlatform::Host::SetTime(100000);
        Host().hWnd = CreateWindowExW(0, L"QzFuzzHost", L"fuzz", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                      0, 0, 1024, 768, nullptr, nullptr, nullptr, nullptr);
        m_pMgr = static_cast<QzGui::CQzGuiMgr*>(QzGui::CreateGuiMgr());
        m_pMgr->Init(Host().hModule, Host().hWnd, 100, "Fuzz.ini");
    }
    ~CFuzzScreen()
    {
        RemoveAll();
        m_pMgr->Release();
        DestroyWindow(Host().hWnd);
        Host().hWnd = nullptr;
    }
    CFuzzScreen(const CFuzzScreen&) = delete;
    CFuzzScreen& operator=(const CFuzzScreen&) = delete;

    // A dialog with windows of these ids (the one with nCloseId closes it), registered with the
    // manager or as a child of pParent with its windows created, and shown.
    void AddDialog(DWORD nId, QzGui::CQzDialog* pParent, std::initializer_list<DWORD> ctrlIds,
                   DWORD nCloseId = 0)
    {
        m_dialogs.push_back(std::make_unique<QzGui::CQzDialog>(nId, pParent));
        QzGui::CQzDialog* pDialog = m_dialogs.back().get();
        for (DWORD nCtrlId : ctrlIds)
        {
            m_ctrls.push_back(std::make_unique<CFuzzCtrl>(nCtrlId == nCloseId));
            pDialog->AddCtrl(nCtrlId, m_ctrls.back().get());
        }
        if (pParent)
            pParent->AddChildDialog(pDialog, true);
        else
            m_pMgr->AddDialog(pDialog, nullptr, true);
        pDialog->ShowWindow(SW_SHOW);
    }
    // Frames of the manager, the clock moving on by the given milliseconds after each.
    void Frames(int count, DWORD ms)
    {
        for (int i = 0; i < count; ++i)
        {
            m_pMgr->Show();
            QzPlatform::Host::AdvanceTime(ms);
        }
    }

    // The screen the input targets share: made in LLVMFuzzerInitialize (so that no input is
    // charged with it) and ended when the process exits.
    static CFuzzScreen& Shared()
    {
        static CFuzzScreen* s_pScreen = nullptr;
        if (!s_pScreen)
        {
            s_pScreen = new CFuzzScreen;
            std::atexit([] { delete s_pScreen; });
        }
        return *s_pScreen;
    }
    void BeginInput()
    {
        QzPlatform::Host::SetTime(100000);
        QzPlatform::Host::GetMemoryFile("ini/Fuzz.ini", &m_strLayout);
        SetFocus(Host().hWnd);
    }
    // Takes the input's dialogs and windows away and puts the manager back as BeginInput found
    // it; the layout file is written again and read when debug mode was on (its tools change
    // records and may save them) or the file changed. A target whose next input writes and loads
    // a layout file of its own passes false: the layout is left as the input made it.
    void EndInput(bool bRestoreLayout = true)
    {
        RemoveAll();
        m_pMgr->ReleaseCapture();
        m_pMgr->SetKeyFocus(nullptr);
        const bool bDebugged = m_bDebugged || m_pMgr->GetDebugMode() != 0;
        m_pMgr->SetDebugMode(0);
        m_bDebugged = false;
        if (!bRestoreLayout)
            return;
        std::string layout;
        QzPlatform::Host::GetMemoryFile("ini/Fuzz.ini", &layout);
        if (!bDebugged && layout == m_strLayout)
            return;
        WriteFile("ini/Fuzz.ini", m_strLayout);
        m_pMgr->ReloadLayout();
    }
    // Debug mode for the rest of the input.
    void SetDebugMode(int nMode)
    {
        m_bDebugged = m_bDebugged || nMode != 0;
        m_pMgr->SetDebugMode(nMode);
    }

    QzGui::CQzGuiMgr* Mgr() const { return m_pMgr; }
    const std::vector<std::unique_ptr<CFuzzCtrl>>& Ctrls() const { return m_ctrls; }
    const std::vector<std::unique_ptr<QzGui::CQzDialog>>& Dialogs() const { return m_dialogs; }

private:
    // Child dialogs first, each removed from the manager before it goes.
    void RemoveAll()
    {
        m_ctrls.clear();
        while (!m_dialogs.empty())
        {
            if (m_pMgr->IsRegistered(m_dialogs.back().get()))
                m_pMgr->RemoveDialog(m_dialogs.back().get());
            m_dialogs.pop_back();
        }
    }
    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    std::vector<std::unique_ptr<CFuzzCtrl>> m_ctrls;
    std::vector<std::unique_ptr<QzGui::CQzDialog>> m_dialogs;
    std::string m_strLayout; // the layout file the input started from
    bool m_bDebugged = false;
};

} // namespace QzFuzz
