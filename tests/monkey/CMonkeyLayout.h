// The monkey's screen as data: six top-level dialogs (every control kind, collections with their
// scroll buttons and sliders, edit boxes of both kinds, a topmost dialog, a dialog that drags
// and flies, one that stays in place when clicked), two child dialogs of the first, and places
// for the controls the monkey makes at run time. The layout file is written from it in one of
// a few variants, so that a reload moves windows, drops records or moves the topmost attribute.
#pragma once

#include "CMonkeyEvent.h"

#include "platform/system/QzSystem.h"

#include <string>
#include <vector>

namespace QzMonkey
{

// What a button does when clicked.
enum class ClickAction : uint8_t
{
    None,
    HideDialog,
    RemoveDialog,
};

// A place relative to the parent.
struct Box
{
    int x;
    int y;
    int w;
    int h;
};

struct CtrlDesc
{
    DWORD nId;
    CtrlKind kind;
    Box box;
    const char* pszExtras;
    // By kind: list and tree: the ids of their up and down buttons and slider; scroll button:
    // its kind; slider: 0 horizontal, 1 vertical; progress: style; edit boxes: 1 multi-line,
    // 2 number-only password; button: a ClickAction.
    int links[3];
};

struct DialogDesc
{
    DWORD nId;
    int nParentSlot; // -1 for a top-level dialog
    Box box;
    const char* pszExtras;
    std::vector<CtrlDesc> ctrls;
};

class CMonkeyLayout
{
public:
    static constexpr int kTopSlots = 6;
    // Dialog addresses: 0 to 5 the top-level slots, 6 and 7 the child dialogs of slot 0.
    static constexpr int kAddresses = 8;
    static constexpr int kSpawnSlots = 6;
    static constexpr DWORD kFirstSpawnId = 60;
    static constexpr int kVariants = 4;

    // By address.
    static const DialogDesc& Dialog(int nAddress);
    // The layout file's text of the variant: 0 as made, 1 every dialog moved and every
    // control wider, 2 without the records of the spawn places, of control 3 of each dialog and
    // of child dialog 12, 3 the topmost attribute moved from dialog 4 to dialog 6.
    static std::string Text(int nVariant);
    // ani/Control.ani: the sections the records name.
    static const char* AniText();
};

} // namespace QzMonkey
