// The conventions of the generated wrapper layer, through the probe modules: the Java side of each group runs
// in jbrg.test.wrapper; what Java cannot see (addresses, raw field bytes, the runtime's C++ functions) is
// checked here.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "core/handle.h"
#include "tests/harness/bridge_test.h"
#include "tests/wrapper/probe/probe.h"
#include "wrapper/runtime/wrap_runtime.h"

namespace {

using jbrg_test::env;
using orvane::to_handle;

class wrapper_conventions : public jbrg_test::bridge_test {};

// ---- Groups written in Java --------------------------------------------------------------------------------

TEST_F(wrapper_conventions, scalar_fields) { run_java("jbrg/test/wrapper/ProbeFields", "scalarFields"); }
TEST_F(wrapper_conventions, zero_owner_fields) { run_java("jbrg/test/wrapper/ProbeFields", "zeroOwner"); }
TEST_F(wrapper_conventions, text_fields) { run_java("jbrg/test/wrapper/ProbeFields", "textFields"); }
TEST_F(wrapper_conventions, array_fields) { run_java("jbrg/test/wrapper/ProbeFields", "arrayFields"); }
TEST_F(wrapper_conventions, nested_records) { run_java("jbrg/test/wrapper/ProbeFields", "nestedRecords"); }
TEST_F(wrapper_conventions, record_shared_by_two_modules) {
    run_java("jbrg/test/wrapper/ProbeFields", "sharedRecord");
}
TEST_F(wrapper_conventions, scalar_arguments) { run_java("jbrg/test/wrapper/ProbeArguments", "scalarArguments"); }
TEST_F(wrapper_conventions, string_arguments) { run_java("jbrg/test/wrapper/ProbeArguments", "stringArguments"); }
TEST_F(wrapper_conventions, reference_arguments) {
    run_java("jbrg/test/wrapper/ProbeArguments", "referenceArguments");
}
TEST_F(wrapper_conventions, output_arguments) { run_java("jbrg/test/wrapper/ProbeArguments", "outputArguments"); }
TEST_F(wrapper_conventions, array_arguments) { run_java("jbrg/test/wrapper/ProbeArguments", "arrayArguments"); }
TEST_F(wrapper_conventions, overloads) { run_java("jbrg/test/wrapper/ProbeArguments", "overloads"); }
TEST_F(wrapper_conventions, conversion_stops_at_first_bad_argument) {
    run_java("jbrg/test/wrapper/ProbeArguments", "afterChecks");
}
TEST_F(wrapper_conventions, record_and_pointer_results) {
    run_java("jbrg/test/wrapper/ProbeResults", "recordResults");
}
TEST_F(wrapper_conventions, vector_class) { run_java("jbrg/test/wrapper/ProbeResults", "vectorClass"); }
TEST_F(wrapper_conventions, constants_and_globals) {
    run_java("jbrg/test/wrapper/ProbeResults", "constantsAndGlobals");
}

// ---- Fields seen from the native side ----------------------------------------------------------------------

// Calls the static natives of wrap_probe_plainJNI; every call leaves its Java exception for the test to take.
class plain_natives {
public:
    plain_natives() : class_(env()->FindClass("orvane/qsf/wrapper/probe/wrap_probe_plainJNI")) {}
    ~plain_natives() { env()->DeleteLocalRef(class_); }
    plain_natives(const plain_natives&) = delete;
    plain_natives& operator=(const plain_natives&) = delete;
    explicit operator bool() const { return class_ != nullptr; }

