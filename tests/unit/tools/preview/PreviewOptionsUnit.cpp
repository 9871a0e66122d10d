// The preview tool's PreviewOptions unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/PreviewOptions.cpp"
