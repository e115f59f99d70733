// The lazy identifier cache and the scoped JNI holders, on real Java objects.
#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/jni_scoped.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;
namespace jni = orvane::jni;

// Identifiers as a builder class keeps them: static, for the life of the process.
jni::class_id jcls_fields{"jbrg/test/Fields"};
jni::method_id mid_fields_ctor{jcls_fields, "<init>", "()V"};
jni::field_id fid_name{jcls_fields, "name", "Ljava/lang/String;"};
jni::field_id fid_count{jcls_fields, "count", "I"};
jni::field_id fid_id{jcls_fields, "id", "J"};
jni::field_id fid_flag{jcls_fields, "flag", "Z"};
jni::field_id fid_small{jcls_fields, "small", "S"};
jni::field_id fid_ratio{jcls_fields, "ratio", "D"};
jni::field_id fid_other{jcls_fields, "other", "Ljava/lang/Object;"};
jni::field_id fid_wrong_type{jcls_fields, "count", "J"};

jni::class_id jcls_missing{"jbrg/test/Missing"};
jni::field_id fid_of_missing{jcls_missing, "x", "I"};
jni::class_id jcls_throwing{"jbrg/test/ThrowingConstructor"};
jni::method_id mid_throwing_ctor{jcls_throwing, "<init>", "()V"};
jni::class_id jcls_no_default{"jbrg/test/NoDefaultConstructor"};
jni::method_id mid_no_default_ctor{jcls_no_default, "<init>", "()V"};

class identifier_cache : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        orvane::CJvm::CreateJVM();
    }
};

TEST_F(identifier_cache, builds_an_object_field_by_field) {
    jobject made = jni::create_object(JBRG_TRACE_SITE, mid_fields_ctor);
    ASSERT_NE(nullptr, made);
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_name, made, "Scan to e-mail"));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_count, made, jint{42}));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_id, made, jlong{4294967295LL}));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_flag, made, jboolean{JNI_TRUE}));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_small, made, jshort{-2}));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_ratio, made, jdouble{0.5}));
    EXPECT_TRUE(jni::set_field(JBRG_TRACE_SITE, fid_other, made, made));

    JNIEnv* e = jbrg_test::env();
    EXPECT_EQ("Scan to e-mail", text(static_cast<jstring>(e->GetObjectField(made, fid_name.get()))));
    EXPECT_EQ(42, e->GetIntField(made, fid_count.get()));
    EXPECT_EQ(4294967295LL, e->GetLongField(made, fid_id.get()));
    EXPECT_EQ(JNI_TRUE, e->GetBooleanField(made, fid_flag.get()));
    EXPECT_EQ(-2, e->GetShortField(made, fid_small.get()));
    EXPECT_EQ(0.5, e->GetDoubleField(made, fid_ratio.get()));
    EXPECT_TRUE(e->IsSameObject(made, e->GetObjectField(made, fid_other.get())));
    EXPECT_TRUE(jbrg_sim::traces().empty());

    // The identifiers stay: the class is held by a global reference.
    EXPECT_EQ(JNIGlobalRefType, e->GetObjectRefType(jcls_fields.get()));
}

TEST_F(identifier_cache, failed_lookups_are_traced_and_cleared) {
    jobject made = jni::create_object(JBRG_TRACE_SITE, mid_fields_ctor);
    EXPECT_FALSE(jni::set_field(JBRG_TRACE_SITE, fid_of_missing, made, jint{1}));
    EXPECT_FALSE(jni::set_field(JBRG_TRACE_SITE, fid_wrong_type, made, jlong{1}));
    EXPECT_EQ(nullptr, jni::create_object(JBRG_TRACE_SITE, mid_no_default_ctor));
    EXPECT_EQ(nullptr, jni::create_object(JBRG_TRACE_SITE, mid_throwing_ctor));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(MatchesRegex("test_jni_cache\\.cpp\\[[0-9]{4}\\]::TestBody,Detected exception : FindClass\n"),
                            MatchesRegex(".*::TestBody,Detected exception : GetFieldID\n"),
                            MatchesRegex(".*::TestBody,Detected exception : GetMethodID\n"),
                            MatchesRegex(".*::TestBody,Detected exception : NewObject\n")));
    EXPECT_EQ("", take_exception());
    // A failed lookup is tried again next time, and fails the same way.
    EXPECT_FALSE(fid_of_missing.ensure(JBRG_TRACE_SITE));
    EXPECT_EQ(5U, jbrg_sim::traces().size());
    EXPECT_EQ(nullptr, jcls_missing.get());
}

