// Game data names files the Windows way ("ini\\Cursor.ini", "ani/control.ani"): backslashes
// and any letter case. On POSIX the name is mapped to the file that exists: backslashes become
// slashes and each component is matched without regard to case when the exact one is missing.
#pragma once

#include <string>

namespace QzPlatform
{

// The existing file or folder the name refers to; when none exists, the name with slashes and
// with as many leading components matched as exist (so that a new file lands beside its kin).
std::string ResolvePath(const std::string& path);

} // namespace QzPlatform
