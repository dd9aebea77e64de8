#!/bin/sh
# Installs the built library into a scratch prefix and builds the consumer
# program against it twice: through pkg-config and through find_package; then
# starts the installed designer.
set -eu
build_dir=$1
source_dir=$2
c_compiler=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build_dir" --prefix "$scratch/prefix" >/dev/null
libdir=$(find "$scratch/prefix" -name velumo.pc -path '*pkgconfig*' -exec dirname {} \;)

PKG_CONFIG_PATH=$libdir "$c_compiler" -std=c99 -Wall -Wextra -Werror \
    -o "$scratch/consumer_pc" "$source_dir/consumer.c" \
    $(PKG_CONFIG_PATH=$libdir pkg-config --cflags --libs velumo)
LD_LIBRARY_PATH=$scratch/prefix/lib:${LD_LIBRARY_PATH:-} "$scratch/consumer_pc"

cmake -S "$source_dir/cmake_consumer" -B "$scratch/cmake_build" \
    -DCMAKE_PREFIX_PATH="$scratch/prefix" -DCMAKE_C_COMPILER="$c_compiler" >/dev/null
cmake --build "$scratch/cmake_build" >/dev/null
"$scratch/cmake_build/consumer"
"$scratch/cmake_build/form_consumer"

# The installed designer finds its own panels under share/velumo: it starts
# (headless, stopped after its first line) and says it is ready.
printf '[[object]]\nname = "w"\ntype = "window"\nwidth = 90\nheight = 60\n' >"$scratch/w.form.toml"
test -f "$scratch/prefix/share/velumo/panels.vfm"
SDL_VIDEODRIVER=dummy timeout -s KILL 6 "$scratch/prefix/bin/velform" edit "$scratch/w.form.toml" |
    grep -m 1 -q '^ready:'
