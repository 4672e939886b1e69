# A PPTP session: one half for each direction, with keys that change in step, and the GRE tunnel
# that carries it.
# Run it with:  ./run examples/pptp_session.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set session 7 ;# both halves have the same number

# Direction 0 is in, 1 is out. Crypto type 0 would be none.
foreach {dir call_id first} {0 1001 0x10 1 2002 0x90} {
    set half($dir) [qx_pptp_sa_create]
    set_fields qx_pptp_sa $half($dir) sa_id $session dir $dir call_id $call_id state 1 \
        crypto_type 1 keylen 8 seq_num 500
    set_ip [qx_pptp_sa_get_local_addr $half($dir)] 203.0.113.5
    set_ip [qx_pptp_sa_get_remote_addr $half($dir)] 198.51.100.44
    for {set index 0} {$index < 8} {incr index} {
        qx_pptp_sa_set_key $half($dir) [expr {$first + $index}] $index
    }
    must qx_pptp_session_add $device $half($dir)
}

# A session is asked for by its number and direction, in the record that is then filled.
proc show_halves {title} {
    global device session
    set found [qx_pptp_sa_create]
    foreach dir {0 1} name {in out} {
        set_fields qx_pptp_sa $found sa_id $session dir $dir
        must qx_pptp_session_get $device $found
        puts "$title, $name: [fields qx_pptp_sa $found call_id seq_num],\
            key [elements qx_pptp_sa_get_key $found [qx_pptp_sa_get_keylen $found]]"
    }
    release $found
}
show_halves "session $session"

# Both halves go on with their next key, and count from 0 again.
must qx_pptp_key_change $device $session
show_halves "next key"

# ---------------------------------------------------------------------------- the tunnel around it

# A GRE tunnel (type 1) names the session in an overlay for each direction: a word that holds either
# an IPsec policy or, in its low half, a PPTP session.
set cfg [qx_tunnel_cfg_create]
set_fields qx_tunnel_cfg $cfg type 1 tx_port 4 dir 2
set_ip [qx_tunnel_cfg_get_src_addr $cfg] 203.0.113.5
set_ip [qx_tunnel_cfg_get_dest_addr $cfg] 198.51.100.44
set gre [qx_tunnel_cfg_union_get_gre [qx_tunnel_cfg_get_tunnel $cfg]]
set_fields qx_gre_tunnel_cfg $gre tunnel_id 1 up_call_id 1001 down_call_id 2002
foreach way {ingress egress} {
    qx_tunnel_union_overlay_set_pptp_sa_id [qx_gre_tunnel_cfg_get_overlay_tunnel_$way $gre] $session
}
set tunnel [filled uint32 cell { must qx_tunnel_add $device $cfg $cell }]

set found [qx_tunnel_cfg_create]
must qx_tunnel_get $device $tunnel $found
puts "tunnel $tunnel, its GRE settings:"
qx_gre_tunnel_cfg_dump [qx_tunnel_cfg_union_get_gre [qx_tunnel_cfg_get_tunnel $found]]

# --------------------------------------------------------------------------------------- tear-down

# While the tunnel names the session, that stays.
puts "deleting the session now: [expect QX_IN_USE qx_pptp_session_delete $device $session 0]"
must qx_tunnel_delete_by_idx $device $tunnel
must qx_pptp_session_delete $device $session 0
must qx_pptp_session_clear_all $device ;# whatever else there is: here the other half
puts "cleared; reading it now: [expect QX_NO_SESSION qx_pptp_session_get $device $half(1)]"

release $half(0) $half(1) $cfg $found
puts done
