// Windows-style names on POSIX, the current directory and module file names.
#include "KernelFolderTest.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/kernel/QzPathResolve.h"

#include "SlotReuse.h"

#include <cstring>
#include <string>

namespace
{

using PathAndModuleTest = KernelFileTest;
using QzPlatform::ResolvePath;

TEST_P(PathAndModuleTest, ResolvePathMatchesEachComponentWithoutCase)
{
    m_dir.MakeFolder("ini");
    m_dir.Write("ini/x.ini", "");
    m_dir.MakeFolder("Ani");
    m_dir.Write("Ani/Control.ani", "");
    EXPECT_EQ("ini/x.ini", ResolvePath("ini\\X.INI"));
    EXPECT_EQ("ini/x.ini", ResolvePath("INI/x.ini"));
    EXPECT_EQ("Ani/Control.ani", ResolvePath("ani/control.ani"));
    EXPECT_EQ("./Ani/Control.ani", ResolvePath(".\\ANI\\CONTROL.ANI"));
    EXPECT_EQ(m_dir.Folder() + "/ini/x.ini", ResolvePath(m_dir.Folder() + "\\INI\\X.ini"));
    // What does not exist keeps its spelling after the last component that does.
    EXPECT_EQ("ini/New/y.ini", ResolvePath("INI\\New\\y.ini"));
    EXPECT_EQ("none/x.ini", ResolvePath("none\\x.ini"));
    EXPECT_EQ("ini/", ResolvePath("INI\\"));
    EXPECT_EQ("", ResolvePath(""));
}

TEST_P(PathAndModuleTest, ResolvePathFollowsFilesThatComeAndGo)
{
    m_dir.MakeFolder("ini");
    EXPECT_EQ("ini/Late.ini", ResolvePath("INI/Late.ini"));
    m_dir.Write("ini/late.INI", "1");
    EXPECT_EQ("ini/late.INI", ResolvePath("INI/Late.ini"));
    m_dir.Write("ini/late.INI", "2");
    EXPECT_EQ("ini/late.INI", ResolvePath("INI/Late.ini"));
    m_dir.Remove("ini/late.INI");
    EXPECT_EQ("ini/Late.ini", ResolvePath("INI/Late.ini"));
    m_dir.MakeFolder("ini/Sub");
    EXPECT_EQ("ini/Sub/a.ini", ResolvePath("ini/SUB/a.ini"));
}

TEST_P(PathAndModuleTest, ResolvePathPrefersTheExactNameAndIsStable)
{
    m_dir.MakeFolder("d");
    m_dir.Write("d/File.txt", "1");
    m_dir.Write("d/file.TXT", "2");
    EXPECT_EQ("d/File.txt", ResolvePath("d\\File.txt"));
    EXPECT_EQ("d/File.txt", ResolvePath("D\\FILE.TXT"));
    // A file in the middle of a path is no folder.
    EXPECT_EQ("d/File.txt/x", ResolvePath("d/file.txt/x"));
}

// The current directory is a folder on disk, with memory files too.
using CurrentDirectoryTest = KernelFolderTest;

TEST_F(CurrentDirectoryTest, FollowsTheWin32SizeRules)
{
    const std::string folder = m_dir.Folder();
    const auto length = static_cast<DWORD>(folder.size());
    EXPECT_EQ(length + 1, GetCurrentDirectoryA(0, nullptr));
    char small[4] = "abc";
    EXPECT_EQ(length + 1, GetCurrentDirectoryA(length, small));
    EXPECT_STREQ("abc", small);
    char buffer[512];
    EXPECT_EQ(length, GetCurrentDirectoryA(length + 1, buffer));
    EXPECT_EQ(folder, buffer);
    wchar_t wide[512];
    EXPECT_EQ(length, GetCurrentDirectoryW(512, wide));
    EXPECT_EQ(std::wstring(folder.begin(), folder.end()), wide);

    m_dir.MakeFolder("Sub");
    EXPECT_TRUE(SetCurrentDirectoryA("SUB"));
    EXPECT_EQ(length + 4, GetCurrentDirectoryA(512, buffer));
    EXPECT_EQ(folder + "/Sub", buffer);
    EXPECT_TRUE(SetCurrentDirectoryW(L".."));
    SetLastError(0);
    EXPECT_FALSE(SetCurrentDirectoryA("missing"));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    EXPECT_FALSE(SetCurrentDirectoryA(nullptr));
}

TEST_P(PathAndModuleTest, ModuleFileNameIsTheExecutableAndCutsLikeWin32)
{
    char full[4096];
    const DWORD length = GetModuleFileNameA(nullptr, full, sizeof(full));
    ASSERT_GT(length, 1u);
    EXPECT_EQ(length, std::strlen(full));
    EXPECT_EQ('/', full[0]);
    EXPECT_EQ(length, GetModuleFileNameA(GetModuleHandleA(nullptr), full, sizeof(full)));

    char cut[5];
    SetLastError(0);
    EXPECT_EQ(5u, GetModuleFileNameA(nullptr, cut, 5));
    EXPECT_EQ(std::string(full, 4), cut);
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(0u, GetModuleFileNameA(nullptr, cut, 0));

    wchar_t wide[4096];
    EXPECT_EQ(length, GetModuleFileNameW(nullptr, wide, 4096));
    EXPECT_EQ(0u, GetModuleFileNameA(reinterpret_cast<HMODULE>(0x1234), full, sizeof(full)));
    EXPECT_EQ(static_cast<DWORD>(ERROR_MOD_NOT_FOUND), GetLastError());
    EXPECT_EQ(nullptr, GetModuleHandleA("other.dll"));
}

TEST_P(PathAndModuleTest, DataModulesNameTheirFile)
{
    m_dir.Write("Res.dll", "MZ");
    HMODULE module = LoadLibraryExA("res.DLL", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(nullptr, module);
    char path[4096];
    ASSERT_GT(GetModuleFileNameA(module, path, sizeof(path)), 0u);
    EXPECT_EQ(m_dir.Folder() + "/Res.dll", path);
    EXPECT_EQ(nullptr, LoadLibraryExA("missing.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE));
    EXPECT_EQ(nullptr, LoadLibraryExA("Res.dll", nullptr, 0));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(0u, GetModuleFileNameA(module, path, sizeof(path)));
}

TEST_P(PathAndModuleTest, FreedModuleStaysInvalidWhenANewModuleTakesItsSlot)
{
    m_dir.Write("Res.dll", "MZ");
    const auto load = [] { return LoadLibraryExA("Res.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE); };
    const HMODULE module = load();
    ASSERT_TRUE(FreeLibrary(module));
    const HMODULE newModule = NewInSlotOf(module, load, FreeLibrary);
    ASSERT_NE(nullptr, newModule);
    char path[4096];
    EXPECT_EQ(0u, GetModuleFileNameA(module, path, sizeof(path)));
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_GT(GetModuleFileNameA(newModule, path, sizeof(path)), 0u);
}

TEST(MemoryFileNames, OneFileWhateverTheSlashesAndDotParts)
{
    QzPlatform::Host::UseMemoryFiles(true);
    QzPlatform::Host::SetMemoryFile("ini/a.txt", "x");
    const struct
    {
        const char* name;
        bool found;
    } cases[] = {{"ini/a.txt", true},   {"./ini/a.txt", true}, {"ini/./a.txt", true},
                 {"ini//a.txt", true},  {"ini\\a.txt", true},  {"ini/a.txt/.", true},
                 {".ini/a.txt", false}, {"ini/.a.txt", false}, {"ini/a.txt.", false},
                 {"ini", false},        {".", false}};
    std::string bytes;
    for (const auto& c : cases)
        EXPECT_EQ(QzPlatform::Host::GetMemoryFile(c.name, &bytes), c.found) << c.name;
    QzPlatform::Host::UseMemoryFiles(false);
}

} // namespace

QZ_ON_DISK_AND_IN_MEMORY(PathAndModuleTest);
