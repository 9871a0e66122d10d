// The frame: dialogs bottom to top with the draw hook, extra-shown dialogs, the hover drawing,
// and tip boxes kept on screen with their lines aligned.
#include "ManagerFixture.h"

#include "framework/QzAutoGuiMgr.h"

namespace QzGuiManagerTest
{

namespace
{

using QzTest::DrawCall;
using QzTest::DrawKind;

const char* const kControlAni = "[DialogNorMsg]\nFrameAmount=1\nFrame0=ui/tip.png\n"
                                "[FancyTip]\nFrameAmount=1\nFrame0=ui/fancy.png\n";
constexpr DWORD kHookMark = 1000;

// A host hook that marks the draw log and queues the tips a test gives it.
class TipHook : public QzGui::IQzGuiApplyShow
{
public:
    TipHook(CQzGuiMgr* pMgr, std::vector<DWORD>* pLog) : m_pMgr(pMgr), m_pLog(pLog) {}

    void OnApplyShow() override
    {
        m_pLog->push_back(kHookMark);
        for (const QzGui::QzTipEntry& tip : tips)
            m_pMgr->AddTip(tip.x, tip.y, tip.nWidth,
                           tip.strBackSection.empty() ? nullptr : tip.strBackSection.c_str(),
                           tip.lines, tip.nAlign);
    }

    std::vector<QzGui::QzTipEntry> tips;

private:
    CQzGuiMgr* m_pMgr;
    std::vector<DWORD>* m_pLog;
};

QzGui::QzTipEntry Tip(int x, int y, int width, const char* back, std::vector<std::string> lines,
                      int align)
{
    QzGui::QzTipEntry tip;
    tip.x = x;
    tip.y = y;
    tip.nWidth = width;
    tip.strBackSection = back ? back : "";
    tip.lines = std::move(lines);
    tip.nAlign = align;
    return tip;
}

class DrawTest : public ManagerFixture
{
protected:
    DrawTest()
    {
        m_root.Write("ani/Control.ani", kControlAni);
        m_harness.Device().DefineTexture("ui/tip.png", 50, 30);
        m_harness.Device().DefineTexture("ui/fancy.png", 80, 40);
    }

    std::vector<DrawCall> Texts() { return Calls(DrawKind::Text); }
    std::vector<DrawCall> Textures() { return Calls(DrawKind::Texture); }
};

// A tip line as the device traces it: black 12-point text at (x, y).
std::string TipLine(int x, int y, const std::string& text)
{
    return "text " + std::to_string(x) + "," + std::to_string(y) + " \"" + text +
           "\" font default/12 #FF000000 shadow #00000000\n";
}

TEST_F(DrawTest, VisibleDialogsDrawBottomToTopWithTheHookAfterItsDialog)
{
    AddDialog(1);
    AddDialog(5, false);
    AddDialog(8); // ExtraShow
    AddDialog(2);
    TipHook hook(m_pMgr, &m_drawLog);
    m_pMgr->SetDrawHook(&hook, 1);
    m_pMgr->SetDrawHook(nullptr, 2); // ignored

    m_pMgr->Show();
    EXPECT_EQ((std::vector<DWORD>{1, kHookMark, 2}), m_drawLog);

    m_drawLog.clear();
    m_pMgr->ShowExtra();
    EXPECT_EQ((std::vector<DWORD>{8}), m_drawLog);
}

// A host dialog that is its own draw hook.
class HookDialog : public ProbeDialog, public QzGui::IQzGuiApplyShow
{
public:
    explicit HookDialog(DWORD nId) : ProbeDialog(nId, nullptr) {}
    void OnApplyShow() override { ++applied; }

