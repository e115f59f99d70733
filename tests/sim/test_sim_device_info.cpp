// The simulated device's system information, energy saving, panel reset timer, card reader settings and web
// services, as the bridge meets them.
#include <gtest/gtest.h>

#include <atomic>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/smart_card.h"
#include "jbrg_sim/system_info.h"
#include "jbrg_sim/webservice.h"
#include "tests/harness/bridge_test.h"
#include "xdc_com_std.h"
#include "xsi_ais_auth.h"
#include "xsi_ais_job.h"
#include "xsi_pbfs_esm.h"
#include "xsi_pbfs_panel.h"
#include "xsi_pbfs_systeminfo.h"
#include "xsi_pbfs_webservice.h"

namespace {

class device_info : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"users": {"local": [{"login_name": "admin", "password": "a", "rights": 0},
                                       {"login_name": "bob", "password": "b", "rights": 1},
                                       {"login_name": "carol", "password": "c", "rights": 1}]}})";
    }

    static xsi_pbfs_systeminfo_facade& sys() { return *xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_instance(); }
    static xsi_ais_job_facade& job() { return *xsi_ais_job_facade::xsi_ais_job_get_instance(); }
    static xsi_pbfs_esm_facade& esm() { return *xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance(); }
    static xdc_com_std_facade& reader() { return *xdc_com_std_facade::get_instance(); }
    static xsi_pbfs_webservice_facade& web() { return *xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_instance(); }

    static dev_ulong login(const std::string& name, const std::string& password) {
        dev_ulong cert = 0;
        EXPECT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_account_login(
                                       name, password, XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert));
        return cert;
    }

    // A user job of `category` with the given settings, kicked and left running; its id.
    static unsigned kick(XSI_AIS_JOB_CATEGORY category, unsigned size, unsigned colour,
                         int box_job_type = 0) {
        unsigned handler = 0, service = 0, user_job = 0;
        EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(category, handler));
        EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_set_value(handler, XSI_AIS_JOB_SETTING_ORIGINAL_SIZE, size));
        EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_set_value(handler, XSI_AIS_JOB_SETTING_COLOR_MODE, colour));
        if (box_job_type != 0) {
            XSI_AIS_BOX_JOB_INIT_SETTING box{};
            box.box_job_type = static_cast<dev_ulong>(box_job_type);
            EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_box_job_prepare(handler, box));
        }
        EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(category, handler, service));
        EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_kick(service, user_job));
        return user_job;
    }

    static dev_ulong count(uint32_t kind, uint32_t size, uint32_t colour) {
        XSI_PBFS_COUNT_INFO query{kind, size, colour};
        dev_ulong n = 0;
        EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_count(query, n));
        return n;
    }
};

// Hears what the status monitor says about sleep, and from which thread.
class sleep_observer : public xsi_pbfs_esm_observer {
public:
    PLAT_RESULT notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE state) override {
        states.push_back(state);
        // The state is already the machine's when the observers hear it.
        seen_by_device.push_back(jbrg_sim::esm::sleep_state());
        return 0;
    }
    std::vector<int> states;
    std::vector<int> seen_by_device;
};

// ---- Scenario -------------------------------------------------------------------------------------------

