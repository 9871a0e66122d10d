#include "KernelFolderTest.h"

#include <cstdlib>
#include <fstream>
#include <ftw.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*)
{
    return remove(path);
}

} // namespace

void KernelFolderTest::SetUp()
{
    QzPlatform::ResetKernelForTesting();
    char previous[4096];
    ASSERT_NE(nullptr, getcwd(previous, sizeof(previous)));
    m_previous = previous;
    char pattern[] = "/tmp/qz-kernel-XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(pattern));
    m_folder = pattern;
    ASSERT_EQ(0, chdir(m_folder.c_str()));
}

void KernelFolderTest::TearDown()
{
    QzPlatform::ResetKernelForTesting();
    EXPECT_EQ(0, chdir(m_previous.c_str()));
    nftw(m_folder.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
}

void KernelFolderTest::WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string KernelFolderTest::ReadBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool KernelFolderTest::FileExists(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

void KernelFolderTest::MakeFolder(const std::string& path)
{
    ASSERT_EQ(0, mkdir(path.c_str(), 0755));
}
