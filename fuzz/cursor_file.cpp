// ini/Cursor.ini through the cursor reader, then as a GUI manager uses it: the layout manager
// reloads its cursor table, and a cursor manager shows and draws every cursor the file names
// (system cursor files, animation sections "Ani" and effect parts "Fx" of the fixed bundle).
#include "FuzzSupport.h"

#include "framework/QzGuiMgr.h"
#include "layout/QzCursorMgr.h"
#include "layout/QzCursorReader.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"

namespace
{

QzGui::IQzGuiMgr* g_pMgr = nullptr;
HWND g_hWnd = nullptr;

// At exit, before the hosted system's tables go: the manager, then the host window with the
// edit shell's system windows, its children.
void EndManager()
{
    g_pMgr->Release();
    DestroyWindow(g_hWnd);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Fuzz.ini", "[0-1]\nw=10\nh=10\n");
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ani/Control.ani", "[Ani]\nFrameAmount=2\nFrame0=a_16x16.png\n"
                                         "Frame1=b_16x16.png\n[Fx]\nFrameAmount=1\n"
                                         "Frame0=fx_8x8.png\n");
    QzFuzz::WriteFile("NoTemplates.dll", "not a module");
    HMODULE hModule = LoadLibraryExA((QzFuzz::DataRoot() / "NoTemplates.dll").c_str(), nullptr,
                                     LOAD_LIBRARY_AS_DATAFILE);
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = L"QzFuzzHost";
    RegisterClassW(&wc);
    g_hWnd = CreateWindowExW(0, L"QzFuzzHost", L"fuzz", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                             1024, 768, nullptr, nullptr, nullptr, nullptr);
    g_pMgr = QzGui::CreateGuiMgr();
    g_pMgr->Init(hModule, g_hWnd, 100, "Fuzz.ini");
    std::atexit(EndManager);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/Cursor.ini", data, size);
    std::map<std::string, QzGui::QzCursorEntry> table;
    QzGui::CQzCursorReader::Read("ini/Cursor.ini", table);
    // Nothing of the last input stays: not its cursors, nor the records a reload keeps alive.
    QzGui::CQzGuiInfoMgr* pInfoMgr = static_cast<QzGui::CQzGuiMgr*>(g_pMgr)->GetInfoMgr();
    pInfoMgr->ClearAll();
    pInfoMgr->ReloadLayout("Fuzz.ini");
    QzPlatform::Host::SetTime(100000);
    QzGui::CQzCursorMgr cursors;
    cursors.SetGuiMgr(g_pMgr);
    for (const auto& entry : table)
    {
        cursors.SetCursorByName(entry.first.c_str());
        cursors.DrawCursor();
        QzPlatform::Host::AdvanceTime(250);
        cursors.DrawCursor();
        (void)cursors.GetCursorAniName();
    }
    cursors.SetCursorByName(nullptr);
    cursors.ClearCursorCache();
    return 0;
}
