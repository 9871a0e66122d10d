// The preview tool's PreviewCtrls unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/PreviewCtrls.cpp"
