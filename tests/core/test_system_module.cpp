// The start-up and time module through its Java natives.
#include <gmock/gmock.h>

#include "jbrg_sim/control.h"
#include "tests/core/in_zone.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

class system_module : public jbrg_test::bridge_test {};

TEST_F(system_module, init_starts_the_platform_once_per_call) {
    run_java("jbrg/test/system/SystemModule", "initialise");
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_startup(0)", "xsi_ais_startup(0)", "xdc_strg_init()"));
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex(".*::init,\\[Start\\]\n"),
                                                     MatchesRegex(".*::init,\\[Exit\\]\n")));
}

TEST_F(system_module, times_from_seconds_are_utc_and_take_the_low_32_bits) {
    run_java("jbrg/test/system/SystemModule", "timesFromSeconds");
}

TEST_F(system_module, the_default_time_reads_the_local_zone) {
    jbrg_test::in_zone zone("JST-9");
    run_java("jbrg/test/system/SystemModule", "defaultTimeCarriesTheLocalZone");
}

}  // namespace
