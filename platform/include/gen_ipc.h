/*
 * The platform's inter-process messages, as its observer bases receive them.
 *
 * Every observer base of a facade (job, job information, panel, device status, smart card, application
 * operation) derives from gen_ipc_observer. The platform's IPC thread hands each message it receives to
 * dispatch(), which decodes it and calls the matching virtual notify_* operation of the base; the bridge
 * overrides those operations and leaves dispatch() alone. A notify_* operation answers the platform with a
 * result code (0 for success).
 */
#ifndef GEN_IPC_H
#define GEN_IPC_H

#include "plat_types.h"

/* The header of an IPC message. Fixed layout: it crosses process boundaries on the device. */
struct gen_ipc_msghdr {
    dev_ulong msg_id;      /* the notification, numbered per observer base */
    dev_ulong sender;      /* the sending service */
    dev_ulong length;      /* bytes of message data that follow the header */
    dev_ulong sequence;    /* the sender's running number */
};
PLAT_ASSERT_SIZE(gen_ipc_msghdr, 16);
PLAT_ASSERT_OFFSET(gen_ipc_msghdr, msg_id, 0);
PLAT_ASSERT_OFFSET(gen_ipc_msghdr, sender, 4);
PLAT_ASSERT_OFFSET(gen_ipc_msghdr, length, 8);
PLAT_ASSERT_OFFSET(gen_ipc_msghdr, sequence, 12);

class gen_ipc_observer {
public:
    virtual ~gen_ipc_observer();

    /*
     * Decodes one message (`data`, `size` bytes) and calls the notification it carries. `kind` is the
     * message's class as the IPC layer sees it. Returns the notification's answer, or a platform failure
     * code for a message this base does not know.
     */
    virtual PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header);
};

#endif /* GEN_IPC_H */
