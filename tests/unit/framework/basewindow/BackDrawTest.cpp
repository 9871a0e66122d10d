// Background drawing by back type, as the recording device sees it, with the draw record, and
// the outline of windows without a record.
#include "BaseWindowScene.h"

#include "framework/QzBackDrawer.h"
#include "framework/QzGuiHelper.h"

#include <climits>

namespace BaseWindowTest
{

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
    std::string Drawn() { return Trace(QzTest::DrawKind::Texture); }
};

TEST_F(BackDraw, CentredFrameLessItsMarginsSitsInTheMiddle)
{
    TestWindow window;
    Dress(window, "Centre20", QZ_BACK_CENTRED, {0, 0, 100, 40});
    window.SetAniOffset({2, 2, 2, 2});
    window.SetAlpha(128);
    window.DrawBack();

    EXPECT_EQ("texture img/f20.png src(2,2,18,18) at 42,12 size 16x16 alpha 128 scale 1\n",
              Drawn());
    const QzPlatform::DrawReport* pReport = LastReport();
    ASSERT_NE(nullptr, pReport);
    EXPECT_EQ((std::vector<int>{100, 40, 42, 12, 0}),
              (std::vector<int>{pReport->width, pReport->height, pReport->x, pReport->y,
                                pReport->frameNumber}));
    EXPECT_EQ("ani/control.ani Centre20", pReport->file + " " + pReport->section);
}

TEST_F(BackDraw, StretchedDrawsTheStatesFrameOverTheWindow)
{
    TestWindow window;
    Dress(window, "Two", QZ_BACK_STRETCHED, {10, 20, 110, 60});
    window.SetPicOffset(1, 2);
    window.SetState(3);
    window.DrawBack();

    EXPECT_EQ("texture img/b.png src(0,0,12,12) at 11,22 size 100x40 alpha 255 scale 1\n", Drawn());
}

// The window keeps the section it found between frames: a new name, and a reload of the
// file, are drawn at once.
TEST_F(BackDraw, TheSectionFollowsANewNameAndAReloadedFile)
{
    TestWindow window;
    Dress(window, "Two", QZ_BACK_STRETCHED, {0, 0, 10, 10});
    const auto draw = [&]
    {
        m_harness.Device().Clear();
        window.DrawBack();
        return Drawn().substr(0, Drawn().find(" src"));
    };
    EXPECT_EQ("texture img/a.png", draw());
    EXPECT_EQ("texture img/a.png", draw());
    window.SetAniName("Centre20");
    EXPECT_EQ("texture img/f20.png", draw());
    m_root.Write("ani/Control.ani", "[Centre20]\nFrameAmount=1\nFrame0=img/b.png\n");
    TableDataSetQuery()->Reload();
    EXPECT_EQ("texture img/b.png", draw());
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

    EXPECT_EQ("texture img/c.png src(1,1,13,13) at 17,28 size 12x12 alpha 255 scale 1\n"
              "texture img/b.png src(1,1,11,11) at 12,22 size 10x10 alpha 255 scale 1\n",
              Drawn());
    EXPECT_EQ(2, LastReport()->frameNumber); // the report keeps the first draw of the frame
}

// A symmetric skin of 8 x 8 pieces in a 100 x 50 window at (10, 20).
TEST_F(BackDraw, NineSliceOfASymmetricSkinFramesTheWindow)
{
    TestWindow window;
    Dress(window, "Nine", QZ_BACK_NINESLICE, {10, 20, 110, 70});
    window.DrawBack();

    const char* const places[9] = {"10,20 size 8x8",  "18,20 size 84x8",  "102,20 size 8x8",
                                   "10,28 size 8x34", "18,28 size 84x34", "102,28 size 8x34",
                                   "10,62 size 8x8",  "18,62 size 84x8",  "102,62 size 8x8"};
    std::string expected;
    for (int i = 0; i < 9; ++i)
        expected += "texture img/n" + std::to_string(i) + ".png src(0,0,8,8) at " + places[i] +
                    " alpha 255 scale 1\n";
    EXPECT_EQ(expected, Drawn());
}

TEST_F(BackDraw, GroupDrawsTheFirstFrameOfEachPieceAtItsOffset)
{
    TestWindow window;
    Create(window);
    window.SetFrameMode(FALSE);
    Dress(window, "Grp", QZ_BACK_GROUP, {10, 20, 110, 60});
    window.SetPicOffset(1, 1);
    window.DrawBack();

    window.DrawAniGroup(nullptr, 0, 0);
    window.DrawAniGroup("Unknown", 0, 0);
    // A window at the end of the int range (a dialog flown there) puts its pieces at the end
    // (found by fuzzing layouts on live windows).
    window.DrawAniGroup("Grp", INT_MAX - 4, INT_MIN + 2);
    EXPECT_EQ("texture img/a.png src(0,0,10,10) at 14,26 size 10x10 alpha 255 scale 1\n"
              "texture img/f20.png src(0,0,20,20) at 20,28 size 20x20 alpha 255 scale 1\n"
              "texture img/a.png src(0,0,10,10) at 2147483646,-2147483641 size 10x10 alpha 255 "
              "scale 1\n"
              "texture img/f20.png src(0,0,20,20) at 2147483647,-2147483639 size 20x20 alpha 255 "
              "scale 1\n",
              Drawn());
}

TEST_F(BackDraw, BitmapCoversTheWindowForType7AndType5)
{
    TestWindow window;
    window.MoveWindow(RECT{10, 20, 110, 60}, TRUE);
    window.SetPicOffset(2, 3);
    window.SetAlpha(200);
    window.SetBackBitmap("img/back.png"); // type 7
    window.DrawBack();
    window.SetBackType(QZ_BACK_FILE);
    window.DrawBack();

    TestWindow empty;
    empty.SetBackType(QZ_BACK_BITMAP);
    empty.SetBackBitmap(nullptr);
    empty.DrawBack();
    const std::string back = "texture img/back.png src(0,0,64,32) at 12,23 size 100x40 alpha 200 "
                             "scale 1\n";
    EXPECT_EQ(back + back, Drawn());
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

    EXPECT_EQ("fill 10,20,110,60 #50000000\n"
              "outline 10,20,110,60 #FF31E805\n"
              "fill 0,0,0,0 #50000000\n"
              "outline 0,0,0,0 #F0000000\n",
              m_harness.Device().Trace());
}

TEST_F(BackDraw, BackType6OutlinesARecordedWindowUnlessTheDebugMouseIsOverIt)
{
    Load("[0-300]\nw=100\nh=40\nAniSection=Centre20\nBackShowMode=6\n");
    TestWindow dialog(QZ_WND_DIALOG, 300);
    Create(dialog);
    EXPECT_FALSE(dialog.GetFrameMode());
    dialog.DrawBack();
    CQzGuiHelper::Instance()->DebugOn();
    dialog.SetMouseIn(true);
    dialog.DrawBack();
    CQzGuiHelper::Instance()->DebugOff();
    EXPECT_EQ("fill 0,0,100,40 #50000000\noutline 0,0,100,40 #F0000000\n"
              "fill 0,0,100,40 #50000000\n",
              m_harness.Device().Trace());
}

} // namespace BaseWindowTest
