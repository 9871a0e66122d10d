// Which windows a layout file configures, read from its section names ("[parent-ctrl]", a
// dialog's parent being 0) the way the layout reader reads them, and each control's window
// type (its "type" key). Names that are not two window ids are skipped.
#pragma once

#include "platform/system/QzSystem.h"

#include <string>
#include <vector>

namespace QzPreview
{

struct PreviewCtrlRecord
{
    DWORD nId = 0;
    int nType = 0; // the record's "type"; 0 when not given
};

class CPreviewLayout
{
public:
    // Reads the section names of the layout file; false when it cannot be read.
    bool Load(const std::string& path);

    bool HasDialog(DWORD nDialogId) const;
    // The controls whose parent is the dialog, in file order, each id once.
    std::vector<PreviewCtrlRecord> GetCtrls(DWORD nDialogId) const;

private:
    struct Section
    {
        std::string strName;
        int nParentId = 0;
        int nCtrlId = 0;
    };

    static std::vector<std::string> ReadSectionNames(const std::string& path);

    std::string m_strPath;
    std::vector<Section> m_vecSections;
};

} // namespace QzPreview
