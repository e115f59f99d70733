package jbrg.test.account;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.account.cmt_account_moduleJNI.*;

/** Department accounts as a Java application uses them. */
public final class AccountModule {
    private AccountModule() {}

    private static int[] words(long account) {
        return DeptRecord.words(cmt_account_get_deptinfo(account, null));
    }

    /** The words of a fresh account with `word` set to `value`. */
    private static int[] with(int word, int value) {
        int[] w = new int[22];
        if (word >= 0) {
            w[word] = value;
        }
        return w;
    }

    // The slot each item (1..8) writes for kind 0 and kind 1; -1: accepted, nothing stored.
    private static final int[][] SLOTS = {
        {3, -1}, {6, 0}, {8, 8}, {9, 9}, {4, -1}, {5, -1}, {7, 1}, {-1, 2},
    };

    /** A new account is cleared where it is filled: every slot, the word between and the flags. */
    public static void newAccountIsCleared() {
        long a = new_cmt_account("1001");
        try {
            equal("1001", cmt_account_get_id(a, null), "id");
            equal("", cmt_account_get_name(a, null), "name");
            equal(with(-1, 0), words(a), "slots and flags");
        } finally {
            delete_cmt_account(a);
        }
        long cut = new_cmt_account("1234567890");
        equal("12345678", cmt_account_get_id(cut, null), "an id is cut to the record's eight characters");
        delete_cmt_account(cut);
    }

    /** Each item and kind writes its own slot, the same for restrictions and limits. */
    public static void slotTable() {
        for (int item = 1; item <= 8; ++item) {
            for (int kind = 0; kind <= 1; ++kind) {
                int slot = SLOTS[item - 1][kind];
                String what = "item " + item + " kind " + kind;
                long a = new_cmt_account("1001");
                try {
                    equal(1, cmt_account_set_restriction(a, null, 100 + item, item, kind), what);
                    equal(with(slot, 100 + item), words(a), what + ": restriction");
                    equal(1, cmt_account_set_limit(a, null, 200 + item, item, kind), what);
                    int[] both = with(slot, 100 + item);
                    if (slot >= 0) {
                        both[DeptRecord.L0 + slot] = 200 + item;
                    }
                    equal(both, words(a), what + ": limit");
                } finally {
                    delete_cmt_account(a);
                }
            }
        }
    }

    /** Items outside 1..8 are refused, kinds other than 0 and 1 accepted; neither stores anything. */
    public static void slotTableEdges() {
        long a = new_cmt_account("1001");
        try {
            equal(0, cmt_account_set_restriction(a, null, 5, 9, 0), "item 9");
            equal(0, cmt_account_set_restriction(a, null, 5, 0, 0), "item 0");
            equal(0, cmt_account_set_limit(a, null, 5, -1, 1), "item -1");
            equal(1, cmt_account_set_restriction(a, null, 5, 3, 7), "kind 7");
            equal(1, cmt_account_set_limit(a, null, 5, 2, -1), "kind -1");
            equal(with(-1, 0), words(a), "nothing stored");

            // Items 3 and 4 share their slot between the kinds: the last value wins.
            equal(1, cmt_account_set_restriction(a, null, 5, 3, 0), "item 3 kind 0");
            equal(1, cmt_account_set_restriction(a, null, 6, 3, 1), "item 3 kind 1");
            equal(with(8, 6), words(a), "R8 holds the second value");

            // The getters never read the slots.
            equal(1, cmt_account_set_limit(a, null, 42, 1, 0), "limit item 1");
            for (int item : new int[] {1, 3, 8, 0, 99}) {
                equal(-2, cmt_account_get_limit(a, null, item), "get_limit " + item);
                equal(-2, cmt_account_get_restriction(a, null, item), "get_restriction " + item);
            }
        } finally {
            delete_cmt_account(a);
        }
    }

