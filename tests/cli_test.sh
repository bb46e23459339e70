#!/usr/bin/env bash
# End-to-end run of ferry2-cli on the generated sample folders.
# usage: cli_test.sh FERRY2_CLI MAKE_SAMPLE SOLAR_TABLES_DIR
set -u
cli=$(realpath "$1")
make_sample=$(realpath "$2")
solar_tables=$(realpath "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
passes=0

check() {  # check NAME CONDITION...
    local name=$1
    shift
    if "$@"; then
        passes=$((passes + 1))
    else
        echo "FAILED: $name" >&2
        failures=$((failures + 1))
    fi
}

run() {  # run ARGS... : sets out and rc
    out=$("$cli" "$@" 2>"$work/stderr")
    rc=$?
}

"$make_sample" "$work" >/dev/null || { echo "make-sample failed" >&2; exit 1; }
cd "$work/vesperal2"

run --help
check "help exits 0" test "$rc" -eq 0
check "help shows usage" grep -q "ferry2-cli \[--legacy DIR\] import locations|instruments" <<<"$out"
for verb in list import; do
    run "$verb" --help
    check "$verb --help exits 0" test "$rc" -eq 0
    check "$verb --help is that verb's" test "$(head -n 1 <<<"$out" | cut -d' ' -f5)" = "$verb" \
        -a "$(grep -c '^Usage: \|^       ferry2-cli' <<<"$out")" -eq 1
done
run nosuchverb --help
check "help of an unknown verb is a usage error" test "$rc" -eq 2

run import
check "missing subject is a usage error" test "$rc" -eq 2
run --bogus list locations
check "unknown option is a usage error" test "$rc" -eq 2
run list locations --rows 1
check "--rows only goes with import" test "$rc" -eq 2

# Start-up: an ini that cannot be resolved stops everything.
mv vesperal.ini vesperal.keep
run --legacy ../legacy import locations
check "unresolved roots exit 2" test "$rc" -eq 2
check "start-up message" test "$out" = $'Vesperal 2 Error\nVesperal cannot find the database files.\nInsert the Vesperal 2 CDROM and try again.'
check "nothing written before start-up passed" test ! -e ferry2.ini -a ! -e ferry2.log
mv vesperal.keep vesperal.ini

# A folder without charts.bin is refused.
run --legacy .. list locations
check "refused folder exits 2" test "$rc" -eq 2
check "path message" test "$out" = $'Ferry 2 Message\nVesperal 1.x files not found. Check your path and try again.'
check "refused folder not remembered" test ! -e ferry2.ini

run --legacy ../legacy list locations
check "list exits 0" test "$rc" -eq 0
check "list has header and nine rows" test "$(wc -l <<<"$out")" -eq 10
check "rows numbered from 1, all ticked" test "$(sed -n 2p <<<"$out")" = $'1\t1\tMount Wilson Observatory'
check "empty name keeps its row" test "$(sed -n 7p <<<"$out")" = $'6\t1\t'
check "accepted folder remembered without line end" test "$(cat ferry2.ini)" = "../legacy" -a "$(wc -c <ferry2.ini)" -eq 9

# A dry run says what the import would do and changes nothing.
log_before=$(wc -c <ferry2.log)
run import locations --dry-run
check "dry run of the location import" test "$rc" -eq 0 -a "$(tail -n 2 <<<"$out")" = $'Ferry 2 Message\nImported 6 of 9, 3 skipped'
check "dry run leaves the store and the log" \
    test "$(wc -c <user/loc.bin)" -eq $((2 + 135 * 2)) -a "$(wc -c <ferry2.log)" -eq "$log_before"

# The import takes the remembered folder.
run import locations
check "import exits 0" test "$rc" -eq 0
check "import message" test "$out" = $'Ferry 2 Message\nImported 6 of 9, 3 skipped'
check "log lines" test "$(cat ferry2.log)" = "Location: Warning Kitt Peak National Observatory already exists (not added)
Location: Warning Backyard already exists (not added)
Location: Warning Home already exists (not added)"
check "store grew by six" test "$(wc -c <user/loc.bin)" -eq $((2 + 135 * 8))
n=2
for legacy_index in 0 2 3 4 5 7; do
    check "record $legacy_index copied unchanged" \
        cmp -s -n 135 -i $((2 + 135 * legacy_index)):$((2 + 135 * n)) ../legacy/loc.bin user/loc.bin
    n=$((n + 1))
done

run import locations --rows 1,3
check "second run of two rows" test "$out" = $'Ferry 2 Message\nImported 0 of 2, 2 skipped'
check "second run appends two warnings" test "$(wc -l <ferry2.log)" -eq 5
run import locations --rows 6
check "an empty name is added again" test "$out" = $'Ferry 2 Message\nImported 1 of 1, 0 skipped'
run import locations --rows 10
check "row past the page is a usage error" test "$rc" -eq 2

# A legacy file cut short ends with the error form and status 1.
head -c $((2 + 135 * 3 + 50)) ../legacy/loc.bin >../legacy/short.bin
mv ../legacy/short.bin ../legacy/loc.bin
run import locations
check "job error exits 1" test "$rc" -eq 1
check "error form" test "$out" = $'Ferry 2 Message\nAn error occurred during import. See the ferry2.log file for details.\nImported 0 of 3, 3 skipped'
check "read error logged" test "$(tail -n 1 ferry2.log)" = "Location: error reading V1.x location database"

# A legacy file that cannot be read at all: the job says nothing, the
# command line says which file.
rm ../legacy/loc.bin
mkdir ../legacy/loc.bin
lines_before=$(wc -l <ferry2.log)
run import locations
check "unreadable legacy file exits 1" test "$rc" -eq 1
check "no message" test -z "$out"
check "unreadable file named" test "$(cat "$work/stderr")" = "ferry2-cli: cannot read the Vesperal 1.x file ../legacy/loc.bin"
check "nothing logged" test "$(wc -l <ferry2.log)" -eq "$lines_before"
run list locations
check "list of an unreadable file exits 1" test "$rc" -eq 1
check "header only" test "$out" = $'Row\tTick\tObserving Location'
check "list names the file" test "$(cat "$work/stderr")" = "ferry2-cli: cannot read the Vesperal 1.x file ../legacy/loc.bin"

# Instruments: the page's rows, then the import against the seeded pool.
u16() { od -An -tu2 -j "$2" -N2 "$1" | tr -d ' '; }
run list instruments
check "instrument list" test "$out" = "$(printf 'Row\tTick\tInstrument\tType\n1\t1\tDobsonian 10in\tTelescope\n2\t1\tRefractor 80mm ED\tTelescope\n3\t1\tBinoculars 10x50\tBinoculars\n4\t1\tGiant Binoculars 25x100\tBinoculars\n5\t1\tSCT 8in\tTelescope\n6\t1\tTravel Scope 70mm\tTelescope')"
: >ferry2.log
run import instruments --rows 1,2,3,4,5
check "instrument import exits 0" test "$rc" -eq 0
check "instrument message" test "$out" = $'Ferry 2 Message\nImported 4 of 5, 1 skipped'
check "instrument log lines" test "$(cat ferry2.log)" = "Instrument: Warning, Old Huygens 12mm eyepiece not found in pool (skipped)
Instrument: Warning SCT 8in already exists (not added)"
check "pool seeded" cmp -s eyep.bin user/eyep.bin
check "store holds six" test "$(u16 user/instr.bin 2)" -eq 6
dob=$((4 + 8750 * 2))
check "new ids follow the store's" test "$(u16 user/instr.bin $dob)" -eq 3
check "three eyepieces kept" test "$(od -An -tu1 -j $((dob + 31 + 100)) -N1 user/instr.bin | tr -d ' ')" -eq 3
check "pool ids by name, by name in other case, by optics" \
    test "$(for j in 0 1 2; do u16 user/instr.bin $((dob + 31 + 101 + 60 * j + 26)); done | tr '\n' ' ')" = "2 3 5 "
check "kind 3 comes in as binoculars" test "$(od -An -tu1 -j $((4 + 8750 * 5 + 4)) -N1 user/instr.bin | tr -d ' ')" -eq 1
rm user/instr.bin
run import instruments --rows 6
check "missing store exits 1" test "$rc" -eq 1
check "missing store error form" test "$out" = $'Ferry 2 Message\nAn error occurred during import. See the ferry2.log file for details.\nImported 0 of 0, 0 skipped'
check "missing store not made" test ! -e user/instr.bin
check "missing store named" test "$(cat "$work/stderr")" = "ferry2-cli: cannot open the store user/instr.bin"

# Names with control characters and Windows-1252 letters, written by hand:
# an i16 count, then 135-byte records with the name at offset 99.
location() {  # location NAME_FORMAT
    local length
    length=$(printf "$1" | wc -c)
    head -c 99 /dev/zero
    printf "$1"
    head -c $((36 - length)) /dev/zero
}
mkdir ../odd
printf '\0\0' >../odd/charts.bin
{ printf '\x03\x00'; location 'Tab\tStop\\1'; location "Pic du Midi d'Ossau \xE9"; location '45\xB0N\r\nTwo'; } >../odd/loc.bin
run --legacy ../odd list locations
check "odd names listed" test "$rc" -eq 0 -a "$(wc -l <<<"$out")" -eq 4
check "tab and backslash escaped" test "$(sed -n 2p <<<"$out")" = $'1\t1\tTab\\tStop\\\\1'
check "Latin-1 letter as UTF-8" test "$(sed -n 3p <<<"$out")" = $'2\t1\tPic du Midi d\'Ossau \xc3\xa9'
check "line ends escaped, degree sign as UTF-8" test "$(sed -n 4p <<<"$out")" = $'3\t1\t45\xc2\xb0N\\r\\nTwo'
run import locations --rows 2
run import locations --rows 2
check "the log keeps the file's bytes" \
    test "$(tail -n 1 ferry2.log)" = $'Location: Warning Pic du Midi d\'Ossau \xe9 already exists (not added)'

# A full store (32767 records, the most an i16 count allows; stale zero
# rows are enough): each add fails, and the status says so.
mv user/loc.bin user/loc.keep
printf '\xff\x7f' >user/loc.bin
truncate -s $((2 + 32767 * 135)) user/loc.bin
run import locations --rows 1,3
check "failed adds exit 1" test "$rc" -eq 1
check "failed adds are skipped, not counted" test "$out" = $'Ferry 2 Message\nImported 0 of 0, 2 skipped'
check "failed adds counted on stderr" \
    test "$(cat "$work/stderr")" = "ferry2-cli: 2 ticked rows could not be added (see ferry2.log)"
check "failed adds logged" test "$(tail -n 1 ferry2.log)" = "Location: error adding new location"
rm user/loc.bin
mv user/loc.keep user/loc.bin

# The folder check, on fresh sample folders: ok, then a count past the end
# of a store, named with its file; it writes nothing.
"$make_sample" "$work/fresh" >/dev/null || { echo "make-sample failed" >&2; exit 1; }
cd "$work/fresh/vesperal2"
run --legacy ../legacy check
check "check on sound folders exits 0" test "$rc" -eq 0
check "check prints ok" test "$out" = "ok"
printf '\x00\x7f' | dd of=user/loc.bin bs=1 seek=0 conv=notrunc 2>/dev/null
before=$(md5sum user/loc.bin)
run --legacy ../legacy check
check "check on a damaged store exits 1" test "$rc" -eq 1
check "check names the damaged store" test "$out" = "user/loc.bin: damaged (its count promises more records than the file holds)"
check "check writes nothing" test "$(md5sum user/loc.bin)" = "$before"

# An instrument store whose count runs past its end: the import adds
# nothing, logs the damage once and ends with its error form.
printf '\x09\x00\x09\x00' | dd of=user/instr.bin bs=1 seek=0 conv=notrunc 2>/dev/null
before=$(md5sum user/instr.bin)
run --legacy ../legacy import instruments
check "damaged store: import exits 1" test "$rc" -eq 1
check "damaged store: error form with zeros" test "$out" = $'Ferry 2 Message\nAn error occurred during import. See the ferry2.log file for details.\nImported 0 of 0, 0 skipped'
check "damaged store: one log line" test "$(cat ferry2.log)" = "Instrument: user/instr.bin is damaged (its count promises more records than the file holds)"
check "damaged store: unchanged" test "$(md5sum user/instr.bin)" = "$before"
check "damaged store: no stderr line (the log has it)" test ! -s "$work/stderr"

# Catalogue files made here byte by byte, not by the program's writers.
put() {  # put FILE OFFSET HEX... : writes the bytes at OFFSET, growing the file
    local file=$1 offset=$2
    shift 2
    local bytes=""
    for b in "$@"; do bytes+="\\x$b"; done
    printf "$bytes" | dd of="$file" bs=1 seek="$offset" conv=notrunc status=none
}
cd "$work/vesperal2"
stars=data/stars
put $stars/stars.bin 0 c6 8d 48 63 a3 2b ca 0d b0 71 0b 00 b0 71 0b 00 a3 28 60 67 65 6d \
    00 00 00 00 00 00 7e 64 01 00 00 00 00 00 87 a0 02 00 66 06 01 00 \
    00 00 00 00 00 00 00 00 00 00 00 00 00 00 a3 00 00 00 00 00 00 00 03 b3 00 \
    00 00 00 00 00 00 00 00
# Record 1121815 is short, at its long place; 1121816 starts the short ones.
put $stars/stars.bin 86379678 00 00 00 00 00 00 00 00 b0 71 cb a3 b0 71 0b 00 ff 7f 0f c0 02 10
put $stars/stars.bin 86379755 00 00 00 00 00 00 00 00 b0 71 cb a3 b0 71 0b 00 ff 7f 10 00 03 20
put $stars/hrbs.bin 21000 01 00 00
put $stars/bayer.bin 66156 01 00 00 00 00 00
put $stars/ppm.bin 1136730 01 00 00
put $stars/bd.bin 4247568 01 00 00 ff ff ff
put data/small/csn_alp.bin 0 01 00 00 00 56 65 67 61 00 00 00 00 00 00 00 00 00 00 00 00 \
    00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
put $stars/tycho.bin 32 08 2a 01 00 03 00 00 00
put $stars/tycho.bin 76296 17 1e 11 0e 00 18 1e 11 0f 40 01 00 00 13 00

run catalog star 1
check "catalog star exits 0" test "$rc" -eq 0
for field in '"form": "long"' '"ra": 4.87356315567964' '"hr": 7001' '"hd": 172167' \
    '"sao": 67174' '"hip": 91262' '"magnitude": 0.03' '"spectral": "A0"' '"flamsteed": 3' \
    '"bayerLetter": 1' '"designationConstellation": 51'; do
    check "catalog star 1 has $field" grep -qF "$field" <<<"$out"
done
run catalog star 1121815
check "star 1121815 is read short" grep -qF '"form": "short"' <<<"$out"
check "star 1121815 has its Tycho name" grep -qF '"name": "TYC 00011-0015 1"' <<<"$out"
check "star 1121815 magnitude" grep -qF '"magnitude": 11.5' <<<"$out"
run catalog star 1121816
check "star 1121816 starts the short records" grep -qF '"name": "TYC 00012-0016 2"' <<<"$out"
run catalog star 2591874
check "a star past the last exits 1" test "$rc" -eq 1
for lookup in "hrbs 7001" "bayer Lyr alpha" "bayer lyr Alp 1" "csn_alp Vega" "ppm 700001" \
    "bd +38 3238" "bd +38 3238 A" "tycho 5 20 1"; do
    run catalog find $lookup
    check "find $lookup answers star 1" test "$rc" -eq 0 -a "$out" = 1
done
run catalog find tycho 5 16 2
check "find tycho 5 16 2" test "$out" = 1121816
for lookup in "hrbs 7002" "bayer Lyr alpha 2" "ppm 378911" "bd +38 3238 B" "tycho 5 17 1" \
    "csn_alp Deneb" "sao 1"; do
    run catalog find $lookup
    check "find $lookup answers nothing" test "$rc" -eq 1 -a -z "$out"
done
# GSC region 4663 is the first of band S0000: its box is row 0 of the band's
# table (RA 1h to 0.5h, Dec 0 to -7.5) and its slots are in file 0001.
mkdir -p data/gsc/gsc/S0000
put data/gsc/gsc/S0000.bin 0 00 00 80 3f 00 00 00 3f 00 00 00 00 00 00 f0 c0
put data/gsc/gsc/S0000.bin 9551 00  # the band's 597 rows are read whole
put data/gsc/gsc/S0000/0001.bin 0 ff f4 ff 3f 64 ff 01 00 00 80 00 00 00 00 00 00 00 00
run catalog gsc 4663 1
check "a plain GSC star at its box centre" grep -qE \
    '^\{"answer": 1, "ra": 0\.196349540849362[0-9]*, "dec": -0\.06544984694978[0-9]*, "magnitude": 7\.341, "class": 2\}$' <<<"$out"
run catalog gsc 4663 2
check "a GSC slot that refers to a star" test "$out" = '{"answer": 2, "star": 1}'
run catalog gsc 4663 3
check "six zero bytes are no star" test "$rc" -eq 1 -a "$out" = '{"answer": -1}'
# Struve 1 leads to ccdm_i row 1; the CCDM search starts at row 18684.
put $stars/struve.bin 0 01 00
put $stars/ccdm_i.bin 0 00 00 00 02 01 00 00
put $stars/ccdm_i.bin 579173 00 00 00 02 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 \
    00 00 00 00 00 00 c1 47 07 8f ff 7f
for lookup in "struve 1" "ccdm 18369 +3847"; do
    run catalog find $lookup
    check "find $lookup answers star 1" test "$rc" -eq 0 -a "$out" = 1
done
run catalog find struve 2
check "an empty Struve slot answers nothing" test "$rc" -eq 1
run object 5 1 --at 2000-01-01T12:00 --site -111.6,31.96,2100
check "object 5 1 exits 0" test "$rc" -eq 0
for field in '"raJ2000": 4.87356315567964' '"objectClass": 5' '"PID": 1' '"classMask": 16' \
    '"magnitude": 0.029999999' '"site": {"longitude": -111.6, "latitude": 31.96, "height": 2100}' \
    '"instant": {"ut": "2000-01-01T12:00:00", "jd": 2451545.0000000000, "timeScale": "UT"}'; do
    check "object 5 1 has $field" grep -qF "$field" <<<"$out"
done
run object fixed 83.82 -5.39 --at 2026-11-22T22:00
check "object fixed" grep -qF '"fixedRa": 500005776, "fixedDec": -32152602' <<<"$out"
check "object fixed is read again with its mask" grep -qF '"classMask": 32768' <<<"$out"
run object 5 2591874
check "an object not in the file exits 1" test "$rc" -eq 1 -a -z "$out"
for bad in "fixed 400 0" "5" "21 1" "5 1 --at 2026-13-01T00:00" "5 1 --site 0"; do
    run object $bad
    check "object $bad is a usage error" test "$rc" -eq 2
done
# Names: star 1 is HR 7001 and "Vega" in csn_alp.
for name in "HR 7001" "hr 7001" "Vega"; do
    run resolve $name --at 2000-01-01T12:00
    check "resolve $name exits 0" test "$rc" -eq 0
    for field in '{"answer": 1, "records": [{"displayName": ' '"PID": 1, "objectClass": 5' '"raJ2000": 4.87356315567964' \
        '"instant": {"ut": "2000-01-01T12:00:00"'; do
        check "resolve $name has $field" grep -qF "$field" <<<"$out"
    done
done
check "resolve by HR is kind 5" grep -qF '"designationKind": 5' <<<"$(run resolve HR 7001; echo "$out")"
run resolve Nothing Like It
check "an unknown name exits 1" test "$rc" -eq 1
check "an unknown name answers 0" grep -qF '{"answer": 0, "records": [], ' <<<"$out"
check "an unknown name is said" grep -qxF "ferry2-cli resolve: nothing is named Nothing Like It" "$work/stderr"
run name 5 1
check "name 5 1 exits 0" test "$rc" -eq 0
check "name 5 1 gives the names and form" grep -qE '^\{"displayName": "[^"]*", "secondaryName": "[^"]*", "form": \{"isFreeText": [01], ' <<<"$out"
run name 5 2591874
check "name of an object not in the file exits 1" test "$rc" -eq 1 -a -z "$out"
run browse 5 5 "HR 7001"
check "browse marks the row named" test "$out" = $'*\t7001\tHR 7001'
run browse 5 5 --rows 0
check "browse --rows 0 gives nothing" test "$rc" -eq 0 -a -z "$out"
run browse 5 99
check "a kind without a list exits 1" test "$rc" -eq 1
for bad in "resolve" "name 5" "name 21 1" "name 5 1 --prefer 5" "browse 5" "browse 5 5 --rows x" \
    "browse 5 2 --constellation 90"; do
    run $bad
    check "$bad is a usage error" test "$rc" -eq 2
done
run browse --help
check "browse --help is the names' help" grep -qF "resolve TEXT" <<<"$out"

run object 2 10 --at 2000-01-01T12:00
check "the Moon without the planet tables is not found" test "$rc" -eq 1 -a -z "$out"
run body 10
check "body without the planet tables exits 1" test "$rc" -eq 1 -a -z "$out"
for bad in "12" "-1" "1.5" "" "3 4" "10 --at 1992-04-12"; do
    run body $bad
    check "body $bad is a usage error" test "$rc" -eq 2
done
# With the planet tables in the solar-system folder (line 7 of vesperal.ini):
# the Moon of 1992 April 12.0 TD at 368409.7 km and ecliptic longitude
# 133.16266 degrees (2.32412... rad), as in Meeus's worked example 47.a.
cp "$solar_tables"/PLANETS.NDX "$solar_tables"/PLANETS.BIN "$solar_tables"/moontab.bin \
    "$solar_tables"/plutotab.bin "$solar_tables"/nutcon.bin solar/
run body 10 --at 1992-04-12T00:00 --dynamical
check "body 10 exits 0" test "$rc" -eq 0
for field in '"bodyId": 10, "name": "Moon"' '"geoLongitude": 2.32412' '"geoDistance": 368409.6' \
    '"instant": {"td": "1992-04-12T00:00:00"' '"timeScale": "dynamical"'; do
    check "body 10 has $field" grep -qF "$field" <<<"$out"
done
run object 2 10 --at 1992-04-12T00:00 --dynamical
check "object 2 10 is the Moon" grep -qF '"classMask": 2,' <<<"$out"
check "object 2 10 has the Moon's J2000 place" grep -qF '"raJ2000": 2.35253' <<<"$out"
run object 2 12 --at 1992-04-12T00:00
check "object 2 12 is not a body" test "$rc" -eq 1
rm solar/PLANETS.NDX solar/PLANETS.BIN solar/moontab.bin solar/plutotab.bin solar/nutcon.bin
# Deep sky: M 31 is galaxy record 5, whose place sits at bytes 22 to 29;
# NGC 224's row names two galaxies under the bare number.
put $stars/m.bin 90 04 05 00
put $stars/gal.bin 234 b3 8d cc 03 b4 66 ac 0e
put $stars/gal.bin 264 00
put $stars/ngc.bin 7359 00 24 00 00 00 05 00 00 00 06 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 \
    00 00 00 00 00 00 00 00
run catalog find m 31
check "find m 31 answers the galaxy record" test "$rc" -eq 0 -a "$out" = "6 5"
run catalog find ngc 224
check "find ngc 224 answers two galaxies" test "$out" = $'6 5\n6 6'
run catalog find ngc 224A
check "find ngc 224A answers nothing" test "$rc" -eq 1 -a -z "$out"
run object 6 5 --at 2026-11-22T22:00
check "object 6 5 is the galaxy at its place" grep -qF '"raJ2000": 0.186484800521595' <<<"$out"
check "object 6 5 is a galaxy" grep -qF '"classMask": 256' <<<"$out"
put $stars/Minkowski.bin 0 ff ff 07 00
run catalog find minkowski 1-2
check "find minkowski 1-2 answers planetary 7" test "$rc" -eq 0 -a "$out" = 7
run catalog find minkowski 1-1
check "an empty Minkowski slot answers nothing" test "$rc" -eq 1 -a -z "$out"
# PN G: the run of longitude 63 (head at 63 x 6) holds one entry after the
# 361 heads: tenth 1, latitude +13.9, planetary 7.
put $stars/PNG.bin 378 76 08 00 00 01 00
put $stars/PNG.bin 2166 01 8b 00 07 00
run catalog find png 063.1+13.9
check "find png 063.1+13.9 answers planetary 7" test "$rc" -eq 0 -a "$out" = 7
run catalog find png 63.1 13.8
check "find png at another latitude answers nothing" test "$rc" -eq 1 -a -z "$out"
run catalog find png G063.1
check "find png without a latitude is a usage error" test "$rc" -eq 2
run catalog find bayer Xyz alpha
check "an unknown constellation is a usage error" test "$rc" -eq 2
run catalog --help
check "catalog --help" grep -qF "catalog find INDEX KEY" <<<"$out"

# Orbits. The elements and the options are checked before the Sun is
# needed; the sample's solar folder has no planet tables of its own (the
# ones copied in for the bodies are gone again).
encke=(--a 2.2091404 --e 0.8502196 --incl 11.94524 --node 334.75006 --peri 186.23352
    --perihelion-time 1990-10-28T13:04:49.7)
json() {  # json KEY: the value of KEY in $out
    sed -E "s/.*\"$1\": ([^,}]*).*/\1/" <<<"$out"
}
near() {  # near A B TOLERANCE
    awk -v a="$1" -v b="$2" -v t="$3" 'BEGIN { d = a - b; if (d < 0) d = -d; exit !(d <= t) }'
}
run orbit --help
check "orbit --help" grep -qF -- "--perihelion-time YYYY-MM-DDTHH:MM[:SS]" <<<"$out"
run orbit "${encke[@]}" --at 1990-10-06T00:00 --dynamical
check "orbit without the planet tables exits 1" test "$rc" -eq 1 -a -z "$out"
check "orbit without the planet tables says so" grep -qF \
    "ferry2-cli orbit: the Sun needs the planet tables PLANETS.NDX and PLANETS.BIN, which are not loaded from solar/" \
    "$work/stderr"
run orbit --q 1.2 --e 1.3 --peri 0 --node 0 --incl 0 --mean-anomaly 5 --epoch 2000-01-01T00:00
check "a hyperbola by its mean anomaly is no orbit" test "$rc" -eq 1 -a -z "$out"
check "no orbit: the line" grep -qF "ferry2-cli orbit: the elements do not determine an orbit" \
    "$work/stderr"
for bad in "--e 0.5 --peri 0 --node 0 --incl 0 --perihelion-time 2000-01-01T00:00" \
    "--q 1 --e 0.5 --peri 0 --node 0 --perihelion-time 2000-01-01T00:00" \
    "--q 1 --e 0.5 --peri 0 --node 0 --incl 0" \
    "--q 1 --e -0.5 --peri 0 --node 0 --incl 0 --perihelion-time 2000-01-01T00:00" \
    "--q 1 --e 0.5 --peri 0 --node 0 --incl 0 --mean-anomaly 3" \
    "--q 1 --e 0.5 --peri 0 --node 0 --incl 0 --perihelion-time 2000-13-01T00:00" \
    "--q 1 --e 0.5 --peri 0 --node 0 --incl 0 --perihelion-time 2000-01-01T00:00 --h 5" \
    "--q 1 --e 0.5 --peri 0 --node 0 --incl 0 --perihelion-time 2000-01-01T00:00 --site 0,0" \
    "--q 1 --e 0.5 --peri x --node 0 --incl 0 --perihelion-time 2000-01-01T00:00"; do
    run orbit $bad
    check "orbit $bad is a usage error" test "$rc" -eq 2 -a -z "$out"
done
# With the planet tables, which give the Sun.
cp "$solar_tables"/PLANETS.NDX "$solar_tables"/PLANETS.BIN solar/
# Meeus, Astronomical Algorithms, example 33.a: ra 158.558965, dec
# 19.158496 degrees (J2000.0, light time included).
run orbit "${encke[@]}" --at 1990-10-06T00:00 --dynamical --comet-g 10 --comet-k 4
check "orbit of Encke exits 0" test "$rc" -eq 0
check "Encke's ra" near "$(json ra)" 2.7673760 0.000005
check "Encke's dec" near "$(json dec)" 0.3343788 0.000005
check "orbit's instant" grep -qF '"instant": {"td": "1990-10-06T00:00:00"' <<<"$out"
check "orbit's time scale" grep -qF '"timeScale": "dynamical"}}' <<<"$out"
# At perihelion the body is q from the Sun, whatever the Sun's place.
run orbit --q 1.5 --e 0.5 --peri 10 --node 20 --incl 30 --perihelion-time 2010-05-01T00:00 \
    --at 2010-05-01T00:00 --dynamical --h 10 --g 0.15
check "at perihelion r is q" near "$(json helioDistance)" 1.5 0.000001
check "a magnitude by H, G" near "$(json magnitude)" 10 5
# Mean anomaly 0 at the epoch is a perihelion: r is a (1 - e).
run orbit --a 2.5 --e 0.1 --peri 10 --node 20 --incl 30 --mean-anomaly 0 \
    --epoch 2010-05-01T00:00 --at 2010-05-01T00:00 --dynamical
check "mean anomaly 0 at the epoch" near "$(json helioDistance)" 2.25 0.000001
check "no law, no magnitude" grep -qF '"magnitude": null' <<<"$out"
run orbit --q 0.4 --e 1 --peri 10 --node 20 --incl 30 --perihelion-time 2010-05-01T00:00 \
    --at 2010-06-01T00:00
check "a parabola in UT" test "$rc" -eq 0 -a "$(json timeScale)" = '"UT"'

# The user's own stars and deep-sky objects. A text import: a line of each
# kind, a name with a tab and a degree sign (Windows text), a line too short
# to be a star, another kind's line, and a star given again.
printf 'S Vega                              18:36:56.3 +38:47:01 J2000 0.03\r\n' >stars.txt
printf 'S Tab\there 3\xb0                        05:55:10.3 +07:24:25 2000 0.5\r\n' >>stars.txt
printf 'S Short                             18:36:56.3\r\nG  NGC 224\r\n' >>stars.txt
printf 'S Vega                              18:36:56.3 +38:47:01 J2000 0.05\r\n' >>stars.txt
run add-objects stars stars.txt
check "add-objects stars exits 0" test "$rc" -eq 0
check "add-objects stars counts" test "$out" = "2 added, 1 replaced, 0 unchanged, 1 bad"
run user-objects stars
check "user-objects stars lists both" test "$out" = $'1\tVega\t279.234583\t38.783611\t0.05\n2\tTab\\there 3\xc2\xb0\t88.792917\t7.406945\t0.50'
run add-objects stars missing.txt
check "a missing text file exits 1" test "$rc" -eq 1 -a -z "$out"
# A store made byte by byte: PID 4 at a half turn and an eighth, magnitude
# 0.03; PID 9 with no name; the last PID issued 9.
rm -f user/stellar.bin user/us_alpha.bin user/us_pid.bin
put user/stellar.bin 0 02 00 09 00 00 00 04 00 00 00 00 00 00 40 00 00 00 10 03 00 56 45 47 41
put user/stellar.bin 52 00 09 00 00 00
put user/stellar.bin 99 00
run user-objects stars
check "a crafted store lists" test "$out" = $'4\tVEGA\t180.000000\t45.000000\t0.03\n9\t\t0.000000\t0.000000\t0.00'
run object 12 4 --at 2000-01-01T12:00
check "object 12 4 is the user's star" grep -qF '"raJ2000": 3.14159265505' <<<"$out"
check "object 12 4 has the star mask" grep -qF '"PID": 4, "objectClass": 12' <<<"$out"
check "object 12 4 mask 16" grep -qF '"classMask": 16,' <<<"$out"
run delete-object 12 9
check "delete-object 12 9 exits 0" test "$rc" -eq 0
run delete-object 12 9
check "a deleted star is not there" test "$rc" -eq 1 -a -z "$out"
check "and says so" grep -qF "no star 9 in user/stellar.bin" "$work/stderr"
check "the last PID stays after a delete" test "$(od -An -tx1 -N6 user/stellar.bin)" = " 01 00 09 00 00 00"
run compact stars
check "compact stars exits 0" test "$rc" -eq 0 -a "$out" = "1 kept, last PID 4"
check "the last PID goes down after a compaction" test "$(od -An -tx1 -N6 user/stellar.bin)" = " 01 00 04 00 00 00"
check "the compacted store has its one star" test "$(wc -c <user/stellar.bin)" -eq 53
run delete-object 12 0
check "PID 0 is a usage error" test "$rc" -eq 2
printf 'GG Hickson 44                       10:18:00 +21:48:00 J2000 9.5 6 4 90\n' >deep.txt
printf 'PN NGC 7293                         22:29:38.5 -20:50:14 J2000 7.3 16\n' >>deep.txt
printf 'G  NGC 224                          00:42:44.3 +41:16:09 J2000\n' >>deep.txt
run add-objects deep-sky deep.txt
check "add-objects deep-sky counts" test "$rc" -eq 0 -a "$out" = "2 added, 0 replaced, 0 unchanged, 1 bad"
run user-objects deep-sky
check "user-objects deep-sky" test "$out" = $'1\tHickson 44\t154.500000\t21.800000\t9.50\t16\t6.00\t4.00\t90.0\n2\tNGC 7293\t337.410417\t-20.837222\t7.30\t8\t16.00\t0.00\t0.0'
run object 18 1 --at 2000-01-01T12:00
check "object 18 1 has the group's mask" grep -qF '"classMask": 65536,' <<<"$out"
run delete-object 18 1
check "delete-object 18 1 exits 0" test "$rc" -eq 0
run compact deep-sky
check "compact deep-sky" test "$rc" -eq 0 -a "$out" = "1 kept, last PID 2"
check "the deep-sky header after compaction" test "$(od -An -tx1 -N8 user/uds.bin)" = " 01 00 00 00 02 00 00 00"

# The user's comets, read from CometEls.txt lines: Encke with the elements
# of Meeus's example 33.a as the list gives them (q = a (1 - e)), and a line
# that does not read. A user comet stands where `orbit` puts the same
# elements.
printf '%s\n' '# a comment line is no comet' \
    '0002P         1990 10 28.5450  0.330886  0.850220  186.2335  334.7501   11.9452  19901006  10.0  4.0  2P/Encke' \
    '0002P         1990 10 28.5450  0.330886  0.8x0220  186.2335  334.7501   11.9452  19901006  10.0  4.0  2P/Bad' \
    >"$work/comets.txt"
run add-objects comets "$work/comets.txt"
check "add-objects comets counts" test "$rc" -eq 0 -a "$out" = "1 added, 0 replaced, 0 unchanged, 1 bad"
run add-objects comets "$work/comets.txt"
check "the same elements again are unchanged" test "$out" = "0 added, 0 replaced, 1 unchanged, 1 bad"
run user-objects comets
check "user-objects comets lists Encke" test "$(cut -f1,2,4,5 <<<"$out")" = $'1\t2P/Encke\t0.330886\t0.850220'
run object 13 1 --at 1990-10-06T00:00 --dynamical
check "object 13 1 exits 0" test "$rc" -eq 0
comet=$out
run orbit --q 0.330886 --e 0.850220 --peri 186.2335 --node 334.7501 --incl 11.9452 \
    --perihelion-time 1990-10-28T13:04:48 --comet-g 10 --comet-k 4 --at 1990-10-06T00:00 --dynamical
check "the user comet's ra is the orbit's" near "$(out=$comet json raJ2000)" "$(json ra)" 0.000005
check "the user comet's dec is the orbit's" near "$(out=$comet json decJ2000)" "$(json dec)" 0.000005
check "the user comet's magnitude is the orbit's" near "$(out=$comet json magnitude)" "$(json magnitude)" 0.0001
check "Encke near Meeus's place" near "$(json ra)" 2.7673760 0.0002
run object 3 0 --at 1990-10-06T00:00 --dynamical
check "no reference comets in the sample's solar folder" test "$rc" -eq 1
run delete-object 13 1
check "delete-object 13 1" test "$rc" -eq 0
run object 13 1 --at 1990-10-06T00:00 --dynamical
check "a deleted comet is gone" test "$rc" -eq 1
run delete-object 13 1
check "deleting it again exits 1" test "$rc" -eq 1
run compact comets
check "compact brings the last PID down" test "$out" = "0 kept, last PID 0"

# The minor planets. Ceres by the Minor Planet Center's elements of 2025 Nov
# 21.0 TT, in the user's store as an "MP " line and in the reference set.
ceres=(--a 2.7656157 --e 0.079576 --peri 73.300 --node 80.250 --incl 10.588
       --mean-anomaly 231.540 --epoch 2025-11-21T00:00 --h 3.35 --g 0.15)
printf 'MP %-41s%4s %2s %4s %7s %10s %8s %7s %7s %7s %5s %6s %s\n' "(1) Ceres" 2025 11 21.0 \
    231.540 2.7656157 0.079576 73.300 80.250 10.588 3.35 0.15 MPC >ceres.txt
echo "MP (1) a line that is not an orbit" >>ceres.txt
run add-objects minor-planets ceres.txt --format mp
check "add-objects minor-planets" test "$rc" -eq 0 -a "$out" = "1 added, 0 replaced, 0 unchanged, 1 bad"
run add-objects minor-planets ceres.txt --format mp
check "the same file again is unchanged" test "$out" = "0 added, 0 replaced, 1 unchanged, 1 bad"
run user-objects minor-planets
check "user-objects minor-planets" grep -qP '^1\tCeres\t1\t2461000.5000000000\t' <<<"$out"
run orbit "${ceres[@]}" --at 2026-01-01T00:00 --dynamical
ra=$(json ra) dec=$(json dec)
run object 14 1 --at 2026-01-01T00:00 --dynamical
check "object 14 1 is a user minor planet" grep -qF '"classMask": 8,' <<<"$out"
check "object 14 1 at the orbit's ra" near "$(json raJ2000)" "$ra" 0.000001
check "object 14 1 at the orbit's dec" near "$(json decJ2000)" "$dec" 0.000001
run orbit --a 2.7656157 --e 0.0795763 --peri 73.29974 --node 80.24963 --incl 10.58789 \
    --mean-anomaly 231.53975 --epoch 2025-11-21T00:00 --h 3.35 --g 0.15 --at 2026-01-01T00:00 --dynamical
ra=$(json ra) dec=$(json dec)
mkdir -p solar/elements
cp "$solar_tables"/mp_data.bin "$solar_tables"/mp_names.bin "$solar_tables"/mp_alpha.bin \
    "$solar_tables"/limits.bin solar/
cp -r "$solar_tables"/elements/elements solar/elements/
run object 4 1 --at 2026-01-01T00:00 --dynamical
check "object 4 1 is the reference Ceres" grep -qF '"PID": 1,' <<<"$out"
check "object 4 1 at the orbit's ra" near "$(json raJ2000)" "$ra" 0.000001
check "object 4 1 at the orbit's dec" near "$(json decJ2000)" "$dec" 0.000001
run delete-object 14 1
check "delete-object 14 1" test "$rc" -eq 0
run object 14 1 --at 2026-01-01T00:00
check "a deleted minor planet is not found" test "$rc" -eq 1
run delete-object 14 1
check "deleting it again fails" test "$rc" -eq 1
run compact minor-planets
check "compact minor-planets brings the last PID down" test "$rc" -eq 0 -a "$out" = "0 kept, last PID 0"
# The same Ceres in Lowell's fixed columns (number, name, H, G, the epoch,
# then M, peri, node, incl, e, a), the format taken when none is named.
printf '%5d %-18s%17s%5.2f  %4.2f%53s%4d%02d%02d %10.6f %10.6f %10.6f %10.6f%10.8f %12.8f\n' \
    1 Ceres "" 3.35 0.15 "" 2025 11 21 231.53975 73.29974 80.24963 10.58789 0.0795763 2.7656157 \
    >ceres-bowell.txt
run add-objects minor-planets ceres-bowell.txt
check "add-objects minor-planets, Lowell's columns" test "$rc" -eq 0 -a "$out" = "1 added, 0 replaced, 0 unchanged, 0 bad"
run add-objects minor-planets ceres-bowell.txt --format bowell
check "Lowell's columns again are unchanged" test "$out" = "0 added, 0 replaced, 1 unchanged, 0 bad"
run user-objects minor-planets
check "the Lowell row's source" grep -qP '^1\tCeres\t1\t2461000.5000000000\t.*\tBowell$' <<<"$out"
run object 14 1 --at 2026-01-01T00:00 --dynamical
check "Lowell's Ceres at the orbit's ra" near "$(json raJ2000)" "$ra" 0.000001
check "Lowell's Ceres at the orbit's dec" near "$(json decJ2000)" "$dec" 0.000001

# Observing lists, on fresh sample folders whose catalogues are the
# generated reference set: the page, a dry run that changes nothing, the
# import, and the lists read back.
refdata=$(realpath "$solar_tables/..")
"$make_sample" "$work/lists" >/dev/null || { echo "make-sample failed" >&2; exit 1; }
cd "$work/lists/vesperal2"
printf '%s\r\n' "$refdata/small/" "$refdata/stars/" "$refdata/gsc/" maps/1/ maps/2/ maps/3/ \
    "$refdata/solar/" "$refdata/solar/elements/" >vesperal.ini
run --legacy ../legacy list lists
check "list lists" test "$out" = "$(printf 'Row\tTick\tObserving List\tObjects\n1\t1\tMessier Marathon\t  12\n2\t1\tSummer Night\t  10\n3\t1\tAutumn Galaxies\t  10\n4\t1\tMessier Marathon\t   2\n5\t0\tEmpty\t   0')"
snapshot() { (cd "$work/lists" && find . -type f -print0 | sort -z | xargs -0 md5sum); }
before=$(snapshot)
run import lists --rows 2,3,5 --dry-run
check "dry run exits 0" test "$rc" -eq 0
check "dry run shows the page's log lines, then the message" test "$(sed -n '6p;7p' <<<"$out")" = $'Ferry 2 Message\nImported 3 of 3, 0 lists skipped, 0 objects skipped'
check "dry run changes no file of either folder" test "$(snapshot)" = "$before"
run import lists --rows 2,3,5
check "import lists exits 0" test "$rc" -eq 0
check "import lists message" test "$out" = $'Ferry 2 Message\nImported 3 of 3, 0 lists skipped, 0 objects skipped'
check "us_pid.bin made in the version 1.x folder" test -s ../legacy/us_pid.bin
run show-list "Summer Night"
check "show-list rows" test "$out" = "$(printf 'Row\tTick\tClass\tPID\tName\n1\t0\t5\t6990\tVega\n2\t0\t5\t7405\tAlbireo\n3\t0\t11\t135\tHercules Globular Cluster\n4\t0\t8\t93\tRing Nebula\n5\t0\t8\t111\tDumbbell Nebula\n6\t0\t11\t185\tM 22\n7\t0\t5\t6990\tVega\n8\t0\t12\t1\tGarden Star\n9\t0\t13\t1\tHale-Bopp\n10\t0\t14\t1\t(433) Eros')"
run show-list "Autumn Galaxies"
check "the second list shares the comet and the minor planet" test "$(cut -f3,4,5 <<<"$out" | sed -n '5,9p')" = "$(printf '5\t421\tPolaris\n12\t2\tBackyard Double\n13\t1\tHale-Bopp\n14\t1\t(433) Eros\n13\t2\tEncke')"
run show-list Empty
check "an empty list is made" test "$rc" -eq 0 -a "$out" = $'Row\tTick\tClass\tPID\tName'
run import lists --rows 2
check "a list of a name the store holds is skipped" test "$out" = $'Ferry 2 Message\nImported 0 of 1, 1 lists skipped, 0 objects skipped'
run show-list "summer night"
check "show-list of no such list exits 1" test "$rc" -eq 1
# The list through an exchange file into a folder without lists or objects.
run show-list "Summer Night"
summer=$out
run export-list "Summer Night" "$work/summer.lst"
check "export-list" test "$rc" -eq 0 -a "$out" = "10 rows written"
check "exchange file begins with the magic, version and kind" \
    test "$(od -An -tx1 -N6 "$work/summer.lst" | tr -d ' ')" = "03d902006601"
mkdir -p "$work/other/maps/1" "$work/other/maps/2" "$work/other/maps/3"
cp vesperal.ini "$work/other/"
cd "$work/other"
printf 'not a list\n' >"$work/text.lst"
run import-list "$work/text.lst"
check "a file that is no exchange file is refused and writes nothing" test "$rc" -eq 1 -a ! -e user/lists/obs.000
run import-list "$work/summer.lst"
check "import-list" test "$rc" -eq 0 -a "$out" = $'Summer Night\t10 rows added'
run show-list "Summer Night"
check "the imported list names the same objects" test "$out" = "$summer"
cd "$work/lists/vesperal2"

# The version 1.x logs: the page's names, refusals, a dry run, the import
# with every name settled, and the entries found again.
run import locations
run import instruments
run list logs
check "list logs prints the unknown names after the page's message" \
    test "$(sed -n '7,$p' <<<"$out")" = $'List\tName\nobserver\t(blank)\nobserver\tDee Park\nobserver\tKim Osei\ninstrument\tOpera Glass 3x25'
check "the scan adds the log's locations the store lacks" grep -q "Dark Sky Meadow" user/loc.bin
run import logs
check "import logs refuses while names are unsettled" \
    test "$rc" -eq 1 -a "$(grep -c unsettled "$work/stderr")" -eq 4 -a ! -e user/log
run import logs --observer "Nobody=+"
check "a name the page doesn't list is a usage error" test "$rc" -eq 2
run import logs --observer "Kim Osei=Nobody"
check "a record the store lacks is a usage error" test "$rc" -eq 2
run import logs --instrument "Opera Glass 3x25=+spyglass"
check "an unknown kind of new record is a usage error" test "$rc" -eq 2
settle=(--observer "(blank)=Ann Lee" --observer "Dee Park=+" --observer "Kim Osei=Cy Tran"
    --instrument "Opera Glass 3x25=+binoculars")
before=$(snapshot)
run import logs "${settle[@]}" --dry-run
check "a dry log import changes no file" test "$rc" -eq 0 -a "$(snapshot)" = "$before"
check "the dry run shows the job's message" grep -q "^11 log entries imported of 11 (0 skipped)." <<<"$out"
run import logs "${settle[@]}"
check "import logs" test "$rc" -eq 0 -a "$(sed -n 2p <<<"$out")" = "11 log entries imported of 11 (0 skipped)."
check "the chain's missing middle file is logged" \
    grep -q "^Log: internal error -> sc_index= 5 ret= 0" ferry2.log
check "the new observer and binoculars are in their stores" \
    grep -q "Dee Park" user/observer.bin -a -n "$(grep -l "Opera Glass 3x25" user/instr.bin)"
run log show --observer "Cy Tran"
check "a linked name's entries carry the stored observer" test "$(cut -f4 <<<"$out" | tail -n +2 | sort | tr '\n' ,)" = \
    "Hale-Bopp,Hercules Globular Cluster,Pleiades,Triangulum Galaxy,"
run log show --night 1999-12-31
check "an entry without a date takes the stand-in date" test "$(cut -f3,4 <<<"$out" | tail -n +2)" = $'1999-12-31 21:36\tVega'
run check
check "the log store reads whole after the import" test "$out" = ok
run import logs --observer "(blank)=Ann Lee" --observer "Kim Osei=Cy Tran"
check "a second import counts the entries there as imported" \
    test "$(sed -n 2p <<<"$out")" = "11 log entries imported of 11 (0 skipped)." -a "$(ls user/log/galaxies/*.bin | wc -l)" -eq 4
rm -rf user/log

# The observation log: entries added by name of the stored location,
# observer and instrument, found by every index, carried to another folder.
run log --help
check "log --help is that verb's" test "$rc" -eq 0 -a "$(grep -c '^Usage: ferry2-cli log add' <<<"$out")" -eq 1
run log add --object 6:4270 --at 2026-03-05T21:00 --location Home --observer "Ann Lee" --instrument "SCT 8in" \
    --remark "low" --note "Dust lane"
check "the first galaxy entry is number 0" test "$rc" -eq 0 -a "$out" = 0
run log add --object 6:4270 --at 2026-03-05T21:00:40 --location home --observer "ANN LEE" --instrument "SCT 8in" \
    --note "Dust lane"
check "the same observation again gives the first number" test "$rc" -eq 0 -a "$out" = 0
run log add --object 6:4270 --at 2026-03-06T21:00 --location Home --observer "Cy Tran" --instrument "SCT 8in"
check "another night is a new entry" test "$out" = 1
# 04:00 UT is 21:00 the evening before at Kitt Peak (UT - 7 h).
run log add --object 11:135 --at 2026-03-06T04:00 --location "Kitt Peak National Observatory" --observer "Cy Tran" \
    --instrument "Naked Eye"
check "the first globular entry is number 0" test "$out" = 0
run log add --object 6:4270 --at 2026-03-05T21:00 --location Nowhere --observer "Ann Lee" --instrument "SCT 8in"
check "an unknown location is refused" test "$rc" -eq 1
m31a=$'5\t0\t2026-03-05 21:00\tAndromeda Galaxy\tAnn Lee\tSCT 8in\tHome\tAnd\tlow'
m31b=$'5\t1\t2026-03-06 21:00\tAndromeda Galaxy\tCy Tran\tSCT 8in\tHome\tAnd\t'
m13=$'12\t0\t2026-03-06 04:00\tHercules Globular Cluster\tCy Tran\tNaked Eye\tKitt Peak National Observatory\tHer\t'
head=$'Slot\tEntry\tUT\tObject\tObserver\tInstrument\tLocation\tConstellation\tRemark'
for filter in "--night 2026-03-05:$m31a"$'\n'"$m13" "--observer cy tran:$m31b"$'\n'"$m13" \
    "--instrument Naked Eye:$m13" "--location Home:$m31a"$'\n'"$m31b" "--class galaxies:$m31a"$'\n'"$m31b" \
    "--constellation Her:$m13" "--observer Cy Tran --class globular:$m13"; do
    option=${filter%%:*}
    if [[ $option == "--observer Cy Tran --class globular" ]]; then
        run log show --observer "Cy Tran" --class globular
    else
        run log show ${option%% *} "${option#* }"
    fi
    check "log show $option" test "$out" = "$head"$'\n'"${filter#*:}"
done
run log show
all=$out
check "log show lists every entry" test "$(wc -l <<<"$all")" -eq 4
run log query --observer "Cy Tran"
check "a query looks at each object's first entry only" test "$(cut -f3 <<<"$out" | tail -n +2)" = 135
run check
check "check reads the log store" test "$rc" -eq 0 -a "$out" = ok
run log export "$work/spring.vle"
check "log export" test "$rc" -eq 0 -a "$out" = 3
run export-list "Autumn Galaxies" "$work/autumn.lst" --with-log
check "export-list --with-log" test "$rc" -eq 0
cd "$work/other"
run log import "$work/spring.vle"
check "log import" test "$rc" -eq 0 -a "$out" = 3
run log show
check "the imported log shows the same entries" test "$out" = "$all"
run log import "$work/spring.vle"
check "a second import adds nothing new" test "$out" = 3 -a "$(ls user/log/galaxies/*.bin | wc -l)" -eq 3
run log delete globular 0
check "log delete" test "$rc" -eq 0 -a ! -e "user/log/globular clusters/000000135.pix"
run log delete globular 0
check "deleting it again fails" test "$rc" -eq 1
mkdir -p "$work/third/maps/1" "$work/third/maps/2" "$work/third/maps/3"
cp vesperal.ini "$work/third/"
cd "$work/third"
run import-list "$work/autumn.lst"
run log show
check "a list's exchange file brings its objects' entries" test "$out" = "$head"$'\n'"$m31a"$'\n'"$m31b"
cd "$work/vesperal2"

echo "cli: $passes passed, $failures failed"
test "$failures" -eq 0
