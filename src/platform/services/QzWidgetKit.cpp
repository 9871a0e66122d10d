#include "platform/services/QzWidgetKit.h"

#include "platform/render/IRenderDevice.h"
#include "platform/system/QzCodePage.h"

#include <cstddef>
#include <utility>

namespace QzPlatform
{

namespace
{

int MeasureUtf8(const std::string& utf8, const char* face, int size)
{
    if (utf8.empty())
        return 0;
    FontSpec font;
    font.face = face ? face : "";
    font.size = size;
    return GetRenderDevice().MeasureText(utf8, font).cx;
}

} // namespace

void CQzWidgetKit::ReportDraw(int width, int height, int x, int y, const char* section,
                              int frameNumber, const char* file)
{
    DrawReport report;
    report.width = width;
    report.height = height;
    report.x = x;
    report.y = y;
    report.section = section ? section : "";
    report.frameNumber = frameNumber;
    report.file = file ? file : "";
    if (m_vecReports.size() < kReportCapacity)
        m_vecReports.push_back(std::move(report));
    else
        m_vecReports[m_nNextSlot] = std::move(report);
    m_nNextSlot = (m_nNextSlot + 1) % kReportCapacity;
    ++m_nReportCount;
}

std::vector<DrawReport> CQzWidgetKit::GetReports() const
{
    if (m_vecReports.size() < kReportCapacity)
        return m_vecReports;
    // Full ring: the oldest report sits in the slot written next.
    std::vector<DrawReport> ordered(m_vecReports.begin() + static_cast<std::ptrdiff_t>(m_nNextSlot),
                                    m_vecReports.end());
    ordered.insert(ordered.end(), m_vecReports.begin(),
                   m_vecReports.begin() + static_cast<std::ptrdiff_t>(m_nNextSlot));
    return ordered;
}

const DrawReport* CQzWidgetKit::GetLastReport() const
{
    if (m_vecReports.empty())
        return nullptr;
    return &m_vecReports[(m_nNextSlot + kReportCapacity - 1) % kReportCapacity];
}

void CQzWidgetKit::Clear()
{
    m_vecReports.clear();
    m_nNextSlot = 0;
    m_nReportCount = 0;
}

int CQzWidgetKit::MeasureWideText(const wchar_t* text, const char* face, int size, int reserved1,
                                  int reserved2) const
{
    return text ? MeasureUtf8(WideToUtf8(text), face, size) : 0;
}

int CQzWidgetKit::MeasureTextWidth(const char* text, int length, const char* face, int size) const
{
    if (!text)
        return 0;
    size_t count = 0;
    while ((length < 0 || count < static_cast<size_t>(length)) && text[count] != 0)
        ++count;
    return MeasureUtf8(AnsiToUtf8(std::string(text, count)), face, size);
}

CQzWidgetKit& GetWidgetKit()
{
    static CQzWidgetKit kit;
    return kit;
}

} // namespace QzPlatform
