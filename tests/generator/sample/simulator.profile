# A profile for the sample.

status 0 QX_OK done
status 7 QX_FAILED not done
code qx_lamp_t.mode 1 bright
code qx_lamp_t.mode 0x2 dim-light
code qx_lamp_tune.level 3 low
family ipv6 9
ports 5
capacity lamps 12
