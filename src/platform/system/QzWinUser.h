// The window half of the hosted Win32 system (USER32, IMM32 and the WINMM clock): window
// classes and windows, window procedures and their subclassing, sent and posted messages,
// focus, rectangles, cursors, key state, input contexts, timeGetTime and MessageBeep. Names,
// arguments, results and last-error codes are those of Win32; where this host differs it is said
// next to the declaration. A host drives it as a Win32 program would and controls what a user
// would do through QzHost.h.
//
// Windows have no non-client area here: the client rectangle is the whole window, and a child's
// position is relative to its parent's top-left corner. Window text is kept as wide text.
//
// ANSI and Unicode: a window procedure is ANSI or Unicode by the way it was installed
// (RegisterClassA/W, SetWindowLongPtrA/W). A message sent, dispatched or passed on with
// CallWindowProc by the other kind has its text converted through the ANSI code page: the text
// of WM_SETTEXT, WM_GETTEXT, WM_GETTEXTLENGTH and CREATESTRUCT, and the character codes of
// WM_CHAR, WM_SYSCHAR, WM_IME_CHAR and WM_IME_COMPOSITION. A double-byte character reaches an
// ANSI procedure as two WM_CHAR messages (lead byte, then trail byte) and as one WM_IME_CHAR
// (lead byte in bits 8 to 15). A window procedure of the other kind read with GetWindowLongPtr
// is a handle that only CallWindowProc and SetWindowLongPtr understand, as on Windows.
#pragma once

#include "platform/system/QzWinTypes.h"

typedef WORD ATOM;
typedef short SHORT;

struct CREATESTRUCTA
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
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};
typedef CREATESTRUCTA* LPCREATESTRUCTA;
typedef CREATESTRUCTW* LPCREATESTRUCTW;

// lParam of WM_STYLECHANGING and WM_STYLECHANGED.
struct STYLESTRUCT
{
    DWORD styleOld;
    DWORD styleNew;
};

#define WM_STYLECHANGING 0x007C
#define WM_STYLECHANGED 0x007D
#define SIZE_RESTORED 0

#define MAKEINTATOM(i) ((LPSTR)((ULONG_PTR)((WORD)(i))))
#define IS_INTRESOURCE(r) ((((ULONG_PTR)(r)) >> 16) == 0)

// SetWindowPos flags. Z-order is not kept: the insert-after window is ignored.
#define SWP_NOSIZE 0x0001
#define SWP_NOMOVE 0x0002
#define SWP_NOZORDER 0x0004
#define SWP_NOREDRAW 0x0008
#define SWP_NOACTIVATE 0x0010
#define SWP_SHOWWINDOW 0x0040
#define SWP_HIDEWINDOW 0x0080

// More standard cursor ids for LoadCursorA.
#define IDC_CROSS MAKEINTRESOURCEA(32515)
#define IDC_UPARROW MAKEINTRESOURCEA(32516)
#define IDC_SIZENWSE MAKEINTRESOURCEA(32642)
#define IDC_SIZENESW MAKEINTRESOURCEA(32643)
#define IDC_SIZEWE MAKEINTRESOURCEA(32644)
#define IDC_SIZENS MAKEINTRESOURCEA(32645)
#define IDC_SIZEALL MAKEINTRESOURCEA(32646)
#define IDC_NO MAKEINTRESOURCEA(32648)
#define IDC_APPSTARTING MAKEINTRESOURCEA(32650)
#define IDC_HELP MAKEINTRESOURCEA(32651)

#ifndef IMM_ERROR_GENERAL
#define IMM_ERROR_GENERAL (-2)
#endif
#ifndef ERROR_INVALID_HANDLE
#define ERROR_INVALID_HANDLE 6L
#endif
#ifndef ERROR_MESSAGE_SYNC_ONLY
#define ERROR_MESSAGE_SYNC_ONLY 1159L
#endif
#ifndef ERROR_INVALID_CURSOR_HANDLE
#define ERROR_INVALID_CURSOR_HANDLE 1402L
#endif
#ifndef ERROR_TLW_WITH_WSCHILD
#define ERROR_TLW_WITH_WSCHILD 1406L
#endif
#ifndef ERROR_CLASS_DOES_NOT_EXIST
#define ERROR_CLASS_DOES_NOT_EXIST 1411L
#endif
#ifndef ERROR_CLASS_HAS_WINDOWS
#define ERROR_CLASS_HAS_WINDOWS 1412L
#endif
#ifndef ERROR_INVALID_INDEX
#define ERROR_INVALID_INDEX 1413L
#endif
#ifndef ERROR_RESOURCE_NAME_NOT_FOUND
#define ERROR_RESOURCE_NAME_NOT_FOUND 1814L
#endif

