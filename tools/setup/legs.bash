# The legs of ./test. Relies on common.bash and on `log`, the leg's log file. To add a leg, write a
# function leg_NAME (dashes as underscores) and put NAME into all_legs, or into long_legs if only
# ./test --long runs it. It returns 0 (passed), 1 (failed, after saying why) or `skipped REASON`
# (this machine cannot run it), and sets `counts` to "PASSED FAILED SKIPPED" if it counts tests.
# shellcheck disable=SC2034,SC2154 # variables are shared with ./test

# `set -e` has no effect here, because a leg runs in a condition: every step needs `|| return`.

all_legs=(style release strict dev i686 i686-asan armhf tcl85 board fuzz compare docs valgrind
    speed)
long_legs=(analysis valgrind-scripts soak packages)

leg_style() {
    need_packages style || skipped "not installed: ${missing[*]}" || return
    git -C "$project" rev-parse --verify -q HEAD >/dev/null ||
        skipped "which files there are, git tells, and this folder is not a clone" || return
    check_style
}
leg_release() { preset_leg release; }
# What the script tests print must not depend on strict memory; they know what it adds.
leg_strict() {
    build_preset release all && rm -rf "$project/build/release/transcripts-strict" &&
        QXSH_STRICT_MEMORY=1 run_tests release -R '^(script\.|examples$|random$)'
}
leg_dev() {
    need_packages valgrind || skipped "not installed: ${missing[*]}" || return
    preset_leg dev
}
leg_i686() { need_i686 || return; preset_leg i686; }
leg_i686_asan() { need_i686 || return; preset_leg i686-asan; }
leg_armhf() { need_armhf || return; preset_leg armhf; }
leg_tcl85() { need_tcl85 || return; preset_leg tcl85; }
leg_board() { need_board || return; preset_leg board; }
leg_fuzz() {
    need_packages fuzz valgrind || skipped "not installed: ${missing[*]}" || return
    fuzz_all 1
}
leg_compare() { compare_transcripts release i686 armhf tcl85 board; }
leg_docs() {
    need_packages docs || skipped "not installed: ${missing[*]}" || return
    build_preset release docs && run_tests release -C docs -L docs
}
# The Debian packages: made, looked at, installed in a bare system, removed. Those for the board's
# processor are left out where it cannot be built for; the tests tell.
leg_packages() {
    local build=$project/packaging/build
    local -x DEBFULLNAME="qxsh tests" DEBEMAIL=tests@qxsh.invalid
    need_packages packages || skipped "not installed: ${missing[*]}" || return
    [[ $(dpkg --print-architecture) == amd64 ]] ||
        skipped "packages for amd64 can only be built on amd64" || return
    rm -rf "$project/build/package-armhf/packages"
    progress_count=package_count logged "packaging/build amd64" "$log" "$build" amd64 || return
    if need_armhf; then
        progress_count=package_count logged "packaging/build armhf" "$log" "$build" armhf || return
    else
        reason="without armhf: $reason"
    fi
    build_preset release docs && run_tests release -C packages -L packages
}
# package_count : prints the last count in the log of the packages that are being built.
package_count() {
    local newest
    newest=$(find "$project/build/log" -name 'package-*.log' -newer "$log" | head -n 1)
    last_count "${newest:-$log}"
}
leg_valgrind() {
    need_packages valgrind || skipped "not installed: ${missing[*]}" || return
    build_preset release all && run_tests release -C memcheck -L memcheck
}
leg_soak() { soak release "${QXSH_SOAK_MINUTES:-5}"; }

# Instructions and sizes against bench/bounds.tsv, of whatever can be built here; the values are
# printed.
leg_speed() {
    local targets=(pc) results=${log%.log}.results status=0
    need_packages valgrind || skipped "not installed: ${missing[*]}" || return
    if need_armhf; then targets+=(armhf); fi
    # The terminal shows how far it is.
    if [[ -t 2 ]]; then
        "$project/bench/gate" "${targets[@]}" >"$results" || status=1
    else
        "$project/bench/gate" "${targets[@]}" >"$results" 2>&1 || status=1
    fi
    cat "$results" >>"$log"
    cat "$results"
    counts="$(grep -c ' ok$' "$results" || true) $(grep -c ' EXCEEDED$' "$results" || true) 0"
    return $status
}

