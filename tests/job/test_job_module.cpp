// The job module through its Java natives: the Java side of each group runs in jbrg.test.job.JobModule;
// what reached the device is checked here from its call log.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/harness/bridge_test.h"
#include "core/cjvm.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "tests/job/job_scenario.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class job_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override { return jbrg_test::kJobScenario; }

    void SetUp() override {
        bridge_test::SetUp();
        // As the library's start-up does: the byte-array answers are built in the caller's environment.
        orvane::CJvm::CreateJVM();
    }

    // The job service's calls, each with its out-pointer arguments written "*".
    static std::vector<std::string> job_calls() {
        std::vector<std::string> texts;
        for (const jbrg_sim::call& c : jbrg_sim::calls()) {
            if (c.op.rfind("xsi_ais_job_", 0) != 0) continue;
            std::string t = c.op + "(";
            for (std::size_t i = 0; i < c.args.size(); ++i) {
                t += (i ? ", " : "") + (c.args[i].rfind("0x", 0) == 0 ? std::string("*") : c.args[i]);
            }
            texts.push_back(t + ")");
        }
        return texts;
    }
};

TEST_F(job_module, bad_arguments_throw_without_reaching_the_device) {
    run_java("jbrg/test/job/JobModule", "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

TEST_F(job_module, a_send_job_runs_from_java_with_its_arguments_mapped) {
    run_java("jbrg/test/job/JobModule", "sendJob");
    std::vector<std::string> calls = job_calls();
    // The certificate id's low 32 bits, between the category and the handler id.
    EXPECT_THAT(calls, Contains("xsi_ais_job_generate_jobinfo_bkg(3, 66, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_set_value(1, 2, 50, 70, 4294967295)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_set_value(1, 10, report)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_start(3, 1, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_kick(1001, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_cancel_bkg(1001, 2001, 7)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_get_service_id(7, *)"));
    EXPECT_THAT(calls, Not(Contains(StartsWith("xsi_ais_job_cancel(1001"))));
    auto job = jbrg_sim::job::user_job(2001);
    ASSERT_TRUE(job.has_value());
    EXPECT_TRUE(job->cancelled);
    EXPECT_EQ(66u, job->cert_id);
    EXPECT_EQ(7u, job->cancel_cert_id);
    EXPECT_THAT(jbrg_sim::job::jobinfos(), IsEmpty());
}

TEST_F(job_module, stream_data_from_java_reaches_the_job_and_scans_come_back_as_byte_arrays) {
    run_java("jbrg/test/job/JobModule", "streamsAndScans");
    auto job = jbrg_sim::job::user_job(2001);
    ASSERT_TRUE(job.has_value());
    EXPECT_EQ("%PDF-1.4 hello%EOF", job->stream);
    EXPECT_EQ(1, job->stream_state);
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem"), SizeIs(3));
    for (const auto& c : jbrg_sim::calls_of("emwOSWSubAllocMem")) EXPECT_THAT(c.args, ElementsAre("16392"));
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWOrgFreeMemPart"), SizeIs(3));
    EXPECT_EQ(0u, jbrg_sim::blocks_in_use());
    EXPECT_THAT(job_calls(), Contains("xsi_ais_job_direct_print_prepare(1, /mnt/usb, (null))"));
}

TEST_F(job_module, records_expose_their_fields) { run_java("jbrg/test/job/JobModule", "records"); }

TEST_F(job_module, size_constants_and_the_id_vector) { run_java("jbrg/test/job/JobModule", "constantsAndVectors"); }

}  // namespace
