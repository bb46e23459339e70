#!/usr/bin/env bash
# Runs a Windows program under wine for ctest: usage: wine-run.sh WINE PROGRAM ARGS...
# Now and then a wine process ends at start-up without running the program at
# all: it fails having printed nothing. Such a run is made again, twice at
# most. A run that prints anything stands as it is, so a test that fails
# still fails.
wine=$1
shift
out=$(mktemp)
err=$(mktemp)
trap 'rm -f "$out" "$err"' EXIT
for attempt in 1 2 3; do
  "$wine" "$@" >"$out" 2>"$err"
  status=$?
  if [ "$status" -eq 0 ] || [ -s "$out" ] || [ -s "$err" ] || [ "$attempt" -eq 3 ]; then
    cat "$out"
    cat "$err" >&2
    exit "$status"
  fi
  echo "wine-run: $1 ended with status $status before printing anything; running it again" >&2
done