    jlong get(const char* name, jlong owner) {
        jmethodID m = method(name, "(JLjava/lang/Object;)J");
        if (m == nullptr) return -1;
        jlong result = env()->CallStaticLongMethod(class_, m, owner, kNoOwner);
        return env()->ExceptionCheck() ? -1 : result;
    }
    jstring get_text(const char* name, jlong owner) {
        jmethodID m = method(name, "(JLjava/lang/Object;)Ljava/lang/String;");
        if (m == nullptr) return nullptr;
        jobject result = env()->CallStaticObjectMethod(class_, m, owner, kNoOwner);
        return env()->ExceptionCheck() ? nullptr : static_cast<jstring>(result);
    }
    // new_<RECORD>, delete_<RECORD>.
    jlong make(const char* name) {
        jmethodID m = method(name, "()J");
        if (m == nullptr) return 0;
        jlong made = env()->CallStaticLongMethod(class_, m);
        return env()->ExceptionCheck() ? 0 : made;
    }
    void dispose(const char* name, jlong handle) {
        jmethodID m = method(name, "(J)V");
        if (m == nullptr) return;
        env()->CallStaticVoidMethod(class_, m, handle);
        env()->ExceptionCheck();
    }
    // A primitive array field: the source is a bare address.
    void set(const char* name, jlong owner, jlong source) {
        jmethodID m = method(name, "(JLjava/lang/Object;J)V");
        if (m == nullptr) return;
        env()->CallStaticVoidMethod(class_, m, owner, kNoOwner, source);
        env()->ExceptionCheck();
    }
    // A record or array-of-records field: the source is a record handle followed by its owner.
    void set_record(const char* name, jlong owner, jlong source) {
        jmethodID m = method(name, "(JLjava/lang/Object;JLjava/lang/Object;)V");
        if (m == nullptr) return;
        env()->CallStaticVoidMethod(class_, m, owner, kNoOwner, source, kNoOwner);
        env()->ExceptionCheck();
    }

private:
    static constexpr jobject kNoOwner = nullptr;
    // A missing method leaves NoSuchMethodError pending, which the test then sees.
    jmethodID method(const char* name, const char* signature) {
        return env()->GetStaticMethodID(class_, name, signature);
    }
    jclass class_;
};

bool same(const PROBE_INNER& a, const PROBE_INNER& b) {
    return a.value == b.value && std::memcmp(a.label, b.label, sizeof a.label) == 0;
}

// A module without Java arrays hands out the address of an array field and copies N elements into it, from a
// source that holds all N: memory the module made, such as the same field of another record.
TEST_F(wrapper_conventions, plain_array_fields_cross_by_address) {
    plain_natives natives;
    ASSERT_TRUE(natives) << take_exception();
    PROBE_PLAIN plain{};
    const jlong h = to_handle(&plain);

    EXPECT_EQ(to_handle(&plain.data[0]), natives.get("PROBE_PLAIN_data_get", h));
    EXPECT_EQ(to_handle(&plain.values[0]), natives.get("PROBE_PLAIN_values_get", h));
    EXPECT_EQ(to_handle(&plain.items[0]), natives.get("PROBE_PLAIN_items_get", h));
    EXPECT_EQ(to_handle(&plain.single), natives.get("PROBE_PLAIN_single_get", h));

    const jlong source_handle = natives.make("new_PROBE_PLAIN");
    PROBE_PLAIN& source = *orvane::from_handle<PROBE_PLAIN>(source_handle);
    const unsigned char bytes[6] = {1, 2, 3, 250, 5, 6};
    std::memcpy(source.data, bytes, sizeof bytes);
    source.values[0] = 1, source.values[1] = 0xFFFFFFFFu, source.values[2] = 3;
    source.items[0] = {1, "one"}, source.items[1] = {2, "two"};
    natives.set("PROBE_PLAIN_data_set", h, natives.get("PROBE_PLAIN_data_get", source_handle));
    EXPECT_EQ(0, std::memcmp(bytes, plain.data, sizeof bytes));
    natives.set("PROBE_PLAIN_values_set", h, natives.get("PROBE_PLAIN_values_get", source_handle));
    EXPECT_EQ(0, std::memcmp(source.values, plain.values, sizeof plain.values));
    natives.set_record("PROBE_PLAIN_items_set", h, natives.get("PROBE_PLAIN_items_get", source_handle));
    EXPECT_TRUE(same(source.items[0], plain.items[0]) && same(source.items[1], plain.items[1]));
    natives.set_record("PROBE_PLAIN_single_set", h, to_handle(&source.items[1]));
    EXPECT_TRUE(same(source.items[1], plain.single));
    EXPECT_EQ("", take_exception());

    // Sources that do not hold the whole array: one record made for Java where the field has two, the last
    // record of another record, memory the module never made, a record Java deleted. Each is refused before a
    // byte is read, and the field keeps what it had.
    const PROBE_PLAIN kept = plain;
    const jlong one = natives.make("new_PROBE_INNER");
    const unsigned char foreign[6] = {9, 9, 9, 9, 9, 9};
    const jlong deleted = natives.make("new_PROBE_PLAIN");
    natives.dispose("delete_PROBE_PLAIN", deleted);
    for (const jlong bad : {one, to_handle(&source.single), to_handle(foreign), deleted}) {
        natives.set_record("PROBE_PLAIN_items_set", h, bad);
        EXPECT_EQ("java.lang.IndexOutOfBoundsException: incorrect array size", take_exception());
    }
    natives.set("PROBE_PLAIN_data_set", h, to_handle(foreign));
    EXPECT_EQ("java.lang.IndexOutOfBoundsException: incorrect array size", take_exception());
    natives.set("PROBE_PLAIN_values_set", h, to_handle(&source.single.label[4]));
    EXPECT_EQ("java.lang.IndexOutOfBoundsException: incorrect array size", take_exception());
    EXPECT_EQ(0, std::memcmp(kept.data, plain.data, sizeof plain.data));
    EXPECT_EQ(0, std::memcmp(kept.values, plain.values, sizeof plain.values));
    EXPECT_TRUE(same(kept.items[0], plain.items[0]) && same(kept.items[1], plain.items[1]));
    natives.dispose("delete_PROBE_INNER", one);
    natives.dispose("delete_PROBE_PLAIN", source_handle);

    // Zero sources: an array copies nothing, a record is refused; either way the record is unchanged.
    const PROBE_PLAIN before = plain;
    natives.set("PROBE_PLAIN_data_set", h, 0);
    natives.set("PROBE_PLAIN_values_set", h, 0);
    natives.set_record("PROBE_PLAIN_items_set", h, 0);
    EXPECT_EQ("", take_exception());
    natives.set_record("PROBE_PLAIN_single_set", h, 0);
    EXPECT_EQ("java.lang.NullPointerException: Attempt to dereference null PROBE_INNER", take_exception());
    EXPECT_EQ(0, std::memcmp(before.data, plain.data, sizeof plain.data));
    EXPECT_EQ(0, std::memcmp(before.values, plain.values, sizeof plain.values));
    EXPECT_TRUE(same(before.items[0], plain.items[0]) && same(before.items[1], plain.items[1]));
    EXPECT_TRUE(same(before.single, plain.single));

    // A zero owner: getters answer zero, setters do nothing.
    EXPECT_EQ(0, natives.get("PROBE_PLAIN_data_get", 0));
    EXPECT_EQ(0, natives.get("PROBE_PLAIN_single_get", 0));
    natives.set("PROBE_PLAIN_data_set", 0, to_handle(foreign));
    natives.set_record("PROBE_PLAIN_single_set", 0, 0);
    EXPECT_EQ("", take_exception());
}

// A platform record may fill a text field to its last byte, without a terminating zero: the getter reads the
// whole field and nothing after it.
TEST_F(wrapper_conventions, full_text_field_is_read_to_its_capacity) {
    plain_natives natives;
    ASSERT_TRUE(natives) << take_exception();
    PROBE_INNER full[1];
    full[0].value = 0;
    std::memcpy(full[0].label, "abcdefgh", sizeof full[0].label);
    EXPECT_EQ("abcdefgh", text(natives.get_text("PROBE_INNER_label_get", to_handle(&full[0]))));
    EXPECT_EQ("", take_exception());
}

// Bytes a platform record holds become the characters they encode and nothing else: standard UTF-8 from the
// platform, a character cut off at the field's end, a byte that belongs to no character.
TEST_F(wrapper_conventions, device_text_becomes_only_the_characters_it_holds) {
    plain_natives natives;
    ASSERT_TRUE(natives) << take_exception();
    auto read = [&](std::initializer_list<unsigned char> bytes) {
        PROBE_INNER record{};
        std::copy(bytes.begin(), bytes.end(), reinterpret_cast<unsigned char*>(record.label));
        jstring s = natives.get_text("PROBE_INNER_label_get", to_handle(&record));
        std::u16string units;
        if (s != nullptr) {
            const jchar* chars = env()->GetStringChars(s, nullptr);
            units.assign(chars, chars + env()->GetStringLength(s));
            env()->ReleaseStringChars(s, chars);
        }
        return units;
    };
    EXPECT_EQ(u"ab\u20AC", read({'a', 'b', 0xE2, 0x82, 0xAC, 0xE2, 0x82, 0}));      // "€" cut after 2 bytes
    EXPECT_EQ(u"\U0001F600xyz", read({0xF0, 0x9F, 0x98, 0x80, 'x', 'y', 'z', 0}));   // 4-byte UTF-8
    EXPECT_EQ(u"ab", read({'a', 'b', 0xED, 0xA0, 0xBD, 0}));                        // half a surrogate pair
    EXPECT_EQ(u"ab", read({'a', 'b', 0xED, 0xA0, 0xBD, 0xED, 0xB0, 0}));            // ... and part of the other
    EXPECT_EQ(u"a\uFFFDb\uFFFDc", read({'a', 0xFF, 'b', 0xE2, 'c', 0}));            // no character at all
    EXPECT_EQ(u"\u00E9t\u00E9", read({0xC3, 0xA9, 't', 0xC3, 0xA9, 0}));           // valid text as it is
    EXPECT_EQ("", take_exception());
}

// ---- Array conversion, by element type ---------------------------------------------------------------------

// One element type: its conversion functions, three Java values, the C values they convert to, and the Java
// values those convert back to.
#define ARRAY_CASE(Name, CType, JElem, java_values, c_values, back_values)                                \
    struct Name##_case {                                                                                   \
        using C = CType;                                                                                   \
        using J = JElem;                                                                                   \
        using array = orvane::jni::array_traits<J>::array;                                                 \
        static constexpr const char* name = #Name;                                                         \
        static bool in(JNIEnv* e, J** j, C** c, array a) { return SWIG_JavaArrayIn##Name(e, j, c, a); }    \
        static void argout(JNIEnv* e, J* j, C* c, array a) { SWIG_JavaArrayArgout##Name(e, j, c, a); }     \
        static array out(JNIEnv* e, const C* c, jsize n) { return SWIG_JavaArrayOut##Name(e, c, n); }      \
        static std::array<J, 3> java() { return {java_values}; }                                           \
        static std::array<C, 3> native() { return {c_values}; }                                            \
        static std::array<J, 3> back() { return {back_values}; }                                           \
    };
#define VALUES(a, b, c) a, b, c
ARRAY_CASE(Bool, bool, jboolean, VALUES(JNI_TRUE, JNI_FALSE, JNI_TRUE), VALUES(true, false, true),
           VALUES(JNI_TRUE, JNI_FALSE, JNI_TRUE))
ARRAY_CASE(Schar, signed char, jbyte, VALUES(-128, 0, 127), VALUES(-128, 0, 127), VALUES(-128, 0, 127))
ARRAY_CASE(Uchar, unsigned char, jshort, VALUES(1, 300, -1), VALUES(1, 44, 255), VALUES(1, 44, 255))
ARRAY_CASE(Ushort, unsigned short, jint, VALUES(65535, 65543, -1), VALUES(65535, 7, 65535),
           VALUES(65535, 7, 65535))
ARRAY_CASE(Uint, unsigned int, jlong, VALUES(0x100000005LL, -1, 7), VALUES(5u, 0xFFFFFFFFu, 7u),
           VALUES(5, 4294967295LL, 7))
ARRAY_CASE(Long, dev_long, jint, VALUES(INT_MIN, -1, INT_MAX), VALUES(INT_MIN, -1, INT_MAX),
           VALUES(INT_MIN, -1, INT_MAX))
ARRAY_CASE(Ulong, dev_ulong, jlong, VALUES(0x1FFFFFFFFLL, 0x80000000LL, -2), VALUES(0xFFFFFFFFu, 0x80000000u, 0xFFFFFFFEu),
           VALUES(4294967295LL, 0x80000000LL, 4294967294LL))
ARRAY_CASE(Longlong, long long, jlong, VALUES(INT64_MIN, -1, INT64_MAX), VALUES(INT64_MIN, -1, INT64_MAX),
           VALUES(INT64_MIN, -1, INT64_MAX))
ARRAY_CASE(Double, double, jdouble, VALUES(-1.5, 0.25, 1e300), VALUES(-1.5, 0.25, 1e300), VALUES(-1.5, 0.25, 1e300))
#undef VALUES
#undef ARRAY_CASE

template <class T>
class array_conversion : public jbrg_test::bridge_test {
protected:
    using traits = orvane::jni::array_traits<typename T::J>;

    typename T::array java_array(const std::array<typename T::J, 3>& values) {
        auto a = traits::make(env(), 3);
        if (a != nullptr) traits::set(env(), a, 3, values.data());
        return a;
    }
    std::vector<typename T::J> elements(typename T::array a) {
        orvane::jni::pinned_array<typename T::J> pinned(env(), a);
        if (!pinned) return {};
        return std::vector<typename T::J>(pinned.data(), pinned.data() + pinned.size());
    }
};
struct case_names {
    template <class T>
    static std::string GetName(int) {
        return T::name;
    }
};
// Every conversion that narrows, widens or changes signedness, and one of each width that only copies: the
// element types share one template, so the cases left out (short, int, float) would repeat Schar, Long, Double.
using array_cases = ::testing::Types<Bool_case, Schar_case, Uchar_case, Ushort_case, Uint_case, Long_case,
                                     Ulong_case, Longlong_case, Double_case>;
TYPED_TEST_SUITE(array_conversion, array_cases, case_names);

TYPED_TEST(array_conversion, in_argout_and_out_convert_each_element) {
    using T = TypeParam;
    using J = typename T::J;
    using C = typename T::C;
    JNIEnv* e = env();
    auto input = this->java_array(T::java());
    ASSERT_NE(nullptr, input);

    J* jarr = nullptr;
    C* carr = nullptr;
    ASSERT_TRUE(T::in(e, &jarr, &carr, input));
    const std::array<C, 3> expected = T::native();
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), carr)) << "In converts each element";
    // What the callee changes comes back converted.
    std::reverse(carr, carr + 3);
    T::argout(e, jarr, carr, input);
    delete[] carr;
    std::array<J, 3> back = T::back();
    std::reverse(back.begin(), back.end());
    EXPECT_EQ(std::vector<J>(back.begin(), back.end()), this->elements(input)) << "Argout copies back";

