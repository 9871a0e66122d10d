// Takes every log record, assertion report and LogMsg line while it lives, so that a test can
// assert on what the library reported. Installing one replaces the stderr sinks; the
// destructor puts them back.
#pragma once

#include "platform/services/QzAssert.h"
#include "platform/services/QzLog.h"

#include <ostream>
#include <string>
#include <vector>

namespace QzTest
{

struct AssertReport
{
    std::string expression;
    std::string source;
    int line = 0;
};

inline bool operator==(const AssertReport& a, const AssertReport& b)
{
    return a.expression == b.expression && a.source == b.source && a.line == b.line;
}

inline void PrintTo(const AssertReport& report, std::ostream* os)
{
    *os << "\"" << report.expression << "\" (" << report.source << ":" << report.line << ")";
}

class LogCapture : public QzPlatform::ILogSink, public QzPlatform::IDiagnosticSink
{
public:
    LogCapture();
    ~LogCapture() override;
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    void Write(const QzPlatform::LogRecord& record) override;
    void OnAssert(const char* expression, const char* source, int line) override;
    void OnLogMsg(const std::string& text) override;

    const std::vector<QzPlatform::LogRecord>& Records() const { return m_vecRecords; }
    const std::vector<AssertReport>& Asserts() const { return m_vecAsserts; }
    const std::vector<std::string>& LogMsgs() const { return m_vecLogMsgs; }

    // The first record with this message, or null.
    const QzPlatform::LogRecord* Find(const std::string& message) const;
    int Count(const std::string& message) const;
    bool Empty() const;
    void Clear();

private:
    std::vector<QzPlatform::LogRecord> m_vecRecords;
    std::vector<AssertReport> m_vecAsserts;
    std::vector<std::string> m_vecLogMsgs;
};

} // namespace QzTest
