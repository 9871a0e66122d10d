#include "DemoSession.h"

#include <cstdio>

CDemoSession::CDemoSession(CDemoHost& host, CDemoRecorder* recorder)
    : m_host(host), m_pRecorder(recorder)
{
    m_translator.SetDoubleClicks(host.WantsDoubleClicks());
    DemoInput size;
    size.kind = DemoInput::Size;
    size.x = host.GetWidth();
    size.y = host.GetHeight();
    m_vecInputs.push_back(size);
}

void CDemoSession::RunFrame(const std::vector<SDL_Event>& events)
{
    // The whole frame is translated first: autorepeats fold as they wait together.
    for (const SDL_Event& event : events)
        m_translator.Translate(event, m_vecInputs);
    const DWORD time = timeGetTime();
    for (DemoInput& input : m_vecInputs)
    {
        if (input.kind == DemoInput::Shot)
        {
            char name[32];
            std::snprintf(name, sizeof name, "shot-%03d", ++m_nShots);
            input.text = name;
        }
        if (m_pRecorder)
            m_pRecorder->Write(m_nFrame, time, input);
        m_host.PostInput(input);
    }
    m_vecInputs.clear();
    if (m_pRecorder)
        m_pRecorder->EndFrame();
    m_host.RunFrame();
    ++m_nFrame;
}
