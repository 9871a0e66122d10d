// The structured log of qzgui-rscdump: the description lines are printed on standard output
// by the trace sink, so their debug records are dropped here; every other record goes to
// standard error as a JSON line, as the library's default sink writes it.
#pragma once

#include "platform/services/QzLog.h"

class CRscDumpLogSink : public QzPlatform::ILogSink
{
public:
    void Write(const QzPlatform::LogRecord& record) override;
};
