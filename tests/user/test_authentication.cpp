// Logins, rights, the authentication mode and the local user list, driven from Java through the user
// module, with the platform calls and trace lines they leave on the simulated device.
#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "core/cjvm.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "user/qsf_fnd_authentication.h"
#include "xsi_ais_auth.h"
#include "xsi_pbfs_user.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using jbrg_test::traces_containing;

constexpr const char* kJava = "jbrg/test/user/Authentication";

const char kDevice[] = R"({
  "users": {
    "local": [
      {"login_name": "alice", "password": "wonder", "user_name": "Alice Liddell", "email": "alice@example.com",
       "rights": 0, "card": "04A1B2C3"},
      {"login_name": "bob", "password": "builder", "user_name": "Bob Builder", "email": "bob@example.com",
       "rights": 1},
      {"login_name": "guest", "password": "", "user_name": "Guest", "rights": 2}
    ],
    "hidden": [ {"login_name": "svc", "password": "svcpw"} ]
  },
  "auth": {
    "mode": 1, "login_limit": 3, "first_certificate": 2147483648, "panel_user": "bob",
    "domain_users": [ {"login_name": "carol", "password": "c4", "domain": "CORP", "rights": 0,
                       "duplex_limit": 1} ]
  }
})";

std::string signed_text(uint32_t code) { return std::to_string(static_cast<int32_t>(code)); }

class user_authentication : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override { return kDevice; }
    void SetUp() override {
        bridge_test::SetUp();
        // As the library's start-up does before any Java application runs.
        orvane::CJvm::CreateJVM();
    }
    std::string java_property(const char* name) {
        JNIEnv* e = jbrg_test::env();
        jclass system = e->FindClass("java/lang/System");
        jmethodID get = e->GetStaticMethodID(system, "getProperty", "(Ljava/lang/String;)Ljava/lang/String;");
        jstring key = e->NewStringUTF(name);
        auto value = static_cast<jstring>(e->CallStaticObjectMethod(system, get, key));
        EXPECT_EQ("", take_exception());
        return value == nullptr ? "" : text(value);
    }
};

TEST_F(user_authentication, password_logins_hand_out_certificates_until_logout) {
    run_java(kJava, "passwordLoginsHandOutCertificatesUntilLogout");
    auto logins = jbrg_sim::calls_of("xsi_ais_auth_account_login");
    ASSERT_EQ(3U, logins.size());
    EXPECT_THAT(logins[0].args, ElementsAre("alice", "wonder", "1", MatchesRegex("0x.*")));
    auto outs = jbrg_sim::calls_of("xsi_ais_auth_logout");
    ASSERT_EQ(2U, outs.size());
    EXPECT_THAT(outs[0].args, ElementsAre("2147483648"));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_auth_logout_bkg")[0].args, ElementsAre("2147483649"));
    EXPECT_THAT(traces_containing("::login,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr("success. result = [0], cert_id = [2147483648]\n"),
                            HasSubstr("[Enter]"), HasSubstr("success. result = [0], cert_id = [2147483649]\n"),
                            HasSubstr("[Enter]"), HasSubstr("success. result = [0], cert_id = [2147483650]\n")));
    EXPECT_THAT(traces_containing("::logout_bkg,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr("cert_id = [2147483649]"), HasSubstr("success. result = [0]"),
                            HasSubstr("[Enter]"), HasSubstr("cert_id = [2147483649]"),
                            HasSubstr("invalid certificate. result = [" + signed_text(0xC102040D) + "]")));
    for (const std::string& line : traces_containing("qsf_fnd_authentication.cpp[")) {
        EXPECT_THAT(line, MatchesRegex("qsf_fnd_authentication\\.cpp\\[[0-9]{4}\\]::[a-z_]+,.*\n"));
    }
}

