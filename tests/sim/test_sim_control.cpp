// The simulated device's control surface: forcing, call log, reset, platform threads, memory partition, scenario.
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <set>
#include <stdexcept>
#include <thread>

#include "emw_services.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/smart_card.h"
#include "osw_sync.h"
#include "tests/harness/bridge_test.h"
#include "xam_ads.h"
#include "xdc_com_std.h"
#include "xsi_ais_job.h"
#include "xsi_ais_jobinfo.h"
#include "xsi_pbfs_esm.h"
#include "xsi_pbfs_panel.h"
#include "xsi_startup.h"

namespace {

using ::testing::ElementsAre;

class sim_control : public jbrg_test::bridge_test {};

TEST_F(sim_control, forced_results_are_used_in_order_and_every_call_is_logged_with_its_arguments) {
    jbrg_sim::force_result("xsi_ais_startup", PLAT_CODE(0xC1020001), 2);
    jbrg_sim::force_result("xsi_ais_startup", PLAT_CODE(0xC1020002));
    EXPECT_EQ(PLAT_CODE(0xC1020001), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_CODE(0xC1020001), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_CODE(0xC1020002), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_OK, xsi_ais_startup(0));
    // Forcing one operation leaves the others alone, and every call is logged, forced or not.
    EXPECT_EQ(PLAT_OK, xsi_pbfs_startup(0));
    EXPECT_EQ(PLAT_CODE(0xC1010001), xsi_ais_startup(7)) << "the device refuses an unknown mode";
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xsi_ais_startup(0)", "xsi_ais_startup(0)", "xsi_ais_startup(0)", "xsi_ais_startup(0)",
                            "xsi_pbfs_startup(0)", "xsi_ais_startup(7)"));
    jbrg_sim::clear_calls();
    EXPECT_TRUE(jbrg_sim::calls().empty());
}

TEST_F(sim_control, the_trace_printer_keeps_each_line_whole_with_its_format_and_numbers) {
    jbrg_sim::clear_traces();
    const std::string long_text(700, 'x');
    EXPECT_EQ(5, emwGENTrcPrintf(0xA201, 0x102, 0, "%s=%d\n", "ab", 7));
    EXPECT_EQ(701, emwGENTrcPrintf(1, 2, 3, "%s!", long_text.c_str()));
    const auto lines = jbrg_sim::traces();
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ("ab=7\n", lines[0].text);
    EXPECT_EQ("%s=%d\n", lines[0].format);
    EXPECT_EQ(0xA201U, lines[0].module);
    EXPECT_EQ(long_text + "!", lines[1].text) << "a line longer than the usual one is kept whole";
    EXPECT_EQ(3U, lines[1].flags);

    // The log keeps the last 20000 lines, oldest first, across the slots it writes over; clearing it starts
    // again from the first slot.
    for (int i = 0; i < 20005; ++i) emwGENTrcPrintf(0xA201, 0x102, 0, "%d", i);
    auto kept = jbrg_sim::trace_texts();
    ASSERT_EQ(20000U, kept.size());
    EXPECT_EQ("5", kept.front());
    EXPECT_EQ("20004", kept.back());
    jbrg_sim::clear_traces();
    emwGENTrcPrintf(4, 5, 6, "%s", "after");
    ASSERT_EQ(1U, jbrg_sim::traces().size());
    EXPECT_EQ("after", jbrg_sim::traces()[0].text);
    EXPECT_EQ("%s", jbrg_sim::traces()[0].format);
    EXPECT_EQ(6U, jbrg_sim::traces()[0].flags);
}

// Observers of every service, each counting what reaches it.
struct job_watch : xsi_ais_job_observer {
    int seen = 0;
    PLAT_RESULT notify_scan_count(unsigned int, unsigned int) override { return ++seen, PLAT_OK; }
};
struct app_watch : xam_ads_app_operation_observer {
    int seen = 0;
    void notify_run_app(const char*) override { ++seen; }
};
struct jobinfo_watch : xsi_ais_jobinfo_observer {};
struct panel_watch : xsi_pbfs_panel_observer {};
struct esm_watch : xsi_pbfs_esm_observer {};
struct card_watch : xdc_com_std_smart_card_observer {};

std::vector<std::size_t> observer_counts() {
    return {jbrg_sim::job::observer_count(), jbrg_sim::jobinfo::observer_count(), jbrg_sim::panel::observers(),
            jbrg_sim::esm::observers(),      jbrg_sim::smart_card::observers(),    jbrg_sim::apps::observers()};
}

