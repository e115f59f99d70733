package orvane.qsf.controller.event.job;

/** A job's log entry was written or changed. */
public class JobLogInfo {
    private long userJobId;
    private long receiptId;

    public JobLogInfo() {}

    public void setUserJobId(long v) { userJobId = v; }
    public void setReceiptId(long v) { receiptId = v; }

    public long getUserJobId() { return userJobId; }
    public long getReceiptId() { return receiptId; }

    @Override
    public String toString() {
        return "JobLogInfo{userJobId=" + userJobId + ", receiptId=" + receiptId + "}";
    }
}
