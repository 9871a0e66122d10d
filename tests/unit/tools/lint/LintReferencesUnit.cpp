// The lint tool's LintReferences unit, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/LintReferences.cpp"
