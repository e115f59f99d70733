#include "event/xiof_slo_esm_observer.h"

#include <cstdint>

#include "event/observer_support.h"

namespace orvane {

namespace {

constexpr const char kCommonProxy[] = "orvane/qsf/controller/event/proxy/CommonProxy";
constexpr const char kSynchronousEventProxy[] = "orvane/qsf/controller/event/proxy/SynchronousEventProxy";

}  // namespace

xiof_slo_esm_observer::xiof_slo_esm_observer() = default;

xiof_slo_esm_observer::~xiof_slo_esm_observer() {
    release_classes(jvm_, {&jcls_common_proxy_, &jcls_synchronous_event_proxy_});
}

jint xiof_slo_esm_observer::init() {
    // The two classes, then the eleven methods in their fixed order; the first one missing leaves it and all
    // later ones null.
    return init_identifiers(
        jvm_, {{&jcls_common_proxy_, kCommonProxy}, {&jcls_synchronous_event_proxy_, kSynchronousEventProxy}},
        {
            {&mid_logout_, "fireLogoutEvent", "()V"},
            {&mid_communication_error_, "fireCommunicationErrorEvent", "()V"},
            {&mid_sleep_, "fireSleepEvent", "(I)V"},
            {&mid_usb_device_, "fireUSBDeviceEvent", "(I)V"},
            {&mid_coin_vendor_, "fireCoinVendorEvent", "(I)V"},
            {&mid_toner_level_, "fireTonerLevelEvent", "(SS)V"},
            {&mid_paper_source_level_, "firePaperSourceLevelEvent", "(IS)V"},
            {&mid_cover_, "fireCoverEvent", "(J)V"},
            {&mid_waste_toner_, "fireWasteTonerEvent", "(S)V"},
            {&mid_key_device_, "fireKeyDeviceEvent", "(I)V"},
            {&mid_resident_apps_, "fireResidentAppsStateChanged", "(I)V", nullptr, &jcls_synchronous_event_proxy_},
        });
}

namespace {

// One static void call of the monitor's events; XSI_PBFS_ESM_OBSERVER_NG when it cannot be made.
template <class... A>
PLAT_RESULT fire(JavaVM* vm, jclass cls, jmethodID method, A... args) {
    return fire_static(vm, XSI_PBFS_ESM_OBSERVER_NG, cls, method, args...);
}

}  // namespace

// The logged-out user and the kind of connection error are not passed on: Java learns only that it happened.
PLAT_RESULT xiof_slo_esm_observer::notify_logout(dev_ulong) { return fire(jvm_, jcls_common_proxy_, mid_logout_); }

PLAT_RESULT xiof_slo_esm_observer::notify_pbp_connection_error(XSI_PBFS_EVENT_CONNECTION_ERROR) {
    return fire(jvm_, jcls_common_proxy_, mid_communication_error_);
}

PLAT_RESULT xiof_slo_esm_observer::notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE state) {
    return fire(jvm_, jcls_common_proxy_, mid_sleep_, static_cast<jint>(state));
}

PLAT_RESULT xiof_slo_esm_observer::notify_usb_memory_status(unsigned int status) {
    return fire(jvm_, jcls_common_proxy_, mid_usb_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_coin_vender_status(unsigned int status) {
    return fire(jvm_, jcls_common_proxy_, mid_coin_vendor_, static_cast<jint>(status));
}

// The toner levels reach Java in the opposite order: the monitor's second value is the Java method's first
// parameter. Applications rely on this order, so it stays.
PLAT_RESULT xiof_slo_esm_observer::notify_toner_status(unsigned char first, unsigned char second) {
    return fire(jvm_, jcls_common_proxy_, mid_toner_level_, static_cast<jint>(static_cast<jshort>(second)),
                static_cast<jint>(static_cast<jshort>(first)));
}

PLAT_RESULT xiof_slo_esm_observer::notify_paper_rest_status(unsigned short source, unsigned char level) {
    return fire(jvm_, jcls_common_proxy_, mid_paper_source_level_, static_cast<jint>(source),
                static_cast<jint>(static_cast<jshort>(level)));
}

// The cover bits are unsigned: Java's long receives them zero-extended, never negative.
PLAT_RESULT xiof_slo_esm_observer::notify_cover_status(unsigned int status) {
    return fire(jvm_, jcls_common_proxy_, mid_cover_, static_cast<jlong>(static_cast<uint32_t>(status)));
}

PLAT_RESULT xiof_slo_esm_observer::notify_waste_toner_bottle_status(unsigned char status) {
    return fire(jvm_, jcls_common_proxy_, mid_waste_toner_, static_cast<jint>(static_cast<jshort>(status)));
}

// Key cards and key counters are both key devices to Java: one method serves both.
PLAT_RESULT xiof_slo_esm_observer::notify_key_card_status(unsigned char status) {
    return fire(jvm_, jcls_common_proxy_, mid_key_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_key_counter_status(unsigned int status) {
    return fire(jvm_, jcls_common_proxy_, mid_key_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_resident_app_state_changed(XSI_PBFS_ESM_REQ_APP_STATE state) {
    return fire(jvm_, jcls_synchronous_event_proxy_, mid_resident_apps_, static_cast<jint>(state));
}

}  // namespace orvane
