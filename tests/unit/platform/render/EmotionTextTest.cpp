// Emotion text: codes drawn as icons of the icon set between text runs, codes without icons
// kept as text, line heights, animated icons, double-byte and wide text.
#include "platform/render/MyBitmap.h"
#include "platform/services/QzEmotionText.h"
#include "support/GeometryPrint.h"
#include "support/RecordingDevice.h"
#include "support/ScopedClock.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

namespace
{

using QzTest::RecordingDevice;

class EmotionTextTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_root.Write("ani/Control.ani", "[Emotion_05]\nFrameAmount=1\nFrame0=ani/e05.png\n"
                                        "[Emotion_12]\nFrameAmount=1\nFrame0=ani/e12.png\n"
                                        "[Emotion_12_34]\nFrameAmount=1\nFrame0=ani/e1234.png\n"
                                        "[Emotion_07]\nFrameAmount=2\n"
                                        "Frame0=ani/e07a.png\nFrame1=ani/e07b.png\n");
        m_device.DefineTexture("ani/e05.png", 20, 20);
        m_device.DefineTexture("ani/e12.png", 12, 12);
        m_device.DefineTexture("ani/e1234.png", 16, 16);
        m_device.DefineTexture("ani/e07a.png", 10, 10);
        m_device.DefineTexture("ani/e07b.png", 10, 10);
        m_pIcons = TableDataSetQuery()->GetIconSet(0);
    }

    // Draws at (10, 20) in white with the shadow, face "Face", size 14 and icon cell 21.
    C3_SIZE Show(const char* text, IDataIcon* icons)
    {
        return CMyBitmap::ShowEmotionStringEx(10, 20, 0xFFFFFFFF, text, icons, "Face", 14, false,
                                              21, 0, 0, 0, 0xFF000000, C3_POS{0, 0}, nullptr);
    }

    static std::string Text(int x, int y, const std::string& text)
    {
        return "text " + std::to_string(x) + "," + std::to_string(y) + " \"" + text +
               "\" font Face/14 #FFFFFFFF shadow #FF000000\n";
    }

    static std::string Icon(const std::string& path, int x, int y, int size)
    {
        const std::string side = std::to_string(size);
        return "texture " + path + " src(0,0," + side + "," + side + ") at " + std::to_string(x) +
               "," + std::to_string(y) + " size " + side + "x" + side + " alpha 255 scale 1\n";
    }

    QzTest::TempDataDir m_root;
    RecordingDevice m_device;
    IDataIcon* m_pIcons = nullptr;
};

TEST_F(EmotionTextTest, ACodeBetweenTextRunsIsDrawnAsACentredIcon)
{
    const C3_SIZE size = Show("ab#05cd", m_pIcons);
    EXPECT_EQ(m_device.Trace(),
              Text(10, 20, "ab") + Icon("ani/e05.png", 24, 20, 20) + Text(44, 20, "cd"));
    EXPECT_EQ(size, (C3_SIZE{48, 21}));
}

TEST_F(EmotionTextTest, TheLongFormOfACodeIsOneIcon)
{
    const C3_SIZE size = Show("#12|34", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Icon("ani/e1234.png", 10, 22, 16));
    EXPECT_EQ(size, (C3_SIZE{16, 21}));
    m_device.Clear();
    // Without the "|" and two digits only "#12" is a code.
    Show("#12|3", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Icon("ani/e12.png", 10, 24, 12) + Text(22, 20, "|3"));
    m_device.Clear();
    Show("#123", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Icon("ani/e12.png", 10, 24, 12) + Text(22, 20, "3"));
}

TEST_F(EmotionTextTest, NonCodesAndCodesWithoutIconsStayText)
{
    C3_SIZE size = Show("#5x", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "#5x"));
    EXPECT_EQ(size.iWidth, 21);
    m_device.Clear();
    size = Show("x#99y#12|99", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "x#99y#12|99"));
    EXPECT_EQ(size.iWidth, 77);
    m_device.Clear();
    size = Show("ab#05cd", nullptr);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "ab#05cd"));
    EXPECT_EQ(size, (C3_SIZE{49, 21}));
}

