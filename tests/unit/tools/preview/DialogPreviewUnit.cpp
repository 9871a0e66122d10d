// The preview tool's DialogPreview unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/DialogPreview.cpp"
