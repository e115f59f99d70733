// The job proxy against the simulated device: what reaches the platform (the call log), what comes back,
// and the trace lines that carry information.
#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "job/qsf_fnd_job_proxy.h"
#include "tests/job/job_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using jbrg_test::traces_containing;
using orvane::qsf_fnd_job_proxy;

// Job result codes the tests name.
constexpr int kOk = 0;
constexpr int kError = 1;
constexpr int kParamError = 8;

class job_proxy : public jbrg_test::job_test {
protected:
    // A set of the category, started and kicked: its ids.
    struct running {
        unsigned int handler = 0, service = 0, user_job = 0;
    };
    running run(XSI_AIS_JOB_CATEGORY category) {
        running r;
        EXPECT_EQ(kOk, proxy.generate_jobinfo(category, r.handler));
        if (category == XSI_AIS_JOB_CATEGORY_DIRECT_PRINT) {
            EXPECT_EQ(kOk, proxy.direct_print_prepare(r.handler, XSI_AIS_JOB_STREAM_FILE_PDF));
        }
        EXPECT_EQ(kOk, proxy.create_job(category, r.handler, r.service));
        EXPECT_EQ(kOk, proxy.start(r.service, r.user_job));
        jbrg_sim::clear_calls();
        jbrg_sim::clear_traces();
        return r;
    }

    static std::string bytes(jbyteArray array) {
        if (array == nullptr) return "(null)";
        JNIEnv* e = jbrg_test::env();
        std::string s(static_cast<std::size_t>(e->GetArrayLength(array)), '\0');
        e->GetByteArrayRegion(array, 0, static_cast<jsize>(s.size()), reinterpret_cast<jbyte*>(s.data()));
        e->DeleteLocalRef(array);
        return s;
    }

    qsf_fnd_job_proxy proxy;
};

// ---- Result codes -------------------------------------------------------------------------------------------

TEST_F(job_proxy, platform_codes_fold_into_the_job_result_with_the_login_error_out_of_order_and_unknown_codes_into_1) {
    struct row {
        uint32_t code;
        int result;
        const char* name;
    };
    const row table[] = {
        {0x00000000, 0, "XSI_AIS_JOB_OK"},
        {0xC1020002, 2, "XSI_AIS_JOB_DUPL_OBSERVER"},
        {0xC1020008, 8, "XSI_AIS_JOB_PARAM_ERROR"},
        {0xC1020013, 19, "XSI_AIS_JOB_USER_JOB_LIMIT_ERROR"},
        // Not monotonic at the end: the login error comes last in the platform's numbering but is 20.
        {0xC1020014, 21, "XSI_AIS_JOB_ILLEGAL_SERVICE_ID"},
        {0xC1020016, 23, "XSI_AIS_JOB_OBTAIN_PNL_RESOURCE_ERROR"},
        {0xC1020017, 20, "XSI_AIS_JOB_LOGIN_ERROR"},
    };
    for (const row& r : table) {
        jbrg_sim::clear_traces();
        jbrg_sim::force_result("xsi_ais_job_commit_jobinfo", static_cast<int32_t>(r.code));
        EXPECT_EQ(r.result, proxy.commit_jobinfo(1)) << r.name;
        EXPECT_THAT(traces_containing(std::string("::convert_retcode,code = ") + r.name + "\n"), SizeIs(1)) << r.name;
    }
    // Codes the module does not know, including neighbours of its own and the general failure 0xC1020001.
    for (uint32_t unknown : {0xC1020001u, 0xC1020018u, 0xC1010001u, 0x00000001u, 0xFFFFFFFFu}) {
        jbrg_sim::force_result("xsi_ais_job_commit_jobinfo", static_cast<int32_t>(unknown));
        EXPECT_EQ(kError, proxy.commit_jobinfo(1)) << std::hex << unknown;
    }
    EXPECT_THAT(traces_containing("::convert_retcode,code = unknown(0xc1020001)\n"), SizeIs(1));
    EXPECT_THAT(traces_containing("::convert_retcode,code = unknown(0xffffffff)\n"), SizeIs(1));
}

