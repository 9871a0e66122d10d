// The window mode's input, frame by frame: the SDL events since the last frame become Win32
// input (CSdlInputTranslator), each is written to the recording when there is one and posted
// by the host, and the host runs its frame. The first frame starts with the window's size, so
// that a recording names the screen its replay draws. Shot marks are numbered shot-001, ...
#pragma once

#include "DemoHost.h"
#include "DemoRecorder.h"
#include "SdlInputTranslator.h"

#include <vector>

class CDemoSession
{
public:
    // recorder: null when nothing is recorded; both stay the caller's.
    CDemoSession(CDemoHost& host, CDemoRecorder* recorder);

    CSdlInputTranslator& GetTranslator() { return m_translator; }
    // The frame the next RunFrame runs, from 0 on. Its time is the host clock when it starts.
    int GetFrame() const { return m_nFrame; }
    void RunFrame(const std::vector<SDL_Event>& events);

private:
    CDemoHost& m_host;
    CDemoRecorder* m_pRecorder;
    CSdlInputTranslator m_translator;
    std::vector<DemoInput> m_vecInputs;
    int m_nFrame = 0;
    int m_nShots = 0;
};
