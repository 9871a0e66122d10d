#include "CMonkeyWorld.h"

#include "CMonkeyBuilder.h"
#include "FuzzSupport.h"

#include "platform/system/text/QzCodePage.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"

#include <algorithm>
#include <cstring>

namespace QzMonkey
{

namespace
{

using namespace QzGui;

const char* const kLayoutFile = "Monkey.ini";
constexpr size_t kGraveyardSize = 48;
constexpr DWORD kFrameMs = 16;
constexpr int kMaxFrames = 64;
constexpr WPARAM kCharPaste = 0x16;

void WriteLayout(int nVariant)
{
    const int variant =
        static_cast<int>(static_cast<unsigned>(nVariant) % CMonkeyLayout::kVariants);
    QzFuzz::WriteFile((std::string("ini/") + kLayoutFile).c_str(), CMonkeyLayout::Text(variant));
}

void SetModifiers(bool bCtrl, bool bShift)
{
    QzPlatform::Host::SetKeyState(VK_CONTROL, bCtrl);
    QzPlatform::Host::SetKeyState(VK_SHIFT, bShift);
}

void FillCtrls(const CQzDialog& dialog)
{
    for (const QzCtrlEntry& entry : dialog.GetCtrlEntries())
        CMonkeyBuilder::Fill(*entry.pCtrl);
}

int SlotOf(int nValue)
{
    return static_cast<int>(static_cast<unsigned>(nValue) % CMonkeyLayout::kTopSlots);
}

int SpawnSlotOf(int nValue)
{
    return static_cast<int>(static_cast<unsigned>(nValue) % CMonkeyLayout::kSpawnSlots);
}

} // namespace

void CMonkeyWorld::SetupProcess()
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ini/font.ini", "SimSun 12\n");
    QzFuzz::WriteFile("ani/Control.ani", CMonkeyLayout::AniText());
    QzFuzz::SetupHost();
}

CMonkeyWorld::CMonkeyWorld()
{
    QzPlatform::Host::SetTime(100000);
    SetModifiers(false, false);
    WriteLayout(0);
    m_hWnd = CreateWindowExW(0, L"QzFuzzHost", L"monkey", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                             1024, 768, nullptr, nullptr, nullptr, nullptr);
    SetFocus(m_hWnd);
    QzFuzz::PutOnClipboard(m_hWnd, "");
    m_pMgr = static_cast<CQzGuiMgr*>(CreateGuiMgr());
    m_pMgr->Init(QzFuzz::Host().hModule, m_hWnd, 100, kLayoutFile);
    for (int slot = 0; slot < CMonkeyLayout::kTopSlots; ++slot)
        AddSlot(slot);
}

CMonkeyWorld::~CMonkeyWorld()
{
    for (int slot = CMonkeyLayout::kTopSlots - 1; slot >= 0; --slot)
        RemoveSlot(slot);
    m_graveyard.clear();
    m_pMgr->Release();
    DestroyWindow(m_hWnd);
    Pump();
    QzPlatform::Host::TakeBeeps();
}

CMonkeyDialog* CMonkeyWorld::DialogAt(int nAddress) const
{
    if (nAddress < 0 || nAddress >= CMonkeyLayout::kAddresses)
        return nullptr;
    if (nAddress < CMonkeyLayout::kTopSlots)
        return m_slots[nAddress].get();
    CMonkeyDialog* pParent = m_slots[CMonkeyLayout::Dialog(nAddress).nParentSlot].get();
    if (!pParent)
        return nullptr;
    const size_t child = static_cast<size_t>(nAddress - CMonkeyLayout::kTopSlots);
    return child < pParent->Children().size() ? pParent->Children()[child].get() : nullptr;
}

// The dialog, its child dialogs (for slot 0) and their controls, made, registered, filled and
// shown as a host does it.
void CMonkeyWorld::AddSlot(int nSlot)
{
    if (m_slots[nSlot])
        return;
    m_slots[nSlot] =
        CMonkeyBuilder::BuildDialog(nSlot, nullptr, [this, nSlot] { RemoveSlot(nSlot); });
    CMonkeyDialog* pDialog = m_slots[nSlot].get();
    m_pMgr->AddDialog(pDialog, nullptr, true);
    for (int address = CMonkeyLayout::kTopSlots; address < CMonkeyLayout::kAddresses; ++address)
    {
        if (CMonkeyLayout::Dialog(address).nParentSlot != nSlot)
            continue;
        CMonkeyDialog* pChild =
            pDialog->KeepChild(CMonkeyBuilder::BuildDialog(address, pDialog, {}));
        pDialog->AddChildDialog(pChild, true);
        pChild->ShowWindow(SW_SHOW);
    }
    FillCtrls(*pDialog);
    for (const auto& pChild : pDialog->Children())
        FillCtrls(*pChild);
    pDialog->ShowWindow(SW_SHOW);
    m_bFresh[nSlot] = true;
}