# Test programs compiled file by file, which finds includes that are missing; clang-tidy
# (.clang-tidy) and cppcheck over what is shipped.
leg_analysis() {
    local folder=$project/build/analysis results=${log%.log}.results status=0 files
    need_packages analysis || skipped "not installed: ${missing[*]}" || return
    build_preset release all || return
    mkdir -p "$folder"
    logged "configuring for files by themselves" "$log" cmake -S "$project" --preset release \
        -B "$project/build/alone" -DQXSH_TEST_ALONE=ON -DQXSH_WERROR=ON \
        -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 &&
        logged "building tests file by file" "$log" \
            cmake --build "$project/build/alone" -j "$jobs" || status=1
    clang_commands "$folder"
    mapfile -t files < <(shipped_sources)
    tidy "$folder" "$results" "${files[@]}" || status=1
    cppcheck --project="$folder/compile_commands.json" --std=c++20 --quiet --error-exitcode=1 \
        --enable=warning,performance,portability --suppress='*:/usr/*' --suppress='*:*/tests/*' \
        -i/usr/src >>"$results" 2>&1 || status=1
    cat "$results" >>"$log"
    ((status == 0)) || grep -E '(warning|error):' "$results"
    return $status
}

# skipped REASON : ends a leg that cannot run here, as `TRY || skipped "no valgrind" || return`.
skipped() {
    reason=$1
    return 77
}

# need_foreign GROUP ARCHITECTURE : compiler, loader and libraries of another processor.
need_foreign() {
    local tclsh=$project/build/sysroot/$2/root/usr/bin/tclsh8.6
    need_packages "$1" || skipped "not installed: ${missing[*]}" || return
    "$project/tools/setup/sysroot" "$2" || skipped "no $2 libraries could be fetched" || return
    # A stock tclsh of that processor has to start: a kernel may refuse its programs.
    "$project/tools/setup/launch" "$2" "$tclsh" <<<'exit 42' >>"$log" 2>&1
    (($? == 42)) ||
        skipped "this machine does not run $2 programs (see $log)"
}

# need_tcl85, need_board : what is made of Tcl 8.5's sources. Sources that are given and
# unusable are a failure, not a reason to skip.
need_tcl85() {
    [[ -n ${QXSH_TCL85_SOURCE-} ]] || skipped "$no_tcl85_source" || return
    need_packages tcl85 || skipped "not installed: ${missing[*]}" || return
    "$project/tools/setup/tcl85"
}
need_board() {
    [[ -n ${QXSH_TCL85_SOURCE-} ]] || skipped "$no_tcl85_source" || return
    need_packages tcl85 armhf board || skipped "not installed: ${missing[*]}" || return
    "$project/tools/setup/board"
}

need_i686() { need_foreign i686 i386; }
need_armhf() { need_foreign armhf armhf; }

# preset_leg PRESET : configures and builds build/PRESET and runs all its tests.
preset_leg() {
    local words=()
    build_preset "$1" all || return
    reason=$(sed -n 's/^-- \(tests left to other builds: .*\)/\1/p' "$log")
    if leaves_scripts "$1"; then
        reason="${reason:-tests left to other builds:}${reason:+,} scripts"
        words=(-LE scripts)
    fi
    rm -rf "$project/build/$1/transcripts" # what an older run left proves nothing
    run_tests "$1" "${words[@]}"
}

# leaves_scripts PRESET : whether the leg leaves out the tests labelled `scripts`. Scripts depend on
# Tcl's version and on its integers: release, tcl85, i686 and board have all of these.
leaves_scripts() { [[ ${QXSH_TEST_LONG-} != 1 && $1 == armhf ]]; }

# script_tests PRESET : prints the names of those tests, which are those of their transcripts.
script_tests() {
    (cd "$project" && ctest --preset "$1" -N -L scripts) | sed -n 's/^ *Test *#[0-9]*: //p'
}

