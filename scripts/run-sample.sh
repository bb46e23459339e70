#!/usr/bin/env bash
# Builds ferry2-cli, writes the sample folders into sample/ (made afresh each
# time), with a reference set from the public catalogues and series in
# data/reference under sample/vesperal2/data/ and the planet engine's tables
# in sample/vesperal2/solar/, and runs the location, instrument and
# observing-list imports there: each page's rows, each job's final message
# (the list import first as a dry run), the lines they wrote to ferry2.log,
# the imported lists read back, a check of both folders afterwards, and a
# look at one star of the reference set.
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD

bash scripts/ensure-packages.sh cmake ninja-build g++

cmake -S . -B build-sample -G Ninja -DCMAKE_BUILD_TYPE=Release -DFERRY2_TESTS=OFF >/dev/null
cmake --build build-sample --target ferry2-cli make-sample make-refdata >/dev/null

rm -rf sample
"$top/build-sample/make-sample" sample >/dev/null
# vesperal.ini of the sample names data/small/, data/stars/ and data/gsc/ for
# the catalogues and solar/ for the engine's tables (planets, Moon, Pluto,
# nutation).
"$top/build-sample/make-refdata" sample/vesperal2/data --solar sample/vesperal2/solar >/dev/null
cd sample/vesperal2

echo "\$ ferry2-cli --legacy ../legacy list locations"
"$top/build-sample/ferry2-cli" --legacy ../legacy list locations
echo
status=0
cli() {  # cli ARGS...: shows the command, runs it, keeps its output in $out
    local shown="\$ ferry2-cli" word
    for word in "$@"; do
        [[ $word == *" "* ]] && word="\"$word\""
        shown+=" $word"
    done
    echo
    echo "$shown"
    out=$("$top/build-sample/ferry2-cli" "$@") || status=$?
    [ -z "$out" ] || echo "$out"
}
cli import locations
messages=$out
cli list instruments
cli import instruments
messages+=$'\n'$out
cli list lists
cli import lists --dry-run
cli import lists
messages+=$'\n'$out
for list in "Messier Marathon" "Summer Night" "Autumn Galaxies"; do
    cli show-list "$list"
done
# The version 1.x logs: the names the stores don't know, each settled (a
# link to a stored record, or a new default one), then every entry.
cli list logs
cli import logs --observer "(blank)=Ann Lee" --observer "Dee Park=+" --observer "Kim Osei=Cy Tran" \
    --instrument "Opera Glass 3x25=+binoculars"
messages+=$'\n'$out
cli log show
cli log show --night 2000-11-21
cli log show --observer "cy tran" --class comets
# One more entry by hand, and the same observation again, which the log
# answers with the first entry's number.
cli log add --object 6:4270 --at 2026-03-05T04:00 --location Home --observer "Ann Lee" --instrument "SCT 8in" \
    --remark "averted vision" --note "Dust lane seen"
cli log add --object 6:4270 --at 2026-03-05T04:00:30 --location Home --observer "Ann Lee" --instrument "SCT 8in" \
    --note "Dust lane seen"
echo
echo "ferry2.log (its last lines, from the log import):"
tail -n 24 ferry2.log
echo
echo "\$ ferry2-cli check"
"$top/build-sample/ferry2-cli" check || status=$?
echo
echo "\$ ferry2-cli catalog find csn_alp Vega"
vega=$("$top/build-sample/ferry2-cli" catalog find csn_alp Vega) || status=$?
echo "$vega"
echo "\$ ferry2-cli catalog star $vega"
"$top/build-sample/ferry2-cli" catalog star "$vega" || status=$?
echo
# Names as a version 1.x list holds them, resolved: the display name and
# second name, PID and class of each object found.
for name in "HR 7001" "HD 172167" "SAO 67174" "Alp Lyr" "alpha Lyr" "3 Lyr" "Vega" "M 31" "NGC 224" "Ori"; do
    echo "\$ ferry2-cli resolve $name"
    "$top/build-sample/ferry2-cli" resolve "$name" --at 2026-01-01T00:00 |
        grep -o '"displayName": "[^"]*", "secondaryName": "[^"]*"\|"PID": [0-9]*, "objectClass": [0-9]*' |
        paste -d' ' - - || status=1
done
echo
echo "The four imports ended with:"
echo "$messages"
echo
echo "(sample folders in $top/sample; exit status $status)"
exit "$status"
