// JSON output: valid UTF-8 passes through unchanged; any other byte of 0x80 and above (the
// game's texts are in the ANSI code page, usually GBK) is written as \u00XX with the byte's
// value, so a line is always valid JSON and the original bytes can be read back from it.
#include "platform/services/QzLog.h"

#include <cstdio>
#include <ctime>

namespace QzPlatform
{

namespace
{

class CStderrLogSink : public ILogSink
{
public:
    void Write(const LogRecord& record) override
    {
        const std::string line = FormatLogRecordJson(record) + "\n";
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
};

// Null means the stderr sink (a constant, so records written during start-up are safe too).
ILogSink* g_pLogSink = nullptr;

ILogSink& CurrentSink()
{
    static CStderrLogSink stderrSink;
    return g_pLogSink ? *g_pLogSink : stderrSink;
}

struct FixedTime
{
    bool bFixed = false;
    std::string strText;
};

FixedTime& TimeForTesting()
{
    static FixedTime fixed;
    return fixed;
}

bool IsContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Length of the well-formed UTF-8 sequence at text[i], or 0 when the byte there does not start
// one (overlong forms, surrogates and values above U+10FFFF are not well formed).
size_t Utf8SequenceLength(const std::string& text, size_t i)
{
    const auto lead = static_cast<unsigned char>(text[i]);
    size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF)
    {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    }
    else if (lead >= 0xF0 && lead <= 0xF4)
    {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    }
    if (length == 0 || i + length > text.size())
        return 0;
    const auto second = static_cast<unsigned char>(text[i + 1]);
    if (second < low || second > high)
        return 0;
    for (size_t k = 2; k < length; ++k)
    {
        if (!IsContinuation(static_cast<unsigned char>(text[i + k])))
            return 0;
    }
    return length;
}

void AppendEscapedByte(std::string& out, unsigned char byte)
{
    char buffer[8];
    std::snprintf(buffer, sizeof(buffer), "\\u%04x", byte);
    out += buffer;
}

void AppendAsciiEscaped(std::string& out, char c)
{
    switch (c)
    {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F)
        AppendEscapedByte(out, byte);
    else
        out += c;
}

void AppendJsonString(std::string& out, const std::string& text)
{
    out += '"';
    size_t i = 0;
    while (i < text.size())
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80)
        {
            AppendAsciiEscaped(out, text[i]);
            ++i;
            continue;
        }
        const size_t length = Utf8SequenceLength(text, i);
        if (length == 0)
        {
            AppendEscapedByte(out, byte);
            ++i;
            continue;
        }
        out.append(text, i, length);
        i += length;
    }
    out += '"';
}

void AppendFieldValue(std::string& out, const LogField& field)
{
    if (field.kind == LogFieldKind::Integer)
        out += std::to_string(field.number);
    else
        AppendJsonString(out, field.text);
}

LogField LogLocation(const char* source, int line)
{
    LogField field;
    field.key = "_";
    field.kind = LogFieldKind::Location;
    field.text = std::string(source ? source : "") + ":" + std::to_string(line);
    return field;
}

} // namespace

std::string LogRecord::Get(const std::string& key) const
{
    for (const auto& field : fields)
    {
        if (field.key != key)
            continue;
        return field.kind == LogFieldKind::Integer ? std::to_string(field.number) : field.text;
    }
    return std::string();
}

bool LogRecord::Has(const std::string& key) const
{
    for (const auto& field : fields)
    {
        if (field.key == key)
            return true;
    }
    return false;
}

LogField LogText(const char* key, const char* value)
{
    LogField field;
    field.key = key ? key : "";
    field.kind = LogFieldKind::Text;
    field.text = value ? value : "";
    return field;
}

LogField LogInt(const char* key, int64_t value)
{
    LogField field;
    field.key = key ? key : "";
    field.kind = LogFieldKind::Integer;
    field.number = value;
    return field;
}

void LogEvent(const char* message, const char* source, int line,
              std::initializer_list<LogField> eventFields)
{
    ILogSink& sink = CurrentSink();
    if (sink.Discards())
        return;
    LogRecord record;
    record.message = message ? message : "";
    record.fields.reserve(3 + eventFields.size());
    record.fields.push_back(LogText("__cb__", ""));
    record.fields.push_back(LogText("svr_time", CurrentTimeText().c_str()));
    record.fields.push_back(LogLocation(source, line));
    record.fields.insert(record.fields.end(), eventFields.begin(), eventFields.end());
    sink.Write(record);
}

void SetLogSink(ILogSink* sink)
{
    g_pLogSink = sink;
}

std::string FormatLogRecordJson(const LogRecord& record)
{
    std::string out = "{\"msg\":";
    AppendJsonString(out, record.message);
    for (const auto& field : record.fields)
    {
        out += ',';
        AppendJsonString(out, field.key);
        out += ':';
        AppendFieldValue(out, field);
    }
    out += '}';
    return out;
}

CFileLogSink::CFileLogSink(const std::string& path) : m_pFile(std::fopen(path.c_str(), "ab")) {}

CFileLogSink::~CFileLogSink()
{
    if (m_pFile)
        std::fclose(static_cast<FILE*>(m_pFile));
}

void CFileLogSink::Write(const LogRecord& record)
{
    if (!m_pFile)
        return;
    auto* file = static_cast<FILE*>(m_pFile);
    const std::string line = FormatLogRecordJson(record) + "\n";
    std::fwrite(line.data(), 1, line.size(), file);
    // Flushed at once so that the records before a crash are on disk.
    std::fflush(file);
}

std::string CurrentTimeText()
{
    if (TimeForTesting().bFixed)
        return TimeForTesting().strText;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    char buffer[32];
    std::strftime(buffer, sizeof(buffer), "%Y-%m-%d %H:%M:%S", &local);
    return buffer;
}

void SetTimeTextForTesting(const char* fixedOrNull)
{
    TimeForTesting().bFixed = fixedOrNull != nullptr;
    TimeForTesting().strText = fixedOrNull ? fixedOrNull : "";
}

} // namespace QzPlatform
