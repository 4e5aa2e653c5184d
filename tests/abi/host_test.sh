#!/usr/bin/env bash
# host_test.sh SOURCE README HOST...: the README shows the host that was built, and what it prints.
# HOST is a command: an emulator may precede the program.
set -euo pipefail
diff -u "$1" <(sed -n '/^```c$/,/^```$/p' "$2" | sed '1d;$d')
diff -u <("${@:3}") - <<'END'
AT+CMGS=15
001100049194710000AD05E8329BFD06
+4917: hello
END
