#!/bin/sh
# velumo-demo's command line: --help, unknown options and a missing value.
# Usage: command_line.sh DEMO
set -eu
demo=$1
fail() {
    echo "command_line: $*" >&2
    exit 1
}

"$demo" --help >help.out 2>&1 || fail "--help failed"
grep -q '^usage: velumo-demo' help.out || fail "--help prints no usage"

status=0
"$demo" --fancy >bad.out 2>&1 || status=$?
[ "$status" -eq 2 ] || fail "an unknown option exits with $status, not 2"
grep -q "unknown option '--fancy'" bad.out || fail "no message for an unknown option"

status=0
"$demo" --tour >bad.out 2>&1 || status=$?
[ "$status" -eq 2 ] || fail "--tour without a directory exits with $status, not 2"
grep -q -- "--tour needs a directory" bad.out || fail "no message for --tour without a directory"
rm -f help.out bad.out
echo "command_line: passed"