TEST_F(device_info, sections_that_do_not_read_are_refused_and_change_nothing) {
    for (const char* bad : {
             R"({"system_info": {"colour": 1}})",
             R"({"system_info": {"model_type": 5}})",
             R"({"system_info": {"settings": [{"key": 101, "value": 241}]}})",
             R"({"system_info": {"settings": [{"key": 1, "value": 3}]}})",
             R"({"system_info": {"settings": [{"key": 9000}]}})",
             R"({"system_info": {"settings": [{"key": 101, "value": 2}, {"key": 101, "value": 3}]}})",
             R"({"system_info": {"paper_sources": [{"key": 405}]}})",
             R"({"system_info": {"fax_lines": [{"key": 500, "encrypted": 1}]}})",
             R"({"system_info": {"counters": [{"kind": 7, "size": 1, "color": 1, "count": 1}]}})",
             R"({"system_info": {"counters": [{"kind": 0, "size": 0, "color": 1, "count": 1}]}})",
             R"({"esm": {"state": 4}})",
             R"({"esm": {"state": 2, "prohibited": true}})",
             R"({"esm": {"suspended_by": ["a", "a"]}})",
             R"({"esm": {"suspended_by": [""]}})",
             R"({"smart_card": {"reader": {"vendor": 65536}}})",
             R"({"smart_card": {"event_masks": 64}})",
             R"({"smart_card": {"felica": [{"number": 2}]}})",
             R"({"smart_card": {"felica": [{"services": [{"blocks": 16}]}]}})",
             R"({"smart_card": {"mifare": [{"key": "A0A1A2A3A4"}]}})",
             R"({"smart_card": {"mifare": [{"key": "A0A1A2A3A4A5", "sector": 40}]}})",
             R"({"webservice": {"unsupported": [4]}})",
             R"({"webservice": {"unsupported": [3], "reserved": [{"kind": 3, "app_id": "x"}]}})",
             R"({"webservice": {"reserved": [{"kind": 0, "app_id": ""}]}})",
             R"({"webservice": {"missing_certificates": [3]}})",
         }) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_SLEEP_TIMER), 30u);
    EXPECT_TRUE(jbrg_sim::smart_card::reader_attached());
    EXPECT_EQ(jbrg_sim::esm::sleep_state(), XSI_PBFS_SLEEP_STATE_AWAKE);
}

TEST_F(device_info, a_scenario_sets_the_machine_and_a_load_restores_its_content) {
    jbrg_sim::load_scenario(R"({
        "system_info": {"model_type": 1, "screen_size": 3, "copy_service_mode": true,
                        "settings": [{"key": 101, "value": 15}, {"key": 1, "text": "Floor 3"},
                                     {"key": 9000, "value": 3, "min": 0, "max": 9}],
                        "paper_sources": [{"key": 403, "remain": 1, "size": 7, "direction": 1, "kind": 2}],
                        "counters": [{"kind": 2, "size": 2, "color": 1, "count": 1200}]},
        "esm": {"state": 2, "suspended_by": ["app"]},
        "smart_card": {"reader": null, "mifare": [{"number": 4, "key_type": 1, "key": "a0a1a2a3a4a5", "sector": 39}]},
        "webservice": {"reserved": [{"kind": 2, "app_id": "ews-app"}]}})");
    unsigned value = 0;
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY_SLEEP_TIMER, 0, value));
    EXPECT_EQ(15u, value);
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_machine_info(static_cast<XSI_PBFS_ENTKEY>(9000), 0, value));
    EXPECT_EQ(3u, value);
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_COLOR_SUPPORTED), 0u) << "a mono model prints no colour";
    EXPECT_EQ(jbrg_sim::system_info::setting_text(XSI_PBFS_ENTKEY_MACHINE_NAME), "Floor 3");
    XSI_PBFS_PAPER_INFO paper{};
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY_PAPER_SOURCE_4, paper));
    EXPECT_EQ(XSI_PBFS_PAPER_SIZE_LEGAL, paper.paper_size);
    EXPECT_EQ(XSI_PBFS_PAPER_KIND_THICK, paper.paper_kind);
    EXPECT_EQ(XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR,
              sys().xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY_PAPER_SOURCE_1, paper))
        << "the scenario's sources are all the machine has";
    EXPECT_EQ(1200u, count(XSI_PBFS_COUNT_KIND_PRINTER, 0, 0));
    unsigned char mode = 0;
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_copy_service_mode(0, mode));
    EXPECT_EQ(1, mode);
    EXPECT_EQ(XSI_PBFS_SYSINFO_LOGIN_ERROR, sys().xsi_pbfs_systeminfo_get_copy_service_mode(77, mode));
    EXPECT_EQ(jbrg_sim::esm::sleep_state(), XSI_PBFS_SLEEP_STATE_SLEEP);
    EXPECT_EQ(jbrg_sim::esm::deep_sleep_suspended_by(), std::vector<std::string>{"app"});
    EXPECT_FALSE(jbrg_sim::smart_card::reader_attached());
    ASSERT_TRUE(jbrg_sim::smart_card::mifare_setting(4).has_value());
    EXPECT_EQ(0xA5, jbrg_sim::smart_card::mifare_setting(4)->key[5]);
    EXPECT_EQ("ews-app", jbrg_sim::webservice::reserved_by(XSI_PBFS_WEBSERVICE_KIND_EWS));

    // Changes made since are the device's content: a reset goes back to the scenario.
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_SLEEP_TIMER, 0, 60));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_resume_deep_sleep("app"));
    jbrg_sim::reset();
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_SLEEP_TIMER), 15u);
    EXPECT_EQ(jbrg_sim::esm::deep_sleep_suspended_by(), std::vector<std::string>{"app"});
}

