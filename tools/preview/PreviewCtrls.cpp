#include "PreviewCtrls.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzGrid.h"
#include "controls/QzImage.h"
#include "controls/QzList.h"
#include "controls/QzProgress.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "controls/QzTree.h"
#include "controls/QzWHLStatic.h"
#include "framework/QzMsg.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzClock.h"
#include "textinput/QzEdit.h"

#include <algorithm>
#include <string>

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

// Sample content: rows of a list, chapters of a tree, items of a grid.
constexpr int kSampleRows = 40;
constexpr int kSampleChapters = 3;
constexpr int kSampleQuests = 4;
constexpr DWORD kSampleText = 0xFFFFFFFF;
constexpr DWORD kSampleSelText = 0xFFFFFF00;
// Grid cells of about this size fill the record; an item is a block inset in its cell.
constexpr int kSampleCell = 36;
constexpr int kItemInset = 4;
constexpr DWORD kItemColor = 0xFFB0B8C8;
// An image's sample picture covers the middle half of the control.
constexpr DWORD kPictureColor = 0xFF7090C0;
// Edit boxes at least this tall take several lines.
constexpr int kMultiLineHeight = 40;
const char* const kSampleEditText = "Sample text";
const char* const kSampleLongText = "Sample text that runs over more than one line of the box";
const char* const kSampleCaption = "Sample caption";
const char* const kSampleMarquee = "Sample news running by";
// A marquee moves 2 pixels a step; it is stepped until its text starts a quarter in.
constexpr int kMarqueeStepPixels = 2;
constexpr int kMaxMarqueeSteps = 4096;

// A grid of the record's type (16, or a host's variant 21 or 22) whose items are blocks.
class CPreviewGrid : public CQzGrid
{
public:
    explicit CPreviewGrid(int nType) : m_nType(nType) {}
    int GetWndType() override { return m_nType; }
    void DrawCellItem(int nCol, int nRow) override
    {
        POINT pos = {};
        GetCellPos(nCol, nRow, &pos);
        CMyBitmap::ShowBlock(pos.x + kItemInset, pos.y + kItemInset,
                             pos.x + static_cast<int>(GetCellWidth()) - kItemInset,
                             pos.y + static_cast<int>(GetCellHeight()) - kItemInset, kItemColor);
    }

private:
    int m_nType;
};

// An image with a sample picture where the host would draw its own.
class CPreviewImage : public CQzImage
{
public:
    BOOL OnShowImage() override
    {
        const RECT& rc = GetWindowRect();
        const int dx = GetWidth() / 4;
        const int dy = GetHeight() / 4;
        CMyBitmap::ShowBlock(rc.left + dx, rc.top + dy, rc.right - dx, rc.bottom - dy,
                             kPictureColor);
        return 1;
    }
};

bool IsMarquee(const IQzGuiWndInfo& info)
{
    return info.GetExtraValue("WHLMoveRate") || info.GetExtraValue("WHLMoveLength");
}

