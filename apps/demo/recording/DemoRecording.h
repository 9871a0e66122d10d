// A recording of the window mode's input: a first line "qzgui-recording 1", then one input a
// line, each with the frame it came in and the host clock of that frame in milliseconds:
//
//   FRAME TIME mousemove X Y KEYS              (also [lrm]buttondown, ...up, ...dblclk)
//   FRAME TIME mousewheel X Y KEYS DELTA
//   FRAME TIME keydown VK LPARAM MODS          (also keyup, syskeydown, syskeyup)
//   FRAME TIME char "C" LPARAM
//   FRAME TIME compose "TEXT"                  (also result, clipboard)
//   FRAME TIME size WIDTH HEIGHT
//   FRAME TIME shot NAME
//
// Numbers are decimal or 0x hexadecimal; KEYS are the MK_ flags of wParam; MODS are the
// modifiers held after the key: S, C and A for Shift, Ctrl and Alt, "-" for none. Texts are
// quoted UTF-8 (RecordingText.h). Frames count from 0 and never go back; every line of a frame
// has the frame's time, and a later frame no earlier time. Blank lines and lines starting with
// '#' are skipped. docs/demo.md describes the format for users.
#pragma once

#include "DemoInput.h"

#include <string>
#include <vector>

struct RecordedInput
{
    int frame = 0;
    DWORD time = 0;
    DemoInput input;
};

class CDemoRecording
{
public:
    static const int kVersion = 1;
    // Frames beyond this are refused: a replay runs every frame up to the last one.
    static const int kMaxFrame = 1000000;
    // Texts longer than this many bytes are refused.
    static const size_t kMaxText = 65536;

    // The first line of a recording.
    static std::string Header();
    // One input as a line (without the line break).
    static std::string FormatLine(const RecordedInput& entry);

    // Reads a recording; on failure returns false with "NAME:LINE: reason" in error.
    bool Load(const std::string& path, std::string& error);
    bool Parse(const std::string& text, const std::string& name, std::string& error);
    const std::vector<RecordedInput>& Inputs() const { return m_vecInputs; }
    // The time of the first input, or fallback for a recording without inputs.
    DWORD StartTime(DWORD fallback) const;
    // The window size of a size line at frame 0, which a recording of the window starts with.
    bool GetInitialSize(int& width, int& height) const;

private:
    std::vector<RecordedInput> m_vecInputs;
};
