// A base for a host's input-method helper: the library exports the class (its destructor and
// virtual table) and never creates one itself.
#pragma once

namespace QzGui
{

class CQzIme
{
public:
    virtual ~CQzIme();
};

} // namespace QzGui