// Steps the marquee's first copy from the right edge until its text starts a quarter in.
void StepIntoView(CQzWHLStatic& marquee)
{
    const DWORD dwNow = QzPlatform::NowMs();
    const int nSteps = std::min(marquee.GetWidth() * 3 / 4 / kMarqueeStepPixels, kMaxMarqueeSteps);
    for (int i = 0; i < nSteps; ++i)
        marquee.Step(dwNow);
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
    case QZ_WND_EDIT:
        return MakeEdit(info);
    case QZ_WND_IMAGE:
    {
        auto image = std::make_unique<CPreviewImage>();
        image->SetShowBack(true);
        return image;
    }
    case QZ_WND_STATIC:
    case QZ_WND_RECORD_STATIC:
        return MakeStatic(info);
    case QZ_WND_CHECK:
        return std::make_unique<CQzCheck>();
    case QZ_WND_PROGRESS:
        return MakeProgress(info);
    case QZ_WND_SLIDER:
        return MakeSlider(info);
    case QZ_WND_SCROLLBUTTON:
        return std::make_unique<CQzScrollButton>();
    case QZ_WND_LIST:
        return MakeList();
    case QZ_WND_TREE:
        return MakeTree();
    case QZ_WND_GRID:
    case QZ_WND_GRID_SHORTCUT:
    case QZ_WND_GRID_EX:
        return MakeGrid(nType, info);
    default:
        // A dialog's record among its controls, or a type the library has no class for.
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

// Lists and trees are previewed without scroll bars: which buttons and slider belong to them is
// the host's code.
std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeList()
{
    auto list = std::make_unique<CQzList>();
    list->PreSetParam(QZ_LIST_STYLE_NOTIFY, nullptr, nullptr, 0, 1, nullptr);
    list->SetItemColors(kSampleText, kSampleSelText);
    m_vecLists.push_back(list.get());
    return list;
}

std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeTree()
{
    auto tree = std::make_unique<CQzTree>();
    tree->PreSetParam(QZ_TREE_STYLE_CHECK, nullptr, nullptr, 0, 1, nullptr);
    tree->SetColors(kSampleText, 0);
    m_vecTrees.push_back(tree.get());
    return tree;
}

// The host sets columns and rows in code: the preview takes cells of about 36 pixels, at most
// 128 of them, and fills every one.
std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeGrid(int nType, const IQzGuiWndInfo& info)
{
    const int nCols = std::clamp(static_cast<int>(info.GetWidth()) / kSampleCell, 1, 16);
    const int nRows =
        std::clamp(static_cast<int>(info.GetHeight()) / kSampleCell, 1, GRID_MAX_CELLS / nCols);
    auto grid = std::make_unique<CPreviewGrid>(nType);
    grid->PreSetParam(static_cast<BYTE>(nCols), static_cast<BYTE>(nRows));
    m_vecGrids.push_back(grid.get());
    return grid;
}

// A box of several lines when the record is tall enough for them.
std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeEdit(const IQzGuiWndInfo& info)
{
    const bool bMultiLine = info.GetHeight() >= kMultiLineHeight;
    auto edit = std::make_unique<CQzEdit>();
    edit->PreSetParam(bMultiLine, 0, kSampleText, bMultiLine);
    m_vecEdits.push_back(edit.get());
    return edit;
}

std::unique_ptr<CQzCtrl> CPreviewCtrls::MakeStatic(const IQzGuiWndInfo& info)
{
    if (!IsMarquee(info))
    {
        auto label = std::make_unique<CQzStatic>();
        m_vecStatics.push_back(label.get());
        return label;
    }
    auto marquee = std::make_unique<CQzWHLStatic>();
    m_vecMarquees.push_back(marquee.get());
    return marquee;
}

// Texts where the record gives no title: a box's text, a caption, a marquee's news.
void CPreviewCtrls::FillTexts()
{
    const auto untitled = [](CQzCtrl* pCtrl)
    {
        const IQzGuiWndInfo* pInfo = pCtrl->GetWndInfo();
        return !pInfo || !*pInfo->GetTitle();
    };
    for (CQzEdit* pEdit : m_vecEdits)
    {
        if (untitled(pEdit))
            pEdit->SetWindowText(pEdit->IsMultiLineEdit() ? kSampleLongText : kSampleEditText);
    }
    for (CQzStatic* pStatic : m_vecStatics)
    {
        if (untitled(pStatic))
            pStatic->SetWindowText(kSampleCaption);
    }
    for (CQzWHLStatic* pMarquee : m_vecMarquees)
    {
        if (untitled(pMarquee))
            pMarquee->SetWindowText(kSampleMarquee);
        StepIntoView(*pMarquee);
    }
}

void CPreviewCtrls::FillSamples()
{
    for (CQzList* pList : m_vecLists)
    {
        for (int i = 1; i <= kSampleRows; ++i)
            pList->AddString(("Row " + std::to_string(i)).c_str());
    }
    for (CQzTree* pTree : m_vecTrees)
    {
        for (int c = 1; c <= kSampleChapters; ++c)
        {
            const DWORD nChapter =
                pTree->InsertRootItem(("Chapter " + std::to_string(c)).c_str(), TRUE);
            for (int q = 1; q <= kSampleQuests; ++q)
                pTree->InsertCheckItem(nChapter, ("Quest " + std::to_string(q)).c_str(), q == 1);
        }
    }
    for (CQzGrid* pGrid : m_vecGrids)
    {
        for (int i = 0; i < pGrid->GetCellCount(); ++i)
        {
            pGrid->SetCellUsed(i, true);
            pGrid->SetCellCount(i, static_cast<DWORD>(i % 3 == 0 ? i + 1 : 0));
        }
    }
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
    FillTexts();
    FillSamples();
}

void CPreviewCtrls::Clear()
{
    m_vecBars.clear();
    m_vecSliders.clear();
    m_vecLists.clear();
    m_vecTrees.clear();
    m_vecGrids.clear();
    m_vecEdits.clear();
    m_vecStatics.clear();
    m_vecMarquees.clear();
    m_vecCtrls.clear();
}

} // namespace QzPreview