// ---- System information ----------------------------------------------------------------------------------

TEST_F(device_info, settings_keep_their_ranges_and_their_owners_rights) {
    unsigned value = 0;
    std::string text = "unchanged";
    EXPECT_EQ(XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR,
              sys().xsi_pbfs_systeminfo_get_machine_info(static_cast<XSI_PBFS_ENTKEY>(9000), 0, value));
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY_SERIAL_NUMBER, 0, value))
        << "a text has no number";
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY_LANGUAGE, 0, text));
    EXPECT_EQ("0", text) << "a number reads as decimal text";

    // Ranges: the value stays as it was after a refusal; the panel reset time may also be off (0).
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_SLEEP_TIMER, 0, 241));
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_PANEL_RESET_TIME, 0, 4));
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_PANEL_RESET_TIME, 0, 0));
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_SLEEP_TIMER, 0, 240));
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_SLEEP_TIMER), 240u);
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_PANEL_RESET_TIME), 0u);

    // Rights: read-only for everyone, the administrator's only through an administrator's login.
    const dev_ulong admin = login("admin", "a");
    const dev_ulong bob = login("bob", "b");
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR_COMPETENCE,
              sys().xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY_COLOR_SUPPORTED, admin, 0));
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR_COMPETENCE, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_ADMIN_LOCK, admin, 1))
        << "the plain call acts for the panel, not for the login";
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR_COMPETENCE, sys().xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY_ADMIN_LOCK, bob, 1));
    EXPECT_EQ(XSI_PBFS_SYSINFO_LOGIN_ERROR, sys().xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY_ADMIN_LOCK, 999, 1));
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_ADMIN_LOCK), 0u);
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY_ADMIN_LOCK, admin, 1));
    EXPECT_EQ(jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_ADMIN_LOCK), 1u);
}

TEST_F(device_info, a_login_setting_is_each_accounts_own) {
    const dev_ulong bob = login("bob", "b");
    const dev_ulong carol = login("carol", "c");
    unsigned value = 7;
    EXPECT_EQ(XSI_PBFS_SYSINFO_LOGIN_ERROR, sys().xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, bob, value));
    EXPECT_EQ(XSI_PBFS_SYSINFO_LOGIN_ERROR, sys().xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, 0, 5));
    EXPECT_EQ(7u, value);
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, bob, 500));
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, carol, value));
    EXPECT_EQ(0u, value);
    // A new login of the same account finds its value again.
    EXPECT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_logout(bob));
    EXPECT_EQ(XSI_PBFS_SYSINFO_LOGIN_ERROR,
              sys().xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, bob, value));
    const dev_ulong again = login("bob", "b");
    std::string text;
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY_USER_COLOR_LIMIT, again, text));
    EXPECT_EQ("500", text);
}

