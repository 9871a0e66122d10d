// Copies of controls: a copy takes every value of its source but owns its own
// effect layers, back bitmap and click region, so copies and sources are
// destroyed in any order.
#include "ControlScene.h"

#include "controls/QzButton.h"
#include "platform/system/kernel/QzKernelHost.h"
#include "support/RegionFile.h"

namespace ControlTest
{

namespace
{

// A button that lets the test see what it owns.
class PeekButton : public CQzButton
{
public:
    HRGN Region() const { return m_hRgn; }
    IMyBitmap* Bitmap() const { return m_pBackBitmap; }
};

// ini/Rgn.dat with one region, the rectangle (200, 200, 210, 210), for control
// 11 of dialog 300.
std::string RegionFile()
{
    std::string bytes;
    QzTest::PutDword(bytes, 1);
    QzTest::PutRegionEntry(bytes, kDialogId, 11, QzTest::RegionData({{200, 200, 210, 210}}));
    return bytes;
}

class CtrlCopy : public ControlScene
{
protected:
    CtrlCopy()
    {
        m_root.Write("ini/Rgn.dat", RegionFile());
        m_pMgr->GetInfoMgr()->ReloadLayout("Test.ini");
        m_pSource = AddCtrl<PeekButton>(11, {10, 10, 50, 30}, {{"BackFile", "img/f1.png"}});
        m_pRecord->AddFlags(WNDINFO_FLAG_REGION);
        m_pRecord->SetFgEffect("Look");
        m_pRecord->SetBackShowMode(5);
        Open();
        m_pSource->SetWindowText("Hello");
        m_pSource->SetTag(42);
    }

    // Front-effect sprites drawn by the window in a fresh recording.
    size_t EffectDraws(CQzBaseWindow& window)
    {
        m_harness.Device().Clear();
        window.UpdateEffects();
        window.DrawFrontEffect();
        return m_harness.Device().Calls(QzTest::DrawKind::Texture).size();
    }

    PeekButton* m_pSource = nullptr;
};

} // namespace

TEST_F(CtrlCopy, CopyTakesTheValuesAndOwnsItsResources)
{
    ASSERT_NE(nullptr, m_pSource->Region());
    ASSERT_NE(nullptr, m_pSource->Bitmap());
    PeekButton copy(*m_pSource);

    EXPECT_STREQ("Hello", copy.GetWindowText());
    EXPECT_EQ(42, copy.GetTag());
    EXPECT_TRUE(copy.HasFrontEffect("Look"));
    EXPECT_NE(m_pSource->Region(), copy.Region());
    EXPECT_TRUE(copy.PtInWindow(205, 205));
    EXPECT_NE(nullptr, copy.Bitmap());
    EXPECT_NE(m_pSource->Bitmap(), copy.Bitmap());
}

TEST_F(CtrlCopy, SourceAndCopiesAreDestroyedInAnyOrder)
{
    const HRGN hRegion = m_pSource->Region();
    {
        PeekButton copy(*m_pSource);
        PeekButton assigned;
        assigned.SetRegion(CreateRectRgn(0, 0, 5, 5));
        assigned = copy;
        EXPECT_TRUE(assigned.PtInWindow(205, 205));
        EXPECT_EQ(1u, EffectDraws(assigned));
    }
    EXPECT_FALSE(QzPlatform::GetRegionRects(hRegion).empty());
    EXPECT_TRUE(m_pSource->PtInWindow(205, 205));
    EXPECT_EQ(1u, EffectDraws(*m_pSource));

    auto source = std::make_unique<PeekButton>(*m_pSource);
    auto copy = std::make_unique<PeekButton>(*source);
    source.reset();
    EXPECT_TRUE(copy->PtInWindow(205, 205));
    EXPECT_EQ(1u, EffectDraws(*copy));
}

} // namespace ControlTest
