// The images of the sample client's collections window: the bag's slots, items, mask, mark and
// glow, the quest tree's markers and selection bar, the chat list's hover bar and mark, and the
// nine pieces of the row tip frame.
#include "CollectionImages.h"

#include "ImageKit.h"

#include <cmath>

namespace
{

using namespace ImageKit;

constexpr int kItemSide = 32;
constexpr uint32_t kGold = 0xFFE8C04A;

// A slot of the bag, 40 x 40: a sunken dark square.
void MakeBagSlot()
{
    MakeImage("bag_slot.png", 40, 40,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 40, 40, kSkinShade);
                  OutlineRect(cr, 0, 0, 40, 40, 0xFF56637A);
                  Bevel(cr, 0, 0, 40, 40, true);
              });
}

void DrawSword(cairo_t* cr)
{
    SetColor(cr, 0xFFD8DEE8);
    cairo_move_to(cr, 26, 4);
    cairo_line_to(cr, 29, 3);
    cairo_line_to(cr, 28, 6);
    cairo_line_to(cr, 12, 22);
    cairo_line_to(cr, 10, 20);
    cairo_close_path(cr);
    cairo_fill(cr);
    FillRect(cr, 7, 19, 8, 3, kGold);
    cairo_save(cr);
    cairo_translate(cr, 11, 21);
    cairo_rotate(cr, kPi / 4);
    FillRect(cr, -1.5, 0, 3, 8, 0xFF7A4A24);
    cairo_restore(cr);
}

void DrawPotion(cairo_t* cr)
{
    FillRect(cr, 13, 4, 6, 6, 0xFFB0B8C8);
    cairo_arc(cr, 16, 19, 9, 0, 2 * kPi);
    SetVerticalGradient(cr, 10, 28, 0xFFFF6A6A, 0xFFA01C2C);
    cairo_fill(cr);
    FillRect(cr, 11, 14, 3, 5, 0x90FFFFFF);
}

void DrawShield(cairo_t* cr)
{
    cairo_move_to(cr, 6, 5);
    cairo_line_to(cr, 26, 5);
    cairo_line_to(cr, 26, 16);
    cairo_curve_to(cr, 26, 23, 20, 27, 16, 29);
    cairo_curve_to(cr, 12, 27, 6, 23, 6, 16);
    cairo_close_path(cr);
    SetVerticalGradient(cr, 5, 29, 0xFF5A8AD8, 0xFF22407A);
    cairo_fill_preserve(cr);
    SetColor(cr, kGold);
    cairo_set_line_width(cr, 2);
    cairo_stroke(cr);
}

void DrawGem(cairo_t* cr)
{
    cairo_move_to(cr, 16, 4);
    cairo_line_to(cr, 27, 13);
    cairo_line_to(cr, 16, 28);
    cairo_line_to(cr, 5, 13);
    cairo_close_path(cr);
    SetVerticalGradient(cr, 4, 28, 0xFF9CFFB8, 0xFF1E8A4A);
    cairo_fill(cr);
    FillRect(cr, 10, 12, 12, 1, 0x80FFFFFF);
}

void DrawScroll(cairo_t* cr)
{
    FillRect(cr, 7, 8, 18, 16, 0xFFEAD9A8);
    FillRect(cr, 5, 6, 22, 3, 0xFFB08A4A);
    FillRect(cr, 5, 23, 22, 3, 0xFFB08A4A);
    for (int line = 0; line < 3; ++line)
        FillRect(cr, 10, 12 + line * 4, 12, 1, 0xFF7A6440);
}

// Five item icons of 32 x 32 side by side: sword, potion, shield, gem, scroll.
void MakeItems()
{
    MakeImage("bag_items.png", kItemSide * 5, kItemSide,
              [](cairo_t* cr)
              {
                  const auto draws = {DrawSword, DrawPotion, DrawShield, DrawGem, DrawScroll};
                  int index = 0;
                  for (auto draw : draws)
                  {
                      cairo_save(cr);
                      cairo_translate(cr, index++ * kItemSide, 0);
                      draw(cr);
                      cairo_restore(cr);
                  }
              });
}

// The mask of a disabled slot, 40 x 40: dark glass with a red bar across.
void MakeBagMask()
{
    MakeImage("bag_mask.png", 40, 40,
              [](cairo_t* cr)
              {
                  FillRect(cr, 0, 0, 40, 40, 0xA0101010);
                  SetColor(cr, 0xE0D03030);
                  cairo_set_line_width(cr, 3);
                  cairo_move_to(cr, 8, 32);
                  cairo_line_to(cr, 32, 8);
                  cairo_stroke(cr);
              });
}

// The mark of a chosen slot, 40 x 40: a gold frame.
void MakeBagMark()
{
    MakeImage("bag_mark.png", 40, 40,
              [](cairo_t* cr)
              {
                  SetColor(cr, kGold);
                  cairo_set_line_width(cr, 2);
                  cairo_rectangle(cr, 1, 1, 38, 38);
                  cairo_stroke(cr);
              });
}

