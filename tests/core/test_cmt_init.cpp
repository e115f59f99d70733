// cmt_init: the start-up sequence as the platform sees it.
#include <gmock/gmock.h>

#include "core/cjvm.h"
#include "core/cmt_init.h"
#include "jbrg_sim/control.h"
#include "plat_types.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

class start_up : public jbrg_test::bridge_test {};

TEST_F(start_up, starts_the_service_clients_and_storage_in_order_between_two_traces) {
    orvane::cmt_init().init();
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_startup(0)", "xsi_ais_startup(0)", "xdc_strg_init()"));
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex("cmt_init\\.cpp\\[[0-9]{4}\\]::init,\\[Start\\]\n"),
                                                     MatchesRegex("cmt_init\\.cpp\\[[0-9]{4}\\]::init,\\[Exit\\]\n")));
    EXPECT_EQ(jbrg_test::vm(), orvane::CJvm::ms_jvm);
}

TEST_F(start_up, failures_of_the_platform_do_not_stop_it) {
    jbrg_sim::force_result("xsi_pbfs_startup", PLAT_CODE(0xC1010001));
    jbrg_sim::force_result("xsi_ais_startup", PLAT_CODE(0xC1020001));
    jbrg_sim::force_result("xdc_strg_init", 5);
    orvane::cmt_init().init();
    EXPECT_EQ(3U, jbrg_sim::calls().size());
    EXPECT_EQ(2U, jbrg_sim::traces().size());
}

TEST_F(start_up, a_second_init_runs_the_sequence_again) {
    orvane::cmt_init first;
    first.init();
    first.init();
    EXPECT_EQ(2U, jbrg_sim::calls_of("xsi_ais_startup").size());
}

}  // namespace
