// Structured log of data errors and other events. A record is a message and typed fields that
// always start with "__cb__" (empty text), "svr_time" (wall-clock text) and "_" (the source
// location), followed by the event's own fields in the order given. The default sink writes one
// JSON object a line to stderr; a host may send records to a file, and tests capture them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace QzPlatform
{

enum class LogFieldKind : int
{
    Integer = 6,
    Text = 14,
    Location = 16,
};

struct LogField
{
    std::string key;
    LogFieldKind kind = LogFieldKind::Text;
    int64_t number = 0;
    std::string text; // text fields and locations ("QzBaseWindow:136")
};

struct LogRecord
{
    std::string message;
    std::vector<LogField> fields;
    // The value of a field by key, as text (integers in decimal); empty when absent.
    std::string Get(const std::string& key) const;
    bool Has(const std::string& key) const;
};

LogField LogText(const char* key, const char* value); // null becomes empty text
LogField LogInt(const char* key, int64_t value);

class ILogSink
{
public:
    virtual ~ILogSink() = default;
    virtual void Write(const LogRecord& record) = 0;
    // True for a sink that drops every record: LogEvent then makes none for it.
    virtual bool Discards() const { return false; }
};

// Writes a record: message, the three standard fields (source is a short unit name such as
// "QzBaseWindow" and line the line to report), then the event fields.
void LogEvent(const char* message, const char* source, int line,
              std::initializer_list<LogField> eventFields = {});

// Installs a sink; null restores the stderr sink. The caller keeps ownership.
void SetLogSink(ILogSink* sink);
// Formats a record as one JSON object (no newline): {"msg":..., "__cb__":..., ...}.
std::string FormatLogRecordJson(const LogRecord& record);

// A sink that writes JSON lines to a file (opened for appending).
class CFileLogSink : public ILogSink
{
public:
    explicit CFileLogSink(const std::string& path);
    ~CFileLogSink() override;
    CFileLogSink(const CFileLogSink&) = delete;
    CFileLogSink& operator=(const CFileLogSink&) = delete;
    bool IsOpen() const { return m_pFile != nullptr; }
    void Write(const LogRecord& record) override;

private:
    void* m_pFile = nullptr;
};

// Wall-clock text for "svr_time" ("YYYY-MM-DD HH:MM:SS"); a test may fix it.
std::string CurrentTimeText();
void SetTimeTextForTesting(const char* fixedOrNull);

} // namespace QzPlatform
