package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

/**
 * Receives the device's application operation requests. Each request is recorded as "code:appId" (or "code"
 * for basis control); the synchronous ones are answered with the settable answer (true unless set).
 */
public final class AppOperationProxy {
    private static final List<String> received = new ArrayList<>();
    private static boolean answer = true;

    private AppOperationProxy() {}

    public static void fireAppOperationEvent(int code, String appId) {
        record(code + ":" + appId);
    }

    public static boolean fireSyncAppOperationPlatformEvent(int code) {
        return record(Integer.toString(code));
    }

    public static boolean fireSyncAppOperationEvent(int code, String appId) {
        return record(code + ":" + appId);
    }

    private static boolean record(String event) {
        boolean given;
        synchronized (AppOperationProxy.class) {
            received.add(event);
            given = answer;
        }
        EventLog.announce(event);
        return given;
    }

    /** The requests received so far, in order. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    public static synchronized void clear() {
        received.clear();
        answer = true;
    }

    public static synchronized void setAnswer(boolean value) {
        answer = value;
    }
}
