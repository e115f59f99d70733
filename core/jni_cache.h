// The lazy cache of Java class, method and field identifiers.
//
// The classes that build Java objects (application information, address entries, document boxes, ...)
// keep one static identifier per Java class, constructor or method, and field, looked up on first use and
// then kept for the life of the process (unless a class reference is released, when the class and whatever
// needs it are looked up again on next use):
//
//     static jni::class_id jcls_list{"java/util/ArrayList"};
//     static jni::method_id mid_list_add{jcls_list, "add", "(Ljava/lang/Object;)Z"};
//
//     bool xamf_amo_proxy::set_mid_list_add() { return mid_list_add.ensure(JBRG_TRACE_SITE); }
//
// ensure() answers true when the identifier is (now) known. Every failed lookup is traced at the caller's
// site ("Detected exception : FindClass", ": GetMethodID", ": GetFieldID", ": NewStringUTF", ": NewObject")
// and its Java exception cleared: no exception leaves these operations. The environment is the calling
// thread's, from CJvm::GetJNIEnv(), or the one the caller hands to the forms that take it.
//
// The identifiers are filled without a lock. Two threads racing on a first lookup both fill the slot with
// equal values (the class reference of the loser stays alive); the slots are atomic so that the race is a
// benign one.
#ifndef JBRG_CORE_JNI_CACHE_H
#define JBRG_CORE_JNI_CACHE_H

#include <jni.h>

#include <atomic>
#include <type_traits>

#include "core/trace.h"

namespace orvane::jni {

// Traces and clears a pending Java exception left by `what` at `site` ("Detected exception : <what>"); true
// when there was one.
bool failed(JNIEnv* env, const trace_site& site, const char* what);

// For the JNI calls that answer null exactly when they throw (FindClass, Get[Static]FieldID,
// Get[Static]MethodID, NewObject, NewStringUTF): true when `result` is null, the exception traced and cleared
// as failed() does. A result that is there is not followed by an ExceptionCheck, which is one more transition
// into the VM: a listing makes thousands of such lookups.
template <class T>
bool missing(JNIEnv* env, T result, const trace_site& site, const char* what) {
    if (result != nullptr) return false;
    failed(env, site, what);
    return true;
}

// A global reference to a Java class, found by its slash-form path.
class class_id {
public:
    constexpr explicit class_id(const char* path) : path_(path) {}
    class_id(const class_id&) = delete;
    class_id& operator=(const class_id&) = delete;

    // set_jcls_: true if known; otherwise FindClass and keep a global reference.
    bool ensure(const trace_site& site);
    jclass get() const { return cls_.load(std::memory_order_acquire); }
    const char* path() const { return path_; }
    // Deletes the global reference and forgets it, so that the next ensure() looks the class up again.
    void release(JNIEnv* env);

private:
    const char* path_;
    std::atomic<jclass> cls_{nullptr};
};

// How each kind of member of a cached class is looked up, and the name its failure is traced under.
namespace detail {
struct method_lookup {
    using id = jmethodID;
    static constexpr const char* what = "GetMethodID";
    static id find(JNIEnv* env, jclass c, const char* n, const char* s) { return env->GetMethodID(c, n, s); }
};
struct static_method_lookup {
    using id = jmethodID;
    static constexpr const char* what = "GetStaticMethodID";
    static id find(JNIEnv* env, jclass c, const char* n, const char* s) { return env->GetStaticMethodID(c, n, s); }
};
struct field_lookup {
    using id = jfieldID;
    static constexpr const char* what = "GetFieldID";
    static id find(JNIEnv* env, jclass c, const char* n, const char* s) { return env->GetFieldID(c, n, s); }
};
struct static_field_lookup {
    using id = jfieldID;
    static constexpr const char* what = "GetStaticFieldID";
    static id find(JNIEnv* env, jclass c, const char* n, const char* s) { return env->GetStaticFieldID(c, n, s); }
};
}  // namespace detail

// A member of a cached class: an instance method or constructor ("<init>"), a static method, an instance
// field or a static field (an enumeration's constant).
template <class Lookup>
class member_id {
public:
    using id_type = typename Lookup::id;

    constexpr member_id(class_id& owner, const char* name, const char* signature)
        : owner_(owner), name_(name), signature_(signature) {}
    member_id(const member_id&) = delete;
    member_id& operator=(const member_id&) = delete;

    // set_mid_ / set_fid_: the class first (false if it cannot be had; a class reference released since is
    // looked up again, so that a known member is never used with a deleted class), then true if known,
    // otherwise the lookup, traced as "Detected exception : <lookup>" when it fails.
    bool ensure(const trace_site& site);
    id_type get() const { return id_.load(std::memory_order_acquire); }
    class_id& owner() const { return owner_; }

private:
    class_id& owner_;
    const char* name_;
    const char* signature_;
    std::atomic<id_type> id_{nullptr};
};

using method_id = member_id<detail::method_lookup>;
using static_method_id = member_id<detail::static_method_lookup>;
using field_id = member_id<detail::field_lookup>;
using static_field_id = member_id<detail::static_field_lookup>;

extern template class member_id<detail::method_lookup>;
extern template class member_id<detail::static_method_lookup>;
extern template class member_id<detail::field_lookup>;
extern template class member_id<detail::static_field_lookup>;

// The value of a static object field (an enumeration's constant) as a new local reference, or null when the
// field cannot be had.
jobject get_static(JNIEnv* env, const trace_site& site, static_field_id& field);

// set_field_: stores `value` into the field of `object`. A text value (const char*) becomes a new Java
// string first; a failure to make it is traced as "Detected exception : NewStringUTF" and the field is left
// as it was. False when the field or the environment cannot be had.
bool set_field(const trace_site& site, field_id& field, jobject object, const char* text);
bool set_field(const trace_site& site, field_id& field, jobject object, jobject value);
bool set_field(const trace_site& site, field_id& field, jobject object, jboolean value);
bool set_field(const trace_site& site, field_id& field, jobject object, jbyte value);
bool set_field(const trace_site& site, field_id& field, jobject object, jchar value);
bool set_field(const trace_site& site, field_id& field, jobject object, jshort value);
bool set_field(const trace_site& site, field_id& field, jobject object, jint value);
bool set_field(const trace_site& site, field_id& field, jobject object, jlong value);
bool set_field(const trace_site& site, field_id& field, jobject object, jfloat value);
bool set_field(const trace_site& site, field_id& field, jobject object, jdouble value);

// A new object made with the no-argument constructor `ctor` (a local reference), or null: a failed lookup
// or construction is traced ("Detected exception : NewObject") and cleared.
jobject create_object(const trace_site& site, method_id& ctor);

// The same through `env`, the environment a builder on the Java caller's thread already holds: a builder
// that fills many objects asks CJvm for it once, not once per object and field. (A class seen for the first
// time is still looked up through CJvm::GetJNIEnv, as every class of the cache is.) `T` is one of the field
// types above.
template <class T>
bool set_field(JNIEnv* env, const trace_site& site, field_id& field, jobject object, T value);
jobject create_object(JNIEnv* env, const trace_site& site, method_id& ctor);

}  // namespace orvane::jni

#endif  // JBRG_CORE_JNI_CACHE_H
