// Runs the demo's collections script and checks what the user sees: the bag's numbers, locked
// slot and the mark of a picked item, a ticked quest and a folded chapter taking the tree's
// scroll bar away, a quest's tip, the chat scrolled by its arrow and the wheel, a chat line's
// tip, a new line that blinks red and then stops, and the chat line: typed text with emotion
// icons and Chinese from the input method, doubled through the clipboard, then sent and cleared.
#include "DemoRun.h"

#include <cstdint>

namespace
{

using namespace DemoScenario;

// Where the collections window (at 100, 40) puts its parts, in screen pixels.
const Box kPotionSlot = {164, 84, 204, 124};
const Box kLockedSlot = {296, 216, 336, 256};
const Box kPickedCaption = {120, 268, 320, 288};
const Box kBrewCheck = {364, 120, 376, 132}; // the check mark of "Brew a healing potion"
const Box kQuestSlider = {602, 102, 622, 390};
const Box kQuestTip = {348, 104, 600, 160};
const Box kChatTip = {648, 174, 900, 214};
const Box kLastChatRow = {656, 392, 896, 406};
const Box kChatLine = {640, 416, 880, 444};
// The chat rows are 14 pixels high from y 84.
const int kChatRow = 14;

bool IsGold(uint32_t pixel)
{
    return Red(pixel) > 200 && Green(pixel) > 160 && Green(pixel) < 220 && Blue(pixel) < 120;
}
bool IsTickGreen(uint32_t pixel)
{
    return Green(pixel) > 180 && Red(pixel) < 160 && Blue(pixel) < 160;
}
bool IsWhite(uint32_t pixel)
{
    return Red(pixel) > 220 && Green(pixel) > 220 && Blue(pixel) > 220;
}

class DemoCollections : public DemoScenario::DemoScriptTest<DemoCollections>
{
public:
    static constexpr const char* kScript = "collections.txt";
};

TEST_F(DemoCollections, TheBagShowsNumbersAndMasksItsLockedSlot)
{
    const QzTest::Image shot = Shot("01-collections");
    // "12" in white in the potions' bottom-right corner; the red bar of the locked slot's mask.
    EXPECT_GT(Count(shot, {184, 104, 204, 124}, IsWhite), 10);
    EXPECT_GT(Count(shot, kLockedSlot, IsRed), 30);
}

TEST_F(DemoCollections, APickedItemIsMarkedAndNamedAndTheLockedSlotCannotBePicked)
{
    const QzTest::Image opened = Shot("01-collections");
    const QzTest::Image picked = Shot("02-bag-picked");
    const QzTest::Image locked = Shot("03-bag-locked");
    EXPECT_EQ(0, Count(opened, kPotionSlot, IsGold));
    EXPECT_GT(Count(picked, kPotionSlot, IsGold), 100); // the gold frame of the mark
    EXPECT_GT(Diffs(opened, picked, kPickedCaption), 50);
    EXPECT_EQ(0, Count(locked, kPotionSlot, IsGold));
    EXPECT_GT(Diffs(picked, locked, kPickedCaption), 50);
}

TEST_F(DemoCollections, ATickedQuestAndAFoldedChapterTakeTheScrollBarAway)
{
    const QzTest::Image opened = Shot("01-collections");
    const QzTest::Image folded = Shot("04-quests-folded");
    EXPECT_EQ(0, Count(opened, kBrewCheck, IsTickGreen));
    EXPECT_GT(Count(folded, kBrewCheck, IsTickGreen), 5);
    // Twenty rows need the slider's thumb; eleven fit without it.
    EXPECT_GT(Diffs(opened, folded, kQuestSlider), 100);
    EXPECT_GT(Diffs(Shot("04-quests-folded"), Shot("05-quest-tip"), kQuestTip), 200);
}

TEST_F(DemoCollections, TheChatScrollsOneLineAClickAndAWheelTurn)
{
    // Three lines up, one down: the rows of the opened window are two rows lower.
    const QzTest::Image opened = Shot("01-collections");
    const QzTest::Image scrolled = Shot("06-chat-scrolled");
    EXPECT_EQ(0, CountDiffs(opened, scrolled, 644, 84, 890, 84 + 6 * kChatRow, 0, 2 * kChatRow));
    EXPECT_GT(Diffs(opened, scrolled, {644, 84, 890, 84 + 6 * kChatRow}), 500);
}

// The rows there are gold and green; the tip's line is white on its dark frame.
TEST_F(DemoCollections, ARestedOnChatLineShowsItsTip)
{
    EXPECT_LT(Count(Shot("06-chat-scrolled"), kChatTip, IsWhite), 10);
    EXPECT_GT(Count(Shot("07-chat-tip"), kChatTip, IsWhite), 50);
}

TEST_F(DemoCollections, ANewLineBlinksRedForHalfASecond)
{
    EXPECT_GT(Count(Shot("08-chat-said"), kLastChatRow, IsRed), 20);
    EXPECT_EQ(0, Count(Shot("09-chat-said-later"), kLastChatRow, IsRed));
}

TEST_F(DemoCollections, TheChatLineTakesIconsAndChineseIsDoubledByTheClipboardThenSent)
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
