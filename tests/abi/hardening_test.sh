#!/usr/bin/env bash
# hardening_test.sh FILE plain|fortified: what the built file itself says of its hardening.
set -euo pipefail
export LC_ALL=C
segments=$(readelf --wide --program-headers "$1")
dynamic=$(readelf --wide --dynamic "$1")
undefined=$(nm -D --undefined-only "$1")
failed=0

has() { # has WHAT TEXT PATTERN
  grep -qE "$3" <<<"$2" || { echo "no $1" >&2; failed=1; }
}
has_no() {
  ! grep -E "$3" <<<"$2" || { echo "it has $1" >&2; failed=1; }
}

has 'read-only relocations' "$segments" '^ *GNU_RELRO '
has 'binding at load' "$dynamic" 'BIND_NOW|FLAGS_1.*NOW'
has 'declared stack' "$segments" '^ *GNU_STACK '
has_no 'an executable stack' "$segments" '^ *GNU_STACK .* RWE '
has_no 'a segment to write and to execute' "$segments" '^ *LOAD .* RWE '
has_no 'text relocations' "$dynamic" 'TEXTREL'
has 'stack protector' "$undefined" ' __stack_chk_fail(@|$)'
if [ "$2" = fortified ]; then
  has 'fortified calls' "$undefined" ' __[a-z]+_chk(@|$)'
fi
has 'an address chosen at load' "$(readelf --file-header "$1")" '^ *Type: *DYN '
has_no 'a folder to search but its own' "$(sed -nE 's/.*R(UN)?PATH.*\[(.*)\]/:\2:/p' <<<"$dynamic")" \
  '::|:[^$:]|\.\./[^l]'
exit $failed
