#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every check: format, sizes, layers, static analysis, tests, tests
# again under the sanitizers, and each fuzz target for a while. Ends at the first failure with a status that is not 0.
#   ./test.sh quick         only what a few minutes are enough for: format, sizes, layers, tests of rules and windows
#   KESTRUNE_FUZZ_SECONDS   how long each fuzz target runs, 60 by default
#   KESTRUNE_E2E_KEEP       a folder for pictures, logs and captured sound of end-to-end tests that fail
#   KESTRUNE_SLOWNESS       how much longer things take than on an idle machine, measured at the start by default
set -euo pipefail
cd "$(dirname "$0")"
exec </dev/null
case "${1:-whole}" in
    whole | quick) mode=${1:-whole} ;;
    *) echo "usage: $0 [quick]" >&2; exit 2 ;;
esac

# Every process of this run carries this in its environment, which is how one left behind is found.
export KESTRUNE_RUN_ID="test-$$-$(date +%s)"
export KESTRUNE_E2E_KEEP="${KESTRUNE_E2E_KEEP:-$PWD/build/e2e-failures}"
export QT_QPA_PLATFORM=offscreen
# The encoders that make test files take their texts in the coding of the locale.
export LC_ALL=C.UTF-8
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:strict_string_checks=1}"
export TSAN_OPTIONS="${TSAN_OPTIONS:-history_size=4:die_after_fork=0:suppressions=$PWD/tests/support/tsan.supp}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1}"
unset DISPLAY WAYLAND_DISPLAY
logs=$PWD/build/logs
mkdir -p "$logs"
fuzzSeconds=${KESTRUNE_FUZZ_SECONDS:-60}
fuzzersAtOnce=4
export KESTRUNE_SLOWNESS="${KESTRUNE_SLOWNESS:-$(tools/measure_slowness)}"
# A listening test may be taken eight times.
testSeconds=$(awk "BEGIN { print int(900 * $KESTRUNE_SLOWNESS) }")
section="start"
sectionBegan=$SECONDS

Section() {
    section=$1
    sectionBegan=$SECONDS
    printf '\n==== %s\n' "$section"
}

Done() {
    printf '==== %s: passed in %d s\n' "$section" $((SECONDS - sectionBegan))
}

