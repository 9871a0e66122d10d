// Messages windows send each other, the message record of PreTranslateMessage and the window
// type codes. Windows exchange Win32 message numbers with the Win32 packing of wParam and
// lParam; the library adds a few of its own from 10025 on.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>

namespace QzGui
{

// The library's own messages.
enum : UINT
{
    QZ_WM_DRAGMOVE = 10025,     // child dialog -> parent: anchor in wParam, mouse in lParam
    QZ_WM_RELOADED = 10026,     // records reloaded with mode 1
    QZ_WM_FLYFINISHED = 10027,  // a fly-in or fly-out reached its target
    QZ_WM_RELOADED2 = 10028,    // records reloaded with mode 2
    QZ_WM_EDITBUTTONUP = 10029, // button-up in the edit shell's system window
};

// WM_COMMAND notification codes of the controls.
enum : WORD
{
    QZ_BN_CLICKED = 0,
    QZ_BN_DBLCLK = 5,
    QZ_BN_PRESSED = 245,
    QZ_LBN_SELCHANGE = 1,
    QZ_LBN_DBLCLK = 2,
    QZ_EN_SETFOCUS = 256,
    QZ_EN_KILLFOCUS = 512,
    QZ_EN_CHANGE = 768,
    QZ_EN_UPDATE = 1024,
};

// What a window's GetWndType returns, and what records carry.
enum QzWndType : int
{
    QZ_WND_DIALOG = 1,
    QZ_WND_BUTTON = 2,
    QZ_WND_EDIT = 3,
    QZ_WND_IMAGE = 4,
    QZ_WND_STATIC = 5,
    QZ_WND_CHECK = 6,
    QZ_WND_LIST = 7,
    QZ_WND_PROGRESS = 8,
    QZ_WND_SLIDER = 15,
    QZ_WND_GRID = 16,
    QZ_WND_SCROLLBUTTON = 17,
    QZ_WND_TREE = 19,
    QZ_WND_RECORD_STATIC = 20,
    QZ_WND_GRID_SHORTCUT = 21,
    QZ_WND_GRID_EX = 22,
};

// The record given to PreTranslateMessage: sender's full id, message, wParam, lParam.
struct QzMsg
{
    uint64_t nFullId;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// wParam of WM_COMMAND and WM_NOTIFY: the code in the high 16 bits, the control id in the low.
inline WPARAM MakeNotifyWParam(WORD code, DWORD ctrlId)
{
    return (static_cast<WPARAM>(code) << 16) | (ctrlId & 0xFFFF);
}

} // namespace QzGui
