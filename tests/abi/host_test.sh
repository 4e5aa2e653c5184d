#!/usr/bin/env bash
# host_test.sh HOST SOURCE README: the README shows the host that was built, and what it prints.
set -euo pipefail
diff -u "$2" <(sed -n '/^```c$/,/^```$/p' "$3" | sed '1d;$d')
diff -u <("$1") - <<'END'
AT+CMGS=15
001100049194710000AD05E8329BFD06
+4917: 68656c6c6f
END
