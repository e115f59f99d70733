// The protocol pieces every manager of the box module shares: its singleton, the platform buffer of a
// listing and the listing itself.
#ifndef JBRG_BOX_BOX_SUPPORT_H
#define JBRG_BOX_BOX_SUPPORT_H

#include <atomic>
#include <cstddef>

#include "core/platform_buffer.h"
#include "core/trace.h"
#include "emw_services.h"
#include "osw_sync.h"
#include "xsi_pbfs_box.h"

namespace orvane::box {

// The process's instance of a stateless manager: returned at once when made; otherwise made under the
// platform's thread guard, after testing again. It is never destroyed.
template <class T>
T* guarded_instance(std::atomic<T*>& slot) {
    if (T* made = slot.load(std::memory_order_acquire)) return made;
    OSW_Thread_Guard guard;
    T* made = slot.load(std::memory_order_relaxed);
    if (made == nullptr) {
        made = new T;
        slot.store(made, std::memory_order_release);
    }
    return made;
}

inline xsi_pbfs_box_facade& facade() { return *xsi_pbfs_box_facade::xsi_pbfs_box_get_instance(); }

// Room for the entries of a listing. The same buffer serves every get of the listing, so a listing holds one
// chunk whatever its length.
using orvane::platform_buffer;

// A listing the box service opened: finished at the end of the scope, on every path out. Declared before the
// listing's buffer, so that the buffer is given back first. A failing finish is traced "result(%d)" at
// `site` when the listing is traced; the listing's answer stands.
class open_listing {
public:
    using finish_op = PLAT_RESULT (xsi_pbfs_box_facade::*)(unsigned int);

    open_listing(finish_op finish, unsigned int handle, const trace_site& site, bool traced = true)
        : finish_(finish), handle_(handle), site_(site), traced_(traced) {}
    ~open_listing() {
        PLAT_RESULT result = (facade().*finish_)(handle_);
        if (result != XSI_PBFS_BOX_OK && traced_) trace_at(site_, "result(%d)", static_cast<int>(result));
    }
    open_listing(const open_listing&) = delete;
    open_listing& operator=(const open_listing&) = delete;

private:
    finish_op finish_;
    unsigned int handle_;
    trace_site site_;
    bool traced_;
};

// Reads the entries of an open listing one a get into one buffer of one entry: exactly `total` gets (a get
// that hands back nothing still counts as one), each traced "count=(%d), total_num=(%d), get_num=(%d)" at
// `site`, and `each` called for each entry handed back. False when the buffer cannot be had (traced
// "<buffer_name> == NULL."), at a failing get (traced "result(%d)"), or when `each` fails.
template <class Entry, class Each>
bool read_one_by_one(PLAT_RESULT (xsi_pbfs_box_facade::*get)(unsigned int, unsigned int&, Entry*), unsigned int handle,
                     unsigned int total, const char* buffer_name, const trace_site& site, Each each) {
    platform_buffer<Entry> buffer(1);
    if (!buffer) {
        trace_at(site, "%s == NULL.", buffer_name);
        return false;
    }
    for (unsigned int count = 0; count < total; ++count) {
        unsigned int get_num = 0;
        PLAT_RESULT result = (facade().*get)(handle, get_num, buffer.get());
        if (result != XSI_PBFS_BOX_OK) {
            trace_at(site, "result(%d)", static_cast<int>(result));
            return false;
        }
        trace_at(site, "count=(%d), total_num=(%d), get_num=(%d)", static_cast<int>(count), static_cast<int>(total),
                 static_cast<int>(get_num));
        // The buffer holds one entry: a get that claims more is read for the one it could hand back.
        if (get_num != 0 && !each(buffer[0])) return false;
    }
    return true;
}

// Reads the entries of an open listing chunk by chunk into `buffer` (room for `chunk` entries) until `total`
// entries have been handled, calling `each` for every entry handed back, in order. A get that hands back
// more than the chunk is read for the chunk; one that hands back nothing before the total is reached ends
// the listing as a failure, since the rest cannot be had. False at a failing get or when `each` fails.
template <class Entry, class Each>
bool read_in_chunks(PLAT_RESULT (xsi_pbfs_box_facade::*get)(unsigned int, unsigned int&, Entry*), unsigned int handle,
                    unsigned int total, const platform_buffer<Entry>& buffer, unsigned int chunk, Each each) {
    for (unsigned int seen = 0; seen < total;) {
        unsigned int get_num = 0;
        if ((facade().*get)(handle, get_num, buffer.get()) != XSI_PBFS_BOX_OK) return false;
        unsigned int got = get_num < chunk ? get_num : chunk;
        if (got == 0) return false;
        for (unsigned int i = 0; i < got; ++i) {
            if (!each(buffer[i])) return false;
        }
        seen += got;
    }
    return true;
}

}  // namespace orvane::box

#endif  // JBRG_BOX_BOX_SUPPORT_H
