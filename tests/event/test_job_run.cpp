// Jobs started through the job proxy run on the simulated device and report themselves through both
// observers, in order: start, pages, end of scanning, end, job log.
#include <gmock/gmock.h>

#include <cstdio>
#include <string>
#include <vector>

#include "event/qsf_fnd_job_observer.h"
#include "event/qsf_fnd_jobinfo_observer.h"
#include "jbrg_sim/job.h"
#include "job/qsf_fnd_job_proxy.h"
#include "tests/event/event_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using jbrg_test::java_texts;

class job_run : public jbrg_test::event_test {
protected:
    std::string scenario() const override { return R"({"job": {"pages": 2, "user_name": "alice"}})"; }

    static orvane::qsf_fnd_job_observer& job_observer() {
        static auto* o = jbrg_test::initialised_on<orvane::qsf_fnd_job_observer>("job");
        return *o;
    }
    static orvane::qsf_fnd_jobinfo_observer& jobinfo_observer() {
        static auto* o = jbrg_test::initialised_on<orvane::qsf_fnd_jobinfo_observer>("jobinfo");
        return *o;
    }

    void SetUp() override {
        event_test::SetUp();
        ASSERT_EQ(0, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_add_observer(&job_observer()));
        ASSERT_EQ(0, xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_add_observer(
                         &jobinfo_observer()));
    }
    void TearDown() override {
        xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(&job_observer());
        xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_remove_observer(&jobinfo_observer());
        event_test::TearDown();
    }

    unsigned int start(XSI_AIS_JOB_CATEGORY category) {
        unsigned int handler = 0, service = 0, user_job = 0;
        EXPECT_EQ(0, proxy.generate_jobinfo(category, handler));
        EXPECT_EQ(0, proxy.create_job(category, handler, service));
        EXPECT_EQ(0, proxy.start(service, user_job));
        return user_job;
    }

    static std::vector<std::string> events() { return java_texts(jbrg_test::kEventLog, "all"); }

    orvane::qsf_fnd_job_proxy proxy;
};

TEST_F(job_run, a_copy_job_reports_its_start_pages_end_and_log_in_order) {
    unsigned int job = start(XSI_AIS_JOB_CATEGORY_COPY);
    EXPECT_THAT(events(), ::testing::IsEmpty()) << "a job runs only when let";
    ASSERT_TRUE(jbrg_sim::job::finish(job));
    EXPECT_THAT(events(),
                ElementsAre("state Job{jobid=2001, state=START, jobMode=1, userName=alice, indev=1, outdev=2}",
                            HasSubstr("page PrintPageInfo{userJobId=2001, pageNum=1,"),
                            HasSubstr("page PrintPageInfo{userJobId=2001, pageNum=2,"),
                            "state Job{jobid=2001, state=COMPLETE, jobMode=1, userName=alice, indev=1, outdev=2}",
                            "jobLog JobLogInfo{userJobId=2001, receiptId=1}"));
    auto info = jbrg_sim::job::user_job(job);
    ASSERT_TRUE(info.has_value());
    EXPECT_TRUE(info->ended);
    EXPECT_EQ(XSI_AIS_JOB_RESULT_COMPLETE, info->end_result);
    EXPECT_NE(0, proxy.cancel(job)) << "an ended job cannot be cancelled";
}

TEST_F(job_run, a_scan_job_that_runs_by_itself_reports_the_end_of_scanning) {
    jbrg_sim::job::run_jobs(true);
    jbrg_sim::job::set_pages(1);
    unsigned int job = start(XSI_AIS_JOB_CATEGORY_SCAN);
    ASSERT_TRUE(jbrg_sim::job::finish(job));
    EXPECT_THAT(events(), ElementsAre(HasSubstr("state=START"),
                                      "page ScanPageInfo{userJobId=2001, pageNum=1, customX=0, customY=0, "
                                      "paperSize=0, paperDir=0, duplex=0, colorMode=0, resolution=300}",
                                      HasSubstr("state=SCAN_COMPLETE"), HasSubstr("state=COMPLETE"),
                                      "jobLog JobLogInfo{userJobId=2001, receiptId=1}"));
}

TEST_F(job_run, a_cancelled_job_ends_as_cancelled_without_pages_or_log) {
    unsigned int job = start(XSI_AIS_JOB_CATEGORY_COPY);
    EXPECT_EQ(0, proxy.cancel(job));
    ASSERT_TRUE(jbrg_sim::job::finish(job));
    EXPECT_THAT(events(),
                ElementsAre("state Job{jobid=2001, state=CANCEL, jobMode=1, userName=alice, indev=1, outdev=2}"));
    EXPECT_EQ(XSI_AIS_JOB_RESULT_CANCEL, jbrg_sim::job::user_job(job)->end_result);
    EXPECT_FALSE(jbrg_sim::job::finish(9999)) << "no such job";
}

TEST_F(job_run, a_fax_job_reports_sent_pages) {
    unsigned int handler = 0, service = 0, job = 0, address = 0;
    ASSERT_EQ(0, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_FAX, handler));
    XSI_AIS_JOB_SEND_INFO fax{};
    fax.address_type = XSI_AIS_JOB_ADDRESS_FAX;
    std::snprintf(fax.detail.fax_info.fax_number, sizeof fax.detail.fax_info.fax_number, "0312345678");
    ASSERT_EQ(0, xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_add_address(handler, address, fax));
    ASSERT_EQ(0, proxy.create_job(XSI_AIS_JOB_CATEGORY_FAX, handler, service));
    ASSERT_EQ(0, proxy.start(service, job));
    ASSERT_TRUE(jbrg_sim::job::finish(job));
    EXPECT_THAT(events(), ElementsAre(HasSubstr("state=START"), "page FaxSendPageInfo{userJobId=2001, pageNum=1}",
                                      "page FaxSendPageInfo{userJobId=2001, pageNum=2}", HasSubstr("state=COMPLETE"),
                                      HasSubstr("jobLog")));
}

}  // namespace
