// The job log: the proxy through its Java natives (jbrg.test.joblog.JobLogModule), the service calls it makes
// as the device's call log shows them, and its result table.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "job_log/qsf_fnd_job_log_proxy.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

constexpr const char* kJava = "jbrg/test/job_log/JobLogModule";

// Send log 1 and receive log 2 both hold a receipt 12; image log 7 has a text.
constexpr const char* kHistory = R"({"jobinfo": {
  "joblogs": [
    {"job_log_type": 1, "receipt_id": 12, "job_type": 3, "job_name": "Quote 2024", "user_name": "Ann Smith",
     "login_name": "ann", "domain": "sales.example", "dept_code": "1001", "dept_name": "Sales",
     "start_time": 1700000000, "end_time": 1700000090, "received_time": 1699999990, "total_time": 90,
     "result": 2, "result_err": 4294967295, "input_attribute": 1, "output_attribute": 12, "scan_type": 3,
     "print_color_mode": 1, "copies": 2, "completed_copies": 1, "original_page_number": 3,
     "total_page_number": 6, "print_completion_page_number": 4,
     "send": [
       {"category": 0, "destination_name": "Head office", "result": 0,
        "fax": {"fax_no": "0312345678", "port_no": 1, "page_number": 3, "time": 42}},
       {"category": 2, "destination_name": "Ann", "result": 2, "result_err": 4294967295,
        "mail": {"mail_address": "ann@example.com"}}]},
    {"job_log_type": 2, "receipt_id": 12, "job_type": 4, "job_name": "Incoming", "received_time": 1700000500,
     "receive": [
       {"category": 0, "fax": {"destination_name": "Branch", "fax_no": "0311112222", "port_no": 2, "time": 30,
                               "result": 1, "result_err": 77}},
       {"category": 3, "pc": {"host_name": "files.example"}}]}],
  "imagelogs": [{"image_id": 7, "text": "page 1: quote, 3 pages"}]
}})";

// A record or text out-argument as the call log shows it: its address.
constexpr const char* kAddress = "0x[0-9a-f]+";

std::string with_address(const std::string& before, const std::string& after = "\\)") {
    return before + kAddress + after;
}

class job_log_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override { return kHistory; }
};

TEST_F(job_log_module, reads_a_log_and_its_records_one_call_each) {
    for (const std::string kind : {"send", "receive"}) {
        jbrg_sim::reset();
        const std::string type = kind == "send" ? "1" : "2";
        run_java(kJava, kind == "send" ? "readSendLog" : "readReceiveLog");
        const std::string get = with_address("xsi_ais_jobinfo_get_" + kind + "_info\\(");
        EXPECT_THAT(jbrg_sim::call_texts(),
                    ElementsAre(MatchesRegex(with_address("xsi_ais_jobinfo_retrieve_joblog\\(12, " + type + ", ")),
                                "xsi_ais_jobinfo_create_" + kind + "_info_list(12, " + type + ")", MatchesRegex(get),
                                MatchesRegex(get), MatchesRegex(get), "xsi_ais_jobinfo_delete_" + kind + "_info_list()"))
            << kind;
        // The job log proxy traces nothing, whatever happens.
        EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
    }
}

TEST_F(job_log_module, lists_and_lookups_answer_as_the_device_does) {
    run_java(kJava, "listsAndLookups");
    // Log types reach the service as given, out-of-range ones included.
    const auto retrieves = jbrg_sim::calls_of("xsi_ais_jobinfo_retrieve_joblog");
    ASSERT_EQ(retrieves.size(), 4u);
    EXPECT_EQ(retrieves[2].args[1], "9");
    EXPECT_EQ(retrieves[3].args[1], "-1");
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

TEST_F(job_log_module, image_logs_give_their_text_or_the_empty_text) {
    run_java(kJava, "imageLogs");
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre(MatchesRegex(with_address("xsi_ais_jobinfo_retrieve_imagelog\\(7, ", "\\)")),
                            MatchesRegex(with_address("xsi_ais_jobinfo_retrieve_imagelog\\(7, ", "\\)")),
                            MatchesRegex(with_address("xsi_ais_jobinfo_retrieve_imagelog\\(8, ", "\\)")),
                            "xsi_ais_jobinfo_delete_imagelog(8)", "xsi_ais_jobinfo_delete_imagelog(7)",
                            MatchesRegex(with_address("xsi_ais_jobinfo_retrieve_imagelog\\(7, ", "\\)")),
                            "xsi_ais_jobinfo_delete_imagelog(7)"));
}

TEST_F(job_log_module, a_failed_image_log_is_empty_even_when_the_service_reported_text) {
    // The service reports a text for an image it does not have, and answers "not found".
    jbrg_sim::force_out("xsi_ais_jobinfo_retrieve_imagelog", "text", "forced text", 2);
    run_java(kJava, "failedImageLogIsEmpty");
}

