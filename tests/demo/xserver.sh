# Shared by the X server tests (sourced): polling with a time limit and an
# Xvfb on a display it picks itself, which callers stop in their exit trap.

# Polls every 0.1 s until the command succeeds; fails after $1 seconds.
wait_for() {
    limit=$(($1 * 10))
    shift
    tries=0
    until "$@" >/dev/null 2>&1; do
        tries=$((tries + 1))
        [ "$tries" -lt "$limit" ] || return 1
        sleep 0.1
    done
}

# The programs under test click and read the screen at fixed places, so their
# window opens at the top left corner: sdl12-compat centres it otherwise.
export SDL_VIDEO_WINDOW_POS=0,0

# Starts Xvfb (killed after $2 seconds at the latest) with its files in
# directory $1, with -noreset: otherwise the server resets when its last
# client leaves (xdpyinfo, below) and refuses whoever connects meanwhile.
# Exports DISPLAY and returns once the display answers.  The
# server picks a free display itself and writes its number to fd 3.
start_xserver() {
    timeout -s KILL "$2" Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset \
        3>"$1/display" 2>"$1/xvfb.log" &
    server_pid=$!
    wait_for 20 test -s "$1/display" || return 1
    DISPLAY=:$(head -n 1 "$1/display")
    export DISPLAY
    wait_for 20 xdpyinfo
}

# timeout passes the TERM on to Xvfb; only a server that ignores it is
# killed when the time limit runs out.
stop_xserver() {
    [ -z "${server_pid:-}" ] || kill -TERM "$server_pid" 2>/dev/null || true
}

# Prints the colour of pixel ($2, $3) of picture $1 as "r,g,b".
pixel() {
    convert "$1" -format "%[fx:int(255*p{$2,$3}.r)],%[fx:int(255*p{$2,$3}.g)],%[fx:int(255*p{$2,$3}.b)]" info:
}

# True when box $2 (WxH+X+Y) of picture $1 holds dark pixels (text): its
# darkest grey is below half.
has_text() {
    darkest=$(convert "$1" -crop "$2" -colorspace gray -format '%[fx:minima]' info:)
    awk -v d="$darkest" 'BEGIN { exit !(d < 0.5) }'
}

# Ends the test with a message and the output of the program under test,
# which callers write to $work/out.txt; $test_name names the test.
fail() {
    echo "$test_name: $*" >&2
    echo "--- output of the program under test:" >&2
    cat "$work/out.txt" >&2 || true
    exit 1
}

# Waits for a line of the program's output (a fixed string).
expect() {
    wait_for 15 grep -qF -- "$1" "$work/out.txt" || fail "no line '$1'"
}
