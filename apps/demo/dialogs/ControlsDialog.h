// The controls window of the sample client: one of each control kind, wired together the way a
// game's options page would be. A slider sets a volume from 0 to 100 that three progress bars
// show; two scroll buttons step it and repeat while held; "Reset" puts it back to 0; check
// boxes show and hide the marquee and the vertical bar; "Panel" shows and hides a window that
// the library built from ini/GUI_EX.ini alone; "Bag" shows and hides the collections window and
// "Login" the login window.
// Every control has a tip in the layout.
#pragma once

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzImage.h"
#include "controls/QzProgress.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "controls/QzWHLStatic.h"
#include "framework/QzDialog.h"

class CControlsDialog : public QzGui::CQzDialog
{
public:
    static constexpr DWORD kId = 500;
    // The dialog of ini/GUI_EX.ini that "Panel" shows and hides.
    static constexpr DWORD kPanelId = 600;
    // The collections window that "Bag" shows and hides.
    static constexpr DWORD kCollectionsId = 700;
    // The login window that "Login" shows and hides.
    static constexpr DWORD kLoginId = 800;

    CControlsDialog();
    // The back is the library's: a device that keeps what it drew repeats it.
    bool HasStockBack() const override { return true; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void CreateCtrls() override;
    void OnInitDialog(uint64_t nParam) override;

    int GetVolume() { return m_slider.GetValue(); }

private:
    void OnReset();
    void OnPanel();
    void OnBag();
    void OnLogin();
    void ToggleDialog(DWORD nId);
    void OnMarqueeCheck();
    void OnBarCheck();
    // The slider moved: the bars and the caption follow it.
    void ShowVolume();
    // A scroll button's step: +1 louder, -1 quieter.
    void StepVolume(int nDirection);

    QzGui::CQzStatic m_caption;
    QzGui::CQzButton m_reset;
    QzGui::CQzButton m_panel;
    QzGui::CQzButton m_bag;
    QzGui::CQzButton m_login;
    QzGui::CQzCheck m_marqueeCheck;
    QzGui::CQzCheck m_barCheck;
    QzGui::CQzImage m_track;
    QzGui::CQzSlider m_slider;
    QzGui::CQzScrollButton m_quieter;
    QzGui::CQzScrollButton m_louder;
    QzGui::CQzProgress m_bar;
    QzGui::CQzProgress m_segments;
    QzGui::CQzProgress m_vbar;
    QzGui::CQzWHLStatic m_marquee;
    bool m_bPanelShown = false;
    bool m_bStarted = false;
};
