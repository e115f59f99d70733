// The Java benchmark's own natives (class jbrg.bench.Baseline): the hand-written paths each bridge path is
// measured against, and the simulated device's event sources driven from native threads.
//
// Accessors: the same record as the generated exports (XSI_AIS_USERINFO_RECORD), the same handle convention
// (the pointer in the low bits of a jlong), written the way one would by hand: no null check beyond the
// handle's, no exception guard, NewStringUTF and GetStringUTFRegion for the text.
//
// Events: fire(kind, count, threads) sends `count` platform events of one observer kind from `threads`
// native threads through the simulated device, so that they reach Java through the bridge's observer;
// bare(kind, count, threads) does what that delivery cannot avoid and nothing more: the same hop to the
// service's IPC thread (jbrg_sim::deliver), then attach, the same static call of the same Java proxy with the
// same arguments, detach. Both answer the elapsed nanoseconds.
#include <jni.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "jbrg_bench_Baseline.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/smart_card.h"
#include "xsi_ais_auth.h"

namespace {

JavaVM* g_vm = nullptr;

template <class T>
T* from_handle(jlong handle) {
    return reinterpret_cast<T*>(static_cast<uintptr_t>(handle));
}

// The observer kinds, as jbrg.bench.Events numbers them.
enum kind : jint { kEsm = 0, kPanel = 1, kCard = 2, kJob = 3, kJobInfo = 4, kApp = 5, kKinds = 6 };

// The Java side of one kind: its service thread, proxy class and method, and for job information the page
// record the proxy receives (built as the observer builds it).
struct target {
    const char* service;
    const char* proxy;
    const char* method;
    const char* signature;
    jclass proxy_class = nullptr;
    jmethodID fire = nullptr;
};
target g_targets[kKinds] = {
    {"esm", "orvane/qsf/controller/event/proxy/CommonProxy", "fireSleepEvent", "(I)V"},
    {"panel", "orvane/qsf/controller/event/proxy/PanelProxy", "fireAutoResetEvent", "()V"},
    {"smart_card", "orvane/qsf/controller/event/proxy/AccProxy", "fireICCardErrorEvent", "(I)V"},
    {"job", "orvane/qsf/controller/event/proxy/JobProxy", "fireScanCountEvent", "(JJ)V"},
    {"jobinfo", "orvane/qsf/controller/event/proxy/JobInfoProxy", "firePageEvent", "(Ljava/lang/Object;)V"},
    {"xam_ads", "orvane/qsf/controller/event/proxy/AppOperationProxy", "fireSyncAppOperationPlatformEvent",
     "(I)Z"},
};
jclass g_page_class = nullptr;
jmethodID g_page_new = nullptr;
jmethodID g_page_job = nullptr;
jmethodID g_page_number = nullptr;

// The values each event carries, the same for both paths.
constexpr int32_t kSleepState = 1;
constexpr int32_t kCardError = 3;
constexpr uint32_t kScanCount = 7;
constexpr uint32_t kUserJobId = 41;
constexpr uint32_t kPageNumber = 2;
constexpr int32_t kBasisControl = 0;

// One event through the bridge's observer of `k`.
int32_t fire_one(jint k) {
    switch (k) {
        case kEsm:
            return jbrg_sim::esm::notify_sleep(kSleepState);
        case kPanel:
            return jbrg_sim::panel::notify_auto_reset();
        case kCard:
            return jbrg_sim::smart_card::card_error(kCardError);
        case kJob:
            return jbrg_sim::job::notify_scan_count(kScanCount, kScanCount);
        case kJobInfo: {
            XSI_AIS_EVENT_SEND_PAGE page{};
            page.user_job_id = kUserJobId;
            page.page_number = kPageNumber;
            return jbrg_sim::jobinfo::notify_fax_send_page_info(page);
        }
        case kApp:
            return jbrg_sim::apps::basis_control(kBasisControl);
        default:
            return -1;
    }
}

// The same Java call, by hand, on the thread the service delivers on.
int32_t bare_one(jint k) {
    const target& t = g_targets[k];
    JNIEnv* env = nullptr;
    if (g_vm->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr) != JNI_OK) return -1;
    switch (k) {
        case kEsm:
        case kCard:
            env->CallStaticVoidMethod(t.proxy_class, t.fire, static_cast<jint>(k == kEsm ? kSleepState : kCardError));
            break;
        case kPanel:
            env->CallStaticVoidMethod(t.proxy_class, t.fire);
            break;
        case kJob:
            env->CallStaticVoidMethod(t.proxy_class, t.fire, static_cast<jlong>(kScanCount),
                                      static_cast<jlong>(kScanCount));
            break;
        case kJobInfo: {
            jobject page = env->NewObject(g_page_class, g_page_new);
            env->CallVoidMethod(page, g_page_job, static_cast<jlong>(kUserJobId));
            env->CallVoidMethod(page, g_page_number, static_cast<jlong>(kPageNumber));
            env->CallStaticVoidMethod(t.proxy_class, t.fire, page);
            env->DeleteLocalRef(page);
            break;
        }
        case kApp:
            env->CallStaticBooleanMethod(t.proxy_class, t.fire, static_cast<jint>(kBasisControl));
            break;
        default:
            break;
    }
    const bool threw = env->ExceptionCheck() == JNI_TRUE;
    if (threw) env->ExceptionClear();
    g_vm->DetachCurrentThread();
    return threw ? -1 : 0;
}

