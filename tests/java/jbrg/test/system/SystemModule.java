package jbrg.test.system;

import static jbrg.test.Check.equal;

import orvane.qsf.wrapper.system.cmt_commonJNI;

/** The start-up and time module as a Java application uses it. */
public final class SystemModule {
    private SystemModule() {}

    public static void initialise() {
        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        cmt_commonJNI.delete_cmt_init(init);
        // A zero handle reaches nothing.
        cmt_commonJNI.cmt_init_init(0L, null);
        cmt_commonJNI.delete_cmt_init(0L);
    }

    private static String fields(long seconds) {
        long t = cmt_commonJNI.new_cmt_time__SWIG_1(seconds);
        try {
            return String.format("%04d-%02d-%02d %02d:%02d:%02d dst=%d off=%d",
                    cmt_commonJNI.cmt_time_getYear(t, null), cmt_commonJNI.cmt_time_getMonth(t, null),
                    cmt_commonJNI.cmt_time_getDate(t, null), cmt_commonJNI.cmt_time_getHour(t, null),
                    cmt_commonJNI.cmt_time_getMinute(t, null), cmt_commonJNI.cmt_time_getSecond(t, null),
                    cmt_commonJNI.cmt_time_getDaylightTime(t, null), cmt_commonJNI.cmt_time_getGMToffset(t, null));
        } finally {
            cmt_commonJNI.delete_cmt_time(t);
        }
    }

    public static void timesFromSeconds() {
        equal("2038-01-19 03:14:07 dst=0 off=0", fields(2147483647L), "2^31-1");
        equal("1970-01-01 00:00:00 dst=0 off=0", fields(2147483648L), "2^31, negative on the device");
        // The seconds are the device's unsigned long: a Java long keeps its low 32 bits.
        equal("1970-01-01 23:59:59 dst=0 off=0", fields(0x100000000L + 86399L), "high bits dropped");
        equal("1970-01-01 00:00:00 dst=0 off=0", fields(-1L), "-1 is 2^32-1, negative on the device");
    }

    /** Run in the zone JST-9 (nine hours east of GMT, no daylight saving). */
    public static void defaultTimeCarriesTheLocalZone() {
        long t = cmt_commonJNI.new_cmt_time__SWIG_0();
        equal(32400, cmt_commonJNI.cmt_time_getGMToffset(t, null), "GMT offset");
        equal(0, cmt_commonJNI.cmt_time_getDaylightTime(t, null), "daylight saving");
        equal(0, cmt_commonJNI.cmt_time_getYear(t, null), "date fields are not set");
        cmt_commonJNI.delete_cmt_time(t);
        equal(0, cmt_commonJNI.cmt_time_getYear(0L, null), "a zero handle reads as 0");
    }
}
