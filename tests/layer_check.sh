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
files=$(git ls-files '*.cpp' '*.h' 2>/dev/null || find . \( -name '*.cpp' -o -name '*.h' \) -printf '%P\n')
include_re='^([^:]+):([0-9]+):[[:space:]]*#[[:space:]]*include[[:space:]]+"([^/"]+)/'
# One grep over every file; each hit is FILE:LINE:TEXT.
while IFS= read -r hit; do
    [[ $hit =~ $include_re ]] || continue
    file=${BASH_REMATCH[1]} line=${BASH_REMATCH[2]} inc=${BASH_REMATCH[3]}
    layer=${file%%/*}
    [ -n "${known[$layer]:-}" ] || continue
    [ "${allowed[$layer]}" = '*' ] && continue
    [ "$inc" = "$layer" ] || [ "$inc" = data ] && continue
    [ -n "${known[$inc]:-}" ] || continue
    case ${allowed[$layer]} in *" $inc "*) continue ;; esac
    text=${hit#*:*:}
    echo "$file:$line: $layer/ may not include $inc/: $text"
    bad=1
done < <(printf '%s\n' "$files" | xargs grep -n -H -E '^\s*#\s*include\s+"[^/"]+/')

if [ "$bad" -ne 0 ]; then
    echo "layer_check: includes that run up a layer (see docs/layers.md)" >&2
    exit 1
fi
echo "layer_check: every include points down"
