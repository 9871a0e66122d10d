// A game's source compiled against QzGui added with add_subdirectory.
#include "framework/IQzGuiMgr.h"
#include "framework/QzDialog.h"

QzGui::IQzGuiMgr* StartGui()
{
    return QzGui::CreateGuiMgr();
}
