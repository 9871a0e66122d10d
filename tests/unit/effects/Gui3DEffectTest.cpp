// The effect holder: parts and their placement, fitting to the window rectangle, the part
// matrix, drawing, forwarding with its defaults, and copies sharing one effect object.
#include "RecordingEffectObject.h"

#include "effects/Gui3DEffect.h"
#include "effects/GuiEffectInfo.h"
#include "support/GeometryPrint.h"
#include "support/LogCapture.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace
{

using Calls = std::vector<std::string>;

// Every part's placement as "x z scaleX scaleZ rotation", parts separated by "; ".
std::string Places(const CGui3DEffect& effect)
{
    std::ostringstream text;
    for (const QzEffectPart& part : effect.GetParts())
        text << (text.tellp() > 0 ? "; " : "") << part.fX << " " << part.fZ << " " << part.fScaleX
             << " " << part.fScaleZ << " " << part.fRotation;
    return text.str();
}

class Gui3DEffectTest : public ::testing::Test
{
protected:
    Gui3DEffectTest() { m_objects.mapIndexes = {{"Fire", 0}, {"Glow", 1}, {"Spark", 3}}; }
    ~Gui3DEffectTest() override { CGuiEffectInfo::Instance().Clear(); }

    void LoadPlacements(const std::string& text)
    {
        m_root.Write("ini/Gui3DEffect.ini", text);
        ASSERT_TRUE(CGuiEffectInfo::Instance().Load("ini\\Gui3DEffect.ini"));
    }

    QzTest::LogCapture m_log;
    QzTest::TempDataDir m_root;
    QzTest::EffectObjectLog m_objects;
    QzTest::ScopedRecordingFactory m_factory{m_objects};
};

TEST_F(Gui3DEffectTest, AddEffectPlacesAPartFromTheTableAndFitsItOnlyWhenAsked)
{
    LoadPlacements("Fire 200 100 15 25 1.5 2 45\n");
    CGui3DEffect effect;
    effect.SetRect({10, 20, 410, 70}); // 400 x 50

    EXPECT_EQ(effect.AddEffect("Spark", 1, true), 3); // not in the table
    EXPECT_EQ(effect.AddEffect("Fire", 0, false), 0);
    EXPECT_EQ(effect.AddEffect("Fire", 2, true), 0);

    EXPECT_EQ(m_objects.calls,
              (Calls{"AddPart(Spark,1,0)", "AddPart(Fire,0,0)", "AddPart(Fire,2,0)"}));
    // The fitted part: 400 / 200 x 1.5 and 50 / 100 x 2.
    EXPECT_EQ(Places(effect), "0 0 1 1 0; 15 25 1 1 0.785398; 15 25 3 1 0.785398");
}

TEST_F(Gui3DEffectTest, AddEffectRefusesANullNameAPartTheObjectRefusesAndAMissingObject)
{
    CGui3DEffect effect;
    EXPECT_EQ(effect.AddEffect(nullptr, 1, false), -1);
    EXPECT_FALSE(effect.HasEffectObject());
    EXPECT_EQ(effect.AddEffect("Unknown", 1, false), -1);
    EXPECT_TRUE(effect.GetParts().empty());

    QzTest::ScopedRecordingFactory failing(m_objects, true);
    CGui3DEffect noObject;
    EXPECT_EQ(noObject.AddEffect("Fire", 1, false), -1);
    EXPECT_TRUE(noObject.GetParts().empty());
}

TEST_F(Gui3DEffectTest, SetRectRefitsTablePartsFromTheLastToTheFirstUnlessTheRectIsEmpty)
{
    LoadPlacements("Fire 100 50 0 0 1 1 0\nGlow 0 100 0 0 1.5 2 0\n");
    CGui3DEffect effect;
    effect.AddEffect("Fire", 0, true); // no rectangle yet: not fitted
    effect.AddEffect("Spark", 0, true);
    effect.AddEffect("Glow", 0, true);
    EXPECT_EQ(Places(effect), "0 0 1 1 0; 0 0 1 1 0; 0 0 1 1 0");
    m_objects.calls.clear();
    m_objects.mapIndexes["Fire"] = 8; // the object renumbered the part

    effect.SetRect({0, 0, 300, 50});

    EXPECT_EQ(m_objects.calls, (Calls{"FindPart(Glow)", "FindPart(Spark)", "FindPart(Fire)"}));
    EXPECT_EQ(effect.GetParts()[0].nIndex, 8);
    // Glow has reference width 0: the table's scale x.
    const std::string fitted = "0 0 3 1 0; 0 0 1 1 0; 0 0 1.5 1 0";
    EXPECT_EQ(Places(effect), fitted);

    for (const RECT& empty : {RECT{10, 10, 10, 60}, RECT{10, 10, 60, 10}})
    {
        effect.SetRect(empty);
        EXPECT_TRUE(effect.IsRectSet());
        EXPECT_EQ(effect.GetRect(), empty);
        EXPECT_EQ(Places(effect), fitted);
    }

    effect.ClearRect();
    EXPECT_FALSE(effect.IsRectSet());
    EXPECT_EQ(effect.GetRect(), (RECT{0, 0, 0, 0}));
}

TEST_F(Gui3DEffectTest, SetPartScaleAndRotationAddTheTableValuesToTheMatchingParts)
{
    CGui3DEffect effect;
    effect.AddEffect("Fire", 0, false);
    effect.AddEffect("Glow", 0, false);
    effect.SetPartRotation(90, -1);
    EXPECT_EQ(Places(effect), "0 0 1 1 1.5708; 0 0 1 1 1.5708");

    LoadPlacements("Glow 0 0 0 0 1.5 2 45\n");
    effect.SetPartScale(0.5f, 0.25f, -1);
    effect.SetPartRotation(135, 1);
    EXPECT_EQ(Places(effect), "0 0 0.5 0.25 1.5708; 0 0 2 2.25 3.14159");
}

// Worked by hand with c = cos 30 deg = 0.8660254 and s = sin 30 deg = 0.5: translation
// (x, 0, z), tilt by -30 deg, scale (sx, 1, sz), tilt by +30 deg, turn by r. Without the turn:
// row 1 (sx, 0, 0, 0), row 2 (0, c^2 + s^2 sz, cs (1 - sz), 0), row 3 (0, cs (1 - sz),
// s^2 + c^2 sz, 0), row 4 (x sx, z cs (1 - sz), z (s^2 + c^2 sz), 1). A quarter turn maps
// every row (a, b, d, w) to (d, b, -a, w).
TEST_F(Gui3DEffectTest, ComputePartMatrixMatchesHandWorkedMatrices)
{
    QzEffectPart part;
    part.fX = 10.0f;
    part.fZ = 20.0f;
    part.fScaleX = 2.0f;
    part.fScaleZ = 3.0f;
    const float unturned[4][4] = {{2, 0, 0, 0},
                                  {0, 1.5f, -0.8660254f, 0},
                                  {0, -0.8660254f, 2.5f, 0},
                                  {20, -17.320508f, 50, 1}};
    const float turned[4][4] = {{0, 0, -2, 0},
                                {-0.8660254f, 1.5f, 0, 0},
                                {2.5f, -0.8660254f, 0, 0},
                                {50, -17.320508f, -20, 1}};
    for (const auto* expected : {&unturned, &turned})
    {
        part.fRotation = expected == &turned ? 1.5707964f : 0.0f;
        const D3DXMATRIX actual = CGui3DEffect::ComputePartMatrix(part);
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                EXPECT_NEAR(actual.m[row][column], (*expected)[row][column], 1e-4f)
                    << "rotation " << part.fRotation << ", row " << row + 1 << ", column "
                    << column + 1;
    }
}

TEST_F(Gui3DEffectTest, DrawPlacesThePartsFromTheLastToTheFirstThenDrawsTheObject)
{
    CGui3DEffect effect;
    effect.AddEffect("Fire", 0, false);
    effect.AddEffect("Spark", 0, false);
    effect.SetPartScale(2.0f, 1.0f, 0);
    m_objects.calls.clear();

    effect.Draw(5, 6, -1);
    effect.Draw(7, 8, 3);

    EXPECT_EQ(m_objects.calls, (Calls{"SetPartMatrix(3)", "SetPartMatrix(0)", "Draw(5,6,-1)",
                                      "SetPartMatrix(3)", "Draw(7,8,3)"}));
    ASSERT_EQ(m_objects.matrices.size(), 3u);
    EXPECT_FLOAT_EQ(m_objects.matrices[1]._11, 2.0f);
}

// What the operations that answer something return, and a call of each operation with more than
// one argument (so that swapped arguments show).
std::string Forward(CGui3DEffect& effect)
{
    effect.StartEffect("Fire", 1, 2);
    effect.Reserved09(9, -9);
    effect.Reserved10(10, -10);
    effect.Reserved14(14, -14, true);
    effect.Reserved15(1, 2, 3, 4);
    effect.Reserved21({1, 2, 3}, 21);
    effect.Reserved22({4, 5, 6}, 22);
    effect.Reserved23(1, 2, 3);
    effect.Reserved25(25, -25);
    std::ostringstream answers; // << evaluates left to right
    answers << effect.Update() << " " << effect.Reserved16(16) << " "
            << effect.HasPart("Spark", 17, 18) << " " << effect.FindPart("Spark") << " "
            << effect.Reserved24();
    return answers.str();
}

TEST_F(Gui3DEffectTest, ForwardingGivesDefaultsWithoutCreatingTheObjectAndPassesArgumentsOn)
{
    CGui3DEffect effect;
    EXPECT_EQ(Forward(effect), "1 0 0 -1 1");
    effect.Draw(0, 0, -1);
    EXPECT_EQ(m_objects.nCreated, 0);

    ASSERT_NE(effect.GetEffectObject(), nullptr);
    EXPECT_EQ(Forward(effect), "7 1099511627776 1 3 5");
    EXPECT_EQ(m_objects.calls,
              (Calls{"StartEffect(Fire,1,2)", "Reserved09(9,-9)", "Reserved10(10,-10)",
                     "Reserved14(14,-14,1)", "Reserved15(1,2,3,4)", "Reserved21(1,2,3,21)",
                     "Reserved22(4,5,6,22)", "Reserved23(1,2,3)", "Reserved25(25,-25)", "Update()",
                     "Reserved16(16)", "HasPart(Spark,17,18)", "FindPart(Spark)", "Reserved24()"}));
}

TEST_F(Gui3DEffectTest, CopiesShareTheObjectAndTheLastHolderReleasesItOnce)
{
    CGui3DEffect* pSource = CGui3DEffect::CreateNew();
    ASSERT_NE(pSource, nullptr);
    pSource->SetRect({1, 2, 3, 4});
    pSource->AddEffect("Fire", 0, false);
    CGui3DEffect copy(*pSource);
    CGui3DEffect assigned;
    assigned.GetEffectObject(); // its own object, released by the assignment
    ASSERT_EQ(m_objects.nCreated, 2);

    assigned = copy;
    EXPECT_EQ(m_objects.nReleased, 1);
    EXPECT_EQ(copy.GetEffectObject(), pSource->GetEffectObject());
    EXPECT_EQ(assigned.GetEffectObject(), pSource->GetEffectObject());
    EXPECT_EQ(assigned.GetRect(), (RECT{1, 2, 3, 4}));
    EXPECT_EQ(assigned.GetParts().size(), 1u);

    CGui3DEffect::Destroy(pSource);
    copy = CGui3DEffect();
    const CGui3DEffect& same = assigned;
    assigned = same;
    EXPECT_EQ(m_objects.nReleased, 1);
    assigned = CGui3DEffect();
    EXPECT_EQ(m_objects.nReleased, 2);
    EXPECT_EQ(m_objects.nCreated, 2);
    CGui3DEffect::Destroy(nullptr);
}

} // namespace
