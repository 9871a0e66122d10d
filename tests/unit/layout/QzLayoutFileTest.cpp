// Reading layout files into records: the key table, sections, invalid sections, reloads and
// the variant files.
#include "LayoutTestSupport.h"

#include "layout/QzGuiWndInfo.h"

#include <string>
#include <vector>

namespace QzLayoutTest
{

using QzGui::CQzGuiWndInfo;
using QzGui::WNDINFO_FLAG_ANISECTION;
using QzGui::WNDINFO_FLAG_CURSOR;
using QzGui::WNDINFO_FLAG_FONTCOLOR;
using QzGui::WNDINFO_FLAG_FONTSIZE;
using QzGui::WNDINFO_FLAG_LINK;

using LayoutFileTest = LayoutTest;

TEST_F(LayoutFileTest, SectionFillsRecordUnderParentLowCtrlHighKey)
{
    ASSERT_TRUE(Load("[3-7]\nx=10\ny=20\nw=100\nh=30\n"));

    IQzGuiWndInfo* pInfo = Record(3, 7);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((Place{10, 20, 100, 30}), PlaceOf(pInfo));
    EXPECT_EQ(3, pInfo->GetParentId());
    EXPECT_EQ(7, pInfo->GetCtrlId());
    mgr.SetTipText(3ull | (7ull << 32), "tip");
    EXPECT_STREQ("tip", pInfo->GetTipText());
    EXPECT_EQ(nullptr, Record(7, 3));
    EXPECT_TRUE(Log().Empty());
}

TEST_F(LayoutFileTest, KeyTableSetsFieldsAndFlags)
{
    ASSERT_TRUE(Load("[1-2]\nw=1\nh=1\n"
                     "OpenBind=4,0,9\nCloseBind=0,12\n"
                     "FontColor=ff00ff00\nFontSize=14\nTestRgn=0\n"
                     "Title= Hello\ntitle=Hello\nx = 5\n"
                     "AniSection=Btn\nCursor=Hand\nGroup=70000\nCtrlType=3\ntype=5\n"
                     "Helpid=8\nTipID=9\nTipOffsetX=-3\nTextOffsetY=4\nStyle=1\nFlyDir=2\n"
                     "BackShowMode=6\nMouseOverEffect=Glow\nItemHeight=20\n"));

    IQzGuiWndInfo* pInfo = Record(1, 2);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((std::vector<int>{4, 9}), *pInfo->GetOpenBindList());
    EXPECT_EQ((std::vector<int>{12}), *pInfo->GetCloseBindList());
    EXPECT_EQ(0xFF00FF00u, pInfo->GetFontColor());
    EXPECT_EQ(14, pInfo->GetFontSize());
    EXPECT_EQ(0, pInfo->IsTestRgn());
    EXPECT_STREQ(" Hello", pInfo->GetTitle());
    EXPECT_STREQ("Hello", pInfo->GetExtraValue("title"));
    EXPECT_STREQ(" 5", pInfo->GetExtraValue("x "));
    EXPECT_EQ(0u, pInfo->GetX());
    EXPECT_STREQ("Btn", pInfo->GetAniSection());
    EXPECT_STREQ("Hand", pInfo->GetCursor());
    EXPECT_EQ(70000u & 0xFFFF, pInfo->GetGroup());
    EXPECT_EQ(3u, pInfo->GetCtrlType());
    EXPECT_EQ(5, static_cast<QzGui::CQzGuiWndInfo*>(pInfo)->GetType());
    EXPECT_EQ(8, pInfo->GetHelpId());
    EXPECT_EQ(9, pInfo->GetTipId());
    EXPECT_EQ(-3, pInfo->GetTipOffset()->x);
    EXPECT_EQ(4, pInfo->GetTextOffset()->y);
    EXPECT_EQ(1, pInfo->GetStyle());
    EXPECT_EQ(2, pInfo->GetFlyDir());
    EXPECT_EQ(6, pInfo->GetBackShowMode());
    EXPECT_STREQ("Glow", pInfo->GetMouseOverEffect());
    EXPECT_STREQ("20", pInfo->GetExtraValue("ItemHeight"));
    EXPECT_EQ(WNDINFO_FLAG_FONTCOLOR | WNDINFO_FLAG_FONTSIZE | WNDINFO_FLAG_ANISECTION |
                  WNDINFO_FLAG_CURSOR,
              pInfo->TestFlag(0xFFFFFFFF));
}

TEST_F(LayoutFileTest, LinesWithoutKeyOrValueCommentsAndStrayLinesChangeNothing)
{
    ASSERT_TRUE(Load("w=7\n; comment\n[abc]\nw=1\nh=1\n"
                     "[1-1]\n\n;w=9\n// h=9\nTitle=\nnoequals\n=5\nw=50\r\nh=60\r\n"
                     "Title=A=B\r\n"));

    IQzGuiWndInfo* pInfo = Record(1, 1);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((Place{0, 0, 50, 60}), PlaceOf(pInfo));
    EXPECT_STREQ("A=B", pInfo->GetTitle());
    EXPECT_EQ(nullptr, pInfo->GetExtraValue("noequals"));
    EXPECT_TRUE(Log().Empty());
}

TEST_F(LayoutFileTest, SectionWithoutHeightIsDroppedWithDataError)
{
    ASSERT_TRUE(Load("[0-5]\nx=1\nw=100\n[0-6]\nw=10\nh=10\n[0-8]\nh=4\nTitle=last"));

    EXPECT_EQ(nullptr, Record(0, 5));
    EXPECT_NE(nullptr, Record(0, 6));
    EXPECT_EQ(nullptr, Record(0, 8));
    ASSERT_EQ(2, Log().Count("data error"));
    EXPECT_EQ("ini\\Layout.ini", Log().Records()[0].Get("file_name"));
    EXPECT_EQ("[0-6]", Log().Records()[0].Get("line"));
    EXPECT_EQ("Title=last", Log().Records()[1].Get("line"));
}

TEST_F(LayoutFileTest, SectionNamedTwiceRefillsOneRecordFromDefaults)
{
    ASSERT_TRUE(Load("[2-3]\nw=10\nh=10\nTitle=First\nAniSection=Btn\nTestRgn=1\nx=4\n"
                     "[2-4]\nw=1\nh=1\n"
                     "[2-3]\nw=20\nh=30\nTestRgn=0\n"));

    IQzGuiWndInfo* pInfo = Record(2, 3);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_STREQ("First", pInfo->GetTitle());
    EXPECT_STREQ("", pInfo->GetAniSection());
    EXPECT_EQ(0u, pInfo->TestFlag(WNDINFO_FLAG_ANISECTION));
    EXPECT_EQ(1, pInfo->IsTestRgn());
    EXPECT_EQ((Place{0, 0, 20, 30}), PlaceOf(pInfo));
    EXPECT_EQ(3, pInfo->GetCtrlId());
}

TEST_F(LayoutFileTest, SectionNamedTwiceAndInvalidTheSecondTimeLeavesNoRecord)
{
    ASSERT_TRUE(Load("[2-3]\nw=10\nh=10\n[2-3]\nw=20\n"));
    EXPECT_EQ(nullptr, Record(2, 3));
}

TEST_F(LayoutFileTest, MissingFileFailsAndKeepsEverything)
{
    ASSERT_TRUE(Load("[1-1]\nw=1\nh=1\n"));
    IQzGuiWndInfo* pBefore = Record(1, 1);

    EXPECT_FALSE(mgr.LoadLayout("Missing.ini"));
    data.MakeFolder("ini/Folder.ini");
    EXPECT_FALSE(mgr.LoadLayout("Folder.ini"));

    EXPECT_EQ(pBefore, Record(1, 1));
    EXPECT_STREQ("Layout.ini", mgr.GetLayoutFileName());
    ASSERT_EQ(2, Log().Count("open file failed"));
    EXPECT_EQ("ini\\Missing.ini", Log().Find("open file failed")->Get("file_name"));
}

TEST_F(LayoutFileTest, ReloadKeepsOldRecordsAliveForTheirHoldersOnlyAndFreesTheRest)
{
    ASSERT_TRUE(Load("[1-1]\nw=10\nh=10\nTitle=Old\n[1-2]\nw=5\nh=5\n"));
    const auto* pOld = static_cast<const CQzGuiWndInfo*>(Record(1, 1));
    ASSERT_NE(nullptr, pOld);
    pOld->Hold();
    const size_t nLive = CQzGuiWndInfo::GetLiveCount();
    EXPECT_TRUE(mgr.IsCurrentRecord(pOld));

    WriteIni("Layout.ini", "[1-1]\nw=20\nh=20\nTitle=New\n");
    mgr.ReloadCurrentLayout();

    ASSERT_NE(nullptr, Record(1, 1));
    EXPECT_TRUE(mgr.IsCurrentRecord(Record(1, 1)));
    EXPECT_FALSE(mgr.IsCurrentRecord(pOld));
    EXPECT_FALSE(mgr.IsCurrentRecord(nullptr));
    EXPECT_STREQ("New", Record(1, 1)->GetTitle());
    EXPECT_EQ(nullptr, Record(1, 2));
    // The holder still reads its old record (the sanitizer build checks the reads); the
    // record of 1-2, held by nobody, is gone.
    EXPECT_STREQ("Old", pOld->GetTitle());
    EXPECT_EQ(nLive - 1 + 1, CQzGuiWndInfo::GetLiveCount());
    pOld->Drop();
    EXPECT_EQ(nLive - 1, CQzGuiWndInfo::GetLiveCount());
}

TEST_F(LayoutFileTest, InsertRecordReplacesAndKeepsTheOldOneAliveForItsHolder)
{
    ASSERT_TRUE(Load("[4-5]\nw=10\nh=10\n"));
    const auto* pOld = static_cast<const CQzGuiWndInfo*>(Record(4, 5));
    pOld->Hold();

    auto* pRecord = new QzGui::CQzGuiWndInfo;
    pRecord->SetParentId(4);
    pRecord->SetCtrlId(5);
    pRecord->SetWidth(77);
    mgr.InsertRecord(pRecord);
    mgr.InsertRecord(nullptr);

    EXPECT_EQ(pRecord, Record(4, 5));
    EXPECT_EQ(10u, pOld->GetWidth());
    pOld->Drop();
    mgr.SetInfoString(CQzGuiInfoMgr::MakeKey(4, 5), "info");
    EXPECT_STREQ("info", pRecord->GetTipText());
    mgr.SetInfoString(CQzGuiInfoMgr::MakeKey(9, 9), "nobody");
}

TEST_F(LayoutFileTest, LongKeysAndValuesAreCutWithoutSplittingTwoByteCharacters)
{
    const std::string longKey(300, 'k');
    const std::string longValue(300, 'v');
    // "\xB0\xA1" is one two-byte character of code page 936, lying across the limit.
    const std::string dbcsKey = std::string(253, 'a') + "\xB0\xA1" + "zz";
    const std::string dbcsValue = std::string(254, 'b') + "\xB0\xA1" + "zz";
    ASSERT_TRUE(Load("[1-1]\nw=1\nh=1\n" + longKey + "=1\nTitle=" + longValue + "\n" + dbcsKey +
                     "=2\nTipText=" + dbcsValue + "\n"));

    IQzGuiWndInfo* pInfo = Record(1, 1);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_STREQ("1", pInfo->GetExtraValue(std::string(254, 'k').c_str()));
    EXPECT_EQ(std::string(255, 'v'), pInfo->GetTitle());
    EXPECT_STREQ("2", pInfo->GetExtraValue(std::string(253, 'a').c_str()));
    EXPECT_EQ(std::string(254, 'b'), pInfo->GetTipText());
}

TEST_F(LayoutFileTest, LinkKeysAppendToTheLinkListOnEveryLoad)
{
    ASSERT_TRUE(Load("[1-1]\nw=1\nh=1\nLink=first\n[1-2]\nw=1\nh=1\nLink=second\n"));
    EXPECT_EQ(1, Record(1, 2)->GetLinkIndex());
    EXPECT_NE(0u, Record(1, 2)->TestFlag(WNDINFO_FLAG_LINK));
    const char* pszFirst = mgr.GetHelpLink(0);

    mgr.ReloadCurrentLayout();

    EXPECT_EQ(3, Record(1, 2)->GetLinkIndex());
    EXPECT_STREQ("second", mgr.GetHelpLink(3));
    EXPECT_STREQ("first", pszFirst);
    EXPECT_EQ(nullptr, mgr.GetHelpLink(-1));
    EXPECT_EQ(nullptr, mgr.GetHelpLink(4));
    ASSERT_EQ(2u, Log().LogMsgs().size());
    EXPECT_EQ(0u,
              Log().LogMsgs()[0].find("ASSERT(nIndex >= 0 && nIndex < m_setHelpLink.size()) in "));
    EXPECT_NE(std::string::npos, Log().LogMsgs()[0].find(" line of QzGuiInfoMgr"));
}

TEST_F(LayoutFileTest, VariantRecordsAnswerFirstAndAreReplacedByTheNextLogicFile)
{
    ASSERT_TRUE(Load("[3-7]\nw=10\nh=10\nTitle=Plain\n"));
    WriteIni("Logic.ini", "[3-7-2]\nw=20\nh=20\nTitle=Two\n[3-7]\nw=1\nh=1\n"
                          "[3-7-3]\nw=5\n[3-8-2]\nw=1\nh=1\n[3-8-2]\nw=2\nh=2\n");
    ASSERT_TRUE(mgr.LoadLogicLayout("Logic.ini"));

    IQzGuiWndInfo* pTwo = mgr.GetWndInfo(3, 7, 2, 2);
    ASSERT_NE(nullptr, pTwo);
    EXPECT_STREQ("Two", pTwo->GetTitle());
    EXPECT_EQ(2, pTwo->GetVariant());
    EXPECT_STREQ("Plain", mgr.GetWndInfo(3, 7, 2, 3)->GetTitle());
    EXPECT_EQ(2u, mgr.GetWndInfo(3, 8, 2, 2)->GetWidth());
    EXPECT_EQ(1, Log().Count("data error"));

    // A replaced variant record lives on only while a window holds it.
    const size_t nLive = CQzGuiWndInfo::GetLiveCount();
    static_cast<const CQzGuiWndInfo*>(pTwo)->Hold();
    EXPECT_TRUE(mgr.IsCurrentRecord(pTwo));
    WriteIni("Logic2.ini", "[3-7-4]\nw=1\nh=1\n");
    ASSERT_TRUE(mgr.LoadLogicLayout("Logic2.ini"));
    EXPECT_FALSE(mgr.IsCurrentRecord(pTwo));
    EXPECT_STREQ("Plain", mgr.GetWndInfo(3, 7, 2, 2)->GetTitle());
    EXPECT_STREQ("Two", pTwo->GetTitle());
    EXPECT_EQ(nLive, CQzGuiWndInfo::GetLiveCount()); // 3-8-2 freed, 3-7-4 came
    static_cast<const CQzGuiWndInfo*>(pTwo)->Drop();
    EXPECT_EQ(nLive - 1, CQzGuiWndInfo::GetLiveCount());
    EXPECT_FALSE(mgr.LoadLogicLayout("Missing.ini"));
    EXPECT_EQ(1, Log().Count("open file failed"));
}

TEST_F(LayoutFileTest, KeysWidenTheParentWithItsSignAndVariantKeysWrap)
{
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, CQzGuiInfoMgr::MakeKey(0xFFFFFFFF, 7));
    const uint64_t key = CQzGuiInfoMgr::MakeKey(3, 7);
    EXPECT_EQ(key * 100 + 2, CQzGuiInfoMgr::MakeVariantKey(key, 2));
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull * 100 + 1,
              CQzGuiInfoMgr::MakeVariantKey(0xFFFFFFFFFFFFFFFFull, 1));
    EXPECT_EQ(key * 100 - 1, CQzGuiInfoMgr::MakeVariantKey(key, -1));
}

