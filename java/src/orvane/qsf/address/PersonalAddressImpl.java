package orvane.qsf.address;

/**
 * A personal address: its name and the destinations registered for it. Its fields are filled by the native
 * address book module.
 */
public class PersonalAddressImpl extends AddresseeImpl {
    public PersonalAddressImpl() {}
}
