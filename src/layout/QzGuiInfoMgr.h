// The layout manager: reads the layout files under ini/ into window information records and
// hands them out by window identifiers, writes sections back for designers, and keeps the
// auxiliary tables windows consult (animation groups, cursors, click regions, extended records,
// help links). One per GUI manager; it owns every record and table entry.
//
// Record keys: parent id in the low 32 bits (widened with its sign), control id in the high 32
// bits. Variant keys: record key x 100 + variant, wrapping.
//
// A record taken out of the tables (by a reload, a replacement or ClearAll) lives on while a
// window holds it (CQzGuiWndInfo::Hold) and is freed when the last window lets it go, which the
// reload messages make happen within the reload. A caller that keeps a record pointer without
// holding it must not use it after the next reload.
#pragma once

#include "layout/QzAniGroup.h"
#include "layout/QzCursorEntry.h"
#include "layout/QzGuiWndInfo.h"
#include "layout/QzRegionReader.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class CDumpRsc;
struct DialogRscInfo;

namespace QzGui
{

class IQzGuiMgr;
struct QzLayoutSection;

class CQzGuiInfoMgr
{
public:
    CQzGuiInfoMgr();
    ~CQzGuiInfoMgr();
    CQzGuiInfoMgr(const CQzGuiInfoMgr&) = delete;
    CQzGuiInfoMgr& operator=(const CQzGuiInfoMgr&) = delete;

    // Stores the GUI manager (a CQzGuiMgr) and creates the root record (key 0) sized to its
    // screen. Fails, with a report, for a null manager.
    BOOL Init(IQzGuiMgr* pGuiMgr);

    // Reads "ini\<file>" as a layout file, then ini/AniGroup.ini, and when they exist
    // ini/Cursor.ini, ini/Rgn.dat and ini/GUI_EX.ini. Fails only when the layout file cannot
    // be opened; nothing changes then.
    BOOL LoadLayout(const char* pszFile);
    // Empties the animation-group, region and cursor tables, then LoadLayout.
    void ReloadLayout(const char* pszFile);
    void ReloadCurrentLayout();
    // Replaces the variant records with those of "ini\<file>" (sections "[parent-ctrl-variant]").
    BOOL LoadLogicLayout(const char* pszFile);

    // The variant record (variant not 0), else the record; else a record generated from the
    // dialog templates of the host's resource module; null when nothing describes the window.
    IQzGuiWndInfo* GetWndInfo(DWORD nParentId, DWORD nCtrlId, int nType, DWORD nVariant);
    // Whether the tables hold this record under its key now: false for one a reload took out.
    bool IsCurrentRecord(const IQzGuiWndInfo* pInfo) const;

    // Replaces the named section of the layout file with these keys; the records in memory
    // stay as they are.
    BOOL WriteWndSection(const char* pszSection, int x, int y, int w, int h, int nType,
                         const char* pszTitle = nullptr, const char* pszAniSection = nullptr,
                         int nCaptionId = 0);
    // Creates the layout file under the current directory when it is missing (once per
    // manager); true when it is there.
    BOOL EnsureIniFile();

    void SetTipText(uint64_t nKey, const char* pszText);
    // Replaces the text attribute (the tip text) of the record under the key.
    void SetInfoString(uint64_t nKey, const char* pszText);

    // Empties every table; records that windows still hold live on until they let them go.
    void ClearAll();
    // The name of the last layout file loaded, without the ini folder.
    const char* GetLayoutFileName() const { return m_strLayoutFile.c_str(); }
    // Takes ownership; replaces (and keeps alive) the record under the same key.
    void InsertRecord(CQzGuiWndInfo* pRecord);

    // Animation groups (ini/AniGroup.ini). Pointers stay valid until the next reload.
    BOOL LoadAniGroups();
    const QzAniGroup* GetAniGroup(const char* pszName) const;
    const std::map<std::string, QzAniGroup>& GetAniGroups() const { return m_mapAniGroup; }
    int GetAniGroupCount(const char* pszName) const;
    const QzAniGroupPiece* GetAniGroupPiece(const char* pszName, int nIndex) const;

