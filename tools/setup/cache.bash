# What takes minutes to make and is the same for every clone on a machine: it is kept under
# ${XDG_CACHE_HOME:-$HOME/.cache}/qxsh, which may be removed at any time. Also: Tcl 8.5's sources,
# which Debian does not have. Relies on common.bash.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this

# cache_folder NAME INPUT... : prints where the thing NAME, made of these inputs, is kept. An input
# is a file, which counts by its content, or a word.
cache_folder() {
    local name=$1 input hash
    shift
    hash=$(for input; do
        if [[ -f $input ]]; then sha256sum <"$input"; else printf '%s\n' "$input"; fi
    done | sha256sum)
    printf '%s/qxsh/%s-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$name" "${hash:0:16}"
}

# cached WHAT FOLDER LOG FUNCTION : unless FOLDER is there, runs `FUNCTION FOLDER.new`, where a new
# folder is, and gives it that name at the end: what is there is whole. One at a time; what an
# interrupted run left is removed. To be called outside of conditions, in which the function would
# not stop at its first failing command.
cached() {
    local what=$1 folder=$2 log=$3 status=0
    [[ ! -d $folder ]] || return 0
    mkdir -p "${folder%/*}" && exec 7<"${folder%/*}" || return
    wait_for_lock 7
    if [[ ! -d $folder ]]; then
        say "$what (once on this machine; log: $log)"
        new_log "$log"
        rm -rf "$folder.new"
        mkdir "$folder.new" || return
        set +e
        (set -e; "$4" "$folder.new") </dev/null >>"$log" 2>&1 7>&- 8>&- 9>&-
        status=$?
        set -e
        ((status)) || mv "$folder.new" "$folder" || status=1
        rm -rf "$folder.new"
        ((status == 0)) || {
            last_lines "$log"
            say "$what failed; everything it printed is in $log"
        }
    fi
    exec 7<&-
    return $status
}

# find_tcl85_source : sets `tcl85_source`, the folder or archive of Tcl 8.5's sources, and
# `tcl85_sum`, which tells sources apart; fails with one line.
find_tcl85_source() {
    tcl85_source=${QXSH_TCL85_SOURCE-}
    if [[ -z $tcl85_source ]]; then
        say "$no_tcl85_source"
        return 1
    elif [[ -d $tcl85_source ]]; then
        tcl85_sum=$(cd "$tcl85_source" && find . -type f -print0 | LC_ALL=C sort -z |
            xargs -0 sha256sum | sha256sum)
    elif [[ -r $tcl85_source ]]; then
        tcl85_sum=$(sha256sum <"$tcl85_source")
    else
        say "QXSH_TCL85_SOURCE: $tcl85_source cannot be read"
        return 1
    fi
}

no_tcl85_source="Debian has no Tcl 8.5: give its sources with QXSH_TCL85_SOURCE=<folder or archive>"

# unpack_tcl85 FOLDER : puts the sources into the folder; fails with one line unless they are those
# of a Tcl 8.5.
unpack_tcl85() {
    local file
    mkdir -p "$1" || return
    if [[ -d $tcl85_source ]]; then
        cp -R "$tcl85_source/." "$1" || return
    elif ! tar -xf "$tcl85_source" -C "$1" --strip-components=1 2>/dev/null; then
        say "QXSH_TCL85_SOURCE: $tcl85_source is not an archive, or a damaged one"
        return 1
    fi
    for file in generic/tcl.h unix/configure library/init.tcl; do
        [[ -f $1/$file ]] || { say "QXSH_TCL85_SOURCE: $tcl85_source has no $file"; return 1; }
    done
    grep -qE '^#define[[:space:]]+TCL_VERSION[[:space:]]+"8\.5"' "$1/generic/tcl.h" || {
        say "QXSH_TCL85_SOURCE: $tcl85_source is not Tcl 8.5"
        return 1
    }
}

# check_tcl85_source : whether they can be unpacked and are those of a Tcl 8.5; fails with one line.
check_tcl85_source() {
    local folder status=0
    folder=$(mktemp -d) || return
    unpack_tcl85 "$folder" || status=1
    rm -rf "$folder"
    return $status
}

# How an old Tcl is compiled by a new compiler. Without -fwrapv Tcl's own formatting of -2147483648
# gives "-8" on 32 bits.
tcl85_flags="-O2 -fwrapv -fno-strict-aliasing -std=gnu89 -w"

# lead_to FOLDER NAME : lets build/sysroot/NAME lead to what is kept there.
lead_to() {
    mkdir -p "$project/build/sysroot" && ln -sfn "$1" "$project/build/sysroot/$2"
}
