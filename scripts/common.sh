# Shared by ./run, ./test, ./check, ./bench and ./package: finding the project, installing what is missing, building.
# Source it; it changes into the project's folder.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

program="./$(basename "$0")"

# In front of what needs root.
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

# What ./test needs: groups of scripts/packages.
test_groups=(build qml display test)

say() { if [ -t 2 ]; then printf '\033[1m%s\033[0m\n' "$*"; else printf '%s\n' "$*"; fi >&2; }

# wrong <message>: what is wrong, how to call the program (its usage function), and a status that is not zero.
wrong() {
  printf '%s: %s\n\n' "$program" "$1" >&2
  usage >&2
  exit 2
}

# failed <message>: ends the program with the message, and with a hint where a disk is full.
failed() {
  printf '%s: %s\n' "$program" "$1" >&2
  df -Pm . "${TMPDIR:-/tmp}" /var 2>/dev/null | awk -v name="$program" \
    'NR > 1 && $4 < 50 && !seen[$6]++ {print name ": the disk at " $6 " is full: " $4 " MB are left"}' >&2
  exit 1
}

# progress: passes on its input except the steps "[n/m] ...". Of those a terminal shows the newest on one line, and
# anything else gets one every 20 seconds.
progress() {
  local line next=$((SECONDS + 20))
  while IFS= read -r line; do
    if ! [[ $line =~ ^\[[0-9]+/[0-9]+\] ]]; then
      printf '%s\n' "$line"
    elif [ -t 2 ]; then
      printf '\r%s\033[K' "${line:0:78}" >&2
    elif [ "$SECONDS" -ge "$next" ]; then
      printf '%s\n' "${line:0:78}" >&2
      next=$((SECONDS + 20))
    fi
  done
  [ ! -t 2 ] || printf '\r\033[K' >&2
}

# packages_of <group>...: their packages, one a line.
packages_of() {
  local group
  for group in "$@"; do sed -n "s/^$group: //p" scripts/packages; done | tr ' ' '\n'
}

# missing_of <group>...: those of their packages that are not installed, one a line.
missing_of() {
  comm -23 <(packages_of "$@" | sort -u) <(packages_of "$@" |
    xargs dpkg-query -W -f='${db:Status-Status} ${Package}\n' 2>/dev/null | sed -n 's/^installed //p' | sort -u)
}

# need <group>...: installs the packages of these groups of scripts/packages that are not there yet.
need() {
  command -v apt-get >/dev/null ||
    failed "this system has no apt-get; the commands need Debian 12, and these packages of it: $(packages_of "$@" | xargs)"
  local missing update install
  mapfile -t missing < <(missing_of "$@")
  [ "${#missing[@]}" -gt 0 ] || return 0

  [ "${#as_root[@]}" -eq 0 ] || command -v sudo >/dev/null ||
    failed "these packages are missing, and installing them needs root, or sudo: ${missing[*]}"
  say "Installing: ${missing[*]}"
  # What went wrong here matters only when the installation fails too: a list that is out of date may do.
  update=$("${as_root[@]}" apt-get update -qq 2>&1) || true
  install=$("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
    apt-get install -qq -y --no-install-recommends -o APT::Status-Fd=1 -o DPkg::Lock::Timeout=120 "${missing[@]}" 2>&1 |
    sed -u 's/.*\(dl\|pm\)status:[^:]*:\([0-9]*\)[^:]*:/[\2\/100] /' | progress) || {
    { head -n 4 <<<"$update"; tail -n 8 <<<"$install"; } >&2
    failed "these packages could not be installed, apt's reasons are above: ${missing[*]}"
  }
}

# configure <preset> [cmake option...]: with all values those of the preset and the options. A folder that was configured
# otherwise, be it by hand, is configured from nothing; one that was not stays as it is.
configure() {
  local folder="build/$1" output
  if [ ! -f "$folder/build.ninja" ] || [ "$(cat "$folder/.configured" 2>/dev/null)" != "$(values_of "$@")" ]; then
    say "Configuring"
    output=$(cmake --fresh --preset "$@" 2>&1) || {
      printf '%s\n' "$output" >&2
      failed "$folder could not be configured"
    }
    values_of "$@" >"$folder/.configured"
  fi
}

# values_of <preset> [cmake option...]: what is asked for, and a checksum of what the build folder has.
values_of() {
  echo "$*"
  cat CMakePresets.json "build/$1/CMakeCache.txt" 2>/dev/null | cksum
}

# build <preset> [target...]: how far it is, and what the compilers print when it fails.
build() {
  local preset=$1 targets=() target output
  shift
  for target in "$@"; do targets+=(--target "$target"); done
  say "Building"
  output=$(cmake --build "build/$preset" "${targets[@]}" 2>&1 | progress) || {
    printf '%s\n' "$output" >&2
    failed "the build in build/$preset failed"
  }
}
