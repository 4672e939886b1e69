# The cache for things that take minutes to make and are the same for every clone on a machine:
# ${XDG_CACHE_HOME:-$HOME/.cache}/qxsh, which may be removed at any time. Also: Tcl 8.5's sources,
# which Debian does not have. Relies on common.bash.
# shellcheck disable=SC2034,SC2154 # variables are shared with the script that sources this

# cache_folder NAME INPUT... : prints the cache folder of NAME made from these inputs. An input is a
# file, identified by its content, or a word.
cache_folder() {
    local name=$1 input hash
    shift
    hash=$(for input; do
        if [[ -f $input ]]; then sha256sum <"$input"; else printf '%s\n' "$input"; fi
    done | sha256sum)
    printf '%s/qxsh/%s-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$name" "${hash:0:16}"
}

# cached WHAT FOLDER LOG FUNCTION : unless FOLDER exists, runs `FUNCTION FOLDER.new` with a new
# folder and renames it at the end, so an existing FOLDER is complete. Runs one at a time; leftovers
# of an interrupted run are removed. Not to be called in a condition, in which the function would
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
            say "$what failed; its output is in $log"
        }
    fi
    exec 7<&-
    return $status
}

# find_tcl85_source : sets `tcl85_source`, the folder or archive of Tcl 8.5's sources, and
# `tcl85_sum`, their checksum; fails with one line.
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

# unpack_tcl85 FOLDER : puts the sources into the folder; fails with one line unless they are Tcl
# 8.5's.
unpack_tcl85() {
    local file
    mkdir -p "$1" || return
    if [[ -d $tcl85_source ]]; then
        cp -R "$tcl85_source/." "$1" || return
    elif ! tar -xf "$tcl85_source" -C "$1" --strip-components=1 2>/dev/null; then
        say "QXSH_TCL85_SOURCE: $tcl85_source is not an archive, or is damaged"
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

# check_tcl85_source : checks that they can be unpacked and are Tcl 8.5's; fails with one line.
check_tcl85_source() {
    local folder status=0
    folder=$(mktemp -d) || return
    unpack_tcl85 "$folder" || status=1
    rm -rf "$folder"
    return $status
}

# Options to compile an old Tcl with a new compiler. Without -fwrapv Tcl formats -2147483648 as "-8"
# on 32 bits.
tcl85_flags="-O2 -fwrapv -fno-strict-aliasing -std=gnu89 -w"

# lead_to FOLDER NAME : makes build/sysroot/NAME a link to the cache folder.
lead_to() {
    mkdir -p "$project/build/sysroot" && ln -sfn "$1" "$project/build/sysroot/$2"
}
