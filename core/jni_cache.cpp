#include "core/jni_cache.h"

#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"

namespace orvane::jni {

namespace {

// The Set<Type>Field call of each field type.
void set_value(JNIEnv* env, jobject o, jfieldID f, jobject v) { env->SetObjectField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jboolean v) { env->SetBooleanField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jbyte v) { env->SetByteField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jchar v) { env->SetCharField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jshort v) { env->SetShortField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jint v) { env->SetIntField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jlong v) { env->SetLongField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jfloat v) { env->SetFloatField(o, f, v); }
void set_value(JNIEnv* env, jobject o, jfieldID f, jdouble v) { env->SetDoubleField(o, f, v); }

// Set<Type>Field through `env`; a text value becomes a new Java string first.
template <class T>
bool store(JNIEnv* env, const trace_site& site, field_id& field, jobject object, T value) {
    if (!field.ensure(site)) return false;
    if (env == nullptr) return false;
    set_value(env, object, field.get(), value);
    return true;
}

bool store(JNIEnv* env, const trace_site& site, field_id& field, jobject object, const char* text) {
    if (!field.ensure(site)) return false;
    if (env == nullptr) return false;
    local_ref<jstring> value(env, new_string(env, text));
    if (failed(env, site, "NewStringUTF")) return false;
    env->SetObjectField(object, field.get(), value.get());
    return true;
}

}  // namespace

bool failed(JNIEnv* env, const trace_site& site, const char* what) {
    if (!env->ExceptionCheck()) return false;
    trace_at(site, "Detected exception : %s", what);
    env->ExceptionClear();
    return true;
}

void class_id::release(JNIEnv* env) {
    jclass held = cls_.exchange(nullptr, std::memory_order_acq_rel);
    if (held != nullptr && env != nullptr) env->DeleteGlobalRef(held);
}

bool class_id::ensure(const trace_site& site) {
    if (get() != nullptr) return true;
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return false;
    local_ref<jclass> found(env, env->FindClass(path_));
    if (missing(env, found.get(), site, "FindClass")) return false;
    cls_.store(static_cast<jclass>(env->NewGlobalRef(found.get())), std::memory_order_release);
    return true;
}

template <class Lookup>
bool member_id<Lookup>::ensure(const trace_site& site) {
    if (!owner_.ensure(site)) return false;
    if (get() != nullptr) return true;
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return false;
    id_type id = Lookup::find(env, owner_.get(), name_, signature_);
    if (missing(env, id, site, Lookup::what)) return false;
    id_.store(id, std::memory_order_release);
    return true;
}

template class member_id<detail::method_lookup>;
template class member_id<detail::static_method_lookup>;
template class member_id<detail::field_lookup>;
template class member_id<detail::static_field_lookup>;

jobject get_static(JNIEnv* env, const trace_site& site, static_field_id& field) {
    if (env == nullptr || !field.ensure(site)) return nullptr;
    return env->GetStaticObjectField(field.owner().get(), field.get());
}

template <class T>
bool set_field(JNIEnv* env, const trace_site& site, field_id& field, jobject object, T value) {
    return store(env, site, field, object, value);
}
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, const char*);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jobject);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jboolean);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jbyte);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jchar);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jshort);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jint);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jlong);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jfloat);
template bool set_field(JNIEnv*, const trace_site&, field_id&, jobject, jdouble);

// The forms without an environment ask CJvm for the calling thread's, once the field is known.
namespace {
template <class T>
bool set_field_here(const trace_site& site, field_id& field, jobject object, T value) {
    if (!field.ensure(site)) return false;
    return store(CJvm::GetJNIEnv(), site, field, object, value);
}
}  // namespace

bool set_field(const trace_site& s, field_id& f, jobject o, const char* v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jobject v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jboolean v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jbyte v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jchar v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jshort v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jint v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jlong v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jfloat v) { return set_field_here(s, f, o, v); }
bool set_field(const trace_site& s, field_id& f, jobject o, jdouble v) { return set_field_here(s, f, o, v); }

jobject create_object(JNIEnv* env, const trace_site& site, method_id& ctor) {
    if (!ctor.ensure(site)) return nullptr;
    if (env == nullptr) return nullptr;
    jobject object = env->NewObject(ctor.owner().get(), ctor.get());
    // A constructor that throws leaves no object behind.
    if (failed(env, site, "NewObject")) return nullptr;
    return object;
}

jobject create_object(const trace_site& site, method_id& ctor) {
    if (!ctor.ensure(site)) return nullptr;
    return create_object(CJvm::GetJNIEnv(), site, ctor);
}

}  // namespace orvane::jni
