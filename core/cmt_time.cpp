#include "core/cmt_time.h"

#include <ctime>

#include "emw_services.h"

namespace orvane {

cmt_time::cmt_time() {
    // The default time has always made a throw-away time of 0 and then read only the local zone into itself:
    // its date fields stay unset. Callers rely on nothing more than the daylight flag and GMT offset.
    { cmt_time discarded(0); }
    getLocalTime();
}

cmt_time::cmt_time(dev_ulong seconds)
    : seconds_(seconds), year_(1970), month_(1), date_(1), hour_(0), minute_(0), second_(0) {
    // The device's time is a signed 32-bit count: 2^31 and above are before 1970 there, and keep the default.
    if (static_cast<int32_t>(seconds) < 0) return;
    const time_t t = static_cast<time_t>(seconds);
    struct tm utc {};
    if (gmtime_r(&t, &utc) == nullptr) return;
    year_ = utc.tm_year + 1900;
    month_ = utc.tm_mon + 1;
    date_ = utc.tm_mday;
    hour_ = utc.tm_hour;
    minute_ = utc.tm_min;
    second_ = utc.tm_sec;
}

cmt_time::~cmt_time() = default;

void cmt_time::getLocalTime() {
    time_t now = time(nullptr);
    tzset();
    struct tm local {};
    // A failed conversion leaves the zeroed record: no daylight saving, offset 0.
    (void)emwCLBLocalTime_r(&now, &local);
    daylight_ = local.tm_isdst;
    gmt_offset_ = static_cast<dev_long>(local.tm_gmtoff);
}

}  // namespace orvane
