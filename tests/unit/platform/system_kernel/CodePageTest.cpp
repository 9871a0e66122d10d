// Code-page conversion with the Win32 rules: sizes, buffers, invalid input, lead bytes.
#include "KernelFolderTest.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/text/QzCodePage.h"
#include "platform/system/text/QzCodePageHost.h"

#include <string>

namespace
{

// "中文" in GBK, as wide text and in UTF-8.
const char kGbk[] = "\xD6\xD0\xCE\xC4";
const wchar_t kWide[] = L"\x4E2D\x6587";
const char kUtf8[] = "\xE4\xB8\xAD\xE6\x96\x87";

using CodePageTest = KernelFolderTest;

std::wstring Decode(UINT codePage, const std::string& bytes, DWORD flags = 0)
{
    wchar_t out[64] = {};
    const int n =
        MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), out, 64);
    return std::wstring(out, n > 0 ? static_cast<size_t>(n) : 0);
}

std::string Encode(UINT codePage, const std::wstring& wide, BOOL* usedDefault = nullptr,
                   LPCSTR defaultChar = nullptr)
{
    char out[64] = {};
    const int n = WideCharToMultiByte(codePage, 0, wide.data(), static_cast<int>(wide.size()), out,
                                      64, defaultChar, usedDefault);
    return std::string(out, n > 0 ? static_cast<size_t>(n) : 0);
}

TEST_F(CodePageTest, GbkWideAndUtf8RoundTrip)
{
    EXPECT_EQ(936u, GetACP());
    EXPECT_EQ(kWide, Decode(CP_ACP, kGbk));
    EXPECT_EQ(kWide, Decode(936, kGbk));
    EXPECT_EQ(kWide, Decode(CP_UTF8, kUtf8));
    EXPECT_EQ(kGbk, Encode(CP_ACP, kWide));
    EXPECT_EQ(kUtf8, Encode(CP_UTF8, kWide));
    EXPECT_EQ(kUtf8, QzPlatform::AnsiToUtf8(kGbk));
    EXPECT_EQ(kGbk, QzPlatform::Utf8ToAnsi(kUtf8));
    EXPECT_EQ(std::string("a") + kGbk + "b",
              QzPlatform::WideToAnsi(std::wstring(L"a") + kWide + L"b"));
    EXPECT_EQ(std::wstring(L"x") + kWide, QzPlatform::AnsiToWide(std::string("x") + kGbk));
    // Code page 936 has the euro sign at 0x80; characters beyond the BMP stay one wide unit.
    EXPECT_EQ(L"\x20AC", Decode(936, "\x80"));
    EXPECT_EQ(L"\x1F600", Decode(CP_UTF8, "\xF0\x9F\x98\x80"));
}

TEST_F(CodePageTest, AnsiCodePageIsSettable)
{
    EXPECT_FALSE(QzPlatform::SetAnsiCodePage(437));
    EXPECT_EQ(936u, QzPlatform::GetAnsiCodePage());
    ASSERT_TRUE(QzPlatform::SetAnsiCodePage(CP_UTF8));
    EXPECT_EQ(65001u, GetACP());
    EXPECT_EQ(kWide, QzPlatform::AnsiToWide(kUtf8));
    EXPECT_FALSE(IsDBCSLeadByte(0xD6));
    ASSERT_TRUE(QzPlatform::SetAnsiCodePage(1252));
    EXPECT_EQ(L"\x20AC\x00E9\x0081", Decode(CP_ACP, "\x80\xE9\x81"));
    EXPECT_EQ("\x80\xE9", Encode(CP_ACP, L"\x20AC\x00E9"));
    BOOL usedDefault = FALSE;
    EXPECT_EQ("a?", Encode(CP_ACP, L"a\x4E2D", &usedDefault));
    EXPECT_TRUE(usedDefault);
}

TEST_F(CodePageTest, SizeQueriesCountTheTerminatorOfNullTerminatedInput)
{
    EXPECT_EQ(3, MultiByteToWideChar(936, 0, kGbk, -1, nullptr, 0));
    EXPECT_EQ(2, MultiByteToWideChar(936, 0, kGbk, 4, nullptr, 0));
    EXPECT_EQ(5, WideCharToMultiByte(936, 0, kWide, -1, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(7, WideCharToMultiByte(CP_UTF8, 0, kWide, -1, nullptr, 0, nullptr, nullptr));

    wchar_t wide[3] = {L'x', L'x', L'x'};
    EXPECT_EQ(3, MultiByteToWideChar(936, 0, kGbk, -1, wide, 3));
    EXPECT_EQ(L'\0', wide[2]);
}

TEST_F(CodePageTest, TooSmallBufferFailsWithInsufficientBuffer)
{
    wchar_t wide[1];
    SetLastError(0);
    EXPECT_EQ(0, MultiByteToWideChar(936, 0, kGbk, -1, wide, 1));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());

    char bytes[4];
    SetLastError(0);
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, kWide, 2, bytes, 4, nullptr, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
}

TEST_F(CodePageTest, BadArgumentsAreRejected)
{
    wchar_t wide[4];
    char bytes[4];
    SetLastError(0);
    EXPECT_EQ(0, MultiByteToWideChar(936, 0, nullptr, 3, wide, 4));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_EQ(0, MultiByteToWideChar(936, 0, "abc", 0, wide, 4));
    EXPECT_EQ(0, MultiByteToWideChar(936, 0, "abc", -2, wide, 4));
    EXPECT_EQ(0, MultiByteToWideChar(936, 0, "abc", 3, nullptr, 4));
    EXPECT_EQ(0, MultiByteToWideChar(437, 0, "abc", 3, wide, 4));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, MB_PRECOMPOSED, "abc", 3, wide, 4));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_FLAGS), GetLastError());
    BOOL usedDefault = FALSE;
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, L"a", 1, bytes, 4, nullptr, &usedDefault));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
}

