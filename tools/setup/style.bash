# What the legs `style` and `analysis` look at without running anything. Relies on common.bash, on
# git, and on `log` and `jobs`. Findings go to standard output, as FILE:LINE: WHAT.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this

# check_style : every check; sets `counts`. Fails if one found something.
check_style() {
    local check found failed good=0 bad=0
    for check in cpp_format shell_scripts lines changed_code; do
        progress "checking style" $((good + bad)) 4
        found=$(cd "$project" && "check_$check") && failed=0 || failed=1
        progress_gone
        [[ -z $found ]] || printf '%s\n' "$found"
        if ((failed == 0)); then
            ((++good))
        else
            echo "style: $check"
            ((++bad))
        fi
    done
    progress_gone
    counts="$good $bad 0"
    ((bad == 0))
}

# All C++ and C as .clang-format has it; what the generator is to write stands as it writes it.
# Prints how many places a file has, which clang-format -i mends.
check_cpp_format() {
    local found=$log.format
    git ls-files -z '*.cpp' '*.h' '*.c' ':!tests/generator/golden' |
        xargs -0 clang-format --dry-run -Werror >"$found" 2>&1 && return
    cat "$found" >>"$log"
    sed -n 's/:.*clang-format-violations.*//p' "$found" | sort | uniq -c
    return 1
}

# shell_scripts : prints every shell script, each ended by a null byte.
shell_scripts() {
    git ls-files -z '*.bash' '*.sh'
    git grep -lzE -e '^#!.*[/ ](ba)?sh( |$)' -- ':!*.bash' ':!*.sh' ':!*.md' ':!*.tcl' ':!*.test'
}
check_shell_scripts() { shell_scripts | xargs -0 shellcheck -x -P SCRIPTDIR -f gcc; }

# No tabs before a line's first word, no blanks behind its last, 100 columns. Tests and generators
# have texts that stand as they are, and a row of the catalogue is a line.
check_lines() {
    local found=0 code=('*.tcl' '*.cmake' '*CMakeLists.txt')
    mapfile -d '' -O ${#code[@]} -t code < <(shell_scripts)
    git --no-pager grep -nE -e $'^ *\t' -e '[[:blank:]]$' -- "${code[@]}" && found=1
    LC_ALL=C.UTF-8 git --no-pager grep -nE -e '^.{101,}' -- "${code[@]}" \
        ':!tests' ':!tools/generate*' ':!catalogue' && found=1
    ((found == 0))
}

# shipped_sources : prints the C++ that is shipped. The block memory has a half for each width, of
# which the release build compiles one.
shipped_sources() {
    git -C "$project" ls-files \
        {shell,commands,records,runtime,helpers,strict,sdk,replay,library}/'*.cpp' |
        grep -v '^helpers/native_memory'
}

# clang_commands FOLDER : the release build's commands, less the options that only its compiler
# knows, in FOLDER/compile_commands.json.
clang_commands() {
    mkdir -p "$1" &&
        sed 's/ --param=[^ ]*//g; s/ -fno-ipa-icf//g; s/ -fno-align-jumps//g' \
            "$project/build/release/compile_commands.json" >"$1/compile_commands.json"
}

# tidy FOLDER RESULTS FILE... : clang-tidy, by the commands in FOLDER; its output is in RESULTS.
tidy() {
    local folder=$1 results=$2 progress_count=tidied
    shift 2
    new_log "$results"
    (cd "$project" &&
        with_progress clang-tidy "$results" run-clang-tidy -p "$folder" -j "$jobs" -quiet "$@")
}

# tidied RESULTS : prints how many files clang-tidy has begun, of tidy's.
tidied() { printf '%s/%s\n' "$(grep -c '^[^ ]*clang-tidy[^ ]* ' "$1")" "${#files[@]}"; }

# What is shipped and has changed in the last 20 commits, or since QXSH_CHANGED_SINCE, a commit. At
# most 30 files, the latest first: it is to take a minute.
check_changed_code() {
    local folder=$project/build/analysis status=0 files range=(-n 20)
    if [[ -n ${QXSH_CHANGED_SINCE-} ]]; then
        range=("$QXSH_CHANGED_SINCE..HEAD")
        git rev-parse -q --verify "$QXSH_CHANGED_SINCE^{commit}" >/dev/null || {
            echo "QXSH_CHANGED_SINCE is not a commit of this clone: $QXSH_CHANGED_SINCE"
            return 1
        }
    fi
    mapfile -t files < <({
        git diff --name-only HEAD
        git log --first-parent --diff-merges=first-parent --format= --name-only "${range[@]}"
    } | awk '!seen[$0]++' | grep -Fxf <(shipped_sources))
    echo "clang-tidy: ${#files[@]} files have changed"
    ((${#files[@]})) || return 0
    ((${#files[@]} <= 30)) || echo "clang-tidy: the 30 latest; the others in the leg analysis"
    lock_build
    configure release "$log" &&
        logged "generating" "$log" cmake --build "$project/build/release" \
            --target qxsh_generate &&
        clang_commands "$folder" || return
    unlock_build
    files=("${files[@]:0:30}")
    tidy "$folder" "$log.tidy" "${files[@]}" || status=1
    cat "$log.tidy" >>"$log"
    ((status == 0)) || grep -E '(warning|error):' "$log.tidy"
    return $status
}
