package orvane.qsf.address;

/**
 * A member of a group: one destination of a personal address (type 0 FTP, 1 SMB, 2 Internet fax, 3 fax, 4
 * e-mail), named after it. Its fields are filled by the native address book module.
 */
public class GroupAddressMemberImpl extends AddresseeImpl {
    private byte type;

    public GroupAddressMemberImpl() {}

    public byte getType() {
        return type;
    }

    @Override
    public String toString() {
        return type + "|" + super.toString();
    }
}
