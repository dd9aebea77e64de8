#!/bin/sh
# Drives velumo-demo in a real X server as a person would: xdotool moves the
# pointer, clicks, types and holds menus; screenshots and the printed
# actions are checked.  Usage: x11_session.sh DEMO WORK_DIR
set -eu
demo=$1
work=$2

. "$(dirname "$0")/xserver.sh"
rm -rf "$work"
mkdir -p "$work/cwd"
# The file selector lists the working directory; the demo must not write
# into it, so it is read-only.
printf 'A short text.\n' >"$work/cwd/short.txt"
chmod 555 "$work/cwd"

server_pid=""
demo_pid=""
cleanup() {
    [ -n "$demo_pid" ] && kill -KILL "$demo_pid" 2>/dev/null || true
    stop_xserver
    chmod 755 "$work/cwd" 2>/dev/null || true
}
trap cleanup EXIT
trap 'exit 1' INT TERM

test_name=x11_session

start_xserver "$work" 150 || fail "no X server: $(cat "$work/xvfb.log")"

cd "$work/cwd"
SDL_VIDEODRIVER=x11 timeout -s KILL 120 "$demo" >"$work/out.txt" 2>&1 &
timeout_pid=$!
wait_for 20 pgrep -P "$timeout_pid" || fail "the demo did not start"
demo_pid=$(pgrep -P "$timeout_pid")
cd "$work"


shot() {
    import -display "$DISPLAY" -window root "$work/$1.png"
}

expect_pixel() {
    found=$(pixel "$work/$1.png" "$2" "$3")
    [ "$found" = "$4" ] || fail "$1.png at $2,$3: $found, expected $4"
}

expect "ready:"
shot start
expect_pixel start 200 200 255,255,255 # the notes' text area
expect_pixel start 300 10 215,219,230  # the menu bar
expect_pixel start 5 590 244,244,240   # the desktop

# Click the name field and type "Bär" with Shift and an umlaut.
xdotool mousemove 227 274 click 1
expect "action: edit name"
xdotool key --delay 40 shift+b adiaeresis r
# sdl12-compat gives keys outside ASCII no SDL 1.2 symbol, so the umlaut
# types nothing there; classic SDL gives it symbol 228, which types ä.
if ldd "$demo" | grep -q sdl12-compat; then
    expect 'action: type in name: "Br"'
else
    expect 'action: type in name: "Bär"'
fi
shot typed
has_text "$work/typed.png" 200x16+128+266 || fail "no text in the name field"

# Window menu: press on the title, slide to Newspaper, release there.
xdotool mousemove 108 11 mousedown 1
sleep 0.2
xdotool mousemove 120 40 mousemove 143 58
sleep 0.2
xdotool mouseup 1
expect "action: menu Newspaper"
expect "action: raise window newspaper"
shot newspaper
# The story flows from the first column through the third.
has_text "$work/newspaper.png" 230x40+534+134 || fail "the story does not reach the third column"

# Move the newspaper by frame button 1 (+): click it, then click where its
# corner goes.  The whole old place must be clean again.
xdotool mousemove 676 84 click 1
sleep 0.2
xdotool mousemove 60 140 click 1
expect "action: move window newspaper to 60,140"
shot moved
expect_pixel moved 23 300 244,244,240  # the old left shadow line is gone
expect_pixel moved 30 110 244,244,240  # the old corner
expect_pixel moved 64 300 242,239,230  # the window at its new place

# Idle: the demo's processor time over five seconds without events.
ticks() {
    awk '{ print $14 + $15 }' "/proc/$demo_pid/stat"
}
before=$(ticks)
sleep 5
after=$(ticks)
hz=$(getconf CLK_TCK)
awk -v t=$((after - before)) -v hz="$hz" \
    'BEGIN { printf "x11_session: idle CPU %.2f s over 5 s (%.1f %% of a core)\n", t / hz, 100 * t / hz / 5 }'

# A plain click on a title leaves the menu open until the next click.
xdotool mousemove 108 11 click 1
sleep 0.3
xdotool mousemove 108 40 mousemove 108 35 click 1
expect "action: menu Notes"
expect "action: raise window notes"

# File > Quit, answered Yes in the dialog.
xdotool mousemove 34 11 mousedown 1
sleep 0.2
xdotool mousemove 40 40 mousemove 74 81
sleep 0.2
xdotool mouseup 1
expect "action: menu Quit"
question_shown() {
    shot question && [ "$(pixel "$work/question.png" 300 300)" = 247,247,242 ]
}
wait_for 10 question_shown || fail "the question did not show"
xdotool mousemove 384 293 click 1
expect "action: quit? yes"
wait_for 10 sh -c "! kill -0 $demo_pid" || fail "the demo did not end"
wait "$timeout_pid" || fail "the demo ended with status $?"
demo_pid=""
[ -z "$(ls -A "$work/cwd" | grep -v '^short.txt$')" ] || fail "the demo wrote into its working directory"

# Ctrl+C ends it too.
SDL_VIDEODRIVER=x11 timeout -s KILL 60 "$demo" >"$work/out.txt" 2>&1 &
timeout_pid=$!
wait_for 20 pgrep -P "$timeout_pid" || fail "the demo did not start again"
demo_pid=$(pgrep -P "$timeout_pid")
expect "ready:"
kill -INT "$demo_pid"
wait_for 10 sh -c "! kill -0 $demo_pid" || fail "Ctrl+C did not end the demo"
demo_pid=""
echo "x11_session: passed"
