// The application operation observer: the service's requests delivered on its IPC thread reach
// AppOperationProxy in Java, and Java's answers (or the observer's own) reach the service.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/cjvm.h"
#include "event/xamf_amo_app_operation_observer.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xam_ads.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using jbrg_test::traces_containing;
using orvane::xamf_amo_app_operation_observer;

constexpr dev_long kErr = PLAT_CODE(0xC2010001);
constexpr const char kAppOperationProxy[] = "orvane/qsf/controller/event/proxy/AppOperationProxy";

class app_operation_observer : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        orvane::CJvm::CreateJVM();
        jbrg_test::proxy_clear(kAppOperationProxy);
    }
    void TearDown() override {
        for (auto& [id, observer] : registered_) {
            xam_ads_facade::xam_ads_get_instance()->xam_ads_remove_app_operation_observer(id);
            // Deleted off the test thread, as the platform would: its class reference is released there.
            jbrg_sim::deliver_on_new_thread([o = observer] { delete o; return 0; });
        }
        bridge_test::TearDown();
    }

    // A registered observer (or `o`), its init() run on a platform thread when `initialised`.
    xamf_amo_app_operation_observer* observer(bool initialised = true,
                                              xamf_amo_app_operation_observer* o = new xamf_amo_app_operation_observer) {
        if (initialised) {
            EXPECT_EQ(0, jbrg_sim::deliver_on_new_thread([o] { return o->init(); }));
        }
        dev_ulong id = 0;
        EXPECT_EQ(0, xam_ads_facade::xam_ads_get_instance()->xam_ads_add_app_operation_observer(
                         o, XAM_ADS_BASIS_TYPE_JAVA, id));
        registered_.emplace_back(id, o);
        return o;
    }

    // The answer AppOperationProxy gives the requests that ask for one.
    void answer(bool value) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(kAppOperationProxy);
        e->CallStaticVoidMethod(c, e->GetStaticMethodID(c, "setAnswer", "(Z)V"), value ? JNI_TRUE : JNI_FALSE);
        EXPECT_EQ("", take_exception());
        e->DeleteLocalRef(c);
    }
    static std::vector<std::string> received() { return jbrg_test::proxy_received(kAppOperationProxy); }
    std::vector<std::string> results() {
        std::vector<std::string> out;
        for (const auto& r : jbrg_sim::apps::results()) {
            out.push_back(r.request + ":" + r.app_id + ":" + std::to_string(r.code));
        }
        return out;
    }

    std::vector<std::pair<dev_ulong, xamf_amo_app_operation_observer*>> registered_;
};

TEST_F(app_operation_observer, application_requests_reach_java_and_only_open_window_answers_success) {
    observer();
    answer(false);
    EXPECT_EQ(0, jbrg_sim::apps::run_app("com.example.scan"));
    EXPECT_EQ(0, jbrg_sim::apps::terminate_app("com.example.scan"));
    EXPECT_EQ(0, jbrg_sim::apps::open_window("com.example.scan"));
    EXPECT_EQ(0, jbrg_sim::apps::close_window("com.example.scan"));
    EXPECT_THAT(received(), ElementsAre("0:com.example.scan", "1:com.example.scan", "2:com.example.scan",
                                        "3:com.example.scan"));
    // Java said false to terminate and open window; neither is looked at: terminate answers nothing, open
    // window answers success.
    EXPECT_THAT(results(), ElementsAre("open_window:com.example.scan:0"));
    EXPECT_THAT(traces_containing("::notify_run_app,"),
                ElementsAre(HasSubstr("[Start] app_id = com.example.scan"), HasSubstr("[End]")));
}

// Basis controls 0 to 5 reach Java as events 4 to 9; others fail without reaching it.
TEST_F(app_operation_observer, basis_control_and_run_permission_reach_java_and_return_its_answer) {
    observer();
    for (int32_t control = 0; control <= 5; ++control) EXPECT_EQ(0, jbrg_sim::apps::basis_control(control));
    EXPECT_EQ(kErr, jbrg_sim::apps::basis_control(6));
    EXPECT_EQ(kErr, jbrg_sim::apps::basis_control(-1));
    EXPECT_EQ(0, jbrg_sim::apps::is_enable_run_app());
    answer(false);
    EXPECT_EQ(kErr, jbrg_sim::apps::basis_control(XAM_ADS_BASIS_CONTROL_START));
    EXPECT_EQ(kErr, jbrg_sim::apps::is_enable_run_app());
    // The run permission names no application: an empty id, not a null one.
    EXPECT_THAT(received(), ElementsAre("4", "5", "6", "7", "8", "9", "10:", "4", "10:"));
    EXPECT_THAT(traces_containing("is_enable_run_app,"),
                ElementsAre(HasSubstr("[Start] is_enable_run_app"), HasSubstr("[End] is_enable_run_app"),
                            HasSubstr("[Start] is_enable_run_app"), HasSubstr("[End] is_enable_run_app")));
}

TEST_F(app_operation_observer, requests_that_cannot_reach_java_are_answered_as_failed) {
    const std::string err = std::to_string(kErr);
    // init() never ran (no VM to attach to), then init() found the VM but not AppOperationProxy.
    for (bool knows_vm : {false, true}) {
        observer(false, knows_vm ? new jbrg_test::without_identifiers<xamf_amo_app_operation_observer>
                                 : new xamf_amo_app_operation_observer);
        jbrg_sim::clear_traces();
        const std::size_t earlier = results().size();
        EXPECT_EQ(0, jbrg_sim::apps::run_app("a"));
        EXPECT_EQ(0, jbrg_sim::apps::terminate_app("b"));
        EXPECT_EQ(0, jbrg_sim::apps::open_window("c"));
        EXPECT_EQ(0, jbrg_sim::apps::close_window("d"));
        EXPECT_EQ(kErr, jbrg_sim::apps::basis_control(XAM_ADS_BASIS_CONTROL_STOP));
        EXPECT_EQ(kErr, jbrg_sim::apps::is_enable_run_app());
        const std::vector<std::string> all = results();
        EXPECT_THAT(std::vector<std::string>(all.begin() + static_cast<std::ptrdiff_t>(earlier), all.end()),
                    ElementsAre("run_app:a:" + err, "terminate_app:b:" + err, "open_window:c:" + err,
                                "close_window:d:" + err));
        EXPECT_THAT(traces_containing(knows_vm ? "[Error] method is not found" : "[Error] thread_attach false"),
                    ::testing::SizeIs(6));
        xam_ads_facade::xam_ads_get_instance()->xam_ads_remove_app_operation_observer(registered_.back().first);
    }
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(app_operation_observer, requests_keep_arriving_while_java_answers_on_platform_threads) {
    observer();
    // Several requests in a row, each on the service's thread, attached and detached per request.
    for (int i = 0; i < 20; ++i) EXPECT_EQ(0, jbrg_sim::apps::is_enable_run_app());
    EXPECT_EQ(20U, received().size());
    EXPECT_EQ(1U, jbrg_sim::apps::observers());
}

}  // namespace
