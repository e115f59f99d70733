#include "box/box_describer.h"

#include <ctime>
#include <string>

#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "emw_services.h"

namespace orvane::box {

JNIEnv* caller_env(const trace_site& site) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) trace_at(site, "GetJNIEnv() failed.");
    return env;
}

bool describer::set_constant(jobject object, std::size_t field, const char* enum_class, const char* constant,
                             const trace_site& site) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    if (constant == nullptr) {
        env->SetObjectField(object, id(field), nullptr);
        return true;
    }
    jni::local_ref<jclass> type(env, env->FindClass(enum_class));
    if (missing(env, type.get(), site, "FindClass")) return false;
    std::string signature = std::string("L") + enum_class + ";";
    jfieldID constant_id = env->GetStaticFieldID(type.get(), constant, signature.c_str());
    if (missing(env, constant_id, site, "GetStaticFieldID")) return false;
    jni::local_ref<jobject> value(env, env->GetStaticObjectField(type.get(), constant_id));
    env->SetObjectField(object, id(field), value.get());
    return true;
}

bool describer::set_date(jobject object, std::size_t field, dev_time seconds, const trace_site& site) {
    JNIEnv* env = target(object);
    if (env == nullptr) return false;
    jni::local_ref<jclass> calendar(env, env->FindClass("java/util/Calendar"));
    if (missing(env, calendar.get(), site, "FindClass")) return false;
    calendar_ids ids{calendar.get(), env->GetStaticMethodID(calendar.get(), "getInstance", "()Ljava/util/Calendar;"),
                     nullptr, nullptr};
    if (missing(env, ids.get_instance, site, "GetStaticMethodID")) return false;
    ids.set = env->GetMethodID(calendar.get(), "set", "(IIIIII)V");
    if (missing(env, ids.set, site, "GetMethodID")) return false;
    ids.get_time = env->GetMethodID(calendar.get(), "getTime", "()Ljava/util/Date;");
    if (missing(env, ids.get_time, site, "GetMethodID")) return false;
    jni::local_ref<jobject> date(env, make_date(env, ids, seconds, site));
    if (!date) return false;
    env->SetObjectField(object, id(field), date.get());
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
