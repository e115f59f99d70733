package jbrg.test;

import static jbrg.test.Check.equal;

import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/** Logging in and out through the user module, as an application does before it acts for a user. */
public final class Logins {
    private Logins() {}

    /** The certificate id of a new local login. */
    public static long login(String name, String password) {
        long a = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(a, null, name, password, 1, cert, null),
                "login " + name);
        long id = qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null);
        qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
        return id;
    }

    public static void logout(long cert) {
        long a = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        equal(0, qsf_fnd_userJNI.qsf_fnd_authentication_logout(a, null, cert), "logout");
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(a);
    }
}
