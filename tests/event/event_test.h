// What the tests of the job observers share: observers initialised on the device's own threads, their
// registration, and what reached the Java proxies.
#ifndef JBRG_TESTS_EVENT_EVENT_TEST_H
#define JBRG_TESTS_EVENT_EVENT_TEST_H

#include <jni.h>

#include "jbrg_sim/control.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"

namespace jbrg_test {

inline constexpr const char kJobProxy[] = "orvane/qsf/controller/event/proxy/JobProxy";
inline constexpr const char kJobInfoProxy[] = "orvane/qsf/controller/event/proxy/JobInfoProxy";
inline constexpr const char kEventLog[] = "orvane/qsf/controller/event/proxy/EventLog";

// A global reference to a class (slash form), made on the test thread; kept for the program.
inline jclass global_class(const char* cls) {
    JNIEnv* e = env();
    jclass local = e->FindClass(cls);
    if (local == nullptr) return nullptr;
    auto global = static_cast<jclass>(e->NewGlobalRef(local));
    e->DeleteLocalRef(local);
    return global;
}

// An observer that knows the VM but none of its Java identifiers: what init() leaves when the proxy class
// or a method is missing.
template <class Observer>
class without_identifiers : public Observer {
public:
    without_identifiers() { this->jvm_ = vm(); }
};

// The job observers are made once for the program, their init() run on the service's own thread.
template <class Observer>
Observer* initialised_on(const char* service) {
    auto* o = new Observer;
    int32_t result = jbrg_sim::deliver(service, [o] { return static_cast<int32_t>(o->init()); });
    EXPECT_EQ(JNI_OK, result) << "init answers the detach's result";
    return o;
}

class event_test : public bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        java_call(kJobProxy, "clear");
        java_call(kJobInfoProxy, "clear");
        java_call(kEventLog, "clear");
    }
};

}  // namespace jbrg_test

#endif  // JBRG_TESTS_EVENT_EVENT_TEST_H
