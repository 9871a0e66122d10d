#include "LiveReload.h"

#include "framework/IQzGuiHelper.h"
#include "framework/IQzGuiMgr.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzStringTable.h"

namespace
{

// The tables the manager's layout reload reads again besides the layout files.
const char* const kLayoutTables[] = {"ini/AniGroup.ini", "ini/Cursor.ini", "ini/GUI_EX.ini",
                                     "ini/Gui3DEffect.ini"};

bool IsLayoutTable(const std::string& file)
{
    if (CBundleCheck::IsLayoutFile(file))
        return true;
    for (const char* table : kLayoutTables)
    {
        if (file == table)
            return true;
    }
    return false;
}

} // namespace

bool CLiveReload::Check(const std::vector<std::string>& files)
{
    std::set<std::string> toCheck(files.begin(), files.end());
    toCheck.insert(m_setBroken.begin(), m_setBroken.end());
    std::vector<BundleError> errors;
    m_setBroken.clear();
    for (const std::string& file : toCheck)
    {
        const size_t before = errors.size();
        CBundleCheck::CheckFile(m_strRoot, file, errors);
        if (errors.size() != before)
            m_setBroken.insert(file);
    }
    m_panel.Show(errors);
    for (const BundleError& error : errors)
        Log(error);
    return errors.empty();
}

void CLiveReload::Reload(QzGui::IQzGuiMgr& mgr, const std::vector<std::string>& files)
{
    bool bLayoutOnly = true;
    for (const std::string& file : files)
    {
        bLayoutOnly = bLayoutOnly && IsLayoutTable(file);
        if (file == "ini/StringTable.ini")
            QzPlatform::ReloadStringTable();
    }
    if (bLayoutOnly)
        mgr.ReloadLayout();
    else
        QzGui::GetGuiHelper()->ReloadAll();
}

void CLiveReload::Log(const BundleError& error)
{
    QzPlatform::LogEvent("data error", "LiveReload", __LINE__,
                         {QzPlatform::LogText("file_name", error.file.c_str()),
                          QzPlatform::LogInt("line_no", error.line),
                          QzPlatform::LogText("reason", error.message.c_str()),
                          QzPlatform::LogText("line", error.text.c_str())});
}
