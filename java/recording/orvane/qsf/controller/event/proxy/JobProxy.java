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

    public static void fireJobStateChangedEvent(Job job) {
        EventLog.announce(add("state " + job, job));
    }

    public static void fireScanCountEvent(long count1, long count2) {
        EventLog.announce(add("scanCount " + count1 + " " + count2, null));
    }

    public static void fireStartProhibitionEvent(long value) {
        EventLog.announce(add("startProhibition " + value, null));
    }

    public static void fireCombConstraintEvent(long value) {
        EventLog.announce(add("combConstraint " + value, null));
    }

    public static void firePanelMessageUpdateEvent(long value) {
        EventLog.announce(add("panelMessageUpdate " + value, null));
    }

    private static synchronized String add(String event, Job job) {
        if (job != null) {
            jobs.add(job);
        }
        received.add(event);
        EventLog.add(event);
        JobProxy.class.notifyAll();
        return event;
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
