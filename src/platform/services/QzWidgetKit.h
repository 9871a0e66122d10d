// The GUI base library: the draw record of window backgrounds (the last 256 reports and a
// running count, for tests and the debug panel) and two text measures through the render
// device.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace QzPlatform
{

struct DrawReport
{
    int width = 0; // window size
    int height = 0;
    int x = 0; // drawn position
    int y = 0;
    std::string section;
    int frameNumber = 0;
    std::string file;
};

class CQzWidgetKit
{
public:
    static constexpr size_t kReportCapacity = 256;

    // Records one drawn background; null texts are stored as "". Every window reports on every
    // frame, so nothing is allocated here: the file name is kept as the pointer given, which
    // must therefore stay valid (a literal), and the section is copied.
    void ReportDraw(int width, int height, int x, int y, const char* section, int frameNumber,
                    const char* file);
    // Reports made since the last Clear (also those no longer kept).
    uint64_t GetReportCount() const { return m_nReportCount; }
    // The kept reports, oldest first (at most kReportCapacity).
    std::vector<DrawReport> GetReports() const;
    // The newest report, or null when none is kept. It stays valid until the next call of
    // GetLastReport.
    const DrawReport* GetLastReport() const;
    void Clear();

    // Width in pixels of wide text in the face and size; the last two arguments are accepted
    // for the callers' sake and not used. 0 for null text.
    int MeasureWideText(const wchar_t* text, const char* face, int size, int reserved1,
                        int reserved2) const;
    // Width in pixels of the first `length` bytes of narrow text (ANSI code page; fewer at its
    // terminator, the whole text when length is negative). 0 for null text.
    int MeasureTextWidth(const char* text, int length, const char* face, int size) const;

private:
    // A kept report as recorded; the section lives in the slot, or in strLongSection when it
    // does not fit (that string keeps its storage for the next long section).
    struct ReportSlot
    {
        static constexpr size_t kSectionCapacity = 48;

        int width = 0;
        int height = 0;
        int x = 0;
        int y = 0;
        int frameNumber = 0;
        const char* file = "";
        bool bLongSection = false;
        char szSection[kSectionCapacity] = {};
        std::string strLongSection;
    };

    static DrawReport ToReport(const ReportSlot& slot);

    std::vector<ReportSlot> m_vecReports; // ring buffer once full
    size_t m_nNextSlot = 0;
    uint64_t m_nReportCount = 0;
    mutable DrawReport m_lastReport; // what GetLastReport hands out
};

// The process-wide GUI base library object.
CQzWidgetKit& GetWidgetKit();

} // namespace QzPlatform
