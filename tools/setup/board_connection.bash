# How tools/on_board and bench/run --on reach a board: the connection, the copy of a build, the
# first start of its shell. Relies on `project`, on `program`, the name in messages, and on ssh.
# Both machines have the copy in a folder of the same name, so that paths are valid on both. The
# board removes it when the connection ends in any way: board_side.sh. Programs are started through
# launch_on_board.
# shellcheck disable=SC2154 # variables of the script that sources this

# give_up TEXT : ends with one line that says what is wrong.
give_up() {
    printf '%s: %s\n' "$program" "$1" >&2
    exit 2
}

# last_line FILE : the last line of a program's output, its reason for ending.
last_line() { grep -v '^[[:space:]]*$' "$1" 2>/dev/null | tail -n 1 | tr -d '\r'; }

# cached NAME : the value of a variable in the build's CMake cache.
cached() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt" 2>/dev/null || true; }

# use_ssh WORDS : sets ssh, the command.
use_ssh() {
    read -ra ssh <<<"$1"
    command -v "${ssh[0]-}" >/dev/null || give_up "cannot find the ssh program ${ssh[0]-}"
}

# board_build : sets build, if it is empty, to the project's own build for a board.
board_build() {
    [[ -z $build ]] || return 0
    build=$project/build/board
    [[ -d $build ]] || build=$project/build/armhf
}

launcher=$project/tools/setup/launch_on_board
# To be undone at the end, whatever the reason.
folder='' state='' beating='' connected='' running=''
clear_away() {
    trap '' HUP INT TERM
    exec 2>/dev/null # hides bash's messages about killed jobs
    [[ -z $running ]] || kill -s KILL -- "-$running" || true
    if [[ -n $connected ]]; then
        # At the end of its input the board cleans up and closes the connection.
        [[ -z $beating ]] || kill "$beating" || true
        exec {board}>&-
        for ((i = 0; i < 150; ++i)); do
            kill -0 "$connected" || break
            sleep 0.1
        done
        kill "$connected" || true
        wait || true
    fi
    [[ -z $folder ]] || rm -rf "$folder"
    [[ -z $state ]] || rm -rf "$state"
}

# connect PARENT : connects to `host`. Sets folder, below PARENT and empty, and state, for
# launch_on_board; the script's end undoes all.
connect() {
    local parent=$1 keep beat status=0
    trap clear_away EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM

    folder=$(mktemp -d "$parent/qxsh-on-board.XXXXXXXX" 2>/dev/null) ||
        give_up "$parent is not a writable folder on this machine"
    [[ $folder =~ ^/[-A-Za-z0-9_./]+$ && $folder == "$(realpath "$folder")" ]] ||
        give_up "$parent is not a plain absolute path without links"
    state=$(mktemp -d /tmp/qxsh-ssh.XXXXXXXX)
    ssh+=(-o BatchMode=yes -o LogLevel=ERROR -o ConnectTimeout=15 -o ServerAliveInterval=5 -o
        ServerAliveCountMax=3 -o "ControlPath=$state/ssh")
    keep="exec sh -c '$(sed "s/'/'\\\\''/g" "$project/tools/setup/board_side.sh")' sh $folder keep"

    # Ctrl-C must not end it: the board still has to clean up.
    exec {board}> >(trap '' INT && exec "${ssh[@]}" -o ControlMaster=yes "$host" "$keep" \
        >"$state/said" 2>"$state/errors")
    connected=$!
    until [[ -s $state/said ]] || ! kill -0 $connected 2>/dev/null; do sleep 0.05; done
    if [[ $(cat "$state/said") != ready ]]; then
        wait $connected || status=$?
        connected=''
        ((status == 255)) || give_up "$host cannot create $folder: $(last_line "$state/errors")"
        give_up "$host cannot be reached: $(last_line "$state/errors")"
    fi
    (
        beat=0
        exec 1>&"$board" {board}>&-
        while kill -0 $$; do
            echo $((++beat)) || exit
            sleep 5 >/dev/null
        done
    ) 2>/dev/null &
    beating=$!
    ssh+=(-o ControlMaster=no "$host")
    {
        printf '%s=%q\n' folder "$folder" host "$host" program "$program"
        printf 'ssh=('
        printf '%q ' "${ssh[@]}"
        printf ')\n'
    } >"$state/connection"
}

# pack PART... : what the board needs of the build, below folder/build: the libraries and these
# parts. Debug information would take most of the time and the space.
pack() {
    local part strip
    cp "$project/tools/setup/board_side.sh" "$folder"
    mkdir "$folder/build" "$folder/build/lib"
    for part in "$@"; do cp -R "$build/$part" "$folder/build"; done
    for part in "$build"/lib/{*.so,*/}; do
        [[ ! -e $part ]] || cp -R "$part" "$folder/build/lib"
    done
    strip=$(cached CMAKE_STRIP)
    [[ ! -x $strip ]] ||
        find "$folder/build" -type f \( -name '*.so' -o -name qxsh \) -exec "$strip" {} + \
            2>/dev/null || true
}

# send PLACE : copies the folder to the board and starts the shell there, in folder/PLACE.
send() {
    local answer
    tar -C "$folder" -c --format=ustar --owner=0 --group=0 -f - . |
        "${ssh[@]}" "cd $folder && tar -x -o -f -" >/dev/null 2>"$state/errors" ||
        give_up "cannot copy $(du -sh "$folder" | cut -f 1) to $host: $(last_line "$state/errors")"
    # Tcl's script library is searched for only when the shell starts.
    answer=$(cd "$folder/$1" && "$launcher" "$state" "HOME=$folder" \
        "$folder/build/bin/qxsh" 2>"$state/errors" <<<'puts [package present demo]') || true
    [[ $answer == 0.0 ]] || give_up \
        "the shell does not start on $host: $(grep -m 1 . "$state/errors" || echo "no reason")"
}
