#!/usr/bin/env bash
# Fails when a source file includes a header of a layer it may not include.
# The allowed edges are read from the table in docs/layers.md, so they are
# written in one place only.
# usage: layer_check.sh SOURCE_DIR
set -uo pipefail
top=${1:-$(dirname "$0")/..}
table="$top/docs/layers.md"
[ -f "$table" ] || { echo "layer_check: no $table" >&2; exit 2; }

declare -A allowed known
while IFS='|' read -r _ layer may _; do
    layer=$(printf '%s' "$layer" | tr -d ' `/')
    [[ $layer =~ ^[a-z]+$ ]] || continue
    known[$layer]=1
    if [[ $may == *"every layer above"* ]]; then
        allowed[$layer]='*'
    else
        allowed[$layer]=" $(printf '%s' "$may" | tr -d '`/' | xargs) "
    fi
done < "$table"

bad=0
cd "$top" || exit 2
while IFS= read -r file; do
    layer=${file%%/*}
    [ -n "${known[$layer]:-}" ] || continue
    [ "${allowed[$layer]}" = '*' ] && continue
    while IFS= read -r hit; do
        inc=$(printf '%s' "$hit" | sed -E 's/^[0-9]+:\s*#\s*include\s+"([^/"]+)\/.*/\1/')
        [ "$inc" = "$layer" ] || [ "$inc" = data ] && continue
        [ -n "${known[$inc]:-}" ] || continue
        case ${allowed[$layer]} in *" $inc "*) continue ;; esac
        echo "$file:${hit%%:*}: $layer/ may not include $inc/: ${hit#*:}"
        bad=1
    done < <(grep -n -E '^\s*#\s*include\s+"[^/"]+/' "$file")
done < <(git ls-files '*.cpp' '*.h' 2>/dev/null || find . \( -name '*.cpp' -o -name '*.h' \) -printf '%P\n')

if [ "$bad" -ne 0 ]; then
    echo "layer_check: includes that run up a layer (see docs/layers.md)" >&2
    exit 1
fi
echo "layer_check: every include points down"
