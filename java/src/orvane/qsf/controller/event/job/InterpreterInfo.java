package orvane.qsf.controller.event.job;

/** An interpreter (print language) job started. */
public class InterpreterInfo {
    private long userJobId;
    private int nameSetting;
    private long interfaceInfo;
    private String jobName;

    public InterpreterInfo() {}

    public void setUserJobId(long v) { userJobId = v; }
    public void setNameSetting(int v) { nameSetting = v; }
    public void setInterfaceInfo(long v) { interfaceInfo = v; }
    public void setJobName(String v) { jobName = v; }

    public long getUserJobId() { return userJobId; }
    public int getNameSetting() { return nameSetting; }
    public long getInterfaceInfo() { return interfaceInfo; }
    public String getJobName() { return jobName; }

    @Override
    public String toString() {
        return "InterpreterInfo{userJobId=" + userJobId + ", nameSetting=" + nameSetting + ", interfaceInfo="
                + interfaceInfo + ", jobName=" + jobName + "}";
    }
}
