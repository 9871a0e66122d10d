// What must hold after every event of the monkey, in the order checked: no message entry was
// called on a removed window; the manager's capture and key focus and the edit shell's bound
// box are neither removed nor deleted; visible topmost dialogs lie above every other visible
// dialog in the manager's order; the windows of a dialog that a reload reached hold records the
// layout manager holds now. The answer names the rule first ("capture: ..."), so that failures
// can be told apart by their rule.
#pragma once

#include <string>

namespace QzMonkey
{

class CMonkeyWorld;

class CMonkeyChecks
{
public:
    // The first rule broken, or an empty text.
    static std::string Check(const CMonkeyWorld& world);
    // The rule of a Check answer: the text before its first colon.
    static std::string RuleOf(const std::string& violation);
};

} // namespace QzMonkey
