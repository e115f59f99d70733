package jbrg.simulator;

/**
 * A job state change as the job service reports it to its observers; the content of
 * {@link SimulatedDevice#fireJobStateChanged(JobState)}.
 *
 * @param state           {@link #STATE_START}, {@link #STATE_END} or {@link #STATE_SCAN_END}
 * @param userJobId       the user job whose state changed
 * @param result          the end status for {@link #STATE_END}: {@link #RESULT_COMPLETE}, {@link #RESULT_CANCEL},
 *                        {@link #RESULT_ERROR}
 * @param jobMode         the device's job mode
 * @param userName        the job's user name (up to 128 bytes are sent)
 * @param inDevice        the input device code (0..255)
 * @param outDevice       the output device code (0..255)
 * @param inputBoxId      the box the job reads from (0: none)
 * @param outputBoxId     the box the job stores to (0: none)
 * @param formBoxId       the form box (0: none)
 * @param receiptId       the job log receipt id
 * @param systemUserJobId the job's id in the device's system information
 */
public record JobState(int state, long userJobId, int result, int jobMode, String userName, int inDevice,
        int outDevice, long inputBoxId, long outputBoxId, long formBoxId, long receiptId, long systemUserJobId) {
    public static final int STATE_START = 0;
    public static final int STATE_END = 1;
    public static final int STATE_SCAN_END = 2;
    public static final int RESULT_COMPLETE = 0;
    public static final int RESULT_CANCEL = 1;
    public static final int RESULT_ERROR = 2;

    /** A state change with only its kind, job, end status and user name; every other field 0. */
    public static JobState of(int state, long userJobId, int result, String userName) {
        return new JobState(state, userJobId, result, 0, userName, 0, 0, 0, 0, 0, 0, 0);
    }
}