    auto output = T::out(e, expected.data(), 3);
    ASSERT_NE(nullptr, output);
    back = T::back();
    EXPECT_EQ(std::vector<J>(back.begin(), back.end()), this->elements(output)) << "Out makes a new array";
    auto shorter = T::out(e, expected.data(), 2);
    ASSERT_NE(nullptr, shorter);
    EXPECT_EQ(2, e->GetArrayLength(shorter));
    auto none = T::out(e, expected.data(), 0);
    ASSERT_NE(nullptr, none);
    EXPECT_EQ(0, e->GetArrayLength(none));
    EXPECT_EQ("", this->take_exception());

    jarr = nullptr;
    carr = nullptr;
    EXPECT_FALSE(T::in(e, &jarr, &carr, nullptr));
    EXPECT_EQ("java.lang.NullPointerException: null array", this->take_exception());
    EXPECT_EQ(nullptr, carr) << "nothing to free after a null array";
}

// ---- Java exceptions from the modules' table ------------------------------------------------------------------

TEST_F(wrapper_conventions, throw_java_maps_codes_to_exception_classes) {
    // The table's ends, the two codes that share a class, and codes outside it (the module tests see the
    // classes of the argument checks: IndexOutOfBounds, IllegalArgument, NullPointer).
    const struct {
        int code;
        const char* java_class;
    } table[] = {
        {1, "java.lang.OutOfMemoryError"},
        {3, "java.lang.RuntimeException"},
        {8, "java.lang.RuntimeException"},
        {9, "java.lang.UnknownError"},
        {0, "java.lang.UnknownError"},
        {10, "java.lang.UnknownError"},
        {-1, "java.lang.UnknownError"},
    };
    for (const auto& row : table) {
        jbrg::wrap::throw_java(env(), row.code, "the message");
        EXPECT_EQ(std::string(row.java_class) + ": the message", take_exception()) << "code " << row.code;
    }
    // A pending exception is replaced, not added to (the VM would warn of a call with an exception pending).
    jbrg::wrap::throw_java(env(), 2, "first");
    jbrg::wrap::throw_java(env(), 7, "second");
    EXPECT_EQ("java.lang.NullPointerException: second", take_exception());
}

}  // namespace
