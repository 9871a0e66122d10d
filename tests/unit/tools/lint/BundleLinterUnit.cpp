// The lint tool's checking, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/BundleLinter.cpp"
