# Functions for ./run and ./test: messages, the package list, logged steps, the build lock.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this
# Sourced, with `project` set to the project's folder. Messages go to standard error, because
# standard output belongs to the shell that ./run starts. Functions return 1 after reporting an
# error.

say() { printf 'qxsh: %s\n' "$*" >&2; }

# packages_of GROUP... : prints the names that tools/setup/packages lists for these groups.
packages_of() {
    local group name purpose
    while read -r group name _; do
        [[ -n $group && $group != '#'* && " $* " == *" $group "* ]] || continue
        printf '%s\n' "$name"
    done <"$project/tools/setup/packages"
}

# missing_packages NAME... : prints those that are not installed.
missing_packages() {
    local name status installed=' '
    while read -r name status; do
        [[ $status == installed ]] && installed+="$name "
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null)
    for name in "$@"; do
        [[ $installed == *" $name "* ]] || printf '%s\n' "$name"
    done
}

# last_lines FILE : shows the end of a log and where the rest is.
last_lines() {
    { echo "--- the last lines of $1"; tail -n "${2:-20}" "$1"; echo '---'; } >&2
}

# apt_get WORD... : runs apt-get as root, output in the log. It never asks and never removes
# anything.
apt_get() {
    local sudo=()
    ((EUID == 0)) || sudo=(sudo)
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -q -o DPkg::Lock::Timeout=120 \
        -o Dpkg::Use-Pty=0 --no-install-recommends --no-remove "$@" </dev/null >>"$install_log" 2>&1
}

# need_packages GROUP... : installs the missing packages of these groups; sets `missing` to those
# that could not be installed.
need_packages() {
    local wanted name
    missing=()
    mapfile -t wanted < <(packages_of "$@")
    if ! command -v dpkg-query apt-get >/dev/null; then
        say "this is not a Debian system: neither dpkg-query nor apt-get can be found."
        say "Install the equivalents of Debian 12's ${wanted[*]} and build with CMake."
        missing=("${wanted[@]}")
        return 1
    fi
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    ((${#missing[@]})) || return 0
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        say "these packages are missing, and only root can install them: ${missing[*]}"
        say "As root: apt-get update && apt-get install --no-install-recommends ${missing[*]}"
        return 1
    fi

    install_log=$project/build/log/install.log
    new_log "$install_log"
    say "installing ${missing[*]}"
    if ! apt_get install "${missing[@]}"; then
        apt_get update || true # may fail for an unrelated source; the installation decides
        # One by one after a second failure, so that one bad package does not block the others.
        if ! apt_get install "${missing[@]}"; then
            for name in "${missing[@]}"; do apt_get install "$name" || true; done
        fi
    fi
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    ((${#missing[@]})) || return 0
    last_lines "$install_log"
    say "could not install: ${missing[*]}"
    say "Try it by hand: apt-get update && apt-get install ${missing[*]}"
    return 1
}

# new_log FILE : empties a log.
new_log() {
    mkdir -p "${1%/*}"
    : >"$1"
}

# logged WHAT LOG COMMAND... : runs the command and appends its output to the log, showing its
# progress; says that WHAT failed.
logged() {
    local what=$1 log=$2
    shift 2
    with_progress "$what" "$log" "$@" && return 0
    last_lines "$log" 30
    say "$what failed; its output is in $log"
    return 1
}

# with_progress WHAT FILE COMMAND... : runs the command and appends its output to the file, where it
# counts its steps as ninja ([2/9]) or ctest (2/9 Test) do. If standard error is a terminal, one
# line there shows the last count until the command ends. Where the count is to be found elsewhere,
# `progress_count` is a command that prints it, as 2/9.
with_progress() {
    local what=$1 file=$2 watcher='' status=0
    shift 2
    if [[ -t 2 ]]; then
        show_progress "$what" "$file" &
        watcher=$!
    fi
    "$@" </dev/null >>"$file" 2>&1 8>&- 9>&- || status=$?
    if [[ $watcher ]]; then
        kill "$watcher" 2>/dev/null
        wait "$watcher" 2>/dev/null || true
        progress_gone
    fi
    return $status
}

# progress WHAT DONE TOTAL : the same line, for a step at a time; progress_gone takes it away.
progress() { [[ ! -t 2 ]] || printf '\r\e[Kqxsh: %s: %s of %s' "$@" >&2; }
progress_gone() { [[ ! -t 2 ]] || printf '\r\e[K' >&2; }

# show_progress WHAT FILE : until this shell ends or the process is killed.
show_progress() {
    local what=$1 file=$2 count
    while sleep 0.2 && kill -0 $$ 2>/dev/null; do
        count=$("${progress_count:-last_count}" "$file") || true
        [[ ! $count ]] || progress "$what" "${count%/*}" "${count#*/}"
    done
}

# last_count FILE : prints the last count in a log.
last_count() {
    tail -c 4000 "$1" | grep -oE '^ *\[?[0-9]+/[0-9]+[] ]' | tail -n 1 | tr -d '[] '
}

# configured PRESET : whether build/PRESET was configured from this folder; a moved project is
# configured again.
configured() {
    local cache=$project/build/$1/CMakeCache.txt
    [[ -f $project/build/$1/build.ninja && -f $cache ]] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project" "$cache"
}

# compiler_cache : sets `launcher` to CMake's options that keep what is compiled in
# ~/.cache/qxsh/ccache, or to none if ccache is missing, the folder cannot be written, or the caller
# has a launcher. The sloppiness is what ccache wants for precompiled headers.
compiler_cache() {
    local folder=${XDG_CACHE_HOME:-${HOME-/dev/null}/.cache}/qxsh/ccache words
    launcher=()
    [[ ! ${CMAKE_CXX_COMPILER_LAUNCHER-} ]] && command -v ccache >/dev/null &&
        mkdir -p "$folder" 2>/dev/null && [[ -w $folder ]] || return 0
    words="env;CCACHE_DIR=$folder;CCACHE_MAXSIZE=4G"
    words+=";CCACHE_SLOPPINESS=pch_defines,time_macros;ccache"
    launcher=("-DCMAKE_C_COMPILER_LAUNCHER=$words" "-DCMAKE_CXX_COMPILER_LAUNCHER=$words")
}

# configure PRESET LOG CMAKE-WORD... : configures build/PRESET, from scratch if it belongs to
# another folder. A folder that was configured keeps its launcher: another would compile all anew.
configure() {
    local preset=$1 log=$2 fresh=() launcher=()
    shift 2
    if ! configured "$preset"; then
        fresh=(--fresh)
        compiler_cache
    fi
    logged "configuring preset '$preset'" "$log" \
        cmake "${fresh[@]}" -S "$project" --preset "$preset" "${launcher[@]}" "$@"
}

# lock_build : waits until no other build runs in this folder and locks it (file descriptor 9) until
# unlock_build.
lock_build() {
    mkdir -p "$project/build"
    exec 9>"$project/build/.build.lock"
    wait_for_lock 9
}

unlock_build() { exec 9>&-; }

# lock_tests : the same for ./test as a whole, until it ends (file descriptor 8).
lock_tests() {
    mkdir -p "$project/build"
    exec 8>"$project/build/.test.lock"
    wait_for_lock 8
}

wait_for_lock() {
    flock -n "$1" && return 0
    say "waiting for another ./run or ./test in this folder"
    flock "$1"
}
