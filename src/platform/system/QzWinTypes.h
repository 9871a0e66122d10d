// Win32 vocabulary for the hosted window system: the types, structures and constants that the
// library and its hosts use. On Windows the same names come from <windows.h> (see QzSystem.h);
// this header is only read elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>

typedef int BOOL;
typedef unsigned char BYTE;
typedef unsigned short WORD;
typedef uint32_t DWORD;
typedef unsigned int UINT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef int INT;
typedef char CHAR;
typedef wchar_t WCHAR; // UTF-32 here; UTF-16 on Windows. Code works in characters, not units.
typedef uint64_t WPARAM;
typedef int64_t LPARAM;
typedef int64_t LRESULT;
typedef int64_t LONG_PTR;
typedef uint64_t ULONG_PTR;
typedef uint64_t UINT_PTR;
typedef uint64_t DWORD_PTR;
typedef uint64_t SIZE_T;
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCWSTR;
typedef BYTE* LPBYTE;
typedef DWORD* LPDWORD;
typedef BOOL* LPBOOL;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#define CALLBACK
#define WINAPI

// Handles are distinct opaque pointer types, as with STRICT on Windows.
#define QZ_DECLARE_HANDLE(name)                                                                    \
    struct name##__;                                                                               \
    typedef struct name##__* name
QZ_DECLARE_HANDLE(HWND);
QZ_DECLARE_HANDLE(HINSTANCE);
QZ_DECLARE_HANDLE(HFONT);
QZ_DECLARE_HANDLE(HRGN);
QZ_DECLARE_HANDLE(HCURSOR);
QZ_DECLARE_HANDLE(HIMC);
QZ_DECLARE_HANDLE(HMENU);
QZ_DECLARE_HANDLE(HBRUSH);
QZ_DECLARE_HANDLE(HICON);
QZ_DECLARE_HANDLE(HDC);
#undef QZ_DECLARE_HANDLE
typedef HINSTANCE HMODULE;
typedef void* HANDLE;
typedef void* HGLOBAL;
typedef void* HGDIOBJ;

typedef LRESULT(CALLBACK* WNDPROC)(HWND, UINT, WPARAM, LPARAM);

struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
typedef RECT* LPRECT;
typedef const RECT* LPCRECT;

struct POINT
{
    LONG x;
    LONG y;
};
typedef POINT* LPPOINT;

struct SIZE
{
    LONG cx;
    LONG cy;
};

