#!/bin/sh
# The scripted tour: run from a read-only directory without a display, it
# writes its pictures into a new directory under TMPDIR, prints every path
# and every action, and ends by answering the quit question.
# Usage: tour.sh DEMO WORK_DIR
set -eu
demo=$1
work=$2
rm -rf "$work"
mkdir -p "$work/cwd" "$work/tmp"
chmod 555 "$work/cwd"
trap 'chmod 755 "$work/cwd"' EXIT
fail() {
    echo "tour: $*" >&2
    cat "$work/out.txt" >&2
    exit 1
}

(cd "$work/cwd" && env -u DISPLAY TMPDIR="$work/tmp" timeout -s KILL 100 "$demo") \
    >"$work/out.txt" 2>&1 || fail "the tour failed"
[ -z "$(ls -A "$work/cwd")" ] || fail "the tour wrote into its working directory"

pictures=$(find "$work/tmp" -name '*.png' | wc -l)
[ "$pictures" -eq 11 ] || fail "$pictures pictures instead of 11"
[ "$(grep -c '^picture: ' "$work/out.txt")" -eq 11 ] || fail "not every picture is named"
for line in 'action: raise window newspaper' 'action: type in name: "Bär Grüße"' \
    'action: scroll down window notes' 'action: make wider window notes: size 424x330' \
    'action: move window notes to 120,160' 'action: choose file letter.txt' \
    'action: load letter.txt into notes' 'action: close window notes' 'action: about closed' \
    'action: quit? no' 'action: quit? yes' 'tour finished; pictures in '; do
    grep -qF -- "$line" "$work/out.txt" || fail "no line '$line'"
done
echo "tour: passed"