TEST_F(job_proxy, device_failures_arrive_as_job_results) {
    unsigned int handler = 0, service = 0;
    EXPECT_EQ(11, proxy.generate_jobinfo(static_cast<XSI_AIS_JOB_CATEGORY>(99), handler)) << "no such category";
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_FAX, handler));
    EXPECT_EQ(5, proxy.create_job(XSI_AIS_JOB_CATEGORY_FAX, handler, service)) << "fax is prohibited here";
    EXPECT_EQ(kParamError, proxy.set_value(handler, XSI_AIS_JOB_SETTING_COPIES, std::string("x"))) << "wrong kind";
    EXPECT_EQ(10, proxy.rollback_jobinfo(handler)) << "nothing copied to roll back to";
    EXPECT_EQ(kOk, proxy.set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT));
    EXPECT_EQ(4, proxy.check_state_of_prohibition());
}

// ---- Argument mapping ---------------------------------------------------------------------------------------

TEST_F(job_proxy, function_type_and_signage_mode_are_mapped_and_a_bad_type_never_reaches_the_platform) {
    using orvane::XIOF_SLO_JOB_FUNC_TYPE;
    using orvane::XIOF_SLO_JOB_SIGNAGE_MODE;
    auto func = [](int v) { return static_cast<XIOF_SLO_JOB_FUNC_TYPE>(v); };
    auto mode = [](int v) { return static_cast<XIOF_SLO_JOB_SIGNAGE_MODE>(v); };
    EXPECT_EQ(kOk, proxy.set_signage_mode(func(1), mode(3)));
    EXPECT_EQ(kOk, proxy.set_signage_mode(func(2), mode(5)));
    EXPECT_EQ(kOk, proxy.set_signage_mode(func(2), mode(2)));
    EXPECT_EQ(kOk, proxy.set_signage_mode(func(1), mode(1)));
    EXPECT_EQ(kParamError, proxy.set_signage_mode(func(3), mode(2)));
    EXPECT_EQ(kParamError, proxy.set_signage_mode(func(0), mode(2)));
    EXPECT_EQ(kOk, proxy.basic_func_set_value(func(2), XSI_AIS_JOB_SETTING_RESOLUTION, 600));
    EXPECT_EQ(kParamError, proxy.basic_func_set_value(func(-1), XSI_AIS_JOB_SETTING_RESOLUTION, 600));
    EXPECT_THAT(job_calls(), ElementsAre("xsi_ais_job_set_signage_mode(0, 2)", "xsi_ais_job_set_signage_mode(1, 0)",
                                         "xsi_ais_job_set_signage_mode(1, 1)", "xsi_ais_job_set_signage_mode(0, 0)",
                                         "xsi_ais_job_basic_func_set_value(1, 5, 600)"));
    EXPECT_EQ(0, jbrg_sim::job::signage_mode(XSI_AIS_JOB_FUNC_COPY));
    EXPECT_EQ(1, jbrg_sim::job::signage_mode(XSI_AIS_JOB_FUNC_SCAN));
    // The entry line shows the mode as 0, whatever it is.
    EXPECT_THAT(traces_containing("::set_signage_mode,[Start]. func_type = [1], , mode = [0].\n"), SizeIs(2));
    EXPECT_THAT(traces_containing("::set_signage_mode,[Start]. func_type = [2], , mode = [0].\n"), SizeIs(2));

    // The scan function's default now reaches new scan sets, and not copy sets.
    unsigned int scan = 0, copy = 0, value = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, scan));
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, copy));
    EXPECT_EQ(kOk, proxy.get_value(scan, XSI_AIS_JOB_SETTING_RESOLUTION, value));
    EXPECT_EQ(600u, value);
    EXPECT_EQ(kOk, proxy.get_value(copy, XSI_AIS_JOB_SETTING_RESOLUTION, value));
    EXPECT_EQ(300u, value);
}