    // Cursors (ini/Cursor.ini).
    BOOL LoadCursors();
    const QzCursorEntry* GetCursorEntry(const char* pszName) const;

    // Click regions (ini/Rgn.dat). CreateWndRegion gives a new region the caller deletes.
    BOOL LoadRegions();
    HRGN CreateWndRegion(DWORD nParentId, DWORD nCtrlId) const;

    // Extended records (ini/GUI_EX.ini), held by the record table as well, by record key.
    using ExtRecordTable = std::map<uint64_t, IQzGuiWndInfo*>;
    BOOL LoadExtendedLayout();
    // Empties the table, then puts in it the extended records of this parent under their keys.
    void CollectExtendedRecords(ExtRecordTable& records, DWORD nParentId) const;

    // The text of a "Link" key by its link index; null, with a report, outside the list.
    const char* GetHelpLink(int nIndex) const;

    static uint64_t MakeKey(DWORD nParentId, DWORD nCtrlId);
    static uint64_t MakeVariantKey(uint64_t nKey, int nVariant);

private:
    using RecordPtr = std::unique_ptr<CQzGuiWndInfo>;
    using RecordTable = std::map<uint64_t, RecordPtr>;

    CQzGuiWndInfo* FindRecord(uint64_t nKey) const;
    void StoreRecord(uint64_t nKey, RecordPtr pRecord);
    // Takes records out of the tables; each is freed now or by the last window holding it.
    void RetireRecord(uint64_t nKey);
    static void RetireTable(RecordTable& table);
    void MarkRegion(uint64_t nKey, CQzGuiWndInfo& record) const;
    void FitRootToScreen();
    void LoadOptionalTables();

    // Generation of the records of windows that no layout file configures, from the dialog
    // templates of the GUI manager's resource module; each also writes the record's section
    // into the layout file.
    CQzGuiWndInfo* GenerateWndInfo(DWORD nParentId, DWORD nCtrlId, int nType);
    BOOL GenerateCtrlInfo(DWORD nParentId, DWORD nCtrlId, int nType, CQzGuiWndInfo& record);
    BOOL GenerateDialogInfo(DWORD nDialogId, CQzGuiWndInfo& record);
    // The template of the dialog, read by the dialog-resource reader (made on first use).
    const DialogRscInfo* FindDialogTemplate(DWORD nDialogId);
    void WriteLayoutKey(const char* pszSection, const char* pszKey, const char* pszValue) const;

    // Section callbacks of the layout and extended readers. pPending holds the section's
    // record when it is new; a record the table already holds is refilled in place.
    CQzGuiWndInfo* BeginLayoutSection(const QzLayoutSection& section, RecordPtr* ppPending);
    void EndLayoutSection(const QzLayoutSection& section, CQzGuiWndInfo* pRecord,
                          RecordPtr pPending, bool bValid);
    void EndExtendedSection(const QzLayoutSection& section, CQzGuiWndInfo* pRecord,
                            RecordPtr pPending, bool bValid);

    bool m_bIniFileReady = false;
    std::map<std::string, QzAniGroup> m_mapAniGroup;
    IQzGuiMgr* m_pGuiMgr = nullptr;
    std::string m_strLayoutFile;
    RecordTable m_mapRecord;
    // Extended records by key; the record table owns them.
    std::map<uint64_t, CQzGuiWndInfo*> m_mapExtRecord;
    std::map<uint64_t, QzRegionEntry> m_mapRegion;
    std::map<std::string, QzCursorEntry> m_mapCursor;
    // A deque, so that texts handed out by GetHelpLink stay put when links are appended.
    std::deque<std::string> m_setHelpLink;
    RecordTable m_mapVariantRecord;
    std::unique_ptr<CDumpRsc> m_pDumpRsc;
};

} // namespace QzGui
