// Background drawing by back type, as the recording device sees it, with the draw record, and
// the outline of windows without a record.
#include "BaseWindowScene.h"

#include "framework/QzBackDrawer.h"
#include "framework/QzGuiHelper.h"

namespace BaseWindowTest
{

namespace
{

void ExpectTexture(const QzTest::DrawCall& call, const std::string& path, int x, int y, int width,
                   int height)
{
    EXPECT_EQ(path, call.texturePath);
    EXPECT_EQ(x, call.x1);
    EXPECT_EQ(y, call.y1);
    EXPECT_EQ(width, call.width);
    EXPECT_EQ(height, call.height);
    EXPECT_FLOAT_EQ(1.0f, call.scale);
}

void ExpectSource(const QzTest::DrawCall& call, int left, int top, int right, int bottom)
{
    EXPECT_EQ(left, call.source.left);
    EXPECT_EQ(top, call.source.top);
    EXPECT_EQ(right, call.source.right);
    EXPECT_EQ(bottom, call.source.bottom);
}

} // namespace

class BackDraw : public BaseWindowScene
{
protected:
    // A window that draws by its back type, without a manager.
    void Dress(TestWindow& window, const char* pszSection, DWORD nBackType, RECT rc)
    {
        window.MoveWindow(rc, TRUE);
        window.SetAniName(pszSection);
        window.SetBackType(nBackType);
    }
    const QzPlatform::DrawReport* LastReport() const
    {
        return QzPlatform::GetWidgetKit().GetLastReport();
    }
};

TEST_F(BackDraw, CentredFrameLessItsMarginsSitsInTheMiddle)
{
    TestWindow window;
    Dress(window, "Centre20", QZ_BACK_CENTRED, {0, 0, 100, 40});
    window.SetAniOffset({2, 2, 2, 2});
    window.SetAlpha(128);
    window.DrawBack();

    ASSERT_EQ(1u, Textures().size());
    ExpectTexture(Textures()[0], "img/f20.png", 42, 12, 16, 16);
    ExpectSource(Textures()[0], 2, 2, 18, 18);
    EXPECT_EQ(128, Textures()[0].alpha);
    ASSERT_NE(nullptr, LastReport());
    EXPECT_EQ(100, LastReport()->width);
    EXPECT_EQ(40, LastReport()->height);
    EXPECT_EQ(42, LastReport()->x);
    EXPECT_EQ(12, LastReport()->y);
    EXPECT_EQ("Centre20", LastReport()->section);
    EXPECT_EQ(0, LastReport()->frameNumber);
    EXPECT_EQ("ani/control.ani", LastReport()->file);
}

TEST_F(BackDraw, StretchedDrawsTheStatesFrameOverTheWindow)
{
    TestWindow window;
    Dress(window, "Two", QZ_BACK_STRETCHED, {10, 20, 110, 60});
    window.SetPicOffset(1, 2);
    window.SetState(3);
    window.DrawBack();

    ASSERT_EQ(1u, Textures().size());
    ExpectTexture(Textures()[0], "img/b.png", 11, 22, 100, 40);
    ExpectSource(Textures()[0], 0, 0, 12, 12);
    EXPECT_EQ(0, LastReport()->frameNumber);
    EXPECT_EQ(11, LastReport()->x);
}

TEST_F(BackDraw, PlainTypeAppliesThePictureOffsetOnlyToItsFrame)
{
    TestWindow window;
    Dress(window, "Three", 0, {10, 20, 110, 60});
    window.SetFramePicOffset(5, 6, 2);
    window.SetPicOffset2(1, 1);
    window.SetAniOffset({1, 1, 1, 1});
    window.SetState(2);
    window.DrawBack();
    window.SetState(1);
    window.DrawBack();

    ASSERT_EQ(2u, Textures().size());
    ExpectTexture(Textures()[0], "img/c.png", 17, 28, 12, 12);
    ExpectSource(Textures()[0], 1, 1, 13, 13);
    ExpectTexture(Textures()[1], "img/b.png", 12, 22, 10, 10);
    EXPECT_EQ(2, LastReport()->frameNumber);
    EXPECT_EQ(12, LastReport()->x);
}

// A symmetric skin of 8 x 8 pieces in a 100 x 50 window at (10, 20).
TEST_F(BackDraw, NineSliceOfASymmetricSkinFramesTheWindow)
{
    TestWindow window;
    Dress(window, "Nine", QZ_BACK_NINESLICE, {10, 20, 110, 70});
    window.DrawBack();

    const int expected[9][4] = {{10, 20, 8, 8},  {18, 20, 84, 8},  {102, 20, 8, 8},
                                {10, 28, 8, 34}, {18, 28, 84, 34}, {102, 28, 8, 34},
                                {10, 62, 8, 8},  {18, 62, 84, 8},  {102, 62, 8, 8}};
    ASSERT_EQ(9u, Textures().size());
    for (int i = 0; i < 9; ++i)
    {
        SCOPED_TRACE(i);
        ExpectTexture(Textures()[i], "img/n" + std::to_string(i) + ".png", expected[i][0],
                      expected[i][1], expected[i][2], expected[i][3]);
        ExpectSource(Textures()[i], 0, 0, 8, 8);
    }
    EXPECT_EQ(10, LastReport()->x);
    EXPECT_EQ(20, LastReport()->y);
}

TEST_F(BackDraw, GroupDrawsTheFirstFrameOfEachPieceAtItsOffset)
{
    TestWindow window;
    Create(window);
    window.SetFrameMode(FALSE);
    Dress(window, "Grp", QZ_BACK_GROUP, {10, 20, 110, 60});
    window.SetPicOffset(1, 1);
    window.DrawBack();

    ASSERT_EQ(2u, Textures().size());
    ExpectTexture(Textures()[0], "img/a.png", 14, 26, 10, 10);
    ExpectTexture(Textures()[1], "img/f20.png", 20, 28, 20, 20);
    window.DrawAniGroup(nullptr, 0, 0);
    window.DrawAniGroup("Unknown", 0, 0);
    EXPECT_EQ(2u, Textures().size());
}

TEST_F(BackDraw, BitmapCoversTheWindowForType7AndType5)
{
    TestWindow window;
    window.MoveWindow(RECT{10, 20, 110, 60}, TRUE);
    window.SetPicOffset(2, 3);
    window.SetAlpha(200);
    window.SetBackBitmap("img/back.png");
    EXPECT_EQ(QZ_BACK_BITMAP, window.GetBackType());
    window.DrawBack();
    window.SetBackType(QZ_BACK_FILE);
    window.DrawBack();

    ASSERT_EQ(2u, Textures().size());
    ExpectTexture(Textures()[0], "img/back.png", 12, 23, 100, 40);
    EXPECT_EQ(200, Textures()[0].alpha);
    ExpectTexture(Textures()[1], "img/back.png", 12, 23, 100, 40);

    TestWindow empty;
    empty.SetBackType(QZ_BACK_BITMAP);
    empty.SetBackBitmap(nullptr);
    empty.DrawBack();
    EXPECT_EQ(2u, Textures().size());
}

TEST_F(BackDraw, NothingIsDrawnOrReportedWithoutABackOrASection)
{
    TestWindow window;
    Dress(window, "Centre20", QZ_BACK_CENTRED, {0, 0, 100, 40});
    window.SetShowBack(false);
    window.DrawBack();
    window.SetShowBack(true);
    window.SetAniName("Missing");
    window.DrawBack();

    EXPECT_TRUE(m_harness.Device().Calls().empty());
    EXPECT_EQ(0u, QzPlatform::GetWidgetKit().GetReportCount());
}

TEST_F(BackDraw, WindowsWithoutARecordAreFilledAndOutlinedInTheirTypeColour)
{
    TestWindow button(QZ_WND_BUTTON, 7);
    TestWindow dialog(QZ_WND_DIALOG, 300);
    Create(button);
    Create(dialog);
    button.MoveWindow(RECT{10, 20, 110, 60}, TRUE);
    button.DrawBack();
    dialog.DrawBack();

    const std::vector<QzTest::DrawCall> fills = m_harness.Device().Calls(QzTest::DrawKind::Fill);
    const std::vector<QzTest::DrawCall> outlines =
        m_harness.Device().Calls(QzTest::DrawKind::Outline);
    ASSERT_EQ(2u, fills.size());
    EXPECT_EQ(0x50000000u, fills[0].colour);
    EXPECT_EQ(10, fills[0].x1);
    EXPECT_EQ(60, fills[0].y2);
    ASSERT_EQ(2u, outlines.size());
    EXPECT_EQ(0xff31e805u, outlines[0].colour);
    EXPECT_EQ(110, outlines[0].x2);
    EXPECT_EQ(0xf0000000u, outlines[1].colour);
    EXPECT_TRUE(Textures().empty());

    EXPECT_EQ(0xff2ac204u, CQzBackDrawer::GetOutlineColour(QZ_WND_EDIT));
    EXPECT_EQ(0xffcae805u, CQzBackDrawer::GetOutlineColour(QZ_WND_RECORD_STATIC));
    EXPECT_EQ(0xfff6cfb6u, CQzBackDrawer::GetOutlineColour(QZ_WND_GRID_EX));
    EXPECT_EQ(0xff844af2u, CQzBackDrawer::GetOutlineColour(QZ_WND_TREE));
    EXPECT_EQ(0xff8080ffu, CQzBackDrawer::GetOutlineColour(QZ_WND_SCROLLBUTTON));
}

TEST_F(BackDraw, BackType6OutlinesARecordedWindowUnlessTheDebugMouseIsOverIt)
{
    Load("[0-300]\nw=100\nh=40\nAniSection=Centre20\nBackShowMode=6\n");
    TestWindow dialog(QZ_WND_DIALOG, 300);
    Create(dialog);
    EXPECT_FALSE(dialog.GetFrameMode());
    dialog.DrawBack();
    EXPECT_EQ(1u, m_harness.Device().Calls(QzTest::DrawKind::Outline).size());
    EXPECT_TRUE(Textures().empty());

    m_harness.Device().Clear();
    CQzGuiHelper::Instance()->DebugOn();
    dialog.SetMouseIn(true);
    dialog.DrawBack();
    EXPECT_EQ(1u, m_harness.Device().Calls(QzTest::DrawKind::Fill).size());
    EXPECT_TRUE(m_harness.Device().Calls(QzTest::DrawKind::Outline).empty());
    CQzGuiHelper::Instance()->DebugOff();
}

} // namespace BaseWindowTest
