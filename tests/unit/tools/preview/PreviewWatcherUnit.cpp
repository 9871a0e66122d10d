// The preview tool's PreviewWatcher unit, compiled into this test program as it is into the tool.
#include "../../../../tools/preview/PreviewWatcher.cpp"
