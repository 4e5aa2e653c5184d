#!/usr/bin/env bash
# packages_test.sh FOLDER ARCHITECTURE CC [EMULATOR...]: installs the Debian packages in FOLDER,
# builds and runs a host in C against them, and removes them. All of it happens below a root of its
# own. What they depend on is there: the packages of the machine, or of the compiler CC for another
# architecture.
set -euo pipefail
export LC_ALL=C
packages=("$1"/*_"$2".deb)
architecture=$2
cc=$3
emulator=("${@:4}")
tests=$(dirname "$(readlink -f "$0")")/..
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

packaged() { # packaged OPTION...: dpkg below the root; prints only if that fails
  dpkg --root="$root" --force-script-chrootless "$@" >"$root/log" 2>&1 || { cat "$root/log"; return 1; }
}

cross=
mkdir -p "$root"/var/lib/dpkg/{info,updates}
touch "$root/var/lib/dpkg/status"
if [ "$architecture" != "$(dpkg --print-architecture)" ]; then
  cross=-$architecture-cross
  packaged --add-architecture "$architecture"
fi
for name in libc6 libc6-dev libgcc-s1 libstdc++6; do
  dpkg-query --show --showformat "Package: $name\nStatus: \${Status}\nArchitecture: $architecture
Maintainer: \${Maintainer}\nVersion: \${Version}\nDescription: \${binary:Summary}\n\n" "$name$cross:*"
done >>"$root/var/lib/dpkg/status"

packaged --install "${packages[@]}"
libraries=$(dirname "$(find "$root/usr" -name libkest_utils.so)")
# The package asks for a C library that has all that the library uses.
newest=$(readelf --version-info "$libraries/libkest_utils.so" | grep -o 'GLIBC_[0-9.]*' | sort -V | tail -n 1)
grep -q "^Depends: libc6 (>= ${newest#GLIBC_})$" <(dpkg-deb --field "$1"/libkest-utils3_*.deb)
# shellcheck disable=SC2046 # a word for each flag
"$cc" -std=c11 "$tests/abi/host.c" -o "$root/host" -Wl,-rpath,"$libraries" \
  $(PKG_CONFIG_SYSROOT_DIR=$root PKG_CONFIG_LIBDIR=$libraries/pkgconfig pkg-config --cflags --libs kest_utils)
(cd "$root" && bash "$tests/abi/host_test.sh" "$tests/abi/host.c" "$tests/../README.md" "${emulator[@]}" ./host)
LD_LIBRARY_PATH=$libraries "${emulator[@]}" "$root/usr/bin/kest" submit 1 hello >/dev/null

packaged --purge kest-tools libkest-utils-dev libkest-utils3
[ -z "$(find "$root" -name '*kest*' -not -name kest.log)" ]
