// What every observer of platform events shares: a platform thread is attached for one event only, a thread
// already attached to the VM (a Java thread) keeps its attachment through init() and events, and a lookup
// that finds nothing leaves no Java error behind.
#include <gmock/gmock.h>

#include "event/observer_support.h"
#include "event/qsf_fnd_acc_observer.h"
#include "event/qsf_fnd_job_observer.h"
#include "event/qsf_fnd_jobinfo_observer.h"
#include "event/qsf_fnd_panel_observer.h"
#include "event/xamf_amo_app_operation_observer.h"
#include "event/xiof_slo_esm_observer.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/smart_card.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using jbrg_test::proxy_received;

constexpr const char kCommonProxy[] = "orvane/qsf/controller/event/proxy/CommonProxy";
constexpr const char kPanelProxy[] = "orvane/qsf/controller/event/proxy/PanelProxy";
constexpr const char kAccProxy[] = "orvane/qsf/controller/event/proxy/AccProxy";
constexpr const char kAppProxy[] = "orvane/qsf/controller/event/proxy/AppOperationProxy";
constexpr const char kSynchronousProxy[] = "orvane/qsf/controller/event/proxy/SynchronousEventProxy";

// One observer of each kind.
struct all_observers {
    orvane::qsf_fnd_job_observer job;
    orvane::qsf_fnd_jobinfo_observer jobinfo;
    orvane::qsf_fnd_panel_observer panel;
    orvane::xiof_slo_esm_observer esm;
    orvane::qsf_fnd_acc_observer acc;
    orvane::xamf_amo_app_operation_observer apps;
};

class observer_attach : public jbrg_test::event_test {
protected:
    void SetUp() override {
        event_test::SetUp();
        for (const char* proxy : {kCommonProxy, kSynchronousProxy, kPanelProxy, kAccProxy, kAppProxy}) {
            jbrg_test::proxy_clear(proxy);
        }
    }

    // What the one event of each observer that the tests send left with the Java proxies.
    static void expect_each_event_received() {
        EXPECT_THAT(proxy_received(jbrg_test::kJobProxy), ElementsAre("startProhibition 5"));
        EXPECT_THAT(proxy_received(jbrg_test::kJobInfoProxy),
                    ElementsAre("jobLog JobLogInfo{userJobId=1, receiptId=2}"));
        EXPECT_THAT(proxy_received(kPanelProxy), ElementsAre("autoReset"));
        EXPECT_THAT(proxy_received(kCommonProxy), ElementsAre("fireSleepEvent(2)"));
        EXPECT_THAT(proxy_received(kAccProxy), ElementsAre("fireICCardErrorEvent(1)"));
        EXPECT_THAT(proxy_received(kAppProxy), ElementsAre("10:"));
    }
};

// Whether the IPC thread of `service` is attached to the VM now: GetEnv's answer there.
jint service_thread(const char* service) {
    return jbrg_sim::deliver(service, [] {
        JNIEnv* e = nullptr;
        return jbrg_test::vm()->GetEnv(reinterpret_cast<void**>(&e), JNI_VERSION_1_2);
    });
}

TEST_F(observer_attach, a_platform_thread_is_attached_for_init_and_each_event_only) {
    all_observers o;
    EXPECT_EQ(JNI_OK, jbrg_sim::deliver("job", [&] { return o.job.init(); }));
    EXPECT_EQ(JNI_OK, jbrg_sim::deliver("jobinfo", [&] { return o.jobinfo.init(); }));
    EXPECT_EQ(JNI_OK, jbrg_sim::deliver("panel", [&] { return o.panel.init(); }));
    EXPECT_EQ(JNI_OK, jbrg_sim::deliver("esm", [&] { return o.esm.init(); }));
    EXPECT_EQ(1, jbrg_sim::deliver("smart_card", [&] { return o.acc.init() ? 1 : 0; }));
    EXPECT_EQ(JNI_OK, jbrg_sim::deliver("xam_ads", [&] { return o.apps.init(); }));
    dev_ulong apps_id = 0;
    ASSERT_EQ(0, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_add_observer(&o.job));
    ASSERT_EQ(0, xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_add_observer(&o.jobinfo));
    ASSERT_EQ(0, xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_add_observer(&o.panel));
    ASSERT_EQ(0, xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_add_observer(&o.esm));
    ASSERT_EQ(0, xdc_com_std_facade::get_instance()->add_smart_card_observer(&o.acc));
    ASSERT_EQ(0, xam_ads_facade::xam_ads_get_instance()->xam_ads_add_app_operation_observer(
                     &o.apps, XAM_ADS_BASIS_TYPE_JAVA, apps_id));

    const struct {
        const char* service;
        int32_t (*event)();
    } events[] = {
        {"job", [] { return jbrg_sim::job::notify_start_phb(5); }},
        {"jobinfo", [] { return jbrg_sim::jobinfo::notify_job_update_log(XSI_AIS_EVENT_JOB_UPDATE_LOG{1, 2}); }},
        {"panel", [] { return jbrg_sim::panel::notify_auto_reset(); }},
        {"esm", [] { return jbrg_sim::esm::notify_sleep(XSI_PBFS_SLEEP_STATE_SLEEP); }},
        {"smart_card", [] { return jbrg_sim::smart_card::card_error(XDC_COM_STD_CARD_ERROR_READ); }},
        {"xam_ads", [] { return jbrg_sim::apps::is_enable_run_app(); }},
    };
    for (const auto& e : events) {
        EXPECT_EQ(JNI_EDETACHED, service_thread(e.service)) << e.service << " after init()";
        EXPECT_EQ(0, e.event()) << e.service;
        EXPECT_EQ(JNI_EDETACHED, service_thread(e.service)) << e.service << " after its event";
    }

    EXPECT_EQ(0, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(&o.job));
    EXPECT_EQ(0, xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_remove_observer(&o.jobinfo));
    EXPECT_EQ(0, xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_remove_observer(&o.panel));
    EXPECT_EQ(0, xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_remove_observer(&o.esm));
    EXPECT_EQ(0, xdc_com_std_facade::get_instance()->remove_smart_card_observer(&o.acc));
    EXPECT_EQ(0, xam_ads_facade::xam_ads_get_instance()->xam_ads_remove_app_operation_observer(apps_id));
    expect_each_event_received();
}

