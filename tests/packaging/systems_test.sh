#!/usr/bin/env bash
# systems_test.sh SYSTEM LINK CC TOOLCHAIN: builds the library as SYSTEM (buildroot, openwrt or yocto)
# does, with its switches and those of the recipe in docs/packaging.md. It installs into an image, and
# builds and runs hosts there with CC. LINK is shared or static. TOOLCHAIN is the toolchain file of the compilers, "" for none.
set -euo pipefail
system=$1
link=$2
cc=$3
toolchain=$4
root=$(readlink -f "$(dirname "$0")/../..")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
build=$folder/build
image=$folder/image
export CMAKE_GENERATOR=Ninja # make may not be there

quiet() { # quiet COMMAND...: shows what it prints only if it fails
  "$@" >"$folder/log" 2>&1 || { cat "$folder/log"; return 1; }
}
recipe_switches() { # recipe_switches NAME: the -D switches of the line that sets NAME in the page
  sed -nE "s/^ *$1 \+?= \"?([^\"]*)\"?$/\1/p" "$root/docs/packaging.md" | grep -oE -- '-D[^ ]+' || true
}

{ # Each of them has a toolchain file of its own.
  echo 'set(CMAKE_SYSTEM_NAME Linux)'
  if [ -n "$toolchain" ]; then echo "include($toolchain)"; fi
} >"$folder/toolchain.cmake"
shared=$([ "$link" = shared ] && echo ON || echo OFF)
case $system in
buildroot)
  flags='-D_LARGEFILE_SOURCE -D_LARGEFILE64_SOURCE -D_FILE_OFFSET_BITS=64 -Os -g0 -D_FORTIFY_SOURCE=1'
  switches=(-DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE=-DNDEBUG -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG
    -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_RUNSTATEDIR=/run -DCMAKE_COLOR_MAKEFILE=OFF
    -DBUILD_DOC=OFF -DBUILD_DOCS=OFF -DBUILD_EXAMPLE=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TEST=OFF
    -DBUILD_TESTS=OFF -DBUILD_TESTING=OFF "-DBUILD_SHARED_LIBS=$shared")
  recipe=LIBKEST_UTILS_CONF_OPTS
  ;;
openwrt)
  flags="-Os -pipe -ffile-prefix-map=$build=libkest-utils -Wformat -Werror=format-security -fstack-protector -D_FORTIFY_SOURCE=1"
  export LDFLAGS='-Wl,-z,now -Wl,-z,relro'
  switches=(-DCMAKE_SYSTEM_VERSION=1 "-DCMAKE_SYSTEM_PROCESSOR=$(uname -m)" -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_C_FLAGS_RELEASE=-DNDEBUG -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG
    "-DCMAKE_SHARED_LINKER_FLAGS=$LDFLAGS -Wl,-Bsymbolic-functions" -DCMAKE_STRIP=:
    -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_SKIP_RPATH=TRUE -DCMAKE_EXPORT_PACKAGE_REGISTRY=FALSE
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=FALSE)
  recipe=CMAKE_OPTIONS
  ;;
yocto)
  mapped="-ffile-prefix-map=$root=libkest-utils -ffile-prefix-map=$build=libkest-utils"
  flags="-O2 -pipe -g -feliminate-unused-debug-types $mapped -fstack-protector-strong -D_FORTIFY_SOURCE=2 -Wformat -Wformat-security -Werror=format-security"
  export LDFLAGS='-Wl,-O1 -Wl,--hash-style=gnu -Wl,--as-needed -Wl,-z,relro,-z,now'
  switches=(-G Ninja -DCMAKE_C_FLAGS_RELEASE=-DNDEBUG -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG
    -DCMAKE_INSTALL_PREFIX:PATH=/usr -DCMAKE_INSTALL_BINDIR:PATH=bin -DCMAKE_INSTALL_LIBDIR:PATH=lib
    -DCMAKE_INSTALL_INCLUDEDIR:PATH=include -DCMAKE_INSTALL_DATAROOTDIR:PATH=share
    -DCMAKE_INSTALL_SYSCONFDIR:PATH=/etc -DCMAKE_INSTALL_LOCALSTATEDIR:PATH=/var -DLIB_SUFFIX=
    -DCMAKE_INSTALL_SO_NO_EXE=0 -DCMAKE_NO_SYSTEM_FROM_IMPORTED=1 -DCMAKE_EXPORT_NO_PACKAGE_REGISTRY=ON
    -DFETCHCONTENT_FULLY_DISCONNECTED=ON -Wno-dev)
  recipe=EXTRA_OECMAKE
  ;;
esac
mapfile -t -O "${#switches[@]}" switches < <(recipe_switches $recipe)

export CFLAGS=$flags CXXFLAGS=$flags
quiet cmake -S "$root" -B "$build" "-DCMAKE_TOOLCHAIN_FILE=$folder/toolchain.cmake" "${switches[@]}"
quiet cmake --build "$build" --parallel 2
quiet env "DESTDIR=$image" cmake --install "$build"

if grep -rlF -e "$build" -e "$root" "$image"; then
  echo 'these files name a folder of the build'
  exit 1
fi
libraries=$image/usr/lib
find "$libraries" -name 'libkest_utils*' -printf '%f\n' | sort | diff -u - <(
  if [ "$link" = shared ]; then
    printf '%s\n' libkest_utils.so libkest_utils.so.3 libkest_utils.so.3.0.0
  else
    echo libkest_utils.a
  fi
)
if [ "$link" = shared ] && readelf -d "$libraries/libkest_utils.so" | grep -E 'R(UN)?PATH'; then
  exit 1
fi

export PKG_CONFIG_LIBDIR=$libraries/pkgconfig PKG_CONFIG_SYSROOT_DIR=$image LD_LIBRARY_PATH=$libraries
if [ "$link" = shared ]; then
  options=()
  read -ra flags < <(pkg-config --cflags --libs kest_utils)
else
  options=(-static)
  read -ra flags < <(pkg-config --static --cflags --libs kest_utils)
fi
mkdir "$folder/examples"
compile() { # compile PROGRAM SOURCE...
  quiet "$cc" "${options[@]}" -std=c11 -o "$folder/$1" "${@:2}" "${flags[@]}"
}
compile host "$root/tests/abi/host.c"
(cd "$folder" && bash "$root/tests/abi/host_test.sh" "$root/tests/abi/host.c" "$root/README.md" ./host)
quiet cmake -S "$root/tests/packaging/cmake_host" -B "$folder/cmake_host" \
  "-DCMAKE_TOOLCHAIN_FILE=$toolchain" "-DCMAKE_PREFIX_PATH=$image/usr" "-DCMAKE_EXE_LINKER_FLAGS=${options[*]}"
quiet cmake --build "$folder/cmake_host"
(cd "$folder" && ./cmake_host/cmake_host >/dev/null)
for source in "$root"/examples/[^l]*.c; do # with what they share
  compile "examples/$(basename "$source" .c)" "$source" "$root/examples/lines.c"
done
bash "$root/tests/examples/examples_test.sh" "$folder/examples"
