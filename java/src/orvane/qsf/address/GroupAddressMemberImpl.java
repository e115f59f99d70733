package orvane.qsf.address;

import orvane.qsf.address.attribute.EmailInfoImpl;
import orvane.qsf.address.attribute.FaxInfoImpl;
import orvane.qsf.address.attribute.FtpInfoImpl;
import orvane.qsf.address.attribute.IfaxInfoImpl;
import orvane.qsf.address.attribute.NameInfoImpl;
import orvane.qsf.address.attribute.SmbInfoImpl;

/** A member of a group: one destination of a personal address (type 0 FTP, 1 SMB, 2 Internet fax, 3 fax, 4 e-mail). Its fields are filled by the native address book module. */
public class GroupAddressMemberImpl {
    private byte type;
    private NameInfoImpl name;
    private EmailInfoImpl email;
    private FtpInfoImpl ftp;
    private SmbInfoImpl smb;
    private FaxInfoImpl fax;
    private IfaxInfoImpl ifax;
    private int number;

    public GroupAddressMemberImpl() {}

    public byte getType() {
        return type;
    }

    public NameInfoImpl getName() {
        return name;
    }

    public EmailInfoImpl getEmail() {
        return email;
    }

    public FtpInfoImpl getFtp() {
        return ftp;
    }

    public SmbInfoImpl getSmb() {
        return smb;
    }

    public FaxInfoImpl getFax() {
        return fax;
    }

    public IfaxInfoImpl getIfax() {
        return ifax;
    }

    public int getNumber() {
        return number;
    }

    @Override
    public String toString() {
        return type + "|" + name + "|" + email + "|" + ftp + "|" + smb + "|" + fax + "|" + ifax + "|" + number;
    }
}
