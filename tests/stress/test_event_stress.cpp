// Events from several platform threads at once while Java threads call natives (some of which build Java
// objects through CJvm's environment): nothing is lost, every answer is right, nothing crashes. The ThreadSanitizer
// run builds and runs this program alone.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "core/cjvm.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/panel.h"
#include "tests/harness/bridge_test.h"

namespace {

class event_stress : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"apps": {"installed": [{"id": "stress.one", "name": "One", "version": "1", "state": 0},
                                          {"id": "stress.two", "name": "Two", "version": "2", "state": 1}]}})";
    }
    jlong call_static_long(const char* cls, const char* name, const char* sig) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(cls);
        jlong r = e->CallStaticLongMethod(c, e->GetStaticMethodID(c, name, sig));
        EXPECT_EQ("", take_exception());
        return r;
    }
    jint call_static_int(const char* cls, const char* name, const char* sig) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(cls);
        jint r = e->CallStaticIntMethod(c, e->GetStaticMethodID(c, name, sig));
        EXPECT_EQ("", take_exception());
        return r;
    }
    template <typename... Args>
    void call_static_void(const char* cls, const char* name, const char* sig, Args... args) {
        JNIEnv* e = jbrg_test::env();
        jclass k = e->FindClass(cls);
        e->CallStaticVoidMethod(k, e->GetStaticMethodID(k, name, sig), args...);
        EXPECT_EQ("", take_exception());
    }
    jsize received(const char* proxy) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(proxy);
        auto array = static_cast<jobjectArray>(
            e->CallStaticObjectMethod(c, e->GetStaticMethodID(c, "received", "()[Ljava/lang/String;")));
        EXPECT_EQ("", take_exception());
        return array == nullptr ? -1 : e->GetArrayLength(array);
    }
    void clear(const char* proxy) { call_static_void(proxy, "clear", "()V"); }
};

constexpr const char* kFlow = "jbrg/test/event/EventManagerFlow";
constexpr const char* kJobProxy = "orvane/qsf/controller/event/proxy/JobProxy";
constexpr const char* kCommonProxy = "orvane/qsf/controller/event/proxy/CommonProxy";
constexpr const char* kPanelProxy = "orvane/qsf/controller/event/proxy/PanelProxy";
constexpr const char* kAppProxy = "orvane/qsf/controller/event/proxy/AppOperationProxy";

TEST_F(event_stress, events_from_many_threads_while_java_calls_natives) {
    orvane::CJvm::CreateJVM();
    for (const char* proxy : {kJobProxy, kCommonProxy, kPanelProxy, kAppProxy}) clear(proxy);
    jlong manager = call_static_long(kFlow, "create", "()J");
    {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(kFlow);
        jboolean initialised = e->CallStaticBooleanMethod(c, e->GetStaticMethodID(c, "init", "(J)Z"), manager);
        ASSERT_EQ("", take_exception());
        ASSERT_TRUE(initialised);
    }

    constexpr int kJavaThreads = 4, kJavaLoops = 500, kPerSource = 100;
    call_static_void("jbrg/test/event/Stress", "start", "(III)V", jint{kJavaThreads}, jint{kJavaLoops}, jint{2});

    // Four sources of the device, each from two threads of its own at once.
    std::vector<std::thread> sources;
    std::atomic<int> failed{0};
    for (int copy = 0; copy < 2; ++copy) {
        sources.emplace_back([&] {
            for (int i = 0; i < kPerSource; ++i) failed += jbrg_sim::job::notify_scan_count(i, 2) != 0;
        });
        sources.emplace_back([&] {
            for (int i = 0; i < kPerSource; ++i) failed += jbrg_sim::esm::notify_sleep(1) != 0;
        });
        sources.emplace_back([&] {
            for (int i = 0; i < kPerSource; ++i) failed += jbrg_sim::panel::notify_auto_reset() != 0;
        });
        sources.emplace_back([&] {
            for (int i = 0; i < kPerSource; ++i) failed += jbrg_sim::apps::run_app("stress") != 0;
        });
    }
    for (std::thread& t : sources) t.join();

    EXPECT_EQ(0, call_static_int("jbrg/test/event/Stress", "join", "()I")) << "wrong answers to Java's calls";
    EXPECT_EQ(kJavaThreads * kJavaLoops * 3, call_static_int("jbrg/test/event/Stress", "calls", "()I"));
    EXPECT_EQ(0, failed.load()) << "a delivery was answered with a failure";
    EXPECT_EQ(2 * kPerSource, received(kJobProxy));
    EXPECT_EQ(2 * kPerSource, received(kCommonProxy));
    EXPECT_EQ(2 * kPerSource, received(kPanelProxy));
    // Every application operation observer registered (the device forgot earlier tests' at its reset) hands
    // every request to Java.
    EXPECT_EQ(2 * kPerSource * static_cast<jsize>(jbrg_sim::apps::observers()), received(kAppProxy));

    JNIEnv* e = jbrg_test::env();
    jclass c = e->FindClass(kFlow);
    e->CallStaticBooleanMethod(c, e->GetStaticMethodID(c, "terminate", "(J)Z"), manager);
    EXPECT_EQ("", take_exception());
    e->CallStaticVoidMethod(c, e->GetStaticMethodID(c, "delete", "(J)V"), manager);
    EXPECT_EQ("", take_exception());
}

}  // namespace
