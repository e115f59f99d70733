/*
 * Synchronisation of the platform's operating-system wrapper.
 *
 * OSW_Mutex_Semaphore  a counting semaphore used as a mutex (initial count 1)
 * OSW_Guard            holds an OSW_Mutex_Semaphore for the lifetime of the guard
 * OSW_Thread_Guard     holds the platform's one process-wide thread lock for the lifetime of the guard
 */
#ifndef OSW_SYNC_H
#define OSW_SYNC_H

#include "plat_types.h"

class OSW_Mutex_Semaphore {
public:
    explicit OSW_Mutex_Semaphore(int initial_count);
    ~OSW_Mutex_Semaphore();

    OSW_Mutex_Semaphore(const OSW_Mutex_Semaphore&) = delete;
    OSW_Mutex_Semaphore& operator=(const OSW_Mutex_Semaphore&) = delete;

    /* Takes one count, blocking while there is none. 0 on success. */
    dev_long lock();
    /* Gives one count back. 0 on success. */
    dev_long unlock();

private:
    struct impl;
    impl* impl_;
};

class OSW_Guard {
public:
    explicit OSW_Guard(OSW_Mutex_Semaphore* mutex);
    ~OSW_Guard();

    OSW_Guard(const OSW_Guard&) = delete;
    OSW_Guard& operator=(const OSW_Guard&) = delete;

private:
    OSW_Mutex_Semaphore* mutex_;
};

class OSW_Thread_Guard {
public:
    OSW_Thread_Guard();
    ~OSW_Thread_Guard();

    OSW_Thread_Guard(const OSW_Thread_Guard&) = delete;
    OSW_Thread_Guard& operator=(const OSW_Thread_Guard&) = delete;
};

#endif /* OSW_SYNC_H */
