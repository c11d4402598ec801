#!/bin/sh
# Runs the two decks through OPM Flow and keeps the result files the tests
# read. Needs the Debian packages libopm-simulators-bin (flow) and
# libopm-common-bin (convertECL). Run from anywhere; it works in this folder.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for case in SMALL WELLS; do
  if ! flow --output-dir="$work/$case" --threads-per-process=1 \
       --enable-terminal-output=false "$here/$case/$case.DATA" > "$work/$case.log" 2>&1; then
    cat "$work/$case.log" >&2
    exit 1
  fi
  for ext in SMSPEC UNSMRY INIT UNRST EGRID RFT; do
    cp "$work/$case/$case.$ext" "$here/$case/"
  done
done

# Formatted copies of the SMALL INIT and restart files; convertECL writes
# them beside its input as SMALL.FINIT and SMALL.FUNRST.
cp "$here/SMALL/SMALL.INIT" "$here/SMALL/SMALL.UNRST" "$work/"
(cd "$work" && convertECL SMALL.INIT > /dev/null && convertECL SMALL.UNRST > /dev/null)
cp "$work/SMALL.FINIT" "$work/SMALL.FUNRST" "$here/SMALL/"
