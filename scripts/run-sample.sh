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
echo "\$ ferry2-cli import locations"
status=0
"$top/build-sample/ferry2-cli" import locations || status=$?
echo
echo "\$ ferry2-cli list instruments"
"$top/build-sample/ferry2-cli" list instruments
echo
echo "\$ ferry2-cli import instruments"
"$top/build-sample/ferry2-cli" import instruments || status=$?
echo
echo "\$ ferry2-cli list lists"
"$top/build-sample/ferry2-cli" list lists
echo
echo "\$ ferry2-cli import lists --dry-run"
"$top/build-sample/ferry2-cli" import lists --dry-run || status=$?
echo
echo "\$ ferry2-cli import lists"
"$top/build-sample/ferry2-cli" import lists || status=$?
for list in "Messier Marathon" "Summer Night" "Autumn Galaxies"; do
    echo
    echo "\$ ferry2-cli show-list \"$list\""
    "$top/build-sample/ferry2-cli" show-list "$list" || status=$?
done
# The observation log: entries by the stored location, observers and
# instruments; the same observation twice; the reference Hale-Bopp logged as
# the user's own comet, which the list import made and which has an entry.
log() {
    echo
    local shown="\$ ferry2-cli log" word
    for word in "$@"; do
        [[ $word == *" "* ]] && word="\"$word\""
        shown+=" $word"
    done
    echo "$shown"
    "$top/build-sample/ferry2-cli" log "$@" || status=$?
}
log add --object 6:4270 --at 2026-03-05T04:00 --location Home --observer "Ann Lee" --instrument "SCT 8in" \
    --remark "averted vision" --note "Dust lane seen"
log add --object 6:4270 --at 2026-03-05T04:00:30 --location Home --observer "Ann Lee" --instrument "SCT 8in" \
    --note "Dust lane seen"
log add --object 11:135 --at 2026-03-05T11:30 --location "Kitt Peak National Observatory" --observer "Cy Tran" \
    --instrument "Naked Eye"
log add --object 13:1 --at 1997-03-22T03:00 --location Home --observer "Cy Tran" --instrument "Naked Eye" \
    --remark "two tails"
log add --object 3:14 --at 1997-04-01T03:00 --location Home --observer "Cy Tran" --instrument "Naked Eye"
log show
log show --night 2026-03-04
log show --observer "cy tran" --class comets
echo
echo "\$ ls user/log/comets"
ls user/log/comets
echo
echo "ferry2.log:"
cat ferry2.log
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
echo "(sample folders in $top/sample; exit status $status)"
exit "$status"
