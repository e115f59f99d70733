package jbrg.test.account;

/**
 * Reads a department record behind a handle, for the tests: the module itself exposes no accessors. The
 * natives are registered by the C++ side of the account tests.
 */
public final class DeptRecord {
    private DeptRecord() {}

    /** Index of the word between the restriction and the limit slots, and of the first limit slot. */
    public static final int RESERVED = 10;
    public static final int L0 = 11;
    /** Index of the flags, after the limit slots. */
    public static final int FLAGS = 21;

    /** R0..R9, the word between, L0..L9, the flags: 22 words. */
    public static native int[] words(long deptinfo);

    /** The store's usage counters. */
    public static native long[] counters(long deptinfo);
}