struct MSG
{
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
typedef MSG* LPMSG;

struct WNDCLASSA
{
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};

struct WNDCLASSW
{
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};

struct CREATESTRUCTW
{
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};

// Regions (GDI).
struct RGNDATAHEADER
{
    DWORD dwSize;
    DWORD iType;
    DWORD nCount;
    DWORD nRgnSize;
    RECT rcBound;
};
struct RGNDATA
{
    RGNDATAHEADER rdh;
    char Buffer[1];
};
struct XFORM
{
    float eM11, eM12, eM21, eM22, eDx, eDy;
};
#define RDH_RECTANGLES 1
#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3

// Input method contexts.
struct COMPOSITIONFORM
{
    DWORD dwStyle;
    POINT ptCurrentPos;
    RECT rcArea;
};
#define CFS_DEFAULT 0x0000
#define CFS_RECT 0x0001
#define CFS_POINT 0x0002
#define CFS_FORCE_POSITION 0x0020
#define GCS_COMPSTR 0x0008
#define GCS_RESULTSTR 0x0800
#define IMM_ERROR_NODATA (-1)

// Window messages.
#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_MOVE 0x0003
#define WM_SIZE 0x0005
#define WM_ACTIVATE 0x0006
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_ENABLE 0x000A
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_PAINT 0x000F
#define WM_CLOSE 0x0010
#define WM_QUIT 0x0012
#define WM_SHOWWINDOW 0x0018
#define WM_SETCURSOR 0x0020
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_NOTIFY 0x004E
#define WM_GETDLGCODE 0x0087
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
#define WM_SYSKEYDOWN 0x0104
#define WM_SYSKEYUP 0x0105
#define WM_SYSCHAR 0x0106
#define WM_IME_STARTCOMPOSITION 0x010D
#define WM_IME_ENDCOMPOSITION 0x010E
#define WM_IME_COMPOSITION 0x010F
#define WM_INITDIALOG 0x0110
#define WM_COMMAND 0x0111
#define WM_TIMER 0x0113
#define WM_HSCROLL 0x0114
#define WM_VSCROLL 0x0115
#define WM_MOUSEFIRST 0x0200
#define WM_MOUSEMOVE 0x0200
#define WM_LBUTTONDOWN 0x0201
#define WM_LBUTTONUP 0x0202
#define WM_LBUTTONDBLCLK 0x0203
#define WM_RBUTTONDOWN 0x0204
#define WM_RBUTTONUP 0x0205
#define WM_RBUTTONDBLCLK 0x0206
#define WM_MBUTTONDOWN 0x0207
#define WM_MBUTTONUP 0x0208
#define WM_MBUTTONDBLCLK 0x0209
#define WM_MOUSEWHEEL 0x020A
#define WM_MOUSELAST 0x020A
#define WM_IME_SETCONTEXT 0x0281
#define WM_IME_NOTIFY 0x0282
#define WM_IME_CHAR 0x0286
#define WM_CUT 0x0300
#define WM_COPY 0x0301
#define WM_PASTE 0x0302
#define WM_CLEAR 0x0303
#define WM_UNDO 0x0304
#define WM_USER 0x0400
#define WM_APP 0x8000

// Key state flags of mouse messages.
#define MK_LBUTTON 0x0001
#define MK_RBUTTON 0x0002
#define MK_SHIFT 0x0004
#define MK_CONTROL 0x0008
#define MK_MBUTTON 0x0010

// Virtual keys.
#define VK_LBUTTON 0x01
#define VK_RBUTTON 0x02
#define VK_MBUTTON 0x04
#define VK_BACK 0x08
#define VK_TAB 0x09
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_CONTROL 0x11
#define VK_MENU 0x12
#define VK_CAPITAL 0x14
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_PRIOR 0x21
#define VK_NEXT 0x22
#define VK_END 0x23
#define VK_HOME 0x24
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_INSERT 0x2D
#define VK_DELETE 0x2E
#define VK_F1 0x70
#define VK_F2 0x71
#define VK_F3 0x72
#define VK_F4 0x73
#define VK_F5 0x74
#define VK_PROCESSKEY 0xE5

// Show commands.
#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWNA 8
#define SW_RESTORE 9

// Window styles.
#define WS_OVERLAPPED 0x00000000L
#define WS_POPUP 0x80000000L
#define WS_CHILD 0x40000000L
#define WS_VISIBLE 0x10000000L
#define WS_DISABLED 0x08000000L
#define WS_BORDER 0x00800000L
#define WS_VSCROLL 0x00200000L
#define WS_HSCROLL 0x00100000L
#define WS_TABSTOP 0x00010000L
#define WS_OVERLAPPEDWINDOW 0x00CF0000L
#define WS_EX_TOPMOST 0x00000008L
#define CW_USEDEFAULT ((int)0x80000000)

// Window long indexes.
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_ID (-12)
#define GWLP_WNDPROC (-4)
#define GWLP_HINSTANCE (-6)
#define GWLP_ID (-12)
#define GWLP_USERDATA (-21)
#define GWL_WNDPROC GWLP_WNDPROC
#define GWL_USERDATA GWLP_USERDATA

// PeekMessage options.
#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001

// Clipboard formats and global memory flags.
#define CF_TEXT 1
#define CF_UNICODETEXT 13
#define GMEM_FIXED 0x0000
#define GMEM_MOVEABLE 0x0002
#define GMEM_ZEROINIT 0x0040
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

// MessageBeep types.
#define MB_OK 0x00000000L
#define MB_ICONHAND 0x00000010L
#define MB_ICONQUESTION 0x00000020L
#define MB_ICONEXCLAMATION 0x00000030L
#define MB_ICONASTERISK 0x00000040L

// Code pages and conversion flags.
#define CP_ACP 0
#define CP_OEMCP 1
#define CP_UTF8 65001
#define MB_PRECOMPOSED 0x00000001
#define MB_ERR_INVALID_CHARS 0x00000008
#define WC_NO_BEST_FIT_CHARS 0x00000400

// Last-error codes the hosted system sets.
#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_INVALID_DATA 13L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_MORE_DATA 234L
#define ERROR_NO_UNICODE_TRANSLATION 1113L
#define ERROR_INVALID_WINDOW_HANDLE 1400L
#define ERROR_CANNOT_FIND_WND_CLASS 1407L
#define ERROR_CLASS_ALREADY_EXISTS 1410L
#define ERROR_CLIPBOARD_NOT_OPEN 1418L

// Font creation constants used by CreateFontA callers.
#define FW_DONTCARE 0
#define FW_NORMAL 400
#define FW_BOLD 700
#define DEFAULT_CHARSET 1
#define GB2312_CHARSET 134
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define DEFAULT_PITCH 0
#define FF_DONTCARE 0

// Standard cursor ids for LoadCursorA (resource ids, passed as pointers).
#define MAKEINTRESOURCEA(i) ((LPSTR)((ULONG_PTR)((WORD)(i))))
#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_IBEAM MAKEINTRESOURCEA(32513)
#define IDC_WAIT MAKEINTRESOURCEA(32514)
#define IDC_HAND MAKEINTRESOURCEA(32649)

// Packing helpers.
#define LOWORD(l) ((WORD)(((DWORD_PTR)(l)) & 0xffff))
#define HIWORD(l) ((WORD)((((DWORD_PTR)(l)) >> 16) & 0xffff))
#define LOBYTE(w) ((BYTE)(((DWORD_PTR)(w)) & 0xff))
#define HIBYTE(w) ((BYTE)((((DWORD_PTR)(w)) >> 8) & 0xff))
#define MAKELONG(a, b)                                                                             \
    ((LONG)(((WORD)(((DWORD_PTR)(a)) & 0xffff)) | ((DWORD)((WORD)(((DWORD_PTR)(b)) & 0xffff)))     \
                                                      << 16))
#define MAKEWPARAM(l, h) ((WPARAM)(DWORD)MAKELONG(l, h))
#define MAKELPARAM(l, h) ((LPARAM)(DWORD)MAKELONG(l, h))
#define GET_X_LPARAM(lp) ((int)(short)LOWORD(lp))
#define GET_Y_LPARAM(lp) ((int)(short)HIWORD(lp))
#define GET_WHEEL_DELTA_WPARAM(wParam) ((short)HIWORD(wParam))
#define GET_KEYSTATE_WPARAM(wParam) (LOWORD(wParam))
#define WHEEL_DELTA 120
#define MAX_PATH 260

// Kernel and GDI additions: more last-error codes, conversion flags, region combination modes
// and the module, file and mapping constants of the hosted kernel.
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_MOD_NOT_FOUND 126L
#define ERROR_NOT_LOCKED 158L
#define ERROR_INVALID_FLAGS 1004L
#define MB_COMPOSITE 0x00000002
#define MB_USEGLYPHCHARS 0x00000004
#define WC_ERR_INVALID_CHARS 0x00000080
#define WC_COMPOSITECHECK 0x00000200
#define CF_OEMTEXT 7
#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5
#define GENERIC_READ 0x80000000L
#define GENERIC_WRITE 0x40000000L
#define FILE_SHARE_READ 0x00000001
#define FILE_SHARE_WRITE 0x00000002
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define INVALID_HANDLE_VALUE ((HANDLE)(LONG_PTR)-1)
#define INVALID_FILE_SIZE ((DWORD)0xFFFFFFFF)
#define PAGE_READONLY 0x02
#define FILE_MAP_READ 0x0004
#define LOAD_LIBRARY_AS_DATAFILE 0x00000002

// Input-language, IME key and font-quality constants of the GUI manager.
#ifndef WM_INPUTLANGCHANGEREQUEST
#define WM_INPUTLANGCHANGEREQUEST 0x0050
#endif
#ifndef WM_INPUTLANGCHANGE
#define WM_INPUTLANGCHANGE 0x0051
#endif
#ifndef WM_IME_KEYDOWN
#define WM_IME_KEYDOWN 0x0290
#endif
#ifndef WM_IME_KEYUP
#define WM_IME_KEYUP 0x0291
#endif
#ifndef ANTIALIASED_QUALITY
#define ANTIALIASED_QUALITY 4
#endif
#ifndef VARIABLE_PITCH
#define VARIABLE_PITCH 2
#endif

// Scroll codes of WM_HSCROLL and WM_VSCROLL (low word of wParam).
#ifndef SB_LINEUP
#define SB_LINEUP 0
#define SB_LINEDOWN 1
#define SB_PAGEUP 2
#define SB_PAGEDOWN 3
#define SB_ENDSCROLL 8
#endif
