#!/bin/sh
# Builds the README's "Using velumo" example as C99 against an installed
# velumo, with the README's form compiled by velumo_add_form, runs it in an
# X server and checks the scene's pixels, then clicks OK.
# Usage: readme_example.sh BUILD_DIR SOURCE_DIR C_COMPILER WORK_DIR
set -eu
build_dir=$1
source_dir=$2
c_compiler=$3
work=$4

rm -rf "$work"
mkdir -p "$work/project"
server_pid=""
notes_pid=""
# timeout passes the TERM on to the example.
trap '[ -z "$notes_pid" ] || kill -TERM "$notes_pid" 2>/dev/null; stop_xserver' EXIT
trap 'exit 1' INT TERM

fail() {
    echo "readme_example: $*" >&2
    cat "$work/out.txt" >&2 2>/dev/null || true
    exit 1
}

# The first C block after the heading is the example.
awk '/^## Using velumo/ { inside = 1 } inside && /^```c$/ { copy = 1; next }
     copy && /^```$/ { exit } copy { print }' "$source_dir/README.md" >"$work/project/main.c"
[ -s "$work/project/main.c" ] || fail "no C example under '## Using velumo' in README.md"
cp "$source_dir/docs/notes.form.toml" "$work/project/"
cat >"$work/project/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(notes C)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
find_package(velumo REQUIRED)
add_executable(notes main.c)
target_compile_options(notes PRIVATE -Wall -Wextra -Werror)
target_link_libraries(notes PRIVATE velumo::velumo)
velumo_add_form(notes notes.form.toml)
CMAKE

cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
cmake -S "$work/project" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" \
    -DCMAKE_C_COMPILER="$c_compiler" >"$work/cmake.log" 2>&1 || fail "$(cat "$work/cmake.log")"
cmake --build "$work/build" >"$work/build.log" 2>&1 || fail "$(cat "$work/build.log")"

. "$(dirname "$0")/xserver.sh"
start_xserver "$work" 90 || fail "no X server: $(cat "$work/xvfb.log")"
SDL_VIDEODRIVER=x11 LD_LIBRARY_PATH="$work/prefix/lib:${LD_LIBRARY_PATH:-}" \
    timeout -s KILL 60 "$work/build/notes" >"$work/out.txt" 2>&1 &
notes_pid=$!

# The window "main" of docs/notes.form.toml at 40,50, 320 x 170, filled
# #ebebf0, its text "Notes" at the top left, the OK button at 204,178.
shown() {
    import -window root "$work/shot.png" &&
        [ "$(pixel "$work/shot.png" 300 80)" = 235,235,240 ]
}
wait_for 20 shown || fail "the window did not show"
[ "$(pixel "$work/shot.png" 20 300)" = 255,255,255 ] || fail "the background is not white"
has_text "$work/shot.png" 60x16+48+58 || fail "no text at the window's top left"
has_text "$work/shot.png" 100x16+60+115 || fail "no text in the entry field"

xdotool mousemove 237 191 click 1
wait "$notes_pid" || fail "the example ended with status $?"
notes_pid=""
grep -q '^name: Gr' "$work/out.txt" || fail "no name printed"
echo "readme_example: passed"
