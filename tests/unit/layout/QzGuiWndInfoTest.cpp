#include "layout/QzGuiWndInfo.h"

#include <gtest/gtest.h>

using QzGui::CQzGuiWndInfo;

TEST(QzGuiWndInfo, FreshRecordAnswersNotGivenDefaults)
{
    CQzGuiWndInfo info;
    EXPECT_EQ(65535u, info.GetWidth());
    EXPECT_EQ(65535u, info.GetHeight());
    EXPECT_EQ(1u, info.GetCtrlType());
    EXPECT_EQ(65535u, info.GetGroup());
    EXPECT_EQ(65535, info.GetLinkIndex());
    EXPECT_EQ(65535, info.GetFontSize());
    EXPECT_EQ(65535u, info.GetFontColor());
    EXPECT_EQ(65535, info.GetTipOffset()->x);
    EXPECT_EQ(65535, info.GetTipOffset()->y);
    EXPECT_EQ(0u, info.TestFlag(0xFFFFFFFF));
    EXPECT_STREQ("", info.GetTitle());
    EXPECT_STREQ("", info.GetAniSection());
}

TEST(QzGuiWndInfo, ReservedAndRegionAreAlwaysEmptyEvenWithRegionFlag)
{
    CQzGuiWndInfo info;
    info.AddFlags(QzGui::WNDINFO_FLAG_REGION);
    EXPECT_EQ(0, info.GetReserved1());
    EXPECT_EQ(nullptr, info.GetRegion());
    EXPECT_NE(0u, info.TestFlag(QzGui::WNDINFO_FLAG_REGION));
}

TEST(QzGuiWndInfo, ExtraValueAnswersFirstPairAndNullForMissingOrNullKey)
{
    CQzGuiWndInfo info;
    info.AddExtra("ItemHeight", "20");
    info.AddExtra("ItemHeight", "30");
    EXPECT_STREQ("20", info.GetExtraValue("ItemHeight"));
    EXPECT_EQ(nullptr, info.GetExtraValue(nullptr));
    EXPECT_EQ(nullptr, info.GetExtraValue("Title"));
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
    EXPECT_STREQ("", info.GetAniSection());
    EXPECT_EQ(0u, info.TestFlag(QzGui::WNDINFO_FLAG_ANISECTION));
    EXPECT_EQ(65535u, info.GetWidth());
    EXPECT_EQ(1u, info.GetCtrlType());
    EXPECT_EQ(65535, info.GetTipOffset()->x);
    EXPECT_EQ(7, info.GetTextOffset()->x);
    EXPECT_EQ(1, info.IsTestRgn());
    EXPECT_EQ(nullptr, info.GetExtraValue("SliderBtnLen"));
}
