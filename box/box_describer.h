// What the describers of the box module share: the Java objects that describe boxes, documents and
// removable-memory files are built by small native classes, one per Java class, whose create_... makes an
// object with the class's no-argument constructor and whose set_field_... operations set one field each.
//
// Two kinds of describer:
// - `describer` (user boxes, box documents, removable-memory files) looks up its Java class and every field
//   when it is made (core/jni_describer.h). A manager makes one per entry of a listing, with the environment it
//   already holds; Java makes one through the module's new_... .
// - The fax box and job document describers use the process-wide identifier cache (core/jni_cache.h).
//
// Either kind sets nothing, and answers false, when it is handed an object it cannot describe: a null object,
// one of another class, a value of the wrong class for an object field, or when its class or field could not
// be found. So no caller can make a describer call the VM with a field of another class, which would end the
// VM.
#ifndef JBRG_BOX_BOX_DESCRIBER_H
#define JBRG_BOX_BOX_DESCRIBER_H

#include <jni.h>

#include <cstddef>
#include <cstdint>

#include "box/box_enums.h"
#include "core/field_text.h"
#include "core/jni_describer.h"
#include "core/jni_scoped.h"
#include "core/trace.h"
#include "plat_types.h"

namespace orvane::box {

using jni::failed;
using jni::missing;
using jni::field_spec;

// A describer of the box module (core/jni_describer.h), which also sets enumeration constants and dates.
class describer : public jni::describer {
protected:
    using jni::describer::describer;

    // The constant named `constant` of the enumeration class `enum_class`; a null name stores null.
    bool set_constant(jobject object, std::size_t field, const char* enum_class, const char* constant,
                      const trace_site& site);
    bool set_enum(jobject object, std::size_t field, const enum_table& table, int32_t value,
                  const trace_site& site) {
        return set_constant(object, field, table.java_class, constant_of(table, value, site), site);
    }
    // A java/util/Date of the device time `seconds` (see make_date).
    bool set_date(jobject object, std::size_t field, dev_time seconds, const trace_site& site);
};

using orvane::field_text;

// The Java classes and methods a date is made with (see make_date).
struct calendar_ids {
    jclass calendar;          // java/util/Calendar
    jmethodID get_instance;   // static getInstance ()Ljava/util/Calendar;
    jmethodID set;            // set (IIIIII)V
    jmethodID get_time;       // getTime ()Ljava/util/Date;
};

// A java/util/Date of the device time `seconds`: broken into local calendar time by the platform
// (emwCLBLocalTime_r), set into a new Calendar as year, month, day, hour, minute and second, and read back
// with getTime. The Calendar's milliseconds are those of the moment of conversion: the device's dates carry
// them, and so do these. Null when the time cannot be broken down or a call fails (traced at `site`, its
// Java error cleared).
jobject make_date(JNIEnv* env, const calendar_ids& ids, dev_time seconds, const trace_site& site);

// The calling thread's environment; its absence traced "GetJNIEnv() failed." at `site`.
JNIEnv* caller_env(const trace_site& site);

// java.util.ArrayList and its add method, looked up per listing: the lists the listings fill.
struct java_list {
    java_list(JNIEnv* env, const trace_site& site) : type(env, env->FindClass("java/util/ArrayList")) {
        if (failed(env, site, "FindClass") || !type) return;
        add = env->GetMethodID(type.get(), "add", "(Ljava/lang/Object;)Z");
        if (failed(env, site, "GetMethodID")) add = nullptr;
    }
    // True when `list` is an ArrayList this can add to; otherwise traced "list is not an ArrayList." at
    // `site`. add() is called on whatever the caller gave, so anything else is refused before the service is
    // asked.
    bool holds(JNIEnv* env, jobject list, const trace_site& site) const {
        if (add != nullptr && list != nullptr && env->IsInstanceOf(list, type.get())) return true;
        trace_at(site, "list is not an ArrayList.");
        return false;
    }
    bool append(JNIEnv* env, jobject list, jobject item, const trace_site& site) const {
        env->CallBooleanMethod(list, add, item);
        return !failed(env, site, "CallBooleanMethod");
    }

    jni::local_ref<jclass> type;
    jmethodID add = nullptr;
};

}  // namespace orvane::box

#endif  // JBRG_BOX_BOX_DESCRIBER_H