    /** A name longer than its field runs on over the id, as on the device, but never past the record. */
    public static void longNames() {
        long a = new_cmt_account("1001");
        try {
            cmt_account_set_name(a, null, "Sales");
            equal("Sales", cmt_account_get_name(a, null), "name");
            String forty = "0123456789012345678901234567890123456789";
            cmt_account_set_name(a, null, forty);
            equal(forty, cmt_account_get_name(a, null), "40 characters kept");
            equal("3456789", cmt_account_get_id(a, null), "the id is overwritten by the name's end");
            StringBuilder huge = new StringBuilder();
            for (int i = 0; i < 1000; ++i) {
                huge.append('x');
            }
            cmt_account_set_name(a, null, huge.toString());
            equal(163, cmt_account_get_name(a, null).length(), "cut at the record's end");

            // The store refuses a record whose name is not terminated inside its field.
            long m = new_cmt_account_manager();
            equal(3, cmt_account_manager_add(m, null, a, null), "add of an overlong name");
            delete_cmt_account_manager(m);
        } finally {
            delete_cmt_account(a);
        }
    }

    /** Adds account 2001 (name "Sales", R3 = 7, L3 = 70) and answers the store's result. */
    private static int addSales(long m) {
        long a = new_cmt_account("2001");
        try {
            cmt_account_set_name(a, null, "Sales");
            cmt_account_set_restriction(a, null, 7, 1, 0);
            cmt_account_set_limit(a, null, 70, 1, 0);
            return cmt_account_manager_add(m, null, a, null);
        } finally {
            delete_cmt_account(a);
        }
    }

    /** Accounts added, found, changed and removed; the store's answers in the manager's two conventions. */
    public static void storeRoundTrip() {
        long m = new_cmt_account_manager();
        long r = new_cmt_account("2001");
        try {
            equal(0, addSales(m), "add");
            equal(1, addSales(m), "add of an existing id");

            equal(0, cmt_account_manager_retrieve_account(m, null, r, null), "retrieve");
            equal("Sales", cmt_account_get_name(r, null), "name from the store");
            int[] expected = with(3, 7);
            expected[DeptRecord.L0 + 3] = 70;
            equal(expected, words(r), "slots from the store");
            equal(new long[8], DeptRecord.counters(cmt_account_get_deptinfo(r, null)), "a new account counts 0");

            cmt_account_set_name(r, null, "Sales East");
            equal(0, cmt_account_manager_update(m, null, r, null), "update");
            long u = new_cmt_account("9999");
            equal(2, cmt_account_manager_update(m, null, u, null), "update of an unknown id");
            equal(2, cmt_account_manager_retrieve_account(m, null, u, null), "retrieve of an unknown id");
            delete_cmt_account(u);

            long check = new_cmt_account("2001");
            equal(0, cmt_account_manager_retrieve_account(m, null, check, null), "retrieve after update");
            equal("Sales East", cmt_account_get_name(check, null), "updated name");
            delete_cmt_account(check);

            equal(2, cmt_account_manager_remove(m, null, "9999"), "remove of an unknown id");
            equal(0, cmt_account_manager_remove(m, null, "2001"), "remove");
            equal(2, cmt_account_manager_remove(m, null, "2001"), "remove again");
        } finally {
            delete_cmt_account(r);
            delete_cmt_account_manager(m);
        }
    }

