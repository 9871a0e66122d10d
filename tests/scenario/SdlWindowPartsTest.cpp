// The parts of the window mode beside the input: the clipboard shared with the desktop (on SDL's
// dummy video driver, whose clipboard stays in the process), the SDL cursor for a standard
// cursor, and the pictures of cursor files.
#include "CursorImage.h"
#include "HostClipboard.h"
#include "SdlClipboard.h"
#include "SdlCursor.h"

#include <SDL.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace
{

std::string DesktopText()
{
    char* text = SDL_GetClipboardText();
    const std::string copy = text ? text : "";
    SDL_free(text);
    return copy;
}

TEST(SdlWindowParts, TheClipboardCrossesOnlyWhatChanged)
{
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    ASSERT_EQ(0, SDL_InitSubSystem(SDL_INIT_VIDEO)) << SDL_GetError();
    SDL_SetClipboardText("from another program");
    CSdlClipboard clipboard;
    std::string text;
    ASSERT_TRUE(clipboard.TakeNewText(text));
    EXPECT_EQ("from another program", text);
    EXPECT_FALSE(clipboard.TakeNewText(text));
    // Copied in the demo: goes out once, and never comes back in over a newer copy.
    ASSERT_TRUE(WriteHostClipboardText("copied \xE4\xB8\xAD"));
    clipboard.Export();
    EXPECT_EQ("copied \xE4\xB8\xAD", DesktopText());
    EXPECT_FALSE(clipboard.TakeNewText(text));
    SDL_SetClipboardText("newer outside");
    clipboard.Export();
    EXPECT_EQ("newer outside", DesktopText());
    EXPECT_TRUE(clipboard.TakeNewText(text));
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

TEST(SdlWindowParts, StandardCursorsBecomeSdlsOfTheSameShape)
{
    const std::pair<WORD, SDL_SystemCursor> cases[] = {
        {32512, SDL_SYSTEM_CURSOR_ARROW}, {32513, SDL_SYSTEM_CURSOR_IBEAM},
        {32514, SDL_SYSTEM_CURSOR_WAIT},  {32644, SDL_SYSTEM_CURSOR_SIZEWE},
        {32649, SDL_SYSTEM_CURSOR_HAND},  {32650, SDL_SYSTEM_CURSOR_WAITARROW},
        {32651, SDL_SYSTEM_CURSOR_ARROW}, {0, SDL_SYSTEM_CURSOR_ARROW},
    };
    for (const auto& [id, expected] : cases)
        EXPECT_EQ(expected, SdlSystemCursorFor(id)) << id;
}

void Put16(std::vector<uint8_t>& bytes, uint32_t value)
{
    bytes.push_back(static_cast<uint8_t>(value));
    bytes.push_back(static_cast<uint8_t>(value >> 8));
}

void Put32(std::vector<uint8_t>& bytes, uint32_t value)
{
    Put16(bytes, value & 0xFFFF);
    Put16(bytes, value >> 16);
}

// A .cur file of one 32-bit image, width x height, hot spot (hotX, hotY); the top-left pixel
// opaque red, the others half-transparent blue.
std::vector<uint8_t> CurFile(int width, int height, int hotX, int hotY)
{
    std::vector<uint8_t> bytes;
    Put16(bytes, 0);
    Put16(bytes, 2);
    Put16(bytes, 1);
    bytes.insert(bytes.end(), {static_cast<uint8_t>(width), static_cast<uint8_t>(height), 0, 0});
    Put16(bytes, hotX);
    Put16(bytes, hotY);
    const uint32_t size = 40 + static_cast<uint32_t>(width * height * 4);
    Put32(bytes, size);
    Put32(bytes, 22);
    Put32(bytes, 40);
    Put32(bytes, static_cast<uint32_t>(width));
    Put32(bytes, static_cast<uint32_t>(height * 2));
    Put16(bytes, 1);
    Put16(bytes, 32);
    for (int i = 0; i < 6; ++i)
        Put32(bytes, 0);
    for (int y = height - 1; y >= 0; --y)
        for (int x = 0; x < width; ++x)
            Put32(bytes, x == 0 && y == 0 ? 0xFFFF0000 : 0x800000FF);
    return bytes;
}

TEST(SdlWindowParts, CursorFilesGiveTheirPictureAndHotSpot)
{
    CursorImage image;
    ASSERT_TRUE(DecodeCursorImage(CurFile(3, 2, 1, 1), image));
    EXPECT_EQ(3, image.width);
    EXPECT_EQ(2, image.height);
    EXPECT_EQ(1, image.hotX);
    EXPECT_EQ(0xFFFF0000u, image.argb[0]);
    EXPECT_EQ(0x800000FFu, image.argb[5]);
    // A PNG file is read as it is, the hot spot at its corner.
    cairo_surface_t* png = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 4, 5);
    const std::string path = testing::TempDir() + "qzgui-cursor.png";
    ASSERT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(png, path.c_str()));
    cairo_surface_destroy(png);
    ASSERT_TRUE(LoadCursorImage(path, image));
    EXPECT_EQ(4, image.width);
    EXPECT_EQ(0, image.hotY);
    std::remove(path.c_str());
}

TEST(SdlWindowParts, BrokenCursorFilesAreRefused)
{
    std::vector<uint8_t> truncated = CurFile(4, 4, 0, 0);
    truncated.resize(truncated.size() - 1);
    std::vector<uint8_t> farOffset = CurFile(2, 2, 0, 0);
    farOffset[18] = 0xFF;
    std::vector<uint8_t> paletted = CurFile(2, 2, 0, 0);
    paletted[22 + 14] = 8;
    const std::vector<uint8_t> cases[] = {
        {},       truncated,           farOffset,
        paletted, CurFile(0, 2, 0, 0), {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 1},
    };
    for (const std::vector<uint8_t>& bytes : cases)
    {
        CursorImage image;
        EXPECT_FALSE(DecodeCursorImage(bytes, image)) << bytes.size();
    }
    // A bitmap wider than a cursor may be.
    std::vector<uint8_t> wide = CurFile(2, 2, 0, 0);
    wide[22 + 4] = 0x00;
    wide[22 + 5] = 0x10;
    CursorImage image;
    EXPECT_FALSE(DecodeCursorImage(wide, image));
}

} // namespace
