// Department accounts through their Java natives: the Java side of each group runs in jbrg.test.account; the
// store calls it made, and what Java cannot see (the record's raw bytes), are checked here.
#include <gmock/gmock.h>

#include <jni.h>

#include <cstring>
#include <new>
#include <regex>
#include <string>
#include <vector>

#include "account/cmt_account.h"
#include "core/handle.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_dept.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

constexpr const char* kJava = "jbrg/test/account/AccountModule";

// ---- The natives of jbrg.test.account.DeptRecord ----------------------------------------------------------

jintArray record_words(JNIEnv* e, jclass, jlong handle) {
    const auto* r = orvane::from_handle<XSI_PBFS_DEPT_DEPTINFO>(handle);
    if (r == nullptr) return nullptr;
    std::vector<jint> w(r->restriction, r->restriction + XSI_PBFS_DEPT_SLOT_COUNT);
    w.push_back(static_cast<jint>(r->reserved));
    w.insert(w.end(), r->limit, r->limit + XSI_PBFS_DEPT_SLOT_COUNT);
    w.push_back(static_cast<jint>(r->flags));
    jintArray out = e->NewIntArray(static_cast<jsize>(w.size()));
    if (out != nullptr) e->SetIntArrayRegion(out, 0, static_cast<jsize>(w.size()), w.data());
    return out;
}

jlongArray record_counters(JNIEnv* e, jclass, jlong handle) {
    const auto* r = orvane::from_handle<XSI_PBFS_DEPT_DEPTINFO>(handle);
    if (r == nullptr) return nullptr;
    jlong c[XSI_PBFS_DEPT_COUNTER_COUNT];
    for (int i = 0; i < XSI_PBFS_DEPT_COUNTER_COUNT; ++i) c[i] = r->counter[i];
    jlongArray out = e->NewLongArray(XSI_PBFS_DEPT_COUNTER_COUNT);
    if (out != nullptr) e->SetLongArrayRegion(out, 0, XSI_PBFS_DEPT_COUNTER_COUNT, c);
    return out;
}

class account_module : public jbrg_test::bridge_test {
protected:
    // Account 3001 has counted 12 copies and 3 prints, and is suspended.
    std::string scenario() const override {
        return R"({"departments": {"accounts": [
            {"id": "3001", "name": "Research", "restrictions": [1, 2], "limits": [0, 0, 0, 500], "flags": 1,
             "counters": [12, 0, 3]}]}})";
    }

    void SetUp() override {
        bridge_test::SetUp();
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass("jbrg/test/account/DeptRecord");
        ASSERT_NE(nullptr, c) << take_exception();
        const JNINativeMethod natives[] = {
            {const_cast<char*>("words"), const_cast<char*>("(J)[I"), reinterpret_cast<void*>(&record_words)},
            {const_cast<char*>("counters"), const_cast<char*>("(J)[J"), reinterpret_cast<void*>(&record_counters)},
        };
        ASSERT_EQ(JNI_OK, e->RegisterNatives(c, natives, 2)) << take_exception();
        e->DeleteLocalRef(c);
    }
};

// ---- The account record ------------------------------------------------------------------------------------

TEST_F(account_module, construction_clears_exactly_the_first_name_character_the_slots_and_the_flags) {
    alignas(orvane::cmt_account) unsigned char memory[sizeof(orvane::cmt_account)];
    std::memset(memory, 0xAA, sizeof memory);
    auto* account = new (memory) orvane::cmt_account("1001");
    const XSI_PBFS_DEPT_DEPTINFO& r = *account->get_deptinfo();
    const auto* bytes = reinterpret_cast<const unsigned char*>(&r);
    std::vector<int> cleared;
    for (std::size_t i = 0; i < sizeof r; ++i) {
        if (bytes[i] != 0xAA) cleared.push_back(static_cast<int>(i));
    }
    std::vector<int> expected{0};                                 // the name's first character
    for (int i = 33; i < 42; ++i) expected.push_back(i);          // the id, padded with zeros
    for (int i = 44; i < 132; ++i) expected.push_back(i);         // R0..R9, the word between, L0..L9, flags
    EXPECT_EQ(expected, cleared);
    EXPECT_STREQ("1001", r.id);
    account->~cmt_account();
}

TEST_F(account_module, the_slot_table_is_the_same_for_restrictions_and_limits) { run_java(kJava, "slotTable"); }

TEST_F(account_module, a_long_name_runs_over_the_id_but_stays_inside_the_record) {
    run_java(kJava, "longTexts");
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre(MatchesRegex("xsi_pbfs_dept_add_hide_dept\\(0x[0-9a-f]+\\)")))
        << "the store is asked, and refuses";
}

// ---- The manager -----------------------------------------------------------------------------------------

TEST_F(account_module, accounts_are_added_found_changed_and_removed) {
    run_java(kJava, "storeRoundTrip");
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty()) << "the account classes do not trace";
}

