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

// An instance method or constructor ("<init>") of a cached class.
class method_id {
public:
    constexpr method_id(class_id& owner, const char* name, const char* signature)
        : owner_(owner), name_(name), signature_(signature) {}
    method_id(const method_id&) = delete;
    method_id& operator=(const method_id&) = delete;

    // set_mid_: true if known; otherwise the class, then GetMethodID.
    bool ensure(const trace_site& site);
    jmethodID get() const { return id_.load(std::memory_order_acquire); }
    class_id& owner() const { return owner_; }

private:
    class_id& owner_;
    const char* name_;
    const char* signature_;
    std::atomic<jmethodID> id_{nullptr};
};

// An instance field of a cached class.
class field_id {
public:
    constexpr field_id(class_id& owner, const char* name, const char* signature)
        : owner_(owner), name_(name), signature_(signature) {}
    field_id(const field_id&) = delete;
    field_id& operator=(const field_id&) = delete;

    // set_fid_: the class first (false if it cannot be had), then true if known, otherwise GetFieldID.
    bool ensure(const trace_site& site);
    jfieldID get() const { return id_.load(std::memory_order_acquire); }

private:
    class_id& owner_;
    const char* name_;
    const char* signature_;
    std::atomic<jfieldID> id_{nullptr};
};

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
