// What the tests of the job observers share: observers initialised on the device's own threads, their
// registration, and what reached the Java proxies.
#ifndef JBRG_TESTS_EVENT_EVENT_TEST_H
#define JBRG_TESTS_EVENT_EVENT_TEST_H

#include <jni.h>

#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"

namespace jbrg_test {

// The texts of a static String[] method() of a Java class (slash form).
inline std::vector<std::string> java_texts(const char* cls, const char* method) {
    JNIEnv* e = env();
    std::vector<std::string> texts;
    jclass c = e->FindClass(cls);
    if (c == nullptr) return texts;
    jmethodID m = e->GetStaticMethodID(c, method, "()[Ljava/lang/String;");
    auto array = static_cast<jobjectArray>(e->CallStaticObjectMethod(c, m));
    if (e->ExceptionCheck() || array == nullptr) return texts;
    for (jsize i = 0; i < e->GetArrayLength(array); ++i) {
        auto s = static_cast<jstring>(e->GetObjectArrayElement(array, i));
        const char* chars = e->GetStringUTFChars(s, nullptr);
        texts.emplace_back(chars);
        e->ReleaseStringUTFChars(s, chars);
        e->DeleteLocalRef(s);
    }
    e->DeleteLocalRef(array);
    e->DeleteLocalRef(c);
    return texts;
}

// Calls a static void method() of a Java class.
inline void java_call(const char* cls, const char* method) {
    JNIEnv* e = env();
    jclass c = e->FindClass(cls);
    if (c == nullptr) return;
    e->CallStaticVoidMethod(c, e->GetStaticMethodID(c, method, "()V"));
    e->ExceptionCheck();
    e->DeleteLocalRef(c);
}

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
