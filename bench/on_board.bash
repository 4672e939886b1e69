# ./bench/run --on HOST: the times of the loops on a machine that ssh reaches, beside the PC's.
# Copies a build, build/board or build/armhf unless FOLDER is named, with what measures it; the
# board keeps nothing. Instructions are not counted there. Relies on bench/build.bash, and on
# `host`, `build`, `rounds`, `log` and `jobs`.
# shellcheck disable=SC2154 # variables of the script that sources this

program=bench/run
# shellcheck source=tools/setup/board_connection.bash
source "$project/tools/setup/board_connection.bash"

measure_on_board() {
    local name measuring
    need_packages run test || give_up "not installed: ${missing[*]}"
    use_ssh "${QXSH_SSH:-ssh}"
    board_build
    [[ -x $build/bin/qxsh && -e $build/generated/include/qx_sdk.h ]] ||
        give_up "$build does not contain a build of the shell for $host"
    build=$(cd "$build" && pwd -P)
    connect /tmp
    new_log "$log"
    # Not those of ./bench/gate, which need Valgrind on the PC.
    measuring=on-${build##*/}
    build_tools "$measuring" "$build" floor whole_flow idle_sdk ||
        give_up "the measurements cannot be built (see $log)"

    pack bin
    mkdir "$folder/bench" "$folder/rounds" "$folder/build/bench"
    for name in time loops rows; do cp "$project/bench/$name.tcl" "$folder/bench"; done
    cp -R "$project/build/bench/$measuring"/{floor.so,whole_flow.so,idle} "$folder/build/bench"
    send rounds
    tclsh8.6 "$project/bench/board_times.tcl" "$launcher" "$state" "$folder" "$rounds" </dev/null
}
