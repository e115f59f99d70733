#include "box/box_describer.h"

#include <ctime>
#include <string>

#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "emw_services.h"

namespace orvane::box {

bool failed(JNIEnv* env, const trace_site& site, const char* what) {
    if (!env->ExceptionCheck()) return false;
    trace_at(site, "Detected exception : %s", what);
    env->ExceptionClear();
    return true;
}

JNIEnv* caller_env(const trace_site& site) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) trace_at(site, "GetJNIEnv() failed.");
    return env;
}

describer::describer(const char* class_path, const field_spec* fields, std::size_t count) : java_made_(true) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return;
    look_up(env, class_path, fields, count);
    if (class_ == nullptr) return;
    jni::local_ref<jclass> local(env, class_);
    class_ = static_cast<jclass>(env->NewGlobalRef(local.get()));
}

describer::describer(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count)
    : java_made_(false), env_(env) {
    if (env != nullptr) look_up(env, class_path, fields, count);
}

void describer::look_up(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count) {
    jni::local_ref<jclass> found(env, env->FindClass(class_path));
    if (failed(env, JBRG_TRACE_SITE, "FindClass") || !found) return;
    for (std::size_t i = 0; i < count && i < kMaxFields; ++i) {
        ids_[i] = env->GetFieldID(found.get(), fields[i].name, fields[i].signature);
        if (failed(env, JBRG_TRACE_SITE, "GetFieldID") || ids_[i] == nullptr) return;
    }
    fields_ = fields;
    class_ = found.release();
}

describer::~describer() {
    if (class_ == nullptr) return;
    if (!java_made_) {
        env_->DeleteLocalRef(class_);
        return;
    }
    if (JNIEnv* env = CJvm::GetJNIEnv()) env->DeleteGlobalRef(class_);
}

JNIEnv* describer::env() const {
    if (class_ == nullptr) return nullptr;
    return java_made_ ? CJvm::GetJNIEnv() : env_;
}

JNIEnv* describer::target(jobject object) const {
    JNIEnv* env = this->env();
    if (env == nullptr || object == nullptr) return nullptr;
    // A manager hands its describers only the objects they made; Java may hand anything.
    if (java_made_ && !env->IsInstanceOf(object, class_)) return nullptr;
    return env;
}

bool describer::describes(jobject object) const {
    JNIEnv* env = this->env();
    return env != nullptr && object != nullptr && env->IsInstanceOf(object, class_);
}

jobject describer::create(const trace_site& site) {
    JNIEnv* env = this->env();
    if (env == nullptr) return nullptr;
    jmethodID ctor = env->GetMethodID(class_, "<init>", "()V");
    if (failed(env, site, "GetMethodID") || ctor == nullptr) return nullptr;
    jobject made = env->NewObject(class_, ctor);
    if (failed(env, site, "NewObject")) return nullptr;
    return made;
}

bool describer::set_long(jobject object, std::size_t field, dev_ulong value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    env->SetLongField(object, ids_[field], static_cast<jlong>(value));
    return true;
}

bool describer::set_int(jobject object, std::size_t field, int32_t value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    env->SetIntField(object, ids_[field], value);
    return true;
}

bool describer::set_bool(jobject object, std::size_t field, bool value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    env->SetBooleanField(object, ids_[field], value ? JNI_TRUE : JNI_FALSE);
    return true;
}

bool describer::set_text(jobject object, std::size_t field, const char* text) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    jni::local_ref<jstring> value(env, jni::new_string(env, text));
    if (failed(env, JBRG_TRACE_SITE, "NewStringUTF")) return false;
    env->SetObjectField(object, ids_[field], value.get());
    return true;
}

bool describer::set_object(jobject object, std::size_t field, jobject value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    if (java_made_ && value != nullptr) {
        // The field's class, from its signature "L<class>;".
        std::string signature = fields_[field].signature;
        jni::local_ref<jclass> type(env, env->FindClass(signature.substr(1, signature.size() - 2).c_str()));
        if (failed(env, JBRG_TRACE_SITE, "FindClass") || !type || !env->IsInstanceOf(value, type.get())) return false;
    }
    env->SetObjectField(object, ids_[field], value);
    return true;
}

bool describer::set_constant(jobject object, std::size_t field, const char* enum_class, const char* constant,
                             const trace_site& site) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    if (constant == nullptr) {
        env->SetObjectField(object, ids_[field], nullptr);
        return true;
    }
    jni::local_ref<jclass> type(env, env->FindClass(enum_class));
    if (failed(env, site, "FindClass") || !type) return false;
    std::string signature = std::string("L") + enum_class + ";";
    jfieldID id = env->GetStaticFieldID(type.get(), constant, signature.c_str());
    if (failed(env, site, "GetStaticFieldID") || id == nullptr) return false;
    jni::local_ref<jobject> value(env, env->GetStaticObjectField(type.get(), id));
    env->SetObjectField(object, ids_[field], value.get());
    return true;
}

bool describer::set_date(jobject object, std::size_t field, dev_time seconds, const trace_site& site) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    jni::local_ref<jclass> calendar(env, env->FindClass("java/util/Calendar"));
    if (failed(env, site, "FindClass") || !calendar) return false;
    calendar_ids ids{calendar.get(), env->GetStaticMethodID(calendar.get(), "getInstance", "()Ljava/util/Calendar;"),
                     nullptr, nullptr};
    if (failed(env, site, "GetStaticMethodID") || ids.get_instance == nullptr) return false;
    ids.set = env->GetMethodID(calendar.get(), "set", "(IIIIII)V");
    if (failed(env, site, "GetMethodID") || ids.set == nullptr) return false;
    ids.get_time = env->GetMethodID(calendar.get(), "getTime", "()Ljava/util/Date;");
    if (failed(env, site, "GetMethodID") || ids.get_time == nullptr) return false;
    jni::local_ref<jobject> date(env, make_date(env, ids, seconds, site));
    if (!date) return false;
    env->SetObjectField(object, ids_[field], date.get());
    return true;
}

jobject make_date(JNIEnv* env, const calendar_ids& ids, dev_time seconds, const trace_site& site) {
    // The device's time_t is 32 bits: its seconds reach the host's wider one sign-extended.
    const time_t now = static_cast<time_t>(seconds);
    struct tm local {};
    if (emwCLBLocalTime_r(&now, &local) == nullptr) {
        trace_at(site, "emwCLBLocalTime_r() failed.");
        return nullptr;
    }
    jni::local_ref<jobject> calendar(env, env->CallStaticObjectMethod(ids.calendar, ids.get_instance));
    if (failed(env, site, "CallStaticObjectMethod") || !calendar) return nullptr;
    env->CallVoidMethod(calendar.get(), ids.set, local.tm_year + 1900, local.tm_mon, local.tm_mday, local.tm_hour,
                        local.tm_min, local.tm_sec);
    if (failed(env, site, "CallVoidMethod")) return nullptr;
    jobject date = env->CallObjectMethod(calendar.get(), ids.get_time);
    if (failed(env, site, "CallObjectMethod")) return nullptr;
    return date;
}

}  // namespace orvane::box
