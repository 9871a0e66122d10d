// The controls of a previewed dialog, one per record whose parent is the dialog. The record's
// window type picks the class; a type the preview does not know (edit boxes, none) becomes an
// image with its background on, so that the record's skin shows where the control will be. Bars
// and sliders stand at half their range, captions are the records' titles; lists show sample
// rows, trees sample chapters of check boxes, grids (types 16, 21 and 22) a full set of items.
#pragma once

#include "PreviewLayout.h"

#include "controls/QzCtrl.h"
#include "framework/QzDialog.h"
#include "layout/IQzGuiWndInfo.h"

#include <memory>
#include <vector>

namespace QzGui
{
class CQzGrid;
class CQzList;
class CQzProgress;
class CQzSlider;
class CQzTree;
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
    // After the controls are created: titles, values, sample content.
    void Start();
    size_t Count() const { return m_vecCtrls.size(); }
    // Deletes the controls; their dialog must be gone or out of the manager.
    void Clear();

private:
    std::unique_ptr<QzGui::CQzCtrl> Make(int nType, const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeProgress(const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeSlider(const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeList();
    std::unique_ptr<QzGui::CQzCtrl> MakeTree();
    std::unique_ptr<QzGui::CQzCtrl> MakeGrid(int nType, const QzGui::IQzGuiWndInfo& info);
    void FillSamples();

    std::vector<std::unique_ptr<QzGui::CQzCtrl>> m_vecCtrls;
    std::vector<QzGui::CQzProgress*> m_vecBars;
    std::vector<QzGui::CQzSlider*> m_vecSliders;
    std::vector<QzGui::CQzList*> m_vecLists;
    std::vector<QzGui::CQzTree*> m_vecTrees;
    std::vector<QzGui::CQzGrid*> m_vecGrids;
};

} // namespace QzPreview
