#!/bin/bash
# with_keyring.sh PROGRAM [ARGUMENT...]: runs the program on a private session bus with a fresh, unlocked keyring.
set -eu
if [ "$1" != --on-the-bus ]; then
  # Before the bus starts: a daemon that the bus itself starts must not find the user's folders.
  home=$(mktemp -d)
  trap 'rm -rf "$home"' EXIT
  export HOME=$home XDG_RUNTIME_DIR=$home/run XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
  mkdir -m 700 "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME"
  dbus-run-session -- bash "$0" --on-the-bus "$@"
  exit
fi
shift

daemon() {
  dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
    org.freedesktop.DBus.GetConnectionUnixProcessID string:org.freedesktop.secrets 2>/dev/null | awk '{print $2}'
}
settings=$(printf 'a password' | gnome-keyring-daemon --unlock --components=secrets)
eval "$settings"
# The daemon takes its name some time after the unlock. Whoever asks for it earlier makes the bus start a second daemon.
for _ in $(seq 600); do
  pid=$(daemon)
  [ -z "$pid" ] || break
  sleep 0.05
done
[ -n "$pid" ] || { echo "with_keyring.sh: the keyring daemon did not take its bus name within 30 s" >&2; exit 1; }
trap 'kill "$pid"' EXIT
"$@"
