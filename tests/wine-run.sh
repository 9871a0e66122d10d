#!/usr/bin/env bash
# Runs a Windows program of the build under Wine, headless: CTest's and GoogleTest discovery's
# emulator for the mingw-w64 build (tests/CMakeLists.txt).
#   wine-run.sh PREFIX PROGRAM [ARG...]
#   wine-run.sh PREFIX --keep-session | --end-session
# PREFIX is the Wine prefix, kept in the build folder so that nothing lands in $HOME; it is made
# on first use, with the null display driver (windows exist without an X server) and the
# Simplified Chinese system locale, whose ANSI code page is 936, the game's. Wine takes the
# locale from LC_ALL; it need not be installed on the machine.
set -euo pipefail
prefix=$1
shift
# Every program of one prefix must reach the same wineserver, whose socket lies under TMPDIR:
# one folder of the prefix's own, whatever TMPDIR the caller has.
mkdir -p "$prefix/tmp"
export WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' TMPDIR=$prefix/tmp
unset DISPLAY WAYLAND_DISPLAY
wine=(env LC_ALL=zh_CN.GBK "$(command -v wine64 || command -v wine)")

# One process makes the prefix; the others wait for it.
(
  flock 9
  if [ ! -f "$prefix/.qzgui-ready" ]; then
    "${wine[@]}" wineboot --init >/dev/null 2>&1
    "${wine[@]}" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
    wineserver -w
    touch "$prefix/.qzgui-ready"
  fi
) 9>"$prefix.lock"
# A Wine session (the server and the system's own processes) lasts while a program of the prefix
# runs, and starting one costs seconds. The tests run one after another (they share the desktop's
# mouse cursor), so a command interpreter waiting on its input keeps the session between them,
# its output away from CTest's pipes; --end-session ends it and the session.
case ${1:-} in
  --keep-session)
    # The interpreter's first command marks the session as up. A program started before that
    # would start the session's system processes itself, with CTest's output pipe, which CTest
    # would then wait on for as long as the session lasts.
    ready=$prefix/session.ready
    rm -f "$ready"
    marker="Z:$(printf '%s' "$ready" | tr / '\\')"
    printf 'type nul > "%s"\r\n' "$marker" >"$prefix/session.cmd"
    setsid bash -c "{ cat '$prefix/session.cmd'; sleep 3600; } | ${wine[*]} cmd" \
      >/dev/null 2>&1 </dev/null &
    echo $! >"$prefix/session.pid"
    for _ in $(seq 600); do
      [ -f "$ready" ] && exit 0
      sleep 0.1
    done
    echo "wine-run.sh: the Wine session did not start" >&2
    exit 1 ;;
  --end-session)
    if [ -f "$prefix/session.pid" ]; then
      kill -- -"$(cat "$prefix/session.pid")" 2>/dev/null || true
      rm -f "$prefix/session.pid" "$prefix/session.ready" "$prefix/session.cmd"
    fi
    wineserver -k 2>/dev/null || true
    exit 0 ;;
esac
exec "${wine[@]}" "$@"
