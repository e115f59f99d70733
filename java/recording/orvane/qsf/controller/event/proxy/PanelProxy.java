package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

/**
 * The operation panel's events, as the native panel observer delivers them on the panel's own thread.
 *
 * Each event is kept, in arrival order, as a short text: "applStart:<application id>",
 * "applStop:<application id>" or "autoReset".
 */
public final class PanelProxy {
    private static final List<String> received = new ArrayList<>();

    private PanelProxy() {}

    public static void fireApplStartEvent(String applicationId) {
        record("applStart:" + applicationId);
    }

    public static void fireApplStopEvent(String applicationId) {
        record("applStop:" + applicationId);
    }

    public static void fireAutoResetEvent() {
        record("autoReset");
    }

    /** The events received so far, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    /** Forgets the events received so far. */
    public static synchronized void clear() {
        received.clear();
    }

    private static void record(String event) {
        synchronized (PanelProxy.class) {
            received.add(event);
        }
        EventLog.announce(event);
    }
}