class scoped_holders : public jbrg_test::bridge_test {};

TEST_F(scoped_holders, utf_chars_of_null_is_null_and_touches_nothing) {
    jni::utf_chars none(jbrg_test::env(), nullptr);
    EXPECT_FALSE(none);
    EXPECT_EQ(nullptr, none.get());
    jni::utf_chars some(jbrg_test::env(), jbrg_test::env()->NewStringUTF("abc"));
    EXPECT_STREQ("abc", some.get());
}

TEST_F(scoped_holders, pinned_elements_are_copied_back_only_when_committed) {
    JNIEnv* e = jbrg_test::env();
    jintArray array = e->NewIntArray(3);
    const jint start[] = {1, 2, 3};
    e->SetIntArrayRegion(array, 0, 3, start);
    {
        jni::pinned_array<jint> pinned(e, array);
        ASSERT_TRUE(pinned);
        EXPECT_EQ(3, pinned.size());
        pinned[0] = 10;
    }
    jint after[3];
    e->GetIntArrayRegion(array, 0, 3, after);
    EXPECT_EQ(1, after[0]) << "dropped without commit";
    {
        jni::pinned_array<jint> pinned(e, array);
        pinned[0] = 10;
        pinned.commit();
    }
    e->GetIntArrayRegion(array, 0, 3, after);
    EXPECT_EQ(10, after[0]);

    jni::pinned_array<jint> none(e, nullptr);
    EXPECT_FALSE(none);
    EXPECT_EQ(0, none.size());
}

// An environment of the test thread whose DeleteLocalRef is recorded, so that what a holder deletes shows.
std::vector<jobject> deleted_refs;
JNIEnv* real_env = nullptr;
void JNICALL recording_delete_local_ref(JNIEnv*, jobject ref) {
    deleted_refs.push_back(ref);
    real_env->DeleteLocalRef(ref);
}

TEST_F(scoped_holders, a_local_reference_is_deleted_once_when_its_scope_ends_unless_released) {
    JNIEnv* e = jbrg_test::env();
    JNINativeInterface_ table = *e->functions;
    table.DeleteLocalRef = &recording_delete_local_ref;
    JNIEnv recording{};
    recording.functions = &table;
    real_env = e;
    deleted_refs.clear();

    jobject dropped_ref = nullptr;
    jobject moved_ref = nullptr;
    jobject kept = nullptr;
    {
        jni::local_ref<jstring> dropped(&recording, e->NewStringUTF("dropped"));
        jni::local_ref<jstring> released(&recording, e->NewStringUTF("released"));
        jni::local_ref<jstring> moved_from(&recording, e->NewStringUTF("moved"));
        jni::local_ref<jstring> moved_to(std::move(moved_from));
        jni::local_ref<jstring> empty(&recording, nullptr);
        dropped_ref = dropped.get();
        moved_ref = moved_to.get();
        kept = released.release();
    }
    // In reverse order of making: the moved reference once (its first holder gave it up), then the dropped one.
    EXPECT_THAT(deleted_refs, ElementsAre(moved_ref, dropped_ref));
    EXPECT_EQ(JNILocalRefType, e->GetObjectRefType(kept));
    e->DeleteLocalRef(kept);
}

}  // namespace
