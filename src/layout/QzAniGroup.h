// An animation group of ini/AniGroup.ini: pieces drawn together, each the first frame of an
// animation section placed at an offset from the window's top-left corner.
#pragma once

#include <string>
#include <vector>

namespace QzGui
{

struct QzAniGroupPiece
{
    std::string section; // animation section of ani/Control.ani; empty when the key is missing
    int left = 0;
    int top = 0;
};

struct QzAniGroup
{
    std::vector<QzAniGroupPiece> pieces; // in file order
};

} // namespace QzGui
