package jbrg.simulator;

/**
 * One user job (a started job) as the simulated device holds it.
 *
 * @param userJobId      its user job id
 * @param serviceId      the service it was started from
 * @param handlerId      the job information set it was built from
 * @param category       its job category
 * @param certId         the certificate of the set it was built from (0: none)
 * @param cancelled      whether it was cancelled
 * @param cancelCertId   the certificate the cancel was made with
 * @param cancelBackground whether it was cancelled through the background (certificate) call
 * @param continuousRead whether it reads originals continuously
 * @param stream         the bytes a stream job received, in order
 * @param streamChunks   accepted stream data calls
 * @param streamState    the state of the last accepted chunk; -1 before the first
 * @param started        whether its start was reported
 * @param pagesDone      pages reported so far
 * @param pages          pages it has (fixed when it was kicked)
 * @param ended          whether its end was reported
 * @param endResult      the end status reported ({@link JobState#RESULT_COMPLETE}, ...); -1 before the end
 */
public record UserJob(long userJobId, long serviceId, long handlerId, int category, long certId, boolean cancelled,
        long cancelCertId, boolean cancelBackground, boolean continuousRead, byte[] stream, long streamChunks,
        int streamState, boolean started, long pagesDone, long pages, boolean ended, int endResult) {
    public UserJob {
        stream = stream.clone();
    }

    /** The bytes a stream job received (a copy). */
    @Override
    public byte[] stream() {
        return stream.clone();
    }
}
