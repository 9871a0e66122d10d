// The preview tool's PreviewLayout unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/PreviewLayout.cpp"