TEST_F(sim_control, a_load_keeps_registered_observers_and_a_reset_powers_the_device_on_without_them) {
    job_watch job;
    app_watch app;
    jobinfo_watch jobinfo;
    panel_watch panel;
    esm_watch esm;
    card_watch card;
    dev_ulong app_id = 0;
    ASSERT_EQ(0, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_add_observer(&job));
    ASSERT_EQ(0, xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_add_observer(&jobinfo));
    ASSERT_EQ(0, xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_add_observer(&panel));
    ASSERT_EQ(0, xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_add_observer(&esm));
    ASSERT_EQ(0, xdc_com_std_facade::get_instance()->add_smart_card_observer(&card));
    ASSERT_EQ(0, xam_ads_facade::xam_ads_get_instance()->xam_ads_add_app_operation_observer(
                     &app, XAM_ADS_BASIS_TYPE_JAVA, app_id));
    EXPECT_EQ(1U, app_id);

    jbrg_sim::load_scenario(R"({"apps": {"installed": [{"id": "a"}]}})");
    EXPECT_THAT(observer_counts(), ElementsAre(1U, 1U, 1U, 1U, 1U, 1U)) << "observers belong to the process";
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(1, 2));
    EXPECT_EQ(0, jbrg_sim::apps::run_app("a"));
    EXPECT_EQ(1, job.seen);
    EXPECT_EQ(1, app.seen);

    jbrg_sim::force_result("xsi_ais_startup", 1);
    emwGENTrcPrintf(0xA201, 0x102, 0, "%s", "line\n");
    jbrg_sim::reset();
    EXPECT_TRUE(jbrg_sim::calls().empty());
    EXPECT_TRUE(jbrg_sim::traces().empty());
    EXPECT_EQ(PLAT_OK, xsi_ais_startup(0)) << "forcing is cleared";
    EXPECT_THAT(observer_counts(), ElementsAre(0U, 0U, 0U, 0U, 0U, 0U));
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(1, 2));
    EXPECT_EQ(0, jbrg_sim::apps::run_app("a"));
    EXPECT_EQ(1, job.seen) << "a forgotten observer hears nothing more";
    EXPECT_EQ(1, app.seen);
    EXPECT_EQ(XSI_AIS_JOB_NO_OBSERVER, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(&job));
    ASSERT_EQ(0, xam_ads_facade::xam_ads_get_instance()->xam_ads_add_app_operation_observer(
                     &app, XAM_ADS_BASIS_TYPE_JAVA, app_id));
    EXPECT_EQ(1U, app_id) << "registration ids start again";
    jbrg_sim::reset();
    // Should the device have kept any of them, none outlives this test.
    xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(&job);
    xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_remove_observer(&jobinfo);
    xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_remove_observer(&panel);
    xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_remove_observer(&esm);
    xdc_com_std_facade::get_instance()->remove_smart_card_observer(&card);
    for (dev_ulong id : {1U, 2U}) xam_ads_facade::xam_ads_get_instance()->xam_ads_remove_app_operation_observer(id);
}

// A job observer whose scan count notification waits until the test lets it go, and one that removes itself.
struct held_watch : xsi_ais_job_observer {
    std::promise<void> entered;
    std::promise<void> release;
    std::shared_future<void> released{release.get_future().share()};
    std::atomic<int> seen{0};
    PLAT_RESULT notify_scan_count(unsigned int, unsigned int) override {
        if (seen++ == 0) {
            entered.set_value();
            released.wait();
        }
        return PLAT_OK;
    }
};
struct self_removing_watch : xsi_ais_job_observer {
    PLAT_RESULT removed = -1;
    PLAT_RESULT notify_scan_count(unsigned int, unsigned int) override {
        removed = xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(this);
        return PLAT_OK;
    }
};

TEST_F(sim_control, a_removal_returns_only_once_no_notification_is_running_in_the_observer) {
    xsi_ais_job_facade* jobs = xsi_ais_job_facade::xsi_ais_job_get_instance();
    auto held = std::make_unique<held_watch>();
    ASSERT_EQ(XSI_AIS_JOB_OK, jobs->xsi_ais_job_add_observer(held.get()));
    std::future<int32_t> notified =
        std::async(std::launch::async, [] { return jbrg_sim::job::notify_scan_count(1, 1); });
    held->entered.get_future().wait();

    std::future<PLAT_RESULT> removed =
        std::async(std::launch::async, [&] { return jobs->xsi_ais_job_remove_observer(held.get()); });
    EXPECT_EQ(std::future_status::timeout, removed.wait_for(std::chrono::milliseconds(100)))
        << "the observer is still being called: its owner must not delete it yet";
    EXPECT_EQ(0, jbrg_sim::job::observer_count()) << "but it is no longer registered";
    held->release.set_value();
    EXPECT_EQ(XSI_AIS_JOB_OK, removed.get());
    EXPECT_EQ(0, notified.get());
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(2, 2));
    EXPECT_EQ(1, held->seen.load()) << "nothing reaches a removed observer";
    held.reset();

    self_removing_watch self;
    ASSERT_EQ(XSI_AIS_JOB_OK, jobs->xsi_ais_job_add_observer(&self));
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(3, 3));
    EXPECT_EQ(XSI_AIS_JOB_OK, self.removed) << "an observer removes itself from within its call without waiting";
    EXPECT_EQ(0, jbrg_sim::job::observer_count());
}

