package orvane.qsf.controller.event.proxy;

import java.util.ArrayList;
import java.util.List;

import orvane.qsf.controller.event.job.Job;

/**
 * Receives the job service's events from the native bridge, on the device's event thread. It keeps what
 * arrived, in order, as text ("state Job{...}", "scanCount a b", "startProhibition v", "combConstraint v",
 * "panelMessageUpdate v") and the Job objects themselves, for whoever looks.
 */
public final class JobProxy {
    private static final List<String> received = new ArrayList<>();
    private static final List<Job> jobs = new ArrayList<>();

    private JobProxy() {}

    public static synchronized void fireJobStateChangedEvent(Job job) {
        jobs.add(job);
        add("state " + job);
    }

    public static synchronized void fireScanCountEvent(long count1, long count2) {
        add("scanCount " + count1 + " " + count2);
    }

    public static synchronized void fireStartProhibitionEvent(long value) {
        add("startProhibition " + value);
    }

    public static synchronized void fireCombConstraintEvent(long value) {
        add("combConstraint " + value);
    }

    public static synchronized void firePanelMessageUpdateEvent(long value) {
        add("panelMessageUpdate " + value);
    }

    private static void add(String event) {
        received.add(event);
        EventLog.add(event);
        JobProxy.class.notifyAll();
    }

    /** What arrived so far, oldest first. */
    public static synchronized String[] received() {
        return received.toArray(new String[0]);
    }

    /** The Job objects of the state changes so far, oldest first. */
    public static synchronized Job[] jobs() {
        return jobs.toArray(new Job[0]);
    }

    /** Waits up to timeoutMillis until at least count events have arrived; true when they have. */
    public static synchronized boolean await(int count, long timeoutMillis) throws InterruptedException {
        long end = System.currentTimeMillis() + timeoutMillis;
        while (received.size() < count) {
            long left = end - System.currentTimeMillis();
            if (left <= 0) return false;
            JobProxy.class.wait(left);
        }
        return true;
    }

    public static synchronized void clear() {
        received.clear();
        jobs.clear();
    }
}
