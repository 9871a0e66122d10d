// The lint tool's LintSpelling unit, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/LintSpelling.cpp"