# Ids of the processes of this run other than this shell and its own children in the foreground.
LeftOver() {
    local folder id
    for folder in /proc/[0-9]*; do
        id=${folder#/proc/}
        [ "$id" != $$ ] && [ "$id" != "$BASHPID" ] || continue
        grep -qzF "KESTRUNE_RUN_ID=$KESTRUNE_RUN_ID" "$folder/environ" 2>/dev/null && echo "$id"
    done
    return 0
}

EndAll() {
    local status=$? ids
    trap - EXIT
    for _ in $(seq 20); do
        ids=$(LeftOver)
        [ -n "$ids" ] || break
        sleep 0.25
    done
    if [ -n "$ids" ]; then
        echo "These processes were left running and are ended now:" >&2
        for id in $ids; do
            echo "  $id $(tr '\0' ' ' <"/proc/$id/cmdline" 2>/dev/null)" >&2
            kill -KILL "$id" 2>/dev/null || true
        done
        [ $status -ne 0 ] || status=1
    fi
    [ $status -eq 0 ] || printf '\n==== %s: FAILED\n' "$section" >&2
    exit $status
}
trap EndAll EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# A command in the foreground would let a signal wait until it ends.
Attended() {
    "$@" &
    wait $!
}

# Runs a noisy command and shows what it said only if it fails.
Quietly() {
    local log=$1
    shift
    mkdir -p "$logs"
    Attended "$@" >"$log" 2>&1 || { local status=$?; tail -n 200 "$log"; return $status; }
}

SourceFiles() {
    git ls-files -- '*.h' '*.cpp' 2>/dev/null || find src tests fuzz benchmarks -name '*.h' -o -name '*.cpp'
}

# RunTests PRESET LOG CTEST_OPTIONS...
RunTests() {
    mkdir -p "$logs"
    Attended TestsToldTwice "$@"
}

TestsToldTwice() {
    local preset=$1 log=$2
    shift 2
    ctest --test-dir "build/$preset" --output-on-failure --no-tests=error --timeout "$testSeconds" -j 2 "$@" |
        tee "$logs/ctest-$log.log"
}

# A test's name is its target's name.
TestTargets() {
    local preset=$1
    shift
    ctest --test-dir "build/$preset" --show-only "$@" | sed -n 's/^ *Test *#[0-9]*: *\(kestrune_\)/\1/p'
}

Fuzz() {
    local target=$1 work status=0
    work=$(mktemp -d)
    mkdir "$work/corpus"
    # A copy, since the fuzzer adds to its corpus.
    [ ! -d "fuzz/corpus/$target" ] || cp -r "fuzz/corpus/$target/." "$work/corpus/"
    "build/fuzz/$target" "$work/corpus" -max_total_time="$fuzzSeconds" -timeout=10 -rss_limit_mb=3000 \
        -print_final_stats=1 -artifact_prefix="$logs/$target-" >"$logs/$target.log" 2>&1 || status=$?
    rm -rf "$work"
    return $status
}

Section "Packages"
tools/install_packages.sh
Done

Section "Format"
SourceFiles | xargs -r clang-format --dry-run -Werror
Done

Section "Sizes"
tools/check_sizes
tools/check_sizes --self-test
Done

Section "Layers"
Quietly "$logs/configure-release.log" cmake --preset release
tools/check_layers build/release
tools/check_layers build/release --self-test
tools/analyse --self-test
Done

if [ "$mode" = quick ]; then
    Section "Build of the tests of rules and windows"
    quickTests=(-L '^(rules|windows)$')
    mapfile -t targets < <(TestTargets release "${quickTests[@]}")
    Quietly "$logs/build-release.log" cmake --build --preset release --target "${targets[@]}"
    Done

    Section "Tests of rules and windows"
    RunTests release quick "${quickTests[@]}"
    Done
    printf '\n==== The quick checks passed in %d s\n' "$SECONDS"
    exit 0
fi

Section "Build (release)"
Quietly "$logs/build-release.log" cmake --build --preset release
Done

# Only what changed since it was clean.
Analyse() {
    tools/analyse build/release >"$logs/clang-tidy.log" 2>&1 || { cat "$logs/clang-tidy.log"; return 1; }
}

# BuildForSanitizers PRESET CTEST_OPTIONS...: only the tests that will be run.
BuildForSanitizers() {
    local preset=$1 targets
    shift
    Quietly "$logs/configure-$preset.log" cmake --preset "$preset" || return 1
    mapfile -t targets < <(TestTargets "$preset" "$@")
    Quietly "$logs/build-$preset.log" cmake --build --preset "$preset" --target "${targets[@]}"
}

BuildFuzzers() {
    Quietly "$logs/configure-fuzz.log" cmake --preset fuzz &&
        Quietly "$logs/build-fuzz.log" cmake --build --preset fuzz --target "${fuzzTargets[@]}"
}

# What needs nothing but the processor is done while tests wait for windows: but not beside those that listen.
Aside() {
    renice -n 19 -p $BASHPID >/dev/null
    Analyse && BuildForSanitizers asan "${asanTests[@]}" && BuildForSanitizers tsan "${tsanTests[@]}" && BuildFuzzers
}

# The encoders' own tests take long, most of it in libraries that are not built for the sanitizers.
asanTests=(-L '^(rules|backends)$' -LE '^slow$')
# Sound output, encoding pool, decoding ahead, the transport over simulated sound.
tsanTests=(-L '^threads$')
mapfile -t fuzzTargets < <(find fuzz -maxdepth 1 -name 'fuzz_*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
Aside >"$logs/aside.log" 2>&1 &
aside=$!

Section "Tests (release), without those that listen"
RunTests release release -LE '^listens$'
Done

Section "Static analysis, builds for the sanitizers and for fuzzing"
if ! wait $aside; then
    cat "$logs/aside.log"
    exit 1
fi
Done

Section "Tests (release) that listen to what is played"
RunTests release listening -L '^listens$' -j 3
Done

Section "Tests under the address and undefined behaviour sanitizers"
RunTests asan asan "${asanTests[@]}"
Done

Section "Tests under the thread sanitizer"
RunTests tsan tsan "${tsanTests[@]}"
Done

Section "Fuzzing, $fuzzSeconds s for each target, $fuzzersAtOnce at once"
for ((i = 0; i < ${#fuzzTargets[@]}; i += fuzzersAtOnce)); do
    declare -A running=()
    for target in "${fuzzTargets[@]:i:fuzzersAtOnce}"; do
        Fuzz "$target" &
        running[$target]=$!
    done
    for target in "${!running[@]}"; do
        if ! wait "${running[$target]}"; then
            tail -n 60 "$logs/$target.log"
            exit 1
        fi
        echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$logs/$target.log") runs"
    done
    unset running
done
Done

Section "Processes left behind"
left=$(LeftOver)
[ -z "$left" ] || exit 1
Done

printf '\n==== All passed in %d s\n' "$SECONDS"
grep -hE 'tests passed' "$logs/ctest-asan.log" "$logs/ctest-tsan.log" | sed 's/^/Under the sanitizers: /'
grep -hE 'tests passed' "$logs/ctest-release.log" "$logs/ctest-listening.log"
