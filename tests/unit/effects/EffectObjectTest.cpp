// Our effect object: parts are animation sections drawn as looping sprites once played, placed
// and sized by the part matrix; and a holder driving it onto the screen, whatever the placement
// data says (places and sizes beyond the int range are off every screen and not drawn).
#include "effects/Gui3DEffect.h"
#include "effects/GuiEffectInfo.h"
#include "platform/services/QzEffectObject.h"
#include "support/QzHarness.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

using QzPlatform::IEffectObject;

struct ReleaseObject
{
    void operator()(IEffectObject* pObject) const { pObject->Release(); }
};

class EffectObjectTest : public ::testing::Test
{
protected:
    EffectObjectTest()
    {
        m_root.Write("ani/Control.ani", "[Spark]\nFrameAmount=3\nFrame0=fx/s0.png\n"
                                        "Frame1=fx/s1.png\nFrame2=fx/s2.png\n"
                                        "[Ring]\nFrameAmount=1\nFrame0=fx/ring.png\n");
        for (const char* path : {"fx/s0.png", "fx/s1.png", "fx/s2.png"})
            m_harness.Device().DefineTexture(path, 20, 10);
        m_harness.Device().DefineTexture("fx/ring.png", 8, 8);
    }
    ~EffectObjectTest() override { CGuiEffectInfo::Instance().Clear(); }

    // The sprites one draw puts on the screen, as "path x y width height" lines.
    template <typename Drawer> std::string Sprites(Drawer&& draw)
    {
        m_harness.Device().Clear();
        draw();
        std::string text;
        for (const auto& call : m_harness.Device().Calls(QzTest::DrawKind::Texture))
            text += call.texturePath + " " + std::to_string(call.x1) + " " +
                    std::to_string(call.y1) + " " + std::to_string(call.width) + " " +
                    std::to_string(call.height) + "\n";
        return text;
    }
    std::string Sprites(int index)
    {
        return Sprites([&] { m_object->Draw(100, 50, index); });
    }
    // What a holder of the played part "Spark", placed by this line of ini/Gui3DEffect.ini and
    // given these part scales, draws at (x, y).
    std::string HolderSprites(const std::string& placement, int x, int y, float scaleX = 0.0f,
                              float scaleZ = 0.0f)
    {
        m_root.Write("ini/Gui3DEffect.ini", placement + "\n");
        CGuiEffectInfo::Instance().Load("ini\\Gui3DEffect.ini");
        CGui3DEffect effect;
        effect.AddEffect("Spark", 1, false);
        effect.SetPartScale(scaleX, scaleZ, -1);
        effect.PlayPart(-1);
        return Sprites([&] { effect.Draw(x, y, -1); });
    }

    QzTest::Harness m_harness;
    QzTest::TempDataDir m_root;
    std::unique_ptr<IEffectObject, ReleaseObject> m_object{QzPlatform::CreateEffectObject()};
};

TEST_F(EffectObjectTest, PartsAreSectionsOfTheAnimationFileOnePerName)
{
    for (const char* pszBad : {"Missing", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(m_object->AddPart(pszBad, 1, 0), -1);
    EXPECT_EQ(m_object->AddPart("Spark", 1, 0), 0);
    EXPECT_EQ(m_object->AddPart("Ring", 1, 0), 1);
    EXPECT_EQ(m_object->AddPart("SPARK", 0, 0), 0);

    EXPECT_EQ(m_object->FindPart("ring"), 1);
    EXPECT_EQ(m_object->FindPart("Missing"), -1);
    EXPECT_EQ(m_object->FindPart(nullptr), -1);
    EXPECT_NE(m_object->HasPart("Spark", 0, 0), 0);
    EXPECT_EQ(m_object->HasPart("Missing", 0, 0), 0);
}

TEST_F(EffectObjectTest, APartDrawsOnlyAfterPlayAsALoopingSpriteOf100MsFrames)
{
    m_object->AddPart("Spark", 1, 0);
    EXPECT_EQ(Sprites(-1), "");

    m_object->PlayPart(0);
    EXPECT_EQ(Sprites(-1), "fx/s0.png 100 50 20 10\n");
    m_harness.Advance(250);
    EXPECT_EQ(Sprites(-1), "fx/s2.png 100 50 20 10\n");
    m_harness.Advance(100); // 350 ms: frame 3 wraps to 0
    EXPECT_EQ(Sprites(-1), "fx/s0.png 100 50 20 10\n");

    m_object->Play("spark"); // restarts
    m_harness.Advance(150);
    EXPECT_EQ(Sprites(-1), "fx/s1.png 100 50 20 10\n");
}

TEST_F(EffectObjectTest, StartEffectAddsAndPlaysAPartOrPlaysEveryPartAndDrawCanPickOne)
{
    m_object->AddPart("Ring", 1, 0);
    m_object->StartEffect("Spark", 1, 0);
    EXPECT_EQ(Sprites(-1), "fx/s0.png 100 50 20 10\n");

    m_object->StartEffect("Missing", 1, 0);
    m_object->StartEffect(nullptr, 0, 0);
    EXPECT_EQ(Sprites(-1), "fx/ring.png 100 50 8 8\nfx/s0.png 100 50 20 10\n");
    EXPECT_EQ(Sprites(1), "fx/s0.png 100 50 20 10\n");
    EXPECT_EQ(Sprites(2), "");
    EXPECT_EQ(Sprites(-7), "");

    D3DXMATRIX matrix;
    D3DXMatrixTranslation(&matrix, 5.0f, 0.0f, 5.0f);
    m_object->SetPartMatrix(matrix, 2); // not a part: ignored
    m_object->SetPartMatrix(matrix, -1);
    EXPECT_EQ(Sprites(1), "fx/s0.png 100 50 20 10\n");
}

// Placement x 30, z 40. The part matrix's translation row is (x sx, ., z (s^2 + c^2 sz), 1) and
// its third row (0, cs (1 - sz), s^2 + c^2 sz, 0), with c = cos 30 deg and s = sin 30 deg.
TEST_F(EffectObjectTest, AHolderDrawsAPartAtItsOffsetSizedByItsScales)
{
    EXPECT_EQ(HolderSprites("Spark 0 0 30 40 1 1 0", 100, 50), "fx/s0.png 130 90 20 10\n");
    // Scales 1 + 1 and 2 + 1: x 30 x 2 = 60, z 40 x 2.5 = 100; width 20 x 2, height
    // 10 x |(0, -0.8660254, 2.5)| = 10 x sqrt(7) = 26.46.
    EXPECT_EQ(HolderSprites("Spark 0 0 30 40 1 1 0", 100, 50, 1.0f, 2.0f),
              "fx/s0.png 160 150 40 26\n");
}

TEST_F(EffectObjectTest, PartsBeyondTheIntRangeAreNotDrawn)
{
    const struct
    {
        const char* placement;
        int x;
        const char* drawn;
    } cases[] = {
        {"Spark 0 0 2147483520 0 1 1 0", 1000, ""}, // the offset at x 1000 overflows an int
        {"Spark 0 0 2147483520 0 1 1 0", -1000, "fx/s0.png 2147482520 0 20 10\n"},
        {"Spark 0 0 0 0 1e30 1 0", 0, ""},
        {"Spark 0 0 10 0 nan 1 0", 0, ""},
        {"Spark 0 0 10 0 1 1 0", 5, "fx/s0.png 15 0 20 10\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(HolderSprites(c.placement, c.x, 0), c.drawn) << c.placement << " at " << c.x;
}

TEST_F(EffectObjectTest, RotationsOfFileAndCallerAddUpBeyondTheIntRange)
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
