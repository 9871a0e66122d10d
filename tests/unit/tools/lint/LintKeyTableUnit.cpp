// The lint tool's LintKeyTable unit, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/LintKeyTable.cpp"
