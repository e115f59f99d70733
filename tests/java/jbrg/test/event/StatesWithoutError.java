package jbrg.test.event;

import orvane.qsf.controller.event.job.JobState;

/** Stands in for JobState where a state constant is missing: it has every constant but ERROR. */
public final class StatesWithoutError {
    public static final JobState START = JobState.START;
    public static final JobState COMPLETE = JobState.COMPLETE;
    public static final JobState CANCEL = JobState.CANCEL;
    public static final JobState SCAN_COMPLETE = JobState.SCAN_COMPLETE;

    private StatesWithoutError() {}
}
