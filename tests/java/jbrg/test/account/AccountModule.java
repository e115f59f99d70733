package jbrg.test.account;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.account.cmt_account_moduleJNI.*;

/** Department accounts as a Java application uses them. */
public final class AccountModule {
    private AccountModule() {}

    private static int[] words(long account) {
        return DeptRecord.words(cmt_account_get_deptinfo(account, null));
    }

    private static long[] counters(long account) {
        return DeptRecord.counters(cmt_account_get_deptinfo(account, null));
    }

    /** 22 zero words with the given (index, value) pairs set. */
    private static int[] with(int... pairs) {
        int[] w = new int[22];
        for (int i = 0; i < pairs.length; i += 2) {
            w[pairs[i]] = pairs[i + 1];
        }
        return w;
    }

    // The slot each item (1..8) writes for kind 0 and kind 1; -1: accepted, nothing stored.
    private static final int[][] SLOTS = {{3, -1}, {6, 0}, {8, 8}, {9, 9}, {4, -1}, {5, -1}, {7, 1}, {-1, 2}};

    /** Each item and kind writes its own slot, the same for restrictions and limits; the getters read none. */
    public static void slotTable() {
        for (int item = 1; item <= 8; ++item) {
            for (int kind = 0; kind <= 1; ++kind) {
                int slot = SLOTS[item - 1][kind];
                String what = "item " + item + " kind " + kind;
                long a = new_cmt_account("1001");
                equal(1, cmt_account_set_restriction(a, null, 100 + item, item, kind), what);
                equal(1, cmt_account_set_limit(a, null, 200 + item, item, kind), what);
                equal(slot < 0 ? with() : with(slot, 100 + item, DeptRecord.L0 + slot, 200 + item), words(a), what);
                equal(-2, cmt_account_get_limit(a, null, item), what + ": get_limit");
                equal(-2, cmt_account_get_restriction(a, null, item), what + ": get_restriction");
                delete_cmt_account(a);
            }
        }
        long a = new_cmt_account("1001");
        equal(0, cmt_account_set_restriction(a, null, 5, 9, 0), "item 9");
        equal(0, cmt_account_set_limit(a, null, 5, 0, 1), "item 0");
        equal(1, cmt_account_set_restriction(a, null, 5, 3, 7), "kind 7");
        equal(1, cmt_account_set_limit(a, null, 5, 2, -1), "kind -1");
        equal(with(), words(a), "nothing stored");
        // Items 3 and 4 share their slot between the kinds: the last value wins.
        cmt_account_set_restriction(a, null, 5, 3, 0);
        cmt_account_set_restriction(a, null, 6, 3, 1);
        equal(with(8, 6), words(a), "R8 holds the second value");
        equal(-2, cmt_account_get_restriction(a, null, 99), "get_restriction of an unknown item");
        delete_cmt_account(a);
    }

    /** Ids are cut to their field; a long name runs on over the id, but never past the record. */
    public static void longTexts() {
        long a = new_cmt_account("1234567890");
        equal("12345678", cmt_account_get_id(a, null), "id cut to eight characters");
        equal("", cmt_account_get_name(a, null), "no name yet");
        String forty = "0123456789012345678901234567890123456789";
        cmt_account_set_name(a, null, forty);
        equal(forty, cmt_account_get_name(a, null), "40 characters kept");
        equal("3456789", cmt_account_get_id(a, null), "the id is overwritten by the name's end");
        cmt_account_set_name(a, null, new String(new char[1000]).replace('\0', 'x'));
        equal(163, cmt_account_get_name(a, null).length(), "cut at the record's end");
        long m = new_cmt_account_manager();
        equal(3, cmt_account_manager_add(m, null, a, null), "the store refuses an overlong name");
        delete_cmt_account_manager(m);
        delete_cmt_account(a);
    }

    /** Accounts added, found, changed and removed; the scenario's 3001 has counted 12 copies and 3 prints. */
    public static void storeRoundTrip() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("2001");
        cmt_account_set_name(a, null, "Sales");
        cmt_account_set_restriction(a, null, 7, 1, 0);
        cmt_account_set_limit(a, null, 70, 1, 0);
        equal(0, cmt_account_manager_add(m, null, a, null), "add");
        equal(1, cmt_account_manager_add(m, null, a, null), "add of an existing id");
        long r = new_cmt_account("2001");
        equal(0, cmt_account_manager_retrieve_account(m, null, r, null), "retrieve");
        equal("Sales", cmt_account_get_name(r, null), "name from the store");
        equal(with(3, 7, DeptRecord.L0 + 3, 70), words(r), "slots from the store");
        equal(new long[8], counters(r), "a new account counts 0");
        long u = new_cmt_account("9999");
        equal(2, cmt_account_manager_update(m, null, u, null), "update of an unknown id");
        equal(2, cmt_account_manager_retrieve_account(m, null, u, null), "retrieve of an unknown id");
        equal(2, cmt_account_manager_remove(m, null, "9999"), "remove of an unknown id");
        equal(0, resetCounter(m, "9999"), "reset_counter of an unknown id");
        equal(0, cmt_account_manager_remove(m, null, "2001"), "remove");
        equal(2, cmt_account_manager_remove(m, null, "2001"), "remove again");

