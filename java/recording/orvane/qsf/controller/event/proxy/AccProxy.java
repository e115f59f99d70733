package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;
import orvane.qsf.controller.event.device.ICCardInfo;
import orvane.qsf.controller.event.device.SystemData;

/**
 * Events of the IC card reader, delivered by the native library on the reader's threads. Each arrival is
 * recorded as one line, "method(arguments)", a card with its id, type bit and data; the cards themselves are
 * kept too.
 */
public final class AccProxy {
    private static final List<String> received = new ArrayList<>();
    private static final List<ICCardInfo> cards = new ArrayList<>();

    private AccProxy() {}

    /** The events that arrived, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    /** The cards that arrived, oldest first. */
    public static synchronized ICCardInfo[] cards() {
        return cards.toArray(new ICCardInfo[0]);
    }

    public static synchronized void clear() {
        received.clear();
        cards.clear();
    }

    public static void fireICCardEvent(ICCardInfo info) {
        String event = "fireICCardEvent(" + describe(info) + ")";
        synchronized (AccProxy.class) {
            cards.add(info);
            received.add(event);
        }
        EventLog.announce(event);
    }

    public static void fireICCardErrorEvent(int error) {
        record("fireICCardErrorEvent(" + error + ")");
    }

    public static void fireICCardDeviceEvent(int vendor, int product, boolean added, byte cardTypes) {
        record("fireICCardDeviceEvent(" + vendor + ", " + product + ", " + added + ", " + cardTypes + ")");
    }

    private static void record(String event) {
        synchronized (AccProxy.class) {
            received.add(event);
        }
        EventLog.announce(event);
    }

    /** "id=..., type=..., data=[...]": each entry as {system=..., services=[...], sectors=[...], blocks=[hex,...]}. */
    private static String describe(ICCardInfo info) {
        if (info == null) {
            return "null";
        }
        StringBuilder text = new StringBuilder();
        text.append("id=").append(info.getCardId()).append(", type=").append(info.getCardType()).append(", data=");
        SystemData[] data = info.getSystemData();
        if (data == null) {
            return text.append("null").toString();
        }
        text.append('[');
        for (int i = 0; i < data.length; i++) {
            if (i > 0) {
                text.append(", ");
            }
            SystemData entry = data[i];
            text.append("{system=").append(entry.getSystemCode());
            text.append(", services=").append(java.util.Arrays.toString(entry.getServiceCode()));
            text.append(", sectors=").append(java.util.Arrays.toString(entry.getSectorNum()));
            text.append(", blocks=[");
            byte[][] blocks = entry.getBlockData();
            for (int b = 0; blocks != null && b < blocks.length; b++) {
                if (b > 0) {
                    text.append(", ");
                }
                text.append(hex(blocks[b]));
            }
            text.append("]}");
        }
        return text.append(']').toString();
    }

    private static String hex(byte[] bytes) {
        if (bytes == null) {
            return "null";
        }
        StringBuilder text = new StringBuilder();
        for (byte b : bytes) {
            text.append(String.format("%02x", b & 0xff));
        }
        return text.toString();
    }
}
