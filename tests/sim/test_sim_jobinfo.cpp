// The simulated device's job information service, driven through the platform facade and the sim's control
// surface: what its scenario section accepts, and how its lists and records behave.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "jbrg_sim/control.h"
#include "xsi_ais_jobinfo.h"

namespace {

class jobinfo_service : public ::testing::Test {
protected:
    void TearDown() override { jbrg_sim::load_scenario(""); }

    static void load(const std::string& json) {
        jbrg_sim::load_scenario(json);
        jbrg_sim::reset();
    }

    static xsi_ais_jobinfo_facade& service() { return *xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance(); }
};

TEST_F(jobinfo_service, refuses_scenarios_it_cannot_hold) {
    const char* refused[] = {
        R"({"jobinfo": {"logs": []}})",
        R"({"jobinfo": {"joblogs": {}}})",
        R"({"jobinfo": {"joblogs": [{"job_log_type": 1, "receipt_id": 1, "colour": 2}]}})",
        R"({"jobinfo": {"joblogs": [{"job_log_type": 4, "receipt_id": 1}]}})",
        R"({"jobinfo": {"joblogs": [{"receipt_id": -1}]}})",
        R"({"jobinfo": {"joblogs": [{"receipt_id": 4294967296}]}})",
        R"({"jobinfo": {"joblogs": [{"receipt_id": 1}, {"receipt_id": 1}]}})",
        R"({"jobinfo": {"joblogs": [{"dept_code": "123456789"}]}})",
        R"({"jobinfo": {"joblogs": [{"send_num": 3}]}})",
        R"({"jobinfo": {"joblogs": [{"receive": [{"pc": {"host_name": 7}}]}]}})",
        R"({"jobinfo": {"imagelogs": [{"text": "no id"}]}})",
        R"({"jobinfo": {"imagelogs": [{"image_id": 3}, {"image_id": 3}]}})",
    };
    for (const char* scenario : refused) {
        EXPECT_THROW(jbrg_sim::load_scenario(scenario), std::runtime_error) << scenario;
    }
    // A text that fills its field to the last usable byte fits; the same receipt id in two logs is two entries.
    EXPECT_NO_THROW(jbrg_sim::load_scenario(
        R"({"jobinfo": {"joblogs": [{"job_log_type": 0, "receipt_id": 1, "dept_code": "12345678"},
                                    {"job_log_type": 3, "receipt_id": 1}]}})"));
}

TEST_F(jobinfo_service, counts_the_records_of_each_entry) {
    load(R"({"jobinfo": {"joblogs": [{"job_log_type": 1, "receipt_id": 5,
              "send": [{"category": 1, "i_fax": {"i_fax_address": "fax@example.com"}}, {}, {}],
              "receive": [{"category": 2, "mail": {"mail_address": "in@example.com"}}]}]}})");
    XSI_AIS_JOBINFO_JOBLOG log{};
    ASSERT_EQ(service().xsi_ais_jobinfo_retrieve_joblog(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND, log), XSI_AIS_JOBINFO_OK);
    EXPECT_EQ(log.send_num, 3u);
    EXPECT_EQ(log.receive_num, 1u);

    ASSERT_EQ(service().xsi_ais_jobinfo_create_receive_info_list(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND),
              XSI_AIS_JOBINFO_OK);
    XSI_AIS_JOBINFO_RECEIVE_INFO receive{};
    ASSERT_EQ(service().xsi_ais_jobinfo_get_receive_info(receive), XSI_AIS_JOBINFO_OK);
    EXPECT_EQ(receive.category, XSI_AIS_JOBINFO_RECEIVE_CATEGORY_MAIL);
    EXPECT_STREQ(receive.detail.mail.mail_address, "in@example.com");
    // The record of a failed get is cleared, so that nothing stale is taken for a record.
    EXPECT_EQ(service().xsi_ais_jobinfo_get_receive_info(receive), XSI_AIS_JOBINFO_NO_HIT);
    EXPECT_EQ(receive.category, 0);
    EXPECT_STREQ(receive.detail.mail.mail_address, "");
    EXPECT_EQ(service().xsi_ais_jobinfo_get_receive_info(receive), XSI_AIS_JOBINFO_NO_HIT) << "and stays at the end";

    std::memset(&log, 0x5A, sizeof log);
    EXPECT_EQ(service().xsi_ais_jobinfo_retrieve_joblog(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_PRINT, log),
              XSI_AIS_JOBINFO_NOT_FOUND);
    EXPECT_EQ(log.receipt_id, 0u);
    EXPECT_EQ(log.job_name[0], '\0');
}

