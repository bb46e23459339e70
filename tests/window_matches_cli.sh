#!/usr/bin/env bash
# The window program and ferry2-cli, each on a fresh copy of the sample with
# the generated reference set, import the locations, the instruments, the
# observing lists and the logs (settling the Logs page's names the same way
# in both), and must leave the same stores, the same log store, the same
# ferry2.log and the same messages. Runs under Wine.
# usage: window_matches_cli.sh FERRY2_EXE FERRY2_DRIVE_EXE FERRY2_CLI_EXE MAKE_SAMPLE_EXE MAKE_REFDATA_EXE
set -u
exe=$(realpath "$1")
drive=$(realpath "$2")
cli=$(realpath "$3")
make_sample=$(realpath "$4")
make_refdata=$(realpath "$5")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
wine "$make_sample" by-cli >/dev/null && wine "$make_sample" by-window >/dev/null || exit 1
for side in by-cli by-window; do
    wine "$make_refdata" "$side/vesperal2/data" --solar "$side/vesperal2/solar" >/dev/null || exit 1
done

(cd by-cli/vesperal2 &&
    { wine "$cli" --legacy '..\legacy' import locations
      wine "$cli" import instruments
      wine "$cli" import lists
      wine "$cli" import logs --observer "(blank)=Ann Lee" --observer "Dee Park=+" \
          --observer "Kim Osei=Cy Tran" --instrument "Opera Glass 3x25=+binoculars"; } | tr -d '\r' >../message.txt)

cd by-window/vesperal2
printf '%s' '..\legacy' >ferry2.ini
wine "$exe" </dev/null >/dev/null 2>&1 &
program=$!
{ wine "$drive" ok && wine "$drive" import && wine "$drive" message &&
  wine "$drive" next && wine "$drive" import && wine "$drive" message &&
  wine "$drive" next && wine "$drive" import && wine "$drive" message &&
  wine "$drive" next && { wine "$drive" notice >/dev/null; } &&
  wine "$drive" link observer "(blank)" "Ann Lee" && wine "$drive" create observer "Dee Park" &&
  wine "$drive" link observer "Kim Osei" "Cy Tran" &&
  wine "$drive" create instrument "Opera Glass 3x25" binoculars &&
  wine "$drive" import && wine "$drive" message; } | tr -d '\r' >../message.txt
wine "$drive" close
# The program ends with its main window; one that is stuck is stopped.
for _ in $(seq 60); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.5
done
if kill -0 "$program" 2>/dev/null; then
    echo "ferry2.exe did not end" >&2
    kill "$program"
fi
wait "$program"
cd "$work"

failures=0
# Names under user/log hold blanks ("globular clusters"): one per line.
mapfile -t lists < <(cd by-cli && ls vesperal2/user/lists/*)
mapfile -t logs < <(cd by-cli && find vesperal2/user/log -type f | sort)
test "${#logs[@]}" -gt 20 || { echo "the log import wrote too little" >&2; failures=$((failures + 1)); }
test "$(printf '%s\n' "${logs[@]}")" = "$(cd by-window && find vesperal2/user/log -type f | sort)" ||
    { echo "DIFFERENT: the files under user/log" >&2; failures=$((failures + 1)); }
for f in vesperal2/user/loc.bin vesperal2/user/instr.bin vesperal2/user/eyep.bin "${lists[@]}" "${logs[@]}" \
         vesperal2/user/observer.bin vesperal2/user/stellar.bin vesperal2/user/comet.bin vesperal2/user/mp.bin \
         legacy/us_pid.bin vesperal2/ferry2.log vesperal2/ferry2.ini message.txt; do
    if cmp -s "by-cli/$f" "by-window/$f"; then
        echo "same: $f"
    else
        echo "DIFFERENT: $f" >&2
        failures=$((failures + 1))
    fi
done
echo "message: $(tr '\n' ' ' <by-window/message.txt)"
test "$(sed -n 2p by-window/message.txt)" = "Imported 6 of 9, 3 skipped" || failures=$((failures + 1))
test "$(sed -n 4p by-window/message.txt)" = "Imported 5 of 6, 1 skipped" || failures=$((failures + 1))
test "$(sed -n 6p by-window/message.txt)" = "Imported 3 of 5, 1 lists skipped, 0 objects skipped" ||
    failures=$((failures + 1))
test "$(sed -n 8p by-window/message.txt)" = "11 log entries imported of 11 (0 skipped)." || failures=$((failures + 1))
test "$failures" -eq 0
