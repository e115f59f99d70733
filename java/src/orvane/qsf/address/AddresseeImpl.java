package orvane.qsf.address;

import orvane.qsf.address.attribute.EmailInfoImpl;
import orvane.qsf.address.attribute.FaxInfoImpl;
import orvane.qsf.address.attribute.FtpInfoImpl;
import orvane.qsf.address.attribute.IfaxInfoImpl;
import orvane.qsf.address.attribute.NameInfoImpl;
import orvane.qsf.address.attribute.SmbInfoImpl;

/** An address book entry that has a name and destinations: a personal address or a group member. Its fields are filled by the native address book module. */
public abstract class AddresseeImpl {
    private NameInfoImpl name;
    private EmailInfoImpl email;
    private FtpInfoImpl ftp;
    private SmbInfoImpl smb;
    private FaxInfoImpl fax;
    private IfaxInfoImpl ifax;
    private int number;

    protected AddresseeImpl() {}

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
        return name + "|" + email + "|" + ftp + "|" + smb + "|" + fax + "|" + ifax + "|" + number;
    }
}
