#!/usr/bin/env bash
# hosts_test.sh FOLDER [EMULATOR...]: runs the hosts that were built in FOLDER and compares what they
# print.
set -euo pipefail
folder=$1
emulator=("${@:2}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

diff -u <("${emulator[@]}" "$folder/rough_host" || echo "status $?") - <<'END'
kest_log cancelled: yes
log_message cancelled: yes
_tulp_pr cancelled: yes
child of kest_log logs: yes
child of log_message logs: yes
child of _tulp_pr logs: yes
child of logging_init opens the log: yes
records are whole: yes
queue cancelled: yes
writen cancelled: yes
errno is kept: yes
END
[ -e "$folder/own_names" ] || exit 0
diff -u <("${emulator[@]}" "$folder/own_names" || echo "status $?") - <<'END'
68656c6c6f
the host's writen -1 text 0
END
