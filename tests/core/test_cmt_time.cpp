// cmt_time: UTC calendar fields from seconds, whatever the local zone, and the local zone's flags.
#include <gmock/gmock.h>

#include <ostream>

#include "core/cmt_time.h"
#include "jbrg_sim/control.h"
#include "tests/core/in_zone.h"
#include "tests/harness/bridge_test.h"

namespace {

using jbrg_test::in_zone;
using orvane::cmt_time;

struct fields {
    int year, month, date, hour, minute, second;
    bool operator==(const fields& o) const {
        return year == o.year && month == o.month && date == o.date && hour == o.hour && minute == o.minute &&
               second == o.second;
    }
};
std::ostream& operator<<(std::ostream& out, const fields& f) {
    return out << f.year << "-" << f.month << "-" << f.date << " " << f.hour << ":" << f.minute << ":" << f.second;
}
fields of(const cmt_time& t) {
    return {t.getYear(), t.getMonth(), t.getDate(), t.getHour(), t.getMinute(), t.getSecond()};
}

class time_values : public jbrg_test::bridge_test {};

TEST_F(time_values, seconds_give_utc_fields_in_any_local_zone_without_reading_it) {
    for (const char* zone : {"UTC0", "JST-9", "EST5EDT,M3.2.0,M11.1.0", "NZST-12NZDT,M9.5.0,M4.1.0/3"}) {
        SCOPED_TRACE(zone);
        in_zone z(zone);
        EXPECT_EQ((fields{1970, 1, 1, 0, 0, 0}), of(cmt_time(0)));
        EXPECT_EQ((fields{1970, 1, 1, 23, 59, 59}), of(cmt_time(86399)));
        EXPECT_EQ((fields{2038, 1, 19, 3, 14, 7}), of(cmt_time(2147483647)));
        EXPECT_EQ((fields{2024, 2, 29, 12, 0, 0}), of(cmt_time(1709208000)));
        // 2^31 and above are negative as the device's signed time: the defaults stay.
        EXPECT_EQ((fields{1970, 1, 1, 0, 0, 0}), of(cmt_time(2147483648U)));
        EXPECT_EQ((fields{1970, 1, 1, 0, 0, 0}), of(cmt_time(4294967295U)));
        // Made from seconds, it has no zone of its own.
        EXPECT_EQ(0, cmt_time(1709208000).getDaylightTime());
        EXPECT_EQ(0, cmt_time(1709208000).getGMToffset());
    }
    EXPECT_TRUE(jbrg_sim::calls_of("emwCLBLocalTime_r").empty());
}

TEST_F(time_values, the_default_time_carries_the_local_zone_through_the_platform) {
    {
        in_zone z("JST-9");
        cmt_time t;
        EXPECT_EQ(32400, t.getGMToffset());
        EXPECT_EQ(0, t.getDaylightTime());
        // The date fields are not set by the default time.
        EXPECT_EQ((fields{0, 0, 0, 0, 0, 0}), of(t));
    }
    {
        // Daylight saving all year round (from 1 January 00:00 to 31 December 24:00).
        in_zone z("STD5DST,J1/0,J365/24");
        cmt_time t;
        EXPECT_EQ(1, t.getDaylightTime());
        EXPECT_EQ(-4 * 3600, t.getGMToffset());
    }
    EXPECT_EQ(2U, jbrg_sim::calls_of("emwCLBLocalTime_r").size());
}

TEST_F(time_values, a_failing_platform_clock_leaves_zero_offsets) {
    in_zone z("JST-9");
    jbrg_sim::force_result("emwCLBLocalTime_r", -1);
    cmt_time t;
    EXPECT_EQ(0, t.getGMToffset());
    EXPECT_EQ(0, t.getDaylightTime());
}

TEST_F(time_values, get_local_time_keeps_the_date_fields) {
    in_zone z("JST-9");
    cmt_time t(86399);
    t.getLocalTime();
    EXPECT_EQ((fields{1970, 1, 1, 23, 59, 59}), of(t));
    EXPECT_EQ(32400, t.getGMToffset());
}

}  // namespace
