package jbrg.demo;

import orvane.qsf.wrapper.system.cmt_commonJNI;

/**
 * A Java application's first steps on the device: load the bridge, bring it up, and read times through it.
 * Run with JBRG_TRACE=1 to see the bridge's trace lines on standard error.
 */
public final class Demo {
    private Demo() {}

    public static void main(String[] args) {
        System.loadLibrary("jbrgCMT");
        System.out.println("libjbrgCMT loaded");

        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        cmt_commonJNI.delete_cmt_init(init);
        System.out.println("bridge initialised: Java VM found, platform service clients and storage started");

        System.out.println();
        System.out.println("cmt_time of a few instants (UTC calendar fields):");
        long[] instants = {0L, 86399L, 1709208000L, 2147483647L, 2147483648L, 0x100000000L + 86399L};
        for (long seconds : instants) {
            long time = cmt_commonJNI.new_cmt_time__SWIG_1(seconds);
            System.out.printf("  %12d s -> %04d-%02d-%02d %02d:%02d:%02d%n", seconds,
                    cmt_commonJNI.cmt_time_getYear(time, null), cmt_commonJNI.cmt_time_getMonth(time, null),
                    cmt_commonJNI.cmt_time_getDate(time, null), cmt_commonJNI.cmt_time_getHour(time, null),
                    cmt_commonJNI.cmt_time_getMinute(time, null), cmt_commonJNI.cmt_time_getSecond(time, null));
            cmt_commonJNI.delete_cmt_time(time);
        }
        System.out.println("  (2147483648 is before 1970 as the device's signed 32-bit time and keeps the epoch;");
        System.out.println("   a Java long keeps its low 32 bits, so 4295053695 reads as 86399)");

        long now = cmt_commonJNI.new_cmt_time__SWIG_0();
        System.out.printf("%nlocal zone now: daylight saving %d, GMT offset %d s%n",
                cmt_commonJNI.cmt_time_getDaylightTime(now, null), cmt_commonJNI.cmt_time_getGMToffset(now, null));
        cmt_commonJNI.delete_cmt_time(now);
    }
}
