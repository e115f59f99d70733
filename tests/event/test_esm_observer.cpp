// The device status observer on the status monitor's own thread: what reaches Java, what the monitor gets back.
#include <gmock/gmock.h>

#include <memory>

#include "event/xiof_slo_esm_observer.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_esm.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

constexpr const char kCommon[] = "orvane/qsf/controller/event/proxy/CommonProxy";
constexpr const char kSynchronous[] = "orvane/qsf/controller/event/proxy/SynchronousEventProxy";
constexpr int32_t kObserverNg = static_cast<int32_t>(0xC1010D07);

// An observer registered with the monitor for one test; init() runs on a thread of the platform, as the
// event manager's would run on a Java thread that stays attached.
class registration {
public:
    explicit registration(bool initialise, orvane::xiof_slo_esm_observer* observer = new orvane::xiof_slo_esm_observer)
        : observer_(observer) {
        if (initialise) {
            init_result_ = jbrg_sim::deliver_on_new_thread([this] { return observer_->init(); });
        }
        EXPECT_EQ(xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_add_observer(observer_.get()), 0);
    }
    ~registration() { xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_remove_observer(observer_.get()); }

    orvane::xiof_slo_esm_observer* get() const { return observer_.get(); }
    int32_t init_result() const { return init_result_; }

private:
    std::unique_ptr<orvane::xiof_slo_esm_observer> observer_;
    int32_t init_result_ = -1;
};

class esm_observer : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        jbrg_test::proxy_clear(kCommon);
        jbrg_test::proxy_clear(kSynchronous);
    }
};

TEST_F(esm_observer, every_status_event_reaches_common_proxy_with_its_values) {
    registration r(true);
    EXPECT_EQ(r.init_result(), JNI_OK) << "init answers the detach of the thread it attached";
    namespace esm = jbrg_sim::esm;
    EXPECT_EQ(esm::notify_logout(42), 0);
    EXPECT_EQ(esm::notify_pbp_connection_error(XSI_PBFS_CONNECTION_ERROR_PROTOCOL), 0);
    EXPECT_EQ(esm::notify_sleep(XSI_PBFS_SLEEP_STATE_DEEP_SLEEP), 0);
    // The top bit of each value shows how it reaches Java: an int goes negative, a long stays positive.
    EXPECT_EQ(esm::notify_usb_memory_status(0x80000001u), 0);
    EXPECT_EQ(esm::notify_cover_status(0xFFFFFFFFu), 0);
    EXPECT_EQ(esm::notify_waste_toner_bottle_status(0xFE), 0);
    EXPECT_EQ(esm::notify_coin_vender_status(0xFFFFFFFFu), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kCommon),
                ElementsAre("fireLogoutEvent()", "fireCommunicationErrorEvent()", "fireSleepEvent(3)",
                            "fireUSBDeviceEvent(-2147483647)", "fireCoverEvent(4294967295)",
                            "fireWasteTonerEvent(254)", "fireCoinVendorEvent(-1)"));
    EXPECT_THAT(jbrg_test::proxy_received(kSynchronous), IsEmpty());
}

TEST_F(esm_observer, toner_levels_arrive_swapped_and_paper_levels_in_order) {
    registration r(true);
    namespace esm = jbrg_sim::esm;
    EXPECT_EQ(esm::notify_toner_status(1, 2), 0);
    EXPECT_EQ(esm::notify_toner_status(0xFF, 0x80), 0);
    EXPECT_EQ(esm::notify_paper_rest_status(0xFFFF, 0xC8), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kCommon),
                ElementsAre("fireTonerLevelEvent(2, 1)", "fireTonerLevelEvent(128, 255)",
                            "firePaperSourceLevelEvent(65535, 200)"));
}

TEST_F(esm_observer, key_cards_and_key_counters_share_the_key_device_event) {
    registration r(true);
    namespace esm = jbrg_sim::esm;
    EXPECT_EQ(esm::notify_key_card_status(0xFF), 0);
    EXPECT_EQ(esm::notify_key_counter_status(0xFFFFFFFFu), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), ElementsAre("fireKeyDeviceEvent(255)", "fireKeyDeviceEvent(-1)"));
}

TEST_F(esm_observer, resident_application_state_goes_to_the_synchronous_proxy) {
    registration r(true);
    EXPECT_EQ(jbrg_sim::esm::notify_resident_app_state_changed(XSI_PBFS_ESM_APP_STATE_SLEEP_READY), 0);
    EXPECT_EQ(jbrg_sim::esm::notify_resident_app_state_changed(-5), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kSynchronous),
                ElementsAre("fireResidentAppsStateChanged(2)", "fireResidentAppsStateChanged(-5)"));
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), IsEmpty());
}

