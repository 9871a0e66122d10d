// A dialog of stock controls drawn frame after frame on the draw-list device, which repeats
// controls whose look did not change without drawing them: after each of a user's actions the
// frame looks as the same manager drawn on a device that keeps nothing.
#include "../controls/ControlScene.h"
#include "CDrawListDevice.h"
#include "DrawListTestSupport.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzSlider.h"
#include "framework/QzBackDrawer.h"
#include "platform/render/TableDataSet.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{

using namespace ControlTest;

const int kWidth = 1024;
const int kHeight = 768;

// Draws every call as it comes: no item is kept or repeated.
class PlainDevice : public QzPlatform::CDrawListDevice
{
public:
    PlainDevice() : CDrawListDevice(kWidth, kHeight) {}
    void BeginItem(const void*, uint64_t) override {}
    void EndItem() override {}
    bool RepeatItem(const void*, uint64_t) override { return false; }
};

// The draw-list device, noting which items it repeated in the last frame.
class NotingDevice : public QzPlatform::CDrawListDevice
{
public:
    NotingDevice() : CDrawListDevice(kWidth, kHeight) {}
    void BeginFrame() override
    {
        repeated.clear();
        CDrawListDevice::BeginFrame();
    }
    bool RepeatItem(const void* key, uint64_t look) override
    {
        const bool done = CDrawListDevice::RepeatItem(key, look);
        if (done)
            repeated.insert(key);
        return done;
    }
    std::set<const void*> repeated;
};

class RetainedControls : public ControlScene
{
protected:
    RetainedControls()
    {
        m_root.MakeFolder("img");
        for (uint32_t state = 0; state < 5; ++state)
            QzTest::PngFolder::WritePngAt(
                m_root.Folder() + "/img/f" + std::to_string(state) + ".png", 10, 10,
                [state](int x, int y) { return 0xFF000000u | state * 0x330000u | x * 9 | y; });
        m_pButton = AddCtrl<CQzButton>(1, {10, 10, 110, 50});
        m_pButton->SetWindowText("Start");
        m_pCheck = AddCtrl<CQzCheck>(2, {10, 60, 110, 90});
        m_pCheck->SetWindowText("Sound");
        m_pStatic = AddCtrl<CQzStatic>(3, {10, 100, 200, 130});
        m_pStatic->SetWindowText("Score 10");
        m_pSlider = AddCtrl<CQzSlider>(4, {10, 140, 210, 160});
        m_pSlider->PreSetParam(100, QZ_SLIDER_HORZ);
        Open();
        m_harness.MouseMove(900, 700);
        QzPlatform::SetRenderDevice(&m_kept);
    }
    ~RetainedControls() override { QzPlatform::SetRenderDevice(&m_harness.Device()); }

    void ExpectFrame(const char* what)
    {
        m_kept.BeginFrame();
        m_pMgr->Show();
        m_kept.EndFrame();
        PlainDevice plain;
        QzPlatform::SetRenderDevice(&plain);
        plain.BeginFrame();
        m_pMgr->Show();
        plain.EndFrame();
        QzPlatform::SetRenderDevice(&m_kept);
        const QzTest::ListRaster got(m_kept, 0xFF000000);
        const QzTest::ListRaster want(plain, 0xFF000000);
        int differing = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                differing += got.At(x, y) != want.At(x, y) ? 1 : 0;
        EXPECT_EQ(0, differing) << what;
    }

    NotingDevice m_kept;
    CQzButton* m_pButton = nullptr;
    CQzCheck* m_pCheck = nullptr;
    CQzStatic* m_pStatic = nullptr;
    CQzSlider* m_pSlider = nullptr;
};

