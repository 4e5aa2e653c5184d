#!/usr/bin/env bash
# commands_test.sh KEST PAGE...: runs each command in the pages, a line indented by four blanks that
# begins with "$ ", and compares what it prints with what stands below it. Each runs in a folder of
# its own.
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
ln -s "$1" "$folder/kest"
export PATH=$folder:$PATH LC_ALL=C.UTF-8
commands=0
failed=0

compare() { # of `command`, if there is one, with `expected`
  if [ -n "$command" ]; then
    commands=$((commands + 1))
    if ! diff -u --label "$page: $command" <(printf %s "$expected") \
      --label 'what it prints' <(cd "$(mktemp -d -p "$folder")" && bash -c "$command" 2>/dev/null); then
      failed=1
    fi
  fi
  command=
  expected=
}

for page in "${@:2}"; do
  command=
  while IFS= read -r line; do
    case $line in
    '    $ '*) compare && command=${line#'    $ '} ;;
    '    '*) expected+=${line#'    '}$'\n' ;;
    *) compare ;;
    esac
  done < <(cat "$page" && echo)
done
echo "$commands commands"
[ "$commands" -gt 0 ] && [ "$failed" -eq 0 ]