TEST_F(device_info, counters_advance_with_the_pages_of_the_jobs_that_run) {
    jbrg_sim::load_scenario(R"({"job": {"pages": 3},
                                "system_info": {"counters": [{"kind": 0, "size": 2, "color": 2, "count": 10}]}})");
    const unsigned copy = kick(XSI_AIS_JOB_CATEGORY_COPY, XSI_PBFS_PAPER_SIZE_A4, 2);
    const unsigned scan = kick(XSI_AIS_JOB_CATEGORY_SCAN, XSI_PBFS_PAPER_SIZE_A3, 1);
    const unsigned print = kick(XSI_AIS_JOB_CATEGORY_BOX, 0, 1, XSI_AIS_BOX_JOB_PRINT);
    const unsigned send = kick(XSI_AIS_JOB_CATEGORY_BOX, XSI_PBFS_PAPER_SIZE_A4, 1, XSI_AIS_BOX_JOB_SEND);
    EXPECT_EQ(10u, count(XSI_PBFS_COUNT_KIND_PRINT_TOTAL, 0, 0)) << "nothing counts before a page goes through";
    for (unsigned id : {copy, scan, print, send}) ASSERT_TRUE(jbrg_sim::job::finish(id));

    EXPECT_EQ(3u, count(XSI_PBFS_COUNT_KIND_COPY, XSI_PBFS_PAPER_SIZE_A4, XSI_PBFS_COUNT_COLOR_FULL));
    EXPECT_EQ(3u, count(XSI_PBFS_COUNT_KIND_PRINTER, XSI_PBFS_PAPER_SIZE_OTHER, XSI_PBFS_COUNT_COLOR_MONO))
        << "an automatic size counts as other";
    EXPECT_EQ(16u, count(XSI_PBFS_COUNT_KIND_PRINT_TOTAL, 0, 0)) << "copy and box print, over the scenario's 10";
    EXPECT_EQ(13u, count(XSI_PBFS_COUNT_KIND_PRINT_TOTAL, XSI_PBFS_PAPER_SIZE_A4, XSI_PBFS_COUNT_COLOR_FULL));
    EXPECT_EQ(3u, count(XSI_PBFS_COUNT_KIND_SCAN, 0, 0));
    EXPECT_EQ(6u, count(XSI_PBFS_COUNT_KIND_SCAN_TOTAL, 0, 0)) << "the copy's originals and the scan";
    EXPECT_EQ(3u, count(XSI_PBFS_COUNT_KIND_SCAN_TOTAL, XSI_PBFS_PAPER_SIZE_A3, 0));
    EXPECT_EQ(0u, count(XSI_PBFS_COUNT_KIND_FAX_SEND, 0, 0));
    EXPECT_EQ(jbrg_sim::system_info::count(XSI_PBFS_COUNT_KIND_COPY, 0, 0), 3u);

    XSI_PBFS_COUNT_INFO bad{XSI_PBFS_COUNT_KIND_NUM, 0, 0};
    dev_ulong n = 99;
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_get_count(bad, n));
    bad = {0, XSI_PBFS_PAPER_SIZE_NUM, 0};
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_get_count(bad, n));
    bad = {0, 0, 3};
    EXPECT_EQ(XSI_PBFS_SYSINFO_ERROR, sys().xsi_pbfs_systeminfo_get_count(bad, n));
    EXPECT_EQ(99u, n);
}

TEST_F(device_info, the_machine_answers_for_what_it_has_and_forced_values_reach_the_caller) {
    XSI_PBFS_PAPER_INFO paper{};
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY_PAPER_SOURCE_MP, paper));
    EXPECT_EQ(XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR, sys().xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY_PAPER_SOURCE_3, paper));
    unsigned char valid = 9;
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_fax_encryption_validity(XSI_PBFS_ENTKEY_FAX_LINE_1, valid));
    EXPECT_EQ(0, valid);
    EXPECT_EQ(XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR,
              sys().xsi_pbfs_systeminfo_get_fax_encryption_validity(XSI_PBFS_ENTKEY_FAX_LINE_2, valid));

    jbrg_sim::force_out("xsi_pbfs_systeminfo_get_model_type", "type", "4");
    jbrg_sim::force_out("xsi_pbfs_systeminfo_get_paper_info", "paper_remain", "1");
    unsigned type = 0;
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_model_type(type));
    EXPECT_EQ(4u, type);
    EXPECT_EQ(XSI_PBFS_SYSINFO_OK, sys().xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY_PAPER_SOURCE_1, paper));
    EXPECT_EQ(XSI_PBFS_PAPER_REMAIN_LOW, paper.paper_remain);
    EXPECT_EQ(XSI_PBFS_PAPER_SIZE_A4, paper.paper_size);
    XSI_PBFS_COUNT_INFO query{1, 2, 0};
    dev_ulong n = 0;
    sys().xsi_pbfs_systeminfo_get_count(query, n);
    EXPECT_EQ(jbrg_sim::calls_of("xsi_pbfs_systeminfo_get_count").at(0).args.at(0),
              "{count_kind=1, paper_size=2, color_info=0}");
}

// ---- Energy saving ---------------------------------------------------------------------------------------