void CMonkeyWorld::RemoveSlot(int nSlot)
{
    std::unique_ptr<CMonkeyDialog> pDialog = std::move(m_slots[nSlot]);
    if (!pDialog)
        return;
    m_pMgr->RemoveDialog(pDialog.get());
    pDialog->MarkTreeRemoved();
    Bury(std::move(pDialog));
}

void CMonkeyWorld::Bury(std::unique_ptr<CQzBaseWindow> pWindow)
{
    m_graveyard.push_back(std::move(pWindow));
    if (m_graveyard.size() > kGraveyardSize)
        m_graveyard.pop_front();
}

void CMonkeyWorld::Apply(const CMonkeyEvent& event)
{
    switch (event.Kind())
    {
    case EventKind::MouseMove:
        return Mouse(WM_MOUSEMOVE, event);
    case EventKind::LButtonDown:
        return Mouse(WM_LBUTTONDOWN, event);
    case EventKind::LButtonUp:
        return Mouse(WM_LBUTTONUP, event);
    case EventKind::LButtonDblClk:
        return Mouse(WM_LBUTTONDBLCLK, event);
    case EventKind::RButtonDown:
        return Mouse(WM_RBUTTONDOWN, event);
    case EventKind::RButtonUp:
        return Mouse(WM_RBUTTONUP, event);
    case EventKind::RButtonDblClk:
        return Mouse(WM_RBUTTONDBLCLK, event);
    case EventKind::MButtonDown:
        return Mouse(WM_MBUTTONDOWN, event);
    case EventKind::MButtonUp:
        return Mouse(WM_MBUTTONUP, event);
    case EventKind::Wheel:
        return Mouse(WM_MOUSEWHEEL, event);
    case EventKind::KeyDown:
        return Key(WM_KEYDOWN, event);
    case EventKind::KeyUp:
        return Key(WM_KEYUP, event);
    case EventKind::Char:
        return Dispatch(WM_CHAR, static_cast<WPARAM>(event.Value(0) & 0xFFFF), 1);
    case EventKind::ImeComposition:
    case EventKind::ImeResult:
        return Ime(event);
    case EventKind::Clipboard:
        return QzFuzz::PutOnClipboard(m_hWnd, event.Text());
    case EventKind::Paste:
        return Paste();
    case EventKind::ShowDialog:
    case EventKind::HideDialog:
        if (CMonkeyDialog* pDialog = DialogAt(event.Value(0)))
            pDialog->ShowWindow(event.Kind() == EventKind::ShowDialog ? SW_SHOW : SW_HIDE);
        return Pump();
    case EventKind::ReloadLayout:
        return Reload(event);
    case EventKind::ReloadDialog:
        return ReloadDialog(event);
    case EventKind::AddDialog:
        return AddSlot(SlotOf(event.Value(0)));
    case EventKind::RemoveDialog:
        return RemoveSlot(SlotOf(event.Value(0)));
    case EventKind::CreateCtrl:
        return CreateCtrl(event);
    case EventKind::DestroyCtrl:
        return DestroyCtrl(event);
    case EventKind::Focus:
        return Focus(event);
    case EventKind::Frames:
        return Frames(event.Value(0));
    case EventKind::Clock:
        return QzPlatform::Host::AdvanceTime(static_cast<DWORD>(event.Value(0)));
    default:
        m_graveyard.clear();
        return;
    }
}

void CMonkeyWorld::Mouse(UINT message, const CMonkeyEvent& event)
{
    const auto x = static_cast<WORD>(event.Value(0));
    const auto y = static_cast<WORD>(event.Value(1));
    const WPARAM wParam =
        message == WM_MOUSEWHEEL
            ? MAKEWPARAM(0, static_cast<WORD>(static_cast<int16_t>(event.Value(2))))
            : static_cast<WPARAM>(event.Value(2) & 0xFFFF);
    m_pMgr->OnMessage(message, wParam, MAKELPARAM(x, y));
    Pump();
}

void CMonkeyWorld::Key(UINT message, const CMonkeyEvent& event)
{
    const int vk = event.Value(0) & 0xFF;
    SetModifiers(event.Value(1) != 0, event.Value(2) != 0);
    QzPlatform::Host::SetKeyState(vk, message == WM_KEYDOWN);
    const LPARAM lParam = message == WM_KEYDOWN ? 1 : static_cast<LPARAM>(0xC0000001);
    Dispatch(message, static_cast<WPARAM>(vk), lParam);
    QzPlatform::Host::SetKeyState(vk, false);
    SetModifiers(false, false);
}

// Ctrl+V as a keyboard gives it: the key with Ctrl held and its control character.
void CMonkeyWorld::Paste()
{
    SetModifiers(true, false);
    Dispatch(WM_KEYDOWN, 'V', 1);
    Dispatch(WM_CHAR, kCharPaste, 1);
    Dispatch(WM_KEYUP, 'V', static_cast<LPARAM>(0xC0000001));
    SetModifiers(false, false);
}

