#!/usr/bin/env bash
# Installs what is missing, builds Kestrune and opens its main window.
#   ./run.sh [ARGUMENTS OF THE PROGRAM...]
# On a machine without a display the window opens on a private screen with a private sound server, plays the
# samples for ten seconds, and leaves a picture of itself in build/run-screenshot.png.
set -euo pipefail
cd "$(dirname "$0")"

tools/install_packages.sh
cmake --preset release
cmake --build --preset release --target kestrune

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/release/kestrune "$@"
fi
exec python3 tools/play_samples.py build/release/kestrune resources/samples build/run-screenshot.png
