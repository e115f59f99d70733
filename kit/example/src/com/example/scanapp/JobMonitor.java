package com.example.scanapp;

import java.util.HashMap;
import java.util.Map;
import java.util.function.Consumer;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Follows the device's jobs from their events: the state changes and pages the device reports for each user
 * job. Registered with the event proxies' listener, it runs on the device's event threads, so it only records
 * and wakes whoever waits.
 */
public final class JobMonitor implements Consumer<String> {
    private static final Pattern STATE = Pattern.compile("^state Job\\{jobid=(-?\\d+), state=(\\w+)");
    private static final Pattern PAGE = Pattern.compile("^page \\w+PageInfo\\{userJobId=(\\d+), pageNum=(\\d+)");

    private final Map<Long, String> states = new HashMap<>();
    private final Map<Long, Integer> pages = new HashMap<>();

    @Override
    public synchronized void accept(String event) {
        Matcher state = STATE.matcher(event);
        if (state.find()) {
            states.put(Long.parseLong(state.group(1)), state.group(2));
            notifyAll();
            return;
        }
        Matcher page = PAGE.matcher(event);
        if (page.find()) {
            pages.merge(Long.parseLong(page.group(1)), 1, Integer::sum);
        }
    }

    /** The last state the device reported for a job (START, SCAN_COMPLETE, COMPLETE, CANCEL, ERROR); null before any. */
    public synchronized String state(long userJobId) {
        return states.get(userJobId);
    }

    /** The pages the device reported for a job so far. */
    public synchronized int pages(long userJobId) {
        return pages.getOrDefault(userJobId, 0);
    }

    /**
     * Waits until the job has ended, at most {@code timeoutMillis}.
     *
     * @return its end state (COMPLETE, CANCEL or ERROR), or null when it did not end in time
     */
    public synchronized String awaitEnd(long userJobId, long timeoutMillis) throws InterruptedException {
        long end = System.currentTimeMillis() + timeoutMillis;
        while (!ended(states.get(userJobId))) {
            long left = end - System.currentTimeMillis();
            if (left <= 0) {
                return null;
            }
            wait(left);
        }
        return states.get(userJobId);
    }

    private static boolean ended(String state) {
        return "COMPLETE".equals(state) || "CANCEL".equals(state) || "ERROR".equals(state);
    }
}
