package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;
import java.util.Objects;
import java.util.concurrent.CopyOnWriteArrayList;
import java.util.function.Consumer;

/**
 * Every event the proxies of this package received, in the order of arrival across all of them, each as
 * the text its proxy keeps; and the listeners that react to them.
 *
 * <p>The log holds the job service's and the job information service's events ("state Job{...}",
 * "scanCount a b", "page ScanPageInfo{...}", ...). Listeners hear those and every other proxy's events too, with
 * the text that proxy records: "fireSleepEvent(3)" (device status), "autoReset" or "applStart:app" (panel),
 * "fireICCardEvent(...)" (card reader), "code:appId" (application operations),
 * "fireResidentAppsStateChanged(s)" (synchronous events).
 */
public final class EventLog {
    private static final List<String> events = new ArrayList<>();
    private static final List<Consumer<String>> listeners = new CopyOnWriteArrayList<>();

    private EventLog() {}

    static synchronized void add(String event) {
        events.add(event);
    }

    /** Hands an event's text to every listener; called by the proxies after they recorded it, holding no lock. */
    static void announce(String event) {
        for (Consumer<String> listener : listeners) {
            listener.accept(event);
        }
    }

    public static synchronized String[] all() {
        return events.toArray(new String[0]);
    }

    public static synchronized void clear() {
        events.clear();
    }

    /**
     * Calls {@code listener} with the text of every event a proxy receives from now on, on the device's event
     * thread that delivers it, after the proxy recorded it. The device waits for the listener before it goes on
     * with that event source, so a listener must return soon and must not wait for another event of the same
     * source. What a listener throws goes back to the device's thread as the proxy method's exception.
     */
    public static void addListener(Consumer<String> listener) {
        listeners.add(Objects.requireNonNull(listener, "listener"));
    }

    /** Stops calling {@code listener} (once per time it was added); nothing when it is not registered. */
    public static void removeListener(Consumer<String> listener) {
        listeners.remove(listener);
    }
}
