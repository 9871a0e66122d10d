// The root of every window: identity and place in the tree, three rectangles (absolute,
// parent-relative and configured), the configuration record it was built from, a background
// drawn from an animation section, front and back 3D effect layers, visibility, enablement, hit
// testing, a cursor name, software timers and the message entry. No system window exists: a
// window is an object in the manager's tree and messages are virtual calls.
#pragma once

#include "framework/QzMsg.h"
#include "platform/render/DataSet.h"
#include "platform/services/QzNumeric.h"
#include "platform/system/QzSystem.h"

#include <cstdint>
#include <list>
#include <string>

class CGui3DEffect;
class IDataAni;
class IMyBitmap;

namespace QzGui
{

class IQzGuiMgr;
class CQzGuiMgr;
class CQzCursorMgr;
class CQzBackDrawer;
class CQzLookHash;
class IQzGuiWndInfo;

// A software timer: fired by ProcessTimers once its elapse has passed since the last firing.
struct QzTimerEntry
{
    DWORD nId;
    DWORD nElapse;
    DWORD dwLast;
    unsigned char data[24];
};

class CQzBaseWindow
{
public:
    CQzBaseWindow();
    // A copy takes every value of the source. It holds its own 3D effect layers (sharing the
    // source's effect objects), its own back bitmap and its own copy of an owned region, so
    // either window may be destroyed first. A copy is in no manager's window tree.
    CQzBaseWindow(const CQzBaseWindow& other);
    CQzBaseWindow& operator=(const CQzBaseWindow& other);

