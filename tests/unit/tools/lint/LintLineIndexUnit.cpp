// The lint tool's line search, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/LintLineIndex.cpp"
