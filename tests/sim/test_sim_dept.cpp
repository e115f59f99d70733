// The simulated device's department store, as the platform's callers see it.
#include <gmock/gmock.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_dept.h"

namespace {

xsi_pbfs_dept_facade& store() { return *xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance(); }

XSI_PBFS_DEPT_DEPTINFO department(const char* id, const char* name) {
    XSI_PBFS_DEPT_DEPTINFO d{};
    std::strcpy(d.id, id);
    std::strcpy(d.name, name);
    return d;
}

class dept_store : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"departments": {"capacity": 2, "limit_action": 2,
                   "accounts": [{"id": "1", "name": "One", "reserved": 9, "counters": [5]}]}})";
    }
};

TEST_F(dept_store, the_scenario_sets_modes_accounts_and_capacity) {
    XSI_PBFS_DEPT_LIMIT_ACTION action{};
    EXPECT_EQ(XSI_PBFS_DEPT_OK, store().xsi_pbfs_dept_get_limit_action_mode(&action));
    EXPECT_EQ(XSI_PBFS_DEPT_LIMIT_ACTION_WARN, action);

    XSI_PBFS_DEPT_DEPTINFO one{};
    ASSERT_EQ(XSI_PBFS_DEPT_OK, store().xsi_pbfs_dept_retrieve_hide_dept("1", &one));
    EXPECT_STREQ("One", one.name);
    EXPECT_EQ(9U, one.reserved);
    EXPECT_EQ(5U, one.counter[0]);

    // Room for two: the second add fits, the third does not.
    XSI_PBFS_DEPT_DEPTINFO two = department("2", "Two");
    two.counter[0] = 77;
    EXPECT_EQ(XSI_PBFS_DEPT_OK, store().xsi_pbfs_dept_add_hide_dept(two));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_add_hide_dept(department("3", "Three")));
    XSI_PBFS_DEPT_DEPTINFO back{};
    ASSERT_EQ(XSI_PBFS_DEPT_OK, store().xsi_pbfs_dept_retrieve_hide_dept("2", &back));
    EXPECT_EQ(0U, back.counter[0]) << "the store keeps its own counters, not those given";
}

TEST_F(dept_store, records_and_arguments_it_cannot_take_are_general_failures) {
    XSI_PBFS_DEPT_DEPTINFO unterminated = department("2", "");
    std::memset(unterminated.name, 'n', sizeof unterminated.name);
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_add_hide_dept(unterminated));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_add_hide_dept(department("", "Nameless id")));
    XSI_PBFS_DEPT_DEPTINFO long_id = department("1", "One");
    std::memset(long_id.id, '1', sizeof long_id.id);
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_update_hide_dept(long_id));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_delete_hide_dept(nullptr));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_retrieve_hide_dept("1", nullptr));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_reset_hide_dept_counter(nullptr));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_get_dept_mode(nullptr));
    EXPECT_EQ(XSI_PBFS_DEPT_NG, store().xsi_pbfs_dept_set_dept_mode(static_cast<XSI_PBFS_DEPT_DEPT_MODE>(2)));
    EXPECT_EQ(XSI_PBFS_DEPT_NG,
              store().xsi_pbfs_dept_set_invalid_dept_mode(static_cast<XSI_PBFS_DEPT_INVALID_DEPT_MODE>(3)));
    EXPECT_THAT(jbrg_sim::call_texts(), ::testing::Contains("xsi_pbfs_dept_delete_hide_dept((null))"));
}

TEST_F(dept_store, a_scenario_it_cannot_read_is_refused_whole) {
    for (const char* text : {
             R"({"departments": {"colour": 1}})",
             R"({"departments": {"mode": 2}})",
             R"({"departments": {"accounts": [{"name": "no id"}]}})",
             R"({"departments": {"accounts": [{"id": "1"}, {"id": "1"}]}})",
             R"({"departments": {"accounts": [{"id": "123456789"}]}})",
             R"({"departments": {"accounts": [{"id": "1", "limits": [1,2,3,4,5,6,7,8,9,10,11]}]}})",
             R"({"departments": {"capacity": 0, "accounts": [{"id": "1"}]}})",
         }) {
        EXPECT_THROW(jbrg_sim::load_scenario(text), std::runtime_error) << text;
    }
    XSI_PBFS_DEPT_DEPTINFO one{};
    EXPECT_EQ(XSI_PBFS_DEPT_OK, store().xsi_pbfs_dept_retrieve_hide_dept("1", &one)) << "the store is unchanged";
}

}  // namespace
