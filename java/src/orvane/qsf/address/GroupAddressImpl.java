package orvane.qsf.address;

import orvane.qsf.address.attribute.NameInfoImpl;

/** A group of addresses. Its fields are filled by the native address book module. */
public class GroupAddressImpl {
    private int id;
    private int number;
    private NameInfoImpl name;

    public GroupAddressImpl() {}

    public int getId() {
        return id;
    }

    public int getNumber() {
        return number;
    }

    public NameInfoImpl getName() {
        return name;
    }

    @Override
    public String toString() {
        return id + "|" + number + "|" + name;
    }
}