TEST_F(LayoutFileTest, WrittenSectionReplacesTheFileSectionButNotTheRecord)
{
    ASSERT_TRUE(Load("[3-9]\nw=1\nh=1\nTitle=Old\nStyle=4\n"));
    ASSERT_TRUE(mgr.WriteWndSection("3-9", 10, 20, 30, 40, 5, "Caption", "Btn", 77));
    EXPECT_STREQ("Old", Record(3, 9)->GetTitle());

    mgr.ReloadCurrentLayout();

    IQzGuiWndInfo* pInfo = Record(3, 9);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ((Place{10, 20, 30, 40}), PlaceOf(pInfo));
    EXPECT_STREQ("Caption", pInfo->GetTitle());
    EXPECT_EQ(12, pInfo->GetFontSize());
    EXPECT_STREQ("Btn", pInfo->GetAniSection());
    EXPECT_STREQ("77", pInfo->GetExtraValue("CaptionID"));
    EXPECT_EQ(0, pInfo->GetStyle());

    ASSERT_TRUE(mgr.WriteWndSection("3-9", 1, 2, 3, 4, 2));
    const std::string text = data.Read("ini/Layout.ini");
    EXPECT_EQ(std::string::npos, text.find("Title"));
    EXPECT_EQ(std::string::npos, text.find("FontSize"));
    EXPECT_NE(std::string::npos, text.find("type=2"));
}