TEST_F(observer_attach, a_java_thread_that_initialises_and_delivers_stays_attached) {
    // The test thread is a Java thread: the VM was created on it.
    JNIEnv* const own = jbrg_test::env();
    {
        all_observers o;
        EXPECT_EQ(JNI_OK, o.job.init());
        EXPECT_EQ(JNI_OK, o.jobinfo.init());
        EXPECT_EQ(JNI_OK, o.panel.init());
        EXPECT_EQ(JNI_OK, o.esm.init());
        EXPECT_TRUE(o.acc.init());
        EXPECT_EQ(JNI_OK, o.apps.init());

        // Each event returns to its Java caller, which looks for an exception before it goes on; the
        // simple notifications check nothing after their call.
        JNIEnv* e = jbrg_test::env();
        EXPECT_EQ(0, o.job.notify_start_phb(5));
        EXPECT_FALSE(e->ExceptionCheck());
        EXPECT_EQ(0, o.jobinfo.notify_job_update_log(XSI_AIS_EVENT_JOB_UPDATE_LOG{1, 2}));
        EXPECT_FALSE(e->ExceptionCheck());
        EXPECT_EQ(0, o.panel.notify_auto_panel_reset());
        EXPECT_FALSE(e->ExceptionCheck());
        EXPECT_EQ(0, o.esm.notify_sleep(XSI_PBFS_SLEEP_STATE_SLEEP));
        EXPECT_FALSE(e->ExceptionCheck());
        o.acc.smart_card_error_detected(XDC_COM_STD_SMART_CARD_ERROR_INFO{XDC_COM_STD_CARD_ERROR_READ, 0, {}});
        EXPECT_FALSE(e->ExceptionCheck());
        EXPECT_EQ(0, o.apps.is_enable_run_app());

        JNIEnv* now = nullptr;
        ASSERT_EQ(JNI_OK, jbrg_test::vm()->GetEnv(reinterpret_cast<void**>(&now), JNI_VERSION_1_2));
        EXPECT_EQ(own, now);
        // The observers are deleted on this thread too, through its own environment.
    }
    JNIEnv* now = nullptr;
    ASSERT_EQ(JNI_OK, jbrg_test::vm()->GetEnv(reinterpret_cast<void**>(&now), JNI_VERSION_1_2));
    expect_each_event_received();
}

TEST_F(observer_attach, a_missing_class_ends_the_lookups_and_leaves_no_error_pending) {
    JNIEnv* e = jbrg_test::env();
    jclass first = nullptr;
    jclass second = nullptr;
    jmethodID method = nullptr;
    const orvane::trace_site site{"observer.cpp", 7, "init"};
    EXPECT_FALSE(orvane::look_up_chain(
        e, &site,
        {{&first, "orvane/qsf/controller/event/proxy/JobProxyGone", "ERROR : no proxy"},
         {&second, "orvane/qsf/controller/event/job/Job"}},
        {{&method, "fireJobStateChangedEvent", "(Lorvane/qsf/controller/event/job/Job;)V"}}));
    EXPECT_FALSE(e->ExceptionCheck());
    EXPECT_EQ(nullptr, first);
    EXPECT_EQ(nullptr, second) << "the chain ends at the first class missing";
    EXPECT_EQ(nullptr, method);
    EXPECT_THAT(jbrg_test::traces_containing("ERROR : no proxy"), SizeIs(1));
    // The next JNI call works.
    jclass string_class = e->FindClass("java/lang/String");
    EXPECT_NE(nullptr, string_class);
    e->DeleteLocalRef(string_class);
}

TEST_F(observer_attach, a_missing_static_method_ends_the_lookups_and_leaves_no_error_pending) {
    JNIEnv* e = jbrg_test::env();
    jclass common = nullptr;
    jclass synchronous = nullptr;
    jmethodID found = nullptr;
    jmethodID missing = nullptr;
    jmethodID after = nullptr;
    EXPECT_FALSE(orvane::look_up_chain(
        e, nullptr,
        {{&common, kCommonProxy}, {&synchronous, kSynchronousProxy}},
        {{&found, "fireResidentAppsStateChanged", "(I)V", nullptr, &synchronous},
         {&missing, "fireSleepEvent", "(J)V"},
         {&after, "fireLogoutEvent", "()V"}}));
    EXPECT_FALSE(e->ExceptionCheck());
    EXPECT_NE(nullptr, common);
    EXPECT_NE(nullptr, synchronous);
    EXPECT_NE(nullptr, found) << "a method is looked up on the class it names";
    EXPECT_EQ(nullptr, missing) << "a signature that does not match is a missing method";
    EXPECT_EQ(nullptr, after);
    e->CallStaticVoidMethod(synchronous, found, 4);
    EXPECT_FALSE(e->ExceptionCheck());
    EXPECT_THAT(proxy_received(kSynchronousProxy), ElementsAre("fireResidentAppsStateChanged(4)"));
    e->DeleteGlobalRef(common);
    e->DeleteGlobalRef(synchronous);
}

}  // namespace