TEST_F(job_proxy, settings_reach_the_platform_in_their_forms) {
    unsigned int handler = 0;
    dev_ulong cert = login();
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, handler, cert));
    EXPECT_EQ(kOk, proxy.set_value(handler, XSI_AIS_JOB_SETTING_COPIES, 4u));
    EXPECT_EQ(kOk, proxy.set_value(handler, XSI_AIS_JOB_SETTING_FILE_NAME, std::string("report")));
    EXPECT_EQ(kOk, proxy.set_value(handler, XSI_AIS_PHB_SETTING_ZOOM_XY, 50, 70, 1));
    unsigned int copies = 0, v1 = 0, v2 = 0, v3 = 0, dflt = 0;
    EXPECT_EQ(kOk, proxy.get_value(handler, XSI_AIS_JOB_SETTING_COPIES, copies));
    EXPECT_EQ("report", proxy.get_value(handler, XSI_AIS_JOB_SETTING_FILE_NAME));
    EXPECT_EQ(kOk, proxy.get_value(handler, XSI_AIS_PHB_SETTING_ZOOM_XY, v1, v2, v3));
    EXPECT_EQ(kOk, proxy.get_default_jobinfo_val(XSI_AIS_JOB_SETTING_COPIES, dflt));
    EXPECT_EQ(4u, copies);
    EXPECT_EQ((std::vector<unsigned int>{50, 70, 1}), (std::vector<unsigned int>{v1, v2, v3}));
    EXPECT_EQ(2u, dflt) << "the scenario's device default";
    EXPECT_THAT(job_calls(),
                ElementsAre("xsi_ais_job_generate_jobinfo_bkg(3, " + std::to_string(cert) + ", *)", "xsi_ais_job_set_value(1, 1, 4)",
                            "xsi_ais_job_set_value(1, 10, report)", "xsi_ais_job_set_value(1, 2, 50, 70, 1)",
                            "xsi_ais_job_get_value(1, 1, *)", "xsi_ais_job_get_value(1, 10, *)",
                            "xsi_ais_job_get_value(1, 2, *, *, *)", "xsi_ais_job_get_default_jobinfo_val(1, *)"));
    // The certificate id is recorded on the set.
    ASSERT_THAT(jbrg_sim::job::jobinfos(), SizeIs(1));
    EXPECT_EQ(cert, jbrg_sim::job::jobinfos()[0].cert_id);

    // A group of changes rolled back, then one kept.
    EXPECT_EQ(kOk, proxy.copy_jobinfo(handler));
    EXPECT_EQ(kOk, proxy.set_value(handler, XSI_AIS_JOB_SETTING_COPIES, 9u));
    EXPECT_EQ(kOk, proxy.rollback_jobinfo(handler));
    EXPECT_EQ(kOk, proxy.get_value(handler, XSI_AIS_JOB_SETTING_COPIES, copies));
    EXPECT_EQ(4u, copies);
    EXPECT_EQ(kOk, proxy.reset_jobinfo(handler));
    EXPECT_EQ("scan", proxy.get_value(handler, XSI_AIS_JOB_SETTING_FILE_NAME));
    EXPECT_EQ(kOk, proxy.delete_jobinfo(handler));
    EXPECT_THAT(jbrg_sim::job::jobinfos(), IsEmpty());
}

// ---- generate_jobinfo's clean-up ----------------------------------------------------------------------------

