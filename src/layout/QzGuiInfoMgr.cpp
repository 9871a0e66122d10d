#include "layout/QzGuiInfoMgr.h"

#include "diagnostics/DumpRsc.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzAniGroupReader.h"
#include "layout/QzCursorReader.h"
#include "layout/QzLayoutReader.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzFile.h"
#include "platform/services/QzIni.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <algorithm>
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
constexpr int kDialogType = 1;
constexpr int kStaticType = 5;
// Generated records place a dialog here and show their windows in this back mode until a
// designer edits the section.
constexpr int kGeneratedDialogPos = 200;
constexpr int kGeneratedBackShowMode = 6;
constexpr int kGeneratedFontSize = 12;

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

// Dialog units to pixels of the layout, truncated toward zero.
int ScaleDialogUnits(LONG nUnits)
{
    return static_cast<int>(nUnits * 1.8);
}

std::string SectionName(DWORD nParentId, DWORD nCtrlId)
{
    return std::to_string(static_cast<int>(nParentId)) + "-" +
           std::to_string(static_cast<int>(nCtrlId));
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
    // Windows holding records of the last load keep them until the reload messages give them
    // the new ones.
    RetireTable(m_mapRecord);
    m_mapExtRecord.clear();
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

bool CQzGuiInfoMgr::IsCurrentRecord(const IQzGuiWndInfo* pInfo) const
{
    if (!pInfo)
        return false;
    const uint64_t nKey =
        MakeKey(static_cast<DWORD>(pInfo->GetParentId()), static_cast<DWORD>(pInfo->GetCtrlId()));
    if (FindRecord(nKey) == pInfo)
        return true;
    const auto found = m_mapVariantRecord.find(MakeVariantKey(nKey, pInfo->GetVariant()));
    return found != m_mapVariantRecord.end() && found->second.get() == pInfo;
}

// A window no file configures gets a record built from the dialog templates of the host's
// resource module, appended to the layout file for a designer.
CQzGuiWndInfo* CQzGuiInfoMgr::GenerateWndInfo(DWORD nParentId, DWORD nCtrlId, int nType)
{
    if (!m_pGuiMgr)
        return nullptr;
    RecordPtr pRecord = std::make_unique<CQzGuiWndInfo>();
    pRecord->SetParentId(static_cast<int>(nParentId));
    pRecord->SetCtrlId(static_cast<int>(nCtrlId));
    const BOOL bGenerated = nType == kDialogType
                                ? GenerateDialogInfo(nCtrlId, *pRecord)
                                : GenerateCtrlInfo(nParentId, nCtrlId, nType, *pRecord);
    if (!bGenerated)
        return nullptr;
    CQzGuiWndInfo* pGenerated = pRecord.get();
    StoreRecord(MakeKey(nParentId, nCtrlId), std::move(pRecord));
    QzPlatform::LogEvent(
        "Control information no configuration!!!", "QzGuiInfoMgr", __LINE__,
        {QzPlatform::LogInt("parent_id", nParentId), QzPlatform::LogInt("ctrl_id", nCtrlId)});
    return pGenerated;
}

// A control takes the rectangle and caption of the item with its identifier in the template
// of its dialog (the default dialog for parent 0).
BOOL CQzGuiInfoMgr::GenerateCtrlInfo(DWORD nParentId, DWORD nCtrlId, int nType,
                                     CQzGuiWndInfo& record)
{
    const CQzGuiMgr* pMgr = static_cast<const CQzGuiMgr*>(m_pGuiMgr);
    const DWORD nDialogId =
        nParentId != 0 ? nParentId : static_cast<DWORD>(pMgr->GetDefaultDlgId());
    const DialogRscInfo* pDialog = FindDialogTemplate(nDialogId);
    if (!pDialog)
        return FALSE;
    const auto item = std::find_if(pDialog->items.begin(), pDialog->items.end(),
                                   [&](const DialogItemInfo& info) { return info.id == nCtrlId; });
    if (item == pDialog->items.end())
        return FALSE;
    const int x = ScaleDialogUnits(item->rect.left);
    const int y = ScaleDialogUnits(item->rect.top);
    const int w = ScaleDialogUnits(item->rect.right - item->rect.left);
    const int h = ScaleDialogUnits(item->rect.bottom - item->rect.top);
    record.SetX(static_cast<WORD>(x));
    record.SetY(static_cast<WORD>(y));
    record.SetWidth(static_cast<WORD>(w));
    record.SetHeight(static_cast<WORD>(h));
    record.SetBackShowMode(kGeneratedBackShowMode);
    record.SetFontSize(kGeneratedFontSize);
    record.SetTitle(item->title.c_str());

    const std::string section = SectionName(nParentId, nCtrlId);
    const char* pszSection = section.c_str();
    WriteLayoutKey(pszSection, nullptr, nullptr);
    WriteLayoutKey(pszSection, "x", DecimalText(x).c_str());
    WriteLayoutKey(pszSection, "y", DecimalText(y).c_str());
    WriteLayoutKey(pszSection, "w", DecimalText(w).c_str());
    WriteLayoutKey(pszSection, "h", DecimalText(h).c_str());
    WriteLayoutKey(pszSection, "type", DecimalText(nType).c_str());
    WriteLayoutKey(pszSection, "BackShowMode", DecimalText(kGeneratedBackShowMode).c_str());
    if (!item->title.empty())
        WriteLayoutKey(pszSection, "Title", item->title.c_str());
    if (nType == kStaticType)
    {
        record.AddFlags(WNDINFO_FLAG_FONTSIZE);
        WriteLayoutKey(pszSection, "FontSize", DecimalText(kGeneratedFontSize).c_str());
        return TRUE;
    }
    // Other controls show a draggable placeholder in the file; the record keeps back mode 6
    // and no animation section.
    WriteLayoutKey(pszSection, "BackShowMode", "0");
    WriteLayoutKey(pszSection, "AniSection", "Public_Drag1Btn");
    return TRUE;
}

// A dialog takes the size of its template at a fixed place.
BOOL CQzGuiInfoMgr::GenerateDialogInfo(DWORD nDialogId, CQzGuiWndInfo& record)
{
    const DialogRscInfo* pDialog = FindDialogTemplate(nDialogId);
    if (!pDialog)
        return FALSE;
    const int w = ScaleDialogUnits(pDialog->rect.right - pDialog->rect.left);
    const int h = ScaleDialogUnits(pDialog->rect.bottom - pDialog->rect.top);
    record.SetX(static_cast<WORD>(kGeneratedDialogPos));
    record.SetY(static_cast<WORD>(kGeneratedDialogPos));
    record.SetWidth(static_cast<WORD>(w));
    record.SetHeight(static_cast<WORD>(h));
    record.SetStyle(0);
    record.SetBackShowMode(kGeneratedBackShowMode);

    const std::string section = SectionName(0, nDialogId);
    const char* pszSection = section.c_str();
    WriteLayoutKey(pszSection, nullptr, nullptr);
    WriteLayoutKey(pszSection, "x", DecimalText(kGeneratedDialogPos).c_str());
    WriteLayoutKey(pszSection, "y", DecimalText(kGeneratedDialogPos).c_str());
    WriteLayoutKey(pszSection, "w", DecimalText(w).c_str());
    WriteLayoutKey(pszSection, "h", DecimalText(h).c_str());
    WriteLayoutKey(pszSection, "Style", "1");
    WriteLayoutKey(pszSection, "BackShowMode", DecimalText(kGeneratedBackShowMode).c_str());
    return TRUE;
}

const DialogRscInfo* CQzGuiInfoMgr::FindDialogTemplate(DWORD nDialogId)
{
    EnsureIniFile();
    const HINSTANCE hInstance = static_cast<const CQzGuiMgr*>(m_pGuiMgr)->GetInstance();
    if (!hInstance)
        return nullptr;
    if (!m_pDumpRsc)
        m_pDumpRsc = std::make_unique<CDumpRsc>();
    return m_pDumpRsc->FindDialogRsc(hInstance, nDialogId);
}

// Writes into the layout file; a null key deletes the section, so that it starts empty.
void CQzGuiInfoMgr::WriteLayoutKey(const char* pszSection, const char* pszKey,
                                   const char* pszValue) const
{
    QzPlatform::IniWriteString(pszSection, pszKey, pszValue,
                               IniPath(m_strLayoutFile.c_str()).c_str());
}

BOOL CQzGuiInfoMgr::WriteWndSection(const char* pszSection, int x, int y, int w, int h, int nType,
                                    const char* pszTitle, const char* pszAniSection, int nCaptionId)
{
    // Deleting the section first leaves exactly the keys written below.
    WriteLayoutKey(pszSection, nullptr, nullptr);
    WriteLayoutKey(pszSection, "x", DecimalText(x).c_str());
    WriteLayoutKey(pszSection, "y", DecimalText(y).c_str());
    WriteLayoutKey(pszSection, "w", DecimalText(w).c_str());
    WriteLayoutKey(pszSection, "h", DecimalText(h).c_str());
    WriteLayoutKey(pszSection, "type", DecimalText(nType).c_str());
    if (pszTitle)
        WriteLayoutKey(pszSection, "Title", pszTitle);
    if (nType == kStaticType)
        WriteLayoutKey(pszSection, "FontSize", "12");
    if (pszAniSection)
        WriteLayoutKey(pszSection, "AniSection", pszAniSection);
    if (nCaptionId != 0)
        WriteLayoutKey(pszSection, "CaptionID", DecimalText(nCaptionId).c_str());
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
    RetireRecord(kRootKey);
    RetireTable(m_mapRecord);
    m_mapExtRecord.clear();
    m_mapRegion.clear();
    m_mapCursor.clear();
    m_mapAniGroup.clear();
    RetireTable(m_mapVariantRecord);
    m_setHelpLink.clear();
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
    m_mapExtRecord.erase(nKey);
    CQzGuiWndInfo::Retire(std::move(found->second));
    m_mapRecord.erase(found);
}

void CQzGuiInfoMgr::RetireTable(RecordTable& table)
{
    for (auto& entry : table)
        CQzGuiWndInfo::Retire(std::move(entry.second));
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
    m_mapExtRecord[nKey] = pRecord;
}

void CQzGuiInfoMgr::CollectExtendedRecords(ExtRecordTable& records, DWORD nParentId) const
{
    records.clear();
    for (const auto& entry : m_mapExtRecord)
    {
        if (static_cast<DWORD>(entry.second->GetParentId()) == nParentId)
            records.emplace(entry.first, entry.second);
    }
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
