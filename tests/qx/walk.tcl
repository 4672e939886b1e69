# Runs inside the shell: a record field by field, through the commands of its fields alone. What the
# package reads and writes in one go is compared with it.

# Calls a script for each number in a record: the words of its getter and of its setter without the
# value, the width in bits, the path.
proc each_number {type handle path script} {
    set stem [qx::catalogue::stem $type]
    foreach field [dict get [qx::catalogue::record $type] fields] {
        foreach key {name count width} { set $key [dict get $field $key] }
        set inner [dict get $field type]
        set nested [qx::catalogue::is_record $inner]
        for {set index 0} {$index < max(1, $count)} {incr index} {
            set place [expr {$count ? $index : {}}]
            set here [concat $path [list $name] $place]
            if {$nested} {
                each_number $inner [eval [list ${stem}_get_$name $handle] $place] $here $script
                continue
            }
            # A setter may take less than its element holds.
            set narrow [dict get $field set_as]
            if {$narrow eq {}} { set narrow $inner }
            if {!$width} { set width [expr {8 * [qx::catalogue::type_size $narrow]}] }
            {*}$script [concat [list ${stem}_get_$name $handle] $place] \
                [list ${stem}_set_$name $handle] $place $width $here
        }
    }
}

proc randomise {get set index width path} {
    eval $set [expr {wide(rand() * (wide(1) << $width))}] $index
}
proc fill {type handle} { each_number $type $handle {} randomise }

proc collect {get set index width path} { lappend ::collected $path [eval $get] }
proc numbers {type handle} {
    set ::collected {}
    each_number $type $handle {} collect
    return $::collected
}

# The number at a path of a dict whose arrays are lists.
proc at {type value path} {
    while {$path ne {}} {
        set field [qx::catalogue::field $type [lindex $path 0]]
        set value [dict get $value [lindex $path 0]]
        set path [lrange $path 1 end]
        if {[dict get $field count]} {
            set value [lindex $value [lindex $path 0]]
            set path [lrange $path 1 end]
        }
        set type [dict get $field type]
    }
    return $value
}

proc fresh {type} { [qx::catalogue::stem $type]_create }
