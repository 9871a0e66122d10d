#include "ReloadPanel.h"

#include "platform/render/IRenderDevice.h"

#include <algorithm>

namespace
{

const int kMargin = 8;
const int kPadding = 6;
const int kFrameWidth = 2;
const uint32_t kBackColor = 0xE0301010;
const uint32_t kTextColor = 0xFFFFFFFF;
const uint32_t kShadowColor = 0xFF000000;
const char* const kTitle = "The edit was not loaded:";

} // namespace

void CReloadPanel::Show(const std::vector<BundleError>& errors)
{
    m_vecLines.clear();
    if (errors.empty())
        return;
    m_vecLines.push_back(kTitle);
    for (const BundleError& error : errors)
    {
        if (m_vecLines.size() == kMaxLines)
        {
            m_vecLines.push_back("... and " + std::to_string(errors.size() - kMaxLines + 1) +
                                 " more");
            break;
        }
        m_vecLines.push_back(CBundleCheck::Format(error));
    }
}

void CReloadPanel::Draw(QzPlatform::IRenderDevice& device) const
{
    if (m_vecLines.empty())
        return;
    const QzPlatform::FontSpec font;
    int width = 0;
    int lineHeight = font.size + 2;
    for (const std::string& line : m_vecLines)
    {
        const QzPlatform::SizeI size = device.MeasureText(line, font);
        width = std::max(width, size.cx);
        lineHeight = std::max(lineHeight, size.cy);
    }
    const int height = static_cast<int>(m_vecLines.size()) * lineHeight + 2 * kPadding;
    const int left = kMargin;
    const int right = std::min(device.GetScreenWidth() - kMargin, left + width + 2 * kPadding);
    const int bottom = device.GetScreenHeight() - kMargin;
    const int top = std::max(kMargin, bottom - height);
    device.FillRect(left, top, right, bottom, kBackColor);
    for (int i = 0; i < kFrameWidth; ++i)
        device.StrokeRect(left + i, top + i, right - i, bottom - i, kFrameColor);
    device.PushClip({left, top, right, bottom});
    int y = top + kPadding;
    for (const std::string& line : m_vecLines)
    {
        device.DrawText(left + kPadding, y, line, font, kTextColor, kShadowColor);
        y += lineHeight;
    }
    device.PopClip();
}