    // Virtual operations, in slot order.
    virtual ~CQzBaseWindow();
    virtual BOOL LoadWndInfo();
    virtual void SetAniName(const char* pszName);
    virtual const char* GetAniName();
    virtual void DrawBack();
    virtual void SetFrameMode(BOOL bFrameMode);
    virtual void LoadFrontEffect(const char* pszName, bool bPlay, bool bFit);
    virtual void LoadBackEffect(const char* pszName, bool bPlay, bool bFit);
    virtual void PlayBackEffect(const char* pszName);
    virtual void PlayFrontEffect(const char* pszName);
    virtual BOOL HasFrontEffect(const char* pszName);
    virtual BOOL HasBackEffect(const char* pszName);
    virtual void DrawFrontEffect();
    virtual void DrawFrontEffectAt(int x, int y, int nUnused);
    virtual void DrawBackEffect();
    virtual void DrawBackEffectAt(int x, int y, int nUnused);
    virtual void UpdateEffects();
    virtual void SetCursorName(const char* pszName);
    virtual void OnKeyUp(UINT /*nChar*/, UINT /*nRepCnt*/, UINT /*nFlags*/) {}
    virtual void OnKeyDown(UINT /*nChar*/, UINT /*nRepCnt*/, UINT /*nFlags*/) {}
    virtual void OnLButtonDown(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnLButtonUp(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnLButtonDblClk(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnRButtonDown(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnRButtonUp(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnRButtonDblClk(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnMouseMove(UINT /*nFlags*/, POINT /*point*/) {}
    virtual void OnMouseWheel(WORD /*nKeys*/, short /*nDelta*/, int /*x*/, int /*y*/) {}
    virtual void OnMouseEnter();
    virtual void OnMouseLeave() {}
    virtual int GetWndType() = 0;
    virtual BOOL EnableWindow(BOOL bEnable);
    virtual LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam);
    virtual void SetInfoVariant(DWORD nVariant);
    virtual void MoveWindow(RECT* pOutLocal, int x, int y, int nWidth, int nHeight, BOOL bRepaint);
    virtual BOOL Show() { return 1; }
    virtual BOOL OnShowing(int /*nCmdShow*/) { return 1; }
    virtual BOOL IsAutoClose(DWORD /*nEvent*/) { return 1; }
    virtual BOOL OnHiding(int /*nCmdShow*/) { return 1; }
    virtual BOOL OnCreate() = 0;
    virtual void OnTimer(DWORD /*nTimerId*/) {}
    virtual void DrawEffect(CGui3DEffect* pEffect, int x, int y);
    virtual void LoadEffect(CGui3DEffect* pEffect, const char* pszName, bool bPlay, bool bFit);
    virtual void PlayEffect(CGui3DEffect* pEffect, const char* pszName);
    virtual void DrawAniGroup(const char* pszGroup, int x, int y);
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL PreTranslateMessage(QzMsg* /*pMsg*/) { return 0; }

    // Life.
    BOOL Create(IQzGuiMgr* pGuiMgr);
    IQzGuiMgr* GetGuiMgr();

    // Identity and tree.
    void SetId(DWORD nId) { m_nId = nId; }
    DWORD GetId() const { return m_nId; }
    DWORD GetParentId() const { return m_nParentId; }
    // Parent id in the low 16 bits, own id in the high 16 bits.
    DWORD GetFullId() const;
    void SetParent(CQzBaseWindow* pParent) { m_pParent = pParent; }
    CQzBaseWindow* GetParent() const { return m_pParent; }
    CQzBaseWindow* GetRootWindow();
    void SetInfoId(DWORD nInfoId) { m_nInfoId = nInfoId; }
    void SetUseInfo(bool bUse) { m_bUseInfo = bUse; }
    bool GetUseInfo() const { return m_bUseInfo; }
    IQzGuiWndInfo* GetWndInfo() const { return m_pWndInfo; }

    // Geometry.
    void MoveWindow(const RECT& rect, BOOL bRepaint);
    const RECT& MoveWindow(const RECT* pRect, BOOL bRepaint);
    void MoveWindow(const RECT* pRect);
    void SetPos(int x, int y);
    // Places the window at an absolute rectangle, leaving its parent-relative one as it is;
    // sends WM_SIZE and WM_MOVE as a move does. Dialogs place their children with it.
    void PlaceAbsolute(int x, int y, int nWidth, int nHeight);
    void ResetPosition();
    void CenterWindow(int nMode, bool bUseAniSize);
    const RECT& GetWindowRect() const { return m_rcWindow; }
    const RECT& GetLocalRect() const { return m_rcLocal; }
    BOOL GetOriginRect(RECT* pRect) const;
    POINT GetPos() const { return {m_rcWindow.left, m_rcWindow.top}; }
    POINT GetLocalPos() const { return {m_rcLocal.left, m_rcLocal.top}; }
    POINT GetOriginPos() const { return {m_rcOrigin.left, m_rcOrigin.top}; }
    // The window's position added up with its ancestors': its absolute top-left.
    POINT GetPosSum() const { return GetPos(); }
    int GetX() const { return m_rcWindow.left; }
    int GetY() const { return m_rcWindow.top; }
    int GetWidth() const { return QzPlatform::SubClamped(m_rcWindow.right, m_rcWindow.left); }
    int GetHeight() const { return QzPlatform::SubClamped(m_rcWindow.bottom, m_rcWindow.top); }

    // Coordinates between the screen and this window.
    void ScreenToClient(POINT* pPoint);
    void ScreenToClient(RECT* pRect);
    void ClientToScreen(POINT* pPoint);
    void ClientToScreen(RECT* pRect);
    RECT GetScreenRect();
    void GetScreenRect(RECT* pRect);

    // Visibility and state.
    void ShowWindow(int nCmdShow);
    BOOL IsWindowVisible() const { return m_bVisible && !m_bDisable; }
    BOOL IsWindowEnabled() const { return m_bEnable && !m_bDisable; }
    BOOL IsDisable() const { return m_bDisable; }
    void SetState(WORD wState)
    {
        m_wState = wState;
        ForgetLook();
    }
    WORD GetState() const { return m_wState; }
    void SetAlpha(BYTE byAlpha)
    {
        m_byAlpha = byAlpha;
        ForgetLook();
    }
    BYTE GetAlpha() const { return m_byAlpha; }
    void SetShowBack(bool bShow)
    {
        m_bShowBack = bShow;
        ForgetLook();
    }

    // Background.
    void SetBackType(DWORD nType)
    {
        m_nBackType = nType;
        ForgetLook();
    }
    DWORD GetBackType() const { return m_nBackType; }
    void SetBackBitmap(const char* pszFile);
    void SetPicOffset(int x, int y)
    {
        m_ptPicOffset = {x, y};
        ForgetLook();
    }
    void SetPicOffset2(int x, int y)
    {
        m_ptPicOffset2 = {x, y};
        ForgetLook();
    }
    void SetFramePicOffset(int x, int y, int nFrame);
    void SetAniOffset(const RECT& rc)
    {
        m_rcAniOffset = rc;
        ForgetLook();
    }
    RECT GetAniOffset() const { return m_rcAniOffset; }
    POINT GetPicOffset() const { return m_ptPicOffset; }
    BOOL GetFrameMode() const { return m_bFrameMode; }
    DWORD GetInfoVariant() const { return m_nInfoVariant; }

    // Hit testing and mouse.
    BOOL PtInWindow(int x, int y);
    BOOL IsMouseOver();
    bool IsMouseIn() const { return m_bMouseIn; }
    BOOL GetCursorPos(POINT* pPoint);
    BOOL CheckMouseLeave();
    void SetRegion(HRGN hRgn);
    void SetCapture();
    void ReleaseCapture();
    bool IsCapture();

    // Software timers.
    DWORD SetTimer(DWORD nId, DWORD nElapse, const void* pData = nullptr);
    BOOL KillTimer(DWORD nId);
    BOOL HasTimer(DWORD nId) const;
    void KillAllTimers()
    {
        m_lstTimer.clear();
        ForgetLook();
    }
    void ProcessTimers();

    // Values for the host.
    void SetUserData1(DWORD n) { m_nUserData1 = n; }
    void SetUserData2(DWORD n) { m_nUserData2 = n; }
    DWORD GetUserData1() const { return m_nUserData1; }
    DWORD GetUserData2() const { return m_nUserData2; }
    // Position 0 only; any other throws std::out_of_range("invalid bitset position").
    void SetUserFlag(size_t nPos);
    void ResetUserFlag(size_t nPos);
    bool TestUserFlag(size_t nPos) const;

protected:
    // The manager as its class, for the operations beyond the host interface; null without one.
    CQzGuiMgr* GetMgr() const;
    // As GetMgr, for an operation that cannot work without a manager: reports a missing one.
    CQzGuiMgr* RequireMgr();
    void ApplyRecord(IQzGuiWndInfo* pInfo);
    void ApplyExtras(IQzGuiWndInfo* pInfo);
    void LoadBackFile(const char* pszFile);
    void LoadRegion(IQzGuiWndInfo* pInfo);
    bool IsInfoWanted();
    BOOL HitMask(int x, int y);
    bool IsDebugDraw() const;
    // Adds what DrawBack reads of the window to a look digest (the rectangle, the section, its
    // offsets, the state, alpha and the back's flags; the data set's epoch, which follows the
    // section's contents, and debug mode, which outlines the window under the mouse, are the
    // caller's). False when the back is drawn every frame: a bitmap or a group's pieces (objects
    // of their own), an effect (it moves on its own).
    bool AddBackLook(CQzLookHash& hash) const;
    // What a look digest covers changed: the digest kept is worked out again (see
    // CQzCtrl::LookOf).
    void ForgetLook() { m_nKeptLook = 0; }
    void DrawTextured();
    // A section of the control file by name (null: none); the window's own section
    // (m_strAniName) is found by name only after a reload or purge of the data set.
    IDataAni* AniOf(const char* pszName);
    bool DrawBackImage(const CQzBackDrawer& drawer, IDataAni* pAni, POINT& ptDrawn);
    // Sets m_strAniName; the section found under the old name is forgotten.
    void SetOwnAniName(const char* pszName);
    void ReleaseOwnedRegion();
    void ReleaseResources();
    void TakeWndInfo(IQzGuiWndInfo* pInfo);
    void CopyValues(const CQzBaseWindow& other);
    void CopyResources(const CQzBaseWindow& other);
    void ReleaseCaptureIfHeld();
    // Lets the manager's key focus go when it is this window or one of its children.
    void ReleaseKeyFocusIfHeld();
    CQzCursorMgr* GetCursorMgr() const;

    // Members by size, largest first, so that a window carries no padding: screens have tens
    // of thousands of windows.
    std::string m_strCursor;
    std::string m_strAniName;
    // File of m_pBackBitmap, so that a copy loads its own bitmap.
    std::string m_strBackFile;
    std::list<QzTimerEntry> m_lstTimer;
    IQzGuiMgr* m_pQzGuiMgr = nullptr;
    IQzGuiWndInfo* m_pWndInfo = nullptr;
    CGui3DEffect* m_pBackEffect = nullptr;
    CGui3DEffect* m_pFrontEffect = nullptr;
    HRGN m_hRgn = nullptr;
    CQzBaseWindow* m_pParent = nullptr;
    IMyBitmap* m_pBackBitmap = nullptr;
    // The look digest of the window's own fields, kept while none of them changes (0: none kept).
    uint64_t m_nKeptLook = 0;
    RECT m_rcAniOffset = {0, 0, 0, 0};
    RECT m_rcWindow = {0, 0, 0, 0};
    RECT m_rcLocal = {0, 0, 0, 0};
    RECT m_rcOrigin = {0, 0, 0, 0};
    POINT m_ptPicOffset = {0, 0};
    POINT m_ptPicOffset2 = {0, 0};
    // The data set's entry of m_strAniName's section (AniOf).
    QzPlatform::AniRef m_aniRef;
    DWORD m_nParentId = 0;
    DWORD m_nInfoVariant = 0;
    DWORD m_nInfoId = 0;
    DWORD m_nUserData1 = 0;
    DWORD m_nUserData2 = 0;
    int m_nOffsetFrame = -1;
    DWORD m_nBackType = 0;
    BOOL m_bFrameMode = 0;
    BOOL m_bEnable = 1;
    BOOL m_bDisable = 0;
    DWORD m_nId = 0;
    WORD m_wState = 0;
    BYTE m_byAlpha = 255;
    bool m_bMouseIn = false;
    bool m_bShowBack = true;
    bool m_bUseInfo = true;
    bool m_bVisible = false;
    bool m_bUserFlag = false;
    // The region came from the layout manager's region table and is this window's to delete.
    bool m_bOwnRgn = false;
};

} // namespace QzGui
