#!/usr/bin/env bash
# records_test.sh LIBRARY FOLDER BITS: compares the prototypes of the exported functions, and the
# sizes and offsets of records and data, with functions.txt and records.txt in FOLDER. They come from
# the debug information and the symbols of the built library. A row of records.txt is a record and
# its size, or a field with OFFSET+SIZE; a second value holds where a pointer has 64 bits.
set -euo pipefail
library=$1
folder=$2
export LC_ALL=C

exported() { # exported TYPES: exported names of these types of `nm`, and their sizes
  nm -D --defined-only --print-size "$library" | awk -v types="$1" '$3 ~ types { print $4, $2 }' | sort
}

functions() {
  pfunct --prototypes --no_parm_names "$library" 2>/dev/null | tr -s ' ' | sort -u |
    awk 'FNR == NR { exported[$1]; next }
         { name = $0; sub(/\(.*/, "", name); sub(/.* /, "", name) }
         name in exported' <(exported T) -
}

records() {
  # Of each record of the exported headers its size, then its fields.
  pahole --show_decl_info "$library" 2>/dev/null | awk '
    /^\/\* <.*> / { wanted = /include\/kest\// }
    wanted && $1 == "struct" && $3 == "{" { record = $2; fields = "" }
    record && match($0, /\/\* +[0-9]+ +[0-9]+ \*\//) {
      split(substr($0, RSTART + 2), number, " ")
      sub(/;.*/, "")
      fields = fields sprintf("\n%s.%s %d+%d", record, $NF, number[1], number[2])
    }
    record && $2 == "size:" { print record " " $3 + 0 fields; record = "" }' |
    sort --stable --field-separator=. --key=1,1
  exported '[BDRGV]' | while read -r name size; do echo "$name $((16#$size))"; done
}

functions | diff -u "$folder/functions.txt" -
records | diff -u <(awk -v bits="$3" '{ print $1, bits == 64 ? $NF : $2 }' "$folder/records.txt") -
