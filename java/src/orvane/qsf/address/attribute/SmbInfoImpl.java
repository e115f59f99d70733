package orvane.qsf.address.attribute;

/** An SMB share's folder. Its fields are filled by the native address book module. */
public class SmbInfoImpl extends FolderInfoImpl {
    public SmbInfoImpl() {}
}
