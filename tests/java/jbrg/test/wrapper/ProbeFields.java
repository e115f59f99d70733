package jbrg.test.wrapper;

import static orvane.qsf.wrapper.probe.wrap_probeJNI.*;

import jbrg.test.Check;
import orvane.qsf.wrapper.probe.wrap_probe_plainJNI;

/** Record fields as the generated accessors expose them to Java. */
public final class ProbeFields {
    private ProbeFields() {}

    /** Every scalar kind keeps the Java type and width the device value maps to. */
    public static void scalarFields() {
        long r = new_PROBE_RECORD();
        try {
            Check.equal("", PROBE_RECORD_text_get(r, null), "a new record is zeroed (text)");
            Check.equal(new short[193], PROBE_RECORD_bytes_get(r, null), "a new record is zeroed (bytes)");

            PROBE_RECORD_i_set(r, null, -123456);
            Check.equal(-123456, PROBE_RECORD_i_get(r, null), "int");
            PROBE_RECORD_l_set(r, null, Integer.MIN_VALUE);
            Check.equal(Integer.MIN_VALUE, PROBE_RECORD_l_get(r, null), "the device's long is a Java int");
            PROBE_RECORD_ll_set(r, null, Long.MIN_VALUE + 1);
            Check.equal(Long.MIN_VALUE + 1, PROBE_RECORD_ll_get(r, null), "long long keeps 64 bits");

            // Unsigned 32-bit values: the low 32 bits of the Java long go in, zero-extended values come out.
            PROBE_RECORD_ul_set(r, null, 0x100000005L);
            Check.equal(5L, PROBE_RECORD_ul_get(r, null), "unsigned long keeps the low 32 bits");
            PROBE_RECORD_ul_set(r, null, -1L);
            Check.equal(4294967295L, PROBE_RECORD_ul_get(r, null), "unsigned long reads back zero-extended");
            PROBE_RECORD_ui_set(r, null, 0x1FFFFFFFEL);
            Check.equal(4294967294L, PROBE_RECORD_ui_get(r, null), "unsigned int");
            PROBE_RECORD_id_set(r, null, -2L);
            Check.equal(4294967294L, PROBE_RECORD_id_get(r, null), "a typedef of unsigned int");

            PROBE_RECORD_us_set(r, null, -1);
            Check.equal(65535, PROBE_RECORD_us_get(r, null), "unsigned short is a non-negative int");
            PROBE_RECORD_uc_set(r, null, (short) 300);
            Check.equal((short) 44, PROBE_RECORD_uc_get(r, null), "unsigned char is truncated to a byte");
            PROBE_RECORD_uc_set(r, null, (short) -1);
            Check.equal((short) 255, PROBE_RECORD_uc_get(r, null), "unsigned char is a non-negative short");
            PROBE_RECORD_sc_set(r, null, (byte) -5);
            Check.equal((byte) -5, PROBE_RECORD_sc_get(r, null), "signed char is a byte");
            PROBE_RECORD_s_set(r, null, Short.MIN_VALUE);
            Check.equal(Short.MIN_VALUE, PROBE_RECORD_s_get(r, null), "short");
            PROBE_RECORD_b_set(r, null, true);
            Check.equal(true, PROBE_RECORD_b_get(r, null), "bool");
            PROBE_RECORD_f_set(r, null, 2.5f);
            Check.equal(2.5f, PROBE_RECORD_f_get(r, null), "float");
            PROBE_RECORD_d_set(r, null, -1e300);
            Check.equal(-1e300, PROBE_RECORD_d_get(r, null), "double");
            PROBE_RECORD_mode_set(r, null, PROBE_MODE_AUTO_get());
            Check.equal(4, PROBE_RECORD_mode_get(r, null), "an enumeration is its int value");
        } finally {
            delete_PROBE_RECORD(r);
        }
    }

    /** A zero record handle reaches no record: setters do nothing, getters answer zero or null. */
    public static void zeroOwner() {
        PROBE_RECORD_i_set(0L, null, 5);
        PROBE_RECORD_text_set(0L, null, "text");
        PROBE_RECORD_bytes_set(0L, null, new short[193]);
        PROBE_RECORD_name_set(0L, null, null);
        PROBE_RECORD_inner_set(0L, null, 0L, null);
        Check.equal(0, PROBE_RECORD_i_get(0L, null), "int getter");
        Check.equal(0L, PROBE_RECORD_ul_get(0L, null), "unsigned long getter");
        Check.equal(false, PROBE_RECORD_b_get(0L, null), "bool getter");
        Check.equal(null, PROBE_RECORD_text_get(0L, null), "text getter");
        Check.equal(null, PROBE_RECORD_bytes_get(0L, null), "array getter");
        Check.equal(null, PROBE_RECORD_name_get(0L, null), "string getter");
        Check.equal(0L, PROBE_RECORD_inner_get(0L, null), "record getter");
        Check.equal(0L, PROBE_RECORD_inners_get(0L, null), "record array getter");
    }

