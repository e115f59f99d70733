// The job information observer on the job information service's own thread: the objects that reach
// JobInfoProxy, and what the platform gets back.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "event/qsf_fnd_jobinfo_observer.h"
#include "jbrg_sim/jobinfo.h"
#include "tests/event/event_test.h"
#include "xsi_ais_jobinfo.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using jbrg_test::java_texts;
using jbrg_test::kJobInfoProxy;
using orvane::qsf_fnd_jobinfo_observer;

constexpr int32_t kFailure = PLAT_CODE(0xC1020001);

class substituted_jobinfo_observer : public qsf_fnd_jobinfo_observer {
public:
    jclass print_page_class() const { return jcls_print_page_info_; }
    void use_print_page_class(jclass global) { jcls_print_page_info_ = global; }
};

class jobinfo_observer : public jbrg_test::event_test {
protected:
    static xsi_ais_jobinfo_facade& facade() { return *xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance(); }

    static substituted_jobinfo_observer& observer() {
        static substituted_jobinfo_observer* o = jbrg_test::initialised_on<substituted_jobinfo_observer>("jobinfo");
        return *o;
    }

    void SetUp() override {
        event_test::SetUp();
        ASSERT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_add_observer(&observer()));
    }
    void TearDown() override {
        EXPECT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_remove_observer(&observer()));
        event_test::TearDown();
    }

    static std::vector<std::string> received() { return java_texts(kJobInfoProxy, "received"); }

    static XSI_AIS_EVENT_PRINT_PAGE print_page() {
        // Every field different, so that a value given to the wrong setter shows.
        return XSI_AIS_EVENT_PRINT_PAGE{2001, 4294967295U, 1, 2, 2100, 2970, 5, 6, 7, 8, 9, 10, 11, -12};
    }
};

TEST_F(jobinfo_observer, pages_reach_java_through_one_method_told_apart_by_class) {
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_print_page_info(print_page()));
    XSI_AIS_EVENT_SCAN_PAGE scan{0x80000000U, 3, -1, 2, 4, 1, 1, 2, 600};
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_scan_page_info(scan));
    XSI_AIS_EVENT_SEND_PAGE sent{2003, 4294967295U};
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_fax_send_page_info(sent));
    EXPECT_THAT(received(),
                ElementsAre("page PrintPageInfo{userJobId=2001, pageNum=4294967295, outputDev=1, inputDev=2, "
                            "customX=2100, customY=2970, paperSize=5, paperType=6, paperDir=7, paperWeight=8, "
                            "duplex=9, staple=10, punch=11, colorMode=-12}",
                            "page ScanPageInfo{userJobId=2147483648, pageNum=3, customX=-1, customY=2, paperSize=4, "
                            "paperDir=1, duplex=1, colorMode=2, resolution=600}",
                            "page FaxSendPageInfo{userJobId=2003, pageNum=4294967295}"));
}

TEST_F(jobinfo_observer, job_log_updates_and_interpreter_starts_reach_their_own_methods) {
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_job_update_log(XSI_AIS_EVENT_JOB_UPDATE_LOG{2001, 4294967295U}));
    // sys_info_user_job_id stays behind.
    XSI_AIS_EVENT_RENINT_START start{2002, 1, 0xFFFFFFFEU, 555};
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_renint_start_info(start, "Quarterly r\xC3\xA9port"));
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_renint_start_info(XSI_AIS_EVENT_RENINT_START{2003, 0, 2, 0}, ""));
    EXPECT_THAT(received(),
                ElementsAre("jobLog JobLogInfo{userJobId=2001, receiptId=4294967295}",
                            "interpreter InterpreterInfo{userJobId=2002, nameSetting=1, interfaceInfo=4294967294, "
                            "jobName=Quarterly r\xC3\xA9port}",
                            "interpreter InterpreterInfo{userJobId=2003, nameSetting=0, interfaceInfo=2, jobName=}"));
}

