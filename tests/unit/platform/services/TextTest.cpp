#include "platform/services/QzString.h"
#include "platform/services/QzText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>

using namespace QzPlatform;

namespace
{

// A buffer with guard bytes after the part handed out, to catch writes past the size.
struct GuardedBuffer
{
    explicit GuardedBuffer(size_t size) : m_nSize(size)
    {
        std::memset(m_bytes, '@', sizeof(m_bytes));
    }
    char* Data() { return m_bytes; }
    bool GuardIntact() const
    {
        return std::all_of(m_bytes + m_nSize, m_bytes + sizeof(m_bytes),
                           [](char c) { return c == '@'; });
    }
    size_t m_nSize;
    char m_bytes[64];
};

} // namespace

TEST(TextConversionTest, DecimalAndRadixParsing)
{
    EXPECT_EQ(TextToInt(nullptr), 0);
    EXPECT_EQ(TextToInt("  -12abc"), -12);
    EXPECT_EQ(TextToInt("+7"), 7);
    EXPECT_EQ(TextToInt("x1"), 0);
    EXPECT_EQ(TextToInt("99999999999"), INT_MAX);
    EXPECT_EQ(TextToInt("-99999999999"), INT_MIN);

    EXPECT_EQ(TextToUnsigned("ff00ff00", 16), 0xff00ff00ul);
    EXPECT_EQ(TextToUnsigned("0xFF", 16), 0xfful);
    EXPECT_EQ(TextToUnsigned("FFFFFFFFF", 16), 0xfffffffful);
    EXPECT_EQ(TextToUnsigned(" 12z", 10), 12ul);
    EXPECT_EQ(TextToUnsigned("-1", 10), 0xfffffffful);
    EXPECT_EQ(TextToUnsigned("017", 0), 15ul);
    EXPECT_EQ(TextToUnsigned("0x1g", 16), 1ul);
    EXPECT_EQ(TextToUnsigned(nullptr, 16), 0ul);
    EXPECT_EQ(TextToUnsigned("11", 1), 0ul);
    EXPECT_EQ(TextToUnsigned("11", 37), 0ul);
}

TEST(TextConversionTest, IntegerToTextFitsOrFailsEmpty)
{
    char buffer[32];
    EXPECT_TRUE(IntToText(255, buffer, sizeof(buffer), 16));
    EXPECT_STREQ(buffer, "ff");
    EXPECT_TRUE(IntToText(-5, buffer, sizeof(buffer), 10));
    EXPECT_STREQ(buffer, "-5");
    EXPECT_TRUE(IntToText(-1, buffer, sizeof(buffer), 16));
    EXPECT_STREQ(buffer, "ffffffff");
    EXPECT_TRUE(IntToText(INT_MIN, buffer, sizeof(buffer), 10));
    EXPECT_STREQ(buffer, "-2147483648");
    EXPECT_TRUE(IntToText(0, buffer, sizeof(buffer), 2));
    EXPECT_STREQ(buffer, "0");
    EXPECT_FALSE(IntToText(5, buffer, sizeof(buffer), 1));
    EXPECT_STREQ(buffer, "");

    GuardedBuffer small(5);
    EXPECT_TRUE(IntToText(1234, small.Data(), 5, 10));
    EXPECT_STREQ(small.Data(), "1234");
    EXPECT_FALSE(IntToText(12345, small.Data(), 5, 10));
    EXPECT_STREQ(small.Data(), "");
    EXPECT_TRUE(small.GuardIntact());
}

TEST(BoundedTextTest, FormatCutsAtTheSizeAndAlwaysTerminates)
{
    GuardedBuffer buffer(8);
    EXPECT_EQ(FormatText(buffer.Data(), 8, "#%02d|%02d", 1, 2), 6);
    EXPECT_STREQ(buffer.Data(), "#01|02");
    EXPECT_EQ(FormatText(buffer.Data(), 8, "%s", "1234567"), 7);
    EXPECT_STREQ(buffer.Data(), "1234567");
    EXPECT_EQ(FormatText(buffer.Data(), 8, "%s", "12345678"), -1);
    EXPECT_STREQ(buffer.Data(), "1234567");
    EXPECT_TRUE(buffer.GuardIntact());

    GuardedBuffer none(0);
    EXPECT_EQ(FormatText(none.Data(), 0, "%d", 1), -1);
    EXPECT_TRUE(none.GuardIntact());
    EXPECT_EQ(FormatText(nullptr, 8, "%d", 1), -1);
}