    /** Counters of the scenario's account 3001 (copies 12, prints 3): kept by update, zeroed by reset. */
    public static void counters() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("3001");
        try {
            equal(0, cmt_account_manager_retrieve_account(m, null, a, null), "retrieve");
            long[] counted = new long[8];
            counted[0] = 12;
            counted[2] = 3;
            equal(counted, DeptRecord.counters(cmt_account_get_deptinfo(a, null)), "counters from the store");
            equal("Research", cmt_account_get_name(a, null), "name");

            long fresh = new_cmt_account("3001");
            cmt_account_set_name(fresh, null, "Research");
            equal(0, cmt_account_manager_update(m, null, fresh, null), "update with a fresh record");
            equal(0, cmt_account_manager_retrieve_account(m, null, fresh, null), "retrieve");
            equal(counted, DeptRecord.counters(cmt_account_get_deptinfo(fresh, null)), "update keeps counters");
            equal(with(-1, 0), words(fresh), "update replaced the slots and flags");
            delete_cmt_account(fresh);

            equal(1, cmt_account_manager_reset_counter(m, null, "3001"), "reset_counter");
            equal(0, cmt_account_manager_reset_counter(m, null, "9999"), "reset_counter of an unknown id");
            equal(0, cmt_account_manager_retrieve_account(m, null, a, null), "retrieve");
            equal(new long[8], DeptRecord.counters(cmt_account_get_deptinfo(a, null)), "counters zeroed");

            equal(1, cmt_account_manager_remove_all(m, null), "remove_all");
            equal(2, cmt_account_manager_retrieve_account(m, null, a, null), "gone");
            equal(1, cmt_account_manager_remove_all(m, null), "remove_all of an empty store");
        } finally {
            delete_cmt_account(a);
            delete_cmt_account_manager(m);
        }
    }

    /** Run with the store's add forced to 0xC1010803, update to 0xC1010804, then each once to 0xC1010801. */
    public static void foreignCodesAreFailures() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("3001");
        try {
            equal(3, cmt_account_manager_add(m, null, a, null), "add answered 'no such account'");
            equal(3, cmt_account_manager_update(m, null, a, null), "update answered 'exists'");
            equal(3, cmt_account_manager_add(m, null, a, null), "add failed");
            equal(3, cmt_account_manager_update(m, null, a, null), "update failed");
            equal(3, cmt_account_manager_remove(m, null, "3001"), "remove failed");
            equal(3, cmt_account_manager_retrieve_account(m, null, a, null), "retrieve failed");
            equal(0, cmt_account_manager_remove_all(m, null), "remove_all failed");
            equal(0, cmt_account_manager_reset_counter(m, null, "3001"), "reset_counter failed");
        } finally {
            delete_cmt_account(a);
            delete_cmt_account_manager(m);
        }
    }

    /** The device-wide modes, set and read back. */
    public static void modes() {
        long c = new_cmt_account_config();
        try {
            equal(false, cmt_account_config_get_mode(c, null), "accounting off at first");
            equal(1, cmt_account_config_set_mode(c, null, true), "set_mode on");
            equal(true, cmt_account_config_get_mode(c, null), "on");
            equal(1, cmt_account_config_set_mode(c, null, false), "set_mode off");
            equal(false, cmt_account_config_get_mode(c, null), "off");

            equal(1, cmt_account_config_set_copy_print_count(c, null, 1), "mix mode");
            equal(1, cmt_account_config_get_copy_print_count(c, null), "mix mode read back");
            equal(0, cmt_account_config_set_copy_print_count(c, null, 7), "a mix mode the device does not know");
            equal(1, cmt_account_config_get_copy_print_count(c, null), "unchanged");

            equal(1, cmt_account_config_set_permit_anonymous(c, null, 2), "invalid department mode");
            equal(2, cmt_account_config_get_permit_anonymous(c, null), "read back");
            equal(1, cmt_account_config_set_limit_over(c, null, 1), "limit action");
            equal(1, cmt_account_config_get_limit_over(c, null), "read back");
            equal(0, cmt_account_config_set_limit_over(c, null, -1), "a limit action the device does not know");
        } finally {
            delete_cmt_account_config(c);
        }
    }

    /** Run with every getter and setter of the store forced to fail once. */
    public static void modesUnread() {
        long c = new_cmt_account_config();
        try {
            equal(0, cmt_account_config_set_mode(c, null, true), "set_mode");
            equal(false, cmt_account_config_get_mode(c, null), "get_mode");
            equal(0, cmt_account_config_set_copy_print_count(c, null, 1), "set_copy_print_count");
            equal(-1, cmt_account_config_get_copy_print_count(c, null), "get_copy_print_count");
            equal(0, cmt_account_config_set_permit_anonymous(c, null, 1), "set_permit_anonymous");
            equal(-1, cmt_account_config_get_permit_anonymous(c, null), "get_permit_anonymous");
            equal(0, cmt_account_config_set_limit_over(c, null, 1), "set_limit_over");
            equal(-1, cmt_account_config_get_limit_over(c, null), "get_limit_over");
        } finally {
            delete_cmt_account_config(c);
        }
    }

    /** Run with the store reporting mode 2 and mix mode 77: values pass through unchanged. */
    public static void modesAsReported() {
        long c = new_cmt_account_config();
        try {
            equal(false, cmt_account_config_get_mode(c, null), "only mode 1 is on");
            equal(77, cmt_account_config_get_copy_print_count(c, null), "mix mode as reported");
        } finally {
            delete_cmt_account_config(c);
        }
    }

    /** Null strings and zero handles: refused before the store is reached. */
    public static void badArguments() {
        throwsWith(NullPointerException.class, "null std::string", () -> new_cmt_account(null));
        long m = new_cmt_account_manager();
        long a = new_cmt_account("1001");
        long c = new_cmt_account_config();
        try {
            throwsWith(NullPointerException.class, "null std::string", () -> cmt_account_set_name(a, null, null));
            equal("", cmt_account_get_name(a, null), "name untouched");
            throwsWith(NullPointerException.class, "null std::string",
                    () -> cmt_account_manager_remove(m, null, null));
            throwsWith(NullPointerException.class, "null std::string",
                    () -> cmt_account_manager_reset_counter(m, null, null));

            // A zero account reaches nothing.
            equal(null, cmt_account_get_id(0L, null), "get_id");
            equal(null, cmt_account_get_name(0L, null), "get_name");
            cmt_account_set_name(0L, null, "x");
            equal(0, cmt_account_set_restriction(0L, null, 1, 1, 0), "set_restriction");
            equal(0, cmt_account_set_limit(0L, null, 1, 1, 0), "set_limit");
            equal(0, cmt_account_get_restriction(0L, null, 1), "get_restriction");
            equal(0, cmt_account_get_limit(0L, null, 1), "get_limit");
            equal(0L, cmt_account_get_deptinfo(0L, null), "get_deptinfo");
            delete_cmt_account(0L);

            // A zero account given to the manager is a failure; the store is not called.
            equal(3, cmt_account_manager_add(m, null, 0L, null), "add");
            equal(3, cmt_account_manager_update(m, null, 0L, null), "update");
            equal(3, cmt_account_manager_retrieve_account(m, null, 0L, null), "retrieve_account");

            // A zero manager or configuration answers 0.
            equal(0, cmt_account_manager_add(0L, null, a, null), "add of a zero manager");
            equal(0, cmt_account_manager_remove_all(0L, null), "remove_all of a zero manager");
            equal(0, cmt_account_manager_reset_counter(0L, null, "1001"), "reset_counter of a zero manager");
            equal(false, cmt_account_config_get_mode(0L, null), "get_mode of a zero configuration");
            equal(0, cmt_account_config_get_limit_over(0L, null), "get_limit_over of a zero configuration");
            equal(0, cmt_account_config_set_mode(0L, null, true), "set_mode of a zero configuration");
            delete_cmt_account_manager(0L);
            delete_cmt_account_config(0L);
        } finally {
            delete_cmt_account(a);
            delete_cmt_account_manager(m);
            delete_cmt_account_config(c);
        }
    }

    /** One call of each store operation, for the call log. */
    public static void oneOfEach() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("2001");
        long c = new_cmt_account_config();
        try {
            that(cmt_account_manager_add(m, null, a, null) == 0, "add");
            cmt_account_manager_update(m, null, a, null);
            cmt_account_manager_retrieve_account(m, null, a, null);
            cmt_account_manager_reset_counter(m, null, "2001");
            cmt_account_manager_remove(m, null, "2001");
            cmt_account_manager_remove_all(m, null);
            cmt_account_config_set_mode(c, null, true);
            cmt_account_config_get_mode(c, null);
            cmt_account_config_set_copy_print_count(c, null, 1);
            cmt_account_config_get_copy_print_count(c, null);
            cmt_account_config_set_permit_anonymous(c, null, 2);
            cmt_account_config_get_permit_anonymous(c, null);
            cmt_account_config_set_limit_over(c, null, -5);
            cmt_account_config_get_limit_over(c, null);
        } finally {
            delete_cmt_account(a);
            delete_cmt_account_manager(m);
            delete_cmt_account_config(c);
        }
    }
}