TEST_F(jobinfo_service, a_load_ends_the_open_lists) {
    load(R"({"jobinfo": {"joblogs": [{"job_log_type": 1, "receipt_id": 5, "send": [{}]}]}})");
    ASSERT_EQ(service().xsi_ais_jobinfo_create_send_info_list(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND), XSI_AIS_JOBINFO_OK);
    ASSERT_EQ(service().xsi_ais_jobinfo_create_receive_info_list(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND),
              XSI_AIS_JOBINFO_OK);
    jbrg_sim::reset();
    XSI_AIS_JOBINFO_SEND_INFO send{};
    EXPECT_EQ(service().xsi_ais_jobinfo_get_send_info(send), XSI_AIS_JOBINFO_PARAM_ERROR);
    EXPECT_EQ(service().xsi_ais_jobinfo_delete_receive_info_list(), XSI_AIS_JOBINFO_PARAM_ERROR);
    EXPECT_EQ(service().xsi_ais_jobinfo_create_send_info_list(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND), XSI_AIS_JOBINFO_OK);
}

TEST_F(jobinfo_service, a_deleted_image_log_comes_back_with_the_next_load) {
    load(R"({"jobinfo": {"imagelogs": [{"image_id": 4294967295, "text": "last"}, {"image_id": 0}]}})");
    std::string text = "stale";
    EXPECT_EQ(service().xsi_ais_jobinfo_retrieve_imagelog(0, text), XSI_AIS_JOBINFO_OK);
    EXPECT_EQ(text, "") << "an image log without text";
    ASSERT_EQ(service().xsi_ais_jobinfo_delete_imagelog(4294967295u), XSI_AIS_JOBINFO_OK);
    text = "stale";
    EXPECT_EQ(service().xsi_ais_jobinfo_retrieve_imagelog(4294967295u, text), XSI_AIS_JOBINFO_NOT_FOUND);
    EXPECT_EQ(text, "");
    jbrg_sim::reset();
    EXPECT_EQ(service().xsi_ais_jobinfo_retrieve_imagelog(4294967295u, text), XSI_AIS_JOBINFO_OK);
    EXPECT_EQ(text, "last");
}

TEST_F(jobinfo_service, forced_results_do_nothing_else) {
    load(R"({"jobinfo": {"joblogs": [{"job_log_type": 1, "receipt_id": 5, "send": [{}]}],
                         "imagelogs": [{"image_id": 1, "text": "one"}]}})");
    jbrg_sim::force_result("xsi_ais_jobinfo_create_send_info_list", XSI_AIS_JOBINFO_IPC_ERROR);
    EXPECT_EQ(service().xsi_ais_jobinfo_create_send_info_list(5, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND),
              XSI_AIS_JOBINFO_IPC_ERROR);
    XSI_AIS_JOBINFO_SEND_INFO send{};
    EXPECT_EQ(service().xsi_ais_jobinfo_get_send_info(send), XSI_AIS_JOBINFO_PARAM_ERROR) << "no list was made";

    jbrg_sim::force_result("xsi_ais_jobinfo_delete_imagelog", XSI_AIS_JOBINFO_DUPL_OBSERVER);
    EXPECT_EQ(service().xsi_ais_jobinfo_delete_imagelog(1), XSI_AIS_JOBINFO_DUPL_OBSERVER);
    std::string text;
    EXPECT_EQ(service().xsi_ais_jobinfo_retrieve_imagelog(1, text), XSI_AIS_JOBINFO_OK) << "still there";
    EXPECT_EQ(text, "one");
}

}  // namespace
