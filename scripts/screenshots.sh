#!/usr/bin/env bash
# Runs ferry2.exe under Wine on a virtual display against the sample folders
# and saves a picture of each tab into docs/.
# usage: scripts/screenshots.sh [BUILD_WIN_DIR] [NATIVE_BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD
win=$(realpath "${1:-build-win}")
native=$(realpath "${2:-build}")

bash scripts/ensure-packages.sh wine wine64 fonts-wine xvfb xauth imagemagick xdotool

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$native/make-sample" "$work" >/dev/null
printf '%s' '..\legacy' >"$work/vesperal2/ferry2.ini"
mkdir -p docs

export WINEPREFIX="$win/wineprefix" WINEARCH=win64 WINEDEBUG=-all \
       WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
export WIN="$win" DOCS="$top/docs" SAMPLE="$work/vesperal2"
xvfb-run -a -s "-screen 0 1024x768x24 -nolisten tcp" bash -euo pipefail -c '
  trap "wineserver -k 2>/dev/null || true" EXIT
  mkdir -p "$WINEPREFIX"
  wineserver -k </dev/null >/dev/null 2>&1 || true   # a server left over from an earlier run
  wineserver -p </dev/null >/dev/null 2>&1 || true
  wineboot -i </dev/null >/dev/null 2>&1 || true
  wine reg add "HKCU\\Software\\Wine\\X11 Driver" /v Managed /d N /f </dev/null >/dev/null 2>&1 || true
  cd "$SAMPLE"
  wine "$WIN/ferry2.exe" </dev/null >/dev/null 2>&1 &
  shot() {  # the main window only
    id=$(xdotool search --name "Vesperal Importer" | head -n 1)
    eval "$(xdotool getwindowgeometry --shell "$id")"
    import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage "$DOCS/$1"
  }
  wine "$WIN/ferry2-drive.exe" ok
  shot locations.png
  for name in instruments lists; do
    wine "$WIN/ferry2-drive.exe" next
    shot "$name.png"
  done
  # The Logs page scans the old logs first and fills its lists once the
  # notice of the scan is answered.
  wine "$WIN/ferry2-drive.exe" next
  wine "$WIN/ferry2-drive.exe" notice
  shot logs.png
  wine "$WIN/ferry2-drive.exe" close
'
echo "pictures in $top/docs"
