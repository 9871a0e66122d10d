// The control base: its record, caption layout, tip, message dispatch and look
// states.
#include "ControlScene.h"
#include "controls/QzLookHash.h"

#include <cstdio>

namespace ControlTest
{

namespace
{

class Probe : public CQzStatic
{
public:
    using CQzCtrl::m_ptTipOffset;

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

// Captions of a 100 x 60 control at (200, 300) in the 6 x 12 cell.
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
        EXPECT_EQ(expected[wFormat], (POINT{Texts()[0].x1, Texts()[0].y1})) << wFormat;
    }
    EXPECT_EQ(0xFF000000u, Texts()[0].shadow);
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
    const int expected[3][3] = {{200, 200, 300}, {198, 236, 316}, {195, 195, 300}};
    for (WORD wFormat = 0; wFormat < 3; ++wFormat)
    {
        pStatic->SetTextFormat(wFormat);
        Frame();
        const auto texts = Texts();
        ASSERT_EQ(2u, texts.size());
        EXPECT_EQ("aaaa bbbb cccc ", texts[0].text);
        EXPECT_EQ("dddd", texts[1].text);
        EXPECT_EQ((std::vector<int>{expected[wFormat][0], expected[wFormat][1],
                                    expected[wFormat][2], expected[wFormat][2] + 14}),
                  (std::vector<int>{texts[0].x1, texts[1].x1, texts[0].y1, texts[1].y1}))
            << wFormat;
    }
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

// Tips of a 100 x 20 control at (200, 200).
TEST_F(CtrlBase, BackslashBSplitsATipWhichSitsCentredTenPixelsAboveAndTipIdsAreLookedUp)
{
    m_root.Write("ini/StringTable.ini", "4711=From the table\n");
    Probe* pStatic = AddCtrl<Probe>(7, {100, 100, 200, 120});
    m_pRecord->SetTipText("Hello\\bWorld!!");
    Open();
    EXPECT_EQ((std::vector<std::string>{"Hello", "World!!"}), pStatic->Tip());
    EXPECT_EQ((POINT{(100 - 42) / 2, -(12 * 2 + 10)}), pStatic->m_ptTipOffset);

    m_pRecord->SetTipOffsetX(5); // the y offset stays "not given", which is 0
    pStatic->SetTip("a\\b", 0xFF0000FF, nullptr);
    EXPECT_EQ((std::vector<std::string>{"a", ""}), pStatic->Tip());
    EXPECT_EQ((POINT{5, 0}), pStatic->m_ptTipOffset);
    // Only the first 1024 bytes are split, and a piece keeps at most 1023 of
    // them.
    pStatic->SetTip((std::string(1100, 'x') + "\\by").c_str(), 0, "");
    EXPECT_EQ(std::vector<std::string>{std::string(1023, 'x')}, pStatic->Tip());
    m_pRecord->SetTipId(4711);
    pStatic->LoadTip();
    EXPECT_EQ(std::vector<std::string>{"From the table"}, pStatic->Tip());
}

// The tip box lies at the control's top-left plus (35, -22); its text 12 and 10
// inside.
TEST_F(CtrlBase, TheTipAppearsAfterA300MsRestAndAtOnceOnALaterHover)
{
    AddCtrl<Probe>(7, {100, 100, 200, 120});
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
    EXPECT_EQ(-1, tipAt(t).x); // the rest starts with the first frame under the mouse
    EXPECT_EQ(-1, tipAt(t + 299).x);
    EXPECT_EQ((POINT{200 + 35 + 12, 200 - 22 + 10}), tipAt(t + 300));

    // Leaving keeps the rest's start: the next hover shows the tip at once.
    m_harness.MouseMove(400, 350);
    EXPECT_EQ(-1, tipAt(t + 400).x);
    m_harness.MouseMove(250, 210);
    EXPECT_NE(-1, tipAt(t + 1000).x);
}

TEST_F(CtrlBase, EachMessageReachesItsHandlerWithSignedCoordinates)
{
    auto* pCtrl = AddCtrl<HandlerCtrl>(9, {0, 0, 100, 100});
    Open();
    pCtrl->calls.clear();
    const LPARAM point = MAKELPARAM(-3, 40);
    pCtrl->SetCapture();
    const std::pair<UINT, WPARAM> messages[] = {{WM_KEYDOWN, 'A'},
                                                {WM_TIMER, 6},
                                                {WM_MOUSEMOVE, 0},
                                                {WM_MOUSEMOVE, 0},
                                                {WM_LBUTTONUP, 0},
                                                {WM_RBUTTONDOWN, 0},
                                                {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -120)},
                                                {WM_CHAR, 'x'},
                                                {WM_RBUTTONUP, 0}};
    std::vector<LRESULT> results;
    for (const auto& [message, wParam] : messages)
        results.push_back(pCtrl->SendMessage(message, wParam,
                                             message == WM_KEYDOWN ? MAKELPARAM(2, 0x1E) : point));

    // WM_CHAR is consumed before WindowProc.
    EXPECT_EQ((std::vector<LRESULT>{1, 0, 0, 0, 1, 1, 1, 1, 0}), results);
    const std::vector<std::string> expected = {"key 65 2 30", "timer 6",           "enter",
                                               "move -3 40",  "move -3 40",        "lup -3 40",
                                               "rdown -3 40", "wheel 4 -120 -3 40"};
    EXPECT_EQ(expected, pCtrl->calls);
    EXPECT_EQ(nullptr,
              m_pMgr->GetCapture()); // a release lets go wherever the press began
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

TEST_F(CtrlBase, TheTextLimitCutsOnlySetWindowTextAndInflateWindowGrowsTheRecordsRect)
{
    Probe* pStatic = AddCtrl<Probe>(7, {10, 20, 60, 50});
    Open();
    pStatic->SetTextLimit(5);
    pStatic->SetWindowText("hello world");
    EXPECT_STREQ("hello", pStatic->GetWindowText());
    pStatic->SetTextRaw("hello world");
    EXPECT_EQ(11, pStatic->GetTextLength());
    pStatic->SetTextLimit(3);
    pStatic->SetWindowText("ab\xD6\xD0"); // never inside a two-byte character
    EXPECT_STREQ("ab", pStatic->GetWindowText());

    // Each side grows; the record's x and y are read as signed.
    pStatic->InflateWindow(3);
    EXPECT_EQ((RECT{107, 117, 163, 153}), pStatic->GetWindowRect());
    m_pRecord->SetX(static_cast<WORD>(-10));
    pStatic->InflateWindow(-2);
    EXPECT_EQ((RECT{92, 122, 138, 148}), pStatic->GetWindowRect());
}

} // namespace

} // namespace ControlTest

// A caption that differs from another of its length in any one byte has another look digest:
// the digest reads every byte, in whole words and in the tail.
TEST(LookHash, EveryByteOfATextChangesTheDigest)
{
    auto digest = [](const std::string& text)
    {
        QzGui::CQzLookHash hash;
        hash.Add(text);
        return hash.Get();
    };
    for (size_t length = 1; length <= 19; ++length)
    {
        std::string text;
        for (size_t i = 0; i < length; ++i)
            text += static_cast<char>('A' + (i * 7) % 26);
        for (size_t i = 0; i < length; ++i)
        {
            std::string other = text;
            other[i] = static_cast<char>(other[i] ^ 0x21);
            EXPECT_NE(digest(text), digest(other)) << "length " << length << " byte " << i;
        }
    }
    EXPECT_NE(digest(""), digest(std::string(1, '\0')));
}