        long s = new_cmt_account("3001");
        equal(0, cmt_account_manager_update(m, null, s, null), "update with a fresh record");
        equal(0, cmt_account_manager_retrieve_account(m, null, s, null), "retrieve");
        equal(new long[] {12, 0, 3, 0, 0, 0, 0, 0}, counters(s), "update keeps the counters");
        equal(with(), words(s), "update replaced slots and flags");
        equal(1, resetCounter(m, "3001"), "reset_counter");
        cmt_account_manager_retrieve_account(m, null, s, null);
        equal(new long[8], counters(s), "counters zeroed");
        equal(1, cmt_account_manager_remove_all(m, null), "remove_all");
        equal(2, cmt_account_manager_retrieve_account(m, null, s, null), "gone");
        equal(1, cmt_account_manager_remove_all(m, null), "remove_all of an empty store");
        for (long x : new long[] {a, r, u, s}) {
            delete_cmt_account(x);
        }
        delete_cmt_account_manager(m);
    }

    private static int resetCounter(long m, String id) {
        return cmt_account_manager_reset_counter(m, null, id);
    }

    /** Run with add answered 0xC1010803, update 0xC1010804, then every operation 0xC1010801 once. */
    public static void foreignCodesAreFailures() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("3001");
        equal(3, cmt_account_manager_add(m, null, a, null), "add answered 'no such account'");
        equal(3, cmt_account_manager_update(m, null, a, null), "update answered 'exists'");
        equal(3, cmt_account_manager_add(m, null, a, null), "add failed");
        equal(3, cmt_account_manager_update(m, null, a, null), "update failed");
        equal(3, cmt_account_manager_remove(m, null, "3001"), "remove failed");
        equal(3, cmt_account_manager_retrieve_account(m, null, a, null), "retrieve failed");
        equal(0, cmt_account_manager_remove_all(m, null), "remove_all failed");
        equal(0, resetCounter(m, "3001"), "reset_counter failed");
        delete_cmt_account(a);
        delete_cmt_account_manager(m);
    }

    /** The device-wide modes, set and read back; unknown values are the store's to refuse. */
    public static void modes() {
        long c = new_cmt_account_config();
        equal(false, cmt_account_config_get_mode(c, null), "accounting off at first");
        equal(1, cmt_account_config_set_mode(c, null, true), "set_mode on");
        equal(true, cmt_account_config_get_mode(c, null), "on");
        equal(1, cmt_account_config_set_copy_print_count(c, null, 1), "mix mode");
        equal(0, cmt_account_config_set_copy_print_count(c, null, 7), "a mix mode the device does not know");
        equal(1, cmt_account_config_get_copy_print_count(c, null), "mix mode unchanged");
        equal(1, cmt_account_config_set_permit_anonymous(c, null, 2), "invalid department mode");
        equal(2, cmt_account_config_get_permit_anonymous(c, null), "read back");
        equal(1, cmt_account_config_set_limit_over(c, null, 1), "limit action");
        equal(1, cmt_account_config_get_limit_over(c, null), "read back");
        delete_cmt_account_config(c);
    }

    /** Run with every store call failing once. */
    public static void modesUnread() {
        long c = new_cmt_account_config();
        equal(0, cmt_account_config_set_mode(c, null, true), "set_mode");
        equal(false, cmt_account_config_get_mode(c, null), "get_mode");
        equal(0, cmt_account_config_set_copy_print_count(c, null, 1), "set_copy_print_count");
        equal(-1, cmt_account_config_get_copy_print_count(c, null), "get_copy_print_count");
        equal(0, cmt_account_config_set_permit_anonymous(c, null, 1), "set_permit_anonymous");
        equal(-1, cmt_account_config_get_permit_anonymous(c, null), "get_permit_anonymous");
        equal(0, cmt_account_config_set_limit_over(c, null, 1), "set_limit_over");
        equal(-1, cmt_account_config_get_limit_over(c, null), "get_limit_over");
        delete_cmt_account_config(c);
    }

    /** Run with the dept mode reported as 2 and the mix mode as 77: values pass through unchanged. */
    public static void modesAsReported() {
        long c = new_cmt_account_config();
        equal(false, cmt_account_config_get_mode(c, null), "only mode 1 is on");
        equal(77, cmt_account_config_get_copy_print_count(c, null), "mix mode as reported");
        delete_cmt_account_config(c);
    }

    /** Null strings and zero handles: refused before the store is reached. */
    public static void badArguments() {
        throwsWith(NullPointerException.class, "null std::string", () -> new_cmt_account(null));
        long m = new_cmt_account_manager();
        long a = new_cmt_account("1001");
        throwsWith(NullPointerException.class, "null std::string", () -> cmt_account_set_name(a, null, null));
        throwsWith(NullPointerException.class, "null std::string", () -> cmt_account_manager_remove(m, null, null));
        equal(null, cmt_account_get_name(0L, null), "get_name of a zero account");
        equal(0, cmt_account_get_limit(0L, null, 1), "get_limit of a zero account");
        equal(0L, cmt_account_get_deptinfo(0L, null), "get_deptinfo of a zero account");
        equal(3, cmt_account_manager_add(m, null, 0L, null), "add of a zero account");
        equal(0, cmt_account_manager_remove_all(0L, null), "remove_all of a zero manager");
        equal(0, cmt_account_config_get_limit_over(0L, null), "get_limit_over of a zero configuration");
        delete_cmt_account(0L);
        delete_cmt_account_manager(0L);
        delete_cmt_account_config(0L);
        delete_cmt_account(a);
        delete_cmt_account_manager(m);
    }

    /** One call of each store operation, for the call log. */
    public static void oneOfEach() {
        long m = new_cmt_account_manager();
        long a = new_cmt_account("2001");
        long c = new_cmt_account_config();
        cmt_account_manager_add(m, null, a, null);
        cmt_account_manager_update(m, null, a, null);
        cmt_account_manager_retrieve_account(m, null, a, null);
        resetCounter(m, "2001");
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
        delete_cmt_account(a);
        delete_cmt_account_manager(m);
        delete_cmt_account_config(c);
    }
}
