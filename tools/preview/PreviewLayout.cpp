#include "PreviewLayout.h"

#include <cstdio>
#include <filesystem>
#include <set>
#include <system_error>

namespace QzPreview
{

namespace
{

// The section names of a large layout file take some hundred kilobytes.
constexpr DWORD kMaxNamesBuffer = 16u << 20;

// Ids share a 32-bit full id, 16 bits each; a dialog's parent is 0.
bool IsWindowIds(int nParentId, int nCtrlId)
{
    return nParentId >= 0 && nParentId <= 0xFFFF && nCtrlId > 0 && nCtrlId <= 0xFFFF;
}

} // namespace

bool CPreviewLayout::Load(const std::string& path)
{
    m_strPath = path;
    m_vecSections.clear();
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec))
        return false;
    for (const std::string& name : ReadSectionNames(path))
    {
        Section section;
        section.strName = name;
        if (std::sscanf(name.c_str(), "%d-%d", &section.nParentId, &section.nCtrlId) == 2 &&
            IsWindowIds(section.nParentId, section.nCtrlId))
            m_vecSections.push_back(section);
    }
    return true;
}

// The list of names GetPrivateProfileSectionNamesA answers, with a buffer that grows until
// the list fits (the answer is size - 2 when it was cut).
std::vector<std::string> CPreviewLayout::ReadSectionNames(const std::string& path)
{
    std::vector<char> buffer(4096);
    DWORD length = 0;
    for (;;)
    {
        const DWORD size = static_cast<DWORD>(buffer.size());
        length = GetPrivateProfileSectionNamesA(buffer.data(), size, path.c_str());
        if (length + 2 < size || size >= kMaxNamesBuffer)
            break;
        buffer.resize(buffer.size() * 2);
    }
    buffer.push_back('\0');
    std::vector<std::string> names;
    for (DWORD i = 0; i < length && buffer[i];)
    {
        names.emplace_back(&buffer[i]);
        i += static_cast<DWORD>(names.back().size()) + 1;
    }
    return names;
}

bool CPreviewLayout::HasDialog(DWORD nDialogId) const
{
    for (const Section& section : m_vecSections)
    {
        if (section.nParentId == 0 && static_cast<DWORD>(section.nCtrlId) == nDialogId)
            return true;
    }
    return false;
}

std::vector<PreviewCtrlRecord> CPreviewLayout::GetCtrls(DWORD nDialogId) const
{
    std::vector<PreviewCtrlRecord> ctrls;
    std::set<DWORD> seen;
    for (const Section& section : m_vecSections)
    {
        const DWORD nId = static_cast<DWORD>(section.nCtrlId);
        if (static_cast<DWORD>(section.nParentId) != nDialogId || !seen.insert(nId).second)
            continue;
        PreviewCtrlRecord ctrl;
        ctrl.nId = nId;
        ctrl.nType = static_cast<int>(
            GetPrivateProfileIntA(section.strName.c_str(), "type", 0, m_strPath.c_str()));
        ctrls.push_back(ctrl);
    }
    return ctrls;
}

} // namespace QzPreview
