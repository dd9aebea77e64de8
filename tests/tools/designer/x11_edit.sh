#!/bin/sh
# Drives velform edit in a real X server as a person would: xdotool drags an
# object, types a new label into the property panel and saves; the saved
# form is compared with the expected one.  Usage: x11_edit.sh VELFORM WORK_DIR
set -eu
velform=$1
work=$2

. "$(dirname "$0")/../../demo/xserver.sh"
rm -rf "$work"
mkdir -p "$work"
cat >"$work/form.toml" <<'FORM'
[[object]]
name = "ok"
type = "label"
label = "OK"
x = 40
y = 40
width = 100
height = 24
fill = "#d7dbe6"
FORM

server_pid=""
editor_pid=""
cleanup() {
    [ -n "$editor_pid" ] && kill -KILL "$editor_pid" 2>/dev/null || true
    stop_xserver
}
trap cleanup EXIT
trap 'exit 1' INT TERM

test_name=x11_edit

start_xserver "$work" 150 || fail "no X server: $(cat "$work/xvfb.log")"

SDL_VIDEODRIVER=x11 timeout -s KILL 120 "$velform" edit "$work/form.toml" >"$work/out.txt" 2>&1 &
timeout_pid=$!
wait_for 20 grep -q '^ready:' "$work/out.txt" || fail "the designer did not start"
editor_pid=$(pgrep -P "$timeout_pid") || fail "the designer did not start"
# Drag the label's body 30 right and 20 down.
xdotool mousemove 60 50 mousedown 1
sleep 0.2
xdotool mousemove 75 60 mousemove 90 70
sleep 0.2
xdotool mouseup 1
expect "status: Moved ok to 70,60"
# The label field of the property panel: retype it, Enter applies.
xdotool mousemove 887 576 click 1
expect "status: Type the new label"
xdotool key --delay 40 shift+g o Return
expect "status: Set label of ok to Go"
import -display "$DISPLAY" -window root "$work/designer.png"
xdotool key ctrl+s
expect "status: Saved"
xdotool key ctrl+q
wait_for 10 sh -c "! kill -0 $editor_pid" || fail "the designer did not end"
wait "$timeout_pid" || fail "the designer ended with status $?"
editor_pid=""

cat >"$work/expected.toml" <<'FORM'
[[object]]
name = "ok"
type = "label"
x = 70
y = 60
width = 100
height = 24
fill = "#d7dbe6"
label = "Go"
FORM
grep -v '^#' "$work/form.toml" | grep -v '^$' >"$work/saved.toml"
diff -u "$work/expected.toml" "$work/saved.toml" || fail "the saved form differs"
"$velform" check "$work/form.toml" || fail "velform check refuses the saved form"
echo "x11_edit: passed"
