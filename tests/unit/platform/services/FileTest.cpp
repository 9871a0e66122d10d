#include "platform/services/QzFile.h"
#include "platform/services/QzIni.h"
#include "support/BothStorages.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace QzPlatform;

namespace
{

// Files on disk, and the platform's memory files in their place.
class FileServiceTest : public ::testing::TestWithParam<QzTest::Storage>
{
protected:
    void TearDown() override { EXPECT_EQ(GetFileService().GetOpenCount(), 0u); }

    QzTest::TempDataDir m_folder{GetParam()};
    CQzFileService& m_files = GetFileService();
};

} // namespace

TEST_P(FileServiceTest, OpensWindowsStyleNamesAndReadsLinesLikeFgets)
{
    m_folder.Write("ini/Font.ini", "SimSun 14\nsecond");
    QzFileHandle file = m_files.Open("INI\\font.INI", "r");
    ASSERT_NE(file, nullptr);
    char line[1024];
    ASSERT_EQ(m_files.ReadLine(line, sizeof(line), file), line);
    EXPECT_STREQ(line, "SimSun 14\n");
    EXPECT_EQ(m_files.ReadLine(line, 1, file), nullptr); // no room for a character
    ASSERT_NE(m_files.ReadLine(line, sizeof(line), file), nullptr);
    EXPECT_STREQ(line, "second");
    EXPECT_EQ(m_files.ReadLine(line, sizeof(line), file), nullptr);
    EXPECT_TRUE(m_files.IsEof(file));
    EXPECT_FALSE(m_files.IsError(file));
    EXPECT_EQ(m_files.Close(file), 0);

    EXPECT_EQ(m_files.Open("ini\\missing.ini", "r"), nullptr);
    EXPECT_EQ(m_files.Open(nullptr, "r"), nullptr);
    EXPECT_EQ(m_files.Open("ini\\Font.ini", nullptr), nullptr);
}

TEST_P(FileServiceTest, ClosedAndMadeUpHandlesAreRefused)
{
    m_folder.Write("a.txt", "x\n");
    QzFileHandle first = m_files.Open("a.txt", "r");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(m_files.Close(first), 0);
    QzFileHandle second = m_files.Open("a.txt", "r");
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first); // a handle is never handed out twice

    char line[16];
    char bytes[4];
    EXPECT_EQ(m_files.ReadLine(line, sizeof(line), first), nullptr);
    EXPECT_EQ(m_files.Read(bytes, 1, 4, first), 0u);
    EXPECT_EQ(m_files.Seek(first, 0, 0), -1);
    EXPECT_TRUE(m_files.IsEof(first));
    EXPECT_TRUE(m_files.IsError(first));
    int value = 0;
    EXPECT_EQ(m_files.Scanf(first, "%d", &value), -1);
    EXPECT_EQ(m_files.Close(first), -1);

    const auto madeUp = reinterpret_cast<QzFileHandle>(uintptr_t{0x12345});
    EXPECT_EQ(m_files.ReadLine(line, sizeof(line), madeUp), nullptr);
    EXPECT_EQ(m_files.Close(madeUp), -1);
    EXPECT_EQ(m_files.Close(nullptr), -1);

    // The open file is untouched by the refused calls.
    ASSERT_NE(m_files.ReadLine(line, sizeof(line), second), nullptr);
    EXPECT_STREQ(line, "x\n");
    EXPECT_EQ(m_files.Close(second), 0);
}

