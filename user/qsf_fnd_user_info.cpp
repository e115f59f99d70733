#include "user/qsf_fnd_user_info.h"

#include <cstdio>

#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "core/trace.h"

namespace orvane {

namespace {

jni::class_id jcls_user_impl{"orvane/qsf/user/UserImpl"};
jni::method_id mid_user_impl_init{jcls_user_impl, "<init>", "()V"};
jni::method_id mid_set_attribute{jcls_user_impl, "setAttribute", "(Lorvane/user/attribute/UserAttribute;)V"};

jni::class_id jcls_login_name{"orvane/user/attribute/LoginName"};
jni::method_id mid_login_name_init{jcls_login_name, "<init>", "(Ljava/lang/String;)V"};
jni::class_id jcls_user_name{"orvane/user/attribute/UserName"};
jni::method_id mid_user_name_init{jcls_user_name, "<init>", "(Ljava/lang/String;)V"};
jni::class_id jcls_mail_address{"orvane/user/attribute/MailAddress"};
jni::method_id mid_mail_address_init{jcls_mail_address, "<init>", "(Ljava/lang/String;)V"};
jni::class_id jcls_account_id{"orvane/account/attribute/AccountID"};
jni::method_id mid_account_id_init{jcls_account_id, "<init>", "(Ljava/lang/String;)V"};

jni::class_id jcls_access_level{"orvane/user/attribute/AccessLevel"};
constexpr const char kAccessLevelSignature[] = "Lorvane/user/attribute/AccessLevel;";

// The access level each right of the user store stands for; a right not in the table has none.
struct access_level_entry {
    XSI_PBFS_USER_RIGHTS rights;
    const char* field;
};
constexpr access_level_entry kAccessLevels[] = {
    {XSI_PBFS_USER_RIGHTS_ADMIN, "ADMIN"},
    {XSI_PBFS_USER_RIGHTS_USER, "USER"},
};

using jni::failed;
using jni::missing;

// A new attribute object made by its (String) constructor from `text` (null for a null text).
jobject text_attribute(JNIEnv* env, const trace_site& site, jni::method_id& ctor, const char* text) {
    if (!ctor.ensure(site)) return nullptr;
    jstring made = nullptr;
    if (text != nullptr) {
        made = jni::new_string(env, text);
        if (missing(env, made, site, "NewStringUTF")) return nullptr;
    }
    jni::local_ref<jstring> value(env, made);
    jobject attribute = env->NewObject(ctor.owner().get(), ctor.get(), value.get());
    if (missing(env, attribute, site, "NewObject")) return nullptr;
    return attribute;
}

}  // namespace

qsf_fnd_user_info::qsf_fnd_user_info() {
    env_ = CJvm::GetJNIEnv();
    if (env_ == nullptr) return;
    if (mid_set_attribute.ensure(JBRG_TRACE_SITE)) {
        user_class_ = jcls_user_impl.get();
        set_attribute_ = mid_set_attribute.get();
    }
}

qsf_fnd_user_info::~qsf_fnd_user_info() = default;

JNIEnv* qsf_fnd_user_info::env() const { return env_ == nullptr ? nullptr : CJvm::GetJNIEnv(); }

jobject qsf_fnd_user_info::create_user_info() {
    JNIEnv* e = env();
    if (e == nullptr) return nullptr;
    return jni::create_object(e, JBRG_TRACE_SITE, mid_user_impl_init);
}

// Hands the attribute to the user; only a UserImpl is given it, as its method is the one looked up.
bool qsf_fnd_user_info::set_attribute(JNIEnv* env, jobject user, jobject attribute) {
    env->CallVoidMethod(user, set_attribute_, attribute);
    if (failed(env, JBRG_TRACE_SITE, "CallVoidMethod")) return false;
    return true;
}

bool qsf_fnd_user_info::accepts(JNIEnv* env, jobject user) const {
    return env != nullptr && set_attribute_ != nullptr && user != nullptr && env->IsInstanceOf(user, user_class_);
}

bool qsf_fnd_user_info::set_field_login_name(jobject user, char* text) {
    JNIEnv* e = env();
    if (!accepts(e, user)) return false;
    jni::local_ref<jobject> attribute(e, text_attribute(e, JBRG_TRACE_SITE, mid_login_name_init, text));
    return attribute && set_attribute(e, user, attribute.get());
}

bool qsf_fnd_user_info::set_field_user_name(jobject user, char* text) {
    JNIEnv* e = env();
    if (!accepts(e, user)) return false;
    jni::local_ref<jobject> attribute(e, text_attribute(e, JBRG_TRACE_SITE, mid_user_name_init, text));
    return attribute && set_attribute(e, user, attribute.get());
}

bool qsf_fnd_user_info::set_field_mail_address(jobject user, char* text) {
    JNIEnv* e = env();
    if (!accepts(e, user)) return false;
    jni::local_ref<jobject> attribute(e, text_attribute(e, JBRG_TRACE_SITE, mid_mail_address_init, text));
    return attribute && set_attribute(e, user, attribute.get());
}

bool qsf_fnd_user_info::set_field_access_level(jobject user, XSI_PBFS_USER_RIGHTS rights) {
    JNIEnv* e = env();
    if (!accepts(e, user)) return false;
    if (!jcls_access_level.ensure(JBRG_TRACE_SITE)) return false;
    const char* name = nullptr;
    for (const access_level_entry& entry : kAccessLevels) {
        if (entry.rights == rights) name = entry.field;
    }
    jobject found = nullptr;
    if (name != nullptr) {
        jfieldID field = e->GetStaticFieldID(jcls_access_level.get(), name, kAccessLevelSignature);
        if (failed(e, JBRG_TRACE_SITE, "GetStaticFieldID") || field == nullptr) return false;
        found = e->GetStaticObjectField(jcls_access_level.get(), field);
    }
    jni::local_ref<jobject> level(e, found);
    return set_attribute(e, user, level.get());
}

bool qsf_fnd_user_info::set_field_account_id(jobject user, int id) {
    JNIEnv* e = env();
    if (!accepts(e, user)) return false;
    char text[32];
    std::snprintf(text, sizeof text, "%d", id);
    jni::local_ref<jobject> attribute(e, text_attribute(e, JBRG_TRACE_SITE, mid_account_id_init, text));
    return attribute && set_attribute(e, user, attribute.get());
}

}  // namespace orvane
