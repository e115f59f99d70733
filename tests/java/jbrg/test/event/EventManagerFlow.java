package jbrg.test.event;

import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;

/** The event manager as a Java application drives it: made, initialised and terminated from Java. */
public final class EventManagerFlow {
    private EventManagerFlow() {}

    public static long create() {
        return qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
    }

    public static boolean init(long manager) {
        return qsf_fnd_eventJNI.qsf_fnd_event_manager_init(manager, null);
    }

    public static boolean terminate(long manager) {
        return qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(manager, null);
    }

    public static void delete(long manager) {
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(manager);
    }
}
