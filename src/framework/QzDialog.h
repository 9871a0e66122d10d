// A window that holds controls and child dialogs: it reads its dialog attributes from its
// record, creates its controls lazily, routes the mouse to its children, dispatches WM_COMMAND
// and WM_NOTIFY through a message map, drags, flies in and out from a screen edge, plays its
// open and close sounds and draws itself with its children every frame. Hosts derive their
// dialogs from it and override the hooks.
#pragma once

#include "framework/QzBaseWindow.h"

#include <functional>
#include <initializer_list>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace QzGui
{

// The one-operation interface a host can address a dialog through; the library never calls it.
class IMyMsgCallBack
{
public:
    virtual void OnMsgCallBack(DWORD nCode, uint64_t nData) = 0;

protected:
    ~IMyMsgCallBack() = default;
};

// A control of a dialog; the dialog owns the entry, not the control. Entries not yet created
// precede created ones.
struct QzCtrlEntry
{
    bool bCreated = false;
    DWORD nId = 0;
    int nType = 0;
    CQzBaseWindow* pCtrl = nullptr;
};

class CQzDialog : public CQzBaseWindow, public IMyMsgCallBack
{
public:
    // A message-map handler: a member function of the host's dialog class, without arguments.
    using Handler = std::function<void(CQzDialog*)>;

    CQzDialog(DWORD nId, CQzBaseWindow* pParent);
    // A dialog is registered with a manager and owns the creation of its controls: no copies.
    CQzDialog(const CQzDialog&) = delete;
    CQzDialog& operator=(const CQzDialog&) = delete;

    // CQzBaseWindow overrides.
    ~CQzDialog() override;
    BOOL LoadWndInfo() override;
    void SetFrameMode(BOOL bFrameMode) override;
    int GetWndType() override { return QZ_WND_DIALOG; }
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetInfoVariant(DWORD nVariant) override;
    BOOL Show() override;
    BOOL OnHiding(int nCmdShow) override;
    BOOL OnCreate() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreTranslateMessage(QzMsg* pMsg) override;

    // New virtual operations, in slot order.
    virtual void OnManagerNotify() {}
    virtual void CreateCtrls();
    virtual void OnCreateCtrls() {}
    virtual void ReloadInfo(int nMode);
    virtual void OnInitDialog(uint64_t /*nParam*/) {}
    virtual void OnAfterDraw() {}
    virtual void DrawCtrls();
    virtual void OnHoverDraw() {}
    virtual void DrawChildDialogs();
    virtual BOOL CloseByEvent(DWORD nEvent);
    virtual LRESULT RouteToChildren(UINT message, WPARAM wParam, LPARAM lParam);
    virtual void OnUserHook() {}
    virtual BOOL CanHandleEvent(DWORD /*nCode*/) { return 0; }
    virtual void HandleEvent(DWORD /*nCode*/) {}
    virtual void OnCreated() {}
    virtual void OnDrag(UINT nFlags, int x, int y);
    virtual void OnSize(WPARAM /*nWidth*/, LPARAM /*nHeight*/) {}
    virtual void OnMove(WPARAM x, LPARAM y);
    virtual BOOL OnCommand(WORD nCode, WORD nId);
    virtual BOOL OnNotify(WORD nCode, WORD nId);
    // After the slots above: whether DrawBack and DrawBackEffect are the library's. A device that
    // keeps what it drew then repeats the back while its look (section, rectangle, state,
    // alpha...) stays. True for CQzDialog itself; a host's class that keeps them returns true.
    virtual bool HasStockBack() const;

    // IMyMsgCallBack: nothing.
    void OnMsgCallBack(DWORD /*nCode*/, uint64_t /*nData*/) override {}

    // The per-frame draw of the manager or the parent dialog, and the hover drawing of the
    // dialog under the mouse.
    void Draw();
    void DrawHover();

    // Controls.
    void AddCtrl(DWORD nId, CQzBaseWindow* pCtrl);
    // (id, control) pairs, at most 20.
    template <typename... Rest> void AddCtrls(DWORD nId, CQzBaseWindow* pCtrl, Rest... rest)
    {
        static_assert(sizeof...(Rest) <= 38, "at most 20 controls");
        if (nId && pCtrl)
            AddCtrl(nId, pCtrl);
        if constexpr (sizeof...(Rest) > 0)
            AddCtrls(rest...);
    }
    const QzCtrlEntry* FindCtrlEntry(DWORD nId) const;
    CQzBaseWindow* FindCtrl(DWORD nFullId);
    void CreateCtrl(CQzBaseWindow* pCtrl, BOOL bShow);
    void MoveCtrlToEnd(DWORD nId);
    // Takes the control out of the dialog, created or not: it is no longer drawn, hit, moved or
    // reloaded, and the manager lets go of it (capture, key focus). The host deletes it then.
    void RemoveCtrl(CQzBaseWindow* pCtrl);
    const std::list<QzCtrlEntry>& GetCtrlEntries() const { return m_lstCtrl; }

    // Child dialogs.
    void AddChildDialog(CQzDialog* pDialog, bool bCreateCtrls);
    // Dialogs (at most 20); a final `true` creates their controls when they are created.
    void AddChildDialogs(std::initializer_list<CQzDialog*> dialogs, bool bCreateCtrls = false);
    CQzDialog* FindChildDialog(DWORD nId);
    CQzDialog* GetParentDialog();
    const std::list<std::pair<DWORD, CQzDialog*>>& GetChildDialogs() const { return m_lstChildDlg; }

    // Message map. The packed value holds the notification code in the high 16 bits and the
    // control id in the low 16 bits. The first entry for a (kind, code, id) stays.
    void AddMsgHandler(UINT nKind, DWORD nPacked, Handler handler);
    template <typename T> void AddMsgHandler(UINT nKind, DWORD nPacked, void (T::*pfn)())
    {
        if (!pfn)
            return;
        AddMsgHandler(nKind, nPacked,
                      [pfn](CQzDialog* pDialog) { (static_cast<T*>(pDialog)->*pfn)(); });
    }

    // State.
    void SetValid(bool bValid);
    bool IsValid() const { return m_bValid; }
    void SetMovable(bool bMovable) { m_bMovable = bMovable; }
    bool IsMovable() const { return m_bMovable; }
    void SetFlyDir(int nDir) { m_nFlyDir = nDir; }
    int GetFlyDir() const { return m_nFlyDir; }
    BOOL StartFly(POINT ptTarget, int nStep);
    bool IsFlying() const { return m_bFlying != 0; }
    void BringToTopIfClickToTop();
    bool IsVisible();
    void SetDefaultCtrl(CQzBaseWindow* pCtrl);
    void ClearDefaultCtrl() { m_pDefaultCtrl = nullptr; }
    CQzBaseWindow* GetDefaultCtrl() const { return m_pDefaultCtrl; }
    void SetPushable(bool bPushable) { m_bPushable = bPushable; }
    bool IsPushable() const { return m_bPushable; }
    void SetCreateCtrlsOnCreate(bool bCreate) { m_bCreateCtrlsOnCreate = bCreate; }
    void SetNoFlyOut(bool bNoFlyOut) { m_bNoFlyOut = bNoFlyOut; }
    bool IsClickToTop() const { return m_bClickToTop; }
    bool IsTrans() const { return m_bTrans; }
    BOOL IsTopmost() const { return m_bTopmost; }
    BOOL IsExtraShow() const { return m_bExtraShow; }
    bool IsDragging() const { return m_bDragging; }
    int GetFlyInStep() const { return m_nFlyInStep; }
    int GetFlyOutStep() const { return m_nFlyOutStep; }
    BOOL IsIgnoreEscClose() const { return m_bIgnoreEscClose; }
    BOOL IsRClose() const { return m_bRClose; }
    BOOL IsIgnoreScrChgClose() const { return m_bIgnoreScrChgClose; }
    BOOL IsIgnoreEnterBattleClose() const { return m_bIgnoreEnterBattleClose; }
    BOOL IsIgnoreSwitchSrvClose() const { return m_bIgnoreSwitchSrvClose; }
    BOOL IsIgnoreChgMapClose() const { return m_bIgnoreChgMapClose; }
    CQzBaseWindow* GetHoverCtrl() const { return m_pHoverCtrl; }
    CQzDialog* GetHoverDlg() const { return m_pHoverDlg; }

protected:
    struct MsgMapEntry
    {
        UINT nKind;
        WORD nCode;
        WORD nId;
        Handler handler;
    };

    // WM_SHOWWINDOW: the open or close sound, and on showing the fly-in from the screen edge.
    void OnShowWindowEffects(bool bShown);
    // A dialog whose fly has ended wholly outside the screen hides (the fly-finished message).
    void HideIfOffScreen();
    // Just outside the screen edge of the fly direction, in the row or column of `from`.
    POINT OffScreenPoint(POINT from) const;
    void StepFly();
    BOOL RunHandler(WORD nCode, WORD nId);
    void ApplyDialogAttributes(const IQzGuiWndInfo* pInfo);
    void OnDialogMouseMove(UINT nFlags, POINT point);
    void PlayRecordSound(bool bOpen);
    CQzDialog* ChildDialogAt(int x, int y);
    QzCtrlEntry* CtrlEntryAt(UINT message, int x, int y);
    void DrawCtrl(CQzBaseWindow* pCtrl);
    // The look digest of a stock back: what DrawBack reads. 0 (drawn every frame) for a back
    // of the host's own and for backs that move on their own.
    uint64_t BackLook() const;
    void DrawRest(const std::vector<CQzBaseWindow*>& rest);
    const std::vector<CQzBaseWindow*>& DrawOrder();
    bool IsParentVisible();
    bool HoldsAsAncestor(const CQzDialog* pDialog) const;
    int ScreenWidth() const;
    int ScreenHeight() const;

    bool m_bClickToTop = true;
    bool m_bTrans = false;
    bool m_bCreateCtrlsOnCreate = false;
    BOOL m_bTopmost = 0;
    BOOL m_bExtraShow = 0;
    bool m_bValid = false;
    bool m_bMovable = false;
    bool m_bPushable = true;
    bool m_bDragging = false;
    int m_nFlyDir = 0;
    bool m_bNoFlyOut = false;
    std::list<QzCtrlEntry> m_lstCtrl;
    // The created controls in the order of m_lstCtrl, for the frame's walk: one array instead
    // of a list node and an entry a control. Made again after m_lstCtrl changed.
    std::vector<CQzBaseWindow*> m_vecDrawOrder;
    unsigned m_nCtrlListVersion = 0;
    unsigned m_nDrawOrderVersion = ~0u;
    POINT m_ptDragAnchor = {0, 0};
    std::list<MsgMapEntry> m_lstMsgMap;
    std::list<std::pair<DWORD, CQzDialog*>> m_lstChildDlg;
    CQzBaseWindow* m_pDefaultCtrl = nullptr;
    CQzBaseWindow* m_pHoverCtrl = nullptr;
    CQzDialog* m_pHoverDlg = nullptr;
    int m_bFlying = 0;
    POINT m_ptFlyTarget = {0, 0};
    int m_nFlyStep = 0;
    int m_nFlyInStep = 0;
    int m_nFlyOutStep = 0;
    std::string m_strFlyInEffect;
    std::string m_strFlyOutEffect;
    BOOL m_bIgnoreEscClose = 0;
    BOOL m_bRClose = 0;
    BOOL m_bIgnoreScrChgClose = 0;
    BOOL m_bIgnoreEnterBattleClose = 0;
    BOOL m_bIgnoreSwitchSrvClose = 0;
    BOOL m_bIgnoreChgMapClose = 0;
};

} // namespace QzGui
