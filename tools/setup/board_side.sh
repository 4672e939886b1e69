#!/bin/sh
# The board's side of board_connection.bash and launch_on_board, working in FOLDER: sh
# board_side.sh FOLDER WORK [WORD...]. Relies on a POSIX sh and its utilities, and on tar; with
# /proc, processes that left their session are found as well.
#
#   keep               makes FOLDER, says `ready` and keeps it for as long as its standard input
#                      lives and brings a line a minute; then ends what runs and removes FOLDER
#   take PLACE         PLACE (below FOLDER) becomes what the archive on standard input holds
#   run PLACE HOW [NAME=VALUE...] PROGRAM [WORD...]
#                      runs the program in PLACE. Letters in HOW: i, its input is empty; o, it has
#                      no standard output; m, both outputs are one
#   give PLACE         an archive of what is new in PLACE since it was taken, nothing if nothing is;
#                      .gone in it lists the files that are no more

folder=$1
work=$2
shift 2
umask 077
# All programs started from here on have it in their environment.
QXSH_ON_BOARD=$folder
export QXSH_ON_BOARD

# The names of the files below the current folder.
files() { find . -type f; }

# Ends one of our processes and the others in its session.
end() { kill -s KILL -- "-$1" 2>/dev/null || kill -s KILL "$1" 2>/dev/null; }

clear_away() {
    trap '' HUP INT PIPE TERM
    cd /
    for each in "$folder"/runs/*; do
        [ "$each" = "$folder/runs/*" ] || end "${each##*/}"
    done
    # shellcheck disable=SC2013 # one word a process
    for each in $(grep -l "QXSH_ON_BOARD=$folder" /proc/[0-9]*/environ 2>/dev/null); do
        each=${each#/proc/}
        each=${each%/environ}
        end "$each"
    done
    rm -rf "$folder"
}

# A connection may die silently: after a minute without a line it counts as lost.
watch() {
    trap 'kill "$sleeping"; exit' TERM
    before=none
    while :; do
        sleep 60 &
        sleeping=$!
        wait "$sleeping"
        heard=$(cat "$folder/heard" 2>/dev/null)
        [ "$heard" = "$before" ] && break
        before=$heard
    done
    clear_away
    kill -s KILL $$
}

keep() {
    mkdir -m 700 "$folder" && mkdir "$folder/runs" "$folder/taken" || exit 3
    trap 'clear_away; exit 1' HUP INT PIPE TERM
    watch </dev/null >/dev/null 2>&1 &
    watching=$!
    echo ready
    while read -r heard; do echo "$heard" >"$folder/heard"; done
    kill "$watching"
    clear_away
}

take() {
    rm -rf "${folder:?}/$1" "$folder/taken/$1"
    mkdir -p "$folder/$1" "$folder/taken/$1" && cd "$folder/$1" && tar -x -o -f - &&
        cp -R . "$folder/taken/$1"
}

run() {
    cd "$folder/$1" || exit 125
    how=$2
    shift 2
    : >"$folder/runs/$$"
    case $how in *i*) exec </dev/null ;; esac
    case $how in *m*) exec 2>&1 ;; esac
    case $how in *o*) exec >&- ;; esac
    # Keeps the shell from printing a message about a signal: only the program may print.
    exec 3>&2 2>/dev/null
    env "$@" 2>&3 3>&-
    status=$?
    rm -f "$folder/runs/$$"
    exit $status
}

give() {
    cd "$folder/taken/$1" && gone=$(files | while IFS= read -r file; do
        [ -e "$folder/$1/$file" ] || printf '%s\n' "$file"
    done) && cd "$folder/$1" || exit 125
    files | while IFS= read -r file; do
        if cmp -s "$file" "$folder/taken/$1/$file"; then rm -f "$file"; fi
    done
    [ -z "$gone" ] || printf '%s\n' "$gone" >.gone
    # Includes folders: a program may have created one.
    if [ -n "$(files)" ] || [ "$(find . -type d)" != "$(cd "$folder/taken/$1" && find . -type d)" ]
    then
        tar -c -f - .
    fi
}

"$work" "$@"
