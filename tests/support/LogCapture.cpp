#include "support/LogCapture.h"

namespace QzTest
{

LogCapture::LogCapture()
{
    QzPlatform::SetLogSink(this);
    QzPlatform::SetDiagnosticSink(this);
}

LogCapture::~LogCapture()
{
    QzPlatform::SetLogSink(nullptr);
    QzPlatform::SetDiagnosticSink(nullptr);
}

void LogCapture::Write(const QzPlatform::LogRecord& record)
{
    m_vecRecords.push_back(record);
}

void LogCapture::OnAssert(const char* expression, const char* source, int line)
{
    m_vecAsserts.push_back({expression ? expression : "", source ? source : "", line});
}

void LogCapture::OnLogMsg(const std::string& text)
{
    m_vecLogMsgs.push_back(text);
}

const QzPlatform::LogRecord* LogCapture::Find(const std::string& message) const
{
    for (const auto& record : m_vecRecords)
    {
        if (record.message == message)
            return &record;
    }
    return nullptr;
}

int LogCapture::Count(const std::string& message) const
{
    int count = 0;
    for (const auto& record : m_vecRecords)
        count += record.message == message ? 1 : 0;
    return count;
}

bool LogCapture::Empty() const
{
    return m_vecRecords.empty() && m_vecAsserts.empty() && m_vecLogMsgs.empty();
}

void LogCapture::Clear()
{
    m_vecRecords.clear();
    m_vecAsserts.clear();
    m_vecLogMsgs.clear();
}

} // namespace QzTest
