#include "ShowcaseDialog.h"

#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzTextDraw.h"
#include "platform/system/text/QzCodePage.h"

#include <cstdio>

namespace
{

const char* const kAniFile = "ani/Control.ani";
// Places inside the dialog.
const int kButtonX = 30;
const int kButtonY = 70;
const int kButtonWidth = 96;
const int kButtonHeight = 28;
const int kButtonGap = 110;
const int kCheckX = 30;
const int kCheckY = 120;
const int kCheckSide = 18;
const int kTextsY = 160;
const int kMaskX = 580;
const int kMaskY = 70;

IDataAni* Section(const char* name, int flag = 0)
{
    return TableDataSetQuery()->GetAni(kAniFile, name, flag, 30000, 0);
}

// Texts of this file are UTF-8; the library's narrow texts are ANSI code page bytes.
void Text(int x, int y, DWORD colour, const char* utf8, int size = 14)
{
    const std::string ansi = QzPlatform::Utf8ToAnsi(utf8);
    QzPlatform::DrawGameText(x, y, colour, ansi.c_str(), nullptr, size, TRUE, 0, 0xFF000000,
                             nullptr);
}

bool InRect(POINT pt, int x, int y, int width, int height)
{
    return pt.x >= x && pt.y >= y && pt.x < x + width && pt.y < y + height;
}

} // namespace

CShowcaseDialog::CShowcaseDialog() : CQzDialog(kId, nullptr) {}

POINT CShowcaseDialog::ToLocal(POINT client) const
{
    return {client.x - GetX(), client.y - GetY()};
}

bool CShowcaseDialog::IsOnButton(POINT local) const
{
    return InRect(local, kButtonX, kButtonY, kButtonWidth, kButtonHeight);
}

bool CShowcaseDialog::IsOnCheck(POINT local) const
{
    return InRect(local, kCheckX, kCheckY, kCheckSide, kCheckSide);
}

void CShowcaseDialog::OnLButtonDown(UINT nFlags, POINT point)
{
    m_ptMouse = ToLocal(point);
    // A press on the button is the button's, not the start of a drag of the window.
    m_bButtonDown = IsOnButton(m_ptMouse);
    if (m_bButtonDown || IsOnCheck(m_ptMouse))
        m_bDragging = false;
}

void CShowcaseDialog::OnLButtonUp(UINT nFlags, POINT point)
{
    m_ptMouse = ToLocal(point);
    if (m_bButtonDown && IsOnButton(m_ptMouse))
        ++m_nClicks;
    if (IsOnCheck(m_ptMouse))
        m_bChecked = !m_bChecked;
    m_bButtonDown = false;
}

void CShowcaseDialog::OnMouseMove(UINT nFlags, POINT point)
{
    m_ptMouse = ToLocal(point);
}

void CShowcaseDialog::OnMouseLeave()
{
    m_ptMouse = {-1000, -1000};
}

void CShowcaseDialog::OnChar(wchar_t ch)
{
    if (ch == VK_BACK && !m_strTyped.empty())
        m_strTyped.pop_back();
    else if (ch >= 32)
        m_strTyped.push_back(ch);
}

void CShowcaseDialog::OnAfterDraw()
{
    const int x = GetX();
    const int y = GetY();
    Text(x + 20, y + 20, 0xFFFFFFFF, "QzGui sample bundle", 18);
    DrawButtonRow(x + kButtonX, y + kButtonY);
    DrawCheckRow(x + kCheckX, y + kCheckY);
    DrawTexts(x + 30, y + kTextsY);
    DrawMaskTest(x + kMaskX, y + kMaskY);
}

// The button section's four looks; the first button follows the mouse like a real one.
void CShowcaseDialog::DrawButtonRow(int x, int y)
{
    IDataAni* button = Section("Button");
    if (!button || button->GetFrameCount() == 0)
        return;
    const char* const labels[4] = {"Click me", "Pressed", "Hover", "Disabled"};
    for (int i = 0; i < 4; ++i)
    {
        int frame = i;
        if (i == 0)
            frame = IsOnButton(m_ptMouse) ? (m_bButtonDown ? 1 : 2) : 0;
        const int left = x + i * kButtonGap;
        button->ShowAni(frame % button->GetFrameCount(), left, y);
        const C3_SIZE extent = CMyBitmap::CalcuTextExtent(labels[i], nullptr, 14);
        Text(left + (kButtonWidth - extent.iWidth) / 2, y + 7, 0xFFFFFFFF, labels[i]);
    }
    char clicks[64];
    std::snprintf(clicks, sizeof(clicks), "Clicks: %d", m_nClicks);
    Text(x + 4 * kButtonGap, y + 7, 0xFFFFE080, clicks);
}

void CShowcaseDialog::DrawCheckRow(int x, int y)
{
    IDataAni* check = Section("CheckBox");
    if (!check || check->GetFrameCount() == 0)
        return;
    const bool hover = IsOnCheck(m_ptMouse);
    const int frame = hover ? (m_bChecked ? 4 : 2) : (m_bChecked ? 1 : 0);
    check->ShowAni(frame % check->GetFrameCount(), x, y);
    Text(x + 26, y + 1, 0xFFFFFFFF, m_bChecked ? "Checked" : "Not checked");
}

// Latin and Chinese captions, emotion codes drawn as icons, and what the keyboard typed.
void CShowcaseDialog::DrawTexts(int x, int y)
{
    Text(x, y, 0xFFFFFFFF, "Captions: Latin text and 中文字符 side by side");
    const std::string emotion =
        QzPlatform::Utf8ToAnsi("Emotion codes #01 #02 and #02|03 in 文本 #05");
    CMyBitmap::ShowEmotionStringEx(x, y + 28, 0xFFFFFFFF, emotion.c_str(),
                                   TableDataSetQuery()->GetIconSet(0), nullptr, 14);
    const std::string typed = "Typed: " + QzPlatform::WideToUtf8(m_strTyped) + "_";
    Text(x, y + 64, 0xFF80FF80, typed.c_str());
}

// A round button whose mask section decides hits: the corners of its square miss.
void CShowcaseDialog::DrawMaskTest(int x, int y)
{
    IDataAni* round = Section("RoundButton");
    IDataAni* mask = Section("RoundButton_MSK", 1);
    if (!round || !mask)
        return;
    round->ShowAni(0, x, y);
    IDataFrame* frame = mask->GetFrame(0);
    const POINT local = {m_ptMouse.x - kMaskX, m_ptMouse.y - kMaskY};
    const bool hit = InRect(local, 0, 0, 64, 64) && frame && frame->GetKind() == 2 &&
                     !frame->IsTransparentAt(local.x, local.y);
    Text(x - 10, y + 72, hit ? 0xFF80FF80 : 0xFFB0B0B0, hit ? "Mask: hit" : "Mask: miss");
}
