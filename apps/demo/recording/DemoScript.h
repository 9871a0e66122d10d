// Scripted input for the demo: one step a line, the way a user would drive the window.
//
//   frame [N]          run N frames (default 1), each 16 ms of the clock
//   wait MS            run frames until MS milliseconds have passed
//   move X Y           mouse move to client point (X, Y)
//   down X Y, up X Y   left button; rdown / rup: right button; click X Y: down and up
//   wheel X Y DELTA    wheel turn over client point (X, Y)
//   key NAME           key down and up (a virtual-key number, or RETURN, ESCAPE, F1, ...);
//                      CONTROL+NAME and SHIFT+NAME hold the modifier around it
//   char TEXT          the characters of TEXT (UTF-8), one WM_CHAR each
//   compose TEXT       the input method's composition string (UTF-8) in the focus window
//   ime TEXT           the input method's result string (UTF-8) in the focus window
//   shot NAME          save the frame as NAME.png in the output folder
//   reload             reload the layout as a saved edit does, keeping what is on screen
//
// Blank lines and lines starting with '#' are skipped.
#pragma once

#include <string>
#include <vector>

struct DemoStep
{
    enum Kind
    {
        Frame,
        Wait,
        Move,
        Down,
        Up,
        RDown,
        RUp,
        Click,
        Wheel,
        Key,
        Char,
        Compose,
        Ime,
        Reload,
        Shot,
    };
    Kind kind = Frame;
    int x = 0;
    int y = 0;
    int value = 0;    // frames, milliseconds, wheel delta or virtual key
    int modifier = 0; // virtual key held around a key step, 0 for none
    std::string text; // characters or shot name
};

class CDemoScript
{
public:
    // Reads a script; on failure returns false with the file and line in `error`.
    bool Load(const std::string& path, std::string& error);
    bool Parse(const std::string& text, const std::string& name, std::string& error);
    const std::vector<DemoStep>& Steps() const { return m_vecSteps; }

private:
    bool ParseLine(const std::string& line, DemoStep& step) const;

    std::vector<DemoStep> m_vecSteps;
};
