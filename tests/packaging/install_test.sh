#!/usr/bin/env bash
# install_test.sh BUILD VERSION CC TOOLCHAIN [EMULATOR...]: installs the folder BUILD into an empty
# prefix. It builds and runs a host from there twice: through pkg-config with the compiler CC, and
# through find_package with the toolchain file TOOLCHAIN ("" for none).
set -euo pipefail
build=$1
version=$2
cc=$3
toolchain=$4
emulator=("${@:5}")
tests=$(dirname "$(readlink -f "$0")")/..
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

cmake --install "$build" --prefix "$folder/first" >/dev/null
mv "$folder/first" "$folder/usr" # an installed tree can be moved
library=$(find "$folder" -name libkest_utils.so)
libraries=$(dirname "$library")
diff -u <(readlink "$library" "$library.3") - <<END
libkest_utils.so.3
libkest_utils.so.$version
END
diff -u <(cd "$tests/../include" && find . -type f | sort) <(cd "$folder/usr/include" && find . -type f | sort)

export PKG_CONFIG_LIBDIR=$libraries/pkgconfig
diff -u <(pkg-config --modversion kest_utils) <(echo "$version")
# shellcheck disable=SC2046 # a word for each flag
"$cc" -std=c11 -Wall -Wextra -Werror -pedantic-errors "$tests/abi/host.c" -o "$folder/host" \
  $(pkg-config "--define-variable=prefix=$folder/usr" --cflags --libs kest_utils) -Wl,-rpath,"$libraries"
cd "$folder" # the host's log file
run() {
  bash "$tests/abi/host_test.sh" "$tests/abi/host.c" "$tests/../README.md" "${emulator[@]}" "$1"
}
run ./host

cmake -S "$tests/packaging/cmake_host" -B cmake_host --toolchain "$toolchain" -G Ninja \
  -DCMAKE_PREFIX_PATH="$folder/usr" >cmake.log 2>&1 && cmake --build cmake_host >>cmake.log || { cat cmake.log; exit 1; }
run cmake_host/cmake_host

if [ -e usr/bin/kest ]; then
  "${emulator[@]}" usr/bin/kest submit 1 hello >/dev/null # finds the library beside it
fi
