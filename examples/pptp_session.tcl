# A PPTP session: one half for each direction, with keys that change in step, and the GRE tunnel
# that carries it.
# Run it with:  ./run examples/pptp_session.tcl
package require qx

set device 0
set session 7 ;# both halves have the same number

foreach {dir call_id key} {in 1001 0x1011121314151617 out 2002 0x9091929394959697} {
    qx::call qx_pptp_session_add $device [dict create sa_id $session dir $dir call_id $call_id \
        local_addr 203.0.113.5 remote_addr 198.51.100.44 state 1 crypto_type 1 \
        key $key keylen 8 seq_num 500]
}

# A session is asked for by its number and direction.
proc half {dir} {
    return [qx::call qx_pptp_session_get $::device [list sa_id $::session dir $dir]]
}
foreach dir {in out} { puts "$dir: call [dict get [half $dir] call_id]" }

# Both halves go on with their next key, and count from 0 again.
set key [dict get [half in] key]
qx::call qx_pptp_key_change $device $session
puts "another key: [expr {[dict get [half in] key] ne $key}], from\
    [dict get [half in] seq_num] again"

# A GRE tunnel names the session in an overlay for each direction: a word that holds either an IPsec
# policy or, in its low half, a PPTP session.
set overlay [list pptp_sa_id $session]
set tunnel [qx::call qx_tunnel_add $device [dict create type gre tx_port 4 dir both \
    src_addr 203.0.113.5 dest_addr 198.51.100.44 tunnel [list gre [dict create tunnel_id 1 \
        up_call_id 1001 down_call_id 2002 \
        overlay_tunnel_ingress $overlay overlay_tunnel_egress $overlay]]]]
qx::with found qx_tunnel_cfg_t [qx::call qx_tunnel_get $device $tunnel] { puts [qx::show $found] }

# While the tunnel names the session, that stays.
set status [qx::check -allow QX_IN_USE qx_pptp_session_delete $device $session 0]
puts "deleting the session now: [qx::catalogue::status_name $status]"
qx::call qx_tunnel_delete_by_idx $device $tunnel
qx::call qx_pptp_session_delete $device $session in
qx::call qx_pptp_session_clear_all $device ;# whatever else there is: here the other half
