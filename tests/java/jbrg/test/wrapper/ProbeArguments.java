package jbrg.test.wrapper;

import static orvane.qsf.wrapper.probe.wrap_probeJNI.*;

import jbrg.test.Check;

/** Method arguments: how each kind is converted, and what a bad one does before the native side is reached. */
public final class ProbeArguments {
    private ProbeArguments() {}

    /** The action throws `type` with `message`, and the native side is not called. */
    private static void refused(Class<? extends Throwable> type, String message, Check.Action action) {
        int before = probe_subject_reached();
        Check.throwsWith(type, message, action);
        Check.equal(before, probe_subject_reached(), "native side not reached for " + message);
    }

    /** The last call the native side logged. */
    private static void called(String expected) {
        Check.equal(expected, probe_subject_last_call_get(), "the native call");
    }

    /** Scalars as the native side sees them, and results mapped back. */
    public static void scalarArguments() {
        long s = new_probe_subject__SWIG_0();
        try {
            Check.equal(-14, probe_subject_twice(s, null, -7), "int");
            Check.equal(5L, probe_subject_low_bits(s, null, 0x100000005L), "unsigned long from a long's low bits");
            called("low_bits(5)");
            Check.equal(4294967295L, probe_subject_low_bits(s, null, -1L), "unsigned long result zero-extended");
            called("low_bits(4294967295)");
            Check.equal(Integer.MIN_VALUE, probe_subject_as_long(s, null, Integer.MIN_VALUE), "the device's long");
            Check.equal((short) 45, probe_subject_next_byte(s, null, (short) 300), "unsigned char truncated");
            called("next_byte(44)");
            Check.equal((short) 0, probe_subject_next_byte(s, null, (short) 255), "unsigned char wraps");
            Check.equal(false, probe_subject_flip(s, null, true), "bool");
            called("flip(true)");
            Check.equal(PROBE_MODE_AUTO_get(), probe_subject_next_mode(s, null, PROBE_MODE_ON_get()), "enum");
            called("next_mode(3)");

            // A zero object handle: nothing is called and the result is zero or null.
            int before = probe_subject_reached();
            Check.equal(0, probe_subject_twice(0L, null, 5), "method of a zero handle");
            Check.equal(null, probe_subject_echo_cstr(0L, null, "x"), "string method of a zero handle");
            Check.equal(0L, probe_subject_make_record(0L, null, 1), "record method of a zero handle");
            Check.equal(0, probe_subject_start_get(0L, null), "field of a zero handle");
            Check.equal(before, probe_subject_reached(), "native side not reached through a zero handle");
        } finally {
            delete_probe_subject(s);
        }
    }

    /** const char* passes null through; std::string refuses it. */
    public static void stringArguments() {
        long s = new_probe_subject__SWIG_0();
        try {
            Check.equal("abc", probe_subject_echo_cstr(s, null, "abc"), "const char*");
            Check.equal(null, probe_subject_echo_cstr(s, null, null), "a null const char* is a null pointer");
            called("echo_cstr(null)");
            Check.equal("ab", probe_subject_join(s, null, "a", "b"), "std::string by value and by const&");
            called("join(a, b)");
            refused(NullPointerException.class, "null std::string", () -> probe_subject_join(s, null, null, "b"));
            refused(NullPointerException.class, "null std::string", () -> probe_subject_join(s, null, "a", null));
        } finally {
            delete_probe_subject(s);
        }
    }

    /** Records and enumerations by reference or value: a zero handle is refused with the declared type. */
    public static void referenceArguments() {
        long s = new_probe_subject__SWIG_0();
        long r = new_PROBE_RECORD();
        long inner = new_PROBE_INNER();
        try {
            PROBE_RECORD_i_set(r, null, 5);
            Check.equal(6, probe_subject_read_ref(s, null, r, null), "T&");
            Check.equal(6, PROBE_RECORD_i_get(r, null), "the callee changed the caller's record");
            Check.equal(6, probe_subject_read_const_ref(s, null, r, null), "const T&");
            PROBE_INNER_value_set(inner, null, 23);
            Check.equal(23, probe_subject_read_value(s, null, inner, null), "a record by value");
            // An enumeration by reference is the address of an int-sized value: the inner record's first field.
            PROBE_INNER_value_set(inner, null, PROBE_MODE_AUTO_get());
            Check.equal(4, probe_subject_read_mode_ref(s, null, inner, null), "enum&");

            refused(NullPointerException.class, "PROBE_RECORD & reference is null",
                    () -> probe_subject_read_ref(s, null, 0L, null));
            refused(NullPointerException.class, "PROBE_RECORD const & reference is null",
                    () -> probe_subject_read_const_ref(s, null, 0L, null));
            refused(NullPointerException.class, "Attempt to dereference null PROBE_INNER",
                    () -> probe_subject_read_value(s, null, 0L, null));
            refused(NullPointerException.class, "PROBE_MODE & reference is null",
                    () -> probe_subject_read_mode_ref(s, null, 0L, null));
            // A pointer may be null.
            Check.equal(0L, probe_subject_inner_of(s, null, 0L, null), "a zero pointer argument");
            called("inner_of(null)");
        } finally {
            delete_PROBE_INNER(inner);
            delete_PROBE_RECORD(r);
            delete_probe_subject(s);
        }
    }