TEST(BoundedTextTest, CopyStopsAtCountTerminatorOrSize)
{
    GuardedBuffer buffer(4);
    EXPECT_TRUE(CopyText(buffer.Data(), 4, "abc"));
    EXPECT_STREQ(buffer.Data(), "abc");
    EXPECT_FALSE(CopyText(buffer.Data(), 4, "abcdef"));
    EXPECT_STREQ(buffer.Data(), "abc");
    EXPECT_TRUE(CopyText(buffer.Data(), 4, "abcdef", 2));
    EXPECT_STREQ(buffer.Data(), "ab");
    EXPECT_TRUE(CopyText(buffer.Data(), 4, nullptr));
    EXPECT_STREQ(buffer.Data(), "");
    EXPECT_TRUE(buffer.GuardIntact());
    EXPECT_FALSE(CopyText(buffer.Data(), 0, "x"));
    // The count may exceed the source: the copy stops at the terminator.
    const char shortText[2] = {'z', 0};
    EXPECT_TRUE(CopyText(buffer.Data(), 4, shortText, 100));
    EXPECT_STREQ(buffer.Data(), "z");
}

TEST(BoundedTextTest, TrimRemovesBlanksTabsAndLineEnds)
{
    char text[] = "\t a b \r\n";
    TrimText(text);
    EXPECT_STREQ(text, "a b");
    char blanks[] = " \t\r\n";
    TrimText(blanks);
    EXPECT_STREQ(blanks, "");
    TrimText(static_cast<char*>(nullptr));

    std::string line = "  name 1 2\r\n";
    TrimText(line);
    EXPECT_EQ(line, "name 1 2");
    std::string empty = "\n";
    TrimText(empty);
    EXPECT_EQ(empty, "");
}

TEST(CompareTest, IgnoresAsciiCaseButNotSecondBytes)
{
    EXPECT_EQ(CompareNoCase("Ani/Control.ANI", "ani/control.ani"), 0);
    EXPECT_LT(CompareNoCase("abc", "abd"), 0);
    EXPECT_GT(CompareNoCase("abc", "ab"), 0);
    EXPECT_EQ(CompareNoCase(nullptr, ""), 0);
    EXPECT_LT(CompareNoCase(nullptr, "a"), 0);
    // GBK: the second byte of 0x81 0x41 is not a letter and must not fold to 0x61.
    EXPECT_NE(CompareNoCase("\x81\x41", "\x81\x61"), 0);
    EXPECT_EQ(CompareNoCase("\xD6\xD0X", "\xD6\xD0x"), 0);
}

TEST(LeadByteTest, CountsCharacterBoundariesFromTheStart)
{
    EXPECT_TRUE(IsLeadByteAt("\xD6\xD0"
                             "a",
                             0));
    EXPECT_FALSE(IsLeadByteAt("\xD6\xD0"
                              "a",
                              1));
    EXPECT_FALSE(IsLeadByteAt("\xD6\xD0"
                              "a",
                              2));
    EXPECT_TRUE(IsLeadByteAt("a\xD6\xD0", 1));
    // D6 D6 D0: the second D6 is a trail byte though its value could lead.
    EXPECT_FALSE(IsLeadByteAt("\xD6\xD6\xD0", 1));
    // A lead byte at the end opens nothing.
    EXPECT_FALSE(IsLeadByteAt("\xD6\xD6\xD0", 2));
    EXPECT_FALSE(IsLeadByteAt("a\xD6", 1));
    EXPECT_FALSE(IsLeadByteAt("ab", 5));
    EXPECT_FALSE(IsLeadByteAt("ab", -1));
    EXPECT_FALSE(IsLeadByteAt(nullptr, 0));
}

TEST(EmotionCodeTest, FindsSixCharacterCodesOnlyInsideTheLength)
{
    const char* text = "ab#12|34";
    EXPECT_TRUE(IsEmotionCodeAt(text, 2, 8));
    EXPECT_FALSE(IsEmotionCodeAt(text, 1, 8));
    EXPECT_FALSE(IsEmotionCodeAt(text, 3, 8));
    EXPECT_FALSE(IsEmotionCodeAt(text, 2, 7)); // the code would pass the length
    EXPECT_FALSE(IsEmotionCodeAt(text, -1, 8));
    EXPECT_FALSE(IsEmotionCodeAt(static_cast<const char*>(nullptr), 0, 6));
    EXPECT_TRUE(IsEmotionCodeAt("#00|99", 0, 6));
    EXPECT_FALSE(IsEmotionCodeAt("#0a|99", 0, 6));
    EXPECT_FALSE(IsEmotionCodeAt("#00-99", 0, 6));
    EXPECT_FALSE(IsEmotionCodeAt("#12", 0, 3)); // the short form is not a six-character code

    const wchar_t* wide = L"\u4e2d#05|11";
    EXPECT_TRUE(IsEmotionCodeAt(wide, 1, 7));
    EXPECT_FALSE(IsEmotionCodeAt(wide, 0, 7));
}