TEST_F(job_proxy, a_failing_generate_jobinfo_that_left_a_set_deletes_it_and_clears_the_handler) {
    for (int i = 1; i <= 5; ++i) {
        unsigned int h = 0;
        ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, h));
    }
    jbrg_sim::clear_calls();
    jbrg_sim::clear_traces();
    jbrg_sim::force_result("xsi_ais_job_generate_jobinfo", XSI_AIS_JOB_LIMIT);
    jbrg_sim::force_out("xsi_ais_job_generate_jobinfo", "handler_id", "5");
    unsigned int handler = 99;
    EXPECT_EQ(6, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, handler)) << "the first failure's result";
    EXPECT_EQ(0u, handler);
    EXPECT_THAT(job_calls(), ElementsAre("xsi_ais_job_generate_jobinfo(1, *)", "xsi_ais_job_delete_jobinfo(5)"));
    std::vector<unsigned> left;
    for (const auto& j : jbrg_sim::job::jobinfos()) left.push_back(j.handler_id);
    EXPECT_EQ((std::vector<unsigned>{1, 2, 3, 4}), left);
    EXPECT_THAT(traces_containing("::generate_jobinfo,[Info] xsi_ais_job_delete_jobinfo = [0]\n"), SizeIs(1));
    EXPECT_THAT(traces_containing("::generate_jobinfo,handler_id = [0]\n"), SizeIs(1));

    // The certificate form cleans up the same way; the deletion's own failure only reaches the trace.
    jbrg_sim::clear_traces();
    jbrg_sim::force_result("xsi_ais_job_generate_jobinfo_bkg", XSI_AIS_JOB_LOGIN_ERROR);
    jbrg_sim::force_out("xsi_ais_job_generate_jobinfo_bkg", "handler_id", "5");
    handler = 0;
    EXPECT_EQ(20, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, handler, 3));
    EXPECT_EQ(0u, handler);
    EXPECT_THAT(traces_containing("::generate_jobinfo,[Info] xsi_ais_job_delete_jobinfo = [8]\n"), SizeIs(1));

    // A failure that handed out nothing deletes nothing.
    jbrg_sim::clear_calls();
    jbrg_sim::force_result("xsi_ais_job_generate_jobinfo", XSI_AIS_JOB_LIMIT);
    EXPECT_EQ(6, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, handler));
    EXPECT_THAT(job_calls(), ElementsAre("xsi_ais_job_generate_jobinfo(1, *)"));
}

// ---- Jobs ----------------------------------------------------------------------------------------------------

TEST_F(job_proxy, jobs_are_created_started_listed_and_ended_through_their_service_ids) {
    unsigned int handler = 0, service = 0, user_job = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SCAN, handler));
    EXPECT_EQ(kOk, proxy.create_job(XSI_AIS_JOB_CATEGORY_SCAN, handler, service));
    EXPECT_EQ(kOk, proxy.start(service, user_job));
    EXPECT_EQ(1001u, service);
    EXPECT_EQ(2001u, user_job);
    EXPECT_THAT(traces_containing("::create_job,service_id = [1001]\n"), SizeIs(1));
    EXPECT_THAT(traces_containing("::start,user_job_id = [2001]\n"), SizeIs(1));
    running copy = run(XSI_AIS_JOB_CATEGORY_COPY);
    std::vector<unsigned int> ids;
    EXPECT_EQ(kOk, proxy.get_job_list(XSI_AIS_JOB_KIND_SCAN, ids));
    EXPECT_EQ((std::vector<unsigned int>{2001}), ids);
    EXPECT_EQ(kOk, proxy.get_job_list(XSI_AIS_JOB_KIND_ALL, ids));
    EXPECT_EQ((std::vector<unsigned int>{2001, 2002}), ids);

    jbrg_sim::clear_calls();
    EXPECT_EQ(kOk, proxy.continuous_read(user_job));
    EXPECT_EQ(kOk, proxy.continuous_read_end(user_job));
    EXPECT_EQ(kOk, proxy.cancel(user_job));
    EXPECT_EQ(kOk, proxy.remove_job(copy.user_job, 43));
    EXPECT_THAT(job_calls(),
                ElementsAre("xsi_ais_job_get_service_id(2001, *)", "xsi_ais_job_continuous_read(1001)",
                            "xsi_ais_job_get_service_id(2001, *)", "xsi_ais_job_continuous_read_end(1001)",
                            "xsi_ais_job_get_service_id(2001, *)", "xsi_ais_job_cancel(1001, 2001, 0)",
                            "xsi_ais_job_get_service_id(2002, *)", "xsi_ais_job_cancel(1002, 2002, 43)"));
    EXPECT_EQ(kOk, proxy.get_job_list(XSI_AIS_JOB_KIND_ALL, ids));
    EXPECT_THAT(ids, IsEmpty());
    // Removal takes the plain cancel with the certificate id.
    EXPECT_EQ(43u, jbrg_sim::job::user_job(copy.user_job)->cancel_cert_id);
    EXPECT_FALSE(jbrg_sim::job::user_job(copy.user_job)->cancel_bkg);

    running fax = run(XSI_AIS_JOB_CATEGORY_SCAN);
    dev_ulong cert = login();
    EXPECT_EQ(kOk, proxy.cancel(fax.user_job, cert));
    EXPECT_THAT(job_calls(), ElementsAre("xsi_ais_job_get_service_id(2003, *)",
                                         "xsi_ais_job_cancel_bkg(1003, 2003, " + std::to_string(cert) + ")"));
    EXPECT_TRUE(jbrg_sim::job::user_job(fax.user_job)->cancel_bkg);
    EXPECT_EQ(17, proxy.cancel(fax.user_job, cert)) << "already cancelled";
}