TEST_F(user_authentication, failed_logins_write_certificate_zero_and_trace_result) {
    run_java(kJava, "failedLoginsWriteCertificateZero");
    EXPECT_THAT(traces_containing("::login,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr(",invalid password. result = [" + signed_text(0xC1020401) + "]\n"),
                            HasSubstr("[Enter]"), HasSubstr(",not found. result = [" + signed_text(0xC1020402) + "]\n"),
                            HasSubstr("[Enter]"), HasSubstr(",not found. result = [" + signed_text(0xC1020402) + "]\n")));
}

TEST_F(user_authentication, domain_logins_trace_retcode_and_the_certificate) {
    run_java(kJava, "domainLogins");
    auto logins = jbrg_sim::calls_of("xsi_ais_auth_account_login");
    ASSERT_EQ(4U, logins.size());
    EXPECT_THAT(logins[0].args, ElementsAre("carol", "c4", "2", "CORP", MatchesRegex("0x.*")));
    EXPECT_THAT(traces_containing("::login,"),
                ElementsAre(HasSubstr(",[Enter]"), HasSubstr(",cert_id = [2147483648]\n"),
                            HasSubstr(",success. retcode = [0], cert_id = [2147483648]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",cert_id = [0]\n"),
                            HasSubstr(",invalid password. retcode = [" + signed_text(0xC1020401) + "]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",cert_id = [0]\n"),
                            HasSubstr(",not found. retcode = [" + signed_text(0xC1020402) + "]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",cert_id = [2147483649]\n"),
                            HasSubstr(",success. retcode = [0], cert_id = [2147483649]\n")));
}

TEST_F(user_authentication, the_login_limit_gives_five_in_both_forms) {
    run_java(kJava, "theLoginLimitGivesFive");
    EXPECT_THAT(traces_containing("login limit"),
                ElementsAre(HasSubstr("::login,login limit. retcode = [" + signed_text(0xC102040C) + "]\n"),
                            HasSubstr("::login,login limit. retcode = [" + signed_text(0xC102040C) + "]\n")));
}

TEST_F(user_authentication, card_logins_pass_the_card_data_and_never_a_null_one) {
    run_java(kJava, "cardLogins");
    auto calls = jbrg_sim::calls_of("xsi_ais_auth_idm_login");
    ASSERT_EQ(2U, calls.size()) << "no card data never reaches the platform";
    EXPECT_EQ("04A1B2C3", calls[0].args[0]);
    EXPECT_EQ("FFFF", calls[1].args[0]);
}

TEST_F(user_authentication, logout_tells_apart_only_the_invalid_certificate) {
    // A code login tells apart, and one nobody knows.
    for (uint32_t code : {0xC1020401U, 0xC1029999U}) {
        jbrg_sim::force_result("xsi_ais_auth_logout", PLAT_CODE(code));
        jbrg_sim::force_result("xsi_ais_auth_logout_bkg", PLAT_CODE(code));
    }
    run_java(kJava, "logoutFailuresOtherThanTheCertificateAreFour");
    EXPECT_THAT(traces_containing("::logout,failed. result = [" + signed_text(0xC1020401) + "]"), testing::SizeIs(1));
}

TEST_F(user_authentication, login_failures_not_told_apart_are_four) {
    jbrg_sim::force_result("xsi_ais_auth_account_login", PLAT_CODE(0xC1020499));
    jbrg_sim::force_result("xsi_ais_auth_account_login", PLAT_CODE(0xC102040D));
    run_java(kJava, "loginFailuresNotToldApartAreFour");
    EXPECT_THAT(traces_containing("::login,failed. result = ["), testing::SizeIs(2));
}

TEST_F(user_authentication, rights_of_users_and_their_traces) {
    run_java(kJava, "rights");
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_auth_get_rights")[4].args,
                ElementsAre("carol", "c4", "CORP", MatchesRegex("0x.*")));
    EXPECT_THAT(traces_containing("::get_rights,"),
                ElementsAre(HasSubstr(",[Enter]"), HasSubstr(",success. result = [0], level = [0]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",success. result = [0], level = [1]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",invalid password. result = [" + signed_text(0xC1020401) + "]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",not found. result = [" + signed_text(0xC1020402) + "]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",success. retcode = [0], level = [0]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",invalid password. retcode = [" + signed_text(0xC1020401) + "]\n"),
                            HasSubstr(",[Enter]"), HasSubstr(",not found. retcode = [" + signed_text(0xC1020402) + "]\n")));
}

TEST_F(user_authentication, rights_failures_keep_their_two_trace_forms) {
    jbrg_sim::force_result("xsi_ais_auth_get_rights", PLAT_CODE(0xC102040C), 2);
    run_java(kJava, "rightsFailures");
    const std::string code = signed_text(0xC102040C);
    EXPECT_THAT(traces_containing("::get_rights,failed"),
                ElementsAre(HasSubstr(",failed. result = " + code + "\n"),
                            HasSubstr(",failed. retcode = [" + code + "]\n")));
}

TEST_F(user_authentication, authentication_and_function_modes) {
    run_java(kJava, "authenticationModes");
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre(MatchesRegex("xsi_ais_auth_get_authentication_mode\\(0x.*\\)"),
                            "xsi_ais_auth_set_authentication_mode(2)",
                            MatchesRegex("xsi_ais_auth_get_authentication_mode\\(0x.*\\)"),
                            "xsi_ais_auth_set_authentication_mode(7)", "xsi_ais_auth_set_func_auth_mode(1)",
                            "xsi_ais_auth_set_func_auth_mode(5)"));
    EXPECT_THAT(traces_containing("::get_auth_mode,success"),
                ElementsAre(HasSubstr("success. result = [0], mode = [1]\n"),
                            HasSubstr("success. result = [0], mode = [2]\n")));
    EXPECT_THAT(traces_containing("::set_func_login_mode,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr(",retcode = [0]\n"), HasSubstr("[Enter]"),
                            HasSubstr(",retcode = [" + signed_text(0xC1020403) + "]\n")));
}

TEST_F(user_authentication, a_failed_mode_read_leaves_the_record) {
    jbrg_sim::force_result("xsi_ais_auth_get_authentication_mode", PLAT_CODE(0xC1020400));
    run_java(kJava, "aFailedModeReadLeavesTheRecord");
}

TEST_F(user_authentication, login_user_info_of_the_panel_and_the_latest_login) {
    run_java(kJava, "loginUserInfo");
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_auth_get_userinfo")[0].args, ElementsAre("0", MatchesRegex("0x.*")));
}

TEST_F(user_authentication, local_users_become_user_objects_one_get_at_a_time) {
    run_java(kJava, "localUsersBecomeUserObjects");
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre(MatchesRegex("xsi_pbfs_user_get_local_user_list_prepare\\(1, 0x.*, 0x.*\\)"),
                            "emwOSWSubAllocMem(1192)",
                            MatchesRegex("xsi_pbfs_user_get_local_user_list\\(1, 0x.*, 0x.*\\)"),
                            MatchesRegex("xsi_pbfs_user_get_local_user_list\\(1, 0x.*, 0x.*\\)"),
                            MatchesRegex("xsi_pbfs_user_get_local_user_list\\(1, 0x.*, 0x.*\\)"),
                            "emwOSWOrgFreeMemPart(0, block)", "xsi_pbfs_user_get_local_user_list_finish(1)"));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
    EXPECT_THAT(traces_containing("total_get_num"),
                ElementsAre(HasSubstr("::get_local_user_list,total_get_num=(0), total_num=(3), get_num=(0)\n"),
                            HasSubstr("total_get_num=(1), total_num=(3), get_num=(1)\n"),
                            HasSubstr("total_get_num=(2), total_num=(3), get_num=(1)\n")));
}

TEST_F(user_authentication, a_listing_that_fails_or_is_empty_keeps_what_it_added_and_closes_once_it_was_opened) {
    struct row {
        const char* what;
        std::function<void()> fault;
        const char* result;  // of get_local_user_list
        const char* size;    // of the list, whose first element was there before
        std::size_t gets, finishes;
        std::string trace;
    };
    const row table[] = {
        // The store claims five users but has three: the fourth get finds the listing's end.
        {"a failing get", [] { jbrg_sim::force_out("xsi_pbfs_user_get_local_user_list_prepare", "total", "5"); },
         "4", "4", 4, 1, "failed. ret(" + signed_text(0xC1010407) + ")\n"},
        {"a failing prepare",
         [] { jbrg_sim::force_result("xsi_pbfs_user_get_local_user_list_prepare", PLAT_CODE(0xC1010401)); }, "4",
         "1", 0, 0, "failed. result(" + signed_text(0xC1010401) + ")\n"},
        {"no transfer record", [] { jbrg_sim::force_result("emwOSWSubAllocMem", 1); }, "4", "1", 0, 1,
         "user_info == NULL."},
        {"a finish that fails still succeeds",
         [] { jbrg_sim::force_result("xsi_pbfs_user_get_local_user_list_finish", PLAT_CODE(0xC1010404)); }, "0", "4",
         3, 1, "failed. result(" + signed_text(0xC1010404) + ")\n"},
        {"a get that gives nothing", [] { jbrg_sim::force_out("xsi_pbfs_user_get_local_user_list", "get_num", "0"); },
         "0", "1", 1, 1, "get_num == 0."},
        // Last: the empty store stays loaded for what follows in this case.
        {"an empty store", [] { jbrg_sim::load_scenario("{}"); }, "0", "1", 0, 1, "total_num == 0."},
    };
    for (const row& r : table) {
        jbrg_sim::reset();
        r.fault();
        run_java(kJava, "listingKeepsWhatWasThere");
        EXPECT_EQ(r.result, java_property("jbrg.test.user.result")) << r.what;
        EXPECT_EQ(r.size, java_property("jbrg.test.user.size")) << r.what;
        EXPECT_EQ(r.gets, jbrg_sim::calls_of("xsi_pbfs_user_get_local_user_list").size()) << r.what;
        EXPECT_EQ(r.finishes, jbrg_sim::calls_of("xsi_pbfs_user_get_local_user_list_finish").size()) << r.what;
        EXPECT_EQ(0U, jbrg_sim::blocks_in_use()) << r.what;
        EXPECT_THAT(traces_containing(r.trace), testing::SizeIs(1)) << r.what;
    }
}

TEST_F(user_authentication, only_array_lists_are_filled) {
    run_java(kJava, "onlyArrayListsAreFilled");
    EXPECT_THAT(jbrg_sim::calls(), IsEmpty());
}

TEST_F(user_authentication, without_an_environment_the_list_is_not_read) {
    JavaVM* vm = orvane::CJvm::ms_jvm;
    orvane::CJvm::ms_jvm = nullptr;
    orvane::qsf_fnd_authentication a;
    int result = a.get_local_user_list(nullptr);
    orvane::CJvm::ms_jvm = vm;
    EXPECT_EQ(4, result);
    EXPECT_THAT(jbrg_sim::calls(), IsEmpty());
    EXPECT_THAT(traces_containing("GetJNIEnv() failed."), testing::SizeIs(1));
}

TEST_F(user_authentication, user_objects_built_from_java) {
    run_java(kJava, "userObjectsBuiltFromJava");
    run_java(kJava, "buildersServeAnyThread");
}

TEST_F(user_authentication, null_arguments_are_refused_before_the_platform) {
    run_java(kJava, "nullArgumentsAreRefusedBeforeThePlatform");
    EXPECT_THAT(jbrg_sim::calls(), IsEmpty());
}

}  // namespace
