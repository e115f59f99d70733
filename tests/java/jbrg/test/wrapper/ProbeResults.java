package jbrg.test.wrapper;

import static orvane.qsf.wrapper.probe.wrap_probeJNI.*;

import jbrg.test.Check;

/** Results, constants and globals. */
public final class ProbeResults {
    private ProbeResults() {}

    /** A record returned by value is a new heap copy; a pointer result is the address itself. */
    public static void recordResults() {
        long s = new_probe_subject__SWIG_0();
        long first = make_record(s, 5);
        long second = make_record(s, 6);
        try {
            Check.that(first != 0L && second != 0L && first != second, "each result is a record of its own");
            Check.equal(5, PROBE_RECORD_i_get(first, null), "the copy's int");
            Check.equal("made", PROBE_RECORD_text_get(first, null), "the copy's text");
            Check.equal("record", PROBE_RECORD_name_get(first, null), "the copy's std::string");
            PROBE_RECORD_name_set(second, null, "changed");
            Check.equal("record", PROBE_RECORD_name_get(first, null), "the copies are independent");
            Check.equal(6, PROBE_RECORD_i_get(second, null), "the second copy's int");

            Check.equal(PROBE_RECORD_inner_get(first, null), probe_subject_inner_of(s, null, first, null),
                    "a pointer result is the address inside the record");
            PROBE_INNER_value_set(probe_subject_inner_of(s, null, second, null), null, 8);
            Check.equal(8, PROBE_INNER_value_get(PROBE_RECORD_inner_get(second, null), null),
                    "writing through a pointer result changes the record");

            // delete_ frees only what the module made for Java, once: a record inside another and a
            // second delete of the same record are left alone (freeing either would end the VM).
            delete_PROBE_INNER(PROBE_RECORD_inner_get(first, null));
            delete_PROBE_RECORD(second);
            delete_PROBE_RECORD(second);
            Check.equal(5, PROBE_RECORD_i_get(first, null), "the record around a refused delete lives on");
        } finally {
            delete_PROBE_RECORD(first);
            delete_probe_subject(s);
        }
    }

    private static long make_record(long s, int i) {
        long r = probe_subject_make_record(s, null, i);
        Check.equal("make_record(" + i + ")", probe_subject_last_call_get(), "the native call");
        return r;
    }

    /** Enumerators, constants, globals and static members. */
    public static void constantsAndGlobals() {
        Check.equal(0, PROBE_MODE_OFF_get(), "PROBE_MODE_OFF");
        Check.equal(3, PROBE_MODE_ON_get(), "PROBE_MODE_ON");
        Check.equal(4, PROBE_MODE_AUTO_get(), "PROBE_MODE_AUTO follows ON");
        Check.equal(4096, PROBE_LIMIT_get(), "PROBE_LIMIT");
        Check.equal("probe", PROBE_NAME_get(), "PROBE_NAME");

        int counter = probe_counter_get();
        try {
            probe_counter_set(-42);
            Check.equal(-42, probe_counter_get(), "a global int");
        } finally {
            probe_counter_set(counter);
        }

        String last = probe_subject_last_call_get();
        try {
            probe_subject_last_call_set("set from Java");
            Check.equal("set from Java", probe_subject_last_call_get(), "a static std::string member");
            Check.throwsWith(NullPointerException.class, "null std::string", () -> probe_subject_last_call_set(null));
            Check.equal("set from Java", probe_subject_last_call_get(), "a refused null leaves the member");
        } finally {
            probe_subject_last_call_set(last);
        }
    }

    /** A class standing for a std::vector: its operations, index checks and use as a reference argument. */
    public static void vectorClass() {
        long v = new_probe_vector__SWIG_0();
        long sized = new_probe_vector__SWIG_1(3L);
        long s = new_probe_subject__SWIG_0();
        try {
            Check.equal(true, probe_vector_isEmpty(v, null), "a new vector is empty");
            Check.equal(3L, probe_vector_size(sized, null), "a vector made with a size");
            Check.equal(0L, probe_vector_get(sized, null, 2), "its elements are zero");
            probe_vector_reserve(v, null, 16L);
            Check.that(probe_vector_capacity(v, null) >= 16L, "reserve grows the capacity");
            probe_vector_add(v, null, 0x100000007L);
            probe_vector_add(v, null, 4294967295L);
            Check.equal(2L, probe_vector_size(v, null), "two added");
            Check.equal(7L, probe_vector_get(v, null, 0), "an element keeps its low 32 bits");
            Check.equal(4294967295L, probe_vector_get(v, null, 1), "and comes back zero-extended");
            probe_vector_set(v, null, 1, 9L);
            Check.equal(9L, probe_vector_get(v, null, 1), "set");
            Check.throwsWith(IndexOutOfBoundsException.class, "vector index out of range",
                    () -> probe_vector_get(v, null, 2));
            Check.throwsWith(IndexOutOfBoundsException.class, "vector index out of range",
                    () -> probe_vector_set(v, null, -1, 1L));

            // A count beyond what the device's vector can hold (-1 is 4294967295 there) allocates nothing.
            long capacity = probe_vector_capacity(v, null);
            Check.throwsWith(IllegalArgumentException.class,
                    "vector size 4294967295 is more than the device can hold (536870911)",
                    () -> probe_vector_reserve(v, null, -1L));
            Check.equal(capacity, probe_vector_capacity(v, null), "a refused reserve leaves the vector as it was");
            Check.throwsWith(IllegalArgumentException.class,
                    "vector size 536870912 is more than the device can hold (536870911)",
                    () -> new_probe_vector__SWIG_1(536870912L));
            long wrapped = new_probe_vector__SWIG_1((1L << 32) + 5);
            Check.equal(5L, probe_vector_size(wrapped, null), "a count keeps its low 32 bits, as on the device");
            delete_probe_vector(wrapped);

            Check.equal(2, probe_subject_fill_vector(s, null, v, null, 2), "filled by the native side");
            Check.equal(4294967281L, probe_vector_get(v, null, 1), "what the native side put in");
            int before = probe_subject_reached();
            Check.throwsWith(NullPointerException.class, "std::vector< unsigned int > & reference is null",
                    () -> probe_subject_fill_vector(s, null, 0L, null, 1));
            Check.equal(before, probe_subject_reached(), "not reached with a zero vector");
            probe_vector_clear(v, null);
            Check.equal(true, probe_vector_isEmpty(v, null), "cleared");
        } finally {
            delete_probe_vector(v);
            delete_probe_vector(sized);
            delete_probe_subject(s);
        }
    }
}