TEST_F(sim_control, notifications_run_in_order_on_one_thread_per_service) {
    const auto test_thread = std::this_thread::get_id();
    std::thread::id first, other;
    std::vector<std::thread::id> threads;
    std::vector<int> seen;
    std::vector<std::future<int32_t>> answers;
    for (int i = 0; i < 50; ++i) {
        answers.push_back(jbrg_sim::deliver_async("job", [&, i] {
            seen.push_back(i);
            threads.push_back(std::this_thread::get_id());
            return i;
        }));
    }
    for (int i = 0; i < 50; ++i) EXPECT_EQ(i, answers[static_cast<std::size_t>(i)].get());
    for (int i = 0; i < 50; ++i) EXPECT_EQ(i, seen[static_cast<std::size_t>(i)]);
    EXPECT_EQ(42, jbrg_sim::deliver("job", [&] { first = std::this_thread::get_id(); return 42; }));
    jbrg_sim::deliver("panel", [&] { other = std::this_thread::get_id(); return 0; });
    EXPECT_NE(test_thread, first);
    EXPECT_THAT(std::set<std::thread::id>(threads.begin(), threads.end()), ElementsAre(first))
        << "one IPC thread per service";
    EXPECT_NE(first, other);

    std::thread::id once;
    EXPECT_EQ(-1, jbrg_sim::deliver_on_new_thread([&] { once = std::this_thread::get_id(); return -1; }));
    EXPECT_NE(first, once);
}

TEST_F(sim_control, the_memory_partition_tracks_blocks_and_refuses_a_bad_free) {
    const std::size_t before = jbrg_sim::blocks_in_use();
    void* block = emwOSWSubAllocMem(16392);
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(before + 1, jbrg_sim::blocks_in_use());
    EXPECT_EQ(PLAT_OK, emwOSWOrgFreeMemPart(0, block));
    EXPECT_NE(PLAT_OK, emwOSWOrgFreeMemPart(0, block)) << "a second free is refused";
    int not_a_block = 0;
    EXPECT_NE(PLAT_OK, emwOSWOrgFreeMemPart(0, &not_a_block));
    EXPECT_EQ(before, jbrg_sim::blocks_in_use());

    jbrg_sim::force_result("emwOSWSubAllocMem", 1);
    EXPECT_EQ(nullptr, emwOSWSubAllocMem(8)) << "an exhausted partition";
    EXPECT_EQ("emwOSWSubAllocMem(16392)", jbrg_sim::call_texts().front());
}

TEST_F(sim_control, the_os_wrapper_locks_exclude_each_other) {
    OSW_Mutex_Semaphore mutex(1);
    int inside = 0, most = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i) {
                OSW_Guard guard(&mutex);
                most = std::max(most, ++inside);
                --inside;
            }
        });
    }
    for (auto& t : threads) t.join();
    EXPECT_EQ(1, most);
    { OSW_Thread_Guard outer; OSW_Thread_Guard inner; }  // the process-wide guard may be taken again
    EXPECT_EQ("OSW_Mutex_Semaphore(1)", jbrg_sim::call_texts().front());
}

TEST_F(sim_control, a_scenario_that_does_not_read_changes_no_service) {
    EXPECT_THROW(jbrg_sim::load_scenario("[1, 2]"), std::runtime_error);
    EXPECT_ANY_THROW(jbrg_sim::load_scenario("{ not json"));
    EXPECT_THROW(jbrg_sim::load_scenario_file("/nonexistent/scenario.json"), std::runtime_error);

    jbrg_sim::load_scenario(R"({"apps": {"installed": [{"id": "kept"}]}, "job": {"pages": 3}})");
    // Every section but the last one read would do; the device still holds the scenario before.
    for (const char* bad : {R"({"apps": {"installed": [{"id": "new"}]}, "users": {"local": [{"password": "p"}]}})",
                            R"({"apps": {"installed": [{"id": "new"}]}, "panel": {"keypad": {"x": -1}}})"}) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
        EXPECT_TRUE(jbrg_sim::apps::app("kept").has_value()) << bad;
        EXPECT_FALSE(jbrg_sim::apps::app("new").has_value()) << bad;
    }
    jbrg_sim::load_scenario("{}");
}

}  // namespace
