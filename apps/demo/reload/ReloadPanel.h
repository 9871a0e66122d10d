// The box the demo draws over its screen while the last edit of its bundle is broken: a red
// frame around the data errors, one "file:line: message: text" a line, at the bottom left.
#pragma once

#include "BundleCheck.h"

#include <cstdint>
#include <string>
#include <vector>

namespace QzPlatform
{
class IRenderDevice;
}

class CReloadPanel
{
public:
    // Most lines shown; the last one says how many more there are.
    static constexpr size_t kMaxLines = 12;
    static constexpr uint32_t kFrameColor = 0xFFE02020;

    void Show(const std::vector<BundleError>& errors);
    void Hide() { m_vecLines.clear(); }
    bool IsShown() const { return !m_vecLines.empty(); }
    const std::vector<std::string>& Lines() const { return m_vecLines; }
    void Draw(QzPlatform::IRenderDevice& device) const;

private:
    std::vector<std::string> m_vecLines;
};
