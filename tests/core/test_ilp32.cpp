// The device is ILP32; the host build must behave the same wherever device values meet Java.
#include <gmock/gmock.h>

#include "core/handle.h"
#include "plat_types.h"
#include "tests/harness/bridge_test.h"

namespace {

class ilp32 : public jbrg_test::bridge_test {};

TEST_F(ilp32, a_java_long_keeps_its_low_32_bits_as_the_devices_unsigned_long) {
    EXPECT_EQ(5U, orvane::to_dev_ulong(0x100000005LL));
    EXPECT_EQ(0xFFFFFFFFU, orvane::to_dev_ulong(-1));
    EXPECT_EQ(0x80000000U, orvane::to_dev_ulong(0x7FFFFFFF80000000LL));
    EXPECT_EQ(4294967295LL, orvane::from_dev_ulong(0xFFFFFFFFU)) << "zero-extended, never negative";
}

TEST_F(ilp32, handles_carry_the_pointer) {
    int object = 0;
    jlong handle = orvane::to_handle(&object);
    EXPECT_EQ(&object, orvane::from_handle<int>(handle));
    EXPECT_EQ(nullptr, orvane::from_handle<int>(0));
    if (sizeof(void*) == 4) {
        EXPECT_EQ(0, handle >> 32) << "upper 32 bits are zero on the device";
        // The device reads only the low 32 bits of a handle.
        EXPECT_EQ(&object, orvane::from_handle<int>(handle | (jlong{0x1234} << 32)));
    }
}

TEST_F(ilp32, result_codes_are_32_bit_signed_values) {
    EXPECT_EQ(-1056833535, PLAT_CODE(0xC1020001));
    EXPECT_EQ(4U, sizeof(PLAT_RESULT));
}

TEST_F(ilp32, the_arm_build_runs_on_a_32_bit_arm_vm) {
#if defined(__arm__)
    EXPECT_EQ(4U, sizeof(long));
    EXPECT_EQ(4U, sizeof(void*));
    JNIEnv* e = jbrg_test::env();
    jclass system = e->FindClass("java/lang/System");
    jmethodID get = e->GetStaticMethodID(system, "getProperty", "(Ljava/lang/String;)Ljava/lang/String;");
    auto property = [&](const char* name) {
        auto value = static_cast<jstring>(e->CallStaticObjectMethod(system, get, e->NewStringUTF(name)));
        return e->ExceptionCheck() ? std::string("(exception)") : text(value);
    };
    EXPECT_EQ("arm", property("os.arch"));
    EXPECT_EQ("32", property("sun.arch.data.model"));
#else
    GTEST_SKIP() << "host build";
#endif
}

}  // namespace
