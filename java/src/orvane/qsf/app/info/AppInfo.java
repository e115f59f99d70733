package orvane.qsf.app.info;

/** One installed application, as the application list gives it. */
public class AppInfo {
    public String appID;
    public String appName;
    public String version;
    /** 1 stopped, 2 running, 3 starting or stopping. */
    public int executionStatus;

    public AppInfo() {}

    @Override
    public String toString() {
        return appID + "|" + appName + "|" + version + "|" + executionStatus;
    }
}