# build_preset PRESET TARGET : configures build/PRESET and builds the target, with warnings as
# errors but in the release build, which ./run shares and whose compiler may be anyone's.
build_preset() {
    local status=0 options=()
    [[ $1 == release ]] || options+=(-DQXSH_WERROR=ON)
    lock_build
    configure "$1" "$log" "${options[@]}" &&
        logged "building '$2' of preset '$1'" "$log" \
            cmake --build "$project/build/$1" --target "$2" -j "$jobs" || status=1
    unlock_build
    return $status
}

# run_tests PRESET CTEST-WORD... : runs tests of build/PRESET and counts them.
run_tests() {
    local preset=$1 results=${log%.log}.results status=0 folder=$project/build/$1
    local test_log=$folder/Testing/Temporary/LastTest.log
    shift
    rm -rf "$test_log" "$folder/results" "$folder/results.xml"
    new_log "$results"
    # One more than there are processors: tests at a terminal mostly wait.
    (cd "$project" && with_progress "testing preset '$preset'" "$results" \
        ctest --preset "$preset" -j "$((jobs + 1))" \
        --output-junit "$folder/results.xml" "$@") || status=1
    cat "$results" >>"$log"
    [[ ! -f $test_log ]] || cat "$test_log" >>"$log"
    counts=$(tclsh8.6 "$project/tools/setup/count_tests.tcl" "$folder/results.xml" \
        "$folder/results") || return
    if ((status)); then
        # The failing tests' output, without a line for each test that passed.
        grep -vE '^ *Start +[0-9]+: |^ *[0-9]+/[0-9]+ Test .* Passed ' "$results" || true
        echo "--- all output: $log"
        return 1
    fi
    case $counts in
        '0 0 '*) echo "no test was counted: see $log"; return 1 ;;
        *' 0 '*) ;;
        *) echo "tests failed that ctest did not notice: see $log"; return 1 ;;
    esac
}

# soak PRESET MINUTES : random scripts one after the other in one shell of build/PRESET.
soak() {
    local folder=$project/build/$1 minutes=$2 status=0 strict begun results=${log%.log}.results
    [[ $minutes =~ ^[1-9][0-9]{0,4}$ ]] || {
        echo "QXSH_SOAK_MINUTES is not a number of minutes: $minutes"
        return 1
    }
    build_preset "$1" qxsh && build_preset "$1" random_script || return
    # Strict memory counts the blocks that are live at the end.
    for strict in 0 1; do
        begun=$SECONDS
        new_log "$results.$strict"
        progress_count=soaked with_progress "soak, minutes" "$results.$strict" \
            env QXSH_STRICT_MEMORY=$strict tclsh8.6 "$project/tests/random/soak.tcl" \
            "$folder/bin/qxsh" "$folder/tests/random/random_script" "$minutes" "$folder/soak" ||
            status=1
        echo "strict memory $strict:"
        tail -n 12 "$results.$strict"
    done
    cat "$results".[01] >>"$log"
    counts=$(awk '/^soak: / { run += $2; failed += $(NF - 1) }
        END { print run - failed, failed + 0, 0 }' "$results".[01])
    return $status
}

# soaked : prints how many minutes of a run are over.
soaked() { echo "$(((SECONDS - begun) / 60))/$minutes"; }

# fuzz_all SEED : every fuzz target with its executions (fuzz_runs), several at a time.
fuzz_all() {
    local seed=$1 status=0 target targets good=0 bad=0
    lock_build
    build_fuzz_targets || status=1
    unlock_build
    ((status == 0)) || return 1
    mapfile -t targets < <(fuzz_targets)
    echo "${#targets[@]} targets, seed $seed"
    rm -f "$project"/build/fuzz/*.{passed,finished}
    progress_count=fuzzed with_progress "fuzzing" "$log" fuzz_each "$seed"
    for target in "${targets[@]}"; do
        cat "$project/build/fuzz/$target.log" >>"$log"
        if [[ -f $project/build/fuzz/$target.passed ]]; then
            ((++good))
        else
            ((++bad))
            grep -aE '^finding: |ERROR: |runtime error: |Test unit written|^SUMMARY: ' \
                "$project/build/fuzz/$target.log" || tail -n 5 "$project/build/fuzz/$target.log"
            echo "fuzz target $target failed; all output: $log"
        fi
    done
    counts="$good $bad 0"
    ((bad == 0))
}

# fuzz_each SEED : runs fuzz_all's targets; in a shell of its own, which waits for them only.
fuzz_each() (
    for target in "${targets[@]}"; do
        while (($(jobs -rp | wc -l) >= jobs)); do wait -n || true; done
        {
            fuzz_once "$target" "$(fuzz_runs "$target")" "$1" &&
                touch "$project/build/fuzz/$target.passed"
            touch "$project/build/fuzz/$target.finished"
        } &
    done
    wait
)

# fuzzed : prints how many of them have ended.
fuzzed() {
    printf '%s/%s\n' "$(find "$project/build/fuzz" -maxdepth 1 -name '*.finished' | wc -l)" \
        "${#targets[@]}"
}

# The shell itself, with scripts that go through every area.
leg_valgrind_scripts() {
    local script scripts results=${log%.log}.results passed=0 failed=0
    need_packages valgrind || skipped "not installed: ${missing[*]}" || return
    build_preset release qxsh || return
    scripts=("$project"/examples/*.tcl)
    for script in "${scripts[@]}"; do
        progress "examples under valgrind" $((passed + failed)) ${#scripts[@]}
        if valgrind -q --error-exitcode=99 --child-silent-after-fork=yes \
            "$project/build/release/bin/qxsh" "$script" </dev/null >"$results" 2>&1; then
            ((++passed))
        else
            progress_gone
            echo "examples/${script##*/} failed under valgrind:"
            grep '^==' "$results" | head -n 20
            ((++failed))
        fi
        cat "$results" >>"$log"
    done
    progress_gone
    counts="$passed $failed 0"
    ((failed == 0 && passed > 0))
}

