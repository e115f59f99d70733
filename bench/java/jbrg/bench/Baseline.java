package jbrg.bench;

/**
 * The benchmark's own natives (libjbrgbenchbase.so): the hand-written paths the bridge's paths are measured
 * against, and the simulated device's event sources, driven from native threads.
 */
final class Baseline {
    static {
        System.loadLibrary("jbrgbenchbase");
    }

    private Baseline() {}

    /** An empty native: what any JNI call costs. */
    static native int empty(int value);

    /** A user information record as the generated module's new_ makes it, and its disposal. */
    static native long newRecord();

    static native void deleteRecord(long handle);

    /** The record's rights field, by hand. */
    static native int getRights(long handle, Object owner);

    static native void setRights(long handle, Object owner, int value);

    /** The record's user name field, by hand (NewStringUTF, GetStringUTFRegion). */
    static native String getUserName(long handle, Object owner);

    static native void setUserName(long handle, Object owner, String value);

    /** Looks up the event proxies; false when one is missing. */
    static native boolean initEvents();

    /**
     * Fires {@code count} events of one observer kind (see {@link Events}) through the simulated device from
     * {@code threads} native threads; the elapsed nanoseconds, or -1 when an event was not delivered.
     */
    static native long fire(int kind, int count, int threads);

    /** The same number of bare deliveries: service thread hop, attach, the same static call, detach. */
    static native long bare(int kind, int count, int threads);

    /** Replaces what the simulated device holds with the scenario given as JSON text. */
    static native void loadScenario(String json);

    /**
     * Reads the device's listing of one kind of {@link Listings} once and keeps its records for
     * {@link #build}; the number of records.
     */
    static native int keep(int kind);

    /** The box whose documents {@link #keep} kept (the box holding documents). */
    static native long documentBox();

    /** The kept records' Java objects built by hand: a list, or for addresses an array. */
    static native Object build(int kind);

    /** The device's listing of one kind alone, nothing built: the number of records it handed back. */
    static native int platform(int kind);

    /** Clears the simulated device's call log and trace lines. */
    static native void clearLogs();
}
