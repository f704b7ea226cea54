#!/bin/bash
# Opens the program's window on the sample plan, or on a drawing of yours:
#
#   samples/run.sh BUILD [DRAWING]
#
# Without a display it inserts Intelligent Blocks into the plan, or into your drawing, which stays as it is, and prints
# what was done and the facts of the new references, one a line. The result is in BUILD/samples/out, with a picture of
# it and one of the window as it would open on it.
set -euo pipefail

if [[ $# -lt 1 || $# -gt 2 ]]; then
    echo "usage: samples/run.sh BUILD [DRAWING]" >&2
    exit 2
fi
samples=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
vondrake=$build/bin/vondrake
out=$build/samples/out
drives=(--drive "S=$samples" --drive "B=$build/samples")
mkdir -p "$out"

if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    if [[ $# -eq 2 ]]; then
        exec "$vondrake" "$2" "${drives[@]}"
    fi
    # What you draw into the plan is kept for the next time.
    [[ -e $out/plan.dwg ]] || cp "$build/samples/plan.dwg" "$out/plan.dwg"
    exec "$vondrake" "$out/plan.dwg" "${drives[@]}"
fi

echo "There is no display for the window (neither DISPLAY nor WAYLAND_DISPLAY is set): the sample runs without."
if [[ $# -eq 2 ]]; then
    drawing=$2 script=$samples/insert.scr result=$out/drawing.dwg
else
    drawing=$build/samples/plan.dwg script=$samples/furnish.scr result=$out/plan.dwg
fi

rm -f "$result"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# References of one drawing that are Intelligent, one a line, without the commas between them.
intelligent() {
    "$vondrake" --facts "$1" > "$work/facts"
    { grep '"original_name"' "$work/facts" || true; } | sed 's/,[[:space:]]*$//'
}

intelligent "$drawing" > "$work/before"
"$vondrake" --batch "$script" "$drawing" "${drives[@]}" --profile "$work/profile.ini"
intelligent "$result" > "$work/after"
"$vondrake" --png "${result%.dwg}.png" --size 1200x840 "$result"
# The tips that greet at the first start would hide the drawing.
printf '[Vondrake]\nDoNotShow=1\n' > "$work/window.ini"
"$vondrake" --window-png "${result%.dwg}-window.png" --profile "$work/window.ini" "$result"

echo
echo "Saved as $result, drawn in ${result%.dwg}.png, the window in ${result%.dwg}-window.png. New Intelligent Blocks:"
{ grep -vxFf "$work/before" "$work/after" || true; } > "$work/new"
cat "$work/new"
echo "$(wc -l < "$work/new") new references."
