#!/usr/bin/env bash
# prune_man_pages.sh FOLDER NAMES: Doxygen makes a page for each group and record, and one that
# leads there for each name in it. Of the latter those of exported names (in the list NAMES), types
# and constants stay; a field called `read` takes no page of the C library's. So do none for files.
set -euo pipefail
cd "$1"
rm -f -- *.h.3 @*.3
grep --files-with-matches '^\.so ' -- * | while read -r page; do
  case ${page%.3} in
  [A-Z]* | kest_* | orba_* | log_level) ;;
  *) grep --quiet --line-regexp -- "${page%.3}" "$2" || rm -- "$page" ;;
  esac
done
