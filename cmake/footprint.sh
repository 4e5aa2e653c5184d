#!/usr/bin/env bash
# footprint.sh footprint|footprint_update LIBRARY OBJECTS OBJDUMP: measures the stripped LIBRARY and
# the stack of its functions, from the call graphs beside the objects in the folder OBJECTS. Prints
# docs/footprint.md or writes it anew; fails beyond a limit, and if that page says something else.
set -euo pipefail
export LC_ALL=C
what=$1
library=$2
objects=$3
objdump=$4
root=$(dirname "$(readlink -f "$0")")/..
page=$root/docs/footprint.md

sections() {
  readelf --wide --sections "$library" | sed 's/^ *\[ *[0-9]*\]//' | awk '
    function row(what, size) { printf "| %s | %d |\n", what, size }
    function octets(hex,  i, n) {
      for (i = 1; i <= length(hex); ++i) n = 16 * n + index("123456789abcdef", substr(hex, i, 1))
      return n
    }
    { size[$1] = octets($5) }
    END {
      print "| section | octets |\n|---|---|"
      row("text", size[".text"])
      row("rodata", size[".rodata"])
      row("data, writable", size[".data"])
      row("bss, writable", size[".bss"])
      row("constants with addresses (data.rel.ro), read-only once loaded", size[".data.rel.ro"])
      row("relocations", size[".rel.dyn"] + size[".rel.plt"])
      if (size[".text"] + size[".rodata"] > 40 * 1024) {
        print "text and rodata together are over 40 KiB" > "/dev/stderr"
        exit 1
      }
    }'
}

variables() {
  echo '| variable | octets |'
  echo '|---|---|'
  find "$objects" -name '*.o' -exec "$objdump" --syms --demangle {} + |
    sed -nE '/\.data\.rel\.ro/d; s/^[0-9a-f]+ .*O \.(data|bss)[^\t]*\t0*([0-9a-f]+) +(\.hidden )?/\2 /p' |
    sed 's/(anonymous namespace):://' |
    while read -r size name; do echo "| \`$name\` | $((16#$size)) |"; done | sort
}

stack() {
  nm -D --defined-only "$library" | awk '{print $NF}' >exported.txt
  find "$objects" -name '*.ci' -exec cat {} + | awk '
    function field(name,  at, rest) {
      at = index($0, name ": \"")
      rest = substr($0, at + length(name) + 3)
      return substr(rest, 1, index(rest, "\"") - 1)
    }
    # measure finds the largest frame of a function and what it calls, and the deepest chain of
    # frames. A line of the log has a table row of its own.
    function measure(name,  i, count, called) {
      if (name in largest) return
      largest[name] = deepest[name] = 0 # of a call back
      count = split(calls[name], called, SUBSEP)
      for (i = 2; i <= count; ++i) {
        if (called[i] ~ /kest_log($|_error|_debug)/) continue
        measure(called[i])
        if (largest[called[i]] > largest[name]) largest[name] = largest[called[i]]
        if (deepest[called[i]] > deepest[name]) deepest[name] = deepest[called[i]]
      }
      deepest[name] += frame[name]
      if (frame[name] > largest[name]) largest[name] = frame[name]
    }
    FNR == NR { exported[$1]; next }
    /^node:/ && match($0, /[0-9]+ bytes \(/) {
      size = substr($0, RSTART) + 0
      name = field("title")
      if (size > frame[name]) frame[name] = size
      if (substr($0, RSTART + RLENGTH) !~ /^static/) {
        print name " has a frame without a bound" > "/dev/stderr"
        failed = 1
      }
    }
    /^edge:/ { name = field("sourcename"); calls[name] = calls[name] SUBSEP field("targetname") }
    END {
      for (name in exported) {
        if (!(name in frame)) continue # a variable
        measure(name)
        printf "| `%s` | %d | %d |\n", name, largest[name], deepest[name]
        limit = name ~ /^kest_sms_(is_long|get_long)/ ? 2048 : name ~ /^kest_sms_/ ? 1536 : 4096
        if (largest[name] >= limit) {
          print name " has a frame of " limit " octets or more" > "/dev/stderr"
          failed = 1
        }
      }
      exit failed
    }' exported.txt - >stack.txt || return 1
  echo '| function | largest frame | frames together |'
  echo '|---|---|---|'
  sort -t '|' -k4,4nr -k2,2 stack.txt
}

write_page() {
  cat <<'END_OF_TEXT'
# Footprint

The library as a device gets it: 32-bit ARM with hard float (armhf), GCC 12 with `-Os`, hardened,
stripped. The target `footprint` of the preset `footprint` measures it and fails if this page says
something else; `footprint_update` writes the page.

    cmake --preset footprint && cmake --build --preset footprint --target footprint

Text and rodata together stay under 40 KiB.

END_OF_TEXT
  sections
  cat <<'END_OF_TEXT'

## Writable data

All of it are switches, tables and buffers that the headers tell of, the locks of the two logs, and
the counters of messages.

END_OF_TEXT
  variables
  cat <<'END_OF_TEXT'

## Stack

Octets of stack, for each exported function: the largest frame among its own and those of what it
calls in the library, and all frames of its deepest chain of calls together. The SMS encoders and
decoders have no frame of 1.5 KiB or more, the functions that size texts none of 2 KiB.

While lines are logged, those of `kest_log` come on top, and calls of the C library in any case.

END_OF_TEXT
  stack
}

write_page >footprint.md
if [ "$what" = footprint_update ]; then
  cp footprint.md "$page"
else
  diff -u "$page" footprint.md
  cat footprint.md
fi
