package orvane.qsf.controller.event.job;

/** The state a job reports: started, ended (completed, cancelled, failed), or finished scanning. */
public enum JobState {
    START,
    COMPLETE,
    CANCEL,
    ERROR,
    SCAN_COMPLETE
}
