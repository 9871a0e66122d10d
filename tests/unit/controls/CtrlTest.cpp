// The control base: its record, caption layout, tip, message dispatch and look states.
#include "ControlScene.h"

#include "controls/QzStatic.h"

#include <cstdio>

namespace ControlTest
{

namespace
{

class Probe : public CQzStatic
{
public:
    using CQzCtrl::m_bMultiLine;
    using CQzCtrl::m_dwTextColor;
    using CQzCtrl::m_lstTip;
    using CQzCtrl::m_nCtrlType;
    using CQzCtrl::m_nTipAlign;
    using CQzCtrl::m_nTipWidth;
    using CQzCtrl::m_ptTipOffset;
    using CQzCtrl::m_sizeFont;
    using CQzCtrl::m_strFont;
    using CQzCtrl::m_wLineSpace;
    using CQzCtrl::m_wTextFormat;
    using CQzCtrl::m_wTextLines;

    std::vector<std::string> Tip() const
    {
        std::vector<std::string> lines;
        for (const QzTipLine& line : m_lstTip)
            lines.push_back(line.strText);
        return lines;
    }
};

// Writes down the handler each message reached.
class HandlerCtrl : public CQzCtrl
{
public:
    int GetWndType() override { return QZ_WND_BUTTON; }
    void OnKeyDown(UINT c, UINT n, UINT f) override { Log("key %u %u %u", c, n, f); }
    void OnTimer(DWORD nId) override { Log("timer %u", nId); }
    void OnMouseEnter() override { Log("enter"); }
    void OnMouseMove(UINT, POINT pt) override { Log("move %d %d", pt.x, pt.y); }
    void OnLButtonUp(UINT, POINT pt) override { Log("lup %d %d", pt.x, pt.y); }
    void OnRButtonDown(UINT, POINT pt) override { Log("rdown %d %d", pt.x, pt.y); }
    void OnMouseWheel(WORD k, short d, int x, int y) override
    {
        Log("wheel %u %d %d %d", k, d, x, y);
    }
    BOOL PreTranslateMessage(QzMsg* pMsg) override { return pMsg->message == WM_CHAR; }

