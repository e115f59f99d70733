package jbrg.test;

import orvane.qsf.wrapper.system.cmt_commonJNI;

/** The Java side of the benchmarks: many calls of a native, and of a plain Java method as the baseline. */
public final class Bench {
    private static int field = 7;

    private Bench() {}

    private static int plainGetter(long handle) {
        return handle == 0 ? 0 : field;
    }

    public static int plainCalls(int count) {
        int sum = 0;
        for (int i = 0; i < count; i++) {
            sum += plainGetter(1L);
        }
        return sum;
    }

    public static int nativeCalls(int count) {
        long time = cmt_commonJNI.new_cmt_time__SWIG_1(86399L);
        int sum = 0;
        for (int i = 0; i < count; i++) {
            sum += cmt_commonJNI.cmt_time_getHour(time, null);
        }
        cmt_commonJNI.delete_cmt_time(time);
        return sum;
    }
}
