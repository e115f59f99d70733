// A describer: a small native class that builds the Java objects of one Java class, looking the class, its
// no-argument constructor and the fields it sets up when it is made (one lookup per instance, nothing shared
// between instances), and setting one field per call.
//
// Two ways to make one:
// - with the environment a query already holds (`describer(env, ...)`): the class is a local reference of that
//   native call, deleted with the describer; the describer is handed only objects its own query made;
// - by Java, through a module's new_... (`describer(...)` without an environment): the class is held globally
//   and each operation takes the calling thread's environment, since Java may keep the describer across calls
//   and threads; it sets nothing on an object that is not of its class, nor an object field to a value of
//   another class (a JNI call that does either ends the VM).
//
// A class or field that cannot be found is traced ("Detected exception : FindClass" / ": GetFieldID") and its
// Java error cleared; the describer is then empty: it creates nothing and sets nothing, and answers false.
#ifndef JBRG_CORE_JNI_DESCRIBER_H
#define JBRG_CORE_JNI_DESCRIBER_H

#include <jni.h>

#include <cstddef>
#include <cstdint>

#include "core/jni_cache.h"
#include "core/trace.h"

namespace orvane::jni {

// One field a describer sets: its name and signature.
struct field_spec {
    const char* name;
    const char* signature;
};

class describer {
public:
    describer(const describer&) = delete;
    describer& operator=(const describer&) = delete;
    virtual ~describer();

    // True when `object` is an object of the describer's class (a caller's object to be filled in place).
    bool describes(jobject object) const;

protected:
    describer(const char* class_path, const field_spec* fields, std::size_t count);
    describer(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count);

    // A new object of the class (a local reference), or null.
    jobject create(const trace_site& site);
    // A new array of `length` elements of the class, all null (a local reference), or null.
    jobjectArray create_array(jsize length, const trace_site& site);

    // Each sets field number `field` (an index into the describer's field_spec table) of `object`.
    bool set_long(jobject object, std::size_t field, uint32_t value);  // zero-extended
    bool set_int(jobject object, std::size_t field, int32_t value);
    bool set_byte(jobject object, std::size_t field, int8_t value);
    bool set_bool(jobject object, std::size_t field, bool value);
    bool set_text(jobject object, std::size_t field, const char* text);  // device text; null: a null string
    bool set_object(jobject object, std::size_t field, jobject value);

    // The environment when `object` may be given a field here, else null; and the field's id.
    JNIEnv* target(jobject object) const;
    jfieldID id(std::size_t field) const { return ids_[field]; }

private:
    static constexpr std::size_t kMaxFields = 16;

    void look_up(JNIEnv* env, const char* class_path, const field_spec* fields, std::size_t count);
    // The environment of this call, or null when the describer is empty.
    JNIEnv* env() const;

    bool java_made_;
    JNIEnv* env_ = nullptr;
    jclass class_ = nullptr;             // null: an empty describer
    jmethodID ctor_ = nullptr;           // the no-argument constructor
    const field_spec* fields_ = nullptr;
    jfieldID ids_[kMaxFields] = {};
};

}  // namespace orvane::jni

#endif  // JBRG_CORE_JNI_DESCRIBER_H
