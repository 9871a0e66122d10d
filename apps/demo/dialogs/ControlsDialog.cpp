#include "ControlsDialog.h"

#include "framework/IQzGuiMgr.h"
#include "platform/system/text/QzCodePage.h"

#include <cstdio>

namespace
{

using namespace QzGui;

const WORD kMaxVolume = 100;
const int kStartVolume = 50;
// Volume change of one scroll-button step (and of each repeat while it is held).
const int kStep = 2;
// Scroll-button kinds: line up and line down.
const BYTE kLineUp = 0;
const BYTE kLineDown = 1;
const WPARAM kScrollLineUp = 0;
const WPARAM kScrollLineDown = 1;
// Progress bar styles.
const BYTE kVertical = 0;
const BYTE kHorizontal = 1;
const BYTE kSegmented = 2;
// The slider lies along x.
const DWORD kSliderHorizontal = 0;

enum : DWORD
{
    kCaptionId = 1,
    kResetId = 10,
    kPanelButtonId = 11,
    kBagButtonId = 14,
    kLoginButtonId = 15,
    kMarqueeCheckId = 12,
    kBarCheckId = 13,
    kTrackId = 19,
    kSliderId = 20,
    kQuieterId = 21,
    kLouderId = 22,
    kBarId = 30,
    kSegmentsId = 31,
    kVBarId = 32,
    kMarqueeId = 40,
};

const char* const kMarqueeText = "Welcome to the QzGui sample client - 欢迎光临 - drag the "
                                 "slider, hold an arrow, hover anything for its tip";

DWORD Clicked(DWORD nId)
{
    return (static_cast<DWORD>(QZ_BN_CLICKED) << 16) | nId;
}

} // namespace

CControlsDialog::CControlsDialog() : CQzDialog(kId, nullptr)
{
    m_slider.PreSetParam(kMaxVolume, kSliderHorizontal);
    m_slider.SetTarget(this);
    m_quieter.Attach(this, kLineDown);
    m_louder.Attach(this, kLineUp);
    POINT origin = {0, 0};
    m_bar.PreSetParam(0, kMaxVolume, kHorizontal, 1, &origin, 0, nullptr);
    m_segments.PreSetParam(0, kMaxVolume, kSegmented, 0, nullptr, 0, nullptr);
    m_vbar.PreSetParam(0, kMaxVolume, kVertical, 1, &origin, 0, nullptr);
    // Captions come before creation: a check box places its box after a left-aligned caption
    // when it loads its record.
    m_reset.SetWindowText("Reset");
    m_panel.SetWindowText("Panel");
    m_bag.SetWindowText("Bag");
    m_login.SetWindowText("Login");
    m_marqueeCheck.SetWindowText("Marquee");
    m_barCheck.SetWindowText("Bar");
    // Listed bottom to top: the track image lies under the slider that drags over it.
    AddCtrls(kCaptionId, &m_caption, kResetId, &m_reset, kPanelButtonId, &m_panel, kMarqueeCheckId,
             &m_marqueeCheck, kBarCheckId, &m_barCheck, kBagButtonId, &m_bag, kLoginButtonId,
             &m_login, kTrackId, &m_track, kSliderId, &m_slider, kQuieterId, &m_quieter, kLouderId,
             &m_louder, kBarId, &m_bar, kSegmentsId, &m_segments, kVBarId, &m_vbar, kMarqueeId,
             &m_marquee);
}

void CControlsDialog::OnInitDialog(uint64_t)
{
    AddMsgHandler(WM_COMMAND, Clicked(kResetId), &CControlsDialog::OnReset);
    AddMsgHandler(WM_COMMAND, Clicked(kPanelButtonId), &CControlsDialog::OnPanel);
    AddMsgHandler(WM_COMMAND, Clicked(kBagButtonId), &CControlsDialog::OnBag);
    AddMsgHandler(WM_COMMAND, Clicked(kLoginButtonId), &CControlsDialog::OnLogin);
    AddMsgHandler(WM_COMMAND, Clicked(kMarqueeCheckId), &CControlsDialog::OnMarqueeCheck);
    AddMsgHandler(WM_COMMAND, Clicked(kBarCheckId), &CControlsDialog::OnBarCheck);
}

// The dialog creates its controls at every showing (only those not created yet); the first
// time, the client gives them their start values.
void CControlsDialog::CreateCtrls()
{
    CQzDialog::CreateCtrls();
    if (m_bStarted)
        return;
    m_bStarted = true;
    m_marqueeCheck.SetCheck(TRUE);
    m_barCheck.SetCheck(TRUE);
    m_track.SetShowBack(true);
    // The marquee starts with its caption, on the pace its record gives it.
    m_marquee.SetWindowText(QzPlatform::Utf8ToAnsi(kMarqueeText).c_str());
    m_slider.SetValue(kStartVolume, TRUE);
}

LRESULT CControlsDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    // The slider reports every move (WM_HSCROLL, lParam its id); the scroll buttons send line
    // steps, once per press and again on every repeat, and a release code that needs nothing.
    if (message == WM_HSCROLL && static_cast<DWORD>(lParam) == kSliderId)
    {
        ShowVolume();
        return 1;
    }
    if (message == WM_VSCROLL && (wParam == kScrollLineUp || wParam == kScrollLineDown))
    {
        StepVolume(wParam == kScrollLineUp ? 1 : -1);
        return 1;
    }
    return CQzDialog::WindowProc(message, wParam, lParam);
}

void CControlsDialog::StepVolume(int nDirection)
{
    m_slider.SetValue(m_slider.GetValue() + nDirection * kStep, TRUE);
}

void CControlsDialog::ShowVolume()
{
    const int nVolume = m_slider.GetValue();
    m_bar.SetValue(nVolume);
    m_segments.SetValue(nVolume);
    m_vbar.SetValue(nVolume);
    char text[32];
    std::snprintf(text, sizeof(text), "Volume %d", nVolume);
    m_caption.SetWindowText(text);
}

void CControlsDialog::OnReset()
{
    m_slider.SetValue(0, TRUE);
}

void CControlsDialog::OnPanel()
{
    m_bPanelShown = !m_bPanelShown;
    if (m_bPanelShown)
        GetGuiMgr()->AutoShowDialog(kPanelId);
    else
        GetGuiMgr()->AutoHideDialog(kPanelId);
}

void CControlsDialog::OnBag()
{
    ToggleDialog(kCollectionsId);
}

void CControlsDialog::OnLogin()
{
    ToggleDialog(kLoginId);
}

void CControlsDialog::ToggleDialog(DWORD nId)
{
    CQzDialog* pDialog = GetGuiMgr()->FindDialog(nId);
    if (pDialog)
        pDialog->ShowWindow(pDialog->IsWindowVisible() ? SW_HIDE : SW_SHOW);
}

void CControlsDialog::OnMarqueeCheck()
{
    m_marquee.ShowWindow(m_marqueeCheck.GetCheck() ? SW_SHOW : SW_HIDE);
}

void CControlsDialog::OnBarCheck()
{
    m_vbar.ShowWindow(m_barCheck.GetCheck() ? SW_SHOW : SW_HIDE);
}
