# Shared by ./run, ./test, ./check, ./bench and ./package: finding the project, installing what is missing, building.
# Source it; it changes into the project's folder.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '\033[1m%s\033[0m\n' "$*" >&2; }

# wrong <message>: what is wrong, how to call the program (its usage function), and a status that is not zero.
wrong() {
  printf '%s: %s\n\n' "./$(basename "$0")" "$1" >&2
  usage >&2
  exit 2
}

# need <group>...: installs the packages of these groups of scripts/packages that are not there yet.
need() {
  local wanted=() missing=() group package
  for group in "$@"; do
    # shellcheck disable=SC2207
    wanted+=($(sed -n "s/^$group: //p" scripts/packages))
  done
  for package in "${wanted[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "These packages are missing, and installing them needs root, or sudo: ${missing[*]}" >&2
      exit 1
    }
    as_root=(sudo)
  fi
  say "Installing: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -qq -y --no-install-recommends "${missing[@]}" >/dev/null
}

# configure <preset> [cmake option...]: only when something about it is new.
configure() {
  local preset=$1 stamp="build/$1/.configured" wanted
  shift
  wanted="$preset $*"
  if [ ! -f "build/$preset/build.ninja" ] || [ "$(cat "$stamp" 2>/dev/null)" != "$wanted" ]; then
    cmake --preset "$preset" "$@" >/dev/null
    echo "$wanted" >"$stamp"
  fi
}

# build <preset> [target...]: quiet while all is well, the whole story when it is not.
build() {
  local preset=$1 targets=() target log
  shift
  for target in "$@"; do targets+=(--target "$target"); done
  log="build/$preset/build.log"
  cmake --build "build/$preset" "${targets[@]}" >"$log" 2>&1 || {
    cat "$log" >&2
    exit 1
  }
}
