package jbrg.test.event;

import orvane.qsf.controller.event.job.JobState;

/** Stands in for Job where a setter is missing: it has every setter but setOutdev. */
public class JobWithoutOutdev {
    public JobWithoutOutdev() {}

    public void setJobid(int v) {}
    public void setState(JobState v) {}
    public void setJobMode(int v) {}
    public void setUserName(String v) {}
    public void setIndev(int v) {}
}
