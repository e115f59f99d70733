// CJvm with a running VM: the environment slot, object creation and release by class name.
#include <gmock/gmock.h>

#include <thread>

#include "core/cjvm.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::HasSubstr;
using orvane::CJvm;

class cjvm : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        CJvm::CreateJVM();
    }

    int static_int(const char* cls, const char* field) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(cls);
        return e->GetStaticIntField(c, e->GetStaticFieldID(c, field, "I"));
    }
};

TEST_F(cjvm, finds_the_running_vm_and_the_callers_environment) {
    EXPECT_EQ(jbrg_test::vm(), CJvm::GetJVM());
    EXPECT_EQ(jbrg_test::env(), CJvm::GetJNIEnv());
    EXPECT_EQ(jbrg_test::env(), CJvm::ms_jnienv);
}

TEST_F(cjvm, an_unattached_thread_gets_what_the_slot_holds_and_a_printed_line) {
    JNIEnv* answer = jbrg_test::env();
    JNIEnv* slot = jbrg_test::env();
    testing::internal::CaptureStdout();
    std::thread([&] {
        answer = CJvm::GetJNIEnv();
        slot = CJvm::ms_jnienv;
        std::fflush(stdout);
    }).join();
    EXPECT_EQ("failed to Get JNIEnv\n", testing::internal::GetCapturedStdout());
    // The answer is the slot's content after the failed GetEnv, whatever the VM left there.
    EXPECT_EQ(slot, answer);
    // It does not attach the thread.
    EXPECT_EQ(JNI_EDETACHED, [] {
        jint state = JNI_OK;
        std::thread([&] {
            void* e = nullptr;
            state = jbrg_test::vm()->GetEnv(&e, JNI_VERSION_1_2);
        }).join();
        return state;
    }());
}

TEST_F(cjvm, creates_objects_with_their_no_argument_constructor) {
    int before = static_int("jbrg/test/Plain", "made");
    jobject made = CJvm::CreateJavaObject("jbrg/test/Plain");
    ASSERT_NE(nullptr, made);
    EXPECT_TRUE(jbrg_test::env()->IsInstanceOf(made, jbrg_test::env()->FindClass("jbrg/test/Plain")));
    EXPECT_EQ(before + 1, static_int("jbrg/test/Plain", "made"));
}

TEST_F(cjvm, a_failed_creation_prints_the_exception_clears_it_and_yields_null) {
    struct {
        const char* cls;
        const char* printed;
    } cases[] = {
        {"jbrg/test/Missing", "java.lang.NoClassDefFoundError: jbrg/test/Missing"},
        {"jbrg/test/NoDefaultConstructor", "java.lang.NoSuchMethodError"},
        {"jbrg/test/ThrowingConstructor", "java.lang.IllegalStateException: refused"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cls);
        begin_java_stderr();
        jobject made = CJvm::CreateJavaObject(c.cls);
        std::string printed = end_java_stderr();
        EXPECT_EQ(nullptr, made);
        EXPECT_THAT(printed, HasSubstr(c.printed));
        EXPECT_EQ("", take_exception());
    }
}

TEST_F(cjvm, release_calls_the_release_method) {
    jobject releasable = CJvm::CreateJavaObject("jbrg/test/Releasable");
    int before = static_int("jbrg/test/Releasable", "released");
    CJvm::ReleaseJObject(releasable);
    EXPECT_EQ("", take_exception());
    EXPECT_EQ(before + 1, static_int("jbrg/test/Releasable", "released"));
    EXPECT_NE(JNIInvalidRefType, jbrg_test::env()->GetObjectRefType(releasable)) << "the reference is kept";
}

TEST_F(cjvm, release_without_a_release_method_prints_and_clears) {
    jobject plain = CJvm::CreateJavaObject("jbrg/test/NoRelease");
    begin_java_stderr();
    CJvm::ReleaseJObject(plain);
    EXPECT_THAT(end_java_stderr(), HasSubstr("java.lang.NoSuchMethodError: Ljbrg/test/NoRelease;.release()V"));
    EXPECT_EQ("", take_exception());
}

TEST_F(cjvm, an_exception_thrown_by_release_is_left_for_the_caller) {
    jobject failing = CJvm::CreateJavaObject("jbrg/test/ThrowingRelease");
    CJvm::ReleaseJObject(failing);
    EXPECT_EQ("java.lang.IllegalStateException: release failed", take_exception());
}

TEST_F(cjvm, release_leaves_the_exception_check_to_its_caller) {
    // ReleaseJObject does not look for an exception after release(); a caller that goes on without looking
    // either is what the checked VM warns about, once.
    expect_jni_warnings(1);
    jobject releasable = CJvm::CreateJavaObject("jbrg/test/Releasable");
    CJvm::ReleaseJObject(releasable);
    jbrg_test::env()->GetObjectClass(releasable);
}

TEST_F(cjvm, release_of_null_does_nothing) {
    begin_java_stderr();
    CJvm::ReleaseJObject(nullptr);
    EXPECT_EQ("", end_java_stderr());
}

}  // namespace
