#include "controls/QzStatic.h"

namespace QzGui
{

CQzStatic::~CQzStatic() = default;

} // namespace QzGui