TEST_P(FileServiceTest, BinaryReadSeekAndScanf)
{
    m_folder.Write("ini/Rgn.dat", std::string("\x01\x02\x03\x04\x05\x06", 6));
    QzFileHandle file = m_files.Open("ini/rgn.dat", "rb");
    ASSERT_NE(file, nullptr);
    unsigned char bytes[4] = {};
    EXPECT_EQ(m_files.Read(bytes, 2, 1, file), 1u);
    EXPECT_EQ(bytes[1], 2);
    EXPECT_EQ(m_files.Seek(file, 2, 1), 0); // from the current position
    EXPECT_EQ(m_files.Read(bytes, 1, 4, file), 2u);
    EXPECT_EQ(bytes[0], 5);
    EXPECT_EQ(bytes[1], 6);
    EXPECT_TRUE(m_files.IsEof(file));
    EXPECT_EQ(m_files.Seek(file, 0, 3), -1);
    EXPECT_EQ(m_files.Seek(file, -1, 2), 0);
    EXPECT_EQ(m_files.Read(bytes, 1, 1, file), 1u);
    EXPECT_EQ(bytes[0], 6);
    m_files.Close(file);

    m_folder.Write("ini/font.ini", "Tahoma 13\n");
    file = m_files.Open("ini/font.ini", "r");
    char face[261] = {};
    int size = 12;
    EXPECT_EQ(m_files.Scanf(file, "%260s %d", face, &size), 2);
    EXPECT_STREQ(face, "Tahoma");
    EXPECT_EQ(size, 13);
    EXPECT_EQ(m_files.Scanf(file, "%d", &size), -1);
    m_files.Close(file);
}

TEST_P(FileServiceTest, AppendModeCreatesAMissingFileBesideItsKin)
{
    m_folder.Write("Ini/Other.ini", "");
    QzFileHandle file = m_files.Open("ini\\GuiLayout.ini", "a+");
    ASSERT_NE(file, nullptr);
    m_files.Close(file);
    EXPECT_TRUE(m_folder.Exists("Ini/GuiLayout.ini"));
}

TEST_P(FileServiceTest, IniValuesRoundTrip)
{
    m_folder.Write("ini/GuiLayout.ini", "");
    EXPECT_TRUE(IniWriteString("100-0", "Width", "320", "ini\\GuiLayout.ini"));
    EXPECT_TRUE(IniWriteString("100-0", "AniName", "DialogNorMsg", "ini\\GuiLayout.ini"));
    EXPECT_TRUE(IniWriteString("100-0", "Offset", "-7", "ini\\GuiLayout.ini"));

    EXPECT_EQ(IniReadInt("ini\\GuiLayout.ini", "100-0", "Width", 65535), 320);
    EXPECT_EQ(IniReadInt("ini\\GuiLayout.ini", "100-0", "Offset", 0), -7);
    EXPECT_EQ(IniReadInt("ini\\GuiLayout.ini", "100-0", "Height", 65535), 65535);
    char text[256];
    EXPECT_EQ(IniReadString("ini\\GuiLayout.ini", "100-0", "AniName", "", text, sizeof(text)), 12u);
    EXPECT_STREQ(text, "DialogNorMsg");
    EXPECT_EQ(IniReadString("ini\\GuiLayout.ini", "100-0", "Missing", "none", text, sizeof(text)),
              4u);
    EXPECT_STREQ(text, "none");
    EXPECT_EQ(IniReadString("ini\\GuiLayout.ini", "100-0", "AniName", "", text, 5), 4u);
    EXPECT_STREQ(text, "Dial");

    // Written where the game expects it, in the file on disk.
    EXPECT_NE(m_folder.Read("ini/GuiLayout.ini").find("Width=320"), std::string::npos);
}

TEST_P(FileServiceTest, WholeFilesAndFileTestsTakeWindowsNames)
{
    const std::string bytes("a\0b\r\n", 5);
    m_folder.Write("Ani/Data.bin", bytes);
    std::string read;
    EXPECT_TRUE(ReadWholeFile("ani\\DATA.bin", &read));
    EXPECT_EQ(bytes, read);
    EXPECT_FALSE(ReadWholeFile("ani\\missing.bin", &read));
    EXPECT_TRUE(IsFile("ANI/data.BIN"));
    EXPECT_FALSE(IsFile("ani"));
    EXPECT_FALSE(IsFile("ani/missing.bin"));
}

QZ_ON_DISK_AND_IN_MEMORY(FileServiceTest);
