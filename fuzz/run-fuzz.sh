#!/usr/bin/env bash
# Builds one fuzz target in build-fuzz/ (clang, AddressSanitizer,
# UndefinedBehaviorSanitizer, libFuzzer) and runs it for the given time with
# its seed corpus and dictionary.
#
#   fuzz/run-fuzz.sh TARGET SECONDS [LIBFUZZER_OPTION...]
#
# TARGET is one of the NAME.cpp here: plist_records, plist_value,
# legacy_parser. The corpus is copied to a scratch folder first, so that what
# the run adds never lands in the repository; the folder is kept and named at
# the end, with any crash, hang ("timeout-") or memory ("oom-") input in its
# artifacts/. An input that takes more than 5 s or 2 GB counts as a fault.
# Extra options go to libFuzzer as they are (-max_len=65536, -jobs=2 ...).
# FUZZ_BUILD_DIR, FUZZ_WORK_DIR and FUZZ_CXX (default clang++-14) change
# where it builds, where it works and the compiler. scripts/setup-fuzz
# installs what it needs.
#
# To run one input again (a crash, or a regression case):
#   build-fuzz/fuzz/TARGET_fuzzer FILE
set -euo pipefail

if [ $# -lt 2 ]; then
    echo "usage: $0 TARGET SECONDS [LIBFUZZER_OPTION...]" >&2
    exit 2
fi
TARGET=$1
SECONDS_TO_RUN=$2
shift 2
REPO=$(cd "$(dirname "$0")/.." && pwd)
if [ ! -f "$REPO/fuzz/$TARGET.cpp" ]; then
    echo "$0: no fuzz target $TARGET (fuzz/$TARGET.cpp)" >&2
    exit 2
fi

BUILD=${FUZZ_BUILD_DIR:-$REPO/build-fuzz}
CXX_COMPILER=${FUZZ_CXX:-clang++-14}
mkdir -p "$BUILD"
if [ ! -f "$BUILD/build.ninja" ]; then
    if ! cmake -S "$REPO" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_COMPILER="$CXX_COMPILER" -DQUORVEL_FUZZ=ON >"$BUILD/fuzz-configure.log" 2>&1; then
        cat "$BUILD/fuzz-configure.log" >&2
        exit 1
    fi
fi
if ! cmake --build "$BUILD" --target "${TARGET}_fuzzer" -j2 >"$BUILD/fuzz-build.log" 2>&1; then
    cat "$BUILD/fuzz-build.log" >&2
    exit 1
fi
BIN=$BUILD/fuzz/${TARGET}_fuzzer

WORK=${FUZZ_WORK_DIR:-$(mktemp -d "${TMPDIR:-/tmp}/quorvel-fuzz-$TARGET.XXXXXX")}
mkdir -p "$WORK/corpus" "$WORK/artifacts"
cp "$REPO/fuzz/corpus/$TARGET/"* "$WORK/corpus/"

SYMBOLIZER=$(command -v llvm-symbolizer-14 || command -v llvm-symbolizer || true)
if [ -n "$SYMBOLIZER" ]; then
    export ASAN_SYMBOLIZER_PATH=$SYMBOLIZER
fi
export ASAN_OPTIONS=${ASAN_OPTIONS:-abort_on_error=1:detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

echo "fuzzing $TARGET for $SECONDS_TO_RUN s in $WORK" >&2
status=0
"$BIN" "$WORK/corpus" \
    -dict="$REPO/fuzz/$TARGET.dict" \
    -max_total_time="$SECONDS_TO_RUN" \
    -timeout=5 \
    -rss_limit_mb=2048 \
    -artifact_prefix="$WORK/artifacts/" \
    -print_final_stats=1 \
    "$@" || status=$?

found=$(ls "$WORK/artifacts" | wc -l)
echo "$TARGET: corpus $(ls "$WORK/corpus" | wc -l) inputs; $found fault input(s) in $WORK/artifacts" >&2
exit $status