TEST_F(job_log_module, forced_results_reach_java_converted) {
    for (uint32_t code : {0xC1020002u, 0xC1020009u, 0xC102000Au}) {
        jbrg_sim::force_result("xsi_ais_jobinfo_delete_imagelog", PLAT_CODE(code));
    }
    run_java(kJava, "forcedResults");
    EXPECT_EQ(jbrg_sim::calls_of("xsi_ais_jobinfo_delete_imagelog").size(), 4u);
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

TEST_F(job_log_module, refused_arguments_never_reach_the_service) {
    run_java(kJava, "refusedArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

TEST_F(job_log_module, record_fields) { run_java(kJava, "recordFields"); }

TEST_F(job_log_module, job_state_record) { run_java(kJava, "jobState"); }

// ---- The result table and the service calls, from C++ ------------------------------------------------------

class job_log_proxy : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override { return kHistory; }
    orvane::qsf_fnd_job_log_proxy proxy;
};

TEST_F(job_log_proxy, converts_only_the_first_codes_of_the_job_service) {
    struct row {
        uint32_t code;
        int result;
    };
    // The first and last codes it knows; everything else is the catch-all, where the job proxy would tell
    // 0xC102000A.. apart; the low byte alone of another service's code is not enough.
    const row table[] = {
        {0, 0},           {0xC1020002u, 2}, {0xC1020009u, 9}, {0xC1020001u, 1}, {0xC102000Au, 1},
        {0xC1020017u, 1}, {0xC1010002u, 1}, {2u, 1},          {0xFFFFFFFFu, 1},
    };
    for (const row& r : table) {
        EXPECT_EQ(proxy.convert_retcode(PLAT_CODE(r.code)), r.result) << std::hex << r.code;
    }
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty()) << "the conversion is silent";
}

TEST_F(job_log_proxy, every_operation_converts_the_service_code) {
    XSI_AIS_JOBINFO_JOBLOG log{};
    XSI_AIS_JOBINFO_SEND_INFO send{};
    XSI_AIS_JOBINFO_RECEIVE_INFO receive{};
    const std::vector<std::string> ops = {
        "xsi_ais_jobinfo_retrieve_joblog",          "xsi_ais_jobinfo_create_send_info_list",
        "xsi_ais_jobinfo_get_send_info",            "xsi_ais_jobinfo_delete_send_info_list",
        "xsi_ais_jobinfo_create_receive_info_list", "xsi_ais_jobinfo_get_receive_info",
        "xsi_ais_jobinfo_delete_receive_info_list", "xsi_ais_jobinfo_delete_imagelog"};
    for (const std::string& op : ops) jbrg_sim::force_result(op, PLAT_CODE(0xC1020005));
    EXPECT_EQ(proxy.retrieve_joblog(12, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND, log), 5);
    EXPECT_EQ(proxy.create_send_info_list(12, XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND), 5);
    EXPECT_EQ(proxy.get_send_info(send), 5);
    EXPECT_EQ(proxy.delete_send_info_list(), 5);
    EXPECT_EQ(proxy.create_receive_info_list(12, XSI_AIS_JOBINFO_JOBLOG_TYPE_RECEIVE), 5);
    EXPECT_EQ(proxy.get_receive_info(receive), 5);
    EXPECT_EQ(proxy.delete_receive_info_list(), 5);
    EXPECT_EQ(proxy.delete_imagelog(7), 5);
    for (const std::string& op : ops) EXPECT_EQ(jbrg_sim::calls_of(op).size(), 1u) << op;

    // The service fills the caller's record itself: the proxy passes it, not a copy.
    ASSERT_EQ(proxy.retrieve_joblog(12, XSI_AIS_JOBINFO_JOBLOG_TYPE_RECEIVE, log), 0);
    EXPECT_STREQ(log.job_name, "Incoming");
    const auto retrieves = jbrg_sim::calls_of("xsi_ais_jobinfo_retrieve_joblog");
    ASSERT_EQ(retrieves.size(), 2u);
    EXPECT_EQ(retrieves[1].args[2], retrieves[0].args[2]);
}

TEST_F(job_log_proxy, an_image_log_failure_of_any_kind_is_the_empty_text) {
    for (uint32_t code : {0xC1020002u, 0xC102000Fu, 0xC1020001u, 1u}) {
        jbrg_sim::force_result("xsi_ais_jobinfo_retrieve_imagelog", PLAT_CODE(code));
        EXPECT_EQ(proxy.retrieve_imagelog(7), "") << std::hex << code;
    }
    EXPECT_EQ(proxy.retrieve_imagelog(7), "page 1: quote, 3 pages");
    // Image ids are the device's 32-bit values.
    EXPECT_EQ(proxy.retrieve_imagelog(0xFFFFFFFFu), "");
    const auto retrieves = jbrg_sim::calls_of("xsi_ais_jobinfo_retrieve_imagelog");
    ASSERT_FALSE(retrieves.empty());
    EXPECT_EQ(retrieves.back().args[0], "4294967295");
}

}  // namespace
