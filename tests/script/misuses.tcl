# The probes that misuse memory on purpose, and what they meet when the suite runs under strict
# memory. Each row: the case, the command as the case has it, the category of the error, what its
# message has behind "argument <n>" (a pattern). Without strict memory nothing looks at this.

namespace eval misuses {
    variable rows {
        edges_ipsec-iv-length {qx_uint32_get [string range $sa 0 8]_p_unsigned_int}
            SystemError { 1: there is no unsigned int \* at byte 0 of block *}
        edges_ipsec-iv-length {qx_uint32_array_get [string range $sa 0 8]_p_unsigned_int 19}
            SystemError { 1: there is no unsigned int \* at byte 0 of block *}
        edges_ipsec-reserved-bit {qx_uint32_array_get [string range $sa 0 8]_p_unsigned_int 19}
            SystemError { 1: there is no unsigned int \* at byte 0 of block *}
        edges_sdk_calls-sa-count {qx_ipsec_sa_add 0 1 2 255 $sas 0 $cell}
            SystemError { 5: access outside a block, at byte 272 of block *}
        handles-any-type {qx_data_free _0000000x_p_qx_flow_t}
            TypeError { 1 of type 'void \*'}
        handles-any-type {qx_data_free _}
            TypeError { 1 of type 'void \*'}
        handles-any-type {qx_data_free _zzzzzzzz}
            TypeError { 1 of type 'void \*'}
        handles-script-text {qx_flow_get_flow_id {[string range xquietx 1 5]}}
            TypeError { 1 of type 'qx_flow_t \*'}
        records-cpu-run-whole {set_word $info 8 65536; qx_pm_cpu_info_get_cpu_run $info 1}
            SystemError { 1: there is no unsigned int \* at byte 0 of block *}
        records-cpu-run-whole {set_word $info 8 4294967295; qx_pm_cpu_info_get_cpu_run $info 1}
            SystemError { 1: there is no unsigned int \* at byte 0 of block *}
    }
}

# {category pattern} for a probe that strict memory refuses; {} for the others, and without strict
# memory.
proc misuses::of {case command} {
    variable rows
    if {!$::harness::strict} return
    foreach {name probe category rest} $rows {
        if {$name eq $case && $probe eq $command} {
            return [list $category "$category in method '*', argument$rest"]
        }
    }
}
