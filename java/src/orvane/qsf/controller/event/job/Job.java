package orvane.qsf.controller.event.job;

/** A job as one state change reports it. */
public class Job {
    private int jobid;
    private JobState state;
    private int jobMode;
    private String userName;
    private int indev;
    private int outdev;

    public Job() {}

    public void setJobid(int jobid) { this.jobid = jobid; }
    public void setState(JobState state) { this.state = state; }
    public void setJobMode(int jobMode) { this.jobMode = jobMode; }
    public void setUserName(String userName) { this.userName = userName; }
    public void setIndev(int indev) { this.indev = indev; }
    public void setOutdev(int outdev) { this.outdev = outdev; }

    public int getJobid() { return jobid; }
    public JobState getState() { return state; }
    public int getJobMode() { return jobMode; }
    public String getUserName() { return userName; }
    public int getIndev() { return indev; }
    public int getOutdev() { return outdev; }

    @Override
    public String toString() {
        return "Job{jobid=" + jobid + ", state=" + state + ", jobMode=" + jobMode + ", userName=" + userName
                + ", indev=" + indev + ", outdev=" + outdev + "}";
    }
}
