#include "box/box_cached.h"

#include <cstring>
#include <string>

#include "box/box_describer.h"
#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"

namespace orvane::box {

namespace {

jni::class_id jcls_list{"java/util/ArrayList"};
jni::method_id mid_list_add{jcls_list, "add", "(Ljava/lang/Object;)Z"};

jni::class_id jcls_cal{"java/util/Calendar"};
jni::static_method_id mid_cal_get_instance{jcls_cal, "getInstance", "()Ljava/util/Calendar;"};
jni::method_id mid_cal_set{jcls_cal, "set", "(IIIIII)V"};
jni::method_id mid_cal_get_time{jcls_cal, "getTime", "()Ljava/util/Date;"};

// The slot of `value` in `table` (the fallback's slot, `count`, for a value outside it), or -1 for none.
long slot_of(const enum_table& table, int32_t value, const trace_site& site) {
    for (std::size_t i = 0; i < table.count; ++i) {
        if (table.entries[i].value == value) return static_cast<long>(i);
    }
    if (table.traces_default) trace_at(site, "switch default");
    return table.fallback == nullptr ? -1 : static_cast<long>(table.count);
}

}  // namespace

cached_enum::cached_enum(const enum_table& table)
    : table_(table), class_(table.java_class), ids_(new std::atomic<jfieldID>[table.count + 1]) {
    for (std::size_t i = 0; i <= table.count; ++i) ids_[i].store(nullptr, std::memory_order_relaxed);
}

jobject cached_enum::constant(JNIEnv* env, int32_t value, const trace_site& site, bool* found) {
    *found = true;
    long slot = slot_of(table_, value, site);
    if (slot < 0) return nullptr;
    if (!class_.ensure(site)) {
        *found = false;
        return nullptr;
    }
    jfieldID id = ids_[slot].load(std::memory_order_acquire);
    if (id == nullptr) {
        const char* name = static_cast<std::size_t>(slot) < table_.count ? table_.entries[slot].constant : table_.fallback;
        std::string signature = std::string("L") + table_.java_class + ";";
        id = env->GetStaticFieldID(class_.get(), name, signature.c_str());
        if (missing(env, id, site, "GetStaticFieldID")) {
            *found = false;
            return nullptr;
        }
        ids_[slot].store(id, std::memory_order_release);
    }
    return env->GetStaticObjectField(class_.get(), id);
}

JNIEnv* list_env(jobject list) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr || !mid_list_add.ensure(JBRG_TRACE_SITE) || list == nullptr ||
        !env->IsInstanceOf(list, jcls_list.get())) {
        return nullptr;
    }
    return env;
}

bool append(JNIEnv* env, jobject list, jobject item) {
    env->CallBooleanMethod(list, mid_list_add.get(), item);
    if (!env->ExceptionCheck()) return true;
    env->ExceptionClear();
    return false;
}

jobject cached_date(JNIEnv* env, dev_time seconds, const trace_site& site) {
    if (!mid_cal_get_instance.ensure(site) || !mid_cal_set.ensure(site) || !mid_cal_get_time.ensure(site)) {
        return nullptr;
    }
    calendar_ids ids{jcls_cal.get(), mid_cal_get_instance.get(), mid_cal_set.get(), mid_cal_get_time.get()};
    return make_date(env, ids, seconds, site);
}

JNIEnv* cached_describer::env() const { return env_ != nullptr ? env_ : CJvm::GetJNIEnv(); }

JNIEnv* cached_describer::target(jobject object, jni::field_id& field, const trace_site& site) const {
    if (object == nullptr || !field.ensure(site)) return nullptr;
    JNIEnv* env = this->env();
    if (env == nullptr || !env->IsInstanceOf(object, field.owner().get())) return nullptr;
    return env;
}

jobject cached_describer::create(jni::method_id& ctor, const trace_site& site) {
    return jni::create_object(env(), site, ctor);
}

bool cached_describer::set_long(jobject object, jni::field_id& field, dev_ulong value, const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    env->SetLongField(object, field.get(), static_cast<jlong>(value));
    return true;
}

bool cached_describer::set_int(jobject object, jni::field_id& field, int32_t value, const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    env->SetIntField(object, field.get(), value);
    return true;
}

bool cached_describer::set_bool(jobject object, jni::field_id& field, bool value, const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    env->SetBooleanField(object, field.get(), value ? JNI_TRUE : JNI_FALSE);
    return true;
}

bool cached_describer::set_text(jobject object, jni::field_id& field, const char* text, const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    jni::local_ref<jstring> value(env, jni::new_string(env, text));
    if (failed(env, site, "NewStringUTF")) return false;
    env->SetObjectField(object, field.get(), value.get());
    return true;
}

bool cached_describer::set_object(jobject object, jni::field_id& field, jobject value, jni::class_id& value_class,
                                  const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    if (value != nullptr && (!value_class.ensure(site) || !env->IsInstanceOf(value, value_class.get()))) return false;
    env->SetObjectField(object, field.get(), value);
    return true;
}

bool cached_describer::set_enum(jobject object, jni::field_id& field, cached_enum& constants, int32_t value,
                                const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    bool found = false;
    jni::local_ref<jobject> constant(env, constants.constant(env, value, site, &found));
    if (!found) return false;
    env->SetObjectField(object, field.get(), constant.get());
    return true;
}

bool cached_describer::set_date(jobject object, jni::field_id& field, dev_time seconds, const trace_site& site) {
    JNIEnv* env = target(object, field, site);
    if (env == nullptr) return false;
    jni::local_ref<jobject> date(env, cached_date(env, seconds, site));
    if (!date) return false;
    env->SetObjectField(object, field.get(), date.get());
    return true;
}

}  // namespace orvane::box
