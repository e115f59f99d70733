package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

/**
 * Events the platform hands over synchronously: its thread waits until the method returns. Each arrival is
 * recorded as one line, "method(arguments)".
 */
public final class SynchronousEventProxy {
    private static final List<String> received = new ArrayList<>();

    private SynchronousEventProxy() {}

    /** The events that arrived, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    public static synchronized void clear() {
        received.clear();
    }

    public static void fireResidentAppsStateChanged(int state) {
        String event = "fireResidentAppsStateChanged(" + state + ")";
        synchronized (SynchronousEventProxy.class) {
            received.add(event);
        }
        EventLog.announce(event);
    }
}