TEST_F(EmotionTextTest, DoubleByteTextNextToACodeReachesTheDeviceAsUtf8)
{
    // "ni" and "hao" in the ANSI code page (GBK) around a code.
    const C3_SIZE size = Show("\xC4\xE3#05\xBA\xC3", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "\xE4\xBD\xA0") + Icon("ani/e05.png", 24, 20, 20) +
                                    Text(44, 20, "\xE5\xA5\xBD"));
    EXPECT_EQ(size.iWidth, 48);
    m_device.Clear();
    CMyBitmap::ShowEmotionStringW(10, 20, 0xFFFFFFFF, L"\u4F60#05", m_pIcons, "Face", 14, false, 21,
                                  0, 0, 0, 0xFF000000, C3_POS{0, 0}, nullptr);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "\xE4\xBD\xA0") + Icon("ani/e05.png", 24, 20, 20));
}

TEST_F(EmotionTextTest, AnIconOfSeveralFramesFollowsTheClock)
{
    QzTest::ScopedClock clock(0);
    Show("#07", m_pIcons);
    clock.Set(199);
    Show("#07", m_pIcons);
    clock.Set(200);
    Show("#07", m_pIcons);
    clock.Set(400);
    Show("#07", m_pIcons);
    EXPECT_EQ(m_device.Trace(),
              Icon("ani/e07a.png", 10, 25, 10) + Icon("ani/e07a.png", 10, 25, 10) +
                  Icon("ani/e07b.png", 10, 25, 10) + Icon("ani/e07a.png", 10, 25, 10));
}

TEST_F(EmotionTextTest, LinesAreAtLeastTheIconCellHighAndStackAtNewlines)
{
    C3_SIZE size = CMyBitmap::ShowEmotionStringEx(0, 0, 0xFFFFFFFF, "abc", m_pIcons, "Face", 30);
    EXPECT_EQ(size, (C3_SIZE{45, 30}));
    m_device.Clear();
    size = Show("a\r\n#05", m_pIcons);
    EXPECT_EQ(m_device.Trace(), Text(10, 20, "a") + Icon("ani/e05.png", 10, 41, 20));
    EXPECT_EQ(size, (C3_SIZE{20, 42}));
    m_device.Clear();
    size = Show("", m_pIcons);
    EXPECT_EQ(size, (C3_SIZE{0, 0}));
    size = Show(nullptr, m_pIcons);
    EXPECT_EQ(size.iHeight, 0);
    EXPECT_TRUE(m_device.Calls().empty());
}

TEST_F(EmotionTextTest, MeasuringWithIconsMatchesDrawing)
{
    const C3_SIZE measured = CMyBitmap::CalcuTextExtent("ab#05cd", "Face", 14, m_pIcons, 21);
    EXPECT_EQ(measured, (C3_SIZE{48, 21}));
    const C3_SIZE plain = CMyBitmap::CalcuTextExtent("ab#05cd", "Face", 14);
    EXPECT_EQ(plain, (C3_SIZE{49, 14}));
    EXPECT_TRUE(m_device.Calls().empty());
}

TEST_F(EmotionTextTest, TheLogicLibraryCallDrawsWithTheDefaultFont)
{
    C3_SIZE out = {-1, -1};
    EXPECT_TRUE(QzPlatform::DrawEmotionText(10, 20, 0xFF00FF00, "ab#05", m_pIcons, nullptr, 0, 1,
                                            21, 0, 0, 0, 0, &out));
    EXPECT_EQ(m_device.Trace(), "text 10,20 \"ab\" font Sans/12 #FF00FF00 shadow #00000000\n" +
                                    Icon("ani/e05.png", 22, 20, 20));
    EXPECT_EQ(out, (C3_SIZE{32, 21}));
    EXPECT_FALSE(
        QzPlatform::DrawEmotionText(0, 0, 0, "", m_pIcons, nullptr, 0, 1, 21, 0, 0, 0, 0, &out));
    EXPECT_EQ(out.iWidth, 0);
}

} // namespace
