package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

import orvane.qsf.controller.event.job.InterpreterInfo;
import orvane.qsf.controller.event.job.JobLogInfo;

/**
 * Receives the job information service's events from the native bridge, on the device's event thread. The
 * three page kinds (PrintPageInfo, ScanPageInfo, FaxSendPageInfo) arrive through firePageEvent and are told
 * apart by class. It keeps what arrived, in order, as text ("page PrintPageInfo{...}", "jobLog
 * JobLogInfo{...}", "interpreter InterpreterInfo{...}") and the objects themselves.
 */
public final class JobInfoProxy {
    private static final List<String> received = new ArrayList<>();
    private static final List<Object> objects = new ArrayList<>();

    private JobInfoProxy() {}

    public static void firePageEvent(Object page) {
        EventLog.announce(add("page " + page, page));
    }

    public static void fireJobLogEvent(JobLogInfo info) {
        EventLog.announce(add("jobLog " + info, info));
    }

    public static void fireInterpreterEvent(InterpreterInfo info) {
        EventLog.announce(add("interpreter " + info, info));
    }

    private static synchronized String add(String event, Object object) {
        received.add(event);
        objects.add(object);
        EventLog.add(event);
        JobInfoProxy.class.notifyAll();
        return event;
    }

    /** What arrived so far, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    /** The information objects so far, oldest first. */
    public static synchronized Object[] objects() {
        return objects.toArray();
    }

    public static synchronized void clear() {
        received.clear();
        objects.clear();
    }
}
