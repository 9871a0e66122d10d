// The static and the image: creation from a record, input, and what they draw.
#include "ControlScene.h"

#include "controls/QzButton.h"
#include "controls/QzImage.h"
#include "controls/QzStatic.h"
#include "platform/render/MyBitmap.h"

namespace ControlTest
{

namespace
{

// Marks where its own drawing comes in the frame.
class MarkedImage : public CQzImage
{
public:
    BOOL OnShowImage() override
    {
        CMyBitmap::ShowBlock(0, 0, 1, 1, 0xFF123456);
        return 1;
    }
};

class StaticImageScene : public ControlScene
{
protected:
    // Button 6 under static 5 at (110, 110)-(210, 130); image 8 at (110,
    // 200)-(210, 240).
    StaticImageScene()
    {
        m_pButton = AddCtrl<CQzButton>(6, {10, 10, 110, 30});
        m_pStatic = AddCtrl<CQzStatic>(5, {10, 10, 110, 30});
        m_pImage = AddCtrl<MarkedImage>(8, {10, 100, 110, 140});
        m_pRecord->SetClickSound("img.wav");
        Open();
    }

    CQzButton* m_pButton = nullptr;
    CQzStatic* m_pStatic = nullptr;
    MarkedImage* m_pImage = nullptr;
};

// The static takes the moves, so the button beneath learns that the mouse is in
// only from the moves it gets while it holds the capture.
TEST_F(StaticImageScene, APressOnAStaticFallsThroughToTheButtonBeneath)
{
    m_pStatic->SetWindowText("Name");
    m_harness.MouseMove(150, 120);
    EXPECT_EQ((std::vector<std::string>{"img/f0.png", "img/f2.png"}), Frame());
    EXPECT_EQ("Name", Texts().at(0).text);
    m_harness.LButtonDown(150, 120);
    EXPECT_FALSE(m_pButton->IsMouseIn());
    EXPECT_EQ(std::vector<Notice>{MakeNotice(QZ_BN_PRESSED, 6)}, m_dialog.notices);
    m_harness.MouseMove(151, 120);
    m_harness.LButtonUp(151, 120);
    EXPECT_EQ(MakeNotice(QZ_BN_CLICKED, 6), m_dialog.notices.back());
}

TEST_F(StaticImageScene, AnImageDrawsNoBackgroundUntilTurnedOnAndHasNoLookStates)
{
    m_pImage->SetWindowText("Pic");
    m_pButton->ShowWindow(SW_HIDE);
    m_pStatic->ShowWindow(SW_HIDE);
    EXPECT_TRUE(Frame().empty());

    m_pImage->SetShowBack(true);
    m_harness.MouseMove(150, 220);
    m_harness.Click(150, 220);
    Frame();
    const auto& calls = m_harness.Device().Calls(); // background, own drawing, caption
    ASSERT_EQ(3u, calls.size());
    EXPECT_EQ("img/f0.png", calls[0].texturePath);
    EXPECT_EQ(QzTest::DrawKind::Fill, calls[1].kind);
    EXPECT_EQ("Pic", calls[2].text);
    EXPECT_TRUE(m_dialog.notices.empty());
    EXPECT_EQ(std::vector<std::string>{"img.wav"}, PlayedSounds());

    // Asked directly, a hidden image still draws; a hidden static does not.
    m_pImage->ShowWindow(SW_HIDE);
    m_harness.Device().Clear();
    EXPECT_EQ(0, m_pStatic->Show());
    EXPECT_EQ(1, m_pImage->Show());
    EXPECT_EQ(3u, m_harness.Device().Calls().size());
}

} // namespace

} // namespace ControlTest