TEST_F(device_info, energy_saving_waits_for_running_jobs_and_the_observers_hear_the_new_state) {
    sleep_observer observer;
    ASSERT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_add_observer(&observer));
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_request_energy_saving_mode(static_cast<XSI_PBFS_ESM_STATUS_SLEEP>(0)));
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_request_energy_saving_mode(static_cast<XSI_PBFS_ESM_STATUS_SLEEP>(4)));

    const unsigned running = kick(XSI_AIS_JOB_CATEGORY_COPY, 0, 0);
    EXPECT_EQ(XSI_PBFS_ESM_BUSY, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_NORMAL));
    EXPECT_EQ(jbrg_sim::esm::sleep_state(), XSI_PBFS_SLEEP_STATE_AWAKE);
    ASSERT_TRUE(jbrg_sim::job::finish(running));

    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_NORMAL));
    EXPECT_EQ(observer.states, std::vector<int>{XSI_PBFS_SLEEP_STATE_SLEEP}) << "heard before the request answered";
    EXPECT_EQ(observer.seen_by_device, std::vector<int>{XSI_PBFS_SLEEP_STATE_SLEEP});
    EXPECT_EQ(0, jbrg_sim::esm::wake_up());
    EXPECT_EQ(0, jbrg_sim::esm::wake_up()) << "an awake machine wakes nobody";
    EXPECT_EQ(observer.states, (std::vector<int>{XSI_PBFS_SLEEP_STATE_SLEEP, XSI_PBFS_SLEEP_STATE_AWAKE}));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_remove_observer(&observer));
}

TEST_F(device_info, prohibition_and_suspension_hold_until_released) {
    sleep_observer observer;
    ASSERT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_add_observer(&observer));
    ASSERT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_LOW_POWER));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_save_mode_prohibition(true));
    EXPECT_EQ(jbrg_sim::esm::sleep_state(), XSI_PBFS_SLEEP_STATE_AWAKE) << "prohibition wakes the machine";
    EXPECT_EQ(XSI_PBFS_ESM_PROHIBITED, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_LOW_POWER));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_save_mode_prohibition(false));
    EXPECT_FALSE(jbrg_sim::esm::save_mode_prohibited());
    EXPECT_EQ(observer.states, (std::vector<int>{XSI_PBFS_SLEEP_STATE_LOW_POWER, XSI_PBFS_SLEEP_STATE_AWAKE}));

    const std::string too_long(XSI_PBFS_ESM_APP_ID_SIZE, 'a');
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_suspend_deep_sleep(nullptr));
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_suspend_deep_sleep(too_long.c_str()));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_suspend_deep_sleep("one"));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_suspend_deep_sleep("two"));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_suspend_deep_sleep("one"));
    EXPECT_EQ(XSI_PBFS_ESM_NOT_SUSPENDED, esm().xsi_pbfs_esm_resume_deep_sleep("three"));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_resume_deep_sleep("one"));
    EXPECT_EQ(XSI_PBFS_ESM_PROHIBITED, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_DEEP))
        << "another application still suspends it";
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_NORMAL))
        << "only deep sleep is suspended";
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_resume_deep_sleep("two"));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_DEEP));
    EXPECT_EQ(jbrg_sim::esm::sleep_state(), XSI_PBFS_SLEEP_STATE_DEEP_SLEEP);
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_remove_observer(&observer));
}

TEST_F(device_info, wake_up_dates_are_kept_per_application_and_must_lie_ahead) {
    const dev_ulong soon = static_cast<dev_ulong>(std::time(nullptr) + 3600);
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_set_wakeup_date("a", static_cast<dev_ulong>(std::time(nullptr) - 1)));
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_set_wakeup_date("a", 0x80000000u));
    EXPECT_EQ(XSI_PBFS_ESM_PARAM_ERROR, esm().xsi_pbfs_esm_set_wakeup_date("", soon));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_set_wakeup_date("a", soon));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_set_wakeup_date("b", soon + 1));
    EXPECT_EQ(XSI_PBFS_ESM_OK, esm().xsi_pbfs_esm_set_wakeup_date("a", 0));
    EXPECT_FALSE(jbrg_sim::esm::wakeup_date("a").has_value());
    EXPECT_EQ(jbrg_sim::esm::wakeup_date("b"), soon + 1);
}

// ---- Panel reset timer -----------------------------------------------------------------------------------

class reset_counter : public xsi_pbfs_panel_observer {
public:
    PLAT_RESULT notify_auto_panel_reset() override {
        ++resets;
        return 0;
    }
    std::atomic<int> resets{0};
};

