// The window mode's clipboard shared with the desktop (on SDL's dummy video driver, whose
// clipboard stays in the process) and the pictures of cursor files.
#include "CursorImage.h"
#include "HostClipboard.h"
#include "SdlClipboard.h"

#include <SDL.h>
#include <gtest/gtest.h>

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

// A .cur file of one 32-bit image, 3 x 2 pixels, hot spot (1, 1): the top-left pixel opaque red,
// the others half-transparent blue. Fields are little-endian.
std::vector<uint8_t> CurFile()
{
    std::vector<uint8_t> bytes = {0, 0, 2, 0,  1, 0, 3, 2, 0, 0, 1, 0, 1, 0, 64, 0, 0, 0,  22,
                                  0, 0, 0, 40, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0,  1, 0, 32, 0};
    bytes.resize(22 + 40);
    for (int pixel = 0; pixel < 6; ++pixel)
    {
        const uint32_t argb = pixel == 3 ? 0xFFFF0000 : 0x800000FF; // rows from the bottom
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<uint8_t>(argb >> shift));
    }
    return bytes;
}

TEST(SdlWindowParts, CursorFilesGiveTheirPictureOrNothing)
{
    CursorImage image;
    ASSERT_TRUE(DecodeCursorImage(CurFile(), image));
    EXPECT_EQ(3, image.width);
    EXPECT_EQ(2, image.height);
    EXPECT_EQ(1, image.hotX);
    EXPECT_EQ(0xFFFF0000u, image.argb[0]);
    EXPECT_EQ(0x800000FFu, image.argb[5]);
    auto broken = [](size_t at, uint8_t value)
    {
        std::vector<uint8_t> bytes = CurFile();
        bytes[at] = value;
        return bytes;
    };
    std::vector<uint8_t> truncated = CurFile();
    truncated.pop_back();
    const std::vector<uint8_t> cases[] = {
        {},
        truncated,
        broken(2, 1),       // an icon, not a cursor
        broken(21, 0x7F),   // the image far beyond the file
        broken(22 + 14, 8), // a paletted bitmap
        broken(22 + 5, 1),  // 259 pixels wide
        broken(22 + 8, 0),  // no height
        {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0},
    };
    for (const std::vector<uint8_t>& bytes : cases)
        EXPECT_FALSE(DecodeCursorImage(bytes, image)) << bytes.size();
}

} // namespace
