# scripts/build.sh: sourced by the commands of the folder above.

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# need_packages NAME...: installs the Debian packages among NAME that are not there yet.
need_packages() {
  local missing=() name
  for name in "$@"; do
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" != installed ]; then
      missing+=("$name")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return
  fi
  echo "== Installing ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive sh -c '
    apt-get -qq update && apt-get -qq install --yes --no-install-recommends "$@" >/dev/null
  ' apt "${missing[@]}" </dev/null
}

BUILD_PACKAGES=(cmake g++ ninja-build libcli11-dev nlohmann-json3-dev)

# configure PRESET: configures, and prints only if that fails.
configure() {
  mkdir -p build
  if ! cmake --preset "$1" >"build/$1.log" 2>&1; then
    cat "build/$1.log"
    return 1
  fi
}

# build PRESET OPTION...: configures with the options and builds; prints only if that fails.
build() {
  local preset=$1
  shift
  mkdir -p build
  if ! { cmake --preset "$preset" "$@" && cmake --build --preset "$preset"; } >"build/$preset.log" 2>&1; then
    cat "build/$preset.log"
    return 1
  fi
}