TEST_F(LayoutFileTest, EnsureIniFileCreatesTheLayoutFileOnce)
{
    EXPECT_FALSE(mgr.EnsureIniFile());
    ASSERT_TRUE(Load("[1-1]\nw=1\nh=1\n"));
    std::filesystem::remove(data.Path() / "ini/Layout.ini");

    EXPECT_TRUE(mgr.EnsureIniFile());
    EXPECT_TRUE(data.Exists("ini/Layout.ini"));
    std::filesystem::remove(data.Path() / "ini/Layout.ini");
    EXPECT_TRUE(mgr.EnsureIniFile());
    EXPECT_FALSE(data.Exists("ini/Layout.ini"));
}

TEST_F(LayoutFileTest, ClearAllEmptiesEveryTable)
{
    WriteIni("AniGroup.ini", "[G]\nAmount=1\n");
    WriteIni("Cursor.ini", "[Normal]\ntype=0\ncur=a.cur\n");
    ASSERT_TRUE(Load("[1-1]\nw=1\nh=1\nLink=x\n"));
    WriteIni("Logic.ini", "[1-1-1]\nw=1\nh=1\n");
    ASSERT_TRUE(mgr.LoadLogicLayout("Logic.ini"));

    mgr.ClearAll();

    EXPECT_EQ(nullptr, mgr.GetWndInfo(1, 1, 2, 1));
    EXPECT_EQ(nullptr, mgr.GetAniGroup("G"));
    EXPECT_EQ(nullptr, mgr.GetCursorEntry("Normal"));
    EXPECT_EQ(nullptr, mgr.GetHelpLink(0));
}

} // namespace QzLayoutTest
