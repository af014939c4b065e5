#!/bin/bash
# with_keyring.sh PROGRAM [ARGUMENT...]: runs the program with a fresh, unlocked keyring of its own.
# To be run under dbus-run-session.
set -eu
home=$(mktemp -d)
daemon() {
  dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
    org.freedesktop.DBus.GetConnectionUnixProcessID string:org.freedesktop.secrets | awk '{print $2}'
}
trap 'pid=$(daemon) && kill "$pid"; rm -rf "$home"' EXIT
export XDG_RUNTIME_DIR=$home/run XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
mkdir -m 700 "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME"
settings=$(printf 'a password' | gnome-keyring-daemon --unlock --components=secrets)
eval "$settings"
"$@"
