#!/usr/bin/env bash
# outer_test.sh WAY SUFFIX [SWITCH...]: a project takes the library in by that WAY of CMake and with
# the SWITCHes. It builds a host with it and runs it. The library's file ends in SUFFIX.
# Installing that project installs nothing of the library.
set -euo pipefail
tests=$(readlink -f "$(dirname "$0")/..")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
{
  cmake -G Ninja -S "$tests/packaging/outer" -B build "-DKEST_UTILS=$tests/.." "-DWAY=$1" \
    -DFETCHCONTENT_FULLY_DISCONNECTED=ON "${@:3}" &&
    cmake --build build && cmake --install build --prefix "$folder/image"
} >log 2>&1 || { cat log; exit 1; }
[ ! -e image ]
[ -n "$(find build -name "libkest_utils.$2")" ]
bash "$tests/abi/host_test.sh" "$tests/abi/host.c" "$tests/../README.md" build/outer