TEST_F(job_proxy, operations_on_a_user_job_whose_service_cannot_be_found_call_nothing_else) {
    EXPECT_EQ(15, proxy.cancel(7));
    EXPECT_EQ(15, proxy.cancel(7, 42));
    EXPECT_EQ(15, proxy.remove_job(7, 42));
    EXPECT_EQ(15, proxy.continuous_read(7));
    EXPECT_EQ(15, proxy.continuous_read_end(7));
    EXPECT_THAT(job_calls(), ElementsAre("xsi_ais_job_get_service_id(7, *)", "xsi_ais_job_get_service_id(7, *)",
                                         "xsi_ais_job_get_service_id(7, *)", "xsi_ais_job_get_service_id(7, *)",
                                         "xsi_ais_job_get_service_id(7, *)"));
    EXPECT_THAT(traces_containing("::cancel,[End] xsi_ais_job_get_service_id error\n"), SizeIs(2));
    EXPECT_THAT(traces_containing("::remove_job,[End] xsi_ais_job_get_service_id error\n"), SizeIs(1));

    // A running job whose lookup fails is not cancelled either.
    running r = run(XSI_AIS_JOB_CATEGORY_COPY);
    jbrg_sim::force_result("xsi_ais_job_get_service_id", XSI_AIS_JOB_IPC_ERROR);
    EXPECT_EQ(7, proxy.cancel(r.user_job));
    EXPECT_FALSE(jbrg_sim::job::user_job(r.user_job)->cancelled);
}

// ---- Out-parameters -----------------------------------------------------------------------------------------

TEST_F(job_proxy, out_parameters_carry_the_platform_answers_and_failures_write_what_the_platform_left) {
    unsigned int handler = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, handler));

    bool prohibited = true;
    EXPECT_EQ(kOk, proxy.get_start_phb(handler, prohibited));
    EXPECT_FALSE(prohibited);
    EXPECT_THAT(traces_containing("::get_start_phb,handler_id = [1], result = false\n"), SizeIs(1));
    jbrg_sim::force_out("xsi_ais_job_get_start_phb", "prohibited", "2");
    EXPECT_EQ(kOk, proxy.get_start_phb(handler, prohibited));
    EXPECT_TRUE(prohibited) << "any non-zero answer is true";
    EXPECT_THAT(traces_containing("::get_start_phb,handler_id = [1], result = true\n"), SizeIs(1));
    prohibited = true;
    EXPECT_EQ(kParamError, proxy.get_start_phb(999, prohibited));
    EXPECT_FALSE(prohibited) << "a failure that wrote nothing reads as not prohibited";

    unsigned short disabled = 0;
    EXPECT_EQ(kOk, proxy.get_disable_info(handler, XSI_AIS_PHB_DISABLE_COLOR_MODE, disabled));
    EXPECT_EQ(18, disabled);
    EXPECT_EQ(kOk, proxy.get_disable_info(handler, XSI_AIS_PHB_DISABLE_FILE_FORMAT, disabled));
    EXPECT_EQ(0xFFFF, disabled);
    EXPECT_THAT(traces_containing("::get_disable_info,[End]. handler_id = [1], setting_id = [0], val = [0x0012]\n"),
                SizeIs(1));
    EXPECT_THAT(traces_containing("::get_disable_info,[End]. handler_id = [1], setting_id = [9], val = [0xFFFF]\n"),
                SizeIs(1));

    XSI_AIS_PHB_GET_MESSAGE msg{};
    EXPECT_EQ(kOk, proxy.get_main_message(handler, msg));
    EXPECT_EQ(301u, msg.main_msg_1);
    EXPECT_EQ(7u, msg.main_msg_3);
    EXPECT_STREQ("toner.txt", msg.msg_detail_filename);

    // A failing get_value leaves the value as it was; a failing text answer is empty and traced so.
    unsigned int value = 12345;
    EXPECT_EQ(kParamError, proxy.get_value(999, XSI_AIS_JOB_SETTING_COPIES, value));
    EXPECT_EQ(12345u, value);
    EXPECT_EQ("", proxy.get_value(999, XSI_AIS_JOB_SETTING_FILE_NAME));
    EXPECT_EQ("", proxy.get_value(handler, XSI_AIS_JOB_SETTING_COPIES)) << "an integer setting has no text";
    EXPECT_THAT(traces_containing("::get_value,val = empty\n"), SizeIs(2));
}

