// qzgui-lint BUNDLE_DIR: prints every data error of the bundle's files, one a line
// ("FILE:LINE: message: text"), and exits 1 when there is any, 0 when there is none, 2 when
// the folder is missing.
#include "BundleLinter.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    std::string out;
    std::string err;
    const int status = QzLint::CBundleLinter::RunTool(argc, argv, out, err);
    std::fputs(out.c_str(), stdout);
    std::fputs(err.c_str(), stderr);
    return status;
}
