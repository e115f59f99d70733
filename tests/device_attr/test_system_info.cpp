// The device's settings, counters, energy saving and panel reset timer through the system-information
// module's natives: the Java side of each group runs in jbrg.test.device_attr.SystemInfoModule; the platform
// calls and trace lines it caused, and the device's state after it, are checked here.
#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>

#include "device_attr/cmt_system_info.h"
#include "event/xiof_slo_esm_observer.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/system_info.h"
#include "job/qsf_fnd_job_proxy.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kJava = "jbrg/test/device_attr/SystemInfoModule";
constexpr const char* kCommon = "orvane/qsf/controller/event/proxy/CommonProxy";

class system_info_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"users": {"local": [{"login_name": "root", "password": "toor", "rights": 0},
                                       {"login_name": "alice", "password": "wonder", "rights": 1}]},
                   "job": {"pages": 2},
                   "system_info": {"model_type": 2, "screen_size": 3, "copy_service_mode": false,
                                   "paper_sources": [{"key": 400, "remain": 3, "size": 2, "direction": 0,
                                                      "kind": 0}],
                                   "fax_lines": [{"key": 500, "encrypted": true}]}})";
    }

    // A colour copy of A4 originals, started and left waiting; it ends when the test lets it.
    unsigned int copy_job() {
        unsigned int handler = 0, service = 0, user_job = 0;
        EXPECT_EQ(0, jobs.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, handler));
        EXPECT_EQ(0, jobs.set_value(handler, XSI_AIS_JOB_SETTING_ORIGINAL_SIZE, XSI_PBFS_PAPER_SIZE_A4));
        EXPECT_EQ(0, jobs.set_value(handler, XSI_AIS_JOB_SETTING_COLOR_MODE, 2u));
        EXPECT_EQ(0, jobs.create_job(XSI_AIS_JOB_CATEGORY_COPY, handler, service));
        EXPECT_EQ(0, jobs.start(service, user_job));
        return user_job;
    }

    orvane::qsf_fnd_job_proxy jobs;
};

// ---- Machine settings ------------------------------------------------------------------------------------

TEST_F(system_info_module, settings_keep_their_range_and_rights_and_a_certificate_chooses_the_background_call) {
    run_java(kJava, "settings");
    EXPECT_EQ(30u, jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_SLEEP_TIMER));
    EXPECT_EQ(1u, jbrg_sim::system_info::setting(XSI_PBFS_ENTKEY_ADMIN_LOCK));
    const auto plain = jbrg_sim::calls_of("xsi_pbfs_systeminfo_set_machine_info");
    const auto bkg = jbrg_sim::calls_of("xsi_pbfs_systeminfo_set_machine_info_bkg");
    ASSERT_FALSE(plain.empty());
    ASSERT_FALSE(bkg.empty());
    for (const auto& call : plain) EXPECT_EQ("0", call.args[1]) << call.text();
    for (const auto& call : bkg) EXPECT_NE("0", call.args[1]) << call.text();
    EXPECT_EQ("30", jbrg_sim::calls_of("xsi_pbfs_systeminfo_set_machine_info")[2].args[2])
        << "2^32 + 30 reaches the device as 30";
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::get_machine_info,(key = [101], cid = [0], value = [30])")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::get_machine_info,(key = [1], cid = [0], value = [")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::convert_retcode,XSI_PBFS_SYSINFO_LOGIN_ERROR")));
}

TEST_F(system_info_module, every_platform_code_folds_into_the_five_results_and_is_traced_by_name) {
    struct row {
        uint32_t code;
        unsigned int result;
        const char* trace;
    } rows[] = {
        {0, 0, "XSI_PBFS_SYSINFO_OK"},
        {0xC1010501, 1, "XSI_PBFS_SYSINFO_ERROR_COMPETENCE"},
        {0xC1010502, 2, "XSI_PBFS_SYSINFO_ERROR"},
        {0xC1010503, 3, "XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR"},
        {0xC1010504, 4, "XSI_PBFS_SYSINFO_LOGIN_ERROR"},
        {0xC1010505, 2, "default QSF_FND_SYSINFO_ERROR"},
        {0xC1010D04, 2, "default QSF_FND_SYSINFO_ERROR"},
        {1, 2, "default QSF_FND_SYSINFO_ERROR"},
    };
    for (const row& r : rows) {
        jbrg_sim::clear_traces();
        EXPECT_EQ(r.result, orvane::CMT_System_Info::convert_retcode(static_cast<dev_long>(r.code))) << r.trace;
        EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(HasSubstr(std::string("::convert_retcode,") + r.trace)));
    }
    jbrg_sim::clear_traces();
    EXPECT_EQ(0u, orvane::CMT_System_Info::convert_retcode_esm(0));
    EXPECT_EQ(2u, orvane::CMT_System_Info::convert_retcode_esm(XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR));
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(HasSubstr(",XSI_PBFS_ESM_OK"),
                                                     HasSubstr(",default QSF_FND_SYSINFO_ERROR")));
}

