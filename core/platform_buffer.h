// A buffer from the platform's memory partition (emwOSWSubAllocMem), given back (emwOSWOrgFreeMemPart) at the
// end of the scope: the transfer buffers of the platform's listings.
#ifndef JBRG_CORE_PLATFORM_BUFFER_H
#define JBRG_CORE_PLATFORM_BUFFER_H

#include <cstddef>

#include "emw_services.h"

namespace orvane {

// Room for `count` records of type Record.
template <class Record>
class platform_buffer {
public:
    explicit platform_buffer(std::size_t count)
        : records_(static_cast<Record*>(emwOSWSubAllocMem(static_cast<dev_ulong>(count * sizeof(Record))))) {}
    ~platform_buffer() {
        if (records_ != nullptr) emwOSWOrgFreeMemPart(0, records_);
    }
    platform_buffer(const platform_buffer&) = delete;
    platform_buffer& operator=(const platform_buffer&) = delete;

    explicit operator bool() const { return records_ != nullptr; }
    Record* get() const { return records_; }
    Record& operator[](std::size_t i) const { return records_[i]; }

private:
    Record* records_;
};

}  // namespace orvane

#endif  // JBRG_CORE_PLATFORM_BUFFER_H
