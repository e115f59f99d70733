package jbrg.test.address;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static orvane.qsf.wrapper.address.cmt_address_book_moduleJNI.*;

import orvane.address.SearchKey;
import orvane.qsf.address.GroupAddressImpl;
import orvane.qsf.address.GroupAddressMemberImpl;
import orvane.qsf.address.PersonalAddressImpl;
import orvane.qsf.address.attribute.FaxInfoImpl;
import orvane.qsf.address.attribute.FtpInfoImpl;
import orvane.qsf.address.attribute.IfaxInfoImpl;

/** The address book module as a Java application uses it, on the devices of the C++ suite in tests/address. */
public final class AddressBookModule {
    private AddressBookModule() {}

    static Object all(int type) {
        long book = new_cmt_address_book();
        try {
            return cmt_address_book_get_all_address(book, null, type);
        } finally {
            delete_cmt_address_book(book);
        }
    }

    static Object search(int type, Object key) {
        long book = new_cmt_address_book();
        try {
            return cmt_address_book_search_address(book, null, type, key);
        } finally {
            delete_cmt_address_book(book);
        }
    }

    static GroupAddressMemberImpl[] members(int group) {
        long book = new_cmt_address_book();
        try {
            return (GroupAddressMemberImpl[]) cmt_address_book_get_members(book, null, group);
        } finally {
            delete_cmt_address_book(book);
        }
    }

    /** Alice with every destination, Bob with an e-mail address only. */
    public static void personalAddressesCarryTheirDestinations() {
        PersonalAddressImpl[] all = (PersonalAddressImpl[]) all(1);
        equal(2, all.length, "two addresses");
        PersonalAddressImpl alice = all[0];
        equal("Alice Archer|alice archer|1", alice.getName().getName() + "|" + alice.getName().getPronunciation()
                + "|" + alice.getNumber(), "alice");
        equal("alice@example.com", alice.getEmail().getMailAddress(), "e-mail");
        FtpInfoImpl ftp = alice.getFtp();
        equal("ftp.example.com|/in|21|up|secret", ftp.getHost() + "|" + ftp.getPath() + "|" + ftp.getPort() + "|"
                + ftp.getLoginName() + "|" + ftp.getPassword(), "FTP, its password as it is");
        equal("fs|share|445", alice.getSmb().getHost() + "|" + alice.getSmb().getPath() + "|"
                + alice.getSmb().getPort(), "SMB");
        FaxInfoImpl fax = alice.getFax();
        equal("0123|2|1|Ms Archer|Sales|Orvane|3", fax.getFaxNum() + "|" + fax.getBitrateType() + "|" + fax.getEcm()
                + "|" + fax.getName() + "|" + fax.getDepartment() + "|" + fax.getCompany() + "|"
                + fax.getHonorificTitleType(), "fax");
        IfaxInfoImpl ifax = alice.getIfax();
        equal("ifax@example.com|1|2|3|4|1", ifax.getIfaxAddress() + "|" + ifax.getModeType() + "|"
                + ifax.getSizeType() + "|" + ifax.getResolutionType() + "|" + ifax.getFileType() + "|"
                + ifax.getViaServer(), "Internet fax");
        PersonalAddressImpl bob = all[1];
        that(bob.getEmail() != null && bob.getFtp() == null && bob.getSmb() == null && bob.getFax() == null
                && bob.getIfax() == null, "Bob has only his e-mail destination: " + bob);
        // 64 characters of three bytes fill a name field exactly.
        equal(new String(new char[64]).replace('\0', '\u20ac'), bob.getName().getName(), "a full name");
    }

    /** Groups, their search, and what is refused before the device is asked. */
    public static void groupsAndSearches() {
        GroupAddressImpl[] groups = (GroupAddressImpl[]) all(2);
        equal(45, groups.length, "45 groups");
        for (GroupAddressImpl g : groups) {
            that(g != null && g.getId() != 0 && g.getName() != null, "every element is a group: " + g);
        }
        equal("Group 45", groups[44].getName().getName(), "the last");
        equal(null, all(3), "type 3");
        equal(null, search(0, new SearchKey("Gr")), "type 0");
        equal(null, search(1, null), "no key");
        equal(null, search(1, "not a key"), "a key of another class");
        equal(null, search(2, new SearchKey(null)), "a key without a name");
        GroupAddressImpl[] found = (GroupAddressImpl[]) search(2, new SearchKey("group 1"));
        equal(11, found.length, "Group 1 and Group 10 to 19");
        PersonalAddressImpl[] people = (PersonalAddressImpl[]) search(1, new SearchKey("ALI"));
        equal(1, people.length, "alice");
        equal(0, ((PersonalAddressImpl[]) search(1, new SearchKey("zz"))).length, "nobody");
    }

    /** Group 1's members: one of each destination kind, in the order they were added. */
    public static void membersCarryOneDestination() {
        GroupAddressImpl group = ((GroupAddressImpl[]) all(2))[0];
        GroupAddressMemberImpl[] members = members(group.getId());
        equal(5, members.length, "five members");
        StringBuilder kinds = new StringBuilder();
        for (GroupAddressMemberImpl m : members) {
            int carried = (m.getFtp() != null ? 1 : 0) + (m.getSmb() != null ? 1 : 0) + (m.getIfax() != null ? 1 : 0)
                    + (m.getFax() != null ? 1 : 0) + (m.getEmail() != null ? 1 : 0);
            equal(1, carried, "one destination: " + m);
            kinds.append(m.getType());
        }
        equal("01234", kinds.toString(), "the member types");
        equal("0123", members[3].getFax().getFaxNum(), "the fax member");
        equal("Alice Archer|1", members[4].getName().getName() + "|" + members[4].getNumber(), "named after alice");
        // Only the low 16 bits of a group id count.
        equal(5, members(group.getId() + 65536).length, "the id cut to 16 bits");
        equal(null, members(999), "no such group");
    }

    /** Every personal address and every group with its members. */
    public static int countEverything() {
        int count = ((PersonalAddressImpl[]) all(1)).length;
        for (GroupAddressImpl g : (GroupAddressImpl[]) all(2)) {
            count += 1 + members(g.getId()).length;
        }
        return count;
    }
}