// Window classes. Classes belong to the process: the instance handle is recorded, not used to
// tell classes apart. A class procedure must not be null. The built-in classes of the hosted
// system cannot be unregistered.
ATOM RegisterClassA(const WNDCLASSA* lpWndClass);
ATOM RegisterClassW(const WNDCLASSW* lpWndClass);
BOOL UnregisterClassA(LPCSTR lpClassName, HINSTANCE hInstance);
BOOL UnregisterClassW(LPCWSTR lpClassName, HINSTANCE hInstance);
int GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount);
int GetClassNameW(HWND hWnd, LPWSTR lpClassName, int nMaxCount);

// Windows. Creation sends WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE and, for WS_VISIBLE,
// WM_SHOWWINDOW. CW_USEDEFAULT gives 0 for a position and for a size. Destruction sends
// WM_KILLFOCUS when the focus is in the window or below it, WM_DESTROY to the window and then to
// its descendants, and WM_NCDESTROY to the descendants and then to the window; no hide message.
HWND CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int X,
                     int Y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam);
HWND CreateWindowExW(DWORD dwExStyle, LPCWSTR lpClassName, LPCWSTR lpWindowName, DWORD dwStyle,
                     int X, int Y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam);
BOOL DestroyWindow(HWND hWnd);
BOOL IsWindow(HWND hWnd);
BOOL IsChild(HWND hWndParent, HWND hWnd);
BOOL IsWindowUnicode(HWND hWnd);
HWND GetParent(HWND hWnd);
// Fails (ERROR_INVALID_PARAMETER) when the new parent is the window itself or below it (as a
// child or an owned window). The position relative to the parent is kept; an owned window given
// a parent is no longer owned.
HWND SetParent(HWND hWndChild, HWND hWndNewParent);
int GetDlgCtrlID(HWND hWnd);

// Window data. Indexes: GWLP_WNDPROC, GWLP_HINSTANCE, GWLP_ID, GWLP_USERDATA, GWL_STYLE,
// GWL_EXSTYLE, and byte offsets into the class's cbWndExtra. The 32-bit forms refuse
// GWLP_WNDPROC and GWLP_HINSTANCE (ERROR_INVALID_INDEX), as on 64-bit Windows. A null window
// procedure is refused (ERROR_INVALID_PARAMETER). Setting GWL_STYLE or GWL_EXSTYLE sends
// WM_STYLECHANGING and WM_STYLECHANGED; WS_VISIBLE and WS_DISABLED change without messages.
LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex);
LONG_PTR GetWindowLongPtrW(HWND hWnd, int nIndex);
LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
LONG_PTR SetWindowLongPtrW(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
LONG GetWindowLongA(HWND hWnd, int nIndex);
LONG GetWindowLongW(HWND hWnd, int nIndex);
LONG SetWindowLongA(HWND hWnd, int nIndex, LONG dwNewLong);
LONG SetWindowLongW(HWND hWnd, int nIndex, LONG dwNewLong);

// Window text, through WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH as on Windows. Lengths are
// exact (in bytes for the A forms, characters for the W forms).
BOOL SetWindowTextA(HWND hWnd, LPCSTR lpString);
BOOL SetWindowTextW(HWND hWnd, LPCWSTR lpString);
int GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount);
int GetWindowTextW(HWND hWnd, LPWSTR lpString, int nMaxCount);
int GetWindowTextLengthA(HWND hWnd);
int GetWindowTextLengthW(HWND hWnd);

// Focus: WM_KILLFOCUS to the old window (wParam the new one; GetFocus already answers the new
// one), then WM_SETFOCUS to the new window (wParam the old one). A window that is disabled, has
// a disabled ancestor or is being destroyed cannot take the focus.
HWND SetFocus(HWND hWnd);
HWND GetFocus();

// State and position. EnableWindow returns nonzero when the window was disabled before; it
// sends WM_ENABLE on a change and takes the focus away from a window it disables (with those
// below it). ShowWindow returns nonzero when the window was visible before and sends
// WM_SHOWWINDOW on a change; hiding the focus window gives the focus to its parent. Moves send
// WM_MOVE and WM_SIZE when the position or the size changes. Negative sizes become 0.
BOOL EnableWindow(HWND hWnd, BOOL bEnable);
BOOL IsWindowEnabled(HWND hWnd);
BOOL ShowWindow(HWND hWnd, int nCmdShow);
BOOL IsWindowVisible(HWND hWnd);
BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint);
BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags);
BOOL GetWindowRect(HWND hWnd, LPRECT lpRect);
BOOL GetClientRect(HWND hWnd, LPRECT lpRect);
BOOL ScreenToClient(HWND hWnd, LPPOINT lpPoint);
BOOL ClientToScreen(HWND hWnd, LPPOINT lpPoint);

