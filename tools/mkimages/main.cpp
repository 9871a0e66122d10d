// qzgui-mkimages OUTDIR: draws every image of the sample bundle with cairo and writes it as a
// PNG file under OUTDIR/images/. No text and no fonts are drawn, so the same cairo gives the
// same bytes on every run and every machine.
#include "CollectionImages.h"
#include "ImageKit.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace
{

using namespace ImageKit;

// ---------------------------------------------------------------------------------------------
// The images

// Nine pieces of a dialog frame, cut from one 48 x 48 drawing: 16 x 16 corners, 16-pixel edges
// and a centre tile. Pieces 0..8 run top-left, top, top-right, left, centre, right,
// bottom-left, bottom, bottom-right. The edges are uniform along their length, so that they
// stretch cleanly.
void MakeDialogPieces()
{
    const int side = 16;
    const auto drawSkin = [](cairo_t* cr)
    {
        SetVerticalGradient(cr, 0, 16, kSkinTitle, kSkinFill);
        RoundedRectPath(cr, 0, 0, 48, 48, 6);
        cairo_fill(cr);
        SetColor(cr, kSkinBorder);
        cairo_set_line_width(cr, 2.0);
        RoundedRectPath(cr, 1, 1, 46, 46, 5);
        cairo_stroke(cr);
        SetColor(cr, kSkinShade);
        cairo_set_line_width(cr, 1.0);
        RoundedRectPath(cr, 2.5, 2.5, 43, 43, 3.5);
        cairo_stroke(cr);
    };
    for (int piece = 0; piece < 9; ++piece)
    {
        const std::string name = "dlg_" + std::to_string(piece) + ".png";
        const int column = piece % 3;
        const int row = piece / 3;
        MakeImage(name.c_str(), side, side,
                  [&](cairo_t* cr)
                  {
                      cairo_translate(cr, -column * side, -row * side);
                      drawSkin(cr);
                  });
    }
}

// Four 96 x 28 frames side by side: normal, pressed, hover, disabled.
void MakeButton()
{
    const int width = 96;
    const int height = 28;
    MakeImage("button.png", width * 4, height,
              [&](cairo_t* cr)
              {
                  DrawFrames(cr, 4, width,
                             [&](cairo_t* frame, int state)
                             {
                                 const uint32_t faces[] = {kButtonFace, kButtonPressed,
                                                           kButtonHover, kDisabledFace};
                                 const uint32_t face = faces[state];
                                 SetVerticalGradient(frame, 0, height, Mix(face, 0xFFFFFFFF, 0.18),
                                                     Mix(face, 0xFF000000, 0.25));
                                 RoundedRectPath(frame, 0, 0, width, height, 4);
                                 cairo_fill(frame);
                                 SetColor(frame, state == 3 ? kDisabledEdge : kSkinBorder);
                                 cairo_set_line_width(frame, 1.0);
                                 RoundedRectPath(frame, 0.5, 0.5, width - 1, height - 1, 3.5);
                                 cairo_stroke(frame);
                                 if (state != 3)
                                     Bevel(frame, 1, 1, width - 2, height - 2, state == 1);
                             });
              });
}

// A tick mark inside an 18 x 18 box.
void DrawTick(cairo_t* cr, uint32_t argb)
{
    SetColor(cr, argb);
    cairo_set_line_width(cr, 2.5);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_move_to(cr, 4.5, 9.5);
    cairo_line_to(cr, 7.5, 13);
    cairo_line_to(cr, 13.5, 5);
    cairo_stroke(cr);
}

// Five 18 x 18 frames: unchecked, checked, hover, disabled, hover-checked.
void MakeCheckBox()
{
    const int side = 18;
    MakeImage("check.png", side * 5, side,
              [&](cairo_t* cr)
              {
                  DrawFrames(cr, 5, side,
                             [&](cairo_t* frame, int state)
                             {
                                 const bool hover = state == 2 || state == 4;
                                 const bool disabled = state == 3;
                                 FillRect(frame, 1, 1, side - 2, side - 2,
                                          disabled ? kDisabledFace : kSkinShade);
                                 OutlineRect(frame, 1, 1, side - 2, side - 2,
                                             disabled ? kDisabledEdge
                                             : hover  ? kHighlight
                                                      : kSkinBorder);
                                 if (hover)
                                     OutlineRect(frame, 2, 2, side - 4, side - 4, 0x60DCE6F5);
                                 if (state == 1 || state == 4)
                                     DrawTick(frame, kCheckMark);
                             });
              });
}

// A plain 200 x 120 panel: flat fill, light border, dark inner line.
void MakePanel()
{
    MakeImage("panel.png", 200, 120,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 200, 120, kSkinFill);
                  OutlineRect(cr, 0, 0, 200, 120, kSkinBorder);
                  OutlineRect(cr, 1, 1, 198, 118, kSkinShade);
              });
}

