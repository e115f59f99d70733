// The simulated device's user store and authentication service, through their facades.
#include <gmock/gmock.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "jbrg_sim/auth.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_ais_auth.h"
#include "xsi_pbfs_user.h"

namespace {

class sim_users : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"users": {"local": [ {"login_name": "u1", "password": "p1", "rights": 0, "card": "C1"},
                                        {"login_name": "u2", "user_name": "Two", "id": 20},
                                        {"login_name": "u3", "email": "u3@x"} ],
                             "hidden": [ {"login_name": "h1", "password": "hp"} ], "hidden_limit": 2},
                   "auth": {"login_limit": 2, "domain_users": [ {"login_name": "u1", "password": "dp", "domain": "D"} ]}})";
    }
    xsi_pbfs_user_facade* store() { return xsi_pbfs_user_facade::xsi_pbfs_user_get_instance(); }
    xsi_ais_auth_facade* auth() { return xsi_ais_auth_facade::xsi_ais_auth_get_instance(); }
};

TEST_F(sim_users, a_listing_gives_the_count_asked_for_per_get_then_its_end) {
    dev_ulong handle = 0, total = 0, got = 9;
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_prepare(2, handle, total));
    EXPECT_NE(0U, handle);
    EXPECT_EQ(3U, total) << "hidden accounts are not listed";
    XSI_PBFS_USERINFO_RECORD records[2];
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list(handle, got, records));
    EXPECT_EQ(2U, got);
    EXPECT_STREQ("u1", records[0].login_name);
    EXPECT_EQ(XSI_PBFS_USER_RIGHTS_ADMIN, records[0].rights);
    EXPECT_STREQ("Two", records[1].user_name);
    EXPECT_EQ(XSI_PBFS_USER_RIGHTS_USER, records[1].rights) << "rights default to a user";
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list(handle, got, records));
    EXPECT_EQ(1U, got);
    EXPECT_STREQ("u3@x", records[0].email);
    EXPECT_EQ(XSI_PBFS_USER_ERR_END, store()->xsi_pbfs_user_get_local_user_list(handle, got, records));
    EXPECT_EQ(0U, got);
    dev_ulong second = 0;
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_prepare(1, second, total));
    EXPECT_NE(handle, second) << "open listings have distinct handles";
    EXPECT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_finish(handle));
    EXPECT_EQ(XSI_PBFS_USER_ERR_HANDLE, store()->xsi_pbfs_user_get_local_user_list_finish(handle));
    EXPECT_EQ(XSI_PBFS_USER_ERR_HANDLE, store()->xsi_pbfs_user_get_local_user_list(handle, got, records));
    EXPECT_EQ(XSI_PBFS_USER_ERR_PARAM, store()->xsi_pbfs_user_get_local_user_list_prepare(0, handle, total));
}

TEST_F(sim_users, hidden_accounts_have_a_limit_and_unique_names) {
    XSI_PBFS_HIDE_USERINFO_RECORD r{};
    std::strcpy(r.login_name, "u2");
    EXPECT_EQ(XSI_PBFS_USER_ERR_DUPLICATE_ID, store()->xsi_pbfs_user_create_hide_account(r));
    std::strcpy(r.login_name, "h2");
    EXPECT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_create_hide_account(r));
    std::strcpy(r.login_name, "h3");
    EXPECT_EQ(XSI_PBFS_USER_ERR_FULL, store()->xsi_pbfs_user_create_hide_account(r));
    r.login_name[0] = '\0';
    EXPECT_EQ(XSI_PBFS_USER_ERR_PARAM, store()->xsi_pbfs_user_create_hide_account(r));
    EXPECT_EQ(XSI_PBFS_USER_ERR_NOT_FOUND, store()->xsi_pbfs_user_delete_hide_account("u1"))
        << "a local user is not a hidden account";
}

TEST_F(sim_users, logins_are_limited_and_their_certificates_checked) {
    dev_ulong a = 0, b = 0, c = 0;
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_account_login("u1", "p1", XSI_AIS_AUTH_AUTHMODE_LOCAL, &a));
    EXPECT_EQ(XSI_AIS_AUTH_OK,
              auth()->xsi_ais_auth_account_login("u1", "dp", XSI_AIS_AUTH_AUTHMODE_NETWORK, "D", &b))
        << "the same login name in a domain is another account";
    EXPECT_NE(0U, a);
    EXPECT_NE(a, b);
    EXPECT_TRUE(jbrg_sim::auth::logged_in(a));
    EXPECT_FALSE(jbrg_sim::auth::logged_in(0));
    EXPECT_EQ(XSI_AIS_AUTH_ERR_LOGIN_LIMIT, auth()->xsi_ais_auth_idm_login("C1", &c));
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_logout(a));
    EXPECT_FALSE(jbrg_sim::auth::logged_in(a));
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_idm_login("C1", &c));
    EXPECT_NE(b, c);
    EXPECT_EQ(XSI_AIS_AUTH_ERR_PARAM,
              auth()->xsi_ais_auth_account_login("u1", "p1", static_cast<XSI_AIS_AUTH_AUTHMODE>(9), &a));
    XSI_AIS_USERINFO_RECORD info{};
    EXPECT_EQ(XSI_AIS_AUTH_ERR_NOT_FOUND, auth()->xsi_ais_auth_get_userinfo(XSI_AIS_AUTH_USERKIND_PANEL, info))
        << "nobody is logged in at the panel";
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_get_userinfo(XSI_AIS_AUTH_USERKIND_LATEST, info));
    EXPECT_STREQ("u1", info.login_name);
    EXPECT_EQ(1U, info.id);
}