TEST_F(account_module, store_codes_outside_an_operations_table_are_failures) {
    jbrg_sim::force_result("xsi_pbfs_dept_add_hide_dept", XSI_PBFS_DEPT_NOT_FOUND);
    jbrg_sim::force_result("xsi_pbfs_dept_update_hide_dept", XSI_PBFS_DEPT_EXIST);
    jbrg_sim::force_result("xsi_pbfs_dept_add_hide_dept", XSI_PBFS_DEPT_NG);
    jbrg_sim::force_result("xsi_pbfs_dept_update_hide_dept", XSI_PBFS_DEPT_NG);
    for (const char* op : {"xsi_pbfs_dept_delete_hide_dept", "xsi_pbfs_dept_retrieve_hide_dept",
                           "xsi_pbfs_dept_delete_all_hide_dept", "xsi_pbfs_dept_reset_hide_dept_counter"}) {
        jbrg_sim::force_result(op, XSI_PBFS_DEPT_NG);
    }
    run_java(kJava, "foreignCodesAreFailures");
    XSI_PBFS_DEPT_DEPTINFO r{};
    ASSERT_EQ(XSI_PBFS_DEPT_OK,
              xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance()->xsi_pbfs_dept_retrieve_hide_dept("3001", &r));
    EXPECT_EQ(12U, r.counter[XSI_PBFS_DEPT_COUNTER_COPY_MONO]);
}

TEST_F(account_module, the_store_is_called_with_the_accounts_own_record_and_the_id_as_given) {
    run_java(kJava, "oneOfEach");
    const std::vector<std::string> calls = jbrg_sim::call_texts();
    const std::string p = "(0x[0-9a-f]+)";
    ASSERT_THAT(calls, ElementsAre(MatchesRegex("xsi_pbfs_dept_add_hide_dept\\(0x[0-9a-f]+\\)"),
                                   MatchesRegex("xsi_pbfs_dept_update_hide_dept\\(0x[0-9a-f]+\\)"),
                                   MatchesRegex("xsi_pbfs_dept_retrieve_hide_dept\\(2001, 0x[0-9a-f]+\\)"),
                                   "xsi_pbfs_dept_reset_hide_dept_counter(2001)",
                                   "xsi_pbfs_dept_delete_hide_dept(2001)", "xsi_pbfs_dept_delete_all_hide_dept()",
                                   "xsi_pbfs_dept_set_dept_mode(1)",
                                   MatchesRegex("xsi_pbfs_dept_get_dept_mode\\(0x[0-9a-f]+\\)"),
                                   "xsi_pbfs_dept_set_mix_mode(1)",
                                   MatchesRegex("xsi_pbfs_dept_get_mix_mode\\(0x[0-9a-f]+\\)"),
                                   "xsi_pbfs_dept_set_invalid_dept_mode(2)",
                                   MatchesRegex("xsi_pbfs_dept_get_invalid_dept_mode\\(0x[0-9a-f]+\\)"),
                                   "xsi_pbfs_dept_set_limit_action_mode(-5)",
                                   MatchesRegex("xsi_pbfs_dept_get_limit_action_mode\\(0x[0-9a-f]+\\)")));
    // Add, update and retrieve all hand over the record inside the one account object, not a copy.
    std::smatch add, update, retrieve;
    ASSERT_TRUE(std::regex_search(calls[0], add, std::regex(p)));
    ASSERT_TRUE(std::regex_search(calls[1], update, std::regex(p)));
    ASSERT_TRUE(std::regex_search(calls[2], retrieve, std::regex(p)));
    EXPECT_EQ(add[1], update[1]);
    EXPECT_EQ(add[1], retrieve[1]);
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

// ---- The configuration ---------------------------------------------------------------------------------------

TEST_F(account_module, modes_are_set_and_read_back) { run_java(kJava, "modes"); }

TEST_F(account_module, modes_read_as_reported_or_as_0_false_and_minus_1_on_failure) {
    for (const char* mode : {"dept_mode", "mix_mode", "invalid_dept_mode", "limit_action_mode"}) {
        jbrg_sim::force_result(std::string("xsi_pbfs_dept_set_") + mode, XSI_PBFS_DEPT_NG);
        jbrg_sim::force_result(std::string("xsi_pbfs_dept_get_") + mode, XSI_PBFS_DEPT_NG);
    }
    run_java(kJava, "modesUnread");
    EXPECT_EQ(8U, jbrg_sim::calls().size()) << "every operation asked the store once";
    jbrg_sim::force_out("xsi_pbfs_dept_get_dept_mode", "mode", "2");
    jbrg_sim::force_out("xsi_pbfs_dept_get_mix_mode", "mode", "77");
    run_java(kJava, "modesAsReported");
}

// ---- Arguments ---------------------------------------------------------------------------------------------

TEST_F(account_module, null_strings_and_zero_handles_never_reach_the_store) {
    run_java(kJava, "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

}  // namespace
