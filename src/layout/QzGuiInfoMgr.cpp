#include "layout/QzGuiInfoMgr.h"

#include "framework/QzGuiMgr.h"
#include "layout/QzAniGroupReader.h"
#include "layout/QzCursorReader.h"
#include "layout/QzLayoutReader.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzFile.h"
#include "platform/services/QzIni.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <string>

namespace QzGui
{

namespace
{

const char* const kAniGroupFile = "ini/AniGroup.ini";
const char* const kCursorFile = "ini/Cursor.ini";
const char* const kRegionFile = "ini/Rgn.dat";
const char* const kExtendedFile = "ini/GUI_EX.ini";
constexpr uint64_t kRootKey = 0;

std::string IniPath(const char* pszFile)
{
    return std::string("ini\\") + (pszFile ? pszFile : "");
}

bool FileExists(const char* pszPath)
{
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle hFile = files.Open(pszPath, "rb");
    if (!hFile)
        return false;
    files.Close(hFile);
    return true;
}

std::string DecimalText(int value)
{
    return std::to_string(value);
}

} // namespace

CQzGuiInfoMgr::CQzGuiInfoMgr() = default;

CQzGuiInfoMgr::~CQzGuiInfoMgr()
{
    ClearAll();
}

uint64_t CQzGuiInfoMgr::MakeKey(DWORD nParentId, DWORD nCtrlId)
{
    const int64_t parent = static_cast<int32_t>(nParentId);
    return static_cast<uint64_t>(parent) | (static_cast<uint64_t>(nCtrlId) << 32);
}

uint64_t CQzGuiInfoMgr::MakeVariantKey(uint64_t nKey, int nVariant)
{
    return nKey * 100u + static_cast<uint64_t>(static_cast<int64_t>(nVariant));
}

BOOL CQzGuiInfoMgr::Init(IQzGuiMgr* pGuiMgr)
{
    if (!pGuiMgr)
    {
        LogMsg("ASSERT(NULL != pGuiMgr) in %d line of %s", __LINE__, "QzGuiInfoMgr");
        return FALSE;
    }
    m_pGuiMgr = pGuiMgr;
    StoreRecord(kRootKey, std::make_unique<CQzGuiWndInfo>());
    FitRootToScreen();
    return TRUE;
}

// Gives the root record (key 0), when there is one, the size of the GUI manager's screen.
void CQzGuiInfoMgr::FitRootToScreen()
{
    CQzGuiWndInfo* pRoot = FindRecord(kRootKey);
    if (!pRoot || !m_pGuiMgr)
        return;
    const CQzGuiMgr* pMgr = static_cast<const CQzGuiMgr*>(m_pGuiMgr);
    pRoot->SetWidth(static_cast<WORD>(pMgr->GetScreenWidth()));
    pRoot->SetHeight(static_cast<WORD>(pMgr->GetScreenHeight()));
}

BOOL CQzGuiInfoMgr::LoadLayout(const char* pszFile)
{
    CQzLayoutReader reader(m_setHelpLink, false, "data error");
    if (!reader.Open(IniPath(pszFile).c_str()))
        return FALSE;
    // Windows may still hold the records of the last load: they stay alive until ClearAll.
    RetireTable(m_mapRecord);
    m_vecExtRecord.clear();
    RecordPtr pPending; // the new record of the section being read
    reader.Read([&](const QzLayoutSection& section)
                { return BeginLayoutSection(section, &pPending); },
                [&](const QzLayoutSection& section, CQzGuiWndInfo* pRecord, bool bValid)
                { EndLayoutSection(section, pRecord, std::move(pPending), bValid); });
    FitRootToScreen();
    m_strLayoutFile = pszFile ? pszFile : "";
    LoadAniGroups();
    LoadOptionalTables();
    return TRUE;
}

// The files a layout may come with; a missing one is no error (the cursor and region loaders
// fail silently without their file).
void CQzGuiInfoMgr::LoadOptionalTables()
{
    LoadCursors();
    LoadRegions();
    if (FileExists(kExtendedFile))
        LoadExtendedLayout();
}

// The same section named twice in one file fills its record again from defaults.
CQzGuiWndInfo* CQzGuiInfoMgr::BeginLayoutSection(const QzLayoutSection& section,
                                                 RecordPtr* ppPending)
{
    CQzGuiWndInfo* pRecord = FindRecord(MakeKey(section.nParentId, section.nCtrlId));
    if (pRecord)
        pRecord->ResetToDefaults();
    else
    {
        *ppPending = std::make_unique<CQzGuiWndInfo>();
        pRecord = ppPending->get();
    }
    pRecord->SetParentId(section.nParentId);
    pRecord->SetCtrlId(section.nCtrlId);
    return pRecord;
}

void CQzGuiInfoMgr::EndLayoutSection(const QzLayoutSection& section, CQzGuiWndInfo* pRecord,
                                     RecordPtr pPending, bool bValid)
{
    const uint64_t nKey = MakeKey(section.nParentId, section.nCtrlId);
    if (!bValid)
    {
        // No record under the key, not even the one an earlier section of the file made.
        if (!pPending)
            m_mapRecord.erase(nKey);
        return;
    }
    MarkRegion(nKey, *pRecord);
    if (pPending)
        m_mapRecord[nKey] = std::move(pPending);
}

void CQzGuiInfoMgr::ReloadLayout(const char* pszFile)
{
    m_mapAniGroup.clear();
    m_mapRegion.clear();
    m_mapCursor.clear();
    LoadLayout(pszFile);
}

void CQzGuiInfoMgr::ReloadCurrentLayout()
{
    const std::string file = m_strLayoutFile;
    ReloadLayout(file.c_str());
}

BOOL CQzGuiInfoMgr::LoadLogicLayout(const char* pszFile)
{
    RetireTable(m_mapVariantRecord);
    CQzLayoutReader reader(m_setHelpLink, true, "data error");
    if (!reader.Open(IniPath(pszFile).c_str()))
        return FALSE;
    RecordPtr pPending;
    reader.Read(
        [&](const QzLayoutSection& section)
        {
            pPending = std::make_unique<CQzGuiWndInfo>();
            pPending->SetParentId(section.nParentId);
            pPending->SetCtrlId(section.nCtrlId);
            pPending->SetVariant(section.nVariant);
            return pPending.get();
        },
        [&](const QzLayoutSection& section, CQzGuiWndInfo*, bool bValid)
        {
            RecordPtr pRecord = std::move(pPending);
            if (!bValid)
                return;
            const uint64_t nKey = MakeKey(section.nParentId, section.nCtrlId);
            m_mapVariantRecord[MakeVariantKey(nKey, section.nVariant)] = std::move(pRecord);
        });
    return TRUE;
}

IQzGuiWndInfo* CQzGuiInfoMgr::GetWndInfo(DWORD nParentId, DWORD nCtrlId, int nType, DWORD nVariant)
{
    const uint64_t nKey = MakeKey(nParentId, nCtrlId);
    if (nVariant != 0)
    {
        const auto found =
            m_mapVariantRecord.find(MakeVariantKey(nKey, static_cast<int>(nVariant)));
        if (found != m_mapVariantRecord.end())
            return found->second.get();
    }
    if (CQzGuiWndInfo* pRecord = FindRecord(nKey))
        return pRecord;
    return GenerateWndInfo(nParentId, nCtrlId, nType);
}

// A window no file configures gets a record built from the dialog templates of the host's
// resource module, appended to the layout file for a designer. The templates are read by the
// dialog-template reader; none is attached to this manager, so no template describes the
// window: the result is null, and nothing is logged.
CQzGuiWndInfo* CQzGuiInfoMgr::GenerateWndInfo(DWORD nParentId, DWORD nCtrlId, int nType)
{
    if (!m_pGuiMgr)
        return nullptr;
    EnsureIniFile();
    return nullptr;
}

BOOL CQzGuiInfoMgr::WriteWndSection(const char* pszSection, int x, int y, int w, int h, int nType,
                                    const char* pszTitle, const char* pszAniSection, int nCaptionId)
{
    const std::string path = IniPath(m_strLayoutFile.c_str());
    const char* pszPath = path.c_str();
    // Deleting the section first leaves exactly the keys written below.
    QzPlatform::IniWriteString(pszSection, nullptr, nullptr, pszPath);
    QzPlatform::IniWriteString(pszSection, "x", DecimalText(x).c_str(), pszPath);
    QzPlatform::IniWriteString(pszSection, "y", DecimalText(y).c_str(), pszPath);
    QzPlatform::IniWriteString(pszSection, "w", DecimalText(w).c_str(), pszPath);
    QzPlatform::IniWriteString(pszSection, "h", DecimalText(h).c_str(), pszPath);
    QzPlatform::IniWriteString(pszSection, "type", DecimalText(nType).c_str(), pszPath);
    if (pszTitle)
        QzPlatform::IniWriteString(pszSection, "Title", pszTitle, pszPath);
    if (nType == 5)
        QzPlatform::IniWriteString(pszSection, "FontSize", "12", pszPath);
    if (pszAniSection)
        QzPlatform::IniWriteString(pszSection, "AniSection", pszAniSection, pszPath);
    if (nCaptionId != 0)
        QzPlatform::IniWriteString(pszSection, "CaptionID", DecimalText(nCaptionId).c_str(),
                                   pszPath);
    return TRUE;
}

BOOL CQzGuiInfoMgr::EnsureIniFile()
{
    if (m_bIniFileReady)
        return TRUE;
    char szDirectory[MAX_PATH * 4];
    const DWORD length = GetCurrentDirectoryA(sizeof(szDirectory), szDirectory);
    if (length == 0 || length >= sizeof(szDirectory))
        return FALSE;
    const std::string path =
        std::string(szDirectory, length) + "/" + std::string("ini/") + m_strLayoutFile;
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle hFile = files.Open(path.c_str(), "a+");
    if (!hFile)
        return FALSE;
    files.Close(hFile);
    m_bIniFileReady = true;
    return TRUE;
}

void CQzGuiInfoMgr::SetTipText(uint64_t nKey, const char* pszText)
{
    if (CQzGuiWndInfo* pRecord = FindRecord(nKey))
        pRecord->SetTipText(pszText);
}

void CQzGuiInfoMgr::SetInfoString(uint64_t nKey, const char* pszText)
{
    SetTipText(nKey, pszText);
}

void CQzGuiInfoMgr::ClearAll()
{
    const auto root = m_mapRecord.find(kRootKey);
    if (root != m_mapRecord.end())
        m_mapRecord.erase(root);
    m_mapRecord.clear();
    m_vecExtRecord.clear();
    m_mapRegion.clear();
    m_mapCursor.clear();
    m_mapAniGroup.clear();
    m_mapVariantRecord.clear();
    m_setHelpLink.clear();
    m_vecRetired.clear();
}

void CQzGuiInfoMgr::InsertRecord(CQzGuiWndInfo* pRecord)
{
    if (!pRecord)
        return;
    RecordPtr pOwned(pRecord);
    const uint64_t nKey = MakeKey(static_cast<DWORD>(pRecord->GetParentId()),
                                  static_cast<DWORD>(pRecord->GetCtrlId()));
    MarkRegion(nKey, *pRecord);
    StoreRecord(nKey, std::move(pOwned));
}

CQzGuiWndInfo* CQzGuiInfoMgr::FindRecord(uint64_t nKey) const
{
    const auto found = m_mapRecord.find(nKey);
    return found == m_mapRecord.end() ? nullptr : found->second.get();
}

// Puts the record under the key; one it replaces stays alive for the windows holding it.
void CQzGuiInfoMgr::StoreRecord(uint64_t nKey, RecordPtr pRecord)
{
    RetireRecord(nKey);
    m_mapRecord[nKey] = std::move(pRecord);
}

void CQzGuiInfoMgr::RetireRecord(uint64_t nKey)
{
    const auto found = m_mapRecord.find(nKey);
    if (found == m_mapRecord.end())
        return;
    RemoveExtRecord(nKey);
    m_vecRetired.push_back(std::move(found->second));
    m_mapRecord.erase(found);
}

void CQzGuiInfoMgr::RetireTable(RecordTable& table)
{
    for (auto& entry : table)
        m_vecRetired.push_back(std::move(entry.second));
    table.clear();
}

void CQzGuiInfoMgr::MarkRegion(uint64_t nKey, CQzGuiWndInfo& record) const
{
    if (m_mapRegion.count(nKey) != 0)
        record.AddFlags(WNDINFO_FLAG_REGION);
}

// Animation groups.

BOOL CQzGuiInfoMgr::LoadAniGroups()
{
    m_mapAniGroup.clear();
    return CQzAniGroupReader::Read(kAniGroupFile, m_mapAniGroup);
}

const QzAniGroup* CQzGuiInfoMgr::GetAniGroup(const char* pszName) const
{
    if (!pszName)
        return nullptr;
    const auto found = m_mapAniGroup.find(pszName);
    return found == m_mapAniGroup.end() ? nullptr : &found->second;
}

int CQzGuiInfoMgr::GetAniGroupCount(const char* pszName) const
{
    const QzAniGroup* pGroup = GetAniGroup(pszName);
    return pGroup ? static_cast<int>(pGroup->pieces.size()) : 0;
}

const QzAniGroupPiece* CQzGuiInfoMgr::GetAniGroupPiece(const char* pszName, int nIndex) const
{
    const QzAniGroup* pGroup = GetAniGroup(pszName);
    if (!pGroup || nIndex < 0 || nIndex >= static_cast<int>(pGroup->pieces.size()))
        return nullptr;
    return &pGroup->pieces[static_cast<size_t>(nIndex)];
}

// Cursors.

BOOL CQzGuiInfoMgr::LoadCursors()
{
    return CQzCursorReader::Read(kCursorFile, m_mapCursor);
}

const QzCursorEntry* CQzGuiInfoMgr::GetCursorEntry(const char* pszName) const
{
    if (!pszName)
        return nullptr;
    const auto found = m_mapCursor.find(pszName);
    return found == m_mapCursor.end() ? nullptr : &found->second;
}

// Regions.

BOOL CQzGuiInfoMgr::LoadRegions()
{
    return CQzRegionReader::Read(kRegionFile, m_mapRegion,
                                 [this](uint64_t nKey)
                                 {
                                     if (CQzGuiWndInfo* pRecord = FindRecord(nKey))
                                         pRecord->AddFlags(WNDINFO_FLAG_REGION);
                                 });
}

HRGN CQzGuiInfoMgr::CreateWndRegion(DWORD nParentId, DWORD nCtrlId) const
{
    const auto found = m_mapRegion.find(MakeKey(nParentId, nCtrlId));
    if (found == m_mapRegion.end() || found->second.data.empty())
        return nullptr;
    const QzRegionEntry& entry = found->second;
    return ExtCreateRegion(nullptr, static_cast<DWORD>(entry.data.size()),
                           reinterpret_cast<const RGNDATA*>(entry.data.data()));
}

// Extended records.

BOOL CQzGuiInfoMgr::LoadExtendedLayout()
{
    CQzLayoutReader reader(m_setHelpLink, false, "invalid data");
    if (!reader.Open(kExtendedFile))
        return FALSE;
    RecordPtr pPending;
    reader.Read([&](const QzLayoutSection& section)
                { return BeginLayoutSection(section, &pPending); },
                [&](const QzLayoutSection& section, CQzGuiWndInfo* pRecord, bool bValid)
                { EndExtendedSection(section, pRecord, std::move(pPending), bValid); });
    return TRUE;
}

// A section of a record the table holds refills that record and leaves the extended list as it
// is; a new valid record goes into both. An invalid one leaves neither with the key.
void CQzGuiInfoMgr::EndExtendedSection(const QzLayoutSection& section, CQzGuiWndInfo* pRecord,
                                       RecordPtr pPending, bool bValid)
{
    const uint64_t nKey = MakeKey(section.nParentId, section.nCtrlId);
    if (!bValid)
    {
        if (!pPending)
            RetireRecord(nKey);
        return;
    }
    MarkRegion(nKey, *pRecord);
    if (!pPending)
        return;
    m_mapRecord[nKey] = std::move(pPending);
    m_vecExtRecord.emplace_back(nKey, pRecord);
}

void CQzGuiInfoMgr::RemoveExtRecord(uint64_t nKey)
{
    for (auto it = m_vecExtRecord.begin(); it != m_vecExtRecord.end(); ++it)
    {
        if (it->first == nKey)
        {
            m_vecExtRecord.erase(it);
            return;
        }
    }
}

std::vector<IQzGuiWndInfo*> CQzGuiInfoMgr::GetExtRecords(DWORD nParentId) const
{
    std::vector<IQzGuiWndInfo*> records;
    for (const auto& entry : m_vecExtRecord)
    {
        if (static_cast<DWORD>(entry.second->GetParentId()) == nParentId)
            records.push_back(entry.second);
    }
    return records;
}

// Links.

const char* CQzGuiInfoMgr::GetHelpLink(int nIndex) const
{
    if (nIndex < 0 || static_cast<size_t>(nIndex) >= m_setHelpLink.size())
    {
        LogMsg("ASSERT(nIndex >= 0 && nIndex < m_setHelpLink.size()) in %d line of %s", __LINE__,
               "QzGuiInfoMgr");
        return nullptr;
    }
    return m_setHelpLink[static_cast<size_t>(nIndex)].c_str();
}

} // namespace QzGui
