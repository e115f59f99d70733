#include "appinfo/xamf_amo_proxy.h"

#include <cstring>
#include <string>

#include "core/cjvm.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "core/trace.h"
#include "emw_services.h"

namespace orvane {

std::atomic<xamf_amo_proxy*> xamf_amo_proxy::the_instance_{nullptr};
std::atomic<OSW_Mutex_Semaphore*> xamf_amo_proxy::mtx_{nullptr};

const xamf_amo_proxy::conv_entry xamf_amo_proxy::s_conv_table[4] = {
    {XAMF_AMO_RET_OK, XAM_ADS_RESULT_OK},
    {XAMF_AMO_RET_ERR, XAM_ADS_RESULT_ERR},
    {XAMF_AMO_RET_STATE, XAM_ADS_RESULT_STATE},
    {XAMF_AMO_RET_NO_APP, XAM_ADS_RESULT_NO_APP},
};

jni::class_id xamf_amo_proxy::jcls_list{"java/util/ArrayList"};
jni::method_id xamf_amo_proxy::mid_list_add{jcls_list, "add", "(Ljava/lang/Object;)Z"};
jni::class_id xamf_amo_proxy::jcls_app_info_{"orvane/qsf/app/info/AppInfo"};
jni::method_id xamf_amo_proxy::mid_app_info_constructor_{jcls_app_info_, "<init>", "()V"};
jni::field_id xamf_amo_proxy::fid_app_info_app_id_{jcls_app_info_, "appID", "Ljava/lang/String;"};
jni::field_id xamf_amo_proxy::fid_app_info_app_name_{jcls_app_info_, "appName", "Ljava/lang/String;"};
jni::field_id xamf_amo_proxy::fid_app_info_version_{jcls_app_info_, "version", "Ljava/lang/String;"};
jni::field_id xamf_amo_proxy::fid_app_info_execution_status_{jcls_app_info_, "executionStatus", "I"};

namespace {

// The detail operation's results for the service's codes; any other code is a failure.
struct retcode_entry {
    dev_long code;
    int result;
};
constexpr retcode_entry kRetcodes[] = {
    {XAM_ADS_RESULT_OK, 0},
    {XAM_ADS_RESULT_NO_APP, 3},
};
constexpr int kUnknownRetcode = 1;

// Enumeration conversions: {service value, Java value}, with the value for anything not in the table.
struct state_entry {
    dev_long platform;
    int java;
};
// A list record counts its states from "stopped" (0) and a detail record from "running" (1, with "stopped"
// as 0 and anything unknown taken as stopped), so the two conversions differ: in the list 0 -> 1, 1 -> 2,
// anything else -> 3; in the detail 1 -> 2, 2 -> 3, anything else -> 1.
constexpr state_entry kListStates[] = {{0, 1}, {1, 2}};
constexpr int kListStateOther = 3;
constexpr state_entry kDetailStates[] = {{1, 2}, {2, 3}};
constexpr int kDetailStateOther = 1;
constexpr state_entry kAreas[] = {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}};
constexpr int kAreaOther = 0;

template <std::size_t N>
int convert(const state_entry (&table)[N], dev_long value, int other) {
    for (const state_entry& e : table) {
        if (e.platform == value) return e.java;
    }
    return other;
}

// A text field of a service record, read up to its terminator and never past its capacity.
template <std::size_t N>
std::string field_text(const char (&field)[N]) {
    return std::string(field, strnlen(field, N));
}

// An application id as the trace shows it.
const char* shown(const char* text) { return text != nullptr ? text : "(null)"; }

xam_ads_facade& facade() { return *xam_ads_facade::xam_ads_get_instance(); }

}  // namespace

xamf_amo_proxy::~xamf_amo_proxy() {
    // The two class references are the class's, not the instance's: deleted and forgotten, so that a proxy Java
    // makes and deletes leaves the next one (and the singleton) to look the classes up again rather than use a
    // deleted reference.
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return;
    jcls_list.release(env);
    jcls_app_info_.release(env);
}

xamf_amo_proxy* xamf_amo_proxy::xamf_amo_get_instance() {
    if (xamf_amo_proxy* made = the_instance_.load(std::memory_order_acquire)) return made;
    if (mtx_.load(std::memory_order_acquire) == nullptr) {
        OSW_Thread_Guard thread_guard;
        if (mtx_.load(std::memory_order_relaxed) == nullptr) {
            mtx_.store(new OSW_Mutex_Semaphore(1), std::memory_order_release);
        }
    }
    OSW_Guard guard(mtx_.load(std::memory_order_acquire));
    xamf_amo_proxy* made = the_instance_.load(std::memory_order_relaxed);
    if (made == nullptr) {
        made = new xamf_amo_proxy;
        the_instance_.store(made, std::memory_order_release);
    }
    return made;
}

