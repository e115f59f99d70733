// A broken-down calendar time, and the local daylight-saving flag and GMT offset.
#ifndef JBRG_CORE_CMT_TIME_H
#define JBRG_CORE_CMT_TIME_H

#include <cstdint>

#include "plat_types.h"

namespace orvane {

class cmt_time {
public:
    // The local daylight-saving flag and GMT offset of now. The date fields are not set (they hold 0).
    cmt_time();
    // The UTC calendar time of `seconds` since 1970-01-01 00:00:00 UTC. A value of 2^31 or more (negative as
    // the device's signed 32-bit time) keeps 1970-01-01 00:00:00. Daylight and GMT offset are not set (0).
    explicit cmt_time(dev_ulong seconds);
    virtual ~cmt_time();

    // Reads the local daylight-saving flag and GMT offset of the present moment; the date fields stay.
    void getLocalTime();

    int32_t getYear() const { return year_; }
    int32_t getMonth() const { return month_; }
    int32_t getDate() const { return date_; }
    int32_t getHour() const { return hour_; }
    int32_t getMinute() const { return minute_; }
    int32_t getSecond() const { return second_; }
    int32_t getDaylightTime() const { return daylight_; }
    dev_long getGMToffset() const { return gmt_offset_; }

private:
    dev_ulong seconds_ = 0;
    int32_t year_ = 0;
    int32_t month_ = 0;
    int32_t date_ = 0;
    int32_t hour_ = 0;
    int32_t minute_ = 0;
    int32_t second_ = 0;
    int32_t daylight_ = 0;
    dev_long gmt_offset_ = 0;
};

}  // namespace orvane

#endif  // JBRG_CORE_CMT_TIME_H
