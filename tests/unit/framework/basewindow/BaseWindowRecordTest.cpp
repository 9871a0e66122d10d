// Loading the configuration record: what a record sets, the log record of a missing one, the
// extra attributes, variants, owned click regions, the mask hit test and the effect layers.
#include "BaseWindowScene.h"

#include "platform/system/kernel/QzKernelHost.h"
#include "support/RegionFile.h"

namespace BaseWindowTest
{

namespace
{

const char* const kLayout =
    "[0-300]\nx=100\ny=50\nw=400\nh=300\n"
    "[300-7]\nx=65516\ny=20\nw=100\nh=40\nAniSection=Two\n"
    "BackShowMode=1\nOffsetX=3\nOffsetY=4\nCursor=Hand\nAniOffset=1 2 3 4\n"
    "[300-8]\nw=10\nh=10\nAniOffset=1 2 3\n"
    "[300-9]\nw=10\nh=10\nAniOffset=a b c d\nIsDisable=1\n"
    "[300-10]\nw=30\nh=30\nTestRgn=1\nAniSection=Hit\nOffsetX=2\nOffsetY=1\n"
    "[300-11]\nw=10\nh=10\n"
    "[300-12]\nw=10\nh=10\nBackShowMode=5\nBackFile=img/back.png\n"
    "[300-13]\nx=5\ny=6\nw=20\nh=20\nFgEffect=Centre20\nBgEffect=Two\n"
    "[0-55]\nx=5\ny=6\nw=70\nh=80\n";

// ini/Rgn.dat with one region, the rectangle (200, 200, 210, 210), for window 11 of dialog 300.
std::string RegionFile()
{
    std::string bytes;
    QzTest::PutDword(bytes, 1);
    QzTest::PutRegionEntry(bytes, 300, 11, QzTest::RegionData({{200, 200, 210, 210}}));
    return bytes;
}

void TransformForTest(int x, int y, int* pX, int* pY)
{
    *pX = x + 1000;
    *pY = y + 2000;
}

} // namespace

class BaseWindowRecord : public BaseWindowScene
{
protected:
    BaseWindowRecord() : dialog(QZ_WND_DIALOG, 300)
    {
        Load(kLayout);
        Create(dialog);
    }

