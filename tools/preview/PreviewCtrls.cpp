#include "PreviewCtrls.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzImage.h"
#include "controls/QzProgress.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "framework/QzMsg.h"

namespace QzPreview
{

namespace
{

using namespace QzGui;

// Bars and sliders run from 0 to kRange and stand at the middle.
constexpr int kRange = 100;
constexpr int kHalf = kRange / 2;

bool IsWide(const IQzGuiWndInfo& info)
{
    return info.GetWidth() >= info.GetHeight();
}

std::unique_ptr<CQzCtrl> MakeImage()
{
    auto image = std::make_unique<CQzImage>();
    image->SetShowBack(true);
    return image;
}

} // namespace

CPreviewCtrls::CPreviewCtrls() = default;
CPreviewCtrls::~CPreviewCtrls() = default;

void CPreviewCtrls::Add(CQzDialog& dialog, const PreviewCtrlRecord& ctrl, const IQzGuiWndInfo& info)
{
    m_vecCtrls.push_back(Make(ctrl.nType, info));
    dialog.AddCtrl(ctrl.nId, m_vecCtrls.back().get());
}

std::unique_ptr<CQzCtrl> CPreviewCtrls::Make(int nType, const IQzGuiWndInfo& info)
{
    switch (nType)
    {
    case QZ_WND_BUTTON:
        return std::make_unique<CQzButton>();
    case QZ_WND_STATIC:
    case QZ_WND_RECORD_STATIC:
        return std::make_unique<CQzStatic>();
    case QZ_WND_CHECK:
        return std::make_unique<CQzCheck>();
    case QZ_WND_PROGRESS:
        return MakeProgress(info);
    case QZ_WND_SLIDER:
        return MakeSlider(info);
    case QZ_WND_SCROLLBUTTON:
        return std::make_unique<CQzScrollButton>();
    default:
        // Images included: a preview shows the skin the host would draw its picture on.
        return MakeImage();
    }
}

// The game sets a bar's style and layers in code. The preview fills along the longer side
// (the record's "ProgressStyle" replaces that when the bar loads the record) and turns on the
// back and front layers, which draw only when the section has frames 1 and 2.
std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeProgress(const IQzGuiWndInfo& info)
{
    auto bar = std::make_unique<CQzProgress>();
    bar->PreSetParam(0, kRange, IsWide(info) ? QZ_PROGRESS_HORIZONTAL : QZ_PROGRESS_VERTICAL, TRUE,
                     nullptr, TRUE, nullptr);
    m_vecBars.push_back(bar.get());
    return bar;
}

// A slider lies along the longer side of its record.
std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeSlider(const IQzGuiWndInfo& info)
{
    const DWORD nStyle = IsWide(info) ? QZ_SLIDER_HORZ : QZ_SLIDER_VERT;
    auto slider = std::make_unique<CQzSlider>();
    slider->PreSetParam(static_cast<WORD>(kRange), nStyle);
    m_vecSliders.push_back(slider.get());
    return slider;
}

void CPreviewCtrls::Start()
{
    for (const auto& ctrl : m_vecCtrls)
    {
        const IQzGuiWndInfo* pInfo = ctrl->GetWndInfo();
        if (pInfo && *pInfo->GetTitle())
            ctrl->SetWindowText(pInfo->GetTitle());
    }
    // The value maps onto the track, which is known once the slider has its size.
    for (CQzSlider* pSlider : m_vecSliders)
        pSlider->SetValue(kHalf, FALSE);
    for (CQzProgress* pBar : m_vecBars)
        pBar->SetValue(kHalf);
}

void CPreviewCtrls::Clear()
{
    m_vecBars.clear();
    m_vecSliders.clear();
    m_vecCtrls.clear();
}

} // namespace QzPreview
