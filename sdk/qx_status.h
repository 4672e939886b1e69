/* The statuses that the simulator's SDK functions return. A status never changes its number;
 * docs/simulator.md says which function returns which, and when. Each line below has one status and
 * its meaning; the build reads the status names of the library and of package qx from these lines.
 */
#ifndef QX_STATUS_H
#define QX_STATUS_H

typedef enum qx_status {
    QX_OK = 0, /* the call did what it says */

    /* Any function. */
    QX_BAD_DEVICE = 1,   /* no device has this number */
    QX_NULL_POINTER = 2, /* a pointer argument is null */
    QX_NO_MEMORY = 3,    /* the process has no memory left */
    QX_SUSPENDED = 4,    /* the network engine is suspended */
    QX_BAD_SWITCH = 5,   /* a switch or the control file of the simulator cannot be obeyed */

    /* The state of a table or an area does not allow it. */
    QX_EXISTS = 10,          /* the same thing is already there */
    QX_TABLE_FULL = 11,      /* the table holds as many entries as it can */
    QX_NO_SLOT = 12,         /* every slot that the hash offers is taken by another flow */
    QX_IN_USE = 13,          /* something else still uses it */
    QX_CONFLICT = 14,        /* a next hop of the same identity has other contents */
    QX_NO_MORE = 15,         /* a walk has come to its end */
    QX_NOT_INITIALISED = 16, /* the area is not initialised yet, or was shut down */
    QX_INITIALISED = 17,     /* the area is initialised already */
    QX_NOT_SUSPENDED = 18,   /* the network engine has to be suspended before the system */
    QX_BOOT_CPU = 19,        /* CPU 0 runs the caller and cannot stop */
    QX_DELETED = 20,         /* it was there and has been deleted already */
    QX_CIRCLE = 21,          /* a tunnel would lead back into itself */

    /* It is not there, or what the call builds on is not there. */
    QX_NO_FLOW = 30,        /* no such flow */
    QX_NO_RULE = 31,        /* the slot of the rule hash is empty */
    QX_NO_RTP = 32,         /* no such RTP translation */
    QX_NO_TRANSLATION = 33, /* no such IP translation */
    QX_NO_ROUTE = 34,       /* no such route */
    QX_NO_NEXTHOP = 35,     /* no such next hop */
    QX_NO_SUBNET = 36,      /* no such NAT subnet on this interface */
    QX_NO_MTU = 37,         /* no MTU is set for this port and encapsulation */
    QX_NO_TUNNEL = 38,      /* no such tunnel */
    QX_NO_SPD = 39,         /* no such SPD */
    QX_NO_POLICY = 40,      /* no such IPsec policy, or not in this SPD */
    QX_NO_SA = 41,          /* no such security association, or not in this policy */
    QX_NO_SESSION = 42,     /* no such session */
    QX_NO_PREFIX = 43,      /* no such IPv6 prefix on this session */
    QX_NO_PPPOE_PORT = 44,  /* no such PPPoE port */
    QX_NO_ENCAP = 45,       /* the PPPoE port has no encapsulation yet */

    /* An argument or a field of a record is outside its range. */
    QX_BAD_PORT = 60,       /* no physical port has this number */
    QX_BAD_INDEX = 61,      /* the slot lies outside the table */
    QX_BAD_ADDRESS = 62,    /* unknown address family, or more bits than the family has */
    QX_BAD_VLAN = 63,       /* the VLAN identifier exceeds 4095 */
    QX_BAD_TYPE = 64,       /* unknown type, or another type than the call is for */
    QX_BAD_DIRECTION = 65,  /* unknown direction, or another one than the call is for */
    QX_BAD_COUNT = 66,      /* the count is zero or more than the call takes */
    QX_BAD_MTU = 67,        /* the MTU is too small or too large */
    QX_BAD_ENCAP = 68,      /* unknown encapsulation */
    QX_BAD_ACTION = 69,     /* unknown policy action, or a policy that does not protect */
    QX_BAD_SPI = 70,        /* security parameter indexes up to 255 are reserved */
    QX_BAD_KEY = 71,        /* the key is too long, or there is no key to change */
    QX_BAD_SESSION_ID = 72, /* zero names no session */
    QX_BAD_FLAG = 73,       /* a flag is neither 0 nor 1 */
    QX_BAD_PORT_SET = 74,   /* offset and length of the port set exceed 16 bits */
    QX_BAD_MAP_MODE = 75,   /* unknown QoS map mode */
    QX_BAD_DSCP = 76,       /* the DSCP exceeds 63 */
    QX_BAD_DOT1P = 77,      /* the 802.1p value exceeds 7 */
    QX_BAD_PRIORITY = 78,   /* the priority exceeds 7 */
    QX_BAD_FREQUENCY = 79,  /* the processor clock cannot run at this frequency */
    QX_BAD_CPU = 80,        /* no CPU has this number */
    QX_BAD_CONTROLLER = 81, /* no PCIe, SATA or USB controller has this number */
    QX_BAD_ENGINE = 82,     /* no packet engine has this number */
    QX_BAD_STATE = 83,      /* unknown power state */
    QX_BAD_FAMILY = 84,     /* addresses of two families where one is meant */
    QX_NO_ADDRESS = 85      /* an address that has to be given is zero */
} qx_status;

#endif