    TestWindow dialog;
};

TEST_F(BaseWindowRecord, RecordPlacesAndDressesTheWindow)
{
    TestWindow ctrl(QZ_WND_BUTTON, 7);
    Create(ctrl, &dialog);

    // x=65516 is -20: record coordinates are signed.
    EXPECT_EQ((RECT{80, 70, 180, 110}), ctrl.GetWindowRect());
    EXPECT_STREQ("Two", ctrl.GetAniName());
    EXPECT_EQ(1u, ctrl.GetBackType());
    EXPECT_EQ((POINT{3, 4}), ctrl.GetPicOffset());
    EXPECT_EQ("Hand", ctrl.GetCursorName());
    EXPECT_EQ((RECT{1, 2, 3, 4}), ctrl.GetAniOffset());

    ctrl.SetPos(0, 0);
    ctrl.ResetPosition();
    EXPECT_EQ((RECT{-20, 20, 80, 60}), ctrl.GetLocalRect());
}

TEST_F(BaseWindowRecord, MissingRecordIsLoggedAndTheWindowDrawsInFrameMode)
{
    TestWindow ctrl(QZ_WND_BUTTON, 99);
    ctrl.SetParent(&dialog);
    EXPECT_TRUE(ctrl.Create(m_pMgr));
    EXPECT_TRUE(ctrl.GetFrameMode());
    RECT rcOrigin = {1, 1, 1, 1};
    EXPECT_FALSE(ctrl.GetOriginRect(&rcOrigin));

    ASSERT_EQ(1, m_harness.Log().Count("Dialog or Control error!!!"));
    QzPlatform::LogRecord record = *m_harness.Log().Find("Dialog or Control error!!!");
    record.fields[1].text = "now"; // svr_time
    EXPECT_EQ("{\"msg\":\"Dialog or Control error!!!\",\"__cb__\":\"\",\"svr_time\":\"now\","
              "\"_\":\"QzBaseWindow:136\",\"wnd_id\":99,\"parent_id\":300}",
              QzPlatform::FormatLogRecordJson(record));
}

TEST_F(BaseWindowRecord, ChildDialogIsLookedUpAsATopLevelWindow)
{
    TestWindow child(QZ_WND_DIALOG, 55);
    Create(child, &dialog);
    EXPECT_EQ((RECT{105, 56, 175, 136}), child.GetWindowRect());

    TestWindow unknown(QZ_WND_DIALOG, 56);
    Create(unknown, &dialog);
    ASSERT_NE(nullptr, m_harness.Log().Find("Dialog or Control error!!!"));
    EXPECT_EQ("0", m_harness.Log().Find("Dialog or Control error!!!")->Get("parent_id"));
}

TEST_F(BaseWindowRecord, InfoIdAndVariantChooseTheRecordAndTheRootCanOptOut)
{
    TestWindow ctrl(QZ_WND_BUTTON, 50);
    ctrl.SetInfoId(7);
    Create(ctrl, &dialog);
    EXPECT_STREQ("Two", ctrl.GetAniName());

    m_root.Write("ini/Logic.ini", "[300-7-2]\nx=1\ny=2\nw=3\nh=4\n");
    m_pMgr->GetInfoMgr()->LoadLogicLayout("Logic.ini");
    ctrl.SetInfoVariant(2);
    EXPECT_EQ((RECT{1, 2, 4, 6}), ctrl.GetLocalRect());

    dialog.SetUseInfo(false);
    TestWindow quiet(QZ_WND_BUTTON, 98);
    Create(quiet, &dialog);
    EXPECT_FALSE(quiet.GetFrameMode());
    EXPECT_EQ(0, m_harness.Log().Count("Dialog or Control error!!!"));
}

TEST_F(BaseWindowRecord, ExtraAttributesNeedExactlyFourMarginsAndCanDisable)
{
    TestWindow three(QZ_WND_BUTTON, 8);
    three.SetAniOffset({5, 5, 5, 5});
    Create(three, &dialog);
    EXPECT_EQ((RECT{0, 0, 0, 0}), three.GetAniOffset());

    TestWindow disabled(QZ_WND_BUTTON, 9); // "a b c d" margins, IsDisable=1
    Create(disabled, &dialog);
    EXPECT_EQ((RECT{0, 0, 0, 0}), disabled.GetAniOffset());
    disabled.ShowWindow(SW_SHOW);
    EXPECT_FALSE(disabled.IsWindowVisible());
    EXPECT_FALSE(disabled.IsWindowEnabled());
}

TEST_F(BaseWindowRecord, RegionOfTheRegionTableIsOwnedByTheWindow)
{
    m_root.Write("ini/Rgn.dat", RegionFile());
    Load(kLayout);
    auto* pCtrl = new TestWindow(QZ_WND_BUTTON, 11);
    Create(*pCtrl, &dialog);
    const HRGN hFirst = pCtrl->GetRegion();
    EXPECT_TRUE(pCtrl->PtInWindow(205, 205));
    EXPECT_FALSE(pCtrl->PtInWindow(105, 55));

    pCtrl->SetInfoVariant(0);
    const HRGN hSecond = pCtrl->GetRegion();
    EXPECT_TRUE(QzPlatform::GetRegionRects(hFirst).empty());
    ASSERT_FALSE(QzPlatform::GetRegionRects(hSecond).empty());
    delete pCtrl;
    EXPECT_TRUE(QzPlatform::GetRegionRects(hSecond).empty());

    // A region the host gives stays the host's, in the window and in its copies.
    const HRGN hHost = CreateRectRgn(0, 0, 5, 5);
    {
        TestWindow window;
        window.SetRegion(hHost);
        TestWindow copy(window);
    }
    EXPECT_FALSE(QzPlatform::GetRegionRects(hHost).empty());
    DeleteObject(hHost);
}

// The window at (100, 50) draws "Hit" 2 pixels right and 1 down; "Hit_MSK" frame 0 is a mask
// whose left two columns are opaque, frame 1 an ordinary picture.
TEST_F(BaseWindowRecord, MaskSectionDecidesHitsForTestRgnRecords)
{
    TestWindow ctrl(QZ_WND_BUTTON, 10);
    Create(ctrl, &dialog);
    const std::vector<BOOL> hits = {ctrl.PtInWindow(102, 51), ctrl.PtInWindow(103, 52),
                                    ctrl.PtInWindow(104, 51), ctrl.PtInWindow(101, 51),
                                    ctrl.PtInWindow(102, 53)};
    EXPECT_EQ((std::vector<BOOL>{TRUE, TRUE, FALSE, FALSE, FALSE}), hits);

    ctrl.SetState(1);
    EXPECT_FALSE(ctrl.PtInWindow(102, 51));
    ctrl.SetState(2);
    EXPECT_TRUE(ctrl.PtInWindow(102, 51));
    ctrl.SetAniName("Missing");
    EXPECT_FALSE(ctrl.PtInWindow(102, 51));
}

TEST_F(BaseWindowRecord, EffectLayersComeFromTheRecordAndDrawThroughTheTransform)
{
    m_pMgr->SetTransformCallback(&TransformForTest);
    TestWindow ctrl(QZ_WND_BUTTON, 13);
    Create(ctrl, &dialog);
    EXPECT_FALSE(ctrl.HasFrontEffect("Two"));

    ctrl.UpdateEffects();
    ctrl.DrawFrontEffect();
    ctrl.DrawBackEffectAt(1, 2, 0);
    std::vector<QzTest::DrawCall> calls = Textures();
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ("img/f20.png (1105,2056)", calls[0].texturePath + " (" + std::to_string(calls[0].x1) +
                                             "," + std::to_string(calls[0].y1) + ")");
    EXPECT_EQ("img/a.png (1001,2002)", calls[1].texturePath + " (" + std::to_string(calls[1].x1) +
                                           "," + std::to_string(calls[1].y1) + ")");

    TestWindow bare(QZ_WND_BUTTON, 99);
    Create(bare, &dialog);
    m_harness.Device().Clear();
    bare.DrawFrontEffect();
    bare.DrawBackEffect();
    EXPECT_TRUE(Textures().empty());
}

TEST_F(BaseWindowRecord, BackFileOfBackType5LoadsTheBitmap)
{
    TestWindow ctrl(QZ_WND_BUTTON, 12);
    Create(ctrl, &dialog);
    EXPECT_EQ(5u, ctrl.GetBackType());
    EXPECT_NE(nullptr, ctrl.GetBackBitmap());
}

} // namespace BaseWindowTest
