// Builder of the Java user objects of the local user list: orvane/qsf/user/UserImpl, given its attributes
// (login name, user name, mail address, access level, account id) one by one through its setAttribute.
//
// A builder takes the calling thread's environment at construction; without one it builds nothing. Each
// operation works with the environment of the thread that calls it, so a builder that Java made may be used
// from any Java thread.
#ifndef JBRG_USER_QSF_FND_USER_INFO_H
#define JBRG_USER_QSF_FND_USER_INFO_H

#include <jni.h>

#include "xsi_pbfs_user.h"

namespace orvane {

class qsf_fnd_user_info {
public:
    // Takes the environment and finds UserImpl and its "setAttribute" method.
    qsf_fnd_user_info();
    ~qsf_fnd_user_info();

    // A new UserImpl (a local reference), or null.
    jobject create_user_info();

    // Each builds one attribute and hands it to the user's setAttribute. False, with nothing set, when
    // `user` is not a UserImpl or the attribute cannot be built; a null text gives an attribute with a null
    // value.
    bool set_field_login_name(jobject user, char* text);
    bool set_field_user_name(jobject user, char* text);
    bool set_field_mail_address(jobject user, char* text);
    // Rights 0 give AccessLevel.ADMIN, 1 AccessLevel.USER, any other value a null access level.
    bool set_field_access_level(jobject user, XSI_PBFS_USER_RIGHTS rights);
    bool set_field_account_id(jobject user, int id);

private:
    // The calling thread's environment, or null when the builder was made without one.
    JNIEnv* env() const;
    // True when `user` is a UserImpl that this builder can give attributes to.
    bool accepts(JNIEnv* env, jobject user) const;
    bool set_attribute(JNIEnv* env, jobject user, jobject attribute);

    JNIEnv* env_ = nullptr;
    jclass user_class_ = nullptr;         // global, held by the identifier cache for the process's life
    jmethodID set_attribute_ = nullptr;
};

}  // namespace orvane

#endif  // JBRG_USER_QSF_FND_USER_INFO_H
