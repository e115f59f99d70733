package jbrg.test.account;

/** Reads the department record behind a handle (the module has no accessors); natives registered by C++. */
public final class DeptRecord {
    private DeptRecord() {}

    /** Index of the first limit slot in words(). */
    public static final int L0 = 11;

    /** R0..R9, the word between, L0..L9, the flags: 22 words. */
    public static native int[] words(long deptinfo);

    /** The store's usage counters. */
    public static native long[] counters(long deptinfo);
}
