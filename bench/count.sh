#!/usr/bin/env bash
# count.sh cost|cost_update|curves PROGRAM: has callgrind count the instructions of PROGRAM's jobs,
# or of its curves. Works in the current folder; the targets of the build call it.
set -euo pipefail
what=$1
program=$2
bench=$(dirname "$(readlink -f "$0")")

# The same paths of the C library on every x86-64, and the same local time.
export GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX,-AVX2,-AVX_Fast_Unaligned_Load,-AVX512F,-AVX512VL,-BMI2,-ERMS,-FSRM,-SSE4_1,-SSE4_2,-SSSE3
export TZ=UTC0

# counted ARGUMENT...: runs the program and prints a line "NAME<tab>INSTRUCTIONS" for one operation
# of each dump, in their order.
counted() {
  rm -f counts.*
  valgrind --tool=callgrind --callgrind-out-file=counts --dump-line=no "$program" "$@" \
    >output.txt 2>valgrind.txt || { cat valgrind.txt >&2; return 1; }
  local file
  for file in $(ls counts.* | sort -t. -k2 -n); do
    awk '/^desc: Trigger: Client Request: / {
           sub(/^desc: Trigger: Client Request: /, ""); operations = $1
           name = substr($0, length(operations) + 2) }
         /^(totals|summary): / && name != "" { total = $2 }
         END { if (name != "") printf "%s\t%.0f\n", name, total / operations }' "$file"
  done
  rm -f counts counts.*
}

case $what in
cost)
  counted >cost.txt
  awk -F '\t' '
    NR == FNR { if ($0 !~ /^#/) was[substr($0, 13)] = substr($0, 1, 10) + 0; next }
    !($1 in was) { printf "%-52s %10d  is not in cost.txt\n", $1, $2; failed = 1; next }
    { grown = 100 * ($2 / was[$1] - 1)
      printf "%-52s %10d %10d %+8.1f %%%s\n", $1, $2, was[$1], grown, (grown > 10) ? "  TOO MUCH" : ""
      if (grown > 10) failed = 1
      delete was[$1] }
    END { for (name in was) { print name " was not counted"; failed = 1 }
          exit failed }' "$bench/cost.txt" cost.txt
  ;;
cost_update)
  counted >cost.txt
  { echo '# Instructions of one operation of each job, as callgrind counts them: GCC 12, -O2, x86-64.'
    awk -F '\t' '{ printf "%10d  %s\n", $2, $1 }' cost.txt; } >"$bench/cost.txt"
  ;;
curves)
  counted curves | awk -F '[|\t]' '
    $1 != name { if (name != "") printf "\n\n"
                 name = $1; printf "# %s (%s)\n", name, $2 }
    { print $3, $4 }' >curves.txt
  # The bend: the slope of the upper half of a curve by that of its lower half, 1 if it is straight.
  awk '
    function slope(from, to,  i, n, x, y, xx, xy) {
      for (i = from; i <= to; ++i) {
        ++n; x += size[i]; y += cost[i]; xx += size[i] ^ 2; xy += size[i] * cost[i]
      }
      return (n * xy - x * y) / (n * xx - x ^ 2)
    }
    function finish(  middle, lower) {
      for (middle = 2; size[middle] < size[count] / 2; ++middle) {}
      lower = slope(1, middle)
      printf "%-52s %8s\n", name, lower < 0.01 ? "flat" : sprintf("%.2f", slope(middle, count) / lower)
    }
    /^#/ { name = substr($0, 3); count = 0; next }
    NF == 2 { size[++count] = $1; cost[count] = $2; next }
    count > 0 { finish(); count = 0 }
    END { finish() }' curves.txt
  gnuplot "$bench/curves.gp"
  echo "drawn in $PWD/curves.png"
  ;;
esac