    std::vector<std::string> calls;

private:
    template <typename... Args> void Log(const char* pszFormat, Args... args)
    {
        char szText[64];
        std::snprintf(szText, sizeof(szText), pszFormat, args...);
        calls.emplace_back(szText);
    }
};

using CtrlBase = ControlScene;

// ---------------------------------------------------------------------------------------------
// Creation from a record

TEST_F(CtrlBase, TheRecordGivesFontColourCellAlignmentsLineSpaceAndType)
{
    m_pMgr->GetExtra()->nValue = 5;
    Probe* pPlain = AddCtrl<Probe>(1, {0, 0, 50, 20}, {{"TextLineHeight", "9"}});
    m_pRecord->SetFontSize(16); // without its flag: ignored
    Probe* pFull = AddCtrl<Probe>(
        2, {10, 20, 110, 40},
        {{"TipAlign", "2"}, {"TextFormat", "1"}, {"MutiLine", "1"}, {"TextLineHeight", "9"}});
    m_pRecord->SetFont("Serif");
    m_pRecord->SetFontColor(0xFF00FF00);
    m_pRecord->SetFontSize(16);
    m_pRecord->AddFlags(WNDINFO_FLAG_FONTCOLOR | WNDINFO_FLAG_FONTSIZE);
    m_pRecord->SetCtrlType(0xFFFE);
    Open();

    EXPECT_EQ(0xFFFFFFFFu, pPlain->m_dwTextColor);
    EXPECT_EQ(6, pPlain->m_sizeFont.iWidth);
    EXPECT_EQ(12, pPlain->m_sizeFont.iHeight);
    EXPECT_EQ(5, pPlain->m_wLineSpace); // the manager's extra record; no multi-line
    EXPECT_EQ("Serif", pFull->m_strFont);
    EXPECT_EQ(0xFF00FF00u, pFull->m_dwTextColor);
    EXPECT_EQ(8, pFull->m_sizeFont.iWidth);
    EXPECT_EQ(2, pFull->m_nTipAlign);
    EXPECT_EQ(1, pFull->m_wTextFormat);
    EXPECT_TRUE(pFull->m_bMultiLine);
    EXPECT_EQ(9, pFull->m_wLineSpace);
    EXPECT_EQ(-2, pFull->m_nCtrlType);
    EXPECT_EQ(120, pFull->GetY());
}

// ---------------------------------------------------------------------------------------------
// Drawing: captions of a 100 x 60 control at (200, 300) in the 6 x 12 cell

TEST_F(CtrlBase, ASingleLineIsPlacedOnTheCellByAlignmentAndTextOffset)
{
    Probe* pStatic = AddCtrl<Probe>(7, {100, 200, 200, 260});
    m_pRecord->SetTextOffsetX(4);
    Open();
    pStatic->SetWindowText("abcd"); // takes the record's text offset
    const POINT expected[] = {{204, 300}, {204 + 38, 300 + 30 - 6}, {204 + 76, 300}};
    for (WORD wFormat = 0; wFormat < 3; ++wFormat)
    {
        pStatic->SetTextFormat(wFormat);
        Frame();
        ASSERT_EQ(1u, Texts().size());
        EXPECT_EQ(expected[wFormat].x, Texts()[0].x1) << "format " << wFormat;
        EXPECT_EQ(expected[wFormat].y, Texts()[0].y1) << "format " << wFormat;
        EXPECT_EQ(0xFF000000u, Texts()[0].shadow);
    }
    EXPECT_EQ(242, pStatic->GetTextLeft());
    pStatic->SetWindowText("");
    Frame();
    EXPECT_TRUE(Texts().empty());
}

// Lines of 16 characters; the device measures size 14 at 7 pixels a character.
TEST_F(CtrlBase, MultiLineCaptionsWrapAfterTheLastSpaceAndCentreEachLine)
{
    Probe* pStatic = AddCtrl<Probe>(7, {100, 200, 200, 260}, {{"MutiLine", "1"}});
    Open();
    pStatic->SetWindowText("aaaa bbbb cccc dddd");
    const int expectedX[3][2] = {{200, 200}, {200 + 50 - 52, 200 + 50 - 14}, {195, 195}};
    const int expectedY[3] = {300, 300 + 30 - 14, 300};
    for (WORD wFormat = 0; wFormat < 3; ++wFormat)
    {
        pStatic->SetTextFormat(wFormat);
        Frame();
        const auto texts = Texts();
        ASSERT_EQ(2u, texts.size());
        EXPECT_EQ("aaaa bbbb cccc ", texts[0].text);
        EXPECT_EQ("dddd", texts[1].text);
        EXPECT_EQ(expectedX[wFormat][0], texts[0].x1) << "format " << wFormat;
        EXPECT_EQ(expectedX[wFormat][1], texts[1].x1) << "format " << wFormat;
        EXPECT_EQ(expectedY[wFormat], texts[0].y1) << "format " << wFormat;
        EXPECT_EQ(expectedY[wFormat] + 14, texts[1].y1) << "format " << wFormat;
    }
    EXPECT_EQ(2, pStatic->m_wTextLines);
}

TEST_F(CtrlBase, MultiLineBreaksAtTheLimitAtBackslashNAndDropsCrLfAndExcessLines)
{
    Probe* pStatic = AddCtrl<Probe>(7, {100, 200, 200, 260}, {{"MutiLine", "1"}});
    Open();
    pStatic->SetWindowText("abcdefghijklmnopqrstu\\nxy\r\n\\nz");
    Frame();
    std::vector<std::string> lines;
    for (const QzTest::DrawCall& call : Texts())
        lines.push_back(call.text);
    EXPECT_EQ((std::vector<std::string>{"abcdefghijklmnop", "qrstu", "xy", "z"}), lines);

    std::string caption;
    for (int i = 0; i < 250; ++i)
        caption += "x\\n";
    pStatic->SetWindowText(caption.c_str());
    Frame();
    EXPECT_EQ(199u, Texts().size());

    pStatic->MoveWindow(nullptr, 0, 0, 11, 20, TRUE); // narrower than two cells
    Frame();
    EXPECT_TRUE(Texts().empty());
}

// ---------------------------------------------------------------------------------------------
// Tips of a 100 x 20 control at (200, 200)

TEST_F(CtrlBase, BackslashBSplitsATipWhichSitsCentredTenPixelsAboveAndTipIdsAreLookedUp)
{
    m_root.Write("ini/StringTable.ini", "4711=From the table\n");
    Probe* pStatic = AddCtrl<Probe>(7, {100, 100, 200, 120});
    m_pRecord->SetTipText("Hello\\bWorld!!");
    m_pRecord->SetTipAniSection("TipBack");
    Open();
    EXPECT_EQ((std::vector<std::string>{"Hello", "World!!"}), pStatic->Tip());
    EXPECT_EQ(42, pStatic->m_nTipWidth);
    EXPECT_EQ((100 - 42) / 2, pStatic->m_ptTipOffset.x);
    EXPECT_EQ(-(12 * 2 + 10), pStatic->m_ptTipOffset.y);

    m_pRecord->SetTipOffsetX(5); // the y offset stays "not given", which is 0
    pStatic->SetTip("a\\b", 0xFF0000FF, nullptr);
    EXPECT_EQ((std::vector<std::string>{"a", ""}), pStatic->Tip());
    EXPECT_EQ(5, pStatic->m_ptTipOffset.x);
    EXPECT_EQ(0, pStatic->m_ptTipOffset.y);
    // Only the first 1024 bytes are split, and a piece keeps at most 1023 of them.
    pStatic->SetTip((std::string(1100, 'x') + "\\by").c_str(), 0, "");
    EXPECT_EQ(std::vector<std::string>{std::string(1023, 'x')}, pStatic->Tip());
    pStatic->SetTip(nullptr, 0, nullptr);
    EXPECT_TRUE(pStatic->Tip().empty());
    m_pRecord->SetTipId(4711);
    pStatic->LoadTip();
    EXPECT_EQ(std::vector<std::string>{"From the table"}, pStatic->Tip());
}

// The tip box lies at the control's top-left plus (35, -22); its text 12 and 10 inside.
TEST_F(CtrlBase, TheTipAppearsAfterA300MsRestAndAtOnceOnALaterHover)
{
    Probe* pStatic = AddCtrl<Probe>(7, {100, 100, 200, 120});
    m_pRecord->SetTipText("Hello");
    Open();
    const auto tipAt = [this](DWORD dwTime) -> POINT
    {
        m_harness.SetTime(dwTime);
        Frame();
        for (const QzTest::DrawCall& call : Texts())
            if (call.text == "Hello")
                return {call.x1, call.y1};
        return {-1, -1};
    };
    m_harness.MouseMove(250, 210);
    const DWORD t = m_harness.Now();
    EXPECT_EQ(-1, tipAt(t).x);
    EXPECT_EQ(-1, tipAt(t + 299).x);
    const POINT at = tipAt(t + 300);
    EXPECT_EQ(200 + 35 + 12, at.x);
    EXPECT_EQ(200 - 22 + 10, at.y);
    EXPECT_NE(-1, tipAt(t + 316).x);

    // Leaving keeps the rest's start: the next hover shows the tip at once.
    m_harness.MouseMove(400, 350);
    EXPECT_EQ(-1, tipAt(t + 400).x);
    m_harness.MouseMove(250, 210);
    EXPECT_NE(-1, tipAt(t + 1000).x);

    // Asked while the mouse is out, the rest starts again.
    m_harness.MouseMove(400, 350);
    tipAt(t + 1016);
    pStatic->ShowTip();
    m_harness.MouseMove(250, 210);
    EXPECT_EQ(-1, tipAt(t + 2000).x);
    EXPECT_NE(-1, tipAt(t + 2300).x);
}

// ---------------------------------------------------------------------------------------------
// Input sequences

TEST_F(CtrlBase, EachMessageReachesItsHandlerWithSignedCoordinates)
{
    auto* pCtrl = AddCtrl<HandlerCtrl>(9, {0, 0, 100, 100});
    Open();
    pCtrl->calls.clear();
    const LPARAM point = MAKELPARAM(-3, 40);
    pCtrl->SetCapture();
    EXPECT_EQ(1, pCtrl->SendMessage(WM_KEYDOWN, 'A', MAKELPARAM(2, 0x1E)));
    EXPECT_EQ(0, pCtrl->SendMessage(WM_TIMER, 6, 0));
    EXPECT_EQ(0, pCtrl->SendMessage(WM_MOUSEMOVE, 0, point));
    EXPECT_EQ(0, pCtrl->SendMessage(WM_MOUSEMOVE, 0, point));
    EXPECT_EQ(1, pCtrl->SendMessage(WM_LBUTTONUP, 0, point));
    EXPECT_EQ(1, pCtrl->SendMessage(WM_RBUTTONDOWN, 0, point));
    EXPECT_EQ(1, pCtrl->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -120), point));
    EXPECT_EQ(1, pCtrl->SendMessage(WM_CHAR, 'x', 0)); // consumed before WindowProc
    EXPECT_EQ(0, pCtrl->SendMessage(WM_RBUTTONUP, 0, point));

