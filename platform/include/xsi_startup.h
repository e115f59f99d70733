/*
 * Start-up of the platform's service clients. Each connects this process to its service; the argument is
 * the start-up mode (0: normal). 0 on success.
 */
#ifndef XSI_STARTUP_H
#define XSI_STARTUP_H

#include "plat_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The basic-function services (boxes, address book, users, panel, system information, ...). */
PLAT_RESULT xsi_pbfs_startup(int mode);

/* The job and authentication services. */
PLAT_RESULT xsi_ais_startup(int mode);

#ifdef __cplusplus
}
#endif

#endif /* XSI_STARTUP_H */