// One 21 x 21 round face: coloured disc, dark outline, two eyes and a mouth whose curve runs
// from a frown (-1) to a wide smile (1).
void DrawFace(cairo_t* cr, uint32_t color, double smile)
{
    SetColor(cr, color);
    cairo_arc(cr, 10.5, 10.5, 9.5, 0, 2 * kPi);
    cairo_fill_preserve(cr);
    SetColor(cr, 0xFF202020);
    cairo_set_line_width(cr, 1.0);
    cairo_stroke(cr);
    cairo_arc(cr, 7.5, 8, 1.5, 0, 2 * kPi);
    cairo_fill(cr);
    cairo_arc(cr, 13.5, 8, 1.5, 0, 2 * kPi);
    cairo_fill(cr);
    cairo_set_line_width(cr, 1.5);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_move_to(cr, 6.5, 13);
    cairo_curve_to(cr, 8.5, 13 + 3 * smile, 12.5, 13 + 3 * smile, 14.5, 13);
    cairo_stroke(cr);
}

// Eight 21 x 21 faces side by side, each its own colour and expression.
void MakeEmotions()
{
    const uint32_t colors[8] = {0xFFF5D142, 0xFFF59B42, 0xFF8FD16A, 0xFF6AB7D1,
                                0xFFD16AB2, 0xFFE25C5C, 0xFFB0B0B0, 0xFF9C7CE0};
    const double smiles[8] = {1.0, 0.6, 0.3, 0.0, 1.0, -0.8, -0.3, 0.6};
    MakeImage("emotion.png", 21 * 8, 21,
              [&](cairo_t* cr)
              {
                  DrawFrames(cr, 8, 21,
                             [&](cairo_t* frame, int face)
                             { DrawFace(frame, colors[face], smiles[face]); });
              });
}

// A 64 x 64 mask: an opaque disc on a transparent background, hard-edged so that every pixel
// is either in or out.
void MakeRoundMask()
{
    MakeImage("round_mask.png", 64, 64,
              [](cairo_t* cr)
              {
                  cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
                  SetColor(cr, 0xFF4F7FBF);
                  cairo_arc(cr, 32, 32, 31, 0, 2 * kPi);
                  cairo_fill(cr);
              });
}

// Progress bar trough, 200 x 16: dark with a sunken border.
void MakeProgressBack()
{
    MakeImage("progress_back.png", 200, 16,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 200, 16, kSkinShade);
                  OutlineRect(cr, 0, 0, 200, 16, kSkinBorder);
                  Bevel(cr, 0, 0, 200, 16, true);
              });
}

// Progress bar fill, 200 x 16: a green gradient with a highlight along the top.
void MakeProgressFill()
{
    MakeImage("progress_fill.png", 200, 16,
              [](cairo_t* cr)
              {
                  SetVerticalGradient(cr, 0, 16, 0xFF7CE07C, 0xFF2E8B3A);
                  cairo_paint(cr);
                  FillRect(cr, 0, 2, 200, 2, 0x50FFFFFF);
              });
}

