#!/bin/bash
# Inserts Intelligent Blocks into the sample plan, or into a drawing of yours, which stays as it is:
#
#   samples/run.sh BUILD [DRAWING]
#
# The result is saved in BUILD/samples/out, with a picture of it. Printed is what was done, and the facts of the new
# references, one a line.
set -euo pipefail

if [[ $# -lt 1 || $# -gt 2 ]]; then
    echo "usage: samples/run.sh BUILD [DRAWING]" >&2
    exit 2
fi
samples=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
vondrake=$build/bin/vondrake
if [[ $# -eq 2 ]]; then
    drawing=$2 script=$samples/insert.scr result=$build/samples/out/drawing.dwg
else
    drawing=$build/samples/plan.dwg script=$samples/furnish.scr result=$build/samples/out/plan.dwg
fi

mkdir -p "$build/samples/out"
rm -f "$result"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# References of one drawing that are Intelligent, one a line, without the commas between them.
intelligent() {
    "$vondrake" --facts "$1" > "$work/facts"
    { grep '"original_name"' "$work/facts" || true; } | sed 's/,[[:space:]]*$//'
}

intelligent "$drawing" > "$work/before"
"$vondrake" --batch "$script" "$drawing" --drive "S=$samples" --drive "B=$build/samples" --profile "$work/profile.ini"
intelligent "$result" > "$work/after"
"$vondrake" --png "${result%.dwg}.png" --size 1200x840 "$result"

echo
echo "Saved as $result, drawn in ${result%.dwg}.png. New Intelligent Blocks:"
{ grep -vxFf "$work/before" "$work/after" || true; } > "$work/new"
cat "$work/new"
echo "$(wc -l < "$work/new") new references."