// Messages. One posted-message queue for the process, first in, first out. Posting a message
// whose parameters point to data (WM_SETTEXT, WM_GETTEXT, WM_CREATE...) fails with
// ERROR_MESSAGE_SYNC_ONLY. A window filter of PeekMessage takes the window and those below it;
// (HWND)-1 takes messages posted to no window. Posted messages of a destroyed window are
// removed from the queue. TranslateMessage produces no characters here: a host posts WM_CHAR
// itself; it returns nonzero for the key messages, as Windows does.
LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL PostMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
BOOL PeekMessageW(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
BOOL TranslateMessage(const MSG* lpMsg);
LRESULT DispatchMessageA(const MSG* lpMsg);
LRESULT DispatchMessageW(const MSG* lpMsg);
LRESULT CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT CallWindowProcW(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
// WM_NCCREATE takes the text of CREATESTRUCT and answers TRUE; WM_SETTEXT, WM_GETTEXT and
// WM_GETTEXTLENGTH work on the window text; WM_CLOSE destroys the window; WM_IME_COMPOSITION
// with GCS_RESULTSTR sends one WM_IME_CHAR (lParam 1) per character of the result string of the
// window's input context; WM_IME_CHAR posts WM_CHAR (two for a double-byte character of the
// ANSI form). Everything else answers 0.
LRESULT DefWindowProcA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT DefWindowProcW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);

// Rectangles.
BOOL SetRect(LPRECT lprc, int xLeft, int yTop, int xRight, int yBottom);
BOOL SetRectEmpty(LPRECT lprc);
BOOL CopyRect(LPRECT lprcDst, const RECT* lprcSrc);
BOOL IsRectEmpty(const RECT* lprc);
BOOL EqualRect(const RECT* lprc1, const RECT* lprc2);
BOOL PtInRect(const RECT* lprc, POINT pt);
BOOL OffsetRect(LPRECT lprc, int dx, int dy);
BOOL InflateRect(LPRECT lprc, int dx, int dy);
BOOL IntersectRect(LPRECT lprcDst, const RECT* lprcSrc1, const RECT* lprcSrc2);
BOOL UnionRect(LPRECT lprcDst, const RECT* lprcSrc1, const RECT* lprcSrc2);

// Cursors. LoadCursorA knows the standard IDC_ cursors (null instance; the same shared handle
// each time) and no resources. LoadCursorFromFileA gives a cursor for a file that exists (the
// name goes through QzPlatform::ResolvePath); the file is not decoded. Destroying the current
// cursor leaves no cursor set; destroying a shared cursor does nothing and succeeds. The cursor
// position is what the host or SetCursorPos last set.
HCURSOR LoadCursorA(HINSTANCE hInstance, LPCSTR lpCursorName);
HCURSOR LoadCursorFromFileA(LPCSTR lpFileName);
HCURSOR SetCursor(HCURSOR hCursor);
HCURSOR GetCursor();
BOOL DestroyCursor(HCURSOR hCursor);
BOOL GetCursorPos(LPPOINT lpPoint);
BOOL SetCursorPos(int X, int Y);

// Keyboard state as the host sets it: 0x8000 when the key is down; GetKeyState adds bit 1
// when the key is toggled. Key messages do not change it by themselves.
SHORT GetKeyState(int nVirtKey);
SHORT GetAsyncKeyState(int vKey);

// Recorded for the host (QzPlatform::Host::TakeBeeps); no sound.
BOOL MessageBeep(UINT uType);

// Milliseconds of a monotonic clock, wrapping at 32 bits, unless the host sets the time.
DWORD timeGetTime();

// Input contexts. Every window gets its own default context at creation, associated with it
// and destroyed with it (ImmDestroyContext refuses it). A new context is open. ImmReleaseContext
// only checks its arguments. ImmGetCompositionString gives GCS_COMPSTR and GCS_RESULTSTR: a
// buffer length of 0 asks for the size in bytes (WCHAR units for the W form); otherwise whole
// characters are copied, without a terminating zero, and the byte count is returned. No
// WM_IME_NOTIFY or WM_IME_SETCONTEXT is sent by these functions.
HIMC ImmGetContext(HWND hWnd);
BOOL ImmReleaseContext(HWND hWnd, HIMC hIMC);
HIMC ImmCreateContext();
BOOL ImmDestroyContext(HIMC hIMC);
HIMC ImmAssociateContext(HWND hWnd, HIMC hIMC);
BOOL ImmGetOpenStatus(HIMC hIMC);
BOOL ImmSetOpenStatus(HIMC hIMC, BOOL fOpen);
BOOL ImmSetCompositionWindow(HIMC hIMC, COMPOSITIONFORM* lpCompForm);
BOOL ImmGetCompositionWindow(HIMC hIMC, COMPOSITIONFORM* lpCompForm);
LONG ImmGetCompositionStringA(HIMC hIMC, DWORD dwIndex, LPVOID lpBuf, DWORD dwBufLen);
LONG ImmGetCompositionStringW(HIMC hIMC, DWORD dwIndex, LPVOID lpBuf, DWORD dwBufLen);
