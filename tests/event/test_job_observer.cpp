// The job observer on the job service's own thread: what reaches JobProxy, and what the platform gets back.
#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <vector>

#include "event/qsf_fnd_job_observer.h"
#include "jbrg_sim/job.h"
#include "tests/event/event_test.h"
#include "xsi_ais_job.h"
#include "xsi_ais_jobinfo.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using jbrg_test::java_texts;
using jbrg_test::kJobProxy;
using orvane::qsf_fnd_job_observer;

constexpr int32_t kFailure = PLAT_CODE(0xC1020001);

// An observer whose Java classes can be swapped for stand-ins that lack a member.
class substituted_job_observer : public qsf_fnd_job_observer {
public:
    void use_job_state_class(jclass global) { jcls_job_state_ = global; }
    void use_job_class(jclass global) { jcls_job_ = global; }
    jclass job_state_class() const { return jcls_job_state_; }
    jclass job_class() const { return jcls_job_; }
};

XSI_AIS_JOB_STATE state(dev_ulong kind, dev_ulong end_status, const char* user = "alice") {
    XSI_AIS_JOB_STATE s{};
    s.state = kind;
    s.user_job_id = 2001;
    s.result = end_status;
    s.job_mode = 3;
    std::strncpy(s.user_name, user, sizeof s.user_name - 1);
    s.in_dev = 1;
    s.out_dev = 4;
    s.receipt_id = 77;
    return s;
}

class job_observer : public jbrg_test::event_test {
protected:
    static xsi_ais_job_facade& facade() { return *xsi_ais_job_facade::xsi_ais_job_get_instance(); }

    static substituted_job_observer& observer() {
        static substituted_job_observer* o = jbrg_test::initialised_on<substituted_job_observer>("job");
        return *o;
    }

    void SetUp() override {
        event_test::SetUp();
        ASSERT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_add_observer(&observer()));
    }
    void TearDown() override {
        EXPECT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_remove_observer(&observer()));
        event_test::TearDown();
    }

    static std::vector<std::string> received() { return java_texts(kJobProxy, "received"); }
};

TEST_F(job_observer, each_state_kind_and_end_status_becomes_its_job_state_constant) {
    struct {
        dev_ulong kind, end_status;
        const char* constant;
    } const cases[] = {{0, 0, "START"},   {0, 9, "START"},         {1, 0, "COMPLETE"},
                       {1, 1, "CANCEL"},  {1, 2, "ERROR"},         {2, 0, "SCAN_COMPLETE"},
                       {2, 4, "SCAN_COMPLETE"}};
    std::vector<std::string> expected;
    for (const auto& c : cases) {
        EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(state(c.kind, c.end_status))) << c.constant;
        expected.push_back(std::string("state Job{jobid=2001, state=") + c.constant +
                           ", jobMode=3, userName=alice, indev=1, outdev=4}");
    }
    EXPECT_EQ(expected, received());
}

TEST_F(job_observer, states_without_a_constant_send_nothing_and_answer_zero) {
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(state(1, 3)));
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(state(1, 0xFFFFFFFF)));
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(state(3, 0)));
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(state(0xFFFFFFFF, 0)));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(job_observer, the_job_carries_the_record_fields_as_java_ints_and_the_name_up_to_its_field_end) {
    XSI_AIS_JOB_STATE s = state(0, 0, "");
    s.user_job_id = 0xFFFFFFFF;  // setJobid takes an int
    s.job_mode = 0xFFFF;         // 16 bits, widened without sign
    s.in_dev = 255;
    s.out_dev = 0;
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(s));
    // A name that fills its whole field without a terminating zero ends at the field's end.
    XSI_AIS_JOB_STATE full = state(0, 0);
    std::memset(full.user_name, 'n', sizeof full.user_name);
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(full));
    XSI_AIS_JOB_STATE utf = state(1, 0, "J\xC3\xBCrgen");
    EXPECT_EQ(0, jbrg_sim::job::notify_job_state_changed(utf));
    EXPECT_THAT(received(),
                ElementsAre("state Job{jobid=-1, state=START, jobMode=65535, userName=, indev=255, outdev=0}",
                            "state Job{jobid=2001, state=START, jobMode=3, userName=" +
                                std::string(sizeof full.user_name, 'n') + ", indev=1, outdev=4}",
                            "state Job{jobid=2001, state=COMPLETE, jobMode=3, userName=J\xC3\xBCrgen, indev=1, "
                            "outdev=4}"));
}

TEST_F(job_observer, counts_and_values_reach_java_zero_extended_in_argument_order) {
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(4294967295U, 1));
    EXPECT_EQ(0, jbrg_sim::job::notify_scan_count(3, 0x80000000U));
    EXPECT_EQ(0, jbrg_sim::job::notify_start_phb(0x80000000U));
    EXPECT_EQ(0, jbrg_sim::job::notify_disable_info(7));
    EXPECT_EQ(0, jbrg_sim::job::notify_main_message(4294967295U));
    EXPECT_THAT(received(), ElementsAre("scanCount 4294967295 1", "scanCount 3 2147483648",
                                        "startProhibition 2147483648", "combConstraint 7",
                                        "panelMessageUpdate 4294967295"));
}

