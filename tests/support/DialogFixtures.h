// The PE files with dialog templates that the build makes from tests/fixtures/dialogs/*.rc with
// the mingw-w64 tools: dialogs64.dll (PE32+) and dialogs32.dll (PE32). A test that needs one
// skips, saying why, when the tools were not there to build it.
//
// Templates: 101 the plain login dialog (10, 20, 200 x 120, title and font, controls 1000
// static "名字:", 1001 edit, 1002 list box, 1003 progress, 1004 tree, IDOK "确定", IDCANCEL
// "取消"); 102 a plain dialog with a menu ordinal, a class name, an icon with a title ordinal, a
// hidden item, an item outside the dialog and an IDC_STATIC item; 201 an extended dialog with a
// shell font, help identifiers, extended styles, every predefined class and creation data;
// "SETTINGS" (plain) and "ABOUT" (extended) named dialogs.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace QzTest
{

inline std::string DialogFixturePath(const char* pszName)
{
    return std::string(QZGUI_BINARY_DIR) + "/tests/fixtures/dialogs/" + pszName;
}

} // namespace QzTest

// Skips the test when the fixture was not built.
#define QZ_REQUIRE_DIALOG_FIXTURE(path)                                                            \
    do                                                                                             \
    {                                                                                              \
        if (!std::filesystem::exists(path))                                                        \
            GTEST_SKIP() << "dialog fixture " << (path)                                            \
                         << " not built: the mingw-w64 resource compiler and linker "              \
                            "(x86_64-w64-mingw32-windres, -gcc or -ld) were not found";            \
    } while (0)
