# What ./bench/run and ./bench/gate share: builds of the shell and of what measures it. Relies on
# tools/setup/common.bash, on `log`, a log file, and on `jobs`.
# shellcheck disable=SC2154 # variables of the script that sources this

# build_target PRESET : the shell, the package and the measuring extensions, in build/PRESET and
# build/bench/PRESET.
build_target() {
    local preset=$1 folder=$project/build/$1 status=0
    lock_build
    # The tests are built by ./test; a folder that was configured with them is used as it is.
    { configured "$preset" || configure "$preset" "$log" -DBUILD_TESTING=OFF; } &&
        logged "building preset '$preset'" "$log" \
            cmake --build "$folder" -j "$jobs" --target qxsh demo &&
        build_tools "$preset" || status=1
    unlock_build
    return $status
}

# build_tools NAME [BUILD [TARGET...]] : what measures the shell of build/NAME, or of the folder
# BUILD, in build/bench/NAME, with the same compiler; all of it, or these targets.
build_tools() {
    local name=$1 build=${2:-$project/build/$1} folder=$project/build/bench/$1
    local options=() targets=() key value
    (($# < 3)) || targets=(--target "${@:3}")
    while IFS='=' read -r key value; do
        options+=("-D${key%:*}=$value")
    done < <(grep -E '^(CMAKE_TOOLCHAIN_FILE|QXSH_BOARD_\w+|QXSH_TCL_VERSION):[^=]*=.' \
        "$build/CMakeCache.txt")
    grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project/bench" "$folder/CMakeCache.txt" ||
        options+=(--fresh)
    logged "configuring the measurements for '$name'" "$log" \
        cmake "${options[@]}" -S "$project/bench" -B "$folder" -G Ninja \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQXSH_BUILD="$build" &&
        logged "building the measurements for '$name'" "$log" \
            cmake --build "$folder" -j "$jobs" "${targets[@]}"
}

# build_critcl : the peer that critcl compiles.
build_critcl() {
    local folder=$project/build/bench/release/critcl
    mkdir -p "$folder"
    logged "building the critcl peer" "$log" critcl -I "$project/build/release/generated/include" \
        -L "$project/build/bench/release/idle" -pkg -cache "$folder/cache" -libdir "$folder" \
        "$project/bench/peers/cprocs.tcl"
}
