// The host's entry to the window system: one manager drives one host window. The host gets it
// from CreateGuiMgr, calls Init, then Show every frame and OnMessage for every message of its
// window procedure, and ends it with Release (the interface has no virtual destructor).
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace QzGui
{

class CQzBaseWindow;
class CQzDialog;
class CQzCursorMgr;
class IQzGuiWndInfo;
class IQzGuiApplyShow;
struct QzCursorEntry;

// Host conversion of a point (for instance into a scaled render target).
typedef void (*QzTransformProc)(int x, int y, int* outX, int* outY);
// Host sound player: name, four reserved values, volume (0..100).
typedef void (*QzSoundProc)(const char* name, int, int, int, int, int volume);

// A small record kept for the host; its first field starts at 2.
struct QzGuiMgrExtra
{
    int nValue = 2;
    int nReserved[3] = {0, 0, 0};
};

class IQzGuiMgr
{
public:
    virtual BOOL Init(HINSTANCE hInstance, HWND hWnd, int nDefaultDlgId,
                      const char* pszLayoutFile) = 0;
    virtual void LoadLayout(const char* pszFile) = 0;
    virtual void UnhideDialogs() = 0;
    virtual void ReloadLayout() = 0;
    virtual void ReloadDialog(DWORD nDialogId) = 0;
    virtual int Release() = 0;
    virtual void SetTransformCallback(QzTransformProc pfn) = 0;
    virtual void SetSoundCallback(QzSoundProc pfn) = 0;
    virtual void PlaySound(const char* pszName, int a = 0, int b = 0, int c = 0, int d = 0,
                           int nVolume = 100) = 0;
    virtual void SetScreenSize(int nWidth, int nHeight) = 0;
    virtual void AddTip(int x, int y, int nWidth, const char* pszBackSection,
                        const std::vector<std::string>& lines, int nAlign) = 0;
    virtual void ShowTipNow(int x, int y, const char* pszText, DWORD dwLineValue, int nMinWidth,
                            int nHeight, const std::string& strBackSection) = 0;
    virtual void AddDialog(CQzDialog* pDialog, CQzBaseWindow* pParent, bool bCreateCtrls) = 0;
    virtual void RemoveDialog(CQzDialog* pDialog) = 0;
    virtual CQzDialog* FindDialog(DWORD nId) = 0;
    virtual CQzDialog* GetActiveDialog() = 0;
    virtual void Show() = 0;
    virtual void ShowExtra() = 0;
    virtual void DrawTips() = 0;
    virtual void AutoShowDialog(DWORD nId) = 0;
    virtual void AutoHideDialog(DWORD nId) = 0;
    virtual void CloseDialogs(DWORD nEvent) = 0;
    virtual void SetDialogsShown(bool bShown) = 0;
    virtual void BringToTop(DWORD nDialogId) = 0;
    virtual CQzDialog* DialogFromPoint(POINT pt) = 0;
    virtual CQzCursorMgr* GetCursorMgr() = 0;
    virtual void GetMousePos(POINT* pPoint) = 0;
    virtual const char* GetHostString(int nIndex) = 0;
    virtual void SetHostStrings(const char* psz1, const char* psz2) = 0;
    virtual const QzCursorEntry* FindCursor(const char* pszName) = 0;
    virtual void SetFrameMode(DWORD nDialogId, BOOL bFrameMode) = 0;
    virtual void SplitText(const char* pszText, std::vector<std::string>& lines,
                           int& nMaxLength) = 0;
    virtual void TransformPoint(int x, int y, int* pOutX, int* pOutY) = 0;
    virtual BOOL OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    virtual void SetDebugMode(int nMode) = 0;
    virtual int GetDebugMode() = 0;
    virtual DWORD GetFocusId() = 0;
    virtual BOOL GetDebugPos(int* pX, int* pY) = 0;
    virtual IQzGuiWndInfo* GetWndInfo(DWORD nParentId, DWORD nId) = 0;
    virtual void SetDrawHook(IQzGuiApplyShow* pHook, DWORD nDialogId) = 0;
    virtual QzGuiMgrExtra* GetExtra() = 0;
    virtual void BroadcastEvent(DWORD nCode) = 0;
    virtual bool IsUnderMouse(CQzBaseWindow* pWindow) = 0;
    virtual void SetInfoString(uint64_t nRecordKey, const char* pszText) = 0;
    virtual void NotifyAllDialogs() = 0;

protected:
    ~IQzGuiMgr() = default;
};

// Creates a manager and registers it with the GUI helper; null when out of memory.
IQzGuiMgr* CreateGuiMgr();

} // namespace QzGui