    /** OUTPUT arguments and the String[] in/out holder are one-element arrays. */
    public static void outputArguments() {
        long s = new_probe_subject__SWIG_0();
        try {
            long[] count = {99L};
            int[] value = {99};
            boolean[] flag = {false};
            probe_subject_outputs(s, null, count, value, flag);
            called("outputs(0, 0, false)");  // outputs start at zero whatever the arrays held
            Check.equal(4294967295L, count[0], "unsigned long output, zero-extended");
            Check.equal(-7, value[0], "int& output");
            Check.equal(true, flag[0], "bool* output");

            refused(NullPointerException.class, "array null",
                    () -> probe_subject_outputs(s, null, null, new int[1], new boolean[1]));
            refused(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                    () -> probe_subject_outputs(s, null, new long[1], new int[0], new boolean[1]));
            long[] untouched = {3L};
            refused(NullPointerException.class, "array null",
                    () -> probe_subject_outputs(s, null, untouched, new int[1], null));
            Check.equal(3L, untouched[0], "an output is not written when the call is refused");

            String[] holder = {"ab", "second"};
            Check.equal(4, probe_subject_text_holder(s, null, holder), "in/out text");
            called("text_holder(ab)");
            Check.equal(new String[] {"<ab>", "second"}, holder, "element 0 replaced after the call");
            String[] empty = {null};
            Check.equal(2, probe_subject_text_holder(s, null, empty), "a null element reads as empty");
            Check.equal("<>", empty[0], "a null element replaced");
            refused(NullPointerException.class, "array null", () -> probe_subject_text_holder(s, null, null));
            refused(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                    () -> probe_subject_text_holder(s, null, new String[0]));
        } finally {
            delete_probe_subject(s);
        }
    }

    /** Input arrays are copied in, may be changed by the callee, and are written back converted. */
    public static void arrayArguments() {
        long s = new_probe_subject__SWIG_0();
        try {
            byte[] data = {1, 2, -3, 127};
            Check.equal(127, probe_subject_sum_bytes(s, null, data, 4), "signed char[]");
            Check.equal(new byte[] {-1, -2, 3, -127}, data, "the callee's changes written back");
            long[] values = {0x100000005L, -1L};
            Check.equal(4L, probe_subject_sum_ulongs(s, null, values), "unsigned long[] keeps low 32 bits");
            Check.equal(new long[] {5L, 4294967295L}, values, "unsigned long[] written back zero-extended");
            refused(NullPointerException.class, "null array", () -> probe_subject_sum_bytes(s, null, null, 0));
            refused(NullPointerException.class, "null array", () -> probe_subject_sum_ulongs(s, null, null));

            Object token = new Object();
            Check.that(probe_subject_pass(s, null, token) == token, "a jobject passes through");
            Check.equal(null, probe_subject_pass(s, null, null), "a null jobject passes through");
        } finally {
            delete_probe_subject(s);
        }
    }

    /** Overloads are numbered in declaration order, constructors too. */
    public static void overloads() {
        long plain = new_probe_subject__SWIG_0();
        long started = new_probe_subject__SWIG_1(9);
        try {
            called("probe_subject(9)");
            Check.equal(0, probe_subject_start_get(plain, null), "constructor 0");
            Check.equal(9, probe_subject_start_get(started, null), "constructor 1");
            probe_subject_start_set(started, null, 11);
            Check.equal(11, probe_subject_start_get(started, null), "a field of a class");

            Check.equal(7, probe_subject_overloaded__SWIG_0(plain, null, 7), "overload 0");
            called("overloaded(int)");
            Check.equal(4, probe_subject_overloaded__SWIG_1(plain, null, "abcd"), "overload 1");
            called("overloaded(const char*)");
            Check.equal(-1, probe_subject_overloaded__SWIG_1(plain, null, null), "overload 1 with null");
            Check.equal(5, probe_subject_overloaded__SWIG_2(plain, null, 2, 3), "overload 2");
            called("overloaded(int, int)");
        } finally {
            delete_probe_subject(started);
            delete_probe_subject(plain);
        }
    }

    /** Arguments are converted in order, and the first bad one ends the call. */
    public static void afterChecks() {
        long s = new_probe_subject__SWIG_0();
        long r = new_PROBE_RECORD();
        try {
            PROBE_RECORD_i_set(r, null, 10);
            refused(NullPointerException.class, "PROBE_RECORD & reference is null",
                    () -> probe_subject_after_checks(s, null, 0L, null, null, null));
            refused(NullPointerException.class, "null std::string",
                    () -> probe_subject_after_checks(s, null, r, null, null, new int[0]));
            refused(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                    () -> probe_subject_after_checks(s, null, r, null, "abc", new int[0]));
            int before = probe_subject_reached();
            int[] out = {0};
            Check.equal(0, probe_subject_after_checks(s, null, r, null, "abc", out), "all arguments good");
            Check.equal(before + 1, probe_subject_reached(), "native side reached once");
            Check.equal(13, out[0], "the output written");
        } finally {
            delete_PROBE_RECORD(r);
            delete_probe_subject(s);
        }
    }
}
