// Runs the demo's login script and checks what the user sees: a name typed in Latin letters
// and by the input method, a PIN that kept only its digits and refused the pasted name, a
// password drawn as asterisks without its space, and the greeting.
#include "DemoRun.h"

#include <cstdint>

namespace
{

using namespace DemoScenario;

// The login window at (300, 160).
const Box kNameField = {420, 186, 680, 212};
const Box kPinField = {420, 226, 540, 252};
const Box kPasswordField = {420, 266, 680, 292};
const Box kGreeting = {324, 310, 704, 330};

class DemoLogin : public DemoScenario::DemoScriptTest<DemoLogin>
{
public:
    static constexpr const char* kScript = "login.txt";
};

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
    EXPECT_GT(Diffs(password, Shot("05-login-welcome"), kGreeting), 100);
}

} // namespace
