#include "textinput/QzIme.h"

namespace QzGui
{

CQzIme::~CQzIme() = default;

} // namespace QzGui