TEST_F(jobinfo_observer, an_interpreter_start_without_a_name_delivers_nothing) {
    begin_java_stderr();
    EXPECT_EQ(kFailure, jbrg_sim::jobinfo::notify_renint_start_info(XSI_AIS_EVENT_RENINT_START{2002, 0, 1, 0}, nullptr));
    end_java_stderr();
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_job_update_log(XSI_AIS_EVENT_JOB_UPDATE_LOG{1, 2}))
        << "the thread is clean for the next event";
}

TEST_F(jobinfo_observer, image_log_status_is_not_forwarded) {
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_imagelog_create_status(2001, 7, XSI_AIS_IMAGELOG_CREATE_ERROR));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(jobinfo_observer, an_observer_without_its_vm_or_its_identifiers_answers_every_event_with_its_failure) {
    ASSERT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_remove_observer(&observer()));
    qsf_fnd_jobinfo_observer never_initialised;                               // cannot attach
    jbrg_test::without_identifiers<qsf_fnd_jobinfo_observer> no_proxy;  // init() found no JobInfoProxy
    for (qsf_fnd_jobinfo_observer* o : {static_cast<qsf_fnd_jobinfo_observer*>(&never_initialised),
                                        static_cast<qsf_fnd_jobinfo_observer*>(&no_proxy)}) {
        ASSERT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_add_observer(o));
        EXPECT_EQ(kFailure, jbrg_sim::jobinfo::notify_print_page_info(print_page()));
        EXPECT_EQ(kFailure, jbrg_sim::jobinfo::notify_renint_start_info(XSI_AIS_EVENT_RENINT_START{}, "name"));
        EXPECT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_remove_observer(o));
    }
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_EQ(XSI_AIS_JOBINFO_OK, facade().xsi_ais_jobinfo_add_observer(&observer()));
}

TEST_F(jobinfo_observer, a_failed_construction_is_printed_and_cleared) {
    static jclass no_default = jbrg_test::global_class("jbrg/test/NoDefaultConstructor");
    static jclass throwing = jbrg_test::global_class("jbrg/test/ThrowingConstructor");
    jclass real = observer().print_page_class();
    begin_java_stderr();
    observer().use_print_page_class(no_default);
    int32_t missing = jbrg_sim::jobinfo::notify_print_page_info(print_page());
    observer().use_print_page_class(throwing);
    int32_t thrown = jbrg_sim::jobinfo::notify_print_page_info(print_page());
    std::string printed = end_java_stderr();
    observer().use_print_page_class(real);
    EXPECT_EQ(kFailure, missing);
    EXPECT_EQ(kFailure, thrown);
    EXPECT_THAT(printed, HasSubstr("java.lang.NoSuchMethodError"));
    EXPECT_THAT(printed, HasSubstr("java.lang.IllegalStateException: refused"));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(jobinfo_observer, a_missing_setter_fails_the_event_and_the_next_one_still_arrives) {
    // A fax page object has the first two setters of a printed page and no third.
    static jclass fax_page = jbrg_test::global_class("orvane/qsf/controller/event/job/FaxSendPageInfo");
    jclass real = observer().print_page_class();
    observer().use_print_page_class(fax_page);
    begin_java_stderr();
    int32_t answer = jbrg_sim::jobinfo::notify_print_page_info(print_page());
    std::string printed = end_java_stderr();
    observer().use_print_page_class(real);
    EXPECT_EQ(kFailure, answer);
    // The lookup's error is left pending and goes with the thread when it detaches.
    (void)printed;
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_EQ(0, jbrg_sim::jobinfo::notify_fax_send_page_info(XSI_AIS_EVENT_SEND_PAGE{1, 1}));
    EXPECT_THAT(received(), ElementsAre("page FaxSendPageInfo{userJobId=1, pageNum=1}"));
}

TEST_F(jobinfo_observer, registration_refuses_doubles_and_strangers) {
    EXPECT_EQ(XSI_AIS_JOBINFO_DUPL_OBSERVER, facade().xsi_ais_jobinfo_add_observer(&observer()));
    qsf_fnd_jobinfo_observer stranger;
    EXPECT_EQ(XSI_AIS_JOBINFO_NO_OBSERVER, facade().xsi_ais_jobinfo_remove_observer(&stranger));
    EXPECT_EQ(1U, jbrg_sim::jobinfo::observer_count());
}

}  // namespace
