// The records the dialog-template reader (CDumpRsc) makes of a module's dialog templates:
// one per template, with one per control item. Coordinates are dialog units.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <string>
#include <vector>

struct DialogItemInfo
{
    uint32_t id = 0;          // control identifier (the low 16 bits of the template's)
    RECT rect = {0, 0, 0, 0}; // x, y, x + cx, y + cy
    uint32_t type = 0;        // 0 none, 1 static, 2 button, 3 edit, 4 list box, 5 tree, 6 progress
    uint32_t style = 0;
    uint32_t exStyle = 0;
    std::string title; // the item's caption when the template gives a string
};

struct DialogRscInfo
{
    uint32_t id = 0;          // numeric resource identifier; 0 for a dialog named by a string
    RECT rect = {0, 0, 0, 0}; // 0, 0, cx, cy
    uint32_t style = 0;
    uint32_t exStyle = 0;
    std::string text; // the resource name of a named dialog, replaced by the title if any
    std::vector<DialogItemInfo> items; // at most 1000
};
