#include "DemoReplay.h"

#include "platform/system/host/QzHost.h"

DWORD CDemoReplay::FrameTime(const std::vector<RecordedInput>& inputs, size_t next, int frame)
{
    if (next >= inputs.size())
        return inputs.empty() ? 0 : inputs.back().time;
    const RecordedInput& after = inputs[next];
    if (next == 0 || after.frame == frame)
        return after.time;
    const RecordedInput& before = inputs[next - 1];
    const uint64_t span = static_cast<uint64_t>(after.time - before.time);
    const uint64_t frames = static_cast<uint64_t>(after.frame - before.frame);
    const uint64_t done = static_cast<uint64_t>(frame - before.frame);
    return before.time + static_cast<DWORD>(span * done / frames);
}

bool CDemoReplay::Run(CDemoHost& host, const CDemoRecording& recording, const std::string& outDir,
                      std::string& error)
{
    const std::vector<RecordedInput>& inputs = recording.Inputs();
    if (inputs.empty())
        return true;
    std::vector<std::string> shots;
    size_t next = 0;
    for (int frame = 0; frame <= inputs.back().frame; ++frame)
    {
        QzPlatform::Host::SetTime(FrameTime(inputs, next, frame));
        shots.clear();
        for (; next < inputs.size() && inputs[next].frame == frame; ++next)
        {
            if (inputs[next].input.kind == DemoInput::Shot)
                shots.push_back(inputs[next].input.text);
            else
                host.PostInput(inputs[next].input);
        }
        host.RunFrame();
        for (const std::string& name : shots)
        {
            if (!host.SaveShot(outDir, name, error))
                return false;
        }
    }
    return true;
}
