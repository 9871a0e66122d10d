// Files and read-only mappings, as a module-file reader uses them.
#include "KernelFolderTest.h"

#include "platform/system/QzWinKernel.h"

#include "SlotReuse.h"

#include <cstring>
#include <string>

namespace
{

using FileMappingTest = KernelFileTest;

TEST_P(FileMappingTest, WriteThenReadAFile)
{
    HANDLE out = CreateFileA("Data.bin", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, out);
    DWORD done = 0;
    EXPECT_TRUE(WriteFile(out, "MZ\0\1", 4, &done, nullptr));
    EXPECT_EQ(4u, done);
    EXPECT_TRUE(CloseHandle(out));
    EXPECT_FALSE(CloseHandle(out));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());

    HANDLE in =
        CreateFileA("data.BIN", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, in);
    DWORD high = 7;
    EXPECT_EQ(4u, GetFileSize(in, &high));
    EXPECT_EQ(0u, high);
    char buffer[8] = {};
    EXPECT_TRUE(ReadFile(in, buffer, 8, &done, nullptr));
    EXPECT_EQ(4u, done);
    EXPECT_EQ(0, std::memcmp(buffer, "MZ\0\1", 4));
    EXPECT_TRUE(ReadFile(in, buffer, 8, &done, nullptr));
    EXPECT_EQ(0u, done);
    EXPECT_TRUE(CloseHandle(in));
    EXPECT_EQ(INVALID_FILE_SIZE, GetFileSize(in, nullptr));
}

TEST_P(FileMappingTest, OpenFailuresSayWhy)
{
    SetLastError(0);
    EXPECT_EQ(INVALID_HANDLE_VALUE,
              CreateFileA("missing.bin", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    m_dir.MakeFolder("folder");
    EXPECT_EQ(INVALID_HANDLE_VALUE,
              CreateFileA("folder", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE,
              CreateFileA(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(CloseHandle(INVALID_HANDLE_VALUE)); // the process's pseudo handle
}

TEST_P(FileMappingTest, ViewsCopyTheMappedBytesAndOutliveTheFileHandle)
{
    std::string bytes(70000, 'a');
    bytes[65536] = 'b';
    m_dir.Write("module.dll", bytes);
    HANDLE file = CreateFileA("MODULE.DLL", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    ASSERT_NE(nullptr, mapping);
    EXPECT_TRUE(CloseHandle(file));

    const auto* whole = static_cast<const char*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
    ASSERT_NE(nullptr, whole);
    EXPECT_EQ(bytes, std::string(whole, bytes.size()));
    const auto* tail = static_cast<const char*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 65536, 4));
    ASSERT_NE(nullptr, tail);
    EXPECT_EQ("baaa", std::string(tail, 4));

    EXPECT_EQ(nullptr, MapViewOfFile(mapping, FILE_MAP_READ, 0, 100, 4));   // unaligned
    EXPECT_EQ(nullptr, MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 70001)); // past the end
    EXPECT_EQ(nullptr, MapViewOfFile(mapping, FILE_MAP_READ, 1, 0, 0));
    EXPECT_EQ(nullptr, MapViewOfFile(file, FILE_MAP_READ, 0, 0, 0)); // a file is no mapping
    EXPECT_TRUE(UnmapViewOfFile(whole));
    EXPECT_FALSE(UnmapViewOfFile(whole));
    EXPECT_TRUE(UnmapViewOfFile(tail));
    EXPECT_TRUE(CloseHandle(mapping));
}

TEST_P(FileMappingTest, MappingsOfNothingAreRefused)
{
    m_dir.Write("empty.dll", "");
    m_dir.Write("small.dll", "MZ");
    HANDLE empty = CreateFileA("empty.dll", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(nullptr, CreateFileMappingA(empty, nullptr, PAGE_READONLY, 0, 0, nullptr));
    HANDLE small = CreateFileA("small.dll", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(nullptr, CreateFileMappingA(small, nullptr, PAGE_READONLY, 0, 3, nullptr));
    EXPECT_EQ(nullptr, CreateFileMappingA(small, nullptr, 0x04, 0, 0, nullptr));
    EXPECT_EQ(nullptr, CreateFileMappingA(nullptr, nullptr, PAGE_READONLY, 0, 0, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
    EXPECT_TRUE(CloseHandle(empty));
    EXPECT_TRUE(CloseHandle(small));
}

TEST_P(FileMappingTest, ClosedHandleStaysInvalidWhenANewFileTakesItsSlot)
{
    m_dir.Write("a.bin", "abc");
    const auto open = [] {
        return CreateFileA("a.bin", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                           nullptr);
    };
    const HANDLE file = open();
    ASSERT_TRUE(CloseHandle(file));
    const HANDLE newFile = NewInSlotOf(file, open, CloseHandle);
    ASSERT_NE(nullptr, newFile);
    char buffer[4] = {};
    DWORD done = 0;
    SetLastError(0);
    EXPECT_FALSE(ReadFile(file, buffer, 3, &done, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
    EXPECT_EQ(nullptr, CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr));
    EXPECT_FALSE(CloseHandle(file));
    EXPECT_TRUE(ReadFile(newFile, buffer, 3, &done, nullptr));
    EXPECT_STREQ("abc", buffer);
    EXPECT_TRUE(CloseHandle(newFile));
}

} // namespace

QZ_ON_DISK_AND_IN_MEMORY(FileMappingTest);
