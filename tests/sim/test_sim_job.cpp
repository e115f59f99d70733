// The simulated device's job service, driven through the platform facade and the sim's control surface.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "xsi_ais_job.h"

namespace {

class sim_job : public ::testing::Test {
protected:
    void TearDown() override { jbrg_sim::load_scenario(""); }

    static void load(const std::string& json) {
        jbrg_sim::load_scenario(json);
        jbrg_sim::reset();
    }

    static xsi_ais_job_facade& job() { return *xsi_ais_job_facade::xsi_ais_job_get_instance(); }
};

TEST_F(sim_job, a_scenario_that_does_not_read_is_refused_and_changes_nothing) {
    load(R"({"job": {"limits": {"jobinfos": 1}}})");
    for (const char* bad : {R"({"job": {"colour": 1}})", R"({"job": {"defaults": {"copies": "two"}}})",
                            R"({"job": {"defaults": {"no_such_setting": 1}}})",
                            R"({"job": {"ocr": [{"kind": "word"}]}})", R"({"job": {"scan_chunk": 0}})",
                            R"({"job": {"disable_info": {"color_mode": 65536}}})",
                            R"({"job": {"prohibited_categories": [8]}})"}) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
    unsigned int h = 0;
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, h));
    EXPECT_EQ(XSI_AIS_JOB_LIMIT, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, h))
        << "the limit of the scenario still holds";
}

TEST_F(sim_job, limits_of_the_device_are_kept) {
    load(R"({"job": {"limits": {"services": 1, "user_jobs": 1, "copies": 1, "stream_bytes": 6}}})");
    unsigned int a = 0, b = 0, service = 0, other = 0, user_job = 0;
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, a));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, b));
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_copy_jobinfo(a));
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_copy_jobinfo(a)) << "a second copy replaces the first";
    EXPECT_EQ(XSI_AIS_JOB_COPY_JOBINFO_LIMIT_OVER, job().xsi_ais_job_copy_jobinfo(b));
    EXPECT_EQ(XSI_AIS_JOB_PARAM_ERROR, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, a, service))
        << "not prepared";
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_direct_print_prepare(a, XSI_AIS_JOB_STREAM_FILE_PCL));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, a, service));
    EXPECT_EQ(XSI_AIS_JOB_LIMIT, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_COPY, b, other));
    EXPECT_EQ(XSI_AIS_JOB_NO_CATEGORY, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_SCAN, b, other));
    EXPECT_EQ(XSI_AIS_JOB_ILLEGAL_SERVICE_ID, job().xsi_ais_job_kick(a, user_job)) << "a handler id is no service id";
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_kick(service, user_job));
    EXPECT_EQ(XSI_AIS_JOB_ILLEGAL_SERVICE_ID, job().xsi_ais_job_kick(service, user_job)) << "a service runs once";

    XSI_AIS_JOB_WRITE_STREAM_DATA chunk{};
    chunk.data_size = 4;
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_write_stream_data(user_job, chunk));
    EXPECT_EQ(XSI_AIS_JOB_HDD_FULL, job().xsi_ais_job_write_stream_data(user_job, chunk));
    EXPECT_EQ(1u, jbrg_sim::job::user_job(user_job)->stream_chunks);
    EXPECT_EQ(XSI_AIS_JOB_PARAM_ERROR, job().xsi_ais_job_continuous_read(service))
        << "a print job reads no originals";
}

TEST_F(sim_job, sends_need_a_destination_and_the_prohibition_state_stops_every_start) {
    load("");
    unsigned int h = 0, service = 0, address = 0;
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, h));
    EXPECT_EQ(XSI_AIS_JOB_PARAM_ERROR, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_SEND, h, service));
    XSI_AIS_JOB_SEND_INFO info{};
    info.address_type = 9;
    EXPECT_EQ(XSI_AIS_JOB_PARAM_ERROR, job().xsi_ais_job_add_address(h, address, info)) << "unknown address type";
    info.address_type = XSI_AIS_JOB_ADDRESS_SMB;
    for (int i = 0; i < XSI_AIS_JOB_ADDRESS_LIST_NUM; ++i) {
        ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_add_address(h, address, info));
    }
    EXPECT_EQ(XSI_AIS_JOB_LIMIT, job().xsi_ais_job_add_address(h, address, info));
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT));
    int prohibited = 0;
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_get_start_phb(h, prohibited));
    EXPECT_EQ(1, prohibited);
    EXPECT_EQ(XSI_AIS_JOB_OUTPUT_PROHIBITING, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_SEND, h, service));
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION_PERMIT));
    EXPECT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_SEND, h, service));
    // A reload empties the device and starts the numbering again.
    load("");
    EXPECT_TRUE(jbrg_sim::job::jobinfos().empty());
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, h));
    EXPECT_EQ(1u, h);
}

}  // namespace
