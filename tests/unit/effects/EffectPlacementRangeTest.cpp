// Placement data from ini/Gui3DEffect.ini can move, scale and turn a part by any amount: a part
// whose place or size lies beyond the int range is off every screen and not drawn, one that
// still fits is drawn where its values say, and rotations add up without overflow.
#include "effects/Gui3DEffect.h"
#include "effects/GuiEffectInfo.h"
#include "support/QzHarness.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

class EffectPlacementRangeTest : public ::testing::Test
{
protected:
    EffectPlacementRangeTest()
    {
        m_root.Write("ani/Control.ani", "[Spark]\nFrameAmount=1\nFrame0=fx/s0.png\n");
        m_harness.Device().DefineTexture("fx/s0.png", 20, 10);
    }
    ~EffectPlacementRangeTest() override { CGuiEffectInfo::Instance().Clear(); }

    // The sprites a holder with the part "Spark" placed by this line (no reference size: the
    // scales as given) draws at (x, y).
    std::string Draw(const std::string& placement, int x, int y)
    {
        m_root.Write("ini/Gui3DEffect.ini", placement + "\n");
        CGuiEffectInfo::Instance().Load("ini/Gui3DEffect.ini");
        CGui3DEffect effect;
        effect.SetRect({0, 0, 20, 10});
        effect.AddEffect("Spark", 1, true);
        effect.SetPartRotation(0, -1);
        effect.PlayPart(-1);
        m_harness.Device().Clear();
        effect.Draw(x, y, -1);
        std::string text;
        for (const auto& call : m_harness.Device().Calls(QzTest::DrawKind::Texture))
            text += std::to_string(call.x1) + " " + std::to_string(call.y1) + " " +
                    std::to_string(call.width) + " " + std::to_string(call.height) + "\n";
        return text;
    }

    QzTest::Harness m_harness;
    QzTest::TempDataDir m_root;
};

TEST_F(EffectPlacementRangeTest, PartsBeyondTheIntRangeAreNotDrawn)
{
    // An offset of 2147483520 at window x 1000 would overflow an int.
    EXPECT_EQ(Draw("Spark 0 0 2147483520 0 1 1 0", 1000, 0), "");
    EXPECT_EQ(Draw("Spark 0 0 2147483520 0 1 1 0", -1000, 0), "2147482520 0 20 10\n");
    // Scales that make the size or the place too large, or not a number.
    EXPECT_EQ(Draw("Spark 0 0 0 0 1e30 1 0", 0, 0), "");
    EXPECT_EQ(Draw("Spark 0 0 10 0 nan 1 0", 0, 0), "");
    EXPECT_EQ(Draw("Spark 0 0 10 0 1 1 0", 5, 0), "15 0 20 10\n");
}

TEST_F(EffectPlacementRangeTest, RotationsOfFileAndCallerAddUpBeyondTheIntRange)
{
    m_root.Write("ini/Gui3DEffect.ini", "Spark 0 0 0 0 1 1 2147483647\n");
    CGuiEffectInfo::Instance().Load("ini/Gui3DEffect.ini");
    CGui3DEffect effect;
    effect.AddEffect("Spark", 1, false);
    effect.SetPartRotation(90, -1);
    ASSERT_EQ(effect.GetParts().size(), 1u);
    EXPECT_FLOAT_EQ(effect.GetParts()[0].fRotation, 2147483737.0f / 180.0f * 3.1415927f);
}

} // namespace