TEST_F(device_info, the_reset_timer_runs_only_while_no_application_holds_it) {
    xsi_pbfs_panel_facade& panel = *xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance();
    reset_counter observer;
    ASSERT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_add_observer(&observer));
    EXPECT_EQ(XSI_PBFS_PANEL_PARAM_ERROR, panel.xsi_pbfs_panel_reset_timer_ctrl("", XSI_PBFS_PNL_RST_TMR_STOP));
    EXPECT_EQ(XSI_PBFS_PANEL_PARAM_ERROR, panel.xsi_pbfs_panel_reset_timer_ctrl("a", static_cast<XSI_PBFS_PNL_RST_TMR>(3)));
    EXPECT_EQ(XSI_PBFS_PANEL_NG, panel.xsi_pbfs_panel_reset_timer_ctrl("a", XSI_PBFS_PNL_RST_TMR_START));

    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_reset_timer_ctrl("a", XSI_PBFS_PNL_RST_TMR_STOP));
    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_reset_timer_ctrl("b", XSI_PBFS_PNL_RST_TMR_STOP));
    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_reset_timer_ctrl("a", XSI_PBFS_PNL_RST_TMR_START));
    EXPECT_EQ(jbrg_sim::panel::reset_timer_holders(), std::vector<std::string>{"b"});
    EXPECT_FALSE(jbrg_sim::panel::reset_timer_expire());
    EXPECT_EQ(0, observer.resets.load());

    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_reset_timer_ctrl("b", XSI_PBFS_PNL_RST_TMR_RESTART));
    EXPECT_TRUE(jbrg_sim::panel::reset_timer_running());
    EXPECT_EQ(1u, jbrg_sim::panel::reset_timer_restarts());
    EXPECT_TRUE(jbrg_sim::panel::reset_timer_expire());
    EXPECT_EQ(1, observer.resets.load());

    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_reset_timer_ctrl("c", XSI_PBFS_PNL_RST_TMR_STOP));
    jbrg_sim::load_scenario(scenario());
    EXPECT_TRUE(jbrg_sim::panel::reset_timer_running()) << "a load drops the holds";
    EXPECT_EQ(XSI_PBFS_PANEL_OK, panel.xsi_pbfs_panel_remove_observer(&observer));
}

// ---- Card reader -----------------------------------------------------------------------------------------

TEST_F(device_info, reader_settings_need_a_reader_and_survive_its_removal) {
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING mifare{XDC_COM_STD_MIFARE_KEY_TYPE_B, {1, 2, 3, 4, 5, 6}, 0x27};
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING got{};
    EXPECT_EQ(XDC_COM_STD_NO_SETTING, reader().get_mifare_classic_read_setting(0, got));
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_mifare_classic_read_setting(0, mifare));
    XDC_COM_STD_FELICA_SERVICE_SETTING felica{0xFE00, {{0x000B, 4, 0}, {0x1009, 15, 0}}};
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_felica_service_setting(1, felica));
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_smart_card_event_masks(0x05));

    EXPECT_EQ(0, jbrg_sim::smart_card::reader_removed());
    XDC_COM_STD_SMART_CARD_READER_INFO info{};
    EXPECT_EQ(XDC_COM_STD_NOT_EXIST, reader().get_smart_card_reader_information(info));
    EXPECT_EQ(XDC_COM_STD_NOT_EXIST, reader().get_mifare_classic_read_setting(0, got));
    EXPECT_EQ(XDC_COM_STD_NOT_EXIST, reader().set_felica_data_type(7)) << "no reader comes before a bad argument";
    EXPECT_EQ(XDC_COM_STD_NOT_EXIST, reader().clear_mifare_classic_read_setting(0));

    const XDC_COM_STD_SMART_CARD_READER_INFO other{0x0ABC, 0x0042, 2, 0x3F, 1};
    EXPECT_EQ(0, jbrg_sim::smart_card::reader_added(other));
    EXPECT_EQ(XDC_COM_STD_OK, reader().get_smart_card_reader_information(info));
    EXPECT_EQ(0x0042, info.product_id);
    EXPECT_EQ(1u, info.read_button);
    ASSERT_EQ(XDC_COM_STD_OK, reader().get_mifare_classic_read_setting(0, got));
    EXPECT_EQ(0x27, got.sector_num);
    EXPECT_EQ(6, got.key[5]);
    XDC_COM_STD_FELICA_SERVICE_SETTING read{};
    ASSERT_EQ(XDC_COM_STD_OK, reader().get_felica_service_setting(1, read));
    EXPECT_EQ(15, read.service[1].num_of_blocks);
    EXPECT_EQ(0x05, jbrg_sim::smart_card::event_masks());
}

