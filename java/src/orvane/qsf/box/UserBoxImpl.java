package orvane.qsf.box;

/** A user box of the device. Its fields are filled by the native box module. */
public class UserBoxImpl {
    private long boxid;
    private boolean exists;
    private UserBoxInfoImpl info;
    private UserBoxDetailInfoImpl detail;
    private long certid;

    public UserBoxImpl() {}

    public long getBoxId() {
        return boxid;
    }

    public boolean exists() {
        return exists;
    }

    public UserBoxInfoImpl getInfo() {
        return info;
    }

    public UserBoxDetailInfoImpl getDetail() {
        return detail;
    }

    public long getCertId() {
        return certid;
    }

    @Override
    public String toString() {
        return boxid + "|" + exists + "|" + info + "|" + detail + "|" + certid;
    }
}
