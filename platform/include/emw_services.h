/*
 * Common services of the device platform: the trace printer, local time and the memory partition.
 */
#ifndef EMW_SERVICES_H
#define EMW_SERVICES_H

#include <time.h>

#include "plat_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The platform trace printer. Prints one line built from `format` and the arguments that follow, when the
 * platform's filter lets the (module, level) pair through. Its result says nothing useful to a caller.
 */
int emwGENTrcPrintf(unsigned int module, unsigned int level, unsigned int flags, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 4, 5)))
#endif
    ;

/* The platform's local time, with the contract of localtime_r. */
struct tm* emwCLBLocalTime_r(const time_t* now, struct tm* result);

/* Allocates a block from the platform's memory partition; null when the partition is exhausted. */
void* emwOSWSubAllocMem(dev_ulong size);

/* Returns a block to the memory partition. `partition` is 0 for the default partition. 0 on success. */
dev_long emwOSWOrgFreeMemPart(dev_ulong partition, void* block);

#ifdef __cplusplus
}
#endif

#endif /* EMW_SERVICES_H */
