// The emotion icon set: emotion code "#NN" is the section "Emotion_NN" of "ani/Control.ani",
// "#NN|MM" the section "Emotion_NN_MM".
#pragma once

#include "platform/render/DataSet.h"

#include <string>

namespace QzPlatform
{

class CEmotionIconSet final : public IDataIcon
{
public:
    explicit CEmotionIconSet(IDataSet& dataSet) : m_dataSet(dataSet) {}

    IDataAni* GetIconAni(const char* code) override;

    // The section name of a code; empty when the text is not exactly one code.
    static std::string SectionOfCode(const char* code);

private:
    IDataSet& m_dataSet;
};

} // namespace QzPlatform
