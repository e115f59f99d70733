// The job module through its Java natives: the Java side of each group runs in jbrg.test.job.JobModule;
// what reached the device is checked here from its call log.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "tests/job/job_test.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class job_module : public jbrg_test::job_test {};

TEST_F(job_module, bad_arguments_throw_without_reaching_the_device) {
    run_java("jbrg/test/job/JobModule", "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

TEST_F(job_module, a_send_job_runs_from_java_with_its_arguments_mapped) {
    // The Java side acts for two logins: certificate ids 66 and 67.
    ASSERT_EQ(66u, login());
    ASSERT_EQ(67u, login());
    run_java("jbrg/test/job/JobModule", "sendJob");
    std::vector<std::string> calls = job_calls();
    // The certificate id's low 32 bits, between the category and the handler id.
    EXPECT_THAT(calls, Contains("xsi_ais_job_generate_jobinfo_bkg(3, 66, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_set_value(1, 2, 50, 70, 4294967295)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_set_value(1, 10, report)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_start(3, 1, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_kick(1001, *)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_cancel_bkg(1001, 2001, 67)"));
    EXPECT_THAT(calls, Contains("xsi_ais_job_get_service_id(7, *)"));
    EXPECT_THAT(calls, Not(Contains(StartsWith("xsi_ais_job_cancel(1001"))));
    auto job = jbrg_sim::job::user_job(2001);
    ASSERT_TRUE(job.has_value());
    EXPECT_TRUE(job->cancelled);
    EXPECT_EQ(66u, job->cert_id);
    EXPECT_EQ(67u, job->cancel_cert_id);
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
