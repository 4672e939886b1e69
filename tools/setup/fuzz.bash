# Functions for fuzz/run and the leg `fuzz`: the list of fuzz targets, building them, their options.
# Relies on common.bash, on `log` and on `jobs`.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this

# A small quarantine and short stacks, because targets spend most of their time allocating.
fuzz_environment=(
    ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=8
    UBSAN_OPTIONS=print_stacktrace=1
)

# The simulator's files are in memory if possible.
[[ ! -w /dev/shm ]] || fuzz_environment+=(TMPDIR=/dev/shm)

# fuzz_targets : prints the names of all targets, the slowest first.
fuzz_targets() {
    printf '%s\n' simulator_calls simulator_control commands qx_commands wild_handles \
        recording catalogue_reader handle_text argument_formats number_words
}

# fuzz_runs TARGET : prints how many executions the leg makes.
fuzz_runs() {
    local all=100000 usual
    case $1 in
        qx_commands) all=20000 usual=10000 ;; # each reads and writes whole records
        simulator_calls) usual=20000 ;;
        simulator_control) usual=30000 ;;
        commands | wild_handles | recording) usual=50000 ;;
        *) usual=$all ;; # seconds
    esac
    if [[ ${QXSH_TEST_LONG-} == 1 ]]; then echo $all; else echo $usual; fi
}

# fuzz_words TARGET : prints its libFuzzer options.
fuzz_words() {
    local dictionary=$project/fuzz/dictionaries/$1.dict
    printf '%s\n' -detect_leaks=0 -entropic=0 -max_len=120
    [[ ! -f $dictionary ]] || printf '%s\n' "-dict=$dictionary"
}

# fuzz_inputs TARGET : prints the folders of its committed inputs.
fuzz_inputs() {
    printf '%s\n' "$project/fuzz/seeds/$1"
    [[ ! -d $project/fuzz/found/$1 ]] || printf '%s\n' "$project/fuzz/found/$1"
}

# build_fuzz_targets : configures and builds preset `fuzz`, with warnings as errors.
build_fuzz_targets() {
    configure fuzz "$log" -DQXSH_WERROR=ON &&
        logged "building preset 'fuzz'" "$log" \
            cmake --build "$project/build/fuzz" --target fuzz_targets -j "$jobs"
}

# fuzz_once TARGET RUNS SEED : runs RUNS executions from the committed inputs alone. Returns 0 if
# nothing was found and all executions were made.
fuzz_once() {
    local target=$1 runs=$2 seed=$3 folder=$project/build/fuzz corpus made words inputs
    corpus=$folder/leg-corpus/$target
    rm -rf "$corpus"
    mkdir -p "$corpus"
    mapfile -t words < <(fuzz_words "$target")
    mapfile -t inputs < <(fuzz_inputs "$target")
    (cd "$folder" && exec env "${fuzz_environment[@]}" "fuzz/$target" "${words[@]}" \
        -artifact_prefix="$target-" -seed="$seed" -runs="$runs" "$corpus" "${inputs[@]}") \
        </dev/null >"$folder/$target.log" 2>&1 8>&- || return 1
    made=$(awk '/^Done [0-9]+ runs/ { print $2 }' "$folder/$target.log")
    ((${made:-0} >= runs))
}
