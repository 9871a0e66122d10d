// Keeps the hosted clipboard and the desktop's (SDL's) as one: text copied in the demo goes to
// the desktop at the end of the frame, and a paste key takes in text another application put
// there since. Only changes cross, so the demo's own copy never comes back over a newer one.
#pragma once

#include <string>

class CSdlClipboard
{
public:
    // True with the desktop's text when it differs from what the two last agreed on.
    bool TakeNewText(std::string& text);
    // Puts text the demo copied since the last exchange on the desktop's clipboard.
    void Export();

private:
    std::string m_strShared;
};
