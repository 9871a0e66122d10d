#!/usr/bin/env bash
# The package as a game's build uses it, in a temporary folder that is removed at the end, also
# on failure:
#  1. `cmake --install` of the build tree (already built) into a prefix: the shared libraries
#     with their soname, the soname and development links;
#  2. every installed header compiles alone, with pkg-config's flags and -Wall -Wextra -Werror;
#  3. the host program of host/ configured with find_package(QzGui), built and run; then built
#     from pkg-config's flags alone and run; both load the installed libraries;
#  4. a game adding the source tree with add_subdirectory (subproject/) configures with the
#     defaults of a subproject while GoogleTest, Google Benchmark and SDL2 cannot be found, gets
#     the library's target alone and compiles its own code against it.
# Usage: check_install.sh BUILD_DIR SOURCE_DIR CMAKE GENERATOR C_COMPILER CXX_COMPILER
set -euo pipefail
build=$1 source=$2 cmake=$3 generator=$4 cc=$5 cxx=$6
here=$(cd "$(dirname "$0")" && pwd)
tmp=$(mktemp -d "${TMPDIR:-/tmp}/qzgui-install-XXXXXX")
trap 'rm -rf "$tmp"' EXIT
prefix=$tmp/prefix

fail() {
  echo "FAIL: $*" >&2
  exit 1
}
# run LOG COMMAND...: the command's output goes to LOG, shown when it fails.
run() {
  local log=$tmp/$1
  shift
  "$@" >"$log" 2>&1 || { cat "$log" >&2; fail "$*"; }
}

echo "== install into a temporary prefix"
run install.log "$cmake" --install "$build" --prefix "$prefix"
main_lib=$(find "$prefix" -name libQzGui.so.0.1)
[ -n "$main_lib" ] || fail "libQzGui.so.0.1 is not installed"
libdir=$(dirname "$main_lib")
for lib in "$libdir"/libQzGui*.so.0.1; do
  name=$(basename "$lib" .0.1)
  soname=$(readelf -d "$lib" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
  [ "$soname" = "$name.0" ] || fail "$lib has soname '$soname', not $name.0"
  [ -L "$libdir/$name.0" ] && [ -L "$libdir/$name" ] || fail "links to $lib missing"
done

export PKG_CONFIG_PATH=$libdir/pkgconfig
modules=$(cd "$PKG_CONFIG_PATH" && ls -- *.pc | sed 's/\.pc$//' | tr '\n' ' ')
cflags=$(pkg-config --cflags $modules)
defines=""
for module in $modules; do
  case $module in
    qzgui-*) defines+=" -DQZGUI_HOST_$(echo "${module#qzgui-}" | tr '[:lower:]' '[:upper:]')" ;;
  esac
done

echo "== every public header alone ($modules)"
(cd "$prefix/include/QzGui" && find . -name '*.h' | sed 's#^\./##' | sort) >"$tmp/headers"
[ -s "$tmp/headers" ] || fail "no headers under include/QzGui"
export CXX_FOR_HEADERS="$cxx -std=c++17 -Wall -Wextra -Werror $cflags -fsyntax-only -x c++ -"
xargs -P 2 -I{} bash -c 'printf "#include \"%s\"\n" "$1" | $CXX_FOR_HEADERS ||
  { echo "FAIL: $1 does not compile alone" >&2; exit 1; }' _ {} <"$tmp/headers" ||
  fail "installed headers"

# check_loads PROGRAM: every QzGui library it loads is the installed one.
check_loads() {
  local stray
  stray=$(ldd "$1" | grep libQzGui | grep -v -- "=> $libdir/" || true)
  [ -z "$stray" ] || fail "$1 loads QzGui from outside the prefix: $stray"
}

echo "== host with find_package(QzGui)"
run host-configure.log "$cmake" -S "$here/host" -B "$tmp/host" -G "$generator" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Debug
run host-build.log "$cmake" --build "$tmp/host" -j 2
check_loads "$tmp/host/qzgui-host"
mkdir "$tmp/data-cmake"
"$tmp/host/qzgui-host" "$tmp/data-cmake"

echo "== host with pkg-config"
$cxx -std=c++17 -Wall -Wextra -Werror $defines "$here/host/host.cpp" -o "$tmp/host-pc" \
  $(pkg-config --cflags --libs $modules)
mkdir "$tmp/data-pc"
LD_LIBRARY_PATH=$libdir check_loads "$tmp/host-pc"
LD_LIBRARY_PATH=$libdir "$tmp/host-pc" "$tmp/data-pc"

echo "== QzGui added with add_subdirectory"
run sub-configure.log "$cmake" -S "$here/subproject" -B "$tmp/sub" -G "$generator" \
  -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" -DQZGUI_SOURCE_DIR="$source" \
  -DQZGUI_BUILD_CAIRO=OFF -DQZGUI_EXPECTED_TARGETS=QzGui \
  -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON \
  -DCMAKE_DISABLE_FIND_PACKAGE_SDL2=ON
run sub-build.log "$cmake" --build "$tmp/sub" --target game
echo "install check passed"