// Segmented progress fill, one 36 x 16 segment: the fill gradient with a dark 2-pixel gap at
// its right end, so that whole segments drawn side by side read as blocks.
void MakeProgressSegment()
{
    MakeImage("progress_seg.png", 36, 16,
              [](cairo_t* cr)
              {
                  SetVerticalGradient(cr, 0, 16, 0xFF8CC8FF, 0xFF2E5E9C);
                  cairo_paint(cr);
                  FillRect(cr, 34, 0, 2, 16, kSkinShade);
              });
}

// Vertical progress bar, 16 x 132: a trough and a fill that grows from the bottom.
void MakeVerticalProgress()
{
    MakeImage("progress_vback.png", 16, 132,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 16, 132, kSkinShade);
                  OutlineRect(cr, 0, 0, 16, 132, kSkinBorder);
                  Bevel(cr, 0, 0, 16, 132, true);
              });
    MakeImage("progress_vfill.png", 16, 132,
              [](cairo_t* cr)
              {
                  SetVerticalGradient(cr, 0, 132, 0xFFFFD36B, 0xFFD0602A);
                  cairo_paint(cr);
                  FillRect(cr, 2, 0, 2, 132, 0x50FFFFFF);
              });
}

// Slider track, 200 x 8: a thin sunken groove.
void MakeSliderTrack()
{
    MakeImage("slider_track.png", 200, 8,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 200, 8, kSkinShade);
                  OutlineRect(cr, 0, 0, 200, 8, kSkinBorder);
                  Bevel(cr, 0, 0, 200, 8, true);
              });
}

// Slider thumb: four 12 x 20 frames (normal, pressed, hover, disabled).
void MakeSliderThumb()
{
    const int width = 12;
    const int height = 20;
    MakeImage("slider_thumb.png", width * 4, height,
              [&](cairo_t* cr)
              {
                  DrawFrames(cr, 4, width,
                             [&](cairo_t* frame, int state)
                             {
                                 const uint32_t faces[] = {kButtonFace, kButtonPressed,
                                                           kButtonHover, kDisabledFace};
                                 FillRect(frame, 0, 0, width, height, faces[state]);
                                 OutlineRect(frame, 0, 0, width, height,
                                             state == 3 ? kDisabledEdge : kSkinBorder);
                                 Bevel(frame, 0, 0, width, height, state == 1);
                                 for (int grip = 0; grip < 3; ++grip)
                                     FillRect(frame, 3, 7 + grip * 2.5, width - 6, 1, 0x80FFFFFF);
                             });
              });
}

// Scroll button: four 16 x 16 frames (normal, pressed, hover, disabled) with an arrow that
// points up or down.
void MakeScrollButton(const char* name, bool up)
{
    const int side = 16;
    MakeImage(name, side * 4, side,
              [&](cairo_t* cr)
              {
                  DrawFrames(cr, 4, side,
                             [&](cairo_t* frame, int state)
                             {
                                 const uint32_t faces[] = {kButtonFace, kButtonPressed,
                                                           kButtonHover, kDisabledFace};
                                 FillRect(frame, 0, 0, side, side, faces[state]);
                                 OutlineRect(frame, 0, 0, side, side,
                                             state == 3 ? kDisabledEdge : kSkinBorder);
                                 Bevel(frame, 0, 0, side, side, state == 1);
                                 const double shift = state == 1 ? 1.0 : 0.0;
                                 const double tip = up ? 5.0 : 11.0;
                                 const double base = up ? 10.5 : 5.5;
                                 SetColor(frame, state == 3 ? kDisabledEdge : kHighlight);
                                 cairo_move_to(frame, 8 + shift, tip + shift);
                                 cairo_line_to(frame, 12.5 + shift, base + shift);
                                 cairo_line_to(frame, 3.5 + shift, base + shift);
                                 cairo_close_path(frame);
                                 cairo_fill(frame);
                             });
              });
}

