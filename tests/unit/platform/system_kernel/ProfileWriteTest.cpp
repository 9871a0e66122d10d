// Writing profile files: creation, edits in place, deletion, failures, and the parsed-file
// cache that reads must not bypass or trust too long.
#include "KernelFolderTest.h"

#include "platform/system/QzWinKernel.h"

#include <string>

namespace
{

using ProfileWriteTest = KernelFileTest;

std::string Value(const char* section, const char* key, const char* file)
{
    char buffer[128];
    const DWORD n = GetPrivateProfileStringA(section, key, "default", buffer, 128, file);
    return std::string(buffer, n);
}

TEST_P(ProfileWriteTest, WritesCreateTheFileSectionsAndKeys)
{
    EXPECT_TRUE(WritePrivateProfileStringA("App", "key", "", "empty.ini"));
    EXPECT_EQ("[App]\r\nkey=\r\n", m_dir.Read("empty.ini"));

    EXPECT_TRUE(WritePrivateProfileStringA("App1", "key1", "string1", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App1", "key2", "string2", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App2", "key4", "string4", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("app1", " key3 ", "  string3", "t.ini"));
    EXPECT_EQ("[App1]\r\nkey1=string1\r\nkey2=string2\r\nkey3=string3\r\n"
              "[App2]\r\nkey4=string4\r\n",
              m_dir.Read("t.ini"));
    EXPECT_EQ("string3", Value("APP1", "KEY3", "t.ini"));
}

TEST_P(ProfileWriteTest, ReplacingAValueKeepsEveryOtherByte)
{
    const std::string before = "; layout of the test\n\n[3-7]\nx=10\n  Title = old  \n\n"
                               "; next\n[4-7]\nw=1";
    m_dir.Write("t.ini", before);
    EXPECT_TRUE(WritePrivateProfileStringA("3-7", "title", "new", "t.ini"));
    EXPECT_EQ("; layout of the test\n\n[3-7]\nx=10\nTitle=new\n\n; next\n[4-7]\nw=1",
              m_dir.Read("t.ini"));
    // The same value again leaves the file alone.
    EXPECT_TRUE(WritePrivateProfileStringA("3-7", "Title", "new", "t.ini"));
    // A new key goes after the section's last key, in the file's own line ending; a file
    // without a final line ending gets one first.
    EXPECT_TRUE(WritePrivateProfileStringA("3-7", "y", "20", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("4-7", "h", "2", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("5-7", "w", "3", "t.ini"));
    EXPECT_EQ("; layout of the test\n\n[3-7]\nx=10\nTitle=new\ny=20\n\n; next\n[4-7]\nw=1\nh=2\n"
              "[5-7]\nw=3\n",
              m_dir.Read("t.ini"));
    EXPECT_EQ("20", Value("3-7", "y", "t.ini"));
}

TEST_P(ProfileWriteTest, NullValueDeletesAKeyAndNullKeyASection)
{
    m_dir.Write("t.ini",
                "[App1]\r\nkey1=string1\r\nkey2=string2\r\n; note\r\n[App2]\r\nkey4=string4\r\n"
                "[App3]\r\nkey5=string5\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("App1", "KEY2", nullptr, "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App1", "key2", nullptr, "t.ini"));
    EXPECT_EQ(
        "[App1]\r\nkey1=string1\r\n; note\r\n[App2]\r\nkey4=string4\r\n[App3]\r\nkey5=string5\r\n",
        m_dir.Read("t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("app1", nullptr, "ignored", "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App2", nullptr, nullptr, "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App9", nullptr, nullptr, "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App3", "key5", nullptr, "t.ini"));
    EXPECT_EQ("[App3]\r\n", m_dir.Read("t.ini"));
    EXPECT_EQ("default", Value("App1", "key1", "t.ini"));

    // Deleting from a file that does not exist succeeds and creates nothing.
    EXPECT_TRUE(WritePrivateProfileStringA("App", "key", nullptr, "none.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("App", nullptr, nullptr, "none.ini"));
    EXPECT_FALSE(m_dir.Exists("none.ini"));
}

TEST_P(ProfileWriteTest, FailuresLeaveNoFileBehind)
{
    SetLastError(0);
    EXPECT_FALSE(WritePrivateProfileStringA(nullptr, "key", "string", "t.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    EXPECT_FALSE(m_dir.Exists("t.ini"));
    EXPECT_FALSE(WritePrivateProfileStringA("App", "key", "string", ""));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
    EXPECT_FALSE(WritePrivateProfileStringA("App", "key", "string", "nofolder/t.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PATH_NOT_FOUND), GetLastError());
    m_dir.MakeFolder("dir.ini");
    EXPECT_FALSE(WritePrivateProfileStringA("App", "key", "string", "dir.ini"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
    EXPECT_EQ("default", Value("App", "key", "dir.ini"));
}

TEST_P(ProfileWriteTest, WindowsNamesFindTheFileInAnyCase)
{
    m_dir.MakeFolder("ini");
    m_dir.Write("ini/x.ini", "[s]\r\nk=found\r\n");
    EXPECT_EQ("found", Value("s", "k", "ini\\X.INI"));
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "written", "INI\\x.Ini"));
    EXPECT_EQ("[s]\r\nk=written\r\n", m_dir.Read("ini/x.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "new", "INI\\New.ini"));
    EXPECT_TRUE(m_dir.Exists("ini/New.ini"));
}

TEST_P(ProfileWriteTest, WideWritesStoreAnsiBytes)
{
    EXPECT_TRUE(WritePrivateProfileStringW(L"\x4E2D", L"\x6587", L"\x4E2D\x6587", L"w.ini"));
    EXPECT_EQ("[\xD6\xD0]\r\n\xCE\xC4=\xD6\xD0\xCE\xC4\r\n", m_dir.Read("w.ini"));
}

TEST_P(ProfileWriteTest, LargeFileIsParsedOnceForAllReads)
{
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += "[0-" + std::to_string(i) + "]\r\nx=" + std::to_string(i) + "\r\nw=5\r\n";
    m_dir.Write("big.ini", text);
    const int parsesBefore = QzPlatform::GetProfileParseCountForTesting();
    char names[32767];
    EXPECT_GT(GetPrivateProfileSectionNamesA(names, sizeof(names), "big.ini"), 0u);
    for (int i = 0; i < 10000; ++i)
    {
        const std::string section = "0-" + std::to_string(i);
        ASSERT_EQ(static_cast<UINT>(i), GetPrivateProfileIntA(section.c_str(), "x", -1, "big.ini"));
        ASSERT_EQ(5u, GetPrivateProfileIntA(section.c_str(), "w", -1, "big.ini"));
    }
    EXPECT_EQ(1, QzPlatform::GetProfileParseCountForTesting() - parsesBefore);
}

TEST_P(ProfileWriteTest, ChangesByOthersAreSeenAtOnce)
{
    m_dir.Write("t.ini", "[s]\r\nk=1\r\n");
    EXPECT_EQ(1u, GetPrivateProfileIntA("s", "k", 0, "t.ini"));
    // Same size, same second: only the bytes tell the two versions apart.
    m_dir.Write("t.ini", "[s]\r\nk=2\r\n");
    EXPECT_EQ(2u, GetPrivateProfileIntA("s", "k", 0, "t.ini"));
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "3", "t.ini"));
    EXPECT_EQ(3u, GetPrivateProfileIntA("s", "k", 0, "t.ini"));
    m_dir.Write("t.ini", "[s]\r\nk=4\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("s", "j", "5", "t.ini"));
    EXPECT_EQ("[s]\r\nk=4\r\nj=5\r\n", m_dir.Read("t.ini"));
    m_dir.Remove("t.ini");
    EXPECT_EQ(9u, GetPrivateProfileIntA("s", "k", 9, "t.ini"));
}

} // namespace

QZ_ON_DISK_AND_IN_MEMORY(ProfileWriteTest);
