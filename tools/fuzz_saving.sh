#!/usr/bin/env bash
# Saves tags RUNS times for each kind of file, or for the KINDs given, from the seeds of that kind alone: in a
# run from all seeds the kinds whose checksums few changes survive are hardly ever saved.
#   tools/fuzz_saving.sh RUNS FOLDER [KIND...]
# What was found to be worth keeping stays in FOLDER, so that a further call goes on from there; so do the logs and,
# after a failure, the input. Needs a build with: cmake --preset fuzz-long
set -euo pipefail
[ $# -ge 2 ] || { echo "usage: $0 RUNS FOLDER [KIND...]" >&2; exit 2; }

runs=$1
folder=$2
shift 2
kinds=("$@")
[ $# -gt 0 ] || kinds=(wav aiff aifc mp3 mp2 flac ogg oga opus spx mpc ape wv tta wma m4a)
seeds=$(dirname "$0")/../fuzz/corpus/fuzz_tag_saving
target=$(dirname "$0")/../build/fuzz-long/fuzz_tag_saving

for kind in "${kinds[@]}"; do
    mkdir -p "$folder/$kind"
    cp "$seeds"/*_"$kind"* "$folder/$kind/"
    if ! "$target" "$folder/$kind" -runs="$runs" -timeout=10 -rss_limit_mb=3000 -max_len=6000 \
        -artifact_prefix="$folder/$kind-" >>"$folder/$kind.log" 2>&1; then
        tail -n 30 "$folder/$kind.log"
        exit 1
    fi
    echo "$kind: $(grep '^Done' "$folder/$kind.log" | tail -n 1)"
    awk '/^Done/ { told = "" } /^compared/ { told = told "    " $0 "\n" } END { printf "%s", told }' "$folder/$kind.log"
done