bool xamf_amo_proxy::set_jcls_list() { return jcls_list.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_mid_list_add() { return mid_list_add.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_jcls_app_info() { return jcls_app_info_.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_mid_app_info_constructor() { return mid_app_info_constructor_.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_fid_app_info_app_id() { return fid_app_info_app_id_.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_fid_app_info_app_name() { return fid_app_info_app_name_.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_fid_app_info_version() { return fid_app_info_version_.ensure(JBRG_TRACE_SITE); }
bool xamf_amo_proxy::set_fid_app_info_execution_status() {
    return fid_app_info_execution_status_.ensure(JBRG_TRACE_SITE);
}

int xamf_amo_proxy::xamf_amo_get_application_list(jobject list, ENV_LANG_VAL lang) {
    JBRG_TRACE("[Enter]");
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return 1;
    if (!set_mid_list_add()) {
        JBRG_TRACE("[Exit] set_mid_list_add() failed.");
        return 1;
    }
    // add() is called on whatever the caller gave: anything but an ArrayList is refused before the service.
    if (list == nullptr || !env->IsInstanceOf(list, jcls_list.get())) {
        JBRG_TRACE("[Exit] list is not an ArrayList.");
        return 1;
    }
    dev_ulong num = 0;
    PLAT_RESULT ret = facade().xam_ads_get_app_num_info(XAM_ADS_APP_TYPE_JAVA, &num);
    if (ret != XAM_ADS_RESULT_OK) {
        JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));
        return 1;
    }
    auto* app_list = static_cast<XAM_ADS_APP_INFO*>(emwOSWSubAllocMem(num * sizeof(XAM_ADS_APP_INFO)));
    if (app_list == nullptr) {
        JBRG_TRACE("[Exit] app_list == NULL.");
        return 1;
    }
    dev_ulong out_count = 0;
    ret = facade().xam_ads_get_app_list(XAM_ADS_APP_TYPE_JAVA, 0, num, app_list, &out_count, lang, 0);
    if (ret != XAM_ADS_RESULT_OK) {
        emwOSWOrgFreeMemPart(0, app_list);
        JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));
        return 1;
    }
    JBRG_TRACE("[Pass through] Information acquisition completion.");
    // The service never reports more than it was asked for; a larger count is not trusted past the buffer.
    if (out_count > num) out_count = num;
    for (dev_ulong i = 0; i < out_count; ++i) {
        const XAM_ADS_APP_INFO& record = app_list[i];
        // The objects are built through the environment this call already holds.
        jni::local_ref<jobject> appinfo(env, jni::create_object(env, JBRG_TRACE_SITE, mid_app_info_constructor_));
        if (!appinfo) {
            emwOSWOrgFreeMemPart(0, app_list);
            JBRG_TRACE("[Exit] appinfo == NULL.");
            return 1;
        }
        jni::set_field(env, JBRG_TRACE_SITE, fid_app_info_app_id_, appinfo.get(), field_text(record.app_id).c_str());
        jni::set_field(env, JBRG_TRACE_SITE, fid_app_info_app_name_, appinfo.get(),
                       field_text(record.app_name).c_str());
        jni::set_field(env, JBRG_TRACE_SITE, fid_app_info_version_, appinfo.get(), field_text(record.version).c_str());
        jni::set_field(env, JBRG_TRACE_SITE, fid_app_info_execution_status_, appinfo.get(),
                       static_cast<jint>(convert(kListStates, record.execution_state, kListStateOther)));
        env->CallBooleanMethod(list, mid_list_add.get(), appinfo.get());
        if (env->ExceptionCheck()) {
            JBRG_TRACE("Detected exception : CallBooleanMethod");
            env->ExceptionClear();
        }
    }
    emwOSWOrgFreeMemPart(0, app_list);
    JBRG_TRACE("[Exit]");
    return 0;
}

namespace {

void fill_detail(const XAM_ADS_APP_INFO_DETAIL& d, XAMF_AMO_APP_DETAIL_INFO& info) {
    info.app_id = field_text(d.app_id);
    info.app_name = field_text(d.app_name);
    info.button_label = field_text(d.button_label);
    info.vendor_name = field_text(d.vendor_name);
    info.category = d.category;
    info.icon_path = field_text(d.icon_path);
    info.execution_status = convert(kDetailStates, d.execution_state, kDetailStateOther);
    info.installed_app_area = convert(kAreas, d.installed_app_area, kAreaOther);
    info.installed_app_path = field_text(d.installed_app_path);
    info.top_url = field_text(d.top_url);
    info.app_file = field_text(d.app_file);
    info.login_url = field_text(d.login_url);
    info.pc_cfg_url = field_text(d.pc_cfg_url);
    info.menu_url = field_text(d.menu_url);
}

}  // namespace

int xamf_amo_proxy::xamf_amo_get_application_detail_info(const char* app_id, XAMF_AMO_APP_DETAIL_INFO& info,
                                                         ENV_LANG_VAL lang) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    if (app_id == nullptr) {
        JBRG_TRACE("[Exit] app_id == NULL.");
        return 1;
    }
    XAM_ADS_APP_INFO_DETAIL detail{};
    PLAT_RESULT ret = facade().xam_ads_get_app_info_detail(app_id, &detail, lang);
    if (ret != XAM_ADS_RESULT_OK) {
        JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));
        return convert_retcode(ret);
    }
    fill_detail(detail, info);
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_get_library_list(const char* app_id, jobject holder) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return 1;
    // add() is not used here; its lookup failing still ends the operation.
    if (!set_mid_list_add()) {
        JBRG_TRACE("[Exit] set_mid_list_add() failed.");
        return 1;
    }
    // The result goes into element 0 of an object array: anything else is refused before the service.
    jni::local_ref<jclass> object_array(env, env->FindClass("[Ljava/lang/Object;"));
    if (env->ExceptionCheck()) {
        JBRG_TRACE("Detected exception : FindClass");
        env->ExceptionClear();
        return 1;
    }
    if (app_id == nullptr || holder == nullptr || !env->IsInstanceOf(holder, object_array.get()) ||
        env->GetArrayLength(static_cast<jobjectArray>(holder)) < 1) {
        JBRG_TRACE("[Exit] no application id or no holder array.");
        return 1;
    }
    dev_ulong lib_num = 0;
    PLAT_RESULT ret = facade().xam_ads_get_library_num(app_id, &lib_num);
    if (ret != XAM_ADS_RESULT_OK) {
        JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));
        return 1;
    }
    JBRG_TRACE("[get_library_list]get_library_num lib_num = %d", static_cast<int>(lib_num));
    char* lib_list = nullptr;
    if (lib_num > 0) {
        lib_list = static_cast<char*>(emwOSWSubAllocMem(lib_num * XAM_ADS_LIB_NAME_SIZE));
        if (lib_list == nullptr) {
            JBRG_TRACE("[Exit] lib_list == NULL.");
            return 1;
        }
        std::memset(lib_list, 0, lib_num * XAM_ADS_LIB_NAME_SIZE);
        ret = facade().xam_ads_get_library_list(app_id, lib_num, lib_list);
        if (ret != XAM_ADS_RESULT_OK) {
            emwOSWOrgFreeMemPart(0, lib_list);
            JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));
            return 1;
        }
    }
    auto release = [&] {
        if (lib_list != nullptr) emwOSWOrgFreeMemPart(0, lib_list);
    };
    jni::local_ref<jclass> string_class(env, env->FindClass("java/lang/String"));
    jni::local_ref<jobjectArray> names(
        env, string_class ? env->NewObjectArray(static_cast<jsize>(lib_num), string_class.get(), nullptr) : nullptr);
    if (env->ExceptionCheck() || !names) {
        JBRG_TRACE("Detected exception : NewObjectArray");
        env->ExceptionClear();
        release();
        return 1;
    }
    for (dev_ulong i = 0; i < lib_num; ++i) {
        const char* slot = lib_list + i * XAM_ADS_LIB_NAME_SIZE;
        // A slot holds up to 256 characters and its terminator; one filled to the end is read to its end.
        std::string name(slot, strnlen(slot, XAM_ADS_LIB_NAME_SIZE));
        JBRG_TRACE("[get_library_list] get_library_list lib_list[%d] = %s", static_cast<int>(i), name.c_str());
        jni::local_ref<jstring> text(env, jni::new_string(env, name.data(), name.size()));
        if (env->ExceptionCheck()) {
            JBRG_TRACE("Detected exception : NewStringUTF");
            env->ExceptionClear();
            continue;
        }
        env->SetObjectArrayElement(names.get(), static_cast<jsize>(i), text.get());
    }
    env->SetObjectArrayElement(static_cast<jobjectArray>(holder), 0, names.get());
    if (env->ExceptionCheck()) {
        // A holder whose elements cannot take a String[] (an ArrayStoreException).
        JBRG_TRACE("Detected exception : SetObjectArrayElement");
        env->ExceptionClear();
        release();
        return 1;
    }
    release();
    JBRG_TRACE("[End]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_start_app(const char* app_id) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    if (app_id == nullptr) {
        JBRG_TRACE("[Exit] app_id == NULL.");
        return 1;
    }
    // Only the general failure counts: every other code, other failures included, is reported as success.
    if (facade().xam_ads_start_app(app_id) == XAM_ADS_RESULT_ERR) {
        JBRG_TRACE("[Exit] ret=XAM_ADS_RESULT_ERR");
        return 1;
    }
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_stop_app(const char* app_id) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    if (CJvm::GetJNIEnv() == nullptr) return 1;
    if (app_id == nullptr) {
        JBRG_TRACE("[Exit] app_id == NULL.");
        return 1;
    }
    // As start: only the general failure counts.
    if (facade().xam_ads_stop_app(app_id) == XAM_ADS_RESULT_ERR) {
        JBRG_TRACE("[Exit] ret=XAM_ADS_RESULT_ERR");
        return 1;
    }
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_set_config_url(const char* app_id, const char* config_url) {
    JBRG_TRACE("[Enter] app_id=[%s] config_url=[%s]", shown(app_id), shown(config_url));
    if (CJvm::GetJNIEnv() == nullptr) return 1;
    if (app_id == nullptr || config_url == nullptr) {
        JBRG_TRACE("[Exit] app_id or config_url == NULL.");
        return 1;
    }
    // As start: only the general failure counts.
    if (facade().xam_ads_set_config_url(app_id, config_url) == XAM_ADS_RESULT_ERR) {
        JBRG_TRACE("[Exit] ret=XAM_ADS_RESULT_ERR");
        return 1;
    }
    JBRG_TRACE("[Exit]");
    return 0;
}