TEST_F(sim_users, forced_out_values_and_a_new_load_start_again) {
    jbrg_sim::force_out("xsi_ais_auth_account_login", "cert_id", "0xFFFFFFFF");
    dev_ulong a = 0;
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_account_login("u1", "p1", XSI_AIS_AUTH_AUTHMODE_LOCAL, &a));
    EXPECT_EQ(0xFFFFFFFFU, a);
    jbrg_sim::reset();
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_account_login("u1", "p1", XSI_AIS_AUTH_AUTHMODE_LOCAL, &a));
    EXPECT_EQ(1U, a) << "certificate ids count from 1 again after a load";
}

TEST_F(sim_users, scenarios_that_do_not_read_are_refused) {
    for (const char* bad : {R"({"users": {"local": [ {"login_name": "x"}, {"login_name": "x"} ]}})",
                            R"({"users": {"local": [ {"password": "p"} ]}})",
                            R"({"users": {"local": [ {"login_name": "x", "colour": "red"} ]}})",
                            R"({"users": {"local": [ {"login_name": "x", "domain": "D"} ]}})",
                            R"({"auth": {"mode": 9}})", R"({"auth": {"first_certificate": 0}})",
                            R"({"auth": {"domain_users": [ {"login_name": "x"} ]}})"}) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
}


TEST_F(sim_users, a_local_user_added_at_run_time_is_listed_last_and_logs_in_until_the_next_load) {
    jbrg_sim::auth::local_user added;
    added.login_name = "u4";
    added.password = "p4";
    added.user_name = "Four";
    added.card = "C4";
    added.rights = 0;
    ASSERT_TRUE(jbrg_sim::auth::add_local_user(added));

    dev_ulong handle = 0, total = 0, got = 0;
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_prepare(8, handle, total));
    EXPECT_EQ(4U, total);
    XSI_PBFS_USERINFO_RECORD records[8];
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list(handle, got, records));
    ASSERT_EQ(4U, got);
    EXPECT_STREQ("u4", records[3].login_name);
    EXPECT_STREQ("Four", records[3].user_name);
    EXPECT_EQ(XSI_PBFS_USER_RIGHTS_ADMIN, records[3].rights);
    EXPECT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_finish(handle));

    dev_ulong cert = 0;
    EXPECT_EQ(XSI_AIS_AUTH_ERR_INVALID_PASSWORD,
              auth()->xsi_ais_auth_account_login("u4", "wrong", XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert));
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_account_login("u4", "p4", XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert));
    EXPECT_TRUE(jbrg_sim::auth::logged_in(cert));
    dev_ulong by_card = 0;
    EXPECT_EQ(XSI_AIS_AUTH_OK, auth()->xsi_ais_auth_idm_login("C4", &by_card)) << "the card logs in as well";

    jbrg_sim::reset();
    EXPECT_EQ(XSI_AIS_AUTH_ERR_NOT_FOUND,
              auth()->xsi_ais_auth_account_login("u4", "p4", XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert))
        << "a reset goes back to the scenario's users";
}

TEST_F(sim_users, a_local_user_is_refused_without_a_login_name_or_with_one_in_use) {
    jbrg_sim::auth::local_user user;
    EXPECT_FALSE(jbrg_sim::auth::add_local_user(user));
    user.login_name = "u2";
    EXPECT_FALSE(jbrg_sim::auth::add_local_user(user)) << "a local user's name";
    user.login_name = "h1";
    EXPECT_FALSE(jbrg_sim::auth::add_local_user(user)) << "a hidden account's name";
    dev_ulong handle = 0, total = 0;
    ASSERT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_prepare(8, handle, total));
    EXPECT_EQ(3U, total);
    EXPECT_EQ(XSI_PBFS_USER_OK, store()->xsi_pbfs_user_get_local_user_list_finish(handle));
}

}  // namespace
