#include "RscDumpLogSink.h"

#include <cstdio>

void CRscDumpLogSink::Write(const QzPlatform::LogRecord& record)
{
    if (record.Get("level") == "debug")
        return;
    const std::string line = QzPlatform::FormatLogRecordJson(record) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}
