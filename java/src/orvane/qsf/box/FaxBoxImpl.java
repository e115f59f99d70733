package orvane.qsf.box;

/** A fax box of the device. Its fields are filled by the native box module. */
public class FaxBoxImpl {
    private long boxid;
    private boolean exists;
    private FaxBoxInfoImpl info;
    private FaxBoxDetailInfoImpl detail;

    public FaxBoxImpl() {}

    public long getBoxId() {
        return boxid;
    }

    public boolean exists() {
        return exists;
    }

    public FaxBoxInfoImpl getInfo() {
        return info;
    }

    public FaxBoxDetailInfoImpl getDetail() {
        return detail;
    }

    @Override
    public String toString() {
        return boxid + "|" + exists + "|" + info + "|" + detail;
    }
}
