# PPTP: sessions by security association and direction, with the state, kind and key of their
# encryption. Calls of this area name the device number dev_id.

area pptp "PPTP sessions"

record qx_pptp_sa_t 84 "security association of a PPTP session" {
    0   u16              sa_id            "identifier of the security association"
    4   u32              dir              "direction, an SDK code"
    8   u16              call_id          "call id"
    10  qx_ip_address_t  local_addr       "local address"
    31  qx_ip_address_t  remote_addr      "remote address"
    52  u32              state            "state, an SDK code"
    56  u32              crypto_type      "kind of encryption, an SDK code"
    60  u8[16]           key  -holds key  "encryption key"
    76  u8               keylen           "length of the key"
    80  u32              seq_num          "sequence number"
}

call qx_pptp_session_add "add a session" {
    in     u16            dev_id
    in     qx_pptp_sa_t*  session    "the session"
    example  0 {sa_id 5 dir 1 crypto_type 1 keylen 4 key 0x00112233}
}

call qx_pptp_session_delete "remove a session by its identifier and direction" {
    in     u16            dev_id
    in     u16            sa_id
    in     u8             direction  "direction, an SDK code"
    after    qx_pptp_session_add
    example  0 5 1
}

call qx_pptp_session_get "read a session" {
    in     u16            dev_id
    inout  qx_pptp_sa_t*  session    "identifies the session; receives it"
    after    qx_pptp_session_add
    example  0 {sa_id 5 dir 1}
}

call qx_pptp_session_clear_all "remove all sessions" {
    in     u16            dev_id
    after    qx_pptp_session_add
    example  0
}

call qx_pptp_key_change "change the key of a session" {
    in     u16            dev_id
    in     u16            sa_id
    after    qx_pptp_session_add
    example  0 5
}

table pptp_sessions "PPTP sessions, by id and direction" {
    call   qx_pptp_session_get
    index  session.sa_id  1..65535
    index  session.dir    codes
    empty  QX_NO_SESSION
    node   "PPTP session"  session.remote_addr
}
