// The library's narrow text is GBK: the ANSI code page is 936 in the hosted system by default and
// on a Windows host set up for the game (Wine with LC_ALL=zh_CN.GBK in the Windows tests).
#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePage.h"

#include <gtest/gtest.h>

TEST(AnsiCodePage, IsGbkAndNarrowTextConvertsThroughIt)
{
    EXPECT_EQ(936u, GetACP());
    const std::string gbk = "a\xD6\xD0\xCE\xC4"; // "a中文"
    EXPECT_EQ(L"a\x4E2D\x6587", QzPlatform::AnsiToWide(gbk));
    EXPECT_EQ("a\xE4\xB8\xAD\xE6\x96\x87", QzPlatform::AnsiToUtf8(gbk));
    EXPECT_EQ(gbk, QzPlatform::Utf8ToAnsi("a\xE4\xB8\xAD\xE6\x96\x87"));
    EXPECT_TRUE(IsDBCSLeadByte(0xD6));
}
