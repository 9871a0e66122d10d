// One block of ini/Cursor.ini: a cursor name and what shows it.
#pragma once

#include <string>

namespace QzGui
{

enum : int
{
    QZ_CURSOR_TYPE_FILE = 0,   // a cursor file the system shows
    QZ_CURSOR_TYPE_ANI = 1,    // an animation section of ani/Control.ani drawn as the cursor
    QZ_CURSOR_TYPE_EFFECT = 2, // a part of the cursor manager's 3D effect
};

struct QzCursorEntry
{
    int type = 0;
    std::string name;
    std::string cursor; // the "cur" value: file path, animation section or effect part
};

} // namespace QzGui
