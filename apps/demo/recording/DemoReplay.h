// Plays a recording back headless on the manual clock: every frame from 0 to the recording's
// last runs with the clock at its recorded time (frames without a line at the time between the
// recorded frames around them), the inputs of a frame are posted before it runs, and the frames
// with shot lines are saved as NAME.png once they are drawn. The caller creates the host at the
// recording's start time and size (StartTime, GetInitialSize).
#pragma once

#include "DemoHost.h"
#include "DemoRecording.h"

#include <string>

class CDemoReplay
{
public:
    // The clock of a frame without inputs: linear between the recorded frames around it, that
    // of the first recorded frame before it.
    static DWORD FrameTime(const std::vector<RecordedInput>& inputs, size_t next, int frame);

    // False with the reason in error when a screenshot cannot be written.
    static bool Run(CDemoHost& host, const CDemoRecording& recording, const std::string& outDir,
                    std::string& error);
};
