// What the describers that use the process-wide identifier cache share (the fax box and job document
// describers, see box/box_describer.h): their classes, constructors and fields are looked up once per process
// (core/jni_cache.h), and so are the constants of the enumerations they set.
#ifndef JBRG_BOX_BOX_CACHED_H
#define JBRG_BOX_BOX_CACHED_H

#include <jni.h>

#include <atomic>
#include <cstdint>
#include <memory>

#include "box/box_enums.h"
#include "core/jni_cache.h"
#include "core/trace.h"
#include "plat_types.h"

namespace orvane::box {

// The constants of one Java enumeration, by the values of its table: the class (jcls_<enum>) and one static
// field id per constant (fid_<enum>_<constant>), each looked up when first needed.
class cached_enum {
public:
    explicit cached_enum(const enum_table& table);
    cached_enum(const cached_enum&) = delete;
    cached_enum& operator=(const cached_enum&) = delete;

    const enum_table& table() const { return table_; }
    // The constant of `value` as a new local reference; null for a value the table gives none, and when the
    // constant cannot be had (traced at `site` and cleared, *found set to false).
    jobject constant(JNIEnv* env, int32_t value, const trace_site& site, bool* found);

private:
    const enum_table& table_;
    jni::class_id class_;
    std::unique_ptr<std::atomic<jfieldID>[]> ids_;  // one per entry, then the fallback's
};

// The caller's java.util.ArrayList of a listing, through the cached class and add method (jcls_list,
// mid_list_add). list_env: the calling thread's environment when `list` is an ArrayList the listing can add to
// (anything else is refused before the service is asked), else null. append: adds `item`; false, its Java
// error cleared, when add threw.
JNIEnv* list_env(jobject list);
bool append(JNIEnv* env, jobject list, jobject item);

// The calendar a date is made with (jcls_cal, mid_cal_get_instance, mid_cal_set, mid_cal_get_time).
jobject cached_date(JNIEnv* env, dev_time seconds, const trace_site& site);

// A describer of the cached kind. Made by Java, it takes the calling thread's environment at each operation;
// made by a manager for its listing, the manager's. A setter answers false, setting nothing, when an
// identifier it needs cannot be had (the lookup is traced and cleared, and tried again on the next call), or
// when the object is not of the describer's class.
class cached_describer {
public:
    cached_describer(const cached_describer&) = delete;
    cached_describer& operator=(const cached_describer&) = delete;

protected:
    cached_describer() = default;
    explicit cached_describer(JNIEnv* env) : env_(env) {}

    jobject create(jni::method_id& ctor, const trace_site& site);
    bool set_long(jobject object, jni::field_id& field, dev_ulong value, const trace_site& site);
    bool set_int(jobject object, jni::field_id& field, int32_t value, const trace_site& site);
    bool set_bool(jobject object, jni::field_id& field, bool value, const trace_site& site);
    bool set_text(jobject object, jni::field_id& field, const char* text, const trace_site& site);
    // `value` must be null or of `value_class`.
    bool set_object(jobject object, jni::field_id& field, jobject value, jni::class_id& value_class,
                    const trace_site& site);
    bool set_enum(jobject object, jni::field_id& field, cached_enum& constants, int32_t value, const trace_site& site);
    bool set_date(jobject object, jni::field_id& field, dev_time seconds, const trace_site& site);

private:
    // The manager's environment, or the calling thread's.
    JNIEnv* env() const;
    // The environment when `object` may be given `field`, else null.
    JNIEnv* target(jobject object, jni::field_id& field, const trace_site& site) const;

    JNIEnv* env_ = nullptr;
};

}  // namespace orvane::box

#endif  // JBRG_BOX_BOX_CACHED_H