// A slot's glow effect: four 40 x 40 frames of a ring that swells and fades.
void MakeBagGlow()
{
    MakeImage("bag_glow.png", 40 * 4, 40,
              [](cairo_t* cr)
              {
                  DrawFrames(cr, 4, 40,
                             [](cairo_t* frame, int index)
                             {
                                 cairo_arc(frame, 20, 20, 10 + index * 2.5, 0, 2 * kPi);
                                 SetColor(frame, Mix(0xE0FFE890, 0x30FFE890, index / 3.0));
                                 cairo_set_line_width(frame, 3);
                                 cairo_stroke(frame);
                             });
              });
}

// Markers and check marks of the quest tree, four 12 x 12 frames: collapsed (+), expanded (-),
// checked, unchecked.
void MakeTreeMarks()
{
    MakeImage("tree_marks.png", 12 * 4, 12,
              [](cairo_t* cr)
              {
                  DrawFrames(cr, 4, 12,
                             [](cairo_t* frame, int index)
                             {
                                 FillRect(frame, 0, 0, 12, 12, kSkinShade);
                                 OutlineRect(frame, 0, 0, 12, 12, kSkinBorder);
                                 if (index < 2)
                                 {
                                     FillRect(frame, 3, 5.5, 6, 1, kHighlight);
                                     if (index == 0)
                                         FillRect(frame, 5.5, 3, 1, 6, kHighlight);
                                     return;
                                 }
                                 if (index == 3)
                                     return;
                                 SetColor(frame, kCheckMark);
                                 cairo_set_line_width(frame, 2);
                                 cairo_move_to(frame, 2.5, 6);
                                 cairo_line_to(frame, 5, 9);
                                 cairo_line_to(frame, 9.5, 3);
                                 cairo_stroke(frame);
                             });
              });
}

// A bar under a row, 200 x 16, in the given colour fading to the right.
void MakeRowBar(const char* name, uint32_t argb)
{
    MakeImage(name, 200, 16,
              [argb](cairo_t* cr)
              {
                  cairo_pattern_t* pattern = cairo_pattern_create_linear(0, 0, 200, 0);
                  const double red = ((argb >> 16) & 0xFF) / 255.0;
                  const double green = ((argb >> 8) & 0xFF) / 255.0;
                  const double blue = (argb & 0xFF) / 255.0;
                  cairo_pattern_add_color_stop_rgba(pattern, 0, red, green, blue,
                                                    (argb >> 24) / 255.0);
                  cairo_pattern_add_color_stop_rgba(pattern, 1, red, green, blue, 0);
                  cairo_set_source(cr, pattern);
                  cairo_paint(cr);
                  cairo_pattern_destroy(pattern);
              });
}

// The star that marks a chat row, 12 x 12.
void MakeChatStar()
{
    MakeImage("chat_star.png", 12, 12,
              [](cairo_t* cr)
              {
                  for (int point = 0; point < 10; ++point)
                  {
                      const double radius = point % 2 ? 2.5 : 6;
                      const double angle = -kPi / 2 + point * kPi / 5;
                      cairo_line_to(cr, 6 + radius * std::cos(angle), 6 + radius * std::sin(angle));
                  }
                  cairo_close_path(cr);
                  SetColor(cr, kGold);
                  cairo_fill(cr);
              });
}

// The row tip's frame: nine 20 x 20 pieces side by side (top-left, top, top-right, left, centre,
// right, bottom-left, bottom, bottom-right), each stretched to its place by the list.
void MakeTipPieces()
{
    MakeImage("tip_pieces.png", 20 * 9, 20,
              [](cairo_t* cr)
              {
                  DrawFrames(cr, 9, 20,
                             [](cairo_t* frame, int piece)
                             {
                                 FillRect(frame, 0, 0, 20, 20, 0xE8181C24);
                                 const int column = piece % 3;
                                 const int row = piece / 3;
                                 if (row == 0)
                                     FillRect(frame, 0, 0, 20, 2, kGold);
                                 if (row == 2)
                                     FillRect(frame, 0, 18, 20, 2, kGold);
                                 if (column == 0)
                                     FillRect(frame, 0, 0, 2, 20, kGold);
                                 if (column == 2)
                                     FillRect(frame, 18, 0, 2, 20, kGold);
                             });
              });
}

} // namespace

void MakeCollectionImages()
{
    MakeBagSlot();
    MakeItems();
    MakeBagMask();
    MakeBagMark();
    MakeBagGlow();
    MakeTreeMarks();
    MakeRowBar("quest_sel.png", 0xC05A7099);
    MakeRowBar("chat_hover.png", 0x904A80C0);
    MakeRowBar("chat_mark.png", 0x80E8C04A);
    MakeChatStar();
    MakeTipPieces();
}