// ---- Paper, model, flags, counters -----------------------------------------------------------------------

TEST_F(system_info_module, paper_model_screen_and_flags_read_as_the_device_holds_them) {
    run_java(kJava, "machine");
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::get_fax_encryption_validity,(key = [500], value = [1])")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::get_copy_service_mode,(cert_id = [0], value = [0])")));
}

TEST_F(system_info_module, a_flag_is_true_only_for_exactly_1_and_false_when_the_read_fails) {
    jbrg_sim::force_out("xsi_pbfs_systeminfo_get_fax_encryption_validity", "valid", "2");
    jbrg_sim::force_out("xsi_pbfs_systeminfo_get_copy_service_mode", "mode", "1");
    EXPECT_THAT(jbrg_test::java_texts(kJava, "flags"), ElementsAre("fax 0 false", "copy 0 true"));
    jbrg_sim::force_result("xsi_pbfs_systeminfo_get_fax_encryption_validity", XSI_PBFS_SYSINFO_ERROR_COMPETENCE);
    jbrg_sim::force_result("xsi_pbfs_systeminfo_get_copy_service_mode", XSI_PBFS_SYSINFO_LOGIN_ERROR);
    EXPECT_THAT(jbrg_test::java_texts(kJava, "flags"), ElementsAre("fax 1 false", "copy 4 false"));
}

TEST_F(system_info_module, counters_advance_with_the_pages_a_job_prints) {
    const auto before = jbrg_test::java_texts(kJava, "counters");
    EXPECT_THAT(before, Contains("bad -2 -2 -2")) << "an unknown kind, size or colour is an error";
    ASSERT_TRUE(jbrg_sim::job::finish(copy_job()));
    const auto after = jbrg_test::java_texts(kJava, "counters");
    auto number = [](const std::vector<std::string>& lines, std::size_t line, std::size_t word) {
        std::istringstream in(lines.at(line));
        std::string w;
        for (std::size_t i = 0; i <= word; ++i) in >> w;
        return std::stol(w);
    };
    EXPECT_EQ(number(before, 0, 1) + 2, number(after, 0, 1)) << "two pages printed";
    EXPECT_EQ(number(before, 1, 1) + 2, number(after, 1, 1)) << "two copies";
    EXPECT_EQ(number(before, 0, 2) + 2, number(after, 0, 2)) << "A4";
    EXPECT_EQ(number(before, 0, 4) + 2, number(after, 0, 4)) << "A4 in colour";
    EXPECT_EQ(number(before, 0, 3), number(after, 0, 3)) << "A4 in mono";
    EXPECT_EQ(number(before, 2, 1) + 2, number(after, 2, 1)) << "the originals scanned";
    EXPECT_EQ(number(before, 2, 2), number(after, 2, 2)) << "a copy is not a scan job";
}

// ---- Energy saving and the panel ---------------------------------------------------------------------------