// Mouse cursor, 32 x 32: a white arrow with a black outline, its tip (the hot spot) at (1, 1).
void MakeCursor()
{
    MakeImage("cursor.png", 32, 32,
              [](cairo_t* cr)
              {
                  const double points[][2] = {{1, 1},   {1, 18},   {5.5, 14}, {9, 21.5},
                                              {12, 20}, {8.5, 13}, {14, 13}};
                  cairo_move_to(cr, points[0][0], points[0][1]);
                  for (const auto& point : points)
                      cairo_line_to(cr, point[0], point[1]);
                  cairo_close_path(cr);
                  SetColor(cr, 0xFFFFFFFF);
                  cairo_fill_preserve(cr);
                  SetColor(cr, 0xFF000000);
                  cairo_set_line_width(cr, 1.0);
                  cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
                  cairo_stroke(cr);
              });
}

// Tip background, 100 x 40: a nearly opaque dark box with a light border.
void MakeTip()
{
    MakeImage("tip.png", 100, 40,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 100, 40, 0xE0181C24);
                  OutlineRect(cr, 0, 0, 100, 40, kSkinBorder);
              });
}

} // namespace

// ini/Rgn.dat: the click region of the window [0-203] of the sample layout: its button and its
// label strip, in client coordinates of the host window. Clicks on the rest of the window pass
// through to what lies below. Little-endian: count, then per entry the two identifiers (parent,
// control), the data size, a reserved word and the RGNDATA (32-byte header, then rectangles).
bool MakeClickRegions(const std::string& outDir)
{
    const std::vector<std::vector<int32_t>> rects = {{367, 401, 463, 429}, {340, 440, 490, 460}};
    std::vector<uint32_t> words = {1, 0, 203, 0, 0};
    std::vector<uint32_t> data = {32,
                                  1,
                                  static_cast<uint32_t>(rects.size()),
                                  static_cast<uint32_t>(rects.size() * 16),
                                  340,
                                  401,
                                  490,
                                  460};
    for (const auto& rect : rects)
        data.insert(data.end(), rect.begin(), rect.end());
    words[3] = static_cast<uint32_t>(data.size() * 4);
    words.insert(words.end(), data.begin(), data.end());
    const std::string dir = outDir + "/ini";
    std::error_code error;
    std::filesystem::create_directories(dir, error);
    FILE* file = std::fopen((dir + "/Rgn.dat").c_str(), "wb");
    if (!file)
        return false;
    for (uint32_t word : words)
    {
        const unsigned char bytes[4] = {
            static_cast<unsigned char>(word), static_cast<unsigned char>(word >> 8),
            static_cast<unsigned char>(word >> 16), static_cast<unsigned char>(word >> 24)};
        std::fwrite(bytes, 1, 4, file);
    }
    return std::fclose(file) == 0;
}

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: qzgui-mkimages OUTDIR\n"
                             "Draws the sample bundle's images into OUTDIR/images/ and writes its\n"
                             "click regions to OUTDIR/ini/Rgn.dat.\n");
        return 2;
    }
    const std::string imageDir = std::string(argv[1]) + "/images";
    std::error_code error;
    std::filesystem::create_directories(imageDir, error);
    if (error)
    {
        std::fprintf(stderr, "qzgui-mkimages: cannot create %s: %s\n", imageDir.c_str(),
                     error.message().c_str());
        return 1;
    }
    ImageKit::SetImageDir(imageDir);
    MakeDialogPieces();
    MakeButton();
    MakeCheckBox();
    MakePanel();
    MakeEmotions();
    MakeRoundMask();
    MakeProgressBack();
    MakeProgressFill();
    MakeProgressSegment();
    MakeVerticalProgress();
    MakeSliderTrack();
    MakeSliderThumb();
    MakeScrollButton("scroll_up.png", true);
    MakeScrollButton("scroll_down.png", false);
    MakeCursor();
    MakeTip();
    MakeCollectionImages();
    if (!MakeClickRegions(argv[1]))
    {
        std::fprintf(stderr, "qzgui-mkimages: cannot write %s/ini/Rgn.dat\n", argv[1]);
        return 1;
    }
    return ImageKit::Failed() ? 1 : 0;
}
