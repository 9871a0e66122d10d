#!/usr/bin/env bash
# The test suite leaves no files behind. CTest runs every test with TMPDIR set to a folder of
# the build tree (TEST_TMP); this script is the suite's fixture around them:
#   check_temp_litter.sh before TEST_TMP LISTING   empties TEST_TMP and lists the names of the
#                                                   system's temporary folder in LISTING;
#   check_temp_litter.sh after TEST_TMP LISTING    fails on whatever is left in TEST_TMP and on
#                                                   the names that are new in the system's folder.
# Only the user's files with names the tests use (qzgui*, *.png) are looked at, so that other
# programs' and users' files do not count. A new name that goes away within 10 seconds belongs to
# a test still running elsewhere on the machine (another checkout's suite), not to this one; a
# QzGui program run by hand meanwhile that writes such a name there and keeps it is reported.
set -euo pipefail
mode=$1 test_tmp=$2 listing=$3
[ -n "$test_tmp" ] || { echo "no folder given for the tests' temporary files" >&2; exit 2; }

system_names() {
  local dir
  for dir in /tmp ${TMPDIR:+"$TMPDIR"}; do
    find "$dir" -mindepth 1 -maxdepth 1 -user "$(id -u)" \( -name 'qzgui*' -o -name '*.png' \) \
      2>/dev/null || true
  done | sort -u
}

if [ "$mode" = before ]; then
  rm -rf "$test_tmp"
  mkdir -p "$test_tmp"
  system_names >"$listing"
  exit 0
fi

status=0
left=$(find "$test_tmp" -mindepth 1 -maxdepth 1 2>/dev/null || true)
if [ -n "$left" ]; then
  echo "left in the tests' temporary folder $test_tmp:"
  echo "$left"
  status=1
fi
for _ in $(seq 10); do
  new=$(system_names | comm -13 "$listing" -)
  [ -n "$new" ] || break
  sleep 1
done
if [ -n "$new" ]; then
  echo "new in the system's temporary folder since the tests started:"
  while IFS= read -r name; do ls -ld "$name" || true; done <<<"$new"
  status=1
fi
exit $status
