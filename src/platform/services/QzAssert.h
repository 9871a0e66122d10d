// Failed internal checks. Two report styles exist: the assertion report (expression, source
// unit, line) and free text lines of the render library's LogMsg. Both are reported and
// execution goes on; by default they go to stderr, and a test or host can take them.
#pragma once

#include <string>

namespace QzPlatform
{

class IDiagnosticSink
{
public:
    virtual ~IDiagnosticSink() = default;
    virtual void OnAssert(const char* expression, const char* source, int line) = 0;
    virtual void OnLogMsg(const std::string& text) = 0;
};

// Reports a failed check; returns normally.
void ReportAssert(const char* expression, const char* source, int line);
// Emits one LogMsg text line (already formatted).
void ReportLogMsg(const std::string& text);
// Installs a sink; null restores the stderr sink. The caller keeps ownership.
void SetDiagnosticSink(IDiagnosticSink* sink);

} // namespace QzPlatform

// Checks a condition; on failure reports it with the given unit name and line and goes on.
#define QZ_CHECK(expr, source, line)                                                               \
    ((expr) ? true : (::QzPlatform::ReportAssert(#expr, source, line), false))
