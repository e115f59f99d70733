package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

/**
 * Every event the proxies of this package received, in the order of arrival across all of them, each as
 * the text its proxy keeps.
 */
public final class EventLog {
    private static final List<String> events = new ArrayList<>();

    private EventLog() {}

    static synchronized void add(String event) {
        events.add(event);
    }

    public static synchronized String[] all() {
        return events.toArray(new String[0]);
    }

    public static synchronized void clear() {
        events.clear();
    }
}