# compare_transcripts PRESET... : what the script tests recorded must be the same, byte for byte,
# in every build. A build takes part if its tests left transcripts, now or in an earlier ./test.
compare_transcripts() {
    local preset file names taking_part=() left_out=() good=0 bad=0
    local -A elsewhere=()
    for preset in "$@"; do
        if [[ -d $project/build/$preset/transcripts && ${state[$preset]-} != SKIPPED ]]; then
            taking_part+=("$preset")
            if leaves_scripts "$preset"; then elsewhere[$preset]=$(script_tests "$preset"); fi
        elif [[ ${state[$preset]-} == PASSED ]]; then
            echo "build/$preset/transcripts is missing, though the tests of '$preset' ran"
            return 1
        else
            left_out+=("$preset")
        fi
    done
    if ((${#taking_part[@]} < 2)); then
        skipped "fewer than two builds have transcripts (none: ${left_out[*]})"
        return
    fi
    ((${#left_out[@]})) && reason="without ${left_out[*]}"

    names=$(for preset in "${taking_part[@]}"; do
        (cd "$project/build/$preset/transcripts" && find . -type f -printf '%P\n')
    done | LC_ALL=C sort -u)
    [[ -n $names ]] || { echo "the tests wrote no transcripts"; return 1; }
    while IFS= read -r file; do
        if same_everywhere "$file"; then ((++good)); else ((++bad)); fi
    done <<<"$names"
    counts="$good $bad 0"
    ((bad == 0))
}

# same_everywhere FILE : compares one transcript with that of the first build that has it;
# `taking_part` and `elsewhere`, which builds leave out which tests, are its caller's.
same_everywhere() {
    local preset one='' first status=0
    for preset in "${taking_part[@]}"; do
        if [[ ! -f $project/build/$preset/transcripts/$1 ]]; then
            grep -qxF "${1%.txt}" <<<"${elsewhere[$preset]-}" && continue
            echo "$1: missing in build/$preset/transcripts"
            status=1
        elif [[ -z $one ]]; then
            first=$preset one=$project/build/$preset/transcripts/$1
        elif ! cmp -s "$one" "$project/build/$preset/transcripts/$1"; then
            echo "$1: $first and $preset differ"
            diff -a "$one" "$project/build/$preset/transcripts/$1" | head -n 10
            status=1
        fi
    done
    return $status
}