TEST_F(job_observer, prohibition_details_and_service_requests_are_answered_without_reaching_java) {
    XSI_AIS_PHB_INFO info{};
    info.phb_type = XSI_AIS_PHB_TYPE_START;
    XSI_AIS_PHB_GET_MESSAGE message{};
    message.main_msg_1 = 5;
    XSI_AIS_JOB_SERVICE_MSG request{};
    EXPECT_EQ(0, jbrg_sim::job::notify_phb_info(1, info));
    EXPECT_EQ(0, jbrg_sim::job::notify_message_info(1, message));
    EXPECT_EQ(0, jbrg_sim::job::notify_app_service_request(9, request));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(job_observer, an_observer_without_its_vm_or_its_identifiers_answers_every_event_with_its_failure) {
    EXPECT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_remove_observer(&observer()));
    qsf_fnd_job_observer never_initialised;                           // cannot attach
    jbrg_test::without_identifiers<qsf_fnd_job_observer> no_proxy;  // init() found no JobProxy
    for (qsf_fnd_job_observer* o : {static_cast<qsf_fnd_job_observer*>(&never_initialised),
                                    static_cast<qsf_fnd_job_observer*>(&no_proxy)}) {
        ASSERT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_add_observer(o));
        EXPECT_EQ(kFailure, jbrg_sim::job::notify_job_state_changed(state(0, 0)));
        EXPECT_EQ(kFailure, jbrg_sim::job::notify_job_state_changed(state(3, 0))) << "no constant, still failed";
        EXPECT_EQ(kFailure, jbrg_sim::job::notify_scan_count(1, 2));
        XSI_AIS_PHB_INFO info{};
        EXPECT_EQ(0, jbrg_sim::job::notify_phb_info(1, info)) << "not forwarded";
        EXPECT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_remove_observer(o));
    }
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_EQ(XSI_AIS_JOB_OK, facade().xsi_ais_job_add_observer(&observer()));
}

TEST_F(job_observer, a_missing_state_constant_is_printed_cleared_and_answered_with_the_failure) {
    static jclass stand_in = jbrg_test::global_class("jbrg/test/event/StatesWithoutError");
    ASSERT_NE(nullptr, stand_in);
    jclass real = observer().job_state_class();
    observer().use_job_state_class(stand_in);
    begin_java_stderr();
    int32_t error = jbrg_sim::job::notify_job_state_changed(state(1, 2));
    int32_t complete = jbrg_sim::job::notify_job_state_changed(state(1, 0));
    std::string printed = end_java_stderr();
    observer().use_job_state_class(real);
    EXPECT_EQ(kFailure, error);
    EXPECT_EQ(0, complete) << "the thread is clean again for the next event";
    EXPECT_THAT(printed, HasSubstr("java.lang.NoSuchFieldError: ERROR"));
    EXPECT_THAT(received(), ElementsAre(HasSubstr("state=COMPLETE")));
}

TEST_F(job_observer, a_missing_setter_or_constructor_of_job_sends_nothing) {
    static jclass no_outdev = jbrg_test::global_class("jbrg/test/event/JobWithoutOutdev");
    static jclass no_default = jbrg_test::global_class("jbrg/test/NoDefaultConstructor");
    ASSERT_NE(nullptr, no_outdev);
    ASSERT_NE(nullptr, no_default);
    jclass real = observer().job_class();
    begin_java_stderr();
    observer().use_job_class(no_outdev);
    int32_t setter = jbrg_sim::job::notify_job_state_changed(state(0, 0));
    observer().use_job_class(no_default);
    int32_t constructor = jbrg_sim::job::notify_job_state_changed(state(0, 0));
    std::string printed = end_java_stderr();
    observer().use_job_class(real);
    EXPECT_EQ(kFailure, setter);
    EXPECT_EQ(kFailure, constructor);
    EXPECT_THAT(printed, HasSubstr("NoSuchMethodError"));
    EXPECT_THAT(printed, HasSubstr("setOutdev"));
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(job_observer, registration_refuses_doubles_and_strangers) {
    EXPECT_EQ(XSI_AIS_JOB_DUPL_OBSERVER, facade().xsi_ais_job_add_observer(&observer()));
    qsf_fnd_job_observer stranger;
    EXPECT_EQ(XSI_AIS_JOB_NO_OBSERVER, facade().xsi_ais_job_remove_observer(&stranger));
    EXPECT_EQ(XSI_AIS_JOB_NO_OBSERVER, facade().xsi_ais_job_remove_observer(nullptr));
    EXPECT_EQ(1U, jbrg_sim::job::observer_count());
    EXPECT_THAT(jbrg_sim::calls_of("xsi_ais_job_add_observer"), ::testing::SizeIs(2));
}

}  // namespace

namespace {

// The base decodes the service's messages; what it cannot decode is answered with the IPC error.
TEST(job_observer_base, messages_that_do_not_decode_are_answered_with_the_ipc_error) {
    xsi_ais_job_observer base;
    uint32_t value = 5;
    gen_ipc_msghdr header{XSI_AIS_JOB_MSG_START_PHB, 1, 4, 1};
    EXPECT_EQ(0, base.dispatch(1, reinterpret_cast<char*>(&value), 4, header));
    EXPECT_EQ(XSI_AIS_JOB_OBSERVER_BAD_MESSAGE, base.dispatch(1, reinterpret_cast<char*>(&value), 3, header));
    header.msg_id = 99;
    EXPECT_EQ(XSI_AIS_JOB_OBSERVER_BAD_MESSAGE, base.dispatch(1, reinterpret_cast<char*>(&value), 4, header));
    xsi_ais_jobinfo_observer info;
    char unterminated[sizeof(XSI_AIS_EVENT_RENINT_START) + 6] = {};
    unterminated[sizeof(XSI_AIS_EVENT_RENINT_START)] = 1;  // a name follows...
    std::memset(unterminated + sizeof(XSI_AIS_EVENT_RENINT_START) + 4, 'x', 2);  // ...and does not end
    gen_ipc_msghdr renint{XSI_AIS_JOBINFO_MSG_RENINT_START, 2, sizeof unterminated, 1};
    EXPECT_EQ(XSI_AIS_JOBINFO_IPC_ERROR, info.dispatch(1, unterminated, sizeof unterminated, renint));
}

}  // namespace