    int applied = 0;
};

TEST_F(DrawTest, AHookThatIsDestroyedIsNoLongerCalled)
{
    AddDialog(1);
    auto pHook = std::make_unique<HookDialog>(2);
    m_pMgr->AddDialog(pHook.get(), nullptr, false);
    pHook->ShowWindow(SW_SHOW);
    m_pMgr->SetDrawHook(pHook.get(), 1);
    m_pMgr->Show();
    EXPECT_EQ(1, pHook->applied);

    pHook.reset();
    m_pMgr->Show();
    EXPECT_EQ((std::vector<DWORD>{1, 1}), m_drawLog);
}

TEST_F(DrawTest, OnlyTheDialogUnderTheMouseGetsItsHoverDrawing)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);
    m_harness.MouseMove(150, 150);

    m_pMgr->Show();
    m_harness.MouseMove(900, 700);
    m_pMgr->Show();
    EXPECT_EQ(0, pLower->hoverDraws);
    EXPECT_EQ(1, pUpper->hoverDraws);
}

TEST_F(DrawTest, TipsStayOnScreenAndAlignTheirLines)
{
    AddDialog(1);
    TipHook hook(m_pMgr, &m_drawLog);
    hook.tips = {Tip(1000, -5, 100, nullptr, {"abcd", "ab"}, 0),
                 Tip(-3, 760, 100, nullptr, {"abcd"}, 1),
                 Tip(200, 100, 100, "FancyTip", {"abcd"}, 2)};
    m_pMgr->SetDrawHook(&hook, 1);

    m_pMgr->Show();

    // Cell 6 x 12: "abcd" is 24 wide, a line 16 high; boxes are width + 24 wide. The first box
    // is pulled left to 1024 - 124 and down to 10, the second up to 768 - 36 and right to 10.
    EXPECT_EQ(TipLine(912, 20, "abcd") + TipLine(912, 36, "ab") +
                  TipLine(10 - 12 + (100 - 24) / 2, 732 + 10, "abcd") + // centred
                  TipLine(200 - 12 + 100 - 24, 110, "abcd"),            // right-aligned
              Trace(DrawKind::Text));
    EXPECT_EQ("texture ui/tip.png src(0,0,50,30) at 900,10 size 124x52 alpha 255 scale 1\n"
              "texture ui/tip.png src(0,0,50,30) at 10,732 size 124x36 alpha 255 scale 1\n"
              "texture ui/fancy.png src(0,0,80,40) at 195,95 size 80x40 alpha 255 scale 1\n",
              Trace(DrawKind::Texture));
}

TEST_F(DrawTest, OnceTheHostDrawsTheTipsTheFrameLeavesThemToIt)
{
    AddDialog(1);
    TipHook hook(m_pMgr, &m_drawLog);
    hook.tips = {Tip(100, 100, 50, nullptr, {"tip"}, 0)};
    m_pMgr->SetDrawHook(&hook, 1);

    m_pMgr->Show();
    EXPECT_EQ(1u, Texts().size());
    m_pMgr->DrawTips();
    EXPECT_EQ(2u, Texts().size());

    m_harness.Device().Clear();
    m_pMgr->Show();
    EXPECT_TRUE(Texts().empty());
    m_pMgr->DrawTips();
    EXPECT_EQ(1u, Texts().size()); // this frame's queue only
}

TEST_F(DrawTest, ShowTipNowSplitsAtBackslashBAndDrawsAtOnce)
{
    m_pMgr->ShowTipNow(100, 200, "ab\\bcd\\nef", 7, 10, 0, std::string());

    EXPECT_EQ(TipLine(112, 210, "ab") + TipLine(112, 226, "cd\\nef"), Trace(DrawKind::Text));
    m_pMgr->ShowTipNow(100, 200, "ab", 0, 80, 50, std::string());
    ASSERT_EQ(2u, Textures().size());
    EXPECT_EQ(6 * 6 + 24, Textures()[0].width); // the widest line, above the minimum
    EXPECT_EQ((C3_SIZE{80 + 24, 50}), (C3_SIZE{Textures()[1].width, Textures()[1].height}));
}

} // namespace

} // namespace QzGuiManagerTest
