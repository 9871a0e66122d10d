#include "DemoScene.h"

#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzTextDraw.h"
#include "platform/system/QzCodePage.h"

#include <cstdio>

namespace
{

const char* const kAniFile = "ani/Control.ani";
const int kPanelX = 40;
const int kPanelY = 40;
const int kButtonX = kPanelX + 30;
const int kButtonY = kPanelY + 70;
const int kButtonWidth = 96;
const int kButtonHeight = 28;
const int kButtonGap = 110;
const int kCheckX = kPanelX + 30;
const int kCheckY = kPanelY + 120;
const int kMaskX = kPanelX + 580;
const int kMaskY = kPanelY + 70;

IDataAni* Section(const char* name)
{
    return TableDataSetQuery()->GetAni(kAniFile, name, 0, 30000, 0);
}

// Draws narrow text given in UTF-8 source form: the library's texts are ANSI code page bytes.
void Text(int x, int y, DWORD colour, const char* utf8, int size = 14)
{
    std::string ansi = QzPlatform::Utf8ToAnsi(utf8);
    QzPlatform::DrawGameText(x, y, colour, ansi.c_str(), nullptr, size, TRUE, 0, 0xFF000000,
                             nullptr);
}

bool InRect(const POINT& pt, int x, int y, int width, int height)
{
    return pt.x >= x && pt.y >= y && pt.x < x + width && pt.y < y + height;
}

} // namespace

CDemoScene::CDemoScene() = default;

LRESULT CDemoScene::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_MOUSEMOVE:
        m_ptMouse = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        return 1;
    case WM_LBUTTONDOWN:
        m_ptMouse = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        m_bButtonDown = true;
        return 1;
    case WM_LBUTTONUP:
        m_ptMouse = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        if (m_bButtonDown && IsOnButton(0))
            ++m_nClicks;
        if (m_bButtonDown && InRect(m_ptMouse, kCheckX, kCheckY, 18, 18))
            m_bChecked = !m_bChecked;
        m_bButtonDown = false;
        return 1;
    case WM_CHAR:
        if (wParam == VK_BACK && !m_strTyped.empty())
            m_strTyped.pop_back();
        else if (wParam >= 32)
            m_strTyped.push_back(static_cast<wchar_t>(wParam));
        return 1;
    default:
        return 0;
    }
}

bool CDemoScene::IsOnButton(int index) const
{
    return InRect(m_ptMouse, kButtonX + index * kButtonGap, kButtonY, kButtonWidth, kButtonHeight);
}

void CDemoScene::Draw()
{
    DrawSkinnedPanel(kPanelX, kPanelY, 680, 300);
    Text(kPanelX + 20, kPanelY + 20, 0xFFFFFFFF, "QzGui sample bundle", 18);
    DrawButtonRow(kButtonX, kButtonY);
    DrawCheckRow(kCheckX, kCheckY);
    DrawTexts(kPanelX + 30, kPanelY + 160);
    DrawMaskTest(kMaskX, kMaskY);
    DrawPointer();
}

// Nine pieces of the dialog skin: corners at their size, edges and centre stretched between.
void CDemoScene::DrawSkinnedPanel(int x, int y, int width, int height)
{
    IDataAni* skin = Section("DialogSkin");
    if (!skin || skin->GetFrameCount() < 9)
        return;
    C3_SIZE corner = {0, 0};
    skin->GetAniSize(corner, 0);
    const int cw = corner.iWidth;
    const int ch = corner.iHeight;
    const int xs[3] = {x, x + cw, x + width - cw};
    const int ys[3] = {y, y + ch, y + height - ch};
    const int ws[3] = {cw, width - 2 * cw, cw};
    const int hs[3] = {ch, height - 2 * ch, ch};
    for (int piece = 0; piece < 9; ++piece)
    {
        const int column = piece % 3;
        const int row = piece / 3;
        skin->ShowAniEx(piece, xs[column], ys[row], nullptr, ws[column], hs[row]);
    }
}

// The button section's four looks; the first button follows the mouse like a real one.
void CDemoScene::DrawButtonRow(int x, int y)
{
    IDataAni* button = Section("Button");
    if (!button)
        return;
    const char* const labels[4] = {"Click me", "Pressed", "Hover", "Disabled"};
    for (int i = 0; i < 4; ++i)
    {
        int frame = i;
        if (i == 0)
            frame = IsOnButton(0) ? (m_bButtonDown ? 1 : 2) : 0;
        const int left = x + i * kButtonGap;
        button->ShowAni(frame % button->GetFrameCount(), left, y);
        C3_SIZE extent = CMyBitmap::CalcuTextExtent(labels[i], nullptr, 14);
        Text(left + (kButtonWidth - extent.iWidth) / 2, y + 7, 0xFFFFFFFF, labels[i]);
    }
    char clicks[64];
    std::snprintf(clicks, sizeof(clicks), "Clicks: %d", m_nClicks);
    Text(x + 4 * kButtonGap, y + 7, 0xFFFFE080, clicks);
}

void CDemoScene::DrawCheckRow(int x, int y)
{
    IDataAni* check = Section("CheckBox");
    if (!check)
        return;
    const bool hover = InRect(m_ptMouse, x, y, 18, 18);
    const int frame = hover ? (m_bChecked ? 4 : 2) : (m_bChecked ? 1 : 0);
    check->ShowAni(frame % check->GetFrameCount(), x, y);
    Text(x + 26, y + 1, 0xFFFFFFFF, m_bChecked ? "Checked" : "Not checked");
}

// Latin and Chinese captions, emotion codes drawn as icons, and what the keyboard typed.
void CDemoScene::DrawTexts(int x, int y)
{
    Text(x, y, 0xFFFFFFFF, "Captions: Latin text and 中文字符 side by side");
    std::string emotion = QzPlatform::Utf8ToAnsi("Emotion codes #01 #02 and #02|03 in 文本 #05");
    CMyBitmap::ShowEmotionStringEx(x, y + 28, 0xFFFFFFFF, emotion.c_str(),
                                   TableDataSetQuery()->GetIconSet(0), nullptr, 14);
    std::string typed = "Typed: " + QzPlatform::WideToUtf8(m_strTyped) + "_";
    Text(x, y + 64, 0xFF80FF80, typed.c_str());
}

// A round button whose mask section decides hits: corners of its square are misses.
void CDemoScene::DrawMaskTest(int x, int y)
{
    IDataAni* round = Section("RoundButton");
    IDataAni* mask = TableDataSetQuery()->GetAni(kAniFile, "RoundButton_MSK", 1, 30000, 0);
    if (!round || !mask)
        return;
    round->ShowAni(0, x, y);
    IDataFrame* frame = mask->GetFrame(0);
    const bool inside = InRect(m_ptMouse, x, y, 64, 64);
    const bool hit = inside && frame && frame->GetKind() == 2 &&
                     !frame->IsTransparentAt(m_ptMouse.x - x, m_ptMouse.y - y);
    Text(x - 10, y + 72, hit ? 0xFF80FF80 : 0xFFB0B0B0, hit ? "Mask: hit" : "Mask: miss");
}

void CDemoScene::DrawPointer()
{
    IDataAni* cursor = Section("Cursor_Normal");
    if (cursor)
        cursor->ShowAni(0, m_ptMouse.x - 1, m_ptMouse.y - 1);
}