TEST_F(RetainedControls, EachActionShowsAsOnADeviceThatKeepsNothing)
{
    ExpectFrame("first frame");
    ExpectFrame("steady");
    const QzPlatform::DrawList& list = m_kept.GetDrawList();
    EXPECT_EQ(list.changedBegin, list.changedEnd) << "a steady frame rewrites nothing";

    m_pStatic->SetWindowText("Score 11");
    ExpectFrame("caption");
    m_pSlider->SetValue(60, FALSE);
    ExpectFrame("slider");
    m_harness.MouseMove(150, 175); // the check box
    m_harness.LButtonDown(150, 175);
    m_harness.LButtonUp(150, 175);
    EXPECT_TRUE(m_pCheck->GetCheck());
    ExpectFrame("checked");
    m_harness.MouseMove(150, 130); // over the button
    ExpectFrame("hover");
    m_harness.MouseMove(900, 700);
    ExpectFrame("left");
    ExpectFrame("left, steady");
    m_pButton->EnableWindow(FALSE);
    m_pStatic->SetTextColor(0xFFFF0000);
    m_pCheck->MoveWindow(nullptr, 20, 70, 100, 30, TRUE);
    ExpectFrame("disabled, red, moved");
    m_pButton->EnableWindow(TRUE);
    m_pCheck->SetCheck(FALSE);
    m_pStatic->SetTextFormat(1);
    m_pSlider->SetAlpha(96);
    ExpectFrame("host's setters");
    m_pButton->SetPicOffset(4, 3);
    m_pCheck->SetFontSize(8, 16);
    m_pSlider->SetAniOffset({1, 2, 3, 4});
    const POINT textOffset{5, 1};
    m_pStatic->SetTextOffset(&textOffset);
    ExpectFrame("offsets");
    m_pStatic->SetTimer(5, 1000);
    ExpectFrame("timer");
    m_pStatic->KillTimer(5);
    m_pStatic->SetWindowText("Score 12");
    ExpectFrame("timer killed, caption");

    // The skin's frames change on disk; a reload of the data set shows them.
    m_root.Write("ani/Control.ani", "[Look]\nFrameAmount=5\nFrame0=img/f4.png\nFrame1=img/f3.png\n"
                                    "Frame2=img/f2.png\nFrame3=img/f1.png\nFrame4=img/f0.png\n");
    QzPlatform::CTableDataSet::Instance().Reload();
    ExpectFrame("skin reloaded");
}

// A host's dialog class that keeps the library's back.
class StockBackDialog : public CQzDialog
{
public:
    StockBackDialog() : CQzDialog(301, nullptr) {}
    bool HasStockBack() const override { return true; }
};

// A dialog whose back is the library's is repeated while its back looks the same; a host's
// dialog class draws its back every frame unless it says that it keeps the library's.
TEST_F(RetainedControls, AStockDialogsBackRepeatsUntilItsLookChanges)
{
    CQzGuiWndInfo* pRecord = AddRecord(0, 301, {560, 80, 760, 280});
    pRecord->SetAniSection("Look");
    pRecord->AddFlags(WNDINFO_FLAG_ANISECTION);
    StockBackDialog stock;
    m_pMgr->AddDialog(&stock, nullptr, false);
    stock.ShowWindow(SW_SHOW);
    ExpectFrame("first frame");
    ExpectFrame("steady");
    EXPECT_EQ(m_kept.repeated.count(&stock), 1u);
    EXPECT_EQ(m_kept.repeated.count(&m_dialog), 0u);
    EXPECT_TRUE(CQzDialog(302, nullptr).HasStockBack());
    EXPECT_FALSE(m_dialog.HasStockBack());

    stock.MoveWindow(nullptr, 600, 120, 150, 150, TRUE);
    ExpectFrame("moved");
    EXPECT_EQ(m_kept.repeated.count(&stock), 0u);
    stock.SetBackType(QZ_BACK_STRETCHED);
    ExpectFrame("stretched");
    stock.SetShowBack(false);
    ExpectFrame("no back");
    stock.SetShowBack(true);
    ExpectFrame("back again");
    m_root.Write("ani/Control.ani", "[Look]\nFrameAmount=1\nFrame0=img/f3.png\n");
    QzPlatform::CTableDataSet::Instance().Reload();
    ExpectFrame("skin reloaded");
    m_pMgr->RemoveDialog(&stock);
}

} // namespace
