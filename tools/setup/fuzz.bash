# What fuzz/run and the leg `fuzz` share: which fuzz targets there are, how they are built and with
# which words they run. Relies on common.bash, on `log` and on `jobs`.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this

# Little quarantine and short stacks: allocation is most of what a target does.
fuzz_environment=(
    ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=8
    UBSAN_OPTIONS=print_stacktrace=1
)

# The simulator's files in memory, where that can be had.
[[ ! -w /dev/shm ]] || fuzz_environment+=(TMPDIR=/dev/shm)

# fuzz_targets : their names, those that take longest first.
fuzz_targets() {
    printf '%s\n' simulator_calls commands catalogue_reader simulator_control wild_handles \
        handle_text argument_formats number_words
}

# fuzz_words TARGET : libFuzzer's words for it.
fuzz_words() {
    local dictionary=$project/fuzz/dictionaries/$1.dict
    printf '%s\n' -detect_leaks=0 -entropic=0 -max_len=120
    [[ ! -f $dictionary ]] || printf '%s\n' "-dict=$dictionary"
}

# fuzz_inputs TARGET : the folders of its committed inputs.
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

# fuzz_once TARGET RUNS SEED : so many executions from the committed inputs alone. 0 if nothing was
# found and all of them were made.
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
