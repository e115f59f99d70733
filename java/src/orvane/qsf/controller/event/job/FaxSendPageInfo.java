package orvane.qsf.controller.event.job;

/** One fax page sent. */
public class FaxSendPageInfo {
    private long userJobId;
    private long pageNum;

    public FaxSendPageInfo() {}

    public void setUserJobId(long v) { userJobId = v; }
    public void setPageNum(long v) { pageNum = v; }

    public long getUserJobId() { return userJobId; }
    public long getPageNum() { return pageNum; }

    @Override
    public String toString() {
        return "FaxSendPageInfo{userJobId=" + userJobId + ", pageNum=" + pageNum + "}";
    }
}
