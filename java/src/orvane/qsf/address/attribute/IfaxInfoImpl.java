package orvane.qsf.address.attribute;

/** An Internet fax destination. Its fields are filled by the native address book module. */
public class IfaxInfoImpl {
    private String ifaxAddress;
    private byte modeType;
    private byte sizeType;
    private byte resolutionType;
    private byte fileType;
    private byte viaServer;

    public IfaxInfoImpl() {}

    public String getIfaxAddress() {
        return ifaxAddress;
    }

    public byte getModeType() {
        return modeType;
    }

    public byte getSizeType() {
        return sizeType;
    }

    public byte getResolutionType() {
        return resolutionType;
    }

    public byte getFileType() {
        return fileType;
    }

    public byte getViaServer() {
        return viaServer;
    }

    @Override
    public String toString() {
        return ifaxAddress + "|" + modeType + "|" + sizeType + "|" + resolutionType + "|" + fileType + "|" + viaServer;
    }
}
