// The device in place until a host installs its own: it draws nothing, knows no images and
// measures text on a fixed cell, so that layout is the same on every machine.
#pragma once

#include "platform/render/IRenderDevice.h"

namespace QzPlatform
{

class CNullRenderDevice : public IRenderDevice
{
public:
    int GetScreenWidth() const override { return m_nScreenWidth; }
    int GetScreenHeight() const override { return m_nScreenHeight; }
    void SetScreenSize(int width, int height);

    void FillRect(int, int, int, int, uint32_t) override {}
    void StrokeRect(int, int, int, int, uint32_t) override {}
    void DrawLine(int, int, int, int, uint32_t) override {}

    TextureId LoadTexture(const std::string&) override { return 0; }
    SizeI GetTextureSize(TextureId) const override { return SizeI(); }
    bool IsTransparent(TextureId, int, int) const override { return true; }
    void DrawTexture(TextureId, const RectI&, int, int, int, int, uint8_t, float) override {}

    void DrawText(int, int, const std::string&, const FontSpec&, uint32_t, uint32_t) override {}
    SizeI MeasureText(const std::string& utf8, const FontSpec& font) override;

    // The fixed-cell measure: every code point is size / 2 wide, East Asian wide ones (CJK,
    // Hangul, fullwidth forms) size wide; each line is size high, lines end at '\n'. Bytes that
    // are not valid UTF-8 count as one narrow character each.
    static SizeI MeasureOnCell(const std::string& utf8, const FontSpec& font);
    static bool IsWideCodePoint(uint32_t codePoint);

private:
    int m_nScreenWidth = 1024;
    int m_nScreenHeight = 768;
};

// The built-in instance that GetRenderDevice gives when no device is installed.
CNullRenderDevice& GetNullRenderDevice();

} // namespace QzPlatform
