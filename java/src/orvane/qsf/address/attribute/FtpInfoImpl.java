package orvane.qsf.address.attribute;

/** An FTP server's folder. Its fields are filled by the native address book module. */
public class FtpInfoImpl extends FolderInfoImpl {
    public FtpInfoImpl() {}
}