TEST_F(job_proxy, destinations_are_added_read_and_listed_with_the_platform_count_only_traced) {
    unsigned int handler = 0, mail = 0, ftp = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SEND, handler));
    XSI_AIS_JOB_SEND_INFO info{};
    info.address_type = XSI_AIS_JOB_ADDRESS_MAIL;
    std::strcpy(info.detail.mail_info.mail_address, "a@example.com");
    EXPECT_EQ(kOk, proxy.add_send_address(handler, mail, info));
    info = XSI_AIS_JOB_SEND_INFO{};
    info.address_type = XSI_AIS_JOB_ADDRESS_FTP;
    std::strcpy(info.detail.ftp_info.host_name, "ftp.example.com");
    info.detail.ftp_info.port_num = 21;
    EXPECT_EQ(kOk, proxy.add_send_address(handler, ftp, info));
    EXPECT_EQ(1u, mail);
    EXPECT_EQ(2u, ftp);
    EXPECT_THAT(traces_containing("::add_send_address,address_type = [3]\n"), SizeIs(1));

    XSI_AIS_JOB_SEND_INFO read{};
    EXPECT_EQ(kOk, proxy.get_send_address(handler, ftp, read));
    EXPECT_EQ(static_cast<dev_ulong>(XSI_AIS_JOB_ADDRESS_FTP), read.address_type);
    EXPECT_STREQ("ftp.example.com", read.detail.ftp_info.host_name);
    EXPECT_EQ(21u, read.detail.ftp_info.port_num);

    std::vector<unsigned int> ids{77};
    EXPECT_EQ(kOk, proxy.get_send_address_id(handler, ids));
    EXPECT_EQ((std::vector<unsigned int>{1, 2}), ids);
    jbrg_sim::force_out("xsi_ais_job_get_address_id", "count", "5");
    EXPECT_EQ(kOk, proxy.get_send_address_id(handler, ids));
    EXPECT_THAT(ids, SizeIs(2)) << "the platform's count does not change the list";
    EXPECT_THAT(traces_containing("[End]. handler_id = [1], address_id_num = [5], list_size = [2].\n"), SizeIs(1));

    EXPECT_EQ(kOk, proxy.update_send_address(handler, mail, info));
    EXPECT_EQ(kOk, proxy.delete_send_address(handler, ftp));
    EXPECT_EQ(kParamError, proxy.delete_send_address(handler, ftp));
    EXPECT_EQ(kOk, proxy.delete_all_send_address(handler));
    EXPECT_EQ(kOk, proxy.get_send_address_id(handler, ids));
    EXPECT_THAT(ids, IsEmpty());
}

// ---- Streams, scan data, OCR --------------------------------------------------------------------------------

