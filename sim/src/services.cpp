// The platform's common services: trace printer, local time, memory partition and the OS wrapper's locks.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <set>
#include <semaphore.h>

#include "emw_services.h"
#include "gen_ipc.h"
#include "jbrg_sim/control.h"
#include "osw_sync.h"
#include "sim.h"
#include "sim_internal.h"

namespace {

// JBRG_TRACE set to anything but "" or "0" copies every trace line to standard error.
bool traces_to_stderr() {
    static const bool on = [] {
        const char* v = std::getenv("JBRG_TRACE");
        return v != nullptr && *v != '\0' && std::strcmp(v, "0") != 0;
    }();
    return on;
}

}  // namespace

extern "C" int emwGENTrcPrintf(unsigned int module, unsigned int level, unsigned int flags, const char* format, ...) {
    if (format == nullptr) return -1;
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    // One pass for a line of usual length, into the stack; a longer one is formatted again at its size.
    char line[512];
    int length = std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    std::string longer;
    const char* text = line;
    std::size_t size = 0;
    if (length > 0 && static_cast<std::size_t>(length) < sizeof line) {
        size = static_cast<std::size_t>(length);
    } else if (length > 0) {
        longer.resize(static_cast<std::size_t>(length));
        std::vsnprintf(longer.data(), longer.size() + 1, format, again);
        text = longer.data();
        size = longer.size();
    }
    va_end(again);
    if (traces_to_stderr()) {
        std::fwrite(text, 1, size, stderr);
    }
    jbrg_sim::record_trace(module, level, flags, format, text, size);
    return length;
}

extern "C" struct tm* emwCLBLocalTime_r(const time_t* now, struct tm* result) {
    jbrg_sim::op call("emwCLBLocalTime_r", now ? static_cast<long long>(*now) : -1LL);
    if (call.forced() && call.result() != 0) return nullptr;
    if (now == nullptr || result == nullptr) return nullptr;
    return localtime_r(now, result);
}

// ---- Memory partition ----------------------------------------------------------------------------------

namespace {

std::mutex& blocks_mutex() {
    static std::mutex* m = new std::mutex;
    return *m;
}

std::set<void*>& blocks() {
    static auto* b = new std::set<void*>;
    return *b;
}

// What the partition answers for a block it did not hand out.
constexpr dev_long kBadBlock = PLAT_CODE(0xE0010002);

}  // namespace

extern "C" void* emwOSWSubAllocMem(dev_ulong size) {
    jbrg_sim::op call("emwOSWSubAllocMem", size);
    // A forced failure is an exhausted partition.
    if (call.forced() && call.result() != 0) return nullptr;
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) return nullptr;
    std::lock_guard<std::mutex> guard(blocks_mutex());
    blocks().insert(block);
    return block;
}

extern "C" dev_long emwOSWOrgFreeMemPart(dev_ulong partition, void* block) {
    jbrg_sim::op call("emwOSWOrgFreeMemPart", partition, block == nullptr ? "(null)" : "block");
    if (call.forced()) return call.result();
    std::lock_guard<std::mutex> guard(blocks_mutex());
    // Freeing a block twice, or one that is not the partition's, is refused rather than corrupting memory.
    if (partition != 0 || blocks().erase(block) == 0) return kBadBlock;
    std::free(block);
    return PLAT_OK;
}

std::size_t jbrg_sim::blocks_in_use() {
    std::lock_guard<std::mutex> guard(blocks_mutex());
    return blocks().size();
}

// ---- OS wrapper locks ----------------------------------------------------------------------------------

struct OSW_Mutex_Semaphore::impl {
    sem_t sem;
};

OSW_Mutex_Semaphore::OSW_Mutex_Semaphore(int initial_count) : impl_(new impl) {
    jbrg_sim::op call("OSW_Mutex_Semaphore", initial_count);
    sem_init(&impl_->sem, 0, initial_count < 0 ? 0U : static_cast<unsigned>(initial_count));
}

OSW_Mutex_Semaphore::~OSW_Mutex_Semaphore() {
    sem_destroy(&impl_->sem);
    delete impl_;
}

dev_long OSW_Mutex_Semaphore::lock() {
    while (sem_wait(&impl_->sem) != 0) {
        // interrupted by a signal (the Java VM uses some): wait again
    }
    return PLAT_OK;
}

dev_long OSW_Mutex_Semaphore::unlock() {
    sem_post(&impl_->sem);
    return PLAT_OK;
}

OSW_Guard::OSW_Guard(OSW_Mutex_Semaphore* mutex) : mutex_(mutex) {
    jbrg_sim::op call("OSW_Guard");
    if (mutex_ != nullptr) mutex_->lock();
}

OSW_Guard::~OSW_Guard() {
    if (mutex_ != nullptr) mutex_->unlock();
}

namespace {
std::recursive_mutex& thread_guard_mutex() {
    static auto* m = new std::recursive_mutex;
    return *m;
}
}  // namespace

OSW_Thread_Guard::OSW_Thread_Guard() {
    jbrg_sim::op call("OSW_Thread_Guard");
    thread_guard_mutex().lock();
}

OSW_Thread_Guard::~OSW_Thread_Guard() { thread_guard_mutex().unlock(); }

// ---- IPC observer base ---------------------------------------------------------------------------------

gen_ipc_observer::~gen_ipc_observer() = default;

PLAT_RESULT gen_ipc_observer::dispatch(long, char*, unsigned int, gen_ipc_msghdr) {
    // The common base knows no message; the facades' observer bases decode their own.
    return PLAT_CODE(0xE0010001);
}