    const std::vector<std::string> expected = {"key 65 2 30", "timer 6",           "enter",
                                               "move -3 40",  "move -3 40",        "lup -3 40",
                                               "rdown -3 40", "wheel 4 -120 -3 40"};
    EXPECT_EQ(expected, pCtrl->calls);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture()); // a release lets go wherever the press began
}

TEST_F(CtrlBase, HoverPressAndCheckSetTheLookAndADisabledControlKeepsStateThree)
{
    Probe* pCtrl = AddCtrl<Probe>(9, {0, 0, 100, 100});
    m_pRecord->SetClickSound("click.wav");
    Open();
    EXPECT_EQ("img/f0.png", Look());
    m_harness.MouseMove(150, 150);
    EXPECT_EQ("img/f2.png", Look());
    pCtrl->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 150));
    EXPECT_EQ("img/f1.png", Look());
    EXPECT_EQ(std::vector<std::string>{"click.wav"}, PlayedSounds());
    pCtrl->SetCheck(TRUE);
    m_harness.MouseMove(450, 350);
    EXPECT_EQ("img/f1.png", Look());

    pCtrl->EnableWindow(FALSE);
    m_harness.MouseMove(150, 150);
    pCtrl->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 150));
    pCtrl->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(150, 150));
    EXPECT_EQ("img/f3.png", Look());
    pCtrl->EnableWindow(TRUE);
    EXPECT_EQ(QZ_STATE_PRESSED, pCtrl->GetCtrlState()); // still checked
}

