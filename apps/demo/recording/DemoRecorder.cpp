#include "DemoRecorder.h"

bool CDemoRecorder::Open(const std::string& path, std::string& error)
{
    m_file.open(path, std::ios::binary | std::ios::trunc);
    m_file << CDemoRecording::Header() << '\n';
    m_file.flush();
    if (m_file)
        return true;
    error = path + ": cannot write";
    return false;
}

void CDemoRecorder::Write(int frame, DWORD time, const DemoInput& input)
{
    m_file << CDemoRecording::FormatLine({frame, time, input}) << '\n';
    m_bPending = true;
}

void CDemoRecorder::EndFrame()
{
    if (!m_bPending)
        return;
    m_file.flush();
    m_bPending = false;
}
