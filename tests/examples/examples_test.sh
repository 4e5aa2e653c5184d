#!/usr/bin/env bash
# examples_test.sh FOLDER [EMULATOR...]: runs the examples that were built in FOLDER and compares
# what they print.
set -euo pipefail
cd "$1"
emulator=("${@:2}")

diff -u <(timeout 60 "${emulator[@]}" ./work_queue) - <<'END'
worker: one
worker: two
worker: three
main: 15 octets
END

folder=$(mktemp -d)
trap 'kill %1 2>/dev/null || true; rm -rf "$folder"' EXIT
name=${folder#/}/socket
timeout 60 "${emulator[@]}" ./named_socket_server "$name" &
ask() {
  timeout 10 "${emulator[@]}" ./named_socket_client "$name" "$1"
}
for ((i = 0; i < 100; i++)); do # the server may still be on its way
  answer=$(ask 'Grüße') && break
  sleep 0.1
done
diff -u <(echo "$answer" && ask 'a b' && ask '') - <<'END'
5 characters
3 characters
0 characters
END
wait %1
[ "$(stat -c %a "/$name")" = 660 ]
if ask 'nobody is there'; then
  exit 1
fi
