// The lint tool's LintAniIndex unit, compiled into this test program as it is into the tool.
#include "../../../../tools/lint/LintAniIndex.cpp"
