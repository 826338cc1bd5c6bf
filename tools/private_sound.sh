#!/bin/sh
# tools/private_sound.sh COMMAND...
#
# Runs COMMAND with a sound server of its own and returns COMMAND's status. The server plays into the null sink
# "out" (s16le, 44100 Hz, stereo) and records from the source "line", which hears what is played into the sink
# "in". No sound card is touched, nobody else's server is used, and the server ends with the command.
#
# COMMAND sees:
#   PULSE_SERVER            the server's socket
#   KESTRUNE_PRIVATE_SOUND  a temporary folder, removed afterwards; server.log in it is the server's own log,
#                           server.pid its process id
#   HOME, XDG_RUNTIME_DIR   folders inside that one
set -u

if [ $# -eq 0 ]; then
    echo "usage: $0 COMMAND..." >&2
    exit 2
fi

folder=$(mktemp -d "${TMPDIR:-/tmp}/kestrune-sound.XXXXXX") || exit 2
mkdir -p "$folder/home" "$folder/run"
chmod 700 "$folder" "$folder/run"
export HOME="$folder/home" XDG_RUNTIME_DIR="$folder/run" KESTRUNE_PRIVATE_SOUND="$folder"
unset PULSE_SERVER PULSE_SINK PULSE_SOURCE PULSE_COOKIE DBUS_SESSION_BUS_ADDRESS XDG_CONFIG_HOME

server_pid=
command_pid=
end_server() {
    if [ -n "$command_pid" ]; then
        kill "$command_pid" 2>/dev/null
        wait "$command_pid" 2>/dev/null
    fi
    if [ -n "$server_pid" ]; then
        kill "$server_pid" 2>/dev/null
        wait "$server_pid" 2>/dev/null
        server_pid=
    fi
    rm -rf "$folder"
}
trap end_server EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# norewinds: the monitor would lose frames whenever the sink took something back.
pulseaudio -n --daemonize=no --exit-idle-time=-1 --realtime=no --high-priority=no --disable-shm=yes \
    --use-pid-file=no --log-target=stderr \
    -L "module-native-protocol-unix auth-anonymous=1 socket=$folder/run/native" \
    -L "module-null-sink sink_name=out format=s16le rate=44100 channels=2 norewinds=1" \
    -L "module-null-sink sink_name=in format=s16le rate=44100 channels=2 norewinds=1" \
    -L "module-remap-source source_name=line master=in.monitor" \
    >"$folder/server.log" 2>&1 &
server_pid=$!
echo "$server_pid" >"$folder/server.pid"
export PULSE_SERVER="unix:$folder/run/native"

tries=0
until pactl set-default-sink out >/dev/null 2>&1; do
    tries=$((tries + 1))
    if [ $tries -ge 100 ] || ! kill -0 "$server_pid" 2>/dev/null; then
        echo "$0: the sound server did not start:" >&2
        cat "$folder/server.log" >&2
        exit 2
    fi
    sleep 0.05
done
pactl set-default-source line >/dev/null 2>&1

# In the background, since the shell would answer a signal only after a command in the foreground had ended.
exec 3<&0
"$@" <&3 3<&- &
command_pid=$!
wait "$command_pid"
status=$?
command_pid=
exit $status
