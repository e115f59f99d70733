// The event manager driven from Java: the six observers registered in their order, events reaching the Java
// proxies on platform threads, and terminate leaving the application operation observer in place.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/cjvm.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class event_manager : public jbrg_test::bridge_test {
protected:
    // Calls a static method of EventManagerFlow: the exports then run under a Java frame, as in an
    // application; the observers' init() runs on that Java thread and leaves it attached.
    jlong create() { return call_long("create", "()J"); }
    bool init(jlong m) { return call_bool("init", m); }
    bool terminate(jlong m) { return call_bool("terminate", m); }
    void destroy(jlong m) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass("jbrg/test/event/EventManagerFlow");
        e->CallStaticVoidMethod(c, e->GetStaticMethodID(c, "delete", "(J)V"), m);
        ASSERT_EQ("", take_exception());
    }

    // The registrations and removals of observers, in order, by operation name.
    static std::vector<std::string> observer_calls() {
        std::vector<std::string> ops;
        for (const jbrg_sim::call& c : jbrg_sim::calls()) {
            if (c.op.find("observer") != std::string::npos) ops.push_back(c.op);
        }
        return ops;
    }

private:
    jlong call_long(const char* name, const char* signature) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass("jbrg/test/event/EventManagerFlow");
        jlong r = e->CallStaticLongMethod(c, e->GetStaticMethodID(c, name, signature));
        EXPECT_EQ("", take_exception());
        return r;
    }
    bool call_bool(const char* name, jlong m) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass("jbrg/test/event/EventManagerFlow");
        jboolean r = e->CallStaticBooleanMethod(c, e->GetStaticMethodID(c, name, "(J)Z"), m);
        EXPECT_EQ("", take_exception());
        return r == JNI_TRUE;
    }
};

constexpr const char* kJobProxy = "orvane/qsf/controller/event/proxy/JobProxy";
constexpr const char* kAppProxy = "orvane/qsf/controller/event/proxy/AppOperationProxy";

TEST_F(event_manager, registers_six_observers_and_terminate_removes_five) {
    orvane::CJvm::CreateJVM();
    jbrg_test::proxy_clear(kJobProxy);
    jbrg_test::proxy_clear(kAppProxy);
    jlong manager = create();
    ASSERT_NE(0, manager);

    EXPECT_TRUE(init(manager));
    EXPECT_THAT(observer_calls(),
                ElementsAre("xsi_ais_job_add_observer", "xsi_pbfs_panel_add_observer", "add_smart_card_observer",
                            "xsi_ais_jobinfo_add_observer", "xsi_pbfs_esm_add_observer",
                            "xam_ads_add_app_operation_observer"));
    EXPECT_EQ("1", jbrg_sim::calls_of("xam_ads_add_app_operation_observer").at(0).args.at(1))
        << "registered for basis type 1";

    // Events now reach Java on the platform's threads.
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(1, 0xFFFFFFFFu));
    EXPECT_THAT(jbrg_test::proxy_received(kJobProxy), ElementsAre("scanCount 1 4294967295"));

    jbrg_sim::clear_calls();
    EXPECT_TRUE(terminate(manager));
    EXPECT_THAT(observer_calls(),
                ElementsAre("xsi_ais_job_remove_observer", "xsi_pbfs_panel_remove_observer",
                            "remove_smart_card_observer", "xsi_ais_jobinfo_remove_observer",
                            "xsi_pbfs_esm_remove_observer"));
    EXPECT_EQ(0U, jbrg_sim::job::observer_count());

    // The application operation observer stays registered and keeps answering.
    EXPECT_EQ(0, jbrg_sim::apps::run_app("app.after.terminate"));
    EXPECT_THAT(jbrg_test::proxy_received(kAppProxy), ElementsAre("0:app.after.terminate"));

    // A second terminate, and the destructor's, do nothing.
    jbrg_sim::clear_calls();
    EXPECT_TRUE(terminate(manager));
    destroy(manager);
    EXPECT_THAT(observer_calls(), IsEmpty());
}

}  // namespace
