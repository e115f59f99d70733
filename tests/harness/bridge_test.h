// What every test of the bridge shares: the embedded Java VM, a fresh simulated device, and checks that
// run after each test.
//
// Tests derive from bridge_test. Before each test the simulated device is loaded with the suite's scenario (forcing,
// call log and traces cleared) and a local reference frame is opened on the test thread; after it, the test
// fails if a Java exception is still pending or if the VM printed a JNI warning the test did not declare
// with expect_jni_warnings().
#ifndef JBRG_TESTS_HARNESS_BRIDGE_TEST_H
#define JBRG_TESTS_HARNESS_BRIDGE_TEST_H

#include <gtest/gtest.h>
#include <jni.h>

#include <string>
#include <vector>

namespace jbrg_test {

// The VM and the environment of the test thread.
JavaVM* vm();
JNIEnv* env();

// The path of libjbrgCMT.so, as loaded into the VM by System.load.
const char* bridge_library();

class bridge_test : public ::testing::Test {
protected:
    // The scenario the device starts each test with (JSON); the empty device unless a suite says otherwise.
    virtual std::string scenario() const { return "{}"; }

    void SetUp() override;
    void TearDown() override;

    // This test provokes `count` JNI warnings on purpose.
    void expect_jni_warnings(int count) { expected_warnings_ = count; }

    // The pending Java exception's class name and message ("" when none is pending); clears it.
    std::string take_exception();

    // Java's System.err is captured between these two calls (for the stack traces of ExceptionDescribe).
    void begin_java_stderr();
    std::string end_java_stderr();

    // A Java string's characters.
    std::string text(jstring s);

    // Runs the static method `method` ()V of the Java class `cls` (slash form): a test written in Java, on the
    // test thread. Whatever it throws fails this test with the exception's stack trace.
    void run_java(const char* cls, const char* method);

private:
    int warnings_before_ = 0;
    int expected_warnings_ = 0;
};

// Trace lines captured by the simulated device whose text contains `needle`.
std::vector<std::string> traces_containing(const std::string& needle);

}  // namespace jbrg_test

#endif  // JBRG_TESTS_HARNESS_BRIDGE_TEST_H
