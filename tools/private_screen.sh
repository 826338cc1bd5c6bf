#!/usr/bin/env bash
# Runs COMMAND on an X server of its own with a window manager, and returns COMMAND's status.
#   tools/private_screen.sh COMMAND...
# Nothing appears on the user's screen. Without a window manager no window would ever become active.
set -euo pipefail
[ $# -gt 0 ] || { echo "usage: $0 COMMAND..." >&2; exit 2; }

folder=$(mktemp -d)
serverId="" managerId="" commandId=""

EndAll() {
    trap - EXIT INT TERM HUP
    for id in $commandId $managerId $serverId; do
        kill "$id" 2>/dev/null || true
        wait "$id" 2>/dev/null || true
    done
    rm -rf "$folder"
}
trap EndAll EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

Xvfb -displayfd 3 -screen 0 1280x1024x24 -dpi 96 -nolisten tcp -noreset 3>"$folder/display" >"$folder/Xvfb.log" 2>&1 &
serverId=$!
for _ in $(seq 100); do
    [ -s "$folder/display" ] && break
    kill -0 "$serverId" 2>/dev/null || break
    sleep 0.1
done
if ! [ -s "$folder/display" ]; then
    echo "Xvfb did not start:" >&2
    cat "$folder/Xvfb.log" >&2
    exit 1
fi
DISPLAY=:$(tr -d '[:space:]' <"$folder/display")
export DISPLAY
unset WAYLAND_DISPLAY

# A home of its own, so that the window manager runs with its defaults whatever the user has set.
HOME=$folder XDG_CONFIG_HOME=$folder/config openbox >"$folder/openbox.log" 2>&1 &
managerId=$!
for _ in $(seq 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done

"$@" &
commandId=$!
status=0
wait "$commandId" || status=$?
commandId=""
exit "$status"
