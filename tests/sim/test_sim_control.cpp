// The simulated device's control surface: forcing, call log, platform threads, memory partition, scenario.
#include <gmock/gmock.h>

#include <set>
#include <stdexcept>
#include <thread>

#include "tests/harness/bridge_test.h"
#include "emw_services.h"
#include "jbrg_sim/control.h"
#include "osw_sync.h"
#include "xsi_startup.h"

namespace {

using ::testing::ElementsAre;

class sim_control : public jbrg_test::bridge_test {};

TEST_F(sim_control, forced_results_are_used_in_order_then_the_device_answers_again) {
    jbrg_sim::force_result("xsi_ais_startup", PLAT_CODE(0xC1020001), 2);
    jbrg_sim::force_result("xsi_ais_startup", PLAT_CODE(0xC1020002));
    EXPECT_EQ(PLAT_CODE(0xC1020001), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_CODE(0xC1020001), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_CODE(0xC1020002), xsi_ais_startup(0));
    EXPECT_EQ(PLAT_OK, xsi_ais_startup(0));
    // Forcing one operation leaves the others alone, and every call is logged, forced or not.
    EXPECT_EQ(PLAT_OK, xsi_pbfs_startup(0));
    EXPECT_EQ(5U, jbrg_sim::calls().size());
}

TEST_F(sim_control, the_call_log_keeps_arguments_as_text) {
    xsi_pbfs_startup(0);
    xsi_ais_startup(7);
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_startup(0)", "xsi_ais_startup(7)"));
    EXPECT_EQ(PLAT_CODE(0xC1010001), xsi_ais_startup(7)) << "the device refuses an unknown mode";
    jbrg_sim::clear_calls();
    EXPECT_TRUE(jbrg_sim::calls().empty());
}

TEST_F(sim_control, reset_clears_forcing_log_and_traces) {
    jbrg_sim::force_result("xsi_ais_startup", 1);
    xsi_pbfs_startup(0);
    emwGENTrcPrintf(0xA201, 0x102, 0, "%s", "line\n");
    jbrg_sim::reset();
    EXPECT_TRUE(jbrg_sim::calls().empty());
    EXPECT_TRUE(jbrg_sim::traces().empty());
    EXPECT_EQ(PLAT_OK, xsi_ais_startup(0));
}

TEST_F(sim_control, notifications_run_on_the_services_own_thread) {
    const auto test_thread = std::this_thread::get_id();
    std::thread::id first, second, other;
    EXPECT_EQ(42, jbrg_sim::deliver("job", [&] { first = std::this_thread::get_id(); return 42; }));
    jbrg_sim::deliver("job", [&] { second = std::this_thread::get_id(); return 0; });
    jbrg_sim::deliver("panel", [&] { other = std::this_thread::get_id(); return 0; });
    EXPECT_NE(test_thread, first);
    EXPECT_EQ(first, second) << "one IPC thread per service";
    EXPECT_NE(first, other);

    std::thread::id once;
    EXPECT_EQ(-1, jbrg_sim::deliver_on_new_thread([&] { once = std::this_thread::get_id(); return -1; }));
    EXPECT_NE(first, once);
}

TEST_F(sim_control, notifications_of_one_service_arrive_in_order) {
    std::vector<int> seen;
    std::vector<std::future<int32_t>> answers;
    for (int i = 0; i < 50; ++i) {
        answers.push_back(jbrg_sim::deliver_async("jobinfo", [&seen, i] { seen.push_back(i); return i; }));
    }
    for (int i = 0; i < 50; ++i) EXPECT_EQ(i, answers[static_cast<std::size_t>(i)].get());
    for (int i = 0; i < 50; ++i) EXPECT_EQ(i, seen[static_cast<std::size_t>(i)]);
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

TEST_F(sim_control, a_scenario_must_be_a_json_object) {
    EXPECT_THROW(jbrg_sim::load_scenario("[1, 2]"), std::runtime_error);
    EXPECT_ANY_THROW(jbrg_sim::load_scenario("{ not json"));
    EXPECT_THROW(jbrg_sim::load_scenario_file("/nonexistent/scenario.json"), std::runtime_error);
    jbrg_sim::load_scenario("{}");
}

}  // namespace
