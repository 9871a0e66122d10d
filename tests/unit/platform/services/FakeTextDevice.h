// A render device for these tests: a settable screen size, and a record of every text run drawn
// and measured. Text measures 7 pixels a UTF-8 byte, height = font size.
#pragma once

#include "platform/render/IRenderDevice.h"

#include <string>
#include <vector>

namespace QzServicesTest
{

struct TextCall
{
    int x = 0;
    int y = 0;
    std::string utf8;
    QzPlatform::FontSpec font;
    uint32_t argb = 0;
    uint32_t shadowArgb = 0;
};

class FakeTextDevice : public QzPlatform::IRenderDevice
{
public:
    FakeTextDevice(int width = 1024, int height = 768) : m_nWidth(width), m_nHeight(height) {}

    int GetScreenWidth() const override { return m_nWidth; }
    int GetScreenHeight() const override { return m_nHeight; }
    void FillRect(int, int, int, int, uint32_t) override {}
    void StrokeRect(int, int, int, int, uint32_t) override {}
    void DrawLine(int, int, int, int, uint32_t) override {}
    QzPlatform::TextureId LoadTexture(const std::string&) override { return 0; }
    QzPlatform::SizeI GetTextureSize(QzPlatform::TextureId) const override { return {}; }
    bool IsTransparent(QzPlatform::TextureId, int, int) const override { return true; }
    void DrawTexture(QzPlatform::TextureId, const QzPlatform::RectI&, int, int, int, int, uint8_t,
                     float) override
    {
    }
    void DrawText(int x, int y, const std::string& utf8, const QzPlatform::FontSpec& font,
                  uint32_t argb, uint32_t shadowArgb) override
    {
        m_vecDrawn.push_back({x, y, utf8, font, argb, shadowArgb});
    }
    QzPlatform::SizeI MeasureText(const std::string& utf8,
                                  const QzPlatform::FontSpec& font) override
    {
        m_vecMeasured.push_back({0, 0, utf8, font, 0, 0});
        return {static_cast<int>(utf8.size()) * 7, font.size};
    }

    int m_nWidth;
    int m_nHeight;
    std::vector<TextCall> m_vecDrawn;
    std::vector<TextCall> m_vecMeasured;
};

} // namespace QzServicesTest
