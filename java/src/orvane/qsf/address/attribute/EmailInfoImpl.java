package orvane.qsf.address.attribute;

/** An e-mail destination. Its fields are filled by the native address book module. */
public class EmailInfoImpl {
    private String mailAddress;

    public EmailInfoImpl() {}

    public String getMailAddress() {
        return mailAddress;
    }

    @Override
    public String toString() {
        return mailAddress;
    }
}