TEST_F(esm_observer, jams_document_processor_events_and_activation_reach_no_java_method) {
    registration r(true);
    namespace esm = jbrg_sim::esm;
    EXPECT_EQ(esm::notify_jam_status(1), 0);
    EXPECT_EQ(esm::notify_dp_jam_status(1), 0);
    EXPECT_EQ(esm::notify_dp_cover_status(1), 0);
    EXPECT_EQ(esm::request_activate(XSI_PBFS_SCENARIO_WAKE_UP, 9), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), IsEmpty());
    EXPECT_THAT(jbrg_test::proxy_received(kSynchronous), IsEmpty());
}

TEST_F(esm_observer, without_its_vm_or_its_identifiers_every_event_answers_0xC1010D07_and_sends_nothing) {
    namespace esm = jbrg_sim::esm;
    for (bool knows_vm : {false, true}) {
        // init() never ran (no VM to attach to), or it found the VM but not CommonProxy.
        registration r(false, knows_vm ? new jbrg_test::without_identifiers<orvane::xiof_slo_esm_observer>
                                       : new orvane::xiof_slo_esm_observer);
        // Every handler goes through the same attach: one without values, one with two, and the one
        // that goes to the synchronous proxy stand for them.
        EXPECT_EQ(esm::notify_logout(1), kObserverNg);
        EXPECT_EQ(esm::notify_toner_status(1, 2), kObserverNg);
        EXPECT_EQ(esm::notify_resident_app_state_changed(1), kObserverNg);
        // What the observer leaves to its base is still answered by the base.
        EXPECT_EQ(esm::notify_jam_status(1), 0);
    }
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), IsEmpty());
    EXPECT_THAT(jbrg_test::proxy_received(kSynchronous), IsEmpty());
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

TEST_F(esm_observer, every_registered_observer_hears_each_event) {
    registration first(true);
    registration second(true);
    EXPECT_EQ(jbrg_sim::esm::notify_logout(1), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), ElementsAre("fireLogoutEvent()", "fireLogoutEvent()"));
}

TEST_F(esm_observer, the_monitor_refuses_double_and_unknown_registrations) {
    auto* facade = xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance();
    orvane::xiof_slo_esm_observer observer;
    EXPECT_EQ(facade->xsi_pbfs_esm_add_observer(&observer), XSI_PBFS_ESM_OK);
    EXPECT_EQ(facade->xsi_pbfs_esm_add_observer(&observer), XSI_PBFS_ESM_NG);
    EXPECT_EQ(facade->xsi_pbfs_esm_add_observer(nullptr), XSI_PBFS_ESM_NG);
    EXPECT_EQ(jbrg_sim::esm::observers(), 1u);
    EXPECT_EQ(facade->xsi_pbfs_esm_remove_observer(&observer), XSI_PBFS_ESM_OK);
    EXPECT_EQ(facade->xsi_pbfs_esm_remove_observer(&observer), XSI_PBFS_ESM_NG);
    EXPECT_EQ(jbrg_sim::esm::observers(), 0u);
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre(MatchesRegex("xsi_pbfs_esm_add_observer\\(0x[0-9a-f]+\\)"),
                            MatchesRegex("xsi_pbfs_esm_add_observer\\(0x[0-9a-f]+\\)"),
                            "xsi_pbfs_esm_add_observer((null))",
                            MatchesRegex("xsi_pbfs_esm_remove_observer\\(0x[0-9a-f]+\\)"),
                            MatchesRegex("xsi_pbfs_esm_remove_observer\\(0x[0-9a-f]+\\)")));
}

TEST_F(esm_observer, messages_the_base_cannot_decode_are_refused) {
    registration r(true);
    const uint32_t one_word[] = {1};
    EXPECT_EQ(jbrg_sim::esm::send(99, one_word, 1), static_cast<int32_t>(0xE0010001));
    // The toner message carries two words; one is not enough.
    EXPECT_EQ(jbrg_sim::esm::send(XSI_PBFS_ESM_MSG_TONER, one_word, 1), static_cast<int32_t>(0xE0010001));
    EXPECT_THAT(jbrg_test::proxy_received(kCommon), IsEmpty());
}

}  // namespace