TEST_F(system_info_module, energy_saving_is_refused_while_a_job_runs_and_prohibition_and_suspension_hold) {
    std::unique_ptr<orvane::xiof_slo_esm_observer> observer(new orvane::xiof_slo_esm_observer);
    ASSERT_EQ(JNI_OK, jbrg_sim::deliver_on_new_thread([&] { return observer->init(); }));
    ASSERT_EQ(0, xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_add_observer(observer.get()));
    jbrg_test::proxy_clear(kCommon);

    const unsigned int job = copy_job();
    EXPECT_THAT(jbrg_test::java_texts(kJava, "energy"),
                ElementsAre("sleep false", "prohibit 0", "sleep false", "lift 0", "suspend 0", "deep false",
                            "resume 0", "resume 2", "deep false", "level false"))
        << "a running job keeps the machine awake";
    ASSERT_TRUE(jbrg_sim::job::finish(job));
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), IsEmpty());

    EXPECT_THAT(jbrg_test::java_texts(kJava, "energy"),
                ElementsAre("sleep true", "prohibit 0", "sleep false", "lift 0", "suspend 0", "deep false",
                            "resume 0", "resume 2", "deep true", "level false"));
    EXPECT_THAT(jbrg_test::proxy_received(kCommon),
                ElementsAre("fireSleepEvent(2)", "fireSleepEvent(0)", "fireSleepEvent(3)"))
        << "asleep, woken by the prohibition, then in deep sleep";
    EXPECT_EQ(XSI_PBFS_SLEEP_STATE_DEEP_SLEEP, jbrg_sim::esm::sleep_state());
    EXPECT_THAT(jbrg_sim::trace_texts(), ::testing::Not(Contains(HasSubstr("::set_energy_save_prohibition_mode,"))))
        << "a granted prohibition traces no failure";
    xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_remove_observer(observer.get());
}

TEST_F(system_info_module, a_request_is_granted_only_on_0_and_a_refused_prohibition_is_traced) {
    jbrg_sim::force_result("xsi_pbfs_esm_request_energy_saving_mode", 1);
    jbrg_sim::force_result("xsi_pbfs_esm_request_save_mode_prohibition", XSI_PBFS_ESM_NG);
    orvane::CMT_System_Info info;
    EXPECT_FALSE(info.request_energy_saving_mode(XSI_PBFS_ESM_SLEEP_NORMAL)) << "1 is not a grant";
    EXPECT_EQ(2u, info.set_energy_save_prohibition_mode(true));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(HasSubstr("::set_energy_save_prohibition_mode,flag = [1], result = [-1056895743]"),
                            HasSubstr("::convert_retcode_esm,default QSF_FND_SYSINFO_ERROR")));
}

TEST_F(system_info_module, wake_up_dates_must_be_dates_and_application_ids_must_fit) {
    run_java(kJava, "wakeUp");
    EXPECT_TRUE(jbrg_sim::esm::wakeup_date("jbrg.app").has_value());
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_esm_set_wakeup_date"), ::testing::SizeIs(3))
        << "a missing or oversized application id never reaches the device";
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_esm_suspend_deep_sleep"), IsEmpty());
}

TEST_F(system_info_module, the_reset_timer_is_held_by_the_application_that_stopped_it) {
    run_java(kJava, "resetTimer");
    EXPECT_FALSE(jbrg_sim::panel::reset_timer_running());
    EXPECT_THAT(jbrg_sim::panel::reset_timer_holders(), ElementsAre("jbrg.app"));
    EXPECT_FALSE(jbrg_sim::panel::reset_timer_expire()) << "no reset while held";
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(HasSubstr("::panel_reset_timer_ctrl,panel_reset_timer_ctrl: QSF_FND_SYSINFO_ERROR. rc = "
                                      "[-1056897279]"),
                            HasSubstr("::panel_reset_timer_ctrl,panel_reset_timer_ctrl: QSF_FND_SYSINFO_ERROR. rc = "
                                      "[-1056897278]"),
                            HasSubstr("::panel_reset_timer_ctrl,app_id is null")));
    jbrg_sim::force_result("xsi_pbfs_panel_reset_timer_ctrl", XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR);
    char app[] = "jbrg.app";
    EXPECT_EQ(2u, orvane::CMT_System_Info().panel_reset_timer_ctrl(app, XSI_PBFS_PNL_RST_TMR_START))
        << "the panel's answers are not the system information's: unsupported is an error too";
}

// ---- Arguments and records ---------------------------------------------------------------------------------

TEST_F(system_info_module, bad_arguments_are_refused_before_the_device_is_asked) {
    run_java(kJava, "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

TEST_F(system_info_module, records_shared_with_the_event_module_read_alike_through_both) {
    run_java(kJava, "sharedRecords");
}

}  // namespace
