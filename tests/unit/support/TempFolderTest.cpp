#include "support/TempFolder.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace
{

namespace fs = std::filesystem;

// Makes a folder with a file in a subfolder, then stops at a failed ASSERT.
void FailWithAFolder(fs::path* made)
{
    const QzTest::TempFolder folder("failing");
    *made = folder.Path();
    fs::create_directory(folder / "sub");
    std::ofstream(folder / "sub/shot.png") << "pixels";
    ASSERT_TRUE(false) << "stops here";
}

} // namespace

TEST(TempFolder, IsMadeInTmpdirAndRemovedWithItsFilesAlsoWhenTheTestFails)
{
    const QzTest::TempFolder outer("outer");
    const char* previous = std::getenv("TMPDIR");
    const std::string saved = previous ? previous : "";
    setenv("TMPDIR", outer.Path().c_str(), 1);
    fs::path inner;
    {
        const QzTest::TempFolder folder("inner");
        inner = folder.Path();
        const QzTest::TempFolder second("inner");
        EXPECT_NE(inner, second.Path());
    }
    static fs::path failed;
    EXPECT_FATAL_FAILURE(FailWithAFolder(&failed), "stops here");
    if (previous)
        setenv("TMPDIR", saved.c_str(), 1);
    else
        unsetenv("TMPDIR");

    EXPECT_EQ(outer.Path(), inner.parent_path());
    EXPECT_EQ(0u, inner.filename().string().rfind("qzgui-inner-", 0)) << inner;
    EXPECT_EQ(outer.Path(), failed.parent_path());
    EXPECT_TRUE(fs::is_empty(outer.Path()));
}
