#include "CEventSource.h"

#include "CMonkeyWorld.h"

#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace QzMonkey
{

namespace
{

using namespace QzGui;

// Kinds by weight, out of the sum of the weights.
const std::pair<EventKind, int> kWeights[] = {
    {EventKind::MouseMove, 220},    {EventKind::LButtonDown, 90},    {EventKind::LButtonUp, 90},
    {EventKind::LButtonDblClk, 25}, {EventKind::RButtonDown, 20},    {EventKind::RButtonUp, 20},
    {EventKind::RButtonDblClk, 5},  {EventKind::MButtonDown, 5},     {EventKind::MButtonUp, 5},
    {EventKind::Wheel, 30},         {EventKind::KeyDown, 80},        {EventKind::KeyUp, 40},
    {EventKind::Char, 60},          {EventKind::ImeComposition, 15}, {EventKind::ImeResult, 20},
    {EventKind::Clipboard, 10},     {EventKind::Paste, 15},          {EventKind::ShowDialog, 35},
    {EventKind::HideDialog, 15},    {EventKind::ReloadLayout, 6},    {EventKind::ReloadDialog, 6},
    {EventKind::AddDialog, 20},     {EventKind::RemoveDialog, 5},    {EventKind::CreateCtrl, 25},
    {EventKind::DestroyCtrl, 20},   {EventKind::Focus, 35},          {EventKind::Frames, 65},
    {EventKind::Clock, 20},         {EventKind::Purge, 5},
};

const int kKeys[] = {VK_BACK,   VK_TAB,  VK_RETURN, VK_ESCAPE, VK_SPACE, VK_PRIOR,  VK_NEXT,
                     VK_END,    VK_HOME, VK_LEFT,   VK_UP,     VK_RIGHT, VK_DOWN,   VK_INSERT,
                     VK_DELETE, '0',     '5',       'A',       'C',      'V',       'X',
                     'Z',       VK_F1,   VK_F5,     VK_F4,     VK_SHIFT, VK_CONTROL};
const int kChars[] = {'a',  'Z',  '0',  '9',  ' ',  '#',  '|',  0x08, 0x0D,   0x0A,
                      0x09, 0x1B, 0x16, 0x03, 0x18, 0x01, 0xC4, 0xE3, 0x4F60, 0xFFFF};
const char* const kTexts[] = {
    "",
    "abc",
    "\xC4\xE3\xBA\xC3",
    "#01|02 \xC4\xE3",
    "line1\r\nline2",
    "12345",
    "\xC4",
    "a\tb c",
    "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
    "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"};
const int kClockSteps[] = {1, 16, 100, 301, 1000, 5000};
const int kWheelSteps[] = {-360, -120, -1, 1, 120, 240};

void AddRects(CQzDialog& dialog, std::vector<RECT>& rects)
{
    if (!dialog.IsVisible())
        return;
    rects.push_back(dialog.GetWindowRect());
    for (const QzCtrlEntry& entry : dialog.GetCtrlEntries())
    {
        if (entry.bCreated && entry.pCtrl->IsWindowVisible())
            rects.push_back(entry.pCtrl->GetWindowRect());
    }
    for (const auto& child : dialog.GetChildDialogs())
        AddRects(*child.second, rects);
}

bool IsEditBox(CQzBaseWindow* pWindow)
{
    return dynamic_cast<CQzEdit*>(pWindow) || dynamic_cast<CQzEditEx*>(pWindow);
}

} // namespace

int CEventSource::Uniform(int lo, int hi)
{
    return std::uniform_int_distribution<int>(lo, hi)(m_rng);
}

EventKind CEventSource::PickKind()
{
    int total = 0;
    for (const auto& weight : kWeights)
        total += weight.second;
    int n = Uniform(0, total - 1);
    for (const auto& weight : kWeights)
    {
        if (n < weight.second)
            return weight.first;
        n -= weight.second;
    }
    return EventKind::Frames;
}

// Mostly a point inside a visible window (its edges included), else anywhere around the screen.
POINT CEventSource::PickPoint(const CMonkeyWorld& world)
{
    std::vector<RECT> rects;
    for (CQzDialog* pDialog : world.Mgr()->GetDialogs())
        AddRects(*pDialog, rects);
    if (rects.empty() || Chance(25))
        return {Uniform(-50, 1100), Uniform(-50, 820)};
    const RECT& rc = rects[static_cast<size_t>(Uniform(0, static_cast<int>(rects.size()) - 1))];
    return {Uniform(rc.left, std::max(rc.left, static_cast<int>(rc.right))),
            Uniform(rc.top, std::max(rc.top, static_cast<int>(rc.bottom)))};
}

CMonkeyEvent CEventSource::MouseEvent(EventKind kind, const CMonkeyWorld& world)
{
    const POINT pt = PickPoint(world);
    if (kind == EventKind::Wheel)
        return CMonkeyEvent(kind, pt.x, pt.y, Pick(kWheelSteps));
    int keys = Chance(30) ? MK_LBUTTON : 0;
    keys |= Chance(10) ? MK_SHIFT : 0;
    keys |= Chance(10) ? MK_CONTROL : 0;
    return CMonkeyEvent(kind, pt.x, pt.y, keys);
}

// A dialog address, most often one that is there.
int CEventSource::PickAddress(const CMonkeyWorld& world)
{
    const int nAddress = Uniform(0, CMonkeyLayout::kAddresses - 1);
    if (world.DialogAt(nAddress) || Chance(20))
        return nAddress;
    return Uniform(0, CMonkeyLayout::kAddresses - 1);
}

// The host window or no key focus now and then; else a control, an edit box most often.
CMonkeyEvent CEventSource::FocusEvent(const CMonkeyWorld& world)
{
    if (Chance(15))
        return CMonkeyEvent(EventKind::Focus, Chance(60) ? -1 : -2, 0);
    std::vector<std::pair<int, DWORD>> edits;
    std::vector<std::pair<int, DWORD>> others;
    for (int address = 0; address < CMonkeyLayout::kAddresses; ++address)
    {
        const CMonkeyDialog* pDialog = world.DialogAt(address);
        if (!pDialog)
            continue;
        for (const QzCtrlEntry& entry : pDialog->GetCtrlEntries())
            (IsEditBox(entry.pCtrl) ? edits : others).emplace_back(address, entry.nId);
    }
    std::vector<std::pair<int, DWORD>>& from = !edits.empty() && Chance(75) ? edits : others;
    if (from.empty())
        return CMonkeyEvent(EventKind::Focus, -1, 0);
    const auto& target = from[static_cast<size_t>(Uniform(0, static_cast<int>(from.size()) - 1))];
    return CMonkeyEvent(EventKind::Focus, target.first, static_cast<int>(target.second));
}

CMonkeyEvent CEventSource::Next(const CMonkeyWorld& world)
{
    const EventKind kind = PickKind();
    switch (kind)
    {
    case EventKind::KeyDown:
    case EventKind::KeyUp:
        return CMonkeyEvent(kind, Pick(kKeys), Chance(25), Chance(25));
    case EventKind::Char:
        return CMonkeyEvent(kind, Pick(kChars));
    case EventKind::ImeComposition:
    case EventKind::ImeResult:
    case EventKind::Clipboard:
        return CMonkeyEvent(kind, 0, 0, 0, Pick(kTexts));
    case EventKind::Paste:
    case EventKind::Purge:
        return CMonkeyEvent(kind);
    case EventKind::ShowDialog:
    case EventKind::HideDialog:
        return CMonkeyEvent(kind, PickAddress(world));
    case EventKind::ReloadLayout:
        return CMonkeyEvent(kind, Chance(50) ? 0 : Uniform(1, CMonkeyLayout::kVariants - 1));
    case EventKind::ReloadDialog:
        return CMonkeyEvent(kind, Uniform(0, CMonkeyLayout::kTopSlots - 1),
                            Chance(50) ? 0 : Uniform(1, CMonkeyLayout::kVariants - 1));
    case EventKind::AddDialog:
    case EventKind::RemoveDialog:
        return CMonkeyEvent(kind, Uniform(0, CMonkeyLayout::kTopSlots - 1));
    case EventKind::CreateCtrl:
        return CMonkeyEvent(kind, PickAddress(world), Uniform(0, CMonkeyLayout::kSpawnSlots - 1),
                            Uniform(0, static_cast<int>(CtrlKind::Count) - 1));
    case EventKind::DestroyCtrl:
        return CMonkeyEvent(kind, PickAddress(world), Uniform(0, CMonkeyLayout::kSpawnSlots - 1));
    case EventKind::Focus:
        return FocusEvent(world);
    case EventKind::Frames:
        return CMonkeyEvent(kind, Uniform(1, 4));
    case EventKind::Clock:
        return CMonkeyEvent(kind, Pick(kClockSteps));
    default:
        return MouseEvent(kind, world);
    }
}

} // namespace QzMonkey