    /** char[N] fields hold at most N-1 characters and always end in a zero; std::string fields any text. */
    public static void textFields() {
        long r = new_PROBE_RECORD();
        try {
            PROBE_RECORD_text_set(r, null, "hello");
            Check.equal("hello", PROBE_RECORD_text_get(r, null), "a short text");
            PROBE_RECORD_text_set(r, null, "abcdefghijklmnopqrst");
            Check.equal("abcdefghijklmnop", PROBE_RECORD_text_get(r, null), "20 characters into char[17]");
            PROBE_RECORD_text_set(r, null, null);
            Check.equal("", PROBE_RECORD_text_get(r, null), "null stores the empty text");
            // The byte after the text field belongs to the next field, which a full text must not touch.
            PROBE_RECORD_bytes_set(r, null, filled((short) 7));
            PROBE_RECORD_text_set(r, null, "0123456789abcdefXYZ");
            Check.equal("0123456789abcdef", PROBE_RECORD_text_get(r, null), "a full text");
            Check.equal(filled((short) 7), PROBE_RECORD_bytes_get(r, null), "the field after a full text");

            // A cut never stores part of a character: "€" takes 3 bytes, so 5 fit in 16; an emoji is two
            // surrogates of 3 bytes each, kept together or not at all; U+0000 is C0 80 in Java's own encoding.
            PROBE_RECORD_text_set(r, null, "€".repeat(10000));
            Check.equal("€".repeat(5), PROBE_RECORD_text_get(r, null), "a cut between whole characters");
            PROBE_RECORD_text_set(r, null, "abcde" + "\uD83D\uDE00".repeat(5000));
            Check.equal("abcde\uD83D\uDE00", PROBE_RECORD_text_get(r, null), "an emoji is never cut in two");
            PROBE_RECORD_text_set(r, null, "a\u0000b%s%n");
            Check.equal("a\u0000b%s%n", PROBE_RECORD_text_get(r, null), "an embedded NUL and format text");
            // A wide field takes the same cuts, whether the text is converted into the field, into the stack or
            // (more than a kilobyte) into the heap.
            PROBE_RECORD_wide_set(r, null, "€".repeat(133));
            Check.equal("€".repeat(133), PROBE_RECORD_wide_get(r, null), "399 bytes into char[400]");
            PROBE_RECORD_wide_set(r, null, "€".repeat(200));
            Check.equal("€".repeat(133), PROBE_RECORD_wide_get(r, null), "a cut in a wide field");
            PROBE_RECORD_wide_set(r, null, "ab" + "\uD83D\uDE00".repeat(300));
            Check.equal("ab" + "\uD83D\uDE00".repeat(66), PROBE_RECORD_wide_get(r, null), "no emoji cut in two");
            PROBE_RECORD_wide_set(r, null, "x".repeat(100000));
            Check.equal("x".repeat(399), PROBE_RECORD_wide_get(r, null), "a long text into a wide field");

            long inner = PROBE_RECORD_inner_get(r, null);
            PROBE_INNER_label_set(inner, null, "labelled");
            Check.equal("labelle", PROBE_INNER_label_get(inner, null), "char[8] keeps 7 characters");

            PROBE_RECORD_name_set(r, null, "a name longer than any char field here");
            Check.equal("a name longer than any char field here", PROBE_RECORD_name_get(r, null), "std::string");
            Check.throwsWith(NullPointerException.class, "null std::string",
                    () -> PROBE_RECORD_name_set(r, null, null));
            Check.equal("a name longer than any char field here", PROBE_RECORD_name_get(r, null),
                    "a null std::string leaves the field unchanged");
        } finally {
            delete_PROBE_RECORD(r);
        }
    }

    /** Primitive array fields of a module with Java arrays: exactly N elements in, a new array out. */
    public static void arrayFields() {
        long r = new_PROBE_RECORD();
        try {
            short[] bytes = new short[193];
            short[] expected = new short[193];
            for (int i = 0; i < bytes.length; ++i) {
                bytes[i] = (short) (i * 3 - 100);
                expected[i] = (short) ((i * 3 - 100) & 0xFF);
            }
            PROBE_RECORD_bytes_set(r, null, bytes);
            short[] got = PROBE_RECORD_bytes_get(r, null);
            Check.equal(expected, got, "each short is truncated to a byte");
            got[0] = 99;
            Check.equal(expected, PROBE_RECORD_bytes_get(r, null), "the array got is a copy");

            Check.throwsWith(IndexOutOfBoundsException.class, "incorrect array size",
                    () -> PROBE_RECORD_bytes_set(r, null, new short[192]));
            Check.throwsWith(IndexOutOfBoundsException.class, "incorrect array size",
                    () -> PROBE_RECORD_bytes_set(r, null, new short[194]));
            Check.throwsWith(NullPointerException.class, "null array",
                    () -> PROBE_RECORD_bytes_set(r, null, null));
            Check.equal(expected, PROBE_RECORD_bytes_get(r, null), "a rejected array leaves the field unchanged");

            PROBE_RECORD_ids_set(r, null, new long[] {0x100000005L, -1L, 7L, 0x80000000L});
            Check.equal(new long[] {5L, 4294967295L, 7L, 0x80000000L}, PROBE_RECORD_ids_get(r, null),
                    "unsigned long elements keep their low 32 bits, zero-extended");
        } finally {
            delete_PROBE_RECORD(r);
        }
    }

