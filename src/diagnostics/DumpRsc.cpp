#include "diagnostics/DumpRsc.h"

#include "diagnostics/QzByteCursor.h"
#include "diagnostics/QzPeResourceReader.h"
#include "platform/services/QzLog.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

using QzGui::CQzByteCursor;
using QzGui::CQzPeResourceReader;

namespace
{

constexpr WORD kDialogResourceType = 5; // RT_DIALOG
constexpr WORD kExtendedSignature = 0xFFFF;
constexpr WORD kOrdinalMarker = 0xFFFF;
constexpr DWORD kSetFontStyle = 0x40; // DS_SETFONT, part of DS_SHELLFONT too
// Texts of the templates are converted into buffers of this many bytes, terminator included.
constexpr size_t kTextBufferSize = 256;
// A character takes at most two UTF-16 units: more than this never fits into the buffer.
constexpr size_t kMaxTextUnits = 2 * (kTextBufferSize - 1);

struct StyleName
{
    DWORD dwMask;
    const char* pszName;
};

// Window styles first: an item's styles are the first sixteen rows. Every row together makes
// 424 characters, well inside the 512 bytes the text was always given.
const StyleName kStyleNames[] = {
    {0x80000000, "WS_POPUP"},        {0x40000000, "WS_CHILD"},
    {0x20000000, "WS_MINIMIZE"},     {0x10000000, "WS_VISIBLE"},
    {0x08000000, "WS_DISABLED"},     {0x04000000, "WS_CLIPSIBLINGS"},
    {0x02000000, "WS_CLIPCHILDREN"}, {0x01000000, "WS_MAXIMIZE"},
    {0x00800000, "WS_BORDER"},       {0x00400000, "WS_DLGFRAME"},
    {0x00200000, "WS_VSCROLL"},      {0x00100000, "WS_HSCROLL"},
    {0x00080000, "WS_SYSMENU"},      {0x00040000, "WS_THICKFRAME"},
    {0x00020000, "WS_GROUP"},        {0x00010000, "WS_TABSTOP"},
    {0x01, "DS_ABSALIGN"},           {0x02, "DS_SYSMODAL"},
    {0x20, "DS_LOCALEDIT"},          {0x40, "DS_SETFONT"},
    {0x80, "DS_MODALFRAME"},         {0x100, "DS_NOIDLEMSG"},
    {0x200, "DS_SETFOREGROUND"},     {0x04, "DS_3DLOOK"},
    {0x08, "DS_FIXEDSYS"},           {0x10, "DS_NOFAILCREATE"},
    {0x400, "DS_CONTROL"},           {0x800, "DS_CENTER"},
    {0x1000, "DS_CENTERMOUSE"},      {0x2000, "DS_CONTEXTHELP"},
};
constexpr size_t kItemStyleRows = 16;

CDumpRsc::TraceSink g_pfnTraceSink = nullptr;
void* g_pTraceContext = nullptr;

std::string FormatArgs(const char* pszFormat, va_list args)
{
    va_list measure;
    va_copy(measure, args);
    const int nLength = std::vsnprintf(nullptr, 0, pszFormat, measure);
    va_end(measure);
    if (nLength <= 0)
        return std::string();
    std::string text(static_cast<size_t>(nLength) + 1, '\0');
    std::vsnprintf(&text[0], text.size(), pszFormat, args);
    text.resize(static_cast<size_t>(nLength));
    return text;
}

// UTF-16 units as the platform's wide characters (UTF-32 here; UTF-16 on Windows). A surrogate
// without its partner becomes U+FFFD.
std::basic_string<WCHAR> WidenUtf16(const std::u16string& units)
{
    std::basic_string<WCHAR> wide;
    for (size_t i = 0; i < units.size(); ++i)
    {
        const char32_t unit = units[i];
        const bool bHigh = unit >= 0xD800 && unit <= 0xDBFF;
        const bool bPaired =
            bHigh && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
        if (sizeof(WCHAR) == 2 || (unit < 0xD800 || unit > 0xDFFF))
            wide.push_back(static_cast<WCHAR>(unit));
        else if (bPaired)
            wide.push_back(static_cast<WCHAR>(0x10000 + ((unit - 0xD800) << 10) +
                                              (static_cast<char32_t>(units[++i]) - 0xDC00)));
        else
            wide.push_back(static_cast<WCHAR>(0xFFFD));
    }
    return wide;
}

// Wide text in the ANSI code page, cut to fit the text buffer before a character that would
// not fit whole.
std::string ToAnsi(const std::u16string& units)
{
    const std::basic_string<WCHAR> wide = WidenUtf16(units);
    std::string text;
    size_t i = 0;
    while (i < wide.size())
    {
        // A UTF-16 platform keeps a surrogate pair together.
        size_t nChars = 1;
        if (sizeof(WCHAR) == 2 && i + 1 < wide.size() && wide[i] >= 0xD800 && wide[i] <= 0xDBFF)
            nChars = 2;
        char szBytes[16];
        const int nBytes = WideCharToMultiByte(CP_ACP, 0, wide.data() + i, static_cast<int>(nChars),
                                               szBytes, sizeof(szBytes), nullptr, nullptr);
        if (nBytes > 0 && text.size() + static_cast<size_t>(nBytes) >= kTextBufferSize)
            break;
        if (nBytes > 0)
            text.append(szBytes, static_cast<size_t>(nBytes));
        i += nChars;
    }
    return text;
}

// A zero-terminated UTF-16 string; units beyond what the text buffer can take are skipped.
std::u16string ReadUtf16(CQzByteCursor& cursor)
{
    std::u16string units;
    for (;;)
    {
        const WORD nUnit = cursor.Word();
        if (!cursor.Ok() || nUnit == 0)
            return units;
        if (units.size() < kMaxTextUnits)
            units.push_back(static_cast<char16_t>(nUnit));
    }
}

// The menu, class and title fields: nothing (0), an ordinal (0xFFFF and a number) or a string.
struct NameOrOrdinal
{
    bool bOrdinal = false;
    WORD nOrdinal = 0;
    std::string text;
};

NameOrOrdinal ReadNameOrOrdinal(CQzByteCursor& cursor)
{
    NameOrOrdinal field;
    if (cursor.PeekWord() == kOrdinalMarker)
    {
        cursor.Skip(2);
        field.bOrdinal = true;
        field.nOrdinal = cursor.Word();
        return field;
    }
    field.text = ToAnsi(ReadUtf16(cursor));
    return field;
}

// The fixed part of a template, plain or extended.
struct TemplateHeader
{
    bool bExtended = false;
    DWORD dwStyle = 0;
    DWORD dwExStyle = 0;
    WORD nItems = 0;
    short x = 0;
    short y = 0;
    short cx = 0;
    short cy = 0;
};

TemplateHeader ReadTemplateHeader(CQzByteCursor& cursor)
{
    TemplateHeader header;
    CQzByteCursor signature = cursor;
    signature.Skip(2);
    header.bExtended = signature.Word() == kExtendedSignature;
    if (header.bExtended)
    {
        cursor.Skip(8); // version, signature, help id
        header.dwExStyle = cursor.Dword();
        header.dwStyle = cursor.Dword();
    }
    else
    {
        header.dwStyle = cursor.Dword();
        header.dwExStyle = cursor.Dword();
    }
    header.nItems = cursor.Word();
    header.x = cursor.Short();
    header.y = cursor.Short();
    header.cx = cursor.Short();
    header.cy = cursor.Short();
    return header;
}

// The fixed part of an item, plain or extended.
struct ItemHeader
{
    DWORD dwStyle = 0;
    DWORD dwExStyle = 0;
    short x = 0;
    short y = 0;
    short cx = 0;
    short cy = 0;
    WORD nId = 0;
};

ItemHeader ReadItemHeader(CQzByteCursor& cursor, bool bExtended)
{
    ItemHeader header;
    if (bExtended)
    {
        cursor.Skip(4); // help id
        header.dwExStyle = cursor.Dword();
        header.dwStyle = cursor.Dword();
    }
    else
    {
        header.dwStyle = cursor.Dword();
        header.dwExStyle = cursor.Dword();
    }
    header.x = cursor.Short();
    header.y = cursor.Short();
    header.cx = cursor.Short();
    header.cy = cursor.Short();
    // An extended item has a 32-bit identifier; controls are known by the low 16 bits.
    header.nId = bExtended ? LOWORD(cursor.Dword()) : cursor.Word();
    return header;
}

} // namespace

