// Reading profile files: lists and their truncation, values, defaults, names, integers.
#include "KernelFolderTest.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/text/QzCodePageHost.h"

#include <string>

namespace
{

using ProfileReadTest = KernelFileTest;

std::string Bytes(const char* buffer, DWORD count)
{
    return std::string(buffer, count);
}

std::string Value(const char* section, const char* key, const char* defaultValue = "default")
{
    char buffer[128];
    const DWORD n = GetPrivateProfileStringA(section, key, defaultValue, buffer, 128, "t.ini");
    return Bytes(buffer, n);
}

TEST_P(ProfileReadTest, SectionNamesListAndItsTruncation)
{
    m_dir.Write("t.ini", "[ section1 ]\r\nk=v\r\n[section2]\r\n[section3]\r\n");
    char buffer[64];
    EXPECT_EQ(27u, GetPrivateProfileSectionNamesA(buffer, 29, "t.ini"));
    EXPECT_EQ(std::string("section1\0section2\0section3\0\0", 28), Bytes(buffer, 28));
    // A list that only just fits is reported as cut, as Windows does.
    EXPECT_EQ(26u, GetPrivateProfileSectionNamesA(buffer, 28, "t.ini"));
    EXPECT_EQ(std::string("section1\0section2\0section3\0\0", 28), Bytes(buffer, 28));
    EXPECT_EQ(14u, GetPrivateProfileStringA(nullptr, "k", "x", buffer, 16, "t.ini"));
    EXPECT_EQ(std::string("section1\0secti\0\0", 16), Bytes(buffer, 16));
    EXPECT_EQ(0u, GetPrivateProfileSectionNamesA(buffer, 1, "t.ini"));
    EXPECT_EQ('\0', buffer[0]);

    buffer[1] = 'x';
    SetLastError(0);
    EXPECT_EQ(0u, GetPrivateProfileSectionNamesA(buffer, 10, "missing.ini"));
    EXPECT_EQ('\0', buffer[0]);
    EXPECT_EQ('x', buffer[1]);
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
}

TEST_P(ProfileReadTest, KeyListSkipsCommentsAndLinesWithoutEquals)
{
    m_dir.Write("t.ini",
                "[s]\r\nname1=val1\r\n  ; name9=x\r\nname2=\r\nname3\r\n\r\nname4=val4\r\n");
    char buffer[64];
    EXPECT_EQ(18u, GetPrivateProfileStringA("s", nullptr, "", buffer, 64, "t.ini"));
    EXPECT_EQ(std::string("name1\0name2\0name4\0\0", 19), Bytes(buffer, 19));
    EXPECT_EQ(14u, GetPrivateProfileStringA("s", nullptr, "", buffer, 16, "t.ini"));
    EXPECT_EQ(std::string("name1\0name2\0na\0\0", 16), Bytes(buffer, 16));
    // No such section: the default comes back as a single string.
    EXPECT_EQ("dflt", Value("none", nullptr, "dflt"));
    EXPECT_EQ("default", Value("s", "name9"));
}

TEST_P(ProfileReadTest, SectionLinesAndTheirTruncation)
{
    m_dir.Write("t.ini", "[section1]\r\nname1 = val1\r\nname2=\r\nname3\r\nname4=\"val4\"\r\n"
                         "[section2]\r\n[section3]\r\n=val5\r\n");
    char buffer[64];
    SetLastError(7);
    EXPECT_EQ(37u, GetPrivateProfileSectionA("section1", buffer, 64, "t.ini"));
    EXPECT_EQ(std::string("name1=val1\0name2=\0name3\0name4=\"val4\"\0\0", 38), Bytes(buffer, 38));
    EXPECT_EQ(static_cast<DWORD>(ERROR_SUCCESS), GetLastError());
    EXPECT_EQ(22u, GetPrivateProfileSectionA("section1", buffer, 24, "t.ini"));
    EXPECT_EQ(std::string("name1=val1\0name2=\0name\0\0", 24), Bytes(buffer, 24));
    EXPECT_EQ(0u, GetPrivateProfileSectionA("section2", buffer, 64, "t.ini"));
    EXPECT_EQ(6u, GetPrivateProfileSectionA("section3", buffer, 64, "t.ini"));
    EXPECT_EQ(std::string("=val5\0\0", 7), Bytes(buffer, 7));

    EXPECT_EQ(0u, GetPrivateProfileSectionA(nullptr, buffer, 64, "t.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_EQ(0u, GetPrivateProfileSectionA("section1", buffer, 0, "t.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_EQ(0u, GetPrivateProfileSectionA("section1", buffer, 64, "missing.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
}

TEST_P(ProfileReadTest, ValuesAreTrimmedAndLoseMatchingQuotes)
{
    m_dir.Write("t.ini",
                "[s]\r\n  padded  =  a value  \r\ndq=\"val2\"\r\nsq='x y'\r\nmixed=\"x'\r\n"
                "one=\"\r\nempty=\"\"\r\nname4=a\r\n");
    EXPECT_EQ("a value", Value("s", "padded"));
    EXPECT_EQ("val2", Value("s", "dq"));
    EXPECT_EQ("x y", Value("s", "sq"));
    EXPECT_EQ("\"x'", Value("s", "mixed"));
    EXPECT_EQ("\"", Value("s", "one"));
    EXPECT_EQ("", Value("s", "empty"));
    EXPECT_EQ("a", Value(" s ", " name4 "));
}

TEST_P(ProfileReadTest, DefaultsAndBufferSizes)
{
    m_dir.Write("t.ini", "[section1]\r\nname1=val1\r\nname4=a\r\n");
    EXPECT_EQ("default", Value("section1", "nokey", "default  "));
    EXPECT_EQ("one two", Value("section1", "nokey", "one two  "));
    EXPECT_EQ("", Value("section1", "nokey", nullptr));
    EXPECT_EQ("default", Value("", "name1"));
    EXPECT_EQ("default", Value("section1", ""));

    char buffer[16] = "kumquat";
    EXPECT_EQ(0u, GetPrivateProfileStringA("section1", "name1", "d", buffer, 0, "t.ini"));
    EXPECT_STREQ("kumquat", buffer);
    EXPECT_EQ(3u, GetPrivateProfileStringA("section1", "name1", "d", buffer, 4, "t.ini"));
    EXPECT_STREQ("val", buffer);
    EXPECT_EQ(4u, GetPrivateProfileStringA("section1", "name1", "d", buffer, 5, "t.ini"));
    EXPECT_STREQ("val1", buffer);
    EXPECT_EQ(0u, GetPrivateProfileStringA("section1", "name4", "d", buffer, 1, "t.ini"));
    EXPECT_STREQ("", buffer);
    EXPECT_EQ(0u, GetPrivateProfileStringA("section1", "name1", "d", nullptr, 16, "t.ini"));

    SetLastError(0);
    EXPECT_EQ(7u, GetPrivateProfileStringA("section1", "name1", "default", buffer, 16, nullptr));
    EXPECT_STREQ("default", buffer);
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    EXPECT_EQ(7u, GetPrivateProfileStringA("section1", "name1", "default", buffer, 16, ""));
}

TEST_P(ProfileReadTest, NamesIgnoreCaseAndTheFirstOccurrenceWins)
{
    m_dir.Write("t.ini", "k=outside\r\n[Dup]\r\nKey=first\r\nkey=second\r\n[dup]\r\nkey=third\r\n"
                         "other=4\r\n[\x81\x41]\r\nk=lead-A\r\n[\x81\x61]\r\nk=lead-a\r\n");
    EXPECT_EQ("first", Value("DUP", "KEY"));
    EXPECT_EQ("default", Value("dup", "other"));
    EXPECT_EQ("default", Value("", "k"));
    // In code page 936 the second byte of a double-byte name is no letter to fold.
    EXPECT_EQ("lead-A", Value("\x81\x41", "k"));
    EXPECT_EQ("lead-a", Value("\x81\x61", "k"));
    char buffer[64];
    EXPECT_EQ(14u, GetPrivateProfileSectionNamesA(buffer, 64, "t.ini"));
    EXPECT_EQ(std::string("Dup\0dup\0\x81\x41\0\x81\x61\0\0", 15), Bytes(buffer, 15));
}

TEST_P(ProfileReadTest, EveryLineEndingAndMalformedLines)
{
    m_dir.Write("t.ini", "[a]\rk=cr\r[b]\nk=lf\n[c]\r\nk=crlf");
    EXPECT_EQ("cr", Value("a", "k"));
    EXPECT_EQ("lf", Value("b", "k"));
    EXPECT_EQ("crlf", Value("c", "k"));
    // A header without ']' is an ordinary line; the last ']' closes a name.
    m_dir.Write("u.ini", "[open\r\nk=1\r\n[x]y] tail\r\nk=2\r\n");
    char buffer[64];
    EXPECT_EQ(4u, GetPrivateProfileSectionNamesA(buffer, 64, "u.ini"));
    EXPECT_EQ(std::string("x]y\0\0", 5), Bytes(buffer, 5));
    EXPECT_EQ(2u, GetPrivateProfileIntA("x]y", "k", 0, "u.ini"));
    // A byte-order mark does not hide the first section.
    m_dir.Write("v.ini", "\xEF\xBB\xBF[first]\r\nk=bom\r\n");
    EXPECT_EQ(3u, GetPrivateProfileStringA("first", "k", "", buffer, 64, "v.ini"));
}

TEST_P(ProfileReadTest, IntegersReadTheLeadingNumber)
{
    m_dir.Write("t.ini", "[s]\r\nneg=-1\r\nplus=+1\r\nbig=4294967297\r\nnegbig=-4294967297\r\n"
                         "trail=42A94967297\r\nlead=B42\r\nhex=0x1F\r\nhexneg=-0X10\r\nempty=\r\n"
                         "quoted=\"12\"\r\nspace= 7 \r\n");
    EXPECT_EQ(4294967295u, GetPrivateProfileIntA("s", "neg", 5, "t.ini"));
    EXPECT_EQ(1u, GetPrivateProfileIntA("s", "plus", 5, "t.ini"));
    EXPECT_EQ(1u, GetPrivateProfileIntA("s", "big", 5, "t.ini"));
    EXPECT_EQ(4294967295u, GetPrivateProfileIntA("s", "negbig", 5, "t.ini"));
    EXPECT_EQ(42u, GetPrivateProfileIntA("s", "trail", 5, "t.ini"));
    EXPECT_EQ(0u, GetPrivateProfileIntA("s", "lead", 5, "t.ini"));
    EXPECT_EQ(31u, GetPrivateProfileIntA("s", "hex", 5, "t.ini"));
    EXPECT_EQ(static_cast<UINT>(-16), GetPrivateProfileIntA("s", "hexneg", 5, "t.ini"));
    EXPECT_EQ(5u, GetPrivateProfileIntA("s", "empty", 5, "t.ini"));
    EXPECT_EQ(12u, GetPrivateProfileIntA("s", "quoted", 5, "t.ini"));
    EXPECT_EQ(7u, GetPrivateProfileIntA("s", "space", 5, "t.ini"));
    EXPECT_EQ(static_cast<UINT>(-3), GetPrivateProfileIntA("s", "absent", -3, "t.ini"));
    EXPECT_EQ(9u, GetPrivateProfileIntA(nullptr, "neg", 9, "t.ini"));
    EXPECT_EQ(9u, GetPrivateProfileIntA("s", nullptr, 9, "t.ini"));
    EXPECT_EQ(9u, GetPrivateProfileIntA("s", "neg", 9, "missing.ini"));
}

TEST_P(ProfileReadTest, WideFunctionsConvertThroughTheAnsiCodePage)
{
    // "中文" as section, key and value in GBK.
    m_dir.Write("t.ini", "[\xD6\xD0]\r\n\xCE\xC4=\xD6\xD0\xCE\xC4\r\nn=5\r\n");
    wchar_t buffer[32];
    EXPECT_EQ(2u, GetPrivateProfileStringW(L"\x4E2D", L"\x6587", L"", buffer, 32, L"t.ini"));
    EXPECT_EQ(std::wstring(L"\x4E2D\x6587"), std::wstring(buffer));
    EXPECT_EQ(2u, GetPrivateProfileSectionNamesW(buffer, 32, L"t.ini"));
    EXPECT_EQ(std::wstring(L"\x4E2D\0\0", 3), std::wstring(buffer, 3));
    EXPECT_EQ(5u, GetPrivateProfileIntW(L"\x4E2D", L"N", 0, L"t.ini"));
    EXPECT_EQ(9u, GetPrivateProfileSectionW(L"\x4E2D", buffer, 32, L"t.ini"));
    EXPECT_EQ(std::wstring(L"\x6587=\x4E2D\x6587\0n=5\0\0", 10), std::wstring(buffer, 10));
    // Truncation counts wide characters.
    EXPECT_EQ(1u, GetPrivateProfileStringW(L"\x4E2D", L"\x6587", L"", buffer, 2, L"t.ini"));
    EXPECT_EQ(std::wstring(L"\x4E2D"), std::wstring(buffer));
}

} // namespace

QZ_ON_DISK_AND_IN_MEMORY(ProfileReadTest);
