// The preview tool's PreviewTool unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/PreviewTool.cpp"
