// Scoped holders of JNI resources.
//
// Each JNI resource that native code takes (the UTF characters of a string, a local reference, the pinned
// elements of an array) is held by one of these, so it is released on every path out of the function,
// early returns and thrown Java exceptions included. None of them calls into the VM with a null resource.
#ifndef JBRG_CORE_JNI_SCOPED_H
#define JBRG_CORE_JNI_SCOPED_H

#include <jni.h>

#include <cstddef>

namespace orvane::jni {

// The modified UTF-8 characters of a Java string. A null string gives a null pointer; so does a string
// whose characters cannot be had (the VM then has an OutOfMemoryError pending).
class utf_chars {
public:
    utf_chars(JNIEnv* env, jstring text)
        : env_(env), text_(text), chars_(text != nullptr ? env->GetStringUTFChars(text, nullptr) : nullptr) {}
    ~utf_chars() {
        if (chars_ != nullptr) env_->ReleaseStringUTFChars(text_, chars_);
    }
    utf_chars(const utf_chars&) = delete;
    utf_chars& operator=(const utf_chars&) = delete;

    const char* get() const { return chars_; }
    explicit operator bool() const { return chars_ != nullptr; }

private:
    JNIEnv* env_;
    jstring text_;
    const char* chars_;
};

// A local reference, deleted at the end of the scope unless released.
template <class T = jobject>
class local_ref {
public:
    local_ref(JNIEnv* env, T ref) : env_(env), ref_(ref) {}
    ~local_ref() {
        if (ref_ != nullptr) env_->DeleteLocalRef(ref_);
    }
    local_ref(const local_ref&) = delete;
    local_ref& operator=(const local_ref&) = delete;
    local_ref(local_ref&& other) noexcept : env_(other.env_), ref_(other.release()) {}

    T get() const { return ref_; }
    explicit operator bool() const { return ref_ != nullptr; }
    // Hands the reference to the caller (typically to return it to Java).
    T release() {
        T ref = ref_;
        ref_ = nullptr;
        return ref;
    }

private:
    JNIEnv* env_;
    T ref_;
};

// The Java array type and element accessors of each primitive element type.
template <class E>
struct array_traits;

#define JBRG_ARRAY_TRAITS(E, A, Name)                                                               \
    template <>                                                                                    \
    struct array_traits<E> {                                                                       \
        using array = A;                                                                           \
        static E* get(JNIEnv* env, A a) { return env->Get##Name##ArrayElements(a, nullptr); }      \
        static void release(JNIEnv* env, A a, E* e, jint mode) {                                   \
            env->Release##Name##ArrayElements(a, e, mode);                                         \
        }                                                                                          \
        static A make(JNIEnv* env, jsize n) { return env->New##Name##Array(n); }                   \
        static void set(JNIEnv* env, A a, jsize n, const E* e) { env->Set##Name##ArrayRegion(a, 0, n, e); } \
        static void get_region(JNIEnv* env, A a, jsize n, E* e) { env->Get##Name##ArrayRegion(a, 0, n, e); } \
    };
JBRG_ARRAY_TRAITS(jboolean, jbooleanArray, Boolean)
JBRG_ARRAY_TRAITS(jbyte, jbyteArray, Byte)
JBRG_ARRAY_TRAITS(jchar, jcharArray, Char)
JBRG_ARRAY_TRAITS(jshort, jshortArray, Short)
JBRG_ARRAY_TRAITS(jint, jintArray, Int)
JBRG_ARRAY_TRAITS(jlong, jlongArray, Long)
JBRG_ARRAY_TRAITS(jfloat, jfloatArray, Float)
JBRG_ARRAY_TRAITS(jdouble, jdoubleArray, Double)
#undef JBRG_ARRAY_TRAITS

// The pinned elements of a Java array of E. Released at the end of the scope: copied back (mode 0) after
// commit(), otherwise dropped (JNI_ABORT), so that a failed call leaves the Java array as it was.
template <class E>
class pinned_array {
public:
    using array = typename array_traits<E>::array;

    pinned_array(JNIEnv* env, array a)
        : env_(env),
          array_(a),
          elements_(a != nullptr ? array_traits<E>::get(env, a) : nullptr),
          length_(elements_ != nullptr ? env->GetArrayLength(a) : 0) {}
    ~pinned_array() {
        if (elements_ != nullptr) array_traits<E>::release(env_, array_, elements_, mode_);
    }
    pinned_array(const pinned_array&) = delete;
    pinned_array& operator=(const pinned_array&) = delete;

    explicit operator bool() const { return elements_ != nullptr; }
    E* data() const { return elements_; }
    jsize size() const { return length_; }
    E& operator[](std::size_t i) const { return elements_[i]; }

    // The elements are copied back into the Java array when released.
    void commit() { mode_ = 0; }

private:
    JNIEnv* env_;
    array array_;
    E* elements_;
    jsize length_;
    jint mode_ = JNI_ABORT;
};

}  // namespace orvane::jni

#endif  // JBRG_CORE_JNI_SCOPED_H
