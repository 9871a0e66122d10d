#include "CMonkeyLayout.h"

#include <cstring>

namespace QzMonkey
{

namespace
{

using K = CtrlKind;
constexpr int kHide = static_cast<int>(ClickAction::HideDialog);
constexpr int kRemove = static_cast<int>(ClickAction::RemoveDialog);

const DialogDesc kDialogs[CMonkeyLayout::kAddresses] = {
    {1,
     -1,
     {20, 20, 420, 320},
     "Style=1\nAniSection=Panel\nBackShowMode=1\n",
     {{1, K::Button, {10, 10, 80, 22}, "AniSection=Four\nTipText=first\\bsecond\n", {}},
      {2, K::Check, {10, 40, 80, 18}, "AniSection=Four\n", {}},
      {3, K::Static, {100, 10, 100, 20}, "Title=static\n", {}},
      {4, K::Image, {100, 40, 64, 32}, "AniSection=Four\n", {}},
      {5, K::Slider, {10, 70, 212, 20}, "AniSection=Four\nSliderBtnLen=12\n", {0}},
      {6, K::Slider, {390, 10, 20, 200}, "AniSection=Four\n", {1}},
      {7, K::ScrollButton, {230, 70, 16, 16}, "AniSection=Four\n", {0}},
      {8, K::ScrollButton, {250, 70, 16, 16}, "AniSection=Four\n", {3}},
      {9, K::Progress, {10, 100, 200, 16}, "AniSection=Three\n", {1}},
      {10, K::Progress, {10, 120, 216, 16}, "AniSection=Three\nProgressStyle=2\n", {2}},
      {11, K::Marquee, {10, 145, 300, 20}, "WHLMoveRate=1\nWHLMoveLength=8\n", {}}}},
    {2,
     -1,
     {460, 20, 460, 260},
     "",
     {{1, K::List, {10, 10, 217, 200}, "AniSection=Four\nItemHeight=18\n", {2, 3, 4}},
      {2, K::ScrollButton, {210, 10, 16, 16}, "AniSection=Four\n", {}},
      {3, K::ScrollButton, {210, 190, 16, 16}, "AniSection=Four\n", {}},
      {4, K::Slider, {210, 30, 16, 150}, "AniSection=Four\n", {}},
      {5, K::Tree, {240, 10, 190, 200}, "ItemHeight=18\nSelBackAni=Four\n", {6, 7, 8}},
      {6, K::ScrollButton, {432, 10, 16, 16}, "AniSection=Four\n", {}},
      {7, K::ScrollButton, {432, 190, 16, 16}, "AniSection=Four\n", {}},
      {8, K::Slider, {432, 30, 16, 150}, "AniSection=Four\n", {}},
      {9, K::Grid, {10, 215, 200, 40}, "GridSpaceX=1\nGridSpaceY=1\n", {}}}},
    {3,
     -1,
     {20, 360, 420, 260},
     "Style=1\n",
     {{1, K::Edit, {10, 10, 200, 24}, "", {0}},
      {2, K::Edit, {10, 40, 200, 100}, "", {1}},
      {3, K::Edit, {10, 150, 200, 24}, "", {2}},
      {4, K::EditEx, {220, 10, 190, 24}, "", {0}},
      {5, K::EditEx, {220, 40, 190, 150}, "", {1}}}},
    {4,
     -1,
     {300, 200, 220, 150},
     "Topmost=1\nAniSection=Panel\nBackShowMode=3\n",
     {{1, K::Button, {10, 10, 80, 22}, "AniSection=Four\nTipText=top\n", {}},
      {2, K::Check, {10, 40, 80, 18}, "AniSection=Four\n", {}}}},
    {5,
     -1,
     {600, 320, 300, 200},
     "Style=1\nFlyDir=2\nFlyInStep=40\nFlyOutStep=40\nAniSection=Panel\nBackShowMode=3\n",
     {{1, K::Button, {270, 5, 20, 20}, "AniSection=Four\n", {kHide}},
      {2, K::Button, {10, 10, 80, 22}, "AniSection=Four\n", {kRemove}},
      {3, K::Slider, {10, 50, 212, 20}, "AniSection=Four\nSliderBtnLen=12\n", {0}}}},
    {6,
     -1,
     {480, 500, 260, 160},
     "ClickToTop=0\n",
     {{1, K::Button, {10, 10, 80, 22}, "AniSection=Four\n", {}},
      {2, K::Static, {10, 40, 120, 20}, "Title=pinned\n", {}},
      {3, K::Edit, {10, 70, 200, 24}, "", {0}}}},
    {11,
     0,
     {10, 170, 180, 120},
     "Style=1\n",
     {{21, K::Button, {5, 5, 60, 20}, "AniSection=Four\n", {}},
      {22, K::Check, {5, 40, 60, 18}, "AniSection=Four\n", {}}}},
    {12,
     0,
     {200, 170, 180, 120},
     "",
     {{21, K::Button, {5, 5, 60, 20}, "AniSection=Four\n", {kHide}}}},
};

std::string Place(Box box, int dx, int dy, int dw)
{
    return "x=" + std::to_string(box.x + dx) + "\ny=" + std::to_string(box.y + dy) +
           "\nw=" + std::to_string(box.w + dw) + "\nh=" + std::to_string(box.h) + "\n";
}

std::string Section(DWORD nParent, DWORD nId)
{
    return "[" + std::to_string(nParent) + "-" + std::to_string(nId) + "]\n";
}

// The dialog's attributes, with the topmost one moved in variant 3.
std::string DialogExtras(const DialogDesc& dialog, int nVariant)
{
    std::string extras = dialog.pszExtras;
    if (nVariant != 3)
        return extras;
    const size_t topmost = extras.find("Topmost=1\n");
    if (topmost != std::string::npos)
        extras.erase(topmost, std::strlen("Topmost=1\n"));
    if (dialog.nId == 6)
        extras += "Topmost=1\n";
    return extras;
}

void AppendDialog(std::string& text, const DialogDesc& dialog, int nVariant)
{
    if (nVariant == 2 && dialog.nId == 12)
        return;
    const bool bMoved = nVariant == 1 && dialog.nParentSlot < 0;
    text += Section(0, dialog.nId) + Place(dialog.box, bMoved ? 30 : 0, bMoved ? 15 : 0, 0) +
            DialogExtras(dialog, nVariant);
    const int dw = nVariant == 1 ? 8 : 0;
    for (const CtrlDesc& ctrl : dialog.ctrls)
    {
        if (nVariant == 2 && ctrl.nId == 3)
            continue;
        text += Section(dialog.nId, ctrl.nId) + Place(ctrl.box, 0, 0, dw) + ctrl.pszExtras;
    }
    if (nVariant == 2)
        return;
    for (int slot = 0; slot < CMonkeyLayout::kSpawnSlots; ++slot)
    {
        const Box box = {20 + 40 * slot, 30 + 10 * slot, 60, 24};
        text += Section(dialog.nId, CMonkeyLayout::kFirstSpawnId + slot) + Place(box, 0, 0, dw) +
                "AniSection=Four\n";
    }
}

} // namespace

const DialogDesc& CMonkeyLayout::Dialog(int nAddress)
{
    return kDialogs[static_cast<unsigned>(nAddress) % kAddresses];
}

std::string CMonkeyLayout::Text(int nVariant)
{
    std::string text;
    for (const DialogDesc& dialog : kDialogs)
        AppendDialog(text, dialog, nVariant);
    return text;
}

const char* CMonkeyLayout::AniText()
{
    return "[Panel]\nFrameAmount=1\nFrame0=panel.png\n"
           "[Four]\nFrameAmount=4\nFrame0=f_12x20.png\nFrame1=f_12x20.png\n"
           "Frame2=f_12x20.png\nFrame3=f_12x20.png\n"
           "[Three]\nFrameAmount=3\nFrame0=fill_200x132.png\nFrame1=back.png\n"
           "Frame2=front.png\n"
           "[News_TreeControl]\nFrameAmount=4\nFrame0=m_12x12.png\n"
           "Frame1=m_12x12.png\nFrame2=m_12x12.png\nFrame3=m_12x12.png\n"
           "[Pack_OrdinaryItemTipsBG]\nFrameAmount=9\nFrame0=t_20x20.png\n"
           "Frame1=t_20x20.png\nFrame2=t_20x20.png\nFrame3=t_20x20.png\n"
           "Frame4=t_20x20.png\nFrame5=t_20x20.png\nFrame6=t_20x20.png\n"
           "Frame7=t_20x20.png\nFrame8=t_20x20.png\n"
           "[Emotion_01]\nFrameAmount=1\nFrame0=e_20x20.png\n"
           "[Emotion_02_03]\nFrameAmount=1\nFrame0=e_20x20.png\n";
}

} // namespace QzMonkey