    /** A record inside a record: its address is handed out, and setting it copies the whole record. */
    public static void nestedRecords() {
        long r = new_PROBE_RECORD();
        long source = new_PROBE_INNER();
        long other = new_PROBE_RECORD();
        try {
            long inner = PROBE_RECORD_inner_get(r, null);
            Check.that(inner != 0L, "the nested record has an address");
            PROBE_INNER_value_set(inner, null, 41);
            Check.equal(41, PROBE_INNER_value_get(PROBE_RECORD_inner_get(r, null), null),
                    "writing through the address changes the owner");

            PROBE_INNER_value_set(source, null, 17);
            PROBE_INNER_label_set(source, null, "src");
            PROBE_RECORD_inner_set(r, null, source, null);
            PROBE_INNER_value_set(source, null, 18);
            Check.equal(17, PROBE_INNER_value_get(inner, null), "the setter copies the value");
            Check.equal("src", PROBE_INNER_label_get(inner, null), "the setter copies the whole record");

            Check.throwsWith(NullPointerException.class, "Attempt to dereference null PROBE_INNER",
                    () -> PROBE_RECORD_inner_set(r, null, 0L, null));
            Check.equal(17, PROBE_INNER_value_get(inner, null), "a zero source leaves the record unchanged");

            // An array of records crosses as the address of its first element; the elements follow at the
            // stride of one record, which is the distance from the single record to the array after it.
            long stride = PROBE_RECORD_inners_get(r, null) - inner;
            long mine = PROBE_RECORD_inners_get(r, null);
            long theirs = PROBE_RECORD_inners_get(other, null);
            for (int k = 0; k < 3; ++k) {
                PROBE_INNER_value_set(theirs + k * stride, null, 100 + k);
                PROBE_INNER_label_set(theirs + k * stride, null, "e" + k);
            }
            PROBE_RECORD_inners_set(r, null, theirs, null);
            for (int k = 0; k < 3; ++k) {
                Check.equal(100 + k, PROBE_INNER_value_get(mine + k * stride, null), "copied element " + k);
                Check.equal("e" + k, PROBE_INNER_label_get(mine + k * stride, null), "copied label " + k);
            }
            PROBE_RECORD_inners_set(r, null, 0L, null);
            Check.equal(100, PROBE_INNER_value_get(mine, null), "a zero source copies nothing");
            Check.equal(17, PROBE_INNER_value_get(inner, null), "the array setter stays inside the array");
        } finally {
            delete_PROBE_RECORD(other);
            delete_PROBE_INNER(source);
            delete_PROBE_RECORD(r);
        }
    }

    /** A record declared in two modules behaves alike through either module's accessors. */
    public static void sharedRecord() {
        long a = new_PROBE_INNER();
        long b = wrap_probe_plainJNI.new_PROBE_INNER();
        try {
            Check.equal(0, wrap_probe_plainJNI.PROBE_INNER_value_get(b, null), "a new record is zeroed");
            Check.equal("", wrap_probe_plainJNI.PROBE_INNER_label_get(b, null), "a new label is empty");
            PROBE_INNER_value_set(a, null, -9);
            PROBE_INNER_label_set(a, null, "from probe");
            Check.equal(-9, wrap_probe_plainJNI.PROBE_INNER_value_get(a, null), "value read by the other module");
            Check.equal("from pr", wrap_probe_plainJNI.PROBE_INNER_label_get(a, null),
                    "label read by the other module");
            wrap_probe_plainJNI.PROBE_INNER_label_set(b, null, "from plain");
            Check.equal("from pl", PROBE_INNER_label_get(b, null), "the same cut in both modules");
            wrap_probe_plainJNI.PROBE_INNER_label_set(b, null, null);
            Check.equal("", PROBE_INNER_label_get(b, null), "null is the empty text in both modules");

            // A record of one module given to a field of the other's.
            long plain = wrap_probe_plainJNI.new_PROBE_PLAIN();
            try {
                wrap_probe_plainJNI.PROBE_PLAIN_single_set(plain, null, a, null);
                long single = wrap_probe_plainJNI.PROBE_PLAIN_single_get(plain, null);
                Check.equal(-9, PROBE_INNER_value_get(single, null), "copied between modules");
                Check.throwsWith(NullPointerException.class, "Attempt to dereference null PROBE_INNER",
                        () -> wrap_probe_plainJNI.PROBE_PLAIN_single_set(plain, null, 0L, null));
            } finally {
                wrap_probe_plainJNI.delete_PROBE_PLAIN(plain);
            }
        } finally {
            wrap_probe_plainJNI.delete_PROBE_INNER(b);
            delete_PROBE_INNER(a);
        }
    }

    private static short[] filled(short value) {
        short[] array = new short[193];
        java.util.Arrays.fill(array, value);
        return array;
    }
}
