// Writes a recording (DemoRecording.h) as the window mode runs: the header when it opens, then
// the inputs of every frame, flushed at the end of the frame so that a window that is killed
// leaves its recording up to the frame before.
#pragma once

#include "DemoRecording.h"

#include <fstream>
#include <string>

class CDemoRecorder
{
public:
    // False with the reason in error when the file cannot be written.
    bool Open(const std::string& path, std::string& error);
    void Write(int frame, DWORD time, const DemoInput& input);
    void EndFrame();

private:
    std::ofstream m_file;
    bool m_bPending = false;
};
