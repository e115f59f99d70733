package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

/**
 * Device status events of the status monitor, delivered by the native library on the monitor's threads.
 * Each arrival is recorded as one line, "method(arguments)", for whoever observes the device.
 */
public final class CommonProxy {
    private static final List<String> received = new ArrayList<>();

    private CommonProxy() {}

    private static void record(String event) {
        synchronized (CommonProxy.class) {
            received.add(event);
        }
        EventLog.announce(event);
    }

    /** The events that arrived, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    public static synchronized void clear() {
        received.clear();
    }

    public static void fireLogoutEvent() {
        record("fireLogoutEvent()");
    }

    public static void fireCommunicationErrorEvent() {
        record("fireCommunicationErrorEvent()");
    }

    public static void fireSleepEvent(int state) {
        record("fireSleepEvent(" + state + ")");
    }

    public static void fireUSBDeviceEvent(int status) {
        record("fireUSBDeviceEvent(" + status + ")");
    }

    public static void fireCoinVendorEvent(int status) {
        record("fireCoinVendorEvent(" + status + ")");
    }

    public static void fireTonerLevelEvent(short first, short second) {
        record("fireTonerLevelEvent(" + first + ", " + second + ")");
    }

    public static void firePaperSourceLevelEvent(int source, short level) {
        record("firePaperSourceLevelEvent(" + source + ", " + level + ")");
    }

    public static void fireCoverEvent(long status) {
        record("fireCoverEvent(" + status + ")");
    }

    public static void fireWasteTonerEvent(short status) {
        record("fireWasteTonerEvent(" + status + ")");
    }

    public static void fireKeyDeviceEvent(int status) {
        record("fireKeyDeviceEvent(" + status + ")");
    }
}
