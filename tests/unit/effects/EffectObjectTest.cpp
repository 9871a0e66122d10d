// Our effect object: parts are animation sections drawn as looping sprites once played, placed
// and sized by the part matrix; and a holder driving it onto the screen.
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
    std::string Sprites(int x, int y, int index)
    {
        return Sprites([&] { m_object->Draw(x, y, index); });
    }

    QzTest::Harness m_harness;
    QzTest::TempDataDir m_root;
    std::unique_ptr<IEffectObject, ReleaseObject> m_object{QzPlatform::CreateEffectObject()};
};

TEST_F(EffectObjectTest, PartsAreSectionsOfTheAnimationFileOnePerName)
{
    EXPECT_EQ(m_object->AddPart("Missing", 1, 0), -1);
    EXPECT_EQ(m_object->AddPart(nullptr, 1, 0), -1);
    EXPECT_EQ(m_object->AddPart("", 1, 0), -1);
    EXPECT_EQ(m_object->AddPart("Spark", 1, 0), 0);
    EXPECT_EQ(m_object->AddPart("Ring", 1, 0), 1);
    EXPECT_EQ(m_object->AddPart("SPARK", 0, 0), 0);

    EXPECT_EQ(m_object->FindPart("ring"), 1);
    EXPECT_EQ(m_object->FindPart("Missing"), -1);
    EXPECT_EQ(m_object->FindPart(nullptr), -1);
    EXPECT_NE(m_object->HasPart("Spark", 0, 0), 0);
    EXPECT_EQ(m_object->HasPart("Missing", 0, 0), 0);
    EXPECT_EQ(m_object->Update(), 1);
    EXPECT_EQ(m_object->Reserved16(3), 0);
    EXPECT_EQ(m_object->Reserved24(), 1);
}

TEST_F(EffectObjectTest, APartDrawsOnlyAfterPlayAsALoopingSpriteOf100MsFrames)
{
    m_object->AddPart("Spark", 1, 0);
    EXPECT_EQ(Sprites(100, 50, -1), "");

    m_object->PlayPart(0);
    EXPECT_EQ(Sprites(100, 50, -1), "fx/s0.png 100 50 20 10\n");
    m_harness.Advance(250);
    EXPECT_EQ(Sprites(100, 50, -1), "fx/s2.png 100 50 20 10\n");
    m_harness.Advance(100); // 350 ms: frame 3 wraps to 0
    EXPECT_EQ(Sprites(100, 50, -1), "fx/s0.png 100 50 20 10\n");

    m_object->Play("spark"); // restarts
    m_harness.Advance(150);
    EXPECT_EQ(Sprites(100, 50, -1), "fx/s1.png 100 50 20 10\n");
}

TEST_F(EffectObjectTest, StartEffectAddsAndPlaysAPartOrPlaysEveryPartAndDrawCanPickOne)
{
    m_object->AddPart("Ring", 1, 0);

    m_object->StartEffect("Spark", 1, 0);
    EXPECT_EQ(Sprites(0, 0, -1), "fx/s0.png 0 0 20 10\n");

    m_object->StartEffect("Missing", 1, 0);
    m_object->StartEffect(nullptr, 0, 0);
    EXPECT_EQ(Sprites(0, 0, -1), "fx/ring.png 0 0 8 8\nfx/s0.png 0 0 20 10\n");
    EXPECT_EQ(Sprites(0, 0, 1), "fx/s0.png 0 0 20 10\n");
    EXPECT_EQ(Sprites(0, 0, 2), "");
    EXPECT_EQ(Sprites(0, 0, -7), "");

    D3DXMATRIX matrix;
    D3DXMatrixTranslation(&matrix, 5.0f, 0.0f, 5.0f);
    m_object->SetPartMatrix(matrix, 2); // not a part: ignored
    m_object->SetPartMatrix(matrix, -1);
    EXPECT_EQ(Sprites(0, 0, 1), "fx/s0.png 0 0 20 10\n");
}

// Placement x 30, z 40. The part matrix's translation row is (x sx, ., z (s^2 + c^2 sz), 1) and
// its third row (0, cs (1 - sz), s^2 + c^2 sz, 0), with c = cos 30 deg and s = sin 30 deg.
TEST_F(EffectObjectTest, AHolderDrawsAPartAtItsOffsetSizedByItsScales)
{
    m_root.Write("ini/Gui3DEffect.ini", "Spark 0 0 30 40 1 1 0\n");
    ASSERT_TRUE(CGuiEffectInfo::Instance().Load("ini\\Gui3DEffect.ini"));
    CGui3DEffect effect;
    ASSERT_EQ(effect.AddEffect("Spark", 1, false), 0);
    EXPECT_EQ(Sprites([&] { effect.Draw(100, 50, -1); }), ""); // not played yet

    effect.PlayPart(-1);
    EXPECT_EQ(Sprites([&] { effect.Draw(100, 50, -1); }), "fx/s0.png 130 90 20 10\n");

    // Scales 1 + 1 and 2 + 1: x 30 x 2 = 60, z 40 x 2.5 = 100; width 20 x 2, height
    // 10 x |(0, -0.8660254, 2.5)| = 10 x sqrt(7) = 26.46.
    effect.SetPartScale(1.0f, 2.0f, -1);
    EXPECT_EQ(Sprites([&] { effect.Draw(100, 50, -1); }), "fx/s0.png 160 150 40 26\n");
}

} // namespace
