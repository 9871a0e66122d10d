#include "platform/services/QzWidgetKit.h"

#include "platform/render/IRenderDevice.h"
#include "platform/system/text/QzCodePage.h"

#include <cstddef>

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
    // Once the ring is full, a report is written over the oldest in place.
    if (m_vecReports.size() < kReportCapacity)
        m_vecReports.emplace_back();
    ReportSlot& slot = m_vecReports[m_nNextSlot];
    slot.width = width;
    slot.height = height;
    slot.x = x;
    slot.y = y;
    slot.frameNumber = frameNumber;
    slot.file = file ? file : "";
    // Section names are short: copied as far as they go, and the rare long one again as a whole.
    const char* pszSection = section ? section : "";
    size_t nLength = 0;
    for (; nLength < ReportSlot::kSectionCapacity && pszSection[nLength]; ++nLength)
        slot.szSection[nLength] = pszSection[nLength];
    slot.bLongSection = nLength == ReportSlot::kSectionCapacity;
    if (slot.bLongSection)
        slot.strLongSection.assign(pszSection);
    else
        slot.szSection[nLength] = 0;
    m_nNextSlot = (m_nNextSlot + 1) % kReportCapacity;
    ++m_nReportCount;
}

DrawReport CQzWidgetKit::ToReport(const ReportSlot& slot)
{
    DrawReport report;
    report.width = slot.width;
    report.height = slot.height;
    report.x = slot.x;
    report.y = slot.y;
    report.section = slot.bLongSection ? slot.strLongSection : std::string(slot.szSection);
    report.frameNumber = slot.frameNumber;
    report.file = slot.file;
    return report;
}

std::vector<DrawReport> CQzWidgetKit::GetReports() const
{
    // Once the ring is full, the oldest report sits in the slot written next.
    const size_t nFirst = m_vecReports.size() < kReportCapacity ? 0 : m_nNextSlot;
    std::vector<DrawReport> ordered;
    ordered.reserve(m_vecReports.size());
    for (size_t i = 0; i < m_vecReports.size(); ++i)
        ordered.push_back(ToReport(m_vecReports[(nFirst + i) % m_vecReports.size()]));
    return ordered;
}

const DrawReport* CQzWidgetKit::GetLastReport() const
{
    if (m_vecReports.empty())
        return nullptr;
    m_lastReport = ToReport(m_vecReports[(m_nNextSlot + kReportCapacity - 1) % kReportCapacity]);
    return &m_lastReport;
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
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzWidgetKit& kit = *new CQzWidgetKit;
    return kit;
}

} // namespace QzPlatform