TEST_F(device_info, reader_settings_outside_what_the_reader_takes_are_refused) {
    XDC_COM_STD_FELICA_SERVICE_SETTING felica{0xFE00, {{0x000B, 16, 0}, {0, 0, 0}}};
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_felica_service_setting(0, felica));
    felica.service[0].num_of_blocks = 1;
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_felica_service_setting(2, felica));
    XDC_COM_STD_FELICA_SERVICE_SETTING read{};
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().get_felica_service_setting(-1, read));
    EXPECT_EQ(0, jbrg_sim::smart_card::felica_setting(0).service[0].num_of_blocks) << "unchanged";

    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING mifare{2, {}, 0};
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_mifare_classic_read_setting(0, mifare)) << "key type";
    mifare = {XDC_COM_STD_MIFARE_KEY_TYPE_A, {}, XDC_COM_STD_MIFARE_SECTOR_COUNT};
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_mifare_classic_read_setting(0, mifare)) << "sector";
    mifare.sector_num = 1;
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_mifare_classic_read_setting(5, mifare));
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_mifare_classic_read_setting(4, mifare));
    EXPECT_EQ(XDC_COM_STD_OK, reader().clear_mifare_classic_read_setting(4));
    EXPECT_FALSE(jbrg_sim::smart_card::mifare_setting(4).has_value());

    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_smart_card_event_masks(0x40));
    EXPECT_EQ(XDC_COM_STD_PARAM_ERROR, reader().set_mifare_classic_data_type(3));
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_mifare_classic_data_type(XDC_COM_STD_MIFARE_DATA_SECTOR));
    EXPECT_EQ(XDC_COM_STD_OK, reader().set_felica_data_type(XDC_COM_STD_FELICA_DATA_SERVICE));
    EXPECT_EQ(XDC_COM_STD_MIFARE_DATA_SECTOR, jbrg_sim::smart_card::mifare_data_type());
    EXPECT_EQ(XDC_COM_STD_FELICA_DATA_SERVICE, jbrg_sim::smart_card::felica_data_type());
}

// ---- Web services ----------------------------------------------------------------------------------------

TEST_F(device_info, certificates_are_files_that_exist_unless_not_installed) {
    jbrg_sim::load_scenario(R"({"webservice": {"missing_certificates": [2], "hdo": false}})");
    std::string server, key;
    ASSERT_EQ(XSI_PBFS_WEBSERVICE_OK, web().xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_SERVER_CERTIFICATE, server));
    ASSERT_EQ(XSI_PBFS_WEBSERVICE_OK, web().xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_PRIVATE_KEY, key));
    EXPECT_TRUE(std::filesystem::path(server).is_absolute());
    EXPECT_TRUE(std::filesystem::is_regular_file(server)) << server;
    EXPECT_TRUE(std::filesystem::is_regular_file(key)) << key;
    EXPECT_NE(server, key);
    EXPECT_EQ(std::filesystem::path(server).parent_path(), std::filesystem::path(jbrg_sim::webservice::certificate_folder()));

    std::string untouched = "before";
    EXPECT_EQ(XSI_PBFS_WEBSERVICE_NO_FILE, web().xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_CA_CERTIFICATE, untouched));
    EXPECT_EQ(XSI_PBFS_WEBSERVICE_PARAM_ERROR, web().xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_NUM, untouched));
    std::string hdo_key = "before";
    EXPECT_EQ(XSI_PBFS_WEBSERVICE_NO_FILE, web().xsi_pbfs_webservice_get_hdo_certificate_filepath(untouched, hdo_key));
    EXPECT_EQ("before", untouched);

    // A load wipes the storage; the installed files are there again when asked for.
    jbrg_sim::load_scenario("{}");
    std::string hdo;
    ASSERT_EQ(XSI_PBFS_WEBSERVICE_OK, web().xsi_pbfs_webservice_get_hdo_certificate_filepath(hdo, hdo_key));
    EXPECT_TRUE(std::filesystem::is_regular_file(hdo));
    EXPECT_TRUE(std::filesystem::is_regular_file(hdo_key));
    ASSERT_EQ(XSI_PBFS_WEBSERVICE_OK, web().xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_CA_CERTIFICATE, server));
    EXPECT_TRUE(std::filesystem::is_regular_file(server));
}

}  // namespace
