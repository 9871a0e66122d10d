#include "platform/services/QzAssert.h"

#include <cstdio>

namespace QzPlatform
{

namespace
{

class CStderrDiagnosticSink : public IDiagnosticSink
{
public:
    void OnAssert(const char* expression, const char* source, int line) override
    {
        std::fprintf(stderr, "ASSERT: %s (%s:%d)\n", expression, source, line);
    }

    void OnLogMsg(const std::string& text) override
    {
        std::fwrite(text.data(), 1, text.size(), stderr);
        if (text.empty() || text.back() != '\n')
            std::fputc('\n', stderr);
    }
};

// Null means the stderr sink (a constant, so reports made during start-up are safe too).
IDiagnosticSink* g_pDiagnosticSink = nullptr;

IDiagnosticSink& CurrentSink()
{
    static CStderrDiagnosticSink stderrSink;
    return g_pDiagnosticSink ? *g_pDiagnosticSink : stderrSink;
}

} // namespace

void ReportAssert(const char* expression, const char* source, int line)
{
    CurrentSink().OnAssert(expression ? expression : "", source ? source : "", line);
}

void ReportLogMsg(const std::string& text)
{
    CurrentSink().OnLogMsg(text);
}

void SetDiagnosticSink(IDiagnosticSink* sink)
{
    g_pDiagnosticSink = sink;
}

} // namespace QzPlatform
