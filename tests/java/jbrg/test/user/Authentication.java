package jbrg.test.user;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Check.throwsWith;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedList;
import java.util.List;

import orvane.qsf.user.UserImpl;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;
import orvane.user.attribute.AccessLevel;

/**
 * Logins, rights, the authentication mode and the local user list as a Java application uses them, against
 * the device of the C++ suite user_authentication: local users alice (administrator, card 04A1B2C3), bob
 * and guest (rights 2), the hidden account svc, the domain user carol of CORP, three logins at a time and
 * certificate ids counting from 2^31.
 */
public final class Authentication {
    private Authentication() {}

    static final int LOCAL = 1;
    static final int NETWORK = 2;
    static final long FIRST_CERT = 0x80000000L;

    static long auth() {
        return qsf_fnd_userJNI.new_qsf_fnd_authentication();
    }

    static long certificate(long initial) {
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_set(cert, null, initial);
        return cert;
    }

    static long certId(long cert) {
        return qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null);
    }

    static int login(long a, String name, String password, long cert) {
        return qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(a, null, name, password, LOCAL, cert, null);
    }

    static int loginDomain(long a, String name, String password, String domain, long cert) {
        return qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_1(a, null, name, password, NETWORK, domain, cert,
                null);
    }

    public static void passwordLoginsHandOutCertificatesUntilLogout() {
        long a = auth();
        long cert = certificate(0);
        equal(0, login(a, "alice", "wonder", cert), "alice logs in");
        long first = certId(cert);
        equal(FIRST_CERT, first, "the first certificate id, unsigned on the device");
        equal(0, login(a, "bob", "builder", cert), "bob logs in");
        equal(FIRST_CERT + 1, certId(cert), "a second, distinct certificate id");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_logout(a, null, first), "alice logs out");
        equal(6, qsf_fnd_userJNI.qsf_fnd_authentication_logout(a, null, first), "her certificate is gone");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_logout_bkg(a, null, FIRST_CERT + 1), "bob, in background");
        equal(6, qsf_fnd_userJNI.qsf_fnd_authentication_logout_bkg(a, null, FIRST_CERT + 1), "bob's is gone too");
        equal(0, login(a, "svc", "svcpw", cert), "a hidden account logs in like a local user");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void failedLoginsWriteCertificateZero() {
        long a = auth();
        long cert = certificate(77);
        equal(1, login(a, "alice", "wrong", cert), "wrong password");
        equal(0L, certId(cert), "certificate id after a wrong password");
        qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_set(cert, null, 77);
        equal(2, login(a, "nobody", "x", cert), "unknown user");
        equal(0L, certId(cert), "certificate id after an unknown user");
        equal(2, login(a, "carol", "c4", cert), "a domain user is not one of the device's own");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void domainLogins() {
        long a = auth();
        long cert = certificate(77);
        equal(0, loginDomain(a, "carol", "c4", "CORP", cert), "carol of CORP");
        equal(FIRST_CERT, certId(cert), "her certificate id");
        qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_set(cert, null, 77);
        equal(1, loginDomain(a, "carol", "c5", "CORP", cert), "wrong password");
        equal(0L, certId(cert), "certificate id after a wrong password");
        equal(2, loginDomain(a, "carol", "c4", "OTHER", cert), "carol is not in OTHER");
        equal(0, loginDomain(a, "alice", "wonder", "", cert), "the empty domain is the device's own");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void theLoginLimitGivesFive() {
        long a = auth();
        long cert = certificate(0);
        for (int i = 0; i < 3; i++) {
            equal(0, login(a, "bob", "builder", cert), "login " + i);
        }
        qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_set(cert, null, 77);
        equal(5, login(a, "alice", "wonder", cert), "a fourth login");
        equal(0L, certId(cert), "certificate id at the limit");
        equal(5, loginDomain(a, "carol", "c4", "CORP", cert), "a fourth login with a domain");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_iccard_login(a, null, "04A1B2C3", cert, null),
                "a card login at the limit is a plain failure");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_logout(a, null, FIRST_CERT + 1), "one logs out");
        equal(0, login(a, "alice", "wonder", cert), "now there is room");
        equal(FIRST_CERT + 3, certId(cert), "the next certificate id");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void cardLogins() {
        long a = auth();
        long cert = certificate(55);
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_iccard_login(a, null, "04A1B2C3", cert, null), "alice's card");
        equal(FIRST_CERT, certId(cert), "certificate id of the card login");
        qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_set(cert, null, 55);
        equal(2, qsf_fnd_userJNI.qsf_fnd_authentication_iccard_login(a, null, "FFFF", cert, null), "unknown card");
        equal(55L, certId(cert), "a failed card login leaves the certificate id alone");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_iccard_login(a, null, null, cert, null), "no card data");
        equal(55L, certId(cert), "still untouched");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    /** Run with the logout operations forced to two failure codes each. */
    public static void logoutFailuresOtherThanTheCertificateAreFour() {
        long a = auth();
        for (int i = 0; i < 2; i++) {
            equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_logout(a, null, 1), "logout, forcing " + i);
            equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_logout_bkg(a, null, 1), "logout_bkg, forcing " + i);
        }
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    /** Run with the platform login forced to an unknown code, then to the certificate code. */
    public static void loginFailuresNotToldApartAreFour() {
        long a = auth();
        long cert = certificate(9);
        equal(4, login(a, "alice", "wonder", cert), "unknown code");
        equal(0L, certId(cert), "certificate id");
        equal(4, login(a, "alice", "wonder", cert), "invalid certificate is no login result");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    static long level(int initial) {
        long l = qsf_fnd_userJNI.new_QSF_FND_USER_ACCESS_LEVEL();
        qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_set(l, null, initial);
        return l;
    }

    static int levelOf(long l) {
        return qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_get(l, null);
    }

    public static void rights() {
        long a = auth();
        long l = level(9);
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, "alice", "wonder", l, null), "alice");
        equal(0, levelOf(l), "an administrator");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, "bob", "builder", l, null), "bob");
        equal(1, levelOf(l), "a user");
        qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_set(l, null, 9);
        equal(1, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, "bob", "x", l, null), "wrong password");
        equal(2, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, "zed", "x", l, null), "unknown");
        equal(9, levelOf(l), "failures leave the level alone");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_1(a, null, "carol", "c4", "CORP", l, null),
                "carol of CORP");
        equal(0, levelOf(l), "an administrator of her domain");
        qsf_fnd_userJNI.QSF_FND_USER_ACCESS_LEVEL_level_set(l, null, 9);
        equal(1, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_1(a, null, "carol", "c", "CORP", l, null), "pw");
        equal(2, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_1(a, null, "carol", "c4", "X", l, null), "domain");
        equal(9, levelOf(l), "still untouched");
        qsf_fnd_userJNI.delete_QSF_FND_USER_ACCESS_LEVEL(l);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    /** Run with both get_rights forms forced to fail with a code they do not tell apart. */
    public static void rightsFailures() {
        long a = auth();
        long l = level(9);
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_0(a, null, "alice", "wonder", l, null), "short");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_rights__SWIG_1(a, null, "carol", "c4", "CORP", l, null),
                "with a domain");
        equal(9, levelOf(l), "untouched");
        qsf_fnd_userJNI.delete_QSF_FND_USER_ACCESS_LEVEL(l);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void authenticationModes() {
        long a = auth();
        long m = qsf_fnd_userJNI.new_QSF_FND_AUTH_MODE();
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_auth_mode(a, null, m, null), "get");
        equal(LOCAL, qsf_fnd_userJNI.QSF_FND_AUTH_MODE_mode_get(m, null), "the device authenticates locally");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_set_auth_mode(a, null, NETWORK), "set network");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_auth_mode(a, null, m, null), "get again");
        equal(NETWORK, qsf_fnd_userJNI.QSF_FND_AUTH_MODE_mode_get(m, null), "the mode set");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_set_auth_mode(a, null, 7), "a mode the device lacks");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_set_func_login_mode(a, null, 1), "function mode on");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_set_func_login_mode(a, null, 5), "an unknown one");
        qsf_fnd_userJNI.delete_QSF_FND_AUTH_MODE(m);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    /** Run with the platform's get of the mode forced to fail. */
    public static void aFailedModeReadLeavesTheRecord() {
        long a = auth();
        long m = qsf_fnd_userJNI.new_QSF_FND_AUTH_MODE();
        qsf_fnd_userJNI.QSF_FND_AUTH_MODE_mode_set(m, null, 9);
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_auth_mode(a, null, m, null), "get");
        equal(9, qsf_fnd_userJNI.QSF_FND_AUTH_MODE_mode_get(m, null), "untouched");
        qsf_fnd_userJNI.delete_QSF_FND_AUTH_MODE(m);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void loginUserInfo() {
        long a = auth();
        long info = qsf_fnd_userJNI.new_XSI_AIS_USERINFO_RECORD();
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_login_user_info(a, null, 0, info, null), "panel user");
        equal("bob", qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_login_name_get(info, null), "login name");
        equal("Bob Builder", qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_get(info, null), "user name");
        equal(1, qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_rights_get(info, null), "rights");
        equal(2L, qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_id_get(info, null), "his number in the store");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_login_user_info(a, null, 1, info, null), "nobody logged in");
        long cert = certificate(0);
        equal(0, loginDomain(a, "carol", "c4", "CORP", cert), "carol logs in");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_login_user_info(a, null, 1, info, null), "latest login");
        equal("carol", qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_login_name_get(info, null), "her login name");
        equal("CORP", qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_domain_get(info, null), "her domain");
        long permission = qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_func_impl_permission_get(info, null);
        equal(1L, qsf_fnd_userJNI.XSI_AIS_FUNC_IMPL_PERMISSION_duplex_limit_get(permission, null), "duplex limit");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_login_user_info(a, null, 9, info, null), "an unknown kind");
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_XSI_AIS_USERINFO_RECORD(info);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    static String describe(UserImpl u) {
        return u.getLoginName().getValue() + "|" + u.getUserName().getValue() + "|" + u.getMailAddress().getValue()
                + "|" + (u.getAccessLevel() == null ? "null" : u.getAccessLevel().getValue());
    }

    public static void localUsersBecomeUserObjects() {
        long a = auth();
        ArrayList<Object> list = new ArrayList<>();
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(a, null, list), "result");
        equal(3, list.size(), "one object a local user, hidden accounts left out");
        List<String> seen = new ArrayList<>();
        for (Object o : list) {
            that(o instanceof UserImpl, "a UserImpl: " + o);
            seen.add(describe((UserImpl) o));
        }
        equal(Arrays.asList("alice|Alice Liddell|alice@example.com|ADMIN", "bob|Bob Builder|bob@example.com|USER",
                "guest|Guest||null"), seen, "users in the store's order");
        UserImpl alice = (UserImpl) list.get(0);
        that(alice.getAccessLevel() == AccessLevel.ADMIN, "the ADMIN constant itself");
        that(((UserImpl) list.get(1)).getAccessLevel() == AccessLevel.USER, "the USER constant itself");
        equal(4, alice.getAttributes().size(), "four attributes a user");
        that(alice.getAccountID() == null, "the account id is not set by the listing");
        UserImpl guest = (UserImpl) list.get(2);
        equal(4, guest.getAttributes().size(), "rights 2 still give an attribute...");
        that(guest.getAttributes().get(3) == null, "...a null access level");
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    /** The list already holds one entry; the device's listing fails or is empty. */
    public static void listingKeepsWhatWasThere() {
        long a = auth();
        ArrayList<Object> list = new ArrayList<>();
        list.add("before");
        int result = qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(a, null, list);
        System.setProperty("jbrg.test.user.result", Integer.toString(result));
        System.setProperty("jbrg.test.user.size", Integer.toString(list.size()));
        equal("before", list.get(0), "what was there stays first");
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void onlyArrayListsAreFilled() {
        long a = auth();
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(a, null, null), "null list");
        LinkedList<Object> other = new LinkedList<>();
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(a, null, other), "not an ArrayList");
        equal(0, other.size(), "nothing added");
        equal(4, qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(a, null, "a string"), "a string");
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(0L, null, new ArrayList<Object>()),
                "a zero handle reaches nothing");
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }

    public static void userObjectsBuiltFromJava() {
        long b = qsf_fnd_userJNI.new_qsf_fnd_user_info();
        Object made = qsf_fnd_userJNI.qsf_fnd_user_info_create_user_info(b, null);
        that(made instanceof UserImpl, "a UserImpl: " + made);
        UserImpl u = (UserImpl) made;
        equal(true, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_account_id(b, null, u, -42), "account id");
        equal("-42", u.getAccountID().getValue(), "the id as decimal text");
        equal(true, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_login_name(b, null, u, "dave"), "login name");
        equal("dave", u.getLoginName().getValue(), "login name set");
        equal(true, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_user_name(b, null, u, null), "null text");
        equal(null, u.getUserName().getValue(), "a user name without a value");
        equal(true, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_access_level(b, null, u, 1), "level");
        that(u.getAccessLevel() == AccessLevel.USER, "USER");
        equal(true, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_access_level(b, null, u, -1), "rights -1");
        that(u.getAttributes().get(u.getAttributes().size() - 1) == null, "a null access level");
        // Only a UserImpl takes attributes.
        equal(false, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_login_name(b, null, "not a user", "x"), "String");
        equal(false, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_access_level(b, null, null, 0), "null user");
        equal(null, qsf_fnd_userJNI.qsf_fnd_user_info_create_user_info(0L, null), "a zero handle makes nothing");
        equal(false, qsf_fnd_userJNI.qsf_fnd_user_info_set_field_login_name(0L, null, u, "x"), "zero handle");
        qsf_fnd_userJNI.delete_qsf_fnd_user_info(b);
    }

    /** A builder made on one Java thread serves another. */
    public static void buildersServeAnyThread() throws Exception {
        final long b = qsf_fnd_userJNI.new_qsf_fnd_user_info();
        final Object[] made = new Object[1];
        Thread t = new Thread(() -> {
            made[0] = qsf_fnd_userJNI.qsf_fnd_user_info_create_user_info(b, null);
            qsf_fnd_userJNI.qsf_fnd_user_info_set_field_login_name(b, null, made[0], "eve");
        });
        t.start();
        t.join();
        equal("eve", ((UserImpl) made[0]).getLoginName().getValue(), "built on the other thread");
        qsf_fnd_userJNI.delete_qsf_fnd_user_info(b);
    }

    public static void nullArgumentsAreRefusedBeforeThePlatform() {
        long a = auth();
        long cert = certificate(0);
        throwsWith(NullPointerException.class, "null std::string", () -> login(a, null, "pw", cert));
        throwsWith(NullPointerException.class, "orvane::QSF_FND_CERTIFICATE_ID & reference is null",
                () -> login(a, "alice", "wonder", 0L));
        throwsWith(NullPointerException.class, "XSI_AIS_USERINFO_RECORD & reference is null",
                () -> qsf_fnd_userJNI.qsf_fnd_authentication_get_login_user_info(a, null, 0, 0L, null));
        long account = qsf_fnd_userJNI.new_qsf_fnd_user_account();
        throwsWith(NullPointerException.class, "XSI_PBFS_HIDE_USERINFO_RECORD const & reference is null",
                () -> qsf_fnd_userJNI.qsf_fnd_user_account_create_hide_user(account, null, 0L, null));
        throwsWith(NullPointerException.class, "null std::string",
                () -> qsf_fnd_userJNI.qsf_fnd_user_account_remove_hide_user(account, null, null));
        qsf_fnd_userJNI.delete_qsf_fnd_user_account(account);
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }
}
