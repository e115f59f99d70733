#include "core/jni_describer.h"

#include <string>

#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"

namespace orvane::jni {

describer::describer(const char* class_path, const field_spec* fields, std::size_t count) : java_made_(true) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return;
    look_up(env, class_path, fields, count);
    if (class_ == nullptr) return;
    local_ref<jclass> local(env, class_);
    class_ = static_cast<jclass>(env->NewGlobalRef(local.get()));
}

describer::describer(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count)
    : java_made_(false), env_(env) {
    if (env != nullptr) look_up(env, class_path, fields, count);
}

void describer::look_up(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count) {
    local_ref<jclass> found(env, env->FindClass(class_path));
    if (missing(env, found.get(), JBRG_TRACE_SITE, "FindClass")) return;
    ctor_ = env->GetMethodID(found.get(), "<init>", "()V");
    if (missing(env, ctor_, JBRG_TRACE_SITE, "GetMethodID")) return;
    for (std::size_t i = 0; i < count && i < kMaxFields; ++i) {
        ids_[i] = env->GetFieldID(found.get(), fields[i].name, fields[i].signature);
        if (missing(env, ids_[i], JBRG_TRACE_SITE, "GetFieldID")) return;
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

jobjectArray describer::create_array(jsize length, const trace_site& site) {
    JNIEnv* env = this->env();
    if (env == nullptr || length < 0) return nullptr;
    jobjectArray made = env->NewObjectArray(length, class_, nullptr);
    if (failed(env, site, "NewObjectArray")) return nullptr;
    return made;
}

bool describer::describes(jobject object) const {
    JNIEnv* env = this->env();
    return env != nullptr && object != nullptr && env->IsInstanceOf(object, class_);
}

jobject describer::create(const trace_site& site) {
    JNIEnv* env = this->env();
    if (env == nullptr) return nullptr;
    jobject made = env->NewObject(class_, ctor_);
    // Only a construction that made nothing can have left an exception.
    if (made == nullptr) failed(env, site, "NewObject");
    return made;
}

bool describer::set_long(jobject object, std::size_t field, uint32_t value) {
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

bool describer::set_byte(jobject object, std::size_t field, int8_t value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    env->SetByteField(object, ids_[field], value);
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
    local_ref<jstring> value(env, new_string(env, text));
    // Only a string that could not be made can have left an exception (a null text makes a null string).
    if (!value && failed(env, JBRG_TRACE_SITE, "NewStringUTF")) return false;
    env->SetObjectField(object, ids_[field], value.get());
    return true;
}

bool describer::set_object(jobject object, std::size_t field, jobject value) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    if (java_made_ && value != nullptr) {
        // The field's class, from its signature "L<class>;".
        std::string signature = fields_[field].signature;
        local_ref<jclass> type(env, env->FindClass(signature.substr(1, signature.size() - 2).c_str()));
        if (failed(env, JBRG_TRACE_SITE, "FindClass") || !type || !env->IsInstanceOf(value, type.get())) return false;
    }
    env->SetObjectField(object, ids_[field], value);
    return true;
}

}  // namespace orvane::jni
