// The controls of a previewed dialog, one per record whose parent is the dialog. The record's
// window type picks the class; a record without a type, or with one the library has no class
// for, becomes an image with its background on, so that the record's skin shows where the
// control will be. Captions are the records' titles. Each kind shows sample content where the
// host would fill it in: bars and sliders stand at half their range, lists show sample rows,
// trees sample chapters of check boxes, grids (types 16, 21 and 22) a full set of items, edit
// boxes a sample text, images a sample picture, statics without a title a sample caption, and
// statics that give a marquee's keys (WHLMoveRate, WHLMoveLength) run it, already in view.
#pragma once

#include "PreviewLayout.h"

#include "controls/QzCtrl.h"
#include "framework/QzDialog.h"
#include "layout/IQzGuiWndInfo.h"

#include <memory>
#include <vector>

namespace QzGui
{
class CQzEdit;
class CQzGrid;
class CQzList;
class CQzProgress;
class CQzSlider;
class CQzStatic;
class CQzTree;
class CQzWHLStatic;
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
    std::unique_ptr<QzGui::CQzCtrl> MakeEdit(const QzGui::IQzGuiWndInfo& info);
    std::unique_ptr<QzGui::CQzCtrl> MakeStatic(const QzGui::IQzGuiWndInfo& info);
    void FillSamples();
    void FillTexts();

    std::vector<std::unique_ptr<QzGui::CQzCtrl>> m_vecCtrls;
    std::vector<QzGui::CQzProgress*> m_vecBars;
    std::vector<QzGui::CQzSlider*> m_vecSliders;
    std::vector<QzGui::CQzList*> m_vecLists;
    std::vector<QzGui::CQzTree*> m_vecTrees;
    std::vector<QzGui::CQzGrid*> m_vecGrids;
    std::vector<QzGui::CQzEdit*> m_vecEdits;
    std::vector<QzGui::CQzStatic*> m_vecStatics;
    std::vector<QzGui::CQzWHLStatic*> m_vecMarquees;
};

} // namespace QzPreview
