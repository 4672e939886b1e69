# Package qx, what its own commands are: help, apropos, the pages and the manuals say what stands
# here. A command is three words: its usage, its purpose in a line, and what else there is to know.
# That is paragraphs between empty lines, without markup; one that begins with "% " is a session and
# keeps its lines. A group of commands is a topic of qx::help, a title and its commands; the names
# of a group in a namespace of its own begin with its topic. What is beside the package, packages
# and programs, has the same three words.

namespace eval qx::commands {
    variable groups {
        help {Help} {
            {qx::help ?name?}
            {describe a command, a record, a field, a status, a handle or one of these} {
                The name may be that of a command, a record, an area, a status (also its number), a
                field (qx_vlan_t.vlan_id, also by its path in a record), an argument
                (qx_flow_add.p_flow), a table, a command of this package, or a handle: its record
                is described. Case does not count, and qx_, qx:: and _t may be left out: vlan,
                IPsec.

                % qx::help vlan

                An unknown name is an error with the code QX UNKNOWN name NAME; the message lists
                the three nearest.
            }
            {qx::apropos word ?word ...?}
            {list everything with all of the words in its name or description} {
                Found are areas, records, fields, SDK functions and other commands, tables,
                statuses, and the commands of this package. Those in which all words are whole come
                first. Case does not count. Each name in the list is a topic of qx::help.

                % qx::apropos nat subnet
            }
            {qx::areas} {list the areas of the SDK} {}
            {qx::page text} {show a text a screenful at a time} {
                With the program in PAGER, else less or more. A text that fits the terminal is
                returned, also where there is no terminal, a dumb one, or no such program.

                % qx::page [qx::apropos flow]
            }
        }
        data {Calls and records as data} {
            {qx::call ?-allow statuses? ?-status name? ?-dict? ?-words? function ?word ...?}
            {call an SDK function with records as dicts, and return what it puts out} {
                The words are the arguments that the function reads, in their order. A record is a
                dict or a handle, an array a list of them; its size may be left out. The result is
                empty, or the one value that the function writes: a number, or a record as a dict.
                With -dict it is a dict by the arguments' names. A code may be given by its word in
                the profile, and comes as a word with -words.

                A status other than 0 is the error of qx::check. -allow makes the listed statuses no
                error, -status puts the status into a variable. All memory that the call takes is
                given back, whatever happens.

                % qx::call qx_flow_add 0 {flow_id 7 ingress_pkt {da_ip 198.51.100.7}}
            }
            {qx::new record ?dict?} {create a record and return its handle} {
                The fields that the dict names are set, the others are 0. The handle is released
                with qx_data_free.
            }
            {qx::with name record ?dict? body} {run the body with a new record, and release it} {
                The variable holds the handle. The record is released behind the body, whether that
                ends normally, in an error, or with break, continue or return.

                % qx::with flow qx_flow_t {flow_id 7} { qx_flow_add 0 $flow }
            }
            {qx::get handle ?path? ?-view views? ?-raw? ?-words?}
            {return a record as a dict, or one value} {
                A nested record is a dict, an array a list; MAC and IP addresses are in their usual
                notation, with -raw everything is numbers. Of a union the view is shown that a
                number of the record chooses (protocol, type), or those that -view names; * shows
                all. What it does not show is added where it is not zero. A path names one value:
                ingress_pkt.tag(0).vlan_id. With -words a code is the word that the profile has for
                it.
            }
            {qx::set handle dict|-json text|path value ?path value ...?}
            {write the named fields of a record} {
                The whole dict is checked before anything is written; an error names the place of
                the mistake and has the code QX VALUE PLACE. A shorter list sets the first elements
                of an array. Bytes may be 0x and hexadecimal digits, an address with its family one
                word, 10.0.0.0/8, a code its word in the profile.

                % qx::set $flow flow_id 8 ingress_pkt.da_ip 198.51.100.8
            }
            {qx::template record ?-view views? ?-raw? ?-words?}
            {return the dict of a record that is all zero} {}
            {qx::diff handle handle ?-view views? ?-raw? ?-words?}
            {list where two records differ, byte by byte} {
                The result is a dict, path to value in the first record and value in the second.
                Bytes in no field are padding(OFFSET), which is also a path for qx::get and
                qx::set.
            }
            {qx::json handle ?-view views? ?-raw? ?-words?} {return a record as JSON} {}
            {qx::apply file} {make the SDK calls that a JSON file lists} {
                The file is a list of objects: the function in call, its words as for qx::call in
                args, in allow the statuses that are not failures, in save a name for the result;
                later calls write "$name" or "$name.path". All words that do not depend on results
                are checked before the first call. The first failure ends it. The result is the
                number of calls, or a dict of what was saved.
            }
        }
        statuses {Statuses and mistakes} {
            {qx::check ?-allow statuses? command ?word ...?|script}
            {make a status other than 0 an error} {
                With one word, a script, every SDK function is checked that runs while the script
                does, also inside procedures and in events that it waits for. The error code is
                QX_STATUS NUMBER NAME. -allow lists statuses, by name or number, that are returned
                as results.

                % qx::check -allow QX_EXISTS qx_flow_add 0 $flow
            }
            {qx::why} {explain the last command that failed} {}
            {qx::profile ?file?}
            {read a profile of statuses and code words, or name the one in use} {
                A profile says what statuses and codes of an SDK library mean; the default one is
                that of the simulator, QX_PROFILE names another. An empty name returns to the
                default. A wrong line is an error with the code QX PROFILE FILE LINE.
            }
            {qx::watch ?on|off?} {record the words of failing commands, for qx::why} {
                Without a word it says whether it is on. It costs time with every SDK call and is
                meant for the prompt.
            }
            {qx::lint script.tcl} {find mistakes in a script's commands, without running it} {
                The result is a list of FILE:LINE: MESSAGE, for unknown names, wrong numbers of
                arguments, constants out of range, handles of the wrong type and released handles.
            }
        }
        recording {SDK calls while they happen} {
            {qx::trace ?on|off|stat? ?pattern?}
            {print a line for each SDK call, and count them} {
                The line goes to stderr: the call's number, the arguments by name, codes as the
                words of the profile, of a record the fields that are not zero, behind the arrow the
                status, what the call has put out, and microseconds. Keys are shown by their
                length. The pattern chooses functions by name, * being any letters. A call that
                the command has refused was none.

                % qx::trace on qx_l3_*

                stat returns calls, failures and times by function, since the trace was switched on
                last. Without a word: whether it is on, and the pattern.
            }
            {qx::record ?file|off? ?-force? ?-keys?}
            {write each SDK call to a recording, or end that} {
                What scripts call from now on is written as qxsh-record does it, for qx-trace and
                qxsh-replay. A file that is there already is an error, and replaced with -force.
                Keys are fingerprints, with -keys themselves. A name that ends in .gz is compressed,
                where that was built in. off ends the recording and returns the number of calls in
                it. Without a word: the file that is being written.

                % qx::record board.jsonl
            }
        }
        tables {Tables of a device} {
            {qx::list ?table? ?-device n? ?-key value ...? ?-words? ?-raw?}
            {list the rows of a table as dicts} {
                A row has the arguments that lead to it, then what the SDK function puts out, by the
                arguments' names. The device is 0 if none is given. An index or a key is an option:
                a number, first..last, or a code word. A status that does not belong to the walk is
                the error of qx::check, and so is the end of the table if an option asks for what
                lies behind it. Where the SDK reads entries only by ids that it has assigned, all
                ids of the profile are tried, or those of the simulated device; qx::help of the
                table says which. Without a table: all tables and what they hold.

                % qx::list l2tp_prefixes -tunnel_id 0x06000001 -session_id 17

                -words and -raw are those of qx::get.
            }
            {qx::show ?table|handle? ?-device n? ?-key value ...? ?-view views? ?-all? ?-json?}
            {show a table in columns, or a record as a tree} {
                Columns and fields that are zero are left out unless -all is given. Columns that do
                not fit the terminal, which counts as 40 columns at least, follow below. Keys are
                shown by their length. -json gives all of it as JSON, keys included. -view is that
                of qx::get, for a record.

                % qx::show flows -hash_index 0..100
            }
            {qx::graph file ?-device n?} {draw who holds whom on a device} {
                The file ends in .svg, which takes Graphviz's program dot, or in .dot, which takes
                nothing.
            }
        }
        qx::sim {The simulated device, on request} {
            {qx::sim::attach ?file?} {control the simulator through a control file} {
                Without a file it is the one in QX_SIM_CONTROL, or the one attached last. Every
                other command that changes the simulator needs it.
            }
            {qx::sim::detach} {end all settings and remove the control file} {}
            {qx::sim::fault pattern when status} {make calls of some functions fail} {
                The pattern is a function's name, or has * for any letters. When is 3, the third
                such call; 3+, that and all later ones; or *, every one. The status is a name or a
                number.

                % qx::sim::fault qx_flow_add 1 QX_TABLE_FULL
            }
            {qx::sim::latency pattern microseconds} {make calls of some functions slow} {}
            {qx::sim::log file} {log every call as a line of JSON} {}
            {qx::sim::keys onoff} {write keys out in logs and snapshots, or not} {}
            {qx::sim::fired} {list the faults in force and how many calls each has answered} {}
            {qx::sim::expect_fired} {check that every fault in force has answered a call} {}
            {qx::sim::clear} {end all faults, latencies and the log} {}
            {qx::sim::reset} {return all devices to their initial state} {}
            {qx::sim::snapshot ?file?}
            {write or return the configuration of all devices as JSON} {
                Two devices with the same configuration give the same text, whatever the order in
                which it was made.
            }
            {qx::sim::state ?file?} {the same with clocks, counters and table usage} {}
            {qx::sim::save file} {write all devices with their keys to a file, for restore} {}
            {qx::sim::restore file} {replace all devices by those that save has written} {}
            {qx::sim::flow_key flow} {return the bytes that the flow table hashes} {}
            {qx::sim::flow_slot flow} {return the flow's hash slot in the flow table} {}
            {qx::sim::flow_slots flow} {return the slots in which the flow may be, in order} {}
            {qx::sim::find_flow device flow}
            {return the slot that holds a flow on a device, or -1} {}
        }
        qx::catalogue {The SDK's facts, for scripts} {
            {qx::catalogue subcommand ?word ...?}
            {return facts about areas, records, SDK functions, commands and statuses} {
                An ensemble: qx::catalogue record qx_vlan_t and qx::catalogue::record qx_vlan_t are
                the same. An unknown name is an error with the code QX UNKNOWN KIND NAME.

                Type words are u8 u16 u32 i32 u64, the name of a record, one of these with * for a
                pointer, void*; as a result also none, status, and low32, the low half of a 64-bit
                number.
            }
            {qx::catalogue::areas} {the names of all areas} {}
            {qx::catalogue::area name} {an area, a dict: text, records, calls} {}
            {qx::catalogue::records} {the names of all records} {}
            {qx::catalogue::record type}
            {a record, a dict: kind, size, packed, area, text, fields} {
                Each field is a dict: name, offset, type, bit, width, count, text, dumped, holds,
                set_as, range.
            }
            {qx::catalogue::is_record type} {whether there is such a record} {}
            {qx::catalogue::field type name} {one field of a record} {}
            {qx::catalogue::holders type} {the fields of this type: record and field by turns} {}
            {qx::catalogue::stem type} {the beginning of the names of a record's commands} {}
            {qx::catalogue::calls} {the names of all SDK functions} {}
            {qx::catalogue::call name} {an SDK function, a dict: text, area, arguments} {
                Each argument is a dict: name, type, direction, text, range.
            }
            {qx::catalogue::tables} {the names of the tables that qx::list knows} {}
            {qx::catalogue::table name} {a table, a dict: how it is walked} {
                The keys are area, text, parts, keys, giver, instead, node, holds; the comments in
                library/qx/catalogue.tcl describe them.
            }
            {qx::catalogue::call_argument call name} {one argument of an SDK function} {}
            {qx::catalogue::calls_with type}
            {the SDK functions that take a pointer to this type} {}
            {qx::catalogue::commands} {the names of all commands} {}
            {qx::catalogue::is_command name} {whether there is such a command} {}
            {qx::catalogue::command name} {a command: its facts, text and argument_texts} {}
            {qx::catalogue::facts name} {a command, a dict: how it is made and what it takes} {
                The keys are name, area, shape, owner, field, arguments (names and type words by
                turns), result (a type word), usage.
            }
            {qx::catalogue::commands_of owner} {the commands of a record, a call or a cell type} {}
            {qx::catalogue::field_of command argument}
            {the field that an argument of a record's command sets} {}
            {qx::catalogue::bounds command argument type}
            {the numbers that an argument accepts, a dict: taken, every, kept, meant} {}
            {qx::catalogue::field_range field} {a field's least and greatest meaningful number} {}
            {qx::catalogue::range type ?width?} {the least and greatest number of a type} {}
            {qx::catalogue::converted type}
            {the least and greatest number that is converted to a type without an error} {}
            {qx::catalogue::is_pointer type} {whether a type word is that of a pointer} {}
            {qx::catalogue::target type} {the type word that a pointer points to} {}
            {qx::catalogue::native type} {the native spelling of a type word} {}
            {qx::catalogue::type_size type} {the size of a type in bytes} {}
            {qx::catalogue::cell type} {the word of a type's cell commands} {}
            {qx::catalogue::statuses} {the statuses of the profile: number -> name and meaning} {}
            {qx::catalogue::status_name number} {the name of a status; empty if it has none} {}
            {qx::catalogue::status_number name} {the number of a status} {}
            {qx::catalogue::status_meaning number} {the meaning of a status} {}
            {qx::catalogue::code_words owner name}
            {the code words of a field or an argument: word -> number} {
                The owner is a record or an SDK function.
            }
            {qx::catalogue::code_word owner name number} {the word for a number, or nothing} {}
            {qx::catalogue::code_number owner name word} {the number of a word, or nothing} {}
            {qx::catalogue::capacity name}
            {how many entries a table holds, or how many ports or devices there are} {
                The names of tables are those in docs/simulator.md. Empty if the profile does not
                say.
            }
            {qx::catalogue::answers call}
            {what the simulated device answers to a call, a dict: statuses, when, usual} {}
            {qx::catalogue::special owner name}
            {what certain values of a field or an argument mean: value and meaning by turns} {}
            {qx::catalogue::call_example call}
            {the example of a call, a dict: words, result, before} {}
            {qx::catalogue::nearest word names ?count?} {the names most similar to a word} {}
            {qx::catalogue::like word names} {the same for a message, or nothing} {}
        }
    }
    variable beside {
        qx::test {package: test a bring-up, with a clean device around each test} {
            tcltest with constraints sim and board, TAP and JUnit reports, and a simulator that has
            to be configured after each test as it was before. docs/testing.md describes the
            package.

            % package require qx::test
            % namespace import qx::test::*
            % test none "no flow" { expect_status QX_NO_FLOW { qx_flow_delete 0 7 } }
            % cleanupTests

            Also: expect_record HANDLE|DICT FIELDS names each field with another value,
            accept_device takes the device as it is for clean. Words of a test file: -tap,
            -junit FILE, tcltest's options.
        }
        qx-run {program: run scripts for CI, up to the first error or failed status} {
            qx-run ?--sim? ?-c COMMANDS? ?-e? ?--? ?FILE ...? is beside the shell. The exit status
            is 1 after an error, and 2 if a file cannot be read. qx-run(1) and docs/testing.md
            describe it.
        }
    }
}

# The topics of all groups.
proc qx::commands::topics {} {
    variable groups
    set topics {}
    foreach {topic title entries} $groups { lappend topics $topic }
    return $topics
}

# A group, a dict: title, commands.
proc qx::commands::group {topic} {
    variable groups
    foreach {each title entries} $groups {
        if {$each ne $topic} continue
        set names {}
        foreach {usage purpose text} $entries { lappend names [lindex $usage 0] }
        return [dict create title $title commands $names]
    }
}

# What is beside the package, by name: a dict of usage (the name), purpose, text.
proc qx::commands::others {} {
    variable beside
    set others {}
    foreach {name purpose text} $beside {
        dict set others $name [dict create usage $name purpose $purpose text [paragraphs $text]]
    }
    return $others
}

# All commands, by name: a dict of usage, words (the usage less the name), purpose, text, group.
proc qx::commands::all {} {
    variable groups
    variable known
    if {![info exists known]} {
        foreach {topic title entries} $groups {
            foreach {usage purpose text} $entries {
                set name [lindex $usage 0]
                dict set known $name [dict create usage $usage \
                    words [string trim [string range $usage [string length $name] end]] \
                    purpose $purpose text [paragraphs $text] group $topic]
            }
        }
    }
    return $known
}

# How many words a command takes, from its usage: the least and the most; the most is empty if there
# is no limit. A bar outside question marks separates two ways to call it.
proc qx::commands::word_counts {name} {
    set words [dict get [all] $name words]
    regsub -all {\?([^?]*)\?} $words {} needed
    set needed [string map {| " | "} $needed]
    set least [lsearch -exact [concat $needed |] |]
    if {[string first ... $words] >= 0 || "|" in $needed} { return [list $least {}] }
    return [list $least [llength [string map {? { }} $words]]]
}

# A text as a list of paragraphs, kind (text or session) and content by turns. A session keeps its
# lines, without the indentation of the first.
proc qx::commands::paragraphs {text} {
    set result {}
    regsub -all {\n[ \t]*\n\s*} [string trim $text] \x01 text
    foreach part [split $text \x01] {
        if {[string match {% *} $part]} {
            if {[regexp {\n( +)} $part -> margin]} { regsub -all \n$margin $part \n part }
            lappend result session $part
        } else {
            lappend result text [regsub -all {\s+} $part { }]
        }
    }
    return $result
}