TEST(Utf8Test, ConvertsNullAsEmptyAndRoundTrips)
{
    EXPECT_EQ(Utf8TextToWide(nullptr), L"");
    EXPECT_EQ(WideTextToUtf8(nullptr), "");
    EXPECT_EQ(Utf8TextToWide("a\xE4\xB8\xAD"), L"a\u4e2d");
    EXPECT_EQ(WideTextToUtf8(L"a\u4e2d"), "a\xE4\xB8\xAD");
}

TEST(DisplayTransformTest, IdentityUntilInstalledAndBufferFormsStayInBounds)
{
    std::string narrow = "abc";
    std::wstring wide = L"xyz";
    ApplyDisplayTransform(narrow);
    ApplyDisplayTransform(wide);
    EXPECT_EQ(narrow, "abc");
    EXPECT_EQ(wide, L"xyz");

    SetDisplayTransform([](std::string& run) { run = "<" + run + ">"; },
                        [](std::wstring& run) { std::reverse(run.begin(), run.end()); });
    ApplyDisplayTransform(narrow);
    ApplyDisplayTransform(wide);
    EXPECT_EQ(narrow, "<abc>");
    EXPECT_EQ(wide, L"zyx");

    GuardedBuffer buffer(5);
    std::strcpy(buffer.Data(), "abc");
    ApplyDisplayTransform(buffer.Data(), 5);
    EXPECT_STREQ(buffer.Data(), "<abc"); // cut to fit
    EXPECT_TRUE(buffer.GuardIntact());
    wchar_t wideBuffer[8] = L"12";
    ApplyDisplayTransform(wideBuffer, 8);
    EXPECT_STREQ(wideBuffer, L"21");

    SetDisplayTransform(nullptr, nullptr);
    ApplyDisplayTransform(narrow);
    EXPECT_EQ(narrow, "<abc>");
}

TEST(QzStringTest, EmptyAndNullGiveEmptyTextNeverNull)
{
    CQzString empty;
    CQzString fromNull(nullptr);
    CQzString fromEmpty("");
    for (const CQzString* text : {&empty, &fromNull, &fromEmpty})
    {
        ASSERT_NE(text->c_str(), nullptr);
        EXPECT_STREQ(text->c_str(), "");
        EXPECT_TRUE(text->IsEmpty());
        EXPECT_EQ(text->GetLength(), 0u);
        EXPECT_TRUE(text->Equals(nullptr));
        EXPECT_TRUE(text->Equals(""));
    }
}

TEST(QzStringTest, CopiesAreIndependentAndSelfAssignmentIsSafe)
{
    CQzString original("DialogNorMsg");
    CQzString copy(original);
    copy = "Other";
    EXPECT_STREQ(original.c_str(), "DialogNorMsg");
    EXPECT_TRUE(copy.Equals("Other"));
    EXPECT_FALSE(copy.Equals("other"));

    CQzString& alias = original;
    original = alias;
    EXPECT_STREQ(original.c_str(), "DialogNorMsg");
    original = original.c_str() + 6; // text inside the string itself
    EXPECT_STREQ(original.c_str(), "NorMsg");
    EXPECT_EQ(original.GetLength(), 6u);

    CQzString moved(std::move(copy));
    EXPECT_STREQ(moved.c_str(), "Other");
    copy = moved;
    EXPECT_STREQ(copy.c_str(), "Other");
    moved = "";
    EXPECT_TRUE(moved.IsEmpty());
}

TEST(QzStringTest, FormatMayUseItsOwnText)
{
    CQzString text("ab");
    EXPECT_EQ(text.Format("%s-%s-%d", text.c_str(), text.c_str(), 7), 7);
    EXPECT_STREQ(text.c_str(), "ab-ab-7");
    EXPECT_EQ(text.Format("%s", ""), 0);
    EXPECT_TRUE(text.IsEmpty());
    const std::string longText(5000, 'x');
    text.Format("%s!", longText.c_str());
    EXPECT_EQ(text.GetLength(), 5001u);
}
