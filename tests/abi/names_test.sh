#!/usr/bin/env bash
# names_test.sh LIBRARY FOLDER: compares what the built library exports, leaves to the host and
# needs with the lists in FOLDER.
set -euo pipefail
library=$1
folder=$2
export LC_ALL=C

check() { # check WHAT LIST: standard input against the checked-in list
  if ! diff -u "$folder/$2" -; then
    echo "$1 differ from $2" >&2
    exit 1
  fi
}

nm -D --defined-only "$library" | awk '{print $NF}' | sort | check "exported names" exported.txt
nm -D --undefined-only "$library" | awk '{print $NF}' | grep -v '@' | grep -vE '^(_ITM_|__gmon|__cxa_finalize)' |
  sort | check "host symbols" host_symbols.txt
# Some processors have the stack protector's guard in the loader, which comes with the C library.
readelf -d "$library" | sed -nE 's/.*\((NEEDED|SONAME)\).*\[(.*)\]/\1 \2/p' |
  grep -vE '^NEEDED ld(-linux.*)?\.so\.[0-9]$' | sort | check "needed libraries" needed.txt