void CMonkeyWorld::Ime(const CMonkeyEvent& event)
{
    const std::wstring wide = QzPlatform::AnsiToWide(event.Text());
    const HWND hFocus = GetFocus();
    if (HIMC hImc = hFocus ? ImmGetContext(hFocus) : nullptr)
    {
        ImmSetOpenStatus(hImc, TRUE);
        ImmReleaseContext(hFocus, hImc);
    }
    if (event.Kind() == EventKind::ImeComposition)
        QzPlatform::Host::InjectImeComposition(wide.c_str());
    else
        QzPlatform::Host::InjectImeResult(wide.c_str());
    Pump();
}

void CMonkeyWorld::Reload(const CMonkeyEvent& event)
{
    WriteLayout(event.Value(0));
    m_pMgr->ReloadLayout();
    for (bool& bFresh : m_bFresh)
        bFresh = true;
    Pump();
}

// The manager reads the whole file again but gives only this dialog its new records.
void CMonkeyWorld::ReloadDialog(const CMonkeyEvent& event)
{
    WriteLayout(event.Value(1));
    const int nSlot = SlotOf(event.Value(0));
    if (!m_slots[nSlot])
        return;
    m_pMgr->ReloadDialog(m_slots[nSlot]->GetId());
    for (bool& bFresh : m_bFresh)
        bFresh = false;
    m_bFresh[nSlot] = true;
    Pump();
}

void CMonkeyWorld::CreateCtrl(const CMonkeyEvent& event)
{
    CMonkeyDialog* pDialog = DialogAt(event.Value(0));
    const int nSlot = SpawnSlotOf(event.Value(1));
    if (!pDialog || pDialog->Spawned(nSlot))
        return;
    const auto kind = static_cast<CtrlKind>(static_cast<unsigned>(event.Value(2)) %
                                            static_cast<unsigned>(CtrlKind::Count));
    const DWORD nId = CMonkeyLayout::kFirstSpawnId + static_cast<DWORD>(nSlot);
    const std::string name = "dialog " + std::to_string(pDialog->GetId()) + " spawned ctrl " +
                             std::to_string(nId) + " (" + CtrlKindName(kind) + ")";
    pDialog->Spawn(nSlot, CMonkeyBuilder::BuildCtrl(kind, *pDialog, name));
    CMonkeyBuilder::Fill(*pDialog->Spawned(nSlot));
    Pump();
}

void CMonkeyWorld::DestroyCtrl(const CMonkeyEvent& event)
{
    CMonkeyDialog* pDialog = DialogAt(event.Value(0));
    if (!pDialog)
        return;
    if (std::unique_ptr<CQzBaseWindow> pCtrl = pDialog->Unspawn(SpawnSlotOf(event.Value(1))))
        Bury(std::move(pCtrl));
    Pump();
}

// Dialog -1 gives the keyboard back to the host window, -2 takes the manager's key focus away;
// otherwise the control of the dialog takes the focus as its kind takes it (a click binds an
// edit box, an extended edit box takes the key focus), any other control the key focus.
void CMonkeyWorld::Focus(const CMonkeyEvent& event)
{
    if (event.Value(0) == -1)
        SetFocus(m_hWnd);
    else if (event.Value(0) == -2)
        m_pMgr->SetKeyFocus(nullptr);
    CMonkeyDialog* pDialog = DialogAt(event.Value(0));
    const QzCtrlEntry* pEntry =
        pDialog ? pDialog->FindCtrlEntry(static_cast<DWORD>(event.Value(1))) : nullptr;
    if (!pEntry)
        return Pump();
    if (auto* pEdit = dynamic_cast<CQzEdit*>(pEntry->pCtrl))
        pEdit->SetFocus();
    else if (auto* pEditEx = dynamic_cast<CQzEditEx*>(pEntry->pCtrl))
        pEditEx->SetFocus();
    else
        m_pMgr->SetKeyFocus(pEntry->pCtrl);
    Pump();
}

void CMonkeyWorld::Frames(int nCount)
{
    for (int i = 0; i < std::min(nCount, kMaxFrames); ++i)
    {
        m_pMgr->Show();
        QzPlatform::Host::AdvanceTime(kFrameMs);
        Pump();
    }
}

void CMonkeyWorld::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND hFocus = GetFocus();
    if (hFocus && hFocus != m_hWnd)
        SendMessageW(hFocus, message, wParam, lParam);
    else
        m_pMgr->OnMessage(message, wParam, lParam);
    Pump();
}

void CMonkeyWorld::Pump()
{
    MSG msg;
    for (int i = 0; i < 4096 && PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i)
    {
        if (msg.hwnd == m_hWnd)
            m_pMgr->OnMessage(msg.message, msg.wParam, msg.lParam);
        else
            DispatchMessageW(&msg);
    }
    QzPlatform::Host::TakeBeeps();
}

} // namespace QzMonkey