// `count` calls of `one` spread over `threads` native threads (the first ones take the remainder); the
// elapsed nanoseconds from before the first thread starts to after the last ends, or -1 when an event
// failed.
jlong spread(jint count, jint threads, const std::function<int32_t()>& one) {
    if (count < 0 || threads < 1) return -1;
    std::vector<std::thread> workers;
    std::vector<int> failed(static_cast<std::size_t>(threads), 0);
    const auto start = std::chrono::steady_clock::now();
    for (jint i = 0; i < threads; ++i) {
        const jint n = count / threads + (i < count % threads ? 1 : 0);
        workers.emplace_back([n, &one, &failed, i] {
            for (jint e = 0; e < n; ++e) {
                if (one() != 0) failed[static_cast<std::size_t>(i)] = 1;
            }
        });
    }
    for (auto& w : workers) w.join();
    const auto elapsed = std::chrono::steady_clock::now() - start;
    if (std::any_of(failed.begin(), failed.end(), [](int f) { return f != 0; })) return -1;
    return static_cast<jlong>(std::chrono::duration_cast<std::chrono::nanoseconds>(elapsed).count());
}

jclass global_class(JNIEnv* env, const char* name) {
    jclass local = env->FindClass(name);
    if (local == nullptr) return nullptr;
    auto global = static_cast<jclass>(env->NewGlobalRef(local));
    env->DeleteLocalRef(local);
    return global;
}

}  // namespace

extern "C" {

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*) {
    g_vm = vm;
    return JNI_VERSION_1_8;
}

// ---- Accessors ---------------------------------------------------------------------------------------------

JNIEXPORT jint JNICALL Java_jbrg_bench_Baseline_empty(JNIEnv*, jclass, jint value) { return value; }

JNIEXPORT jlong JNICALL Java_jbrg_bench_Baseline_newRecord(JNIEnv*, jclass) {
    return static_cast<jlong>(reinterpret_cast<uintptr_t>(new XSI_AIS_USERINFO_RECORD()));
}

JNIEXPORT void JNICALL Java_jbrg_bench_Baseline_deleteRecord(JNIEnv*, jclass, jlong handle) {
    delete from_handle<XSI_AIS_USERINFO_RECORD>(handle);
}

JNIEXPORT jint JNICALL Java_jbrg_bench_Baseline_getRights(JNIEnv*, jclass, jlong handle, jobject) {
    auto* self = from_handle<XSI_AIS_USERINFO_RECORD>(handle);
    return self == nullptr ? 0 : static_cast<jint>(self->rights);
}

JNIEXPORT void JNICALL Java_jbrg_bench_Baseline_setRights(JNIEnv*, jclass, jlong handle, jobject, jint value) {
    auto* self = from_handle<XSI_AIS_USERINFO_RECORD>(handle);
    if (self != nullptr) self->rights = static_cast<XSI_AIS_AUTH_RIGHTS>(value);
}

JNIEXPORT jstring JNICALL Java_jbrg_bench_Baseline_getUserName(JNIEnv* env, jclass, jlong handle, jobject) {
    auto* self = from_handle<XSI_AIS_USERINFO_RECORD>(handle);
    if (self == nullptr) return nullptr;
    // The field ends at its zero or at its capacity.
    char text[sizeof self->user_name + 1];
    const std::size_t length = strnlen(self->user_name, sizeof self->user_name);
    std::memcpy(text, self->user_name, length);
    text[length] = '\0';
    return env->NewStringUTF(text);
}

JNIEXPORT void JNICALL Java_jbrg_bench_Baseline_setUserName(JNIEnv* env, jclass, jlong handle, jobject,
                                                             jstring value) {
    auto* self = from_handle<XSI_AIS_USERINFO_RECORD>(handle);
    if (self == nullptr || value == nullptr) return;
    const jsize bytes = env->GetStringUTFLength(value);
    if (static_cast<std::size_t>(bytes) >= sizeof self->user_name) return;  // does not fit: unchanged
    env->GetStringUTFRegion(value, 0, env->GetStringLength(value), self->user_name);
    self->user_name[bytes] = '\0';
}

// ---- Events ------------------------------------------------------------------------------------------------

// Looks up the proxies from the calling Java thread (its class loader sees the proxies); false when one is
// missing.
JNIEXPORT jboolean JNICALL Java_jbrg_bench_Baseline_initEvents(JNIEnv* env, jclass) {
    for (target& t : g_targets) {
        if (t.proxy_class == nullptr) t.proxy_class = global_class(env, t.proxy);
        if (t.proxy_class == nullptr) return JNI_FALSE;
        t.fire = env->GetStaticMethodID(t.proxy_class, t.method, t.signature);
        if (t.fire == nullptr) return JNI_FALSE;
    }
    if (g_page_class == nullptr) g_page_class = global_class(env, "orvane/qsf/controller/event/job/FaxSendPageInfo");
    if (g_page_class == nullptr) return JNI_FALSE;
    g_page_new = env->GetMethodID(g_page_class, "<init>", "()V");
    g_page_job = g_page_new == nullptr ? nullptr : env->GetMethodID(g_page_class, "setUserJobId", "(J)V");
    g_page_number = g_page_job == nullptr ? nullptr : env->GetMethodID(g_page_class, "setPageNum", "(J)V");
    return g_page_number != nullptr ? JNI_TRUE : JNI_FALSE;
}

JNIEXPORT jlong JNICALL Java_jbrg_bench_Baseline_fire(JNIEnv*, jclass, jint k, jint count, jint threads) {
    if (k < 0 || k >= kKinds) return -1;
    return spread(count, threads, [k] { return fire_one(k); });
}

JNIEXPORT jlong JNICALL Java_jbrg_bench_Baseline_bare(JNIEnv*, jclass, jint k, jint count, jint threads) {
    if (k < 0 || k >= kKinds || g_targets[k].fire == nullptr) return -1;
    const std::string service = g_targets[k].service;
    return spread(count, threads, [k, &service] { return jbrg_sim::deliver(service, [k] { return bare_one(k); }); });
}

}  // extern "C"