XAM_ADS_RETCODE xamf_amo_proxy::convert_amo_retcode(XAMF_AMO_RETCODE result) {
    // The Java answer is the row of the table. One outside it has no row: the service is told the general
    // failure rather than a value read from beyond the table.
    auto row = static_cast<uint32_t>(result);
    if (row >= sizeof s_conv_table / sizeof s_conv_table[0]) return XAM_ADS_RESULT_ERR;
    return s_conv_table[row].ads;
}

int xamf_amo_proxy::convert_retcode(dev_long code) {
    for (const retcode_entry& e : kRetcodes) {
        if (e.code == code) return e.result;
    }
    return kUnknownRetcode;
}

int xamf_amo_proxy::notify_result(const char* app_id, XAMF_AMO_RETCODE result,
                                  PLAT_RESULT (xam_ads_facade::*send)(const char*, XAM_ADS_RETCODE)) {
    // A request without an application id cannot be answered; the service's answer is not looked at.
    if (app_id != nullptr) (facade().*send)(app_id, convert_amo_retcode(result));
    return 0;
}

int xamf_amo_proxy::xamf_amo_notify_run_app_result(const char* app_id, XAMF_AMO_RETCODE result) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    notify_result(app_id, result, &xam_ads_facade::xam_ads_notify_run_app_result);
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_notify_terminate_app_result(const char* app_id, XAMF_AMO_RETCODE result) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    notify_result(app_id, result, &xam_ads_facade::xam_ads_notify_terminate_app_result);
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_notify_open_window_result(const char* app_id, XAMF_AMO_RETCODE result) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    notify_result(app_id, result, &xam_ads_facade::xam_ads_notify_open_window_result);
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_notify_close_window_result(const char* app_id, XAMF_AMO_RETCODE result) {
    JBRG_TRACE("[Enter] app_id=[%s]", shown(app_id));
    notify_result(app_id, result, &xam_ads_facade::xam_ads_notify_close_window_result);
    JBRG_TRACE("[Exit]");
    return 0;
}

int xamf_amo_proxy::xamf_amo_notify_ovpl_basis_state(XAMF_AMO_OVPL_BASIS_STATE state) {
    JBRG_TRACE("[Enter]");
    if (CJvm::GetJNIEnv() == nullptr) return 1;
    XAM_ADS_BASIS_STATE platform_state =
        state == XAMF_AMO_OVPL_BASIS_READY ? XAM_ADS_BASIS_STATE_READY : XAM_ADS_BASIS_STATE_NOT_READY;
    facade().xam_ads_notify_ovpl_basis_state(XAM_ADS_BASIS_TYPE_JAVA, platform_state);
    JBRG_TRACE("[Exit]");
    return 0;
}

}  // namespace orvane
