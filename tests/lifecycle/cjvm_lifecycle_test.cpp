// CJvm across the whole life of the process's VM: before it exists, while it runs, after it is destroyed.
// The main suite's VM lives for the whole program, so this story runs in a program of its own, in order.
#include <gtest/gtest.h>

#include <cstdio>

#include "core/cjvm.h"
#include "tests/harness/jvm_boot.h"

namespace {

using orvane::CJvm;

std::string stdout_of(void (*action)()) {
    testing::internal::CaptureStdout();
    action();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

TEST(cjvm_lifecycle, from_no_vm_to_a_destroyed_one) {
    {
        SCOPED_TRACE("no VM yet: nothing is found, nothing printed, nothing done");
        EXPECT_EQ(nullptr, CJvm::GetJVM());
        EXPECT_EQ("", stdout_of([] { EXPECT_EQ(nullptr, CJvm::GetJNIEnv()); }));
        EXPECT_EQ(nullptr, CJvm::CreateJavaObject("java/lang/Object"));
        CJvm::ReleaseJObject(nullptr);
        CJvm::DetachThread();
        CJvm::DestroyJVM();
        EXPECT_EQ(nullptr, CJvm::ms_jvm);
    }

    JNIEnv* env = nullptr;
    JavaVM* vm = jbrg_test::boot_jvm(&env);
    {
        SCOPED_TRACE("the VM runs: it is found once and kept");
        EXPECT_EQ(nullptr, CJvm::ms_jvm) << "nothing looks the VM up by itself";
        EXPECT_EQ(vm, CJvm::GetJVM());
        EXPECT_EQ(env, CJvm::GetJNIEnv());
        jobject made = CJvm::CreateJavaObject("java/lang/Object");
        EXPECT_NE(nullptr, made);
        env->DeleteLocalRef(made);
    }
    {
        SCOPED_TRACE("destroyed: forgotten, and a second destroy does nothing");
        CJvm::DestroyJVM();
        EXPECT_EQ(nullptr, CJvm::ms_jvm);
        CJvm::DestroyJVM();
        EXPECT_EQ(nullptr, CJvm::ms_jvm);
        EXPECT_EQ(nullptr, CJvm::GetJVM()) << "looked up again: the process has no VM any more";
    }
    EXPECT_EQ(0, jbrg_test::jni_warnings_seen()) << jbrg_test::jvm_console();
}

}  // namespace

int main(int argc, char** argv) { return jbrg_test::run_test_program(argc, argv); }
