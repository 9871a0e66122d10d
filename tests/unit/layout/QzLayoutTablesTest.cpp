// The tables that come with a layout: animation groups, cursors, click regions and extended
// records, and when the layout manager loads them.
#include "LayoutTestSupport.h"

#include "platform/system/kernel/QzKernelHost.h"
#include "support/RegionFile.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace QzLayoutTest
{

using QzGui::CQzGuiWndInfo;
using QzGui::WNDINFO_FLAG_REGION;
using QzTest::PutDword;

namespace
{

// One Rgn.dat entry whose region is the given rectangles.
void PutRegion(std::string& bytes, uint32_t first, uint32_t second, const std::vector<RECT>& rects)
{
    QzTest::PutRegionEntry(bytes, first, second, QzTest::RegionData(rects));
}

const char* const kTwoRecords = "[0-5]\nw=100\nh=100\n[5-6]\nw=10\nh=10\n";

} // namespace

using LayoutTablesTest = LayoutTest;

TEST_F(LayoutTablesTest, AniGroupsKeepAmountPiecesEvenWhenKeysAreMissing)
{
    WriteIni("AniGroup.ini", "[Pair]\nAmount=2\nSection_1=Button\nTop_1=12\nLeft_1=27\n"
                             "[Empty]\nAmount=0\n[Huge]\nAmount=2000000000\n");
    ASSERT_TRUE(Load(kTwoRecords));

    ASSERT_EQ(2, mgr.GetAniGroupCount("Pair"));
    const auto piece = [this](int index)
    {
        const QzGui::QzAniGroupPiece* pPiece = mgr.GetAniGroupPiece("Pair", index);
        return std::make_tuple(pPiece->section, pPiece->top, pPiece->left);
    };
    EXPECT_EQ(std::make_tuple(std::string("Button"), 12, 27), piece(0));
    EXPECT_EQ(std::make_tuple(std::string(), 0, 0), piece(1)); // the keys are missing
    EXPECT_EQ(nullptr, mgr.GetAniGroupPiece("Pair", 2));
    EXPECT_EQ(nullptr, mgr.GetAniGroupPiece("Pair", -1));
    ASSERT_NE(nullptr, mgr.GetAniGroup("Empty"));
    EXPECT_TRUE(mgr.GetAniGroup("Empty")->pieces.empty());
    EXPECT_EQ(0, mgr.GetAniGroupCount(nullptr));
    EXPECT_EQ(nullptr, mgr.GetAniGroup("Unknown"));
    // A hostile amount is cut and reported instead of reading two billion pieces.
    EXPECT_EQ(1024, mgr.GetAniGroupCount("Huge"));
    ASSERT_EQ(1, Log().Count("data error"));
    EXPECT_EQ("Amount=2000000000", Log().Find("data error")->Get("line"));
}

TEST_F(LayoutTablesTest, EveryGroupOfAFileOfManyGroupsIsRead)
{
    // 400 names of 12 bytes: 4,800 bytes of names, more than the first read takes.
    std::string groups;
    for (int i = 0; i < 400; ++i)
        groups += "[Group_" + std::to_string(1000 + i) + "]\nAmount=1\nSection_1=S" +
                  std::to_string(i) + "\n";
    WriteIni("AniGroup.ini", groups);
    ASSERT_TRUE(Load(kTwoRecords));

    for (int i : {0, 84, 85, 399})
    {
        const std::string name = "Group_" + std::to_string(1000 + i);
        ASSERT_EQ(1, mgr.GetAniGroupCount(name.c_str())) << name;
        EXPECT_EQ("S" + std::to_string(i), mgr.GetAniGroupPiece(name.c_str(), 0)->section);
    }
}

TEST_F(LayoutTablesTest, MissingOptionalFilesAreNoError)
{
    ASSERT_TRUE(Load(kTwoRecords));

    EXPECT_FALSE(mgr.LoadAniGroups());
    EXPECT_FALSE(mgr.LoadCursors());
    EXPECT_FALSE(mgr.LoadRegions());
    EXPECT_TRUE(Log().Empty());
    EXPECT_FALSE(mgr.LoadExtendedLayout());
    EXPECT_EQ("ini/GUI_EX.ini", Log().Find("open file failed")->Get("file_name"));
}

TEST_F(LayoutTablesTest, CursorBlocksLoadUntilTheFirstBrokenOne)
{
    WriteIni("Cursor.ini", "; cursors\n\nstray line\n[Normal]\ntype=0\ncur=ani/normal.cur\n"
                           "// next\n[Attack]\ntype=1\ncur=Cursor_Attack extra\n"
                           "[Normal]\ntype=2\ncur=Spark\n"
                           "[Broken]\ncur=x.cur\n[Later]\ntype=0\ncur=later.cur\n");
    ASSERT_TRUE(Load(kTwoRecords));

    const QzGui::QzCursorEntry* pNormal = mgr.GetCursorEntry("Normal");
    ASSERT_NE(nullptr, pNormal);
    EXPECT_EQ(2, pNormal->type);
    EXPECT_EQ("Spark", pNormal->cursor);
    EXPECT_EQ("Cursor_Attack", mgr.GetCursorEntry("Attack")->cursor);
    EXPECT_EQ(nullptr, mgr.GetCursorEntry("Broken"));
    EXPECT_EQ(nullptr, mgr.GetCursorEntry("Later"));
    EXPECT_EQ(nullptr, mgr.GetCursorEntry(nullptr));
    const QzPlatform::LogRecord* pError = Log().Find("data error when read type");
    ASSERT_NE(nullptr, pError);
    EXPECT_EQ("ini/Cursor.ini", pError->Get("file_name"));
    EXPECT_EQ("[Broken]", pError->Get("line"));
}

TEST_F(LayoutTablesTest, CursorHeaderWithoutBracketOrMissingCurFailsWithItsMessage)
{
    WriteIni("Cursor.ini", "[Normal]\ntype=0\ncur=a.cur\n[arrow\ntype=0\ncur=b.cur\n");
    ASSERT_TRUE(Load(kTwoRecords));
    EXPECT_NE(nullptr, mgr.GetCursorEntry("Normal"));
    ASSERT_EQ(1, Log().Count("data error"));
    EXPECT_EQ("[arrow", Log().Find("data error")->Get("line"));

    WriteIni("Cursor.ini", "[Hand]\ntype=1\n[Next]\n");
    EXPECT_FALSE(mgr.LoadCursors());
    EXPECT_EQ("[Hand]", Log().Find("data error when read cursor")->Get("line"));
    EXPECT_EQ(nullptr, mgr.GetCursorEntry("Hand"));
    EXPECT_NE(nullptr, mgr.GetCursorEntry("Normal"));

    mgr.ReloadCurrentLayout();
    EXPECT_EQ(nullptr, mgr.GetCursorEntry("Normal"));
}

TEST_F(LayoutTablesTest, RegionsFlagTheirRecordsAndBuildRegionsTheCallerOwns)
{
    std::string bytes;
    PutDword(bytes, 0x10002); // only the low 16 bits count: two entries
    PutRegion(bytes, 0x10005, 6, {{0, 0, 10, 5}, {0, 5, 4, 10}});
    PutRegion(bytes, 0, 5, {{1, 1, 2, 2}});
    PutRegion(bytes, 0, 9, {{1, 1, 2, 2}});
    data.Write("ini/Rgn.dat", bytes);
    ASSERT_TRUE(Load(kTwoRecords));

    EXPECT_NE(0u, Record(5, 6)->TestFlag(WNDINFO_FLAG_REGION));
    EXPECT_NE(0u, Record(0, 5)->TestFlag(WNDINFO_FLAG_REGION));
    HRGN hRgn = mgr.CreateWndRegion(5, 6);
    ASSERT_NE(nullptr, hRgn);
    EXPECT_EQ(2u, QzPlatform::GetRegionRects(hRgn).size());
    EXPECT_TRUE(PtInRegion(hRgn, 2, 7));
    EXPECT_FALSE(PtInRegion(hRgn, 6, 7));
    HRGN hSecond = mgr.CreateWndRegion(5, 6);
    EXPECT_NE(hRgn, hSecond);
    EXPECT_TRUE(DeleteObject(hRgn));
    EXPECT_TRUE(DeleteObject(hSecond));
    EXPECT_EQ(nullptr, mgr.CreateWndRegion(0, 9));
    EXPECT_EQ(nullptr, mgr.CreateWndRegion(6, 5));
    EXPECT_TRUE(Log().Empty());
}

TEST_F(LayoutTablesTest, CutShortRegionFileFailsAndKeepsEarlierEntries)
{
    std::string bytes;
    PutDword(bytes, 2);
    PutRegion(bytes, 0, 5, {{0, 0, 10, 10}});
    PutRegion(bytes, 5, 6, {{0, 0, 10, 10}});
    bytes.resize(bytes.size() - 3);
    data.Write("ini/Rgn.dat", bytes);
    ASSERT_TRUE(Load(kTwoRecords));

    HRGN hRgn = mgr.CreateWndRegion(0, 5);
    EXPECT_NE(nullptr, hRgn);
    DeleteObject(hRgn);
    EXPECT_EQ(nullptr, mgr.CreateWndRegion(5, 6));
    EXPECT_EQ(0u, Record(5, 6)->TestFlag(WNDINFO_FLAG_REGION));
    const QzPlatform::LogRecord* pError = Log().Find("open file failed");
    ASSERT_NE(nullptr, pError);
    EXPECT_EQ("ini/Rgn.dat", pError->Get("file_name"));
}

TEST_F(LayoutTablesTest, RegionSizeBeyondTheFileOrCutCountFailsWithoutHugeReads)
{
    std::string bytes;
    PutDword(bytes, 1);
    PutDword(bytes, 0);
    PutDword(bytes, 5);
    PutDword(bytes, 0xFFFFFFF0);
    PutDword(bytes, 0);
    bytes += "tiny";
    data.Write("ini/Rgn.dat", bytes);
    ASSERT_TRUE(Load(kTwoRecords));
    EXPECT_EQ(nullptr, mgr.CreateWndRegion(0, 5));
    EXPECT_EQ(1, Log().Count("open file failed"));

    data.Write("ini/Rgn.dat", std::string("\x01\x00", 2));
    EXPECT_FALSE(mgr.LoadRegions());
    EXPECT_EQ(2, Log().Count("open file failed"));
}

TEST_F(LayoutTablesTest, ExtendedRecordsJoinTheRecordTableInKeyOrder)
{
    WriteIni("GUI_EX.ini", "[0-40]\nw=200\nh=100\ntype=1\n[40-2]\nw=10\nh=10\n"
                           "[0-30]\nw=50\nh=50\n[0-5]\nw=7\nh=7\nTitle=Ex\n"
                           "[0-41]\nw=1\n[5-6]\nx=1\n");
    ASSERT_TRUE(Load(std::string(kTwoRecords) + "[0-41]\nw=3\nh=3\n"));

    CQzGuiInfoMgr::ExtRecordTable records{{1, nullptr}};
    mgr.CollectExtendedRecords(records, 0);
    ASSERT_EQ(2u, records.size());
    EXPECT_EQ(30, records.begin()->second->GetCtrlId());
    EXPECT_EQ(Record(0, 40), records.at(CQzGuiInfoMgr::MakeKey(0, 40)));
    mgr.CollectExtendedRecords(records, 40);
    ASSERT_EQ(1u, records.size());
    // A layout record named again is refilled in place and is no extended record.
    EXPECT_EQ(7u, Record(0, 5)->GetWidth());
    EXPECT_STREQ("Ex", Record(0, 5)->GetTitle());
    // Invalid sections leave no record under their keys, even one the layout file gave.
    EXPECT_EQ(nullptr, Record(0, 41));
    EXPECT_EQ(nullptr, Record(5, 6));
    ASSERT_EQ(2, Log().Count("invalid data"));
    EXPECT_EQ("ini/GUI_EX.ini", Log().Find("invalid data")->Get("file_name"));
    EXPECT_EQ("[5-6]", Log().Find("invalid data")->Get("line"));
    EXPECT_EQ(0, Log().Count("data error"));
}

TEST_F(LayoutTablesTest, ReloadRebuildsTheExtendedRecordsAndFreesTheUnheldOld)
{
    WriteIni("GUI_EX.ini", "[0-40]\nw=200\nh=100\n");
    ASSERT_TRUE(Load(kTwoRecords));
    const size_t nLive = CQzGuiWndInfo::GetLiveCount();
    const auto* pOld = static_cast<const CQzGuiWndInfo*>(Record(0, 40));
    pOld->Hold();

    mgr.ReloadCurrentLayout();

    CQzGuiInfoMgr::ExtRecordTable records;
    mgr.CollectExtendedRecords(records, 0);
    ASSERT_EQ(1u, records.size());
    EXPECT_NE(pOld, records.begin()->second);
    // Only the held record outlives the reload, and only until it is let go.
    EXPECT_EQ(200u, pOld->GetWidth());
    EXPECT_EQ(nLive + 1, CQzGuiWndInfo::GetLiveCount());
    pOld->Drop();
    EXPECT_EQ(nLive, CQzGuiWndInfo::GetLiveCount());
}

} // namespace QzLayoutTest
