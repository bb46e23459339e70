#!/usr/bin/env bash
# Times a whole migration of a large version 1.x folder. Builds ferry2-cli,
# make-big-legacy and make-refdata (Release, in build-sample/ as
# scripts/run-sample.sh does, or in the folder BUILD_DIR names), writes the
# big folders into bench/ (made afresh each time: 1 000 locations, 50
# instruments, 100 lists of 300 objects, logs of 10 000 entries over 2 000
# objects), puts the reference set into the Vesperal 2 folder as
# scripts/run-sample.sh does, then runs the four jobs in the order a user
# would and prints each job's time, the total and the machine. The goal is
# the whole migration in 10 s or less on 2 cores.
#
#   scripts/benchmark.sh [--keep]   --keep leaves bench/ for a look
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD
keep=0
[ "${1:-}" = --keep ] && keep=1

bash scripts/ensure-packages.sh cmake ninja-build g++

build=${BUILD_DIR:-build-sample}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DFERRY2_TESTS=OFF >/dev/null
cmake --build "$build" -j2 --target ferry2-cli make-big-legacy make-refdata >/dev/null
build=$(cd "$build" && pwd)
cli=$build/ferry2-cli

rm -rf bench
"$build/make-big-legacy" bench >/dev/null
"$build/make-refdata" bench/vesperal2/data --solar bench/vesperal2/solar >/dev/null
cd bench/vesperal2

# The names the log import cannot find in the stores, settled as a user
# would on the Logs page (make-big-legacy's header lists them).
settle=(--observer "J. Smith=Jo Smith" --observer "Guest Observer=+" --observer "(blank)=Ann Lee"
        --instrument "My Old Scope=SCT 8in" --instrument "Club Dob 16in=+telescope"
        --instrument "Opera Glass 3x25=+binoculars")

status=0
total=0
report=()
# Runs one job, prints its final message and keeps its wall-clock time.
job() {
    local label=$1 start end rc=0
    shift
    echo "\$ ferry2-cli $*"
    start=$(date +%s%N)
    "$cli" "$@" || rc=$?
    end=$(date +%s%N)
    local ms=$(((end - start) / 1000000))
    total=$((total + ms))
    [ "$rc" -eq 0 ] || status=$rc
    report+=("$(printf '%-20s %7d.%03d s  (exit %d)' "$label" $((ms / 1000)) $((ms % 1000)) "$rc")")
    echo
}

job "import locations" --legacy ../legacy import locations
job "import instruments" import instruments
job "import lists" import lists
if "$cli" import --help 2>&1 | grep -Eq 'import [a-z|]*logs'; then
    job "import logs" import logs "${settle[@]}"
else
    echo "(this ferry2-cli has no log import yet: import logs not timed)"
    echo
    report+=("$(printf '%-20s %9s' "import logs" "-")")
fi

echo "Job times (wall clock):"
printf '%s\n' "${report[@]}"
printf '%-20s %7d.%03d s\n' "whole migration" $((total / 1000)) $((total % 1000))
echo
echo "ferry2.log: $(wc -l <ferry2.log) lines; user/log: $(find user/log -name '*.bin' 2>/dev/null | wc -l) files"
echo
echo "Machine:"
echo "  CPU     $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2- | sed 's/^ *//')"
echo "  cores   $(grep -c '^processor' /proc/cpuinfo) (this process may use $(nproc))"
echo "  memory  $(awk '/MemTotal/ {printf "%.1f GiB", $2 / 1048576}' /proc/meminfo)"
echo "  load    $(cut -d' ' -f1-3 /proc/loadavg) (1, 5, 15 min)"

cd "$top"
[ "$keep" -eq 1 ] || rm -rf bench
exit "$status"
