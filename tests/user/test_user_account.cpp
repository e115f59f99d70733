// Hidden user accounts, driven from Java through the user module.
#include <gmock/gmock.h>

#include <string>

#include "jbrg_sim/control.h"
#include "plat_types.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using jbrg_test::traces_containing;

constexpr const char* kJava = "jbrg/test/user/HiddenAccounts";

std::string signed_text(uint32_t code) { return std::to_string(static_cast<int32_t>(code)); }

class user_accounts : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"users": {"local": [ {"login_name": "alice", "password": "wonder", "rights": 0} ],
                             "hidden": [ {"login_name": "svc", "password": "svcpw"} ]}})";
    }
};

TEST_F(user_accounts, accounts_are_keyed_by_login_name) {
    run_java(kJava, "createUpdateRemove");
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_user_delete_hide_account")[0].args, ElementsAre("nobody"));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_user_create_hide_account")[0].args, ElementsAre(MatchesRegex("0x.*")));
    // Each operation's outcome is traced by the conversion, in the order of the operations above.
    const std::string duplicate = ",duplicate id. retcode = [" + signed_text(0xC1010405) + "]\n";
    const std::string not_found = ",not found. retcode = [" + signed_text(0xC1010402) + "]\n";
    EXPECT_THAT(traces_containing("::convert_retcode,"),
                ElementsAre(HasSubstr(",success. retcode = [0]\n"), HasSubstr(duplicate), HasSubstr(duplicate),
                            HasSubstr(",success. retcode = [0]\n"), HasSubstr(not_found), HasSubstr(not_found),
                            HasSubstr(",success. retcode = [0]\n"), HasSubstr(not_found),
                            HasSubstr(",success. retcode = [0]\n"), HasSubstr(",success. retcode = [0]\n")));
    EXPECT_THAT(traces_containing("::update_hide_user,"),
                testing::Each(MatchesRegex("qsf_fnd_user_account\\.cpp\\[[0-9]{4}\\]::update_hide_user,\\[Enter\\]\n")));
}

TEST_F(user_accounts, codes_of_other_services_and_families_are_four) {
    // The authentication service's "not found" is not the user store's.
    jbrg_sim::force_result("xsi_pbfs_user_create_hide_account", PLAT_CODE(0xC1020402));
    jbrg_sim::force_result("xsi_pbfs_user_update_hide_account", PLAT_CODE(0xC1010406));
    jbrg_sim::force_result("xsi_pbfs_user_delete_hide_account", PLAT_CODE(0xC1010401));
    jbrg_sim::force_result("xsi_pbfs_user_delete_all_hide_account", PLAT_CODE(0xC1010405 + 0x100));
    jbrg_sim::force_result("xsi_pbfs_user_delete_all_hide_account", PLAT_CODE(0xC1010402));
    run_java(kJava, "otherCodesAreFour");
    EXPECT_THAT(traces_containing("::convert_retcode,failed"),
                ElementsAre(HasSubstr("failed. retcode = [" + signed_text(0xC1020402) + "]\n"),
                            HasSubstr("failed. retcode = [" + signed_text(0xC1010406) + "]\n"),
                            HasSubstr("failed. retcode = [" + signed_text(0xC1010401) + "]\n"),
                            HasSubstr("failed. retcode = [" + signed_text(0xC1010505) + "]\n")));
}

TEST_F(user_accounts, record_fields_cross_as_the_platform_lays_them_out) { run_java(kJava, "recordFields"); }

}  // namespace