TEST_F(job_proxy, stream_chunks_travel_in_a_platform_record_that_is_given_back) {
    running r = run(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT);
    std::vector<signed char> first(16384, 'a');
    signed char last[] = {'%', 'E', 'O', 'F'};
    EXPECT_EQ(kOk, proxy.write_stream_data(r.user_job, 16384, first.data(), XSI_AIS_JOB_STREAM_CONTINUE));
    EXPECT_EQ(kOk, proxy.write_stream_data(r.user_job, 4, last, XSI_AIS_JOB_STREAM_END));
    EXPECT_EQ(kParamError, proxy.write_stream_data(r.user_job, 4, last, XSI_AIS_JOB_STREAM_CONTINUE))
        << "the stream has ended";
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem"), SizeIs(3));
    for (const auto& c : jbrg_sim::calls_of("emwOSWSubAllocMem")) EXPECT_THAT(c.args, ElementsAre("16392"));
    for (const auto& c : jbrg_sim::calls_of("emwOSWOrgFreeMemPart")) EXPECT_THAT(c.args, ElementsAre("0", "block"));
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWOrgFreeMemPart"), SizeIs(3));
    EXPECT_EQ(0u, jbrg_sim::blocks_in_use());
    auto job = jbrg_sim::job::user_job(r.user_job);
    ASSERT_TRUE(job.has_value());
    EXPECT_EQ(std::string(16384, 'a') + "%EOF", job->stream);
    EXPECT_EQ(2u, job->stream_chunks);
    EXPECT_EQ(XSI_AIS_JOB_STREAM_END, job->stream_state);

    // An oversized size reaches the platform as given, which refuses it; the record is still given back.
    running other = run(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT);
    EXPECT_EQ(kParamError, proxy.write_stream_data(other.user_job, 20000, first.data(), XSI_AIS_JOB_STREAM_CONTINUE));
    EXPECT_EQ(0u, jbrg_sim::blocks_in_use());
    EXPECT_EQ(15, proxy.write_stream_data(4242, 4, last, XSI_AIS_JOB_STREAM_END)) << "no such user job";

    // An exhausted partition sends nothing and answers the catch-all failure.
    jbrg_sim::force_result("emwOSWSubAllocMem", 1);
    jbrg_sim::clear_calls();
    EXPECT_EQ(1, proxy.write_stream_data(other.user_job, 4, last, XSI_AIS_JOB_STREAM_END));
    EXPECT_TRUE(jbrg_sim::calls_of("xsi_ais_job_write_stream_data").empty());
}

TEST_F(job_proxy, scan_data_arrives_as_byte_arrays_chunk_by_chunk_and_null_on_failure) {
    running r = run(XSI_AIS_JOB_CATEGORY_SCAN);
    XSI_AIS_JOB_GET_SCAN_DATA data{};
    std::vector<std::pair<std::string, dev_ulong>> got;
    for (int i = 0; i < 5; ++i) {
        std::string chunk = bytes(proxy.get_scan_data(r.user_job, data));
        got.emplace_back(chunk, data.doc_state);
    }
    using chunk = std::pair<std::string, dev_ulong>;
    EXPECT_THAT(got, ElementsAre(chunk{"page ", 0}, chunk{"one", 1}, chunk{"secon", 0}, chunk{"d pag", 0},
                                 chunk{"e!", 2}));
    EXPECT_EQ("(null)", bytes(proxy.get_scan_data(r.user_job, data))) << "after the end of the document";
    EXPECT_EQ("(null)", bytes(proxy.get_scan_data(4242, data))) << "no such user job";
    jbrg_sim::force_result("xsi_ais_job_get_scan_data", XSI_AIS_JOB_HDD_FULL);
    EXPECT_EQ("(null)", bytes(proxy.get_scan_data(r.user_job, data)));
    EXPECT_THAT(traces_containing("convert_retcode"), IsEmpty()) << "the code is not converted";
}

TEST_F(job_proxy, ocr_text_lines_skip_any_number_of_page_records) {
    unsigned int handler = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_SCAN, handler));
    jbrg_sim::clear_calls();
    XSI_AIS_JOB_GET_OCR_DATA data{};
    EXPECT_EQ("Invoice", bytes(proxy.get_ocr_text_data(handler, data)));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_job_get_ocr_text_data"), SizeIs(3)) << "two page records skipped";
    EXPECT_EQ(static_cast<dev_ulong>(XSI_AIS_JOB_OCR_TEXT_LINE), data.ocr_data_category);
    EXPECT_EQ(1, data.ocr_data.text_data.block_no);
    EXPECT_EQ(120u, data.ocr_data.text_data.line_rect.right);
    EXPECT_EQ(static_cast<dev_ulong>(XSI_AIS_JOB_OCR_CONTINUE), data.retrieve_state);

    EXPECT_EQ("Total 42", bytes(proxy.get_ocr_text_data(handler, data)));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_job_get_ocr_text_data"), SizeIs(5));
    EXPECT_EQ(2u, data.page_no);
    EXPECT_EQ(3, data.ocr_data.text_data.line_no);
    EXPECT_EQ(static_cast<dev_ulong>(XSI_AIS_JOB_OCR_END), data.retrieve_state);

    EXPECT_EQ("(null)", bytes(proxy.get_ocr_text_data(handler, data)));
    EXPECT_THAT(traces_containing("::get_ocr_text_data,Fail to get OCR data. rc = [12]\n"), SizeIs(1));
    EXPECT_EQ("(null)", bytes(proxy.get_ocr_text_data(999, data)));
    EXPECT_THAT(traces_containing("::get_ocr_text_data,Fail to get OCR data. rc = [8]\n"), SizeIs(1));
}

