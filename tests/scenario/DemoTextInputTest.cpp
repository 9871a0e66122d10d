// Runs the demo's login script and checks what the user sees: a name typed in Latin letters
// and by the input method, a PIN that kept only its digits and refused the pasted name, a
// password drawn as asterisks without its space, and the greeting. The chat line of the
// collections script: typed text with emotion icons and Chinese from the input method, doubled
// through the clipboard, then sent and cleared.
#include "DemoRun.h"

#include <cstdint>

namespace
{

struct Box
{
    int left, top, right, bottom;
};

// The login window (at 300, 160) and the collections window's chat line (at 640, 416).
const Box kNameField = {420, 186, 680, 212};
const Box kPinField = {420, 226, 540, 252};
const Box kPasswordField = {420, 266, 680, 292};
const Box kGreeting = {324, 310, 704, 330};
const Box kChatLine = {640, 416, 880, 444};
const Box kLastChatRow = {656, 392, 896, 406};

bool IsLight(uint32_t pixel)
{
    return ((pixel >> 16) & 0xFF) > 210 && ((pixel >> 8) & 0xFF) > 210 && (pixel & 0xFF) > 210;
}
bool IsRed(uint32_t pixel)
{
    return ((pixel >> 16) & 0xFF) > 180 && ((pixel >> 8) & 0xFF) < 90 && (pixel & 0xFF) < 90;
}

// The right end of the white (text) pixels inside the box, less its 6-pixel sunken frame; 0
// when there are none.
int TextRight(const QzTest::Image& image, const Box& rc)
{
    int right = 0;
    for (int y = rc.top + 6; y < rc.bottom - 6; ++y)
        for (int x = rc.left + 6; x < rc.right - 6; ++x)
            right = IsLight(image.At(x, y)) ? x - rc.left : right;
    return right;
}

int Count(const QzTest::Image& image, const Box& rc, bool (*test)(uint32_t))
{
    int count = 0;
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
            count += test(image.At(x, y)) ? 1 : 0;
    return count;
}

class DemoLogin : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_run = new DemoScenario::DemoRun("login.txt"); }
    static void TearDownTestSuite()
    {
        delete s_run;
        s_run = nullptr;
    }
    void SetUp() override { ASSERT_EQ(0, s_run->ExitCode()); }
    static QzTest::Image Shot(const char* name) { return s_run->Shot(name); }

    static DemoScenario::DemoRun* s_run;
};

DemoScenario::DemoRun* DemoLogin::s_run = nullptr;

TEST_F(DemoLogin, TheNameTakesLettersAndTheInputMethodsChinese)
{
    EXPECT_EQ(0, TextRight(Shot("01-login"), kNameField));
    // "Zhang" and two Chinese characters: wider than the five letters alone.
    EXPECT_GT(TextRight(Shot("02-login-name"), kNameField), 50);
}

TEST_F(DemoLogin, ThePinKeepsItsDigitsAndRefusesThePastedName)
{
    // "1234" only: four digits, where the pasted name and the letters would run far wider.
    const int right = TextRight(Shot("03-login-pin"), kPinField);
    EXPECT_GT(right, 15);
    EXPECT_LT(right, 45);
}

TEST_F(DemoLogin, ThePasswordIsAsterisksAndTheGreetingFollowsLogIn)
{
    // Six asterisks for "secret" (the space refused), narrower than the typed seven letters.
    const QzTest::Image password = Shot("04-login-password");
    EXPECT_GT(TextRight(password, kPasswordField), 20);
    EXPECT_LT(TextRight(password, kPasswordField), 60);
    EXPECT_GT(DemoScenario::CountDiffs(password, Shot("05-login-welcome"), kGreeting.left,
                                       kGreeting.top, kGreeting.right, kGreeting.bottom),
              100);
}

class DemoChatLine : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_run = new DemoScenario::DemoRun("collections.txt"); }
    static void TearDownTestSuite()
    {
        delete s_run;
        s_run = nullptr;
    }
    void SetUp() override { ASSERT_EQ(0, s_run->ExitCode()); }
    static QzTest::Image Shot(const char* name) { return s_run->Shot(name); }

    static DemoScenario::DemoRun* s_run;
};

DemoScenario::DemoRun* DemoChatLine::s_run = nullptr;

TEST_F(DemoChatLine, TypedTextIconsAndChineseAreDoubledThroughTheClipboardThenSent)
{
    const int typed = TextRight(Shot("10-chat-typed"), kChatLine);
    const int pasted = TextRight(Shot("11-chat-pasted"), kChatLine);
    EXPECT_GT(typed, 60);
    EXPECT_GT(pasted, typed + 50);
    const QzTest::Image sent = Shot("12-chat-sent");
    EXPECT_EQ(0, TextRight(sent, kChatLine));
    EXPECT_GT(Count(sent, kLastChatRow, IsRed), 20);
}

} // namespace
