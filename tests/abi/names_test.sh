#!/usr/bin/env bash
# names_test.sh LIBRARY FOLDER [C_LIBRARY]: compares what the built library exports, leaves to the host
# and needs with the lists in FOLDER. C_LIBRARY is the C library's file if its names have no versions.
set -euo pipefail
library=$1
folder=$2
c_library=${3:-}
export LC_ALL=C

check() { # check WHAT LIST: standard input against the checked-in list
  if ! diff -u "$folder/$2" -; then
    echo "$1 differ from $2" >&2
    exit 1
  fi
}
names() { # names OPTION FILE
  nm -D "$1" "$2" | awk '{print $NF}'
}

names --defined-only "$library" | sort | check "exported names" exported.txt
names --undefined-only "$library" | grep -v '@' | grep -vE '^(_ITM_|__gmon|__cxa_finalize)' |
  grep -vxFf <([ -z "$c_library" ] || names --defined-only "$c_library") |
  sort | check "host symbols" host_symbols.txt
# The library calls none of its functions by name, so that a host's own of that name replaces none.
if readelf --relocs --wide "$library" | awk '{print $5}' |
  grep -xFf <(sed 's/(.*//; s/.*[ *]//' "$folder/functions.txt"); then
  echo 'are called by name' >&2
  exit 1
fi
# Some processors have the stack protector's guard in the loader, which comes with the C library.
readelf -d "$library" | sed -nE 's/.*\((NEEDED|SONAME)\).*\[(.*)\]/\1 \2/p' |
  sed 's/libc\.so\.6/libc.so/' | grep -vE '^NEEDED ld(-linux.*)?\.so\.[0-9]$' | sort | check "needed libraries" needed.txt