TEST_F(CodePageTest, InvalidUtf8BecomesReplacementOrFailsWhenStrict)
{
    // A truncated sequence is one replacement; a lone continuation byte and a byte that starts
    // no sequence are one each; overlong forms and surrogates are invalid.
    EXPECT_EQ(L"\xFFFD"
              L"A",
              Decode(CP_UTF8, "\xE4\xB8"
                              "A"));
    EXPECT_EQ(L"a\xFFFD\xFFFD"
              L"b",
              Decode(CP_UTF8, "a\x80\xFF"
                              "b"));
    EXPECT_EQ(L"\xFFFD\xFFFD", Decode(CP_UTF8, "\xC0\xAF"));
    EXPECT_EQ(L"\xFFFD\xFFFD\xFFFD", Decode(CP_UTF8, "\xED\xA0\x80"));
    EXPECT_EQ(L"\xFFFD", Decode(CP_UTF8, "\xF0\x9F\x98"));

    wchar_t wide[8];
    SetLastError(0);
    EXPECT_EQ(0, MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\x80", 2, wide, 8));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());

    // A wide value that is no character: U+FFFD in UTF-8, or a failure when strict.
    const wchar_t bad[] = {0xD800, 0x110000};
    EXPECT_EQ("\xEF\xBF\xBD\xEF\xBF\xBD", Encode(CP_UTF8, std::wstring(bad, 2)));
    char bytes[8];
    EXPECT_EQ(
        0, WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, bad, 2, bytes, 8, nullptr, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());
}

TEST_F(CodePageTest, InvalidGbkAndUnmappableCharacters)
{
    // A lead byte at the end, and one followed by a byte that cannot trail.
    EXPECT_EQ(L"a\xFFFD", Decode(936, "a\x81"));
    EXPECT_EQ(L"\xFFFD\x0001", Decode(936, std::string("\x81\x01", 2)));
    wchar_t wide[8];
    EXPECT_EQ(0, MultiByteToWideChar(936, MB_ERR_INVALID_CHARS, "a\x81", 2, wide, 8));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION), GetLastError());

    BOOL usedDefault = TRUE;
    EXPECT_EQ(kGbk, Encode(936, kWide, &usedDefault));
    EXPECT_FALSE(usedDefault);
    // U+AC00 (Hangul) has no GBK form; the default is '?' or the one given, a double-byte one
    // included.
    EXPECT_EQ("x?", Encode(936, L"x\xAC00", &usedDefault));
    EXPECT_TRUE(usedDefault);
    EXPECT_EQ("x*", Encode(936, L"x\xAC00", nullptr, "*"));
    EXPECT_EQ("x\xD6\xD0", Encode(936, L"x\xAC00", nullptr, "\xD6\xD0"));
}

TEST_F(CodePageTest, EmbeddedNullsConvertWithExplicitLength)
{
    EXPECT_EQ(std::wstring(L"a\0b", 3), Decode(936, std::string("a\0b", 3)));
    EXPECT_EQ(std::string("a\0\xD6\xD0", 4), Encode(936, std::wstring(L"a\0\x4E2D", 3)));
}

TEST_F(CodePageTest, LeadBytesOfEachCodePage)
{
    EXPECT_FALSE(IsDBCSLeadByte(0x80));
    EXPECT_TRUE(IsDBCSLeadByte(0x81));
    EXPECT_TRUE(IsDBCSLeadByte(0xFE));
    EXPECT_FALSE(IsDBCSLeadByte(0xFF));
    EXPECT_FALSE(IsDBCSLeadByte('A'));
    EXPECT_TRUE(IsDBCSLeadByteEx(936, 0xD6));
    EXPECT_FALSE(IsDBCSLeadByteEx(CP_UTF8, 0xE4));
    EXPECT_FALSE(IsDBCSLeadByteEx(1252, 0xD6));
    SetLastError(0);
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 0x81));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
}

} // namespace