CDumpRsc::CDumpRsc() = default;

CDumpRsc::~CDumpRsc() = default;

const DialogRscInfo* CDumpRsc::FindDialogRsc(HMODULE hModule, uint32_t nId)
{
    if (nId == 0)
        return nullptr;
    LoadDialogs(hModule);
    const auto found = std::find_if(m_vecDialogs.rbegin(), m_vecDialogs.rend(),
                                    [&](const DialogRscInfo& dialog) { return dialog.id == nId; });
    return found == m_vecDialogs.rend() ? nullptr : &*found;
}

BOOL CDumpRsc::LoadDialogs(HMODULE hModule)
{
    if (!m_vecDialogs.empty())
        return TRUE;
    if (m_bModuleRead && m_hModuleRead == hModule)
        return m_bModuleReadable;
    m_bModuleRead = true;
    m_hModuleRead = hModule;
    m_bModuleReadable = ReadModule(hModule);
    return m_bModuleReadable;
}

BOOL CDumpRsc::ReadModule(HMODULE hModule)
{
    char szPath[MAX_PATH] = {};
    const DWORD nLength = GetModuleFileNameA(hModule, szPath, MAX_PATH);
#ifdef _WIN32
    if (nLength == 0)
        return ReadDataFileView(hModule);
#endif
    if (nLength == 0 || nLength >= MAX_PATH)
        return FALSE;
    HANDLE hFile = CreateFileA(szPath, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return FALSE;
    const BOOL bRead = ReadMappedFile(hFile, szPath);
    CloseHandle(hFile);
    return bRead;
}

#ifdef _WIN32
// Windows has no file name for a module that LoadLibraryEx mapped as a data file: its handle is
// the address of the file's view with a low bit set (LOAD_LIBRARY_AS_DATAFILE), and the view is
// the file as it lies on disk, which is what the reader reads. The file's name is the view's.
BOOL CDumpRsc::ReadDataFileView(HMODULE hModule)
{
    const ULONG_PTR nHandle = reinterpret_cast<ULONG_PTR>(hModule);
    if ((nHandle & 3) != 1)
        return FALSE;
    const auto* pView = reinterpret_cast<const BYTE*>(nHandle & ~static_cast<ULONG_PTR>(3));
    MEMORY_BASIC_INFORMATION info = {};
    if (VirtualQuery(pView, &info, sizeof(info)) != sizeof(info) || info.BaseAddress != pView)
        return FALSE;
    char szPath[MAX_PATH] = {};
    if (!GetMappedFileNameA(GetCurrentProcess(), const_cast<BYTE*>(pView), szPath, MAX_PATH))
        std::strcpy(szPath, "(data file module)");
    return ReadImage(pView, info.RegionSize, szPath);
}
#endif

BOOL CDumpRsc::ReadMappedFile(HANDLE hFile, const char* pszPath)
{
    DWORD nSizeHigh = 0;
    const DWORD nSizeLow = GetFileSize(hFile, &nSizeHigh);
    const uint64_t nSize = (static_cast<uint64_t>(nSizeHigh) << 32) | nSizeLow;
    if (nSizeLow == INVALID_FILE_SIZE || nSize == 0 || nSize > SIZE_MAX)
        return FALSE;
    HANDLE hMapping = CreateFileMappingA(hFile, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (!hMapping)
        return FALSE;
    const void* pView = MapViewOfFile(hMapping, FILE_MAP_READ, 0, 0, 0);
    BOOL bRead = FALSE;
    if (pView)
    {
        bRead = ReadImage(static_cast<const BYTE*>(pView), static_cast<size_t>(nSize), pszPath);
        UnmapViewOfFile(pView);
    }
    CloseHandle(hMapping);
    return bRead;
}

// Every template that reads whole becomes a record with its lines; a damaged one is skipped
// with one log record, so that it costs no other window its record.
BOOL CDumpRsc::ReadImage(const BYTE* pImage, size_t nSize, const char* pszPath)
{
    CQzPeResourceReader reader(pImage, nSize);
    std::vector<CQzPeResourceReader::Entry> entries;
    if (!reader.Open() || !reader.ListType(kDialogResourceType, entries))
        return FALSE;
    m_vecDialogs.clear();
    m_vecTrace.clear();
    for (size_t i = 0; i < entries.size(); ++i)
    {
        DialogRscInfo record;
        const size_t nTraceMark = m_vecTrace.size();
        if (!ReadTemplate(entries[i], record))
        {
            m_vecTrace.resize(nTraceMark);
            ReportDamaged(pszPath, entries[i], i);
            continue;
        }
        m_vecDialogs.push_back(std::move(record));
    }
    for (const std::string& line : m_vecTrace)
        DumpTrace("%s", line.c_str());
    m_vecTrace.clear();
    return TRUE;
}

bool CDumpRsc::ReadTemplate(const CQzPeResourceReader::Entry& entry, DialogRscInfo& record)
{
    if (entry.bDamaged)
        return false;
    if (entry.bNamed)
    {
        record.text = ToAnsi(entry.strName);
        Trace("Dialog name: %s\n", record.text.c_str());
    }
    else
    {
        record.id = entry.nId;
        Trace("Dialog id: %u\n", record.id);
    }
    return DumpDialog(entry.data, record);
}

// Names the template by its id or name; by its place in the directory when its name could not be
// read.
void CDumpRsc::ReportDamaged(const char* pszPath, const CQzPeResourceReader::Entry& entry,
                             size_t nIndex)
{
    std::string name = entry.bNamed ? ToAnsi(entry.strName) : std::to_string(entry.nId);
    if (name.empty())
        name = "entry " + std::to_string(nIndex + 1);
    QzPlatform::LogEvent(
        "damaged dialog template", "DumpRsc", __LINE__,
        {QzPlatform::LogText("module", pszPath), QzPlatform::LogText("dialog", name.c_str())});
}

bool CDumpRsc::DumpDialog(CQzByteCursor cursor, DialogRscInfo& record)
{
    const TemplateHeader header = ReadTemplateHeader(cursor);
    Trace("style: %08X (%s)\n", static_cast<unsigned>(header.dwStyle),
          GetStyleText(header.dwStyle, TRUE).c_str());
    Trace("extended style: %08X\n", static_cast<unsigned>(header.dwExStyle));
    Trace("controls: %u\n", static_cast<unsigned>(header.nItems));
    Trace("Coords: (%d,%d) - (%d,%d)\n", header.x, header.y, header.x + header.cx,
          header.y + header.cy);
    record.rect = {0, 0, header.cx, header.cy};
    record.style = header.dwStyle;
    record.exStyle = header.dwExStyle;

    const NameOrOrdinal menu = ReadNameOrOrdinal(cursor);
    if (menu.bOrdinal)
        Trace("Menu ID: %u\n", static_cast<unsigned>(menu.nOrdinal));
    else if (!menu.text.empty())
        Trace("Menu Name: %s\n", menu.text.c_str());
    const NameOrOrdinal windowClass = ReadNameOrOrdinal(cursor);
    if (windowClass.bOrdinal)
        Trace("Class ID: %d\n", windowClass.nOrdinal);
    else if (!windowClass.text.empty())
        Trace("Class Name: %s\n", windowClass.text.c_str());
    const std::string title = ToAnsi(ReadUtf16(cursor));
    if (!title.empty())
    {
        Trace("Title: %s\n", title.c_str());
        record.text = title;
    }
    if (header.dwStyle & kSetFontStyle)
    {
        const WORD nPointSize = cursor.Word();
        if (header.bExtended)
            cursor.Skip(4); // weight, italic, character set
        Trace("Font: %u point %s\n", static_cast<unsigned>(nPointSize),
              ToAnsi(ReadUtf16(cursor)).c_str());
    }

    record.items.resize(std::min<size_t>(header.nItems, kMaxItems));
    for (DialogItemInfo& item : record.items)
    {
        cursor.Align(4);
        Trace("  ----\n");
        CQzByteCursor corner = cursor;
        corner.Skip(header.bExtended ? 12 : 8);
        const POINT pt = {corner.Short(), corner.Short()};
        if (!PtInRect(&record.rect, pt))
            Trace("  *** Item not within dialog ***\n");
        if (!corner.Ok() || !DumpItem(cursor, header.bExtended, item))
            return false;
    }
    return cursor.Ok();
}

bool CDumpRsc::DumpItem(CQzByteCursor& cursor, bool bExtended, DialogItemInfo& item)
{
    const ItemHeader header = ReadItemHeader(cursor, bExtended);
    if (!(header.dwStyle & WS_VISIBLE))
        Trace("  *** Dialog item not visible ***\n");
    Trace("  style: %X (%s)\n", static_cast<unsigned>(header.dwStyle),
          GetStyleText(header.dwStyle, FALSE).c_str());
    Trace("  dwExtendedStyle: %X\n", static_cast<unsigned>(header.dwExStyle));
    Trace("  Coords: (%d,%d) - (%d,%d)\n", header.x, header.y, header.x + header.cx,
          header.y + header.cy);
    Trace("  id: %d\n", header.nId);
    item.id = header.nId;
    item.rect = {header.x, header.y, header.x + header.cx, header.y + header.cy};
    item.style = header.dwStyle;
    item.exStyle = header.dwExStyle;
    DumpItemClass(cursor, item);
    DumpItemTitle(cursor, item);

    // Creation data: a plain item's first word, when not 0, is its size with that word; an
    // extended item's word counts the bytes after it.
    const size_t nDataStart = cursor.Pos();
    const WORD nDataSize = cursor.Word();
    if (bExtended)
        cursor.Skip(nDataSize);
    else if (nDataSize != 0)
        cursor.Seek(nDataStart + nDataSize);
    return cursor.Ok();
}

void CDumpRsc::DumpItemClass(CQzByteCursor& cursor, DialogItemInfo& item)
{
    const NameOrOrdinal windowClass = ReadNameOrOrdinal(cursor);
    if (windowClass.bOrdinal)
    {
        Trace("  Class: %s\n", GetAtomClassName(windowClass.nOrdinal));
        item.type = GetTypeFromAtom(windowClass.nOrdinal);
        return;
    }
    Trace("  Class: %s\n", windowClass.text.c_str());
    item.type = GetTypeFromClassName(windowClass.text.c_str());
}

void CDumpRsc::DumpItemTitle(CQzByteCursor& cursor, DialogItemInfo& item)
{
    const NameOrOrdinal title = ReadNameOrOrdinal(cursor);
    if (title.bOrdinal)
        Trace("  Title resource ID: %u\n", static_cast<unsigned>(title.nOrdinal));
    else if (!title.text.empty())
    {
        Trace("  Title: %s\n", title.text.c_str());
        item.title = title.text;
    }
}

void CDumpRsc::Trace(const char* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    m_vecTrace.push_back(FormatArgs(pszFormat, args));
    va_end(args);
}

std::string CDumpRsc::GetStyleText(DWORD dwStyle, BOOL bDialog)
{
    const size_t nRows = bDialog ? std::size(kStyleNames) : kItemStyleRows;
    std::string text;
    for (size_t i = 0; i < nRows; ++i)
    {
        if ((dwStyle & kStyleNames[i].dwMask) != kStyleNames[i].dwMask)
            continue;
        if (!text.empty())
            text += " | ";
        text += kStyleNames[i].pszName;
    }
    return text;
}

const char* CDumpRsc::GetAtomClassName(WORD nAtom)
{
    switch (nAtom)
    {
    case 0x80:
        return "Button";
    case 0x81:
        return "Edit";
    case 0x82:
        return "Static";
    case 0x83:
        return "List box";
    case 0x84:
        return "Scroll bar";
    case 0x85:
        return "Combo box";
    default:
        return "unknown";
    }
}

DWORD CDumpRsc::GetTypeFromAtom(WORD nAtom)
{
    switch (nAtom)
    {
    case 0x80:
        return 2;
    case 0x81:
        return 3;
    case 0x83:
        return 4;
    default:
        return 1;
    }
}

DWORD CDumpRsc::GetTypeFromClassName(const char* pszName)
{
    if (!pszName || !*pszName)
        return 0;
    if (QzPlatform::CompareNoCase(pszName, "msctls_progress32") == 0)
        return 6;
    if (QzPlatform::CompareNoCase(pszName, "SysTreeView32") == 0)
        return 5;
    return 1;
}

const char* CDumpRsc::GetTypeName(DWORD nType)
{
    static const char* const kNames[] = {"",        "Static", "Button",  "Edit",
                                         "ListBox", "Tree",   "Progress"};
    return nType < std::size(kNames) ? kNames[nType] : "";
}

void CDumpRsc::DumpTrace(const char* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    const std::string text = FormatArgs(pszFormat, args);
    va_end(args);
    if (g_pfnTraceSink)
        g_pfnTraceSink(text.c_str(), g_pTraceContext);
    // One record a line, without the line feed.
    const size_t nEnd = text.find_last_not_of('\n');
    const std::string line = nEnd == std::string::npos ? std::string() : text.substr(0, nEnd + 1);
    QzPlatform::LogEvent(
        "dump trace", "DumpRsc", __LINE__,
        {QzPlatform::LogText("level", "debug"), QzPlatform::LogText("text", line.c_str())});
}

void CDumpRsc::SetTraceSink(TraceSink pfnSink, void* pContext)
{
    g_pfnTraceSink = pfnSink;
    g_pTraceContext = pContext;
}
