// The controls of a previewed dialog, one per record whose parent is the dialog. The record's
// window type picks the class; a type the preview does not know (lists, grids, trees, edit
// boxes, none) becomes an image with its background on, so that the record's skin shows where
// the control will be. Bars and sliders stand at half their range, captions are the records'
// titles.
#pragma once

#include "PreviewLayout.h"

#include "controls/QzCtrl.h"
#include "framework/QzDialog.h"
#include "layout/IQzGuiWndInfo.h"

#include <memory>
#include <vector>

namespace QzGui
{
class CQzProgress;
class CQzSlider;
} // namespace QzGui

namespace QzPreview
{

class CPreviewCtrls
{
public:
    CPreviewCtrls();
    ~CPreviewCtrls();
    CPreviewCtrls(const CPreviewCtrls&) = delete;
    CPreviewCtrls& operator=(const CPreviewCtrls&) = delete;

    // Makes the control for the record and adds it to the dialog (before the dialog's controls
    // are created).
    void Add(QzGui::CQzDialog& dialog, const PreviewCtrlRecord& ctrl,
             const QzGui::IQzGuiWndInfo& info);
    // After the controls are created: titles, values.
    void Start();
    size_t Count() const { return m_vecCtrls.size(); }
    // Deletes the controls; their dialog must be gone or out of the manager.
    void Clear();

private:
    std::unique_ptr<QzGui::CQzCtrl> Make(int nType, const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeProgress(const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeSlider(const QzGui::IQzGuiWndInfo& info);

    std::vector<std::unique_ptr<QzGui::CQzCtrl>> m_vecCtrls;
    std::vector<QzGui::CQzProgress*> m_vecBars;
    std::vector<QzGui::CQzSlider*> m_vecSliders;
};

} // namespace QzPreview
