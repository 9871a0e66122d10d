// The record itself: a refill from the defaults (65535 marks what no layout key gave) keeps what
// the layout reader relies on keeping.
#include "LayoutTestSupport.h"

#include "layout/QzGuiWndInfo.h"

namespace QzLayoutTest
{

using QzGui::CQzGuiWndInfo;

TEST(QzGuiWndInfo, ExtraValueAnswersFirstPairAndNullForMissingOrNullKey)
{
    CQzGuiWndInfo info;
    info.AddExtra("ItemHeight", "20");
    info.AddExtra("ItemHeight", "30");
    EXPECT_STREQ("20", info.GetExtraValue("ItemHeight"));
    EXPECT_EQ(nullptr, info.GetExtraValue(nullptr));
    EXPECT_EQ(nullptr, info.GetExtraValue("itemheight"));
}

TEST(QzGuiWndInfo, ResetKeepsEarlierTitleButDropsAniSectionAndFlags)
{
    CQzGuiWndInfo info;
    info.SetTitle(" Hello");
    info.SetAniSection("Btn");
    info.AddFlags(QzGui::WNDINFO_FLAG_ANISECTION | QzGui::WNDINFO_FLAG_CURSOR);
    info.SetCursor("Hand");
    info.SetWidth(40);
    info.SetCtrlType(3);
    info.SetTipOffsetX(4);
    info.SetTextOffsetX(7);
    info.SetTestRgn(1);
    info.AddExtra("SliderBtnLen", "10");

    info.ResetToDefaults();
    info.ResetToDefaults();

    EXPECT_STREQ(" Hello", info.GetTitle());
    EXPECT_STREQ("Hand", info.GetCursor());
    EXPECT_EQ(7, info.GetTextOffset()->x);
    EXPECT_EQ(1, info.IsTestRgn());
    EXPECT_STREQ("", info.GetAniSection());
    EXPECT_EQ(0u, info.TestFlag(0xFFFFFFFF));
    EXPECT_EQ((Place{0, 0, 65535, 65535}), PlaceOf(&info));
    EXPECT_EQ(1u, info.GetCtrlType());
    EXPECT_EQ((POINT{65535, 65535}), *info.GetTipOffset());
    EXPECT_EQ(nullptr, info.GetExtraValue("SliderBtnLen"));
    // The region comes from the region table, never from the record, flag or not.
    info.AddFlags(QzGui::WNDINFO_FLAG_REGION);
    EXPECT_EQ(nullptr, info.GetRegion());
}

} // namespace QzLayoutTest