// ---- Documents ------------------------------------------------------------------------------------------------

TEST_F(job_proxy, document_preparations_reach_the_platform_and_let_their_jobs_start) {
    unsigned int box = 0, print = 0, retrieve = 0, service = 0;
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_BOX, box));
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, print));
    ASSERT_EQ(kOk, proxy.generate_jobinfo(XSI_AIS_JOB_CATEGORY_RETRIEVE, retrieve));
    EXPECT_EQ(kParamError, proxy.create_job(XSI_AIS_JOB_CATEGORY_BOX, box, service)) << "not prepared yet";
    jbrg_sim::clear_calls();
    XSI_AIS_BOX_JOB_INIT_SETTING setting{};
    setting.box_job_type = XSI_AIS_BOX_JOB_PRINT;
    setting.box_id = 12;
    XSI_AIS_PHB_COMBINE_DOC_INFO combine{};
    char path[] = "/mnt/usb", name[] = "a.pdf", pass[] = "secret", store[] = "/tmp/out";
    EXPECT_EQ(kOk, proxy.box_job_prepare(box, setting));
    EXPECT_EQ(kOk, proxy.direct_print_prepare(print, path, name));
    EXPECT_EQ(kParamError, proxy.direct_print_prepare(print, nullptr, name));
    EXPECT_EQ(kOk, proxy.retrieve_document_prepare(retrieve, pass, 12, 3000000000u, store));
    EXPECT_EQ(kOk, proxy.combine_document(box, combine));
    EXPECT_THAT(job_calls(),
                ElementsAre("xsi_ais_job_box_job_prepare(1, *)", "xsi_ais_job_direct_print_prepare(2, /mnt/usb, a.pdf)",
                            "xsi_ais_job_direct_print_prepare(2, (null), a.pdf)",
                            "xsi_ais_job_retrieve_document_prepare(3, secret, 12, 3000000000, /tmp/out)",
                            "xsi_ais_job_combine_document(1, *)"));
    EXPECT_THAT(traces_containing("secret"), IsEmpty()) << "the box password stays out of the trace";
    EXPECT_EQ(kOk, proxy.create_job(XSI_AIS_JOB_CATEGORY_BOX, box, service));
    EXPECT_EQ(kOk, proxy.create_job(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, print, service));
    EXPECT_EQ(kOk, proxy.create_job(XSI_AIS_JOB_CATEGORY_RETRIEVE, retrieve, service));
}

// ---- Sizes ------------------------------------------------------------------------------------------------------

TEST_F(job_proxy, char_array_sizes_are_the_usable_lengths_and_0_for_unknown_keys) {
    using key = orvane::QSF_FND_JOB_CHAR_ARRAY_SIZE_KEY;
    // The first key, the SMB host name (the largest), the last key.
    EXPECT_EQ(64, proxy.get_char_array_size(static_cast<key>(0)));
    EXPECT_EQ(384, proxy.get_char_array_size(static_cast<key>(4)));
    EXPECT_EQ(128, proxy.get_char_array_size(static_cast<key>(8)));
    EXPECT_EQ(0, proxy.get_char_array_size(static_cast<key>(9)));
    EXPECT_EQ(0, proxy.get_char_array_size(static_cast<key>(-1)));
    EXPECT_THAT(jbrg_sim::calls(), IsEmpty());
}

}  // namespace
