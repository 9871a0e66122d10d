// Takes the description lines of the dialog-template reader while it lives, and the log
// records (which would otherwise go to stderr).
#pragma once

#include "diagnostics/DumpRsc.h"
#include "support/LogCapture.h"

#include <string>

namespace QzDiagnosticsTest
{

class TraceCapture
{
public:
    TraceCapture() { CDumpRsc::SetTraceSink(&TraceCapture::Append, this); }
    ~TraceCapture() { CDumpRsc::SetTraceSink(nullptr, nullptr); }
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    const std::string& Text() const { return m_text; }
    void Clear() { m_text.clear(); }
    QzTest::LogCapture& Log() { return m_log; }

private:
    static void Append(const char* pszText, void* pContext)
    {
        static_cast<TraceCapture*>(pContext)->m_text += pszText;
    }

    std::string m_text;
    QzTest::LogCapture m_log;
};

} // namespace QzDiagnosticsTest
