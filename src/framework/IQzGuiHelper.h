// The host's handle on the layout debugging tools shared by all GUI managers (GetGuiHelper).
#pragma once

namespace QzGui
{

class IQzGuiHelper
{
public:
    // Debug drawing on for every registered manager.
    virtual void DebugOn() = 0;
    // Debug drawing off for every registered manager.
    virtual void DebugOff() = 0;
    // Reloads the layout of the target manager, or of every registered manager.
    virtual void ReloadAll() = 0;

protected:
    ~IQzGuiHelper() = default;
};

// Creates the helper on the first call and returns it afterwards.
IQzGuiHelper* GetGuiHelper();

} // namespace QzGui