// ---------------------------------------------------------------------------------------------
// Edge values

TEST_F(CtrlBase, TheTextLimitCutsOnlySetWindowTextAndInflateWindowGrowsTheRecordsRect)
{
    Probe* pStatic = AddCtrl<Probe>(7, {10, 20, 60, 50});
    Open();
    pStatic->SetTextLimit(5); // SetWindowText only; never inside a two-byte character
    pStatic->SetWindowText("hello world");
    EXPECT_STREQ("hello", pStatic->GetWindowText());
    pStatic->SetWindowText(nullptr);
    EXPECT_STREQ("hello", pStatic->GetWindowText());
    pStatic->SetTextRaw("hello world");
    EXPECT_EQ(11, pStatic->GetTextLength());
    pStatic->SetTextLimit(3);
    pStatic->SetWindowText("ab\xD6\xD0"); // a GBK character after two bytes
    EXPECT_STREQ("ab", pStatic->GetWindowText());

    // InflateWindow grows the record's rectangle, x and y read as signed, on each side.
    pStatic->InflateWindow(3);
    EXPECT_EQ(107, pStatic->GetX());
    EXPECT_EQ(117, pStatic->GetY());
    EXPECT_EQ(56, pStatic->GetWidth());
    EXPECT_EQ(36, pStatic->GetHeight());
    m_pRecord->SetX(static_cast<WORD>(-10));
    pStatic->InflateWindow(-2);
    EXPECT_EQ(92, pStatic->GetX());
    EXPECT_EQ(46, pStatic->GetWidth());
}

} // namespace

} // namespace ControlTest
