package jbrg.test.user;

import static jbrg.test.Check.equal;

import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/** Hidden user accounts as a Java application keeps them, on the device of the C++ suite user_accounts. */
public final class HiddenAccounts {
    private HiddenAccounts() {}

    static long record(String login, String password, int rights) {
        long r = qsf_fnd_userJNI.new_XSI_PBFS_HIDE_USERINFO_RECORD();
        qsf_fnd_userJNI.XSI_PBFS_HIDE_USERINFO_RECORD_login_name_set(r, null, login);
        qsf_fnd_userJNI.XSI_PBFS_HIDE_USERINFO_RECORD_login_passwd_set(r, null, password);
        qsf_fnd_userJNI.XSI_PBFS_HIDE_USERINFO_RECORD_rights_set(r, null, rights);
        return r;
    }

    static int rightsOf(String login, String password) {
        long a = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long level = qsf_fnd_userJNI.new_QSF_FND_USER_ACCESS_LEVEL();
        qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_set(level, null, -1);
        int result = qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, login, password, level, null);
        int value = qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_get(level, null);
        qsf_fnd_userJNI.delete_QSF_FND_USER_ACCESS_LEVEL(level);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
        return result == 0 ? value : -100 - result;
    }

    public static void createUpdateRemove() {
        long acc = qsf_fnd_userJNI.new_qsf_fnd_user_account();
        long app = record("app1", "pw1", 1);
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(acc, null, app, null), "create app1");
        equal(1, rightsOf("app1", "pw1"), "app1 is in the store as a user");
        equal(3, qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(acc, null, app, null), "create app1 again");
        long local = record("alice", "x", 1);
        equal(3, qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(acc, null, local, null),
                "a local user's login name is taken too");
        qsf_fnd_userJNI.XSI_PBFS_HIDE_USERINFO_RECORD_rights_set(app, null, 0);
        qsf_fnd_userJNI.XSI_PBFS_HIDE_USERINFO_RECORD_login_passwd_set(app, null, "pw2");
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_update_hide_user(acc, null, app, null), "update app1");
        equal(0, rightsOf("app1", "pw2"), "app1 is now an administrator with a new password");
        long nobody = record("nobody", "x", 1);
        equal(2, qsf_fnd_userJNI.qsf_fnd_user_account_update_hide_user(acc, null, nobody, null), "update unknown");
        equal(2, qsf_fnd_userJNI.qsf_fnd_user_account_remove_hide_user(acc, null, "nobody"), "remove unknown");
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_remove_hide_user(acc, null, "app1"), "remove app1");
        equal(2, qsf_fnd_userJNI.qsf_fnd_user_account_remove_hide_user(acc, null, "app1"), "remove app1 again");
        equal(-102, rightsOf("app1", "pw2"), "app1 is gone");
        equal(1, rightsOf("svc", "svcpw"), "svc is still there");
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_remove_all_hide_user(acc, null), "remove all");
        equal(-102, rightsOf("svc", "svcpw"), "svc is gone");
        equal(0, rightsOf("alice", "wonder"), "local users stay");
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_remove_all_hide_user(acc, null), "remove all of none");
        qsf_fnd_userJNI.delete_XSI_PBFS_HIDE_USERINFO_RECORD(app);
        qsf_fnd_userJNI.delete_XSI_PBFS_HIDE_USERINFO_RECORD(local);
        qsf_fnd_userJNI.delete_XSI_PBFS_HIDE_USERINFO_RECORD(nobody);
        qsf_fnd_userJNI.delete_qsf_fnd_user_account(acc);
    }

    /** Run with the store's operations forced to codes the class does not tell apart. */
    public static void otherCodesAreFour() {
        long acc = qsf_fnd_userJNI.new_qsf_fnd_user_account();
        long app = record("app1", "pw1", 1);
        equal(4, qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(acc, null, app, null), "create");
        equal(4, qsf_fnd_userJNI.qsf_fnd_user_account_update_hide_user(acc, null, app, null), "update");
        equal(4, qsf_fnd_userJNI.qsf_fnd_user_account_remove_hide_user(acc, null, "svc"), "remove");
        equal(4, qsf_fnd_userJNI.qsf_fnd_user_account_remove_all_hide_user(acc, null), "remove all");
        equal(2, qsf_fnd_userJNI.qsf_fnd_user_account_remove_all_hide_user(acc, null), "whatever the store says");
        equal(0, qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(0L, null, app, null), "zero handle");
        qsf_fnd_userJNI.delete_XSI_PBFS_HIDE_USERINFO_RECORD(app);
        qsf_fnd_userJNI.delete_qsf_fnd_user_account(acc);
    }

    public static void recordFields() {
        long r = qsf_fnd_userJNI.new_XSI_PBFS_USERINFO_RECORD();
        StringBuilder long400 = new StringBuilder();
        for (int i = 0; i < 400; i++) {
            long400.append((char) ('a' + i % 26));
        }
        qsf_fnd_userJNI.XSI_PBFS_USERINFO_RECORD_login_name_set(r, null, long400.toString());
        equal(long400.substring(0, 384), qsf_fnd_userJNI.XSI_PBFS_USERINFO_RECORD_login_name_get(r, null),
                "a login name is cut to 384 characters");
        qsf_fnd_userJNI.XSI_PBFS_USERINFO_RECORD_acc_id_set(r, null, 0x1FFFFFFFFL);
        equal(0xFFFFFFFFL, qsf_fnd_userJNI.XSI_PBFS_USERINFO_RECORD_acc_id_get(r, null), "32-bit account id");
        qsf_fnd_userJNI.delete_XSI_PBFS_USERINFO_RECORD(r);

        long card = qsf_fnd_userJNI.new_XSI_PBFS_USER_IC_CARD_INFO_RECORD();
        short[] id = new short[64];
        id[0] = 0x04;
        id[63] = 0xFF;
        qsf_fnd_userJNI.XSI_PBFS_USER_IC_CARD_INFO_RECORD_card_id_set(card, null, id);
        equal(id, qsf_fnd_userJNI.XSI_PBFS_USER_IC_CARD_INFO_RECORD_card_id_get(card, null), "card id bytes");
        qsf_fnd_userJNI.delete_XSI_PBFS_USER_IC_CARD_INFO_RECORD(card);
    }
}
