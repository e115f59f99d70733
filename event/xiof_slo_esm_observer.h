// The device status observer: the status monitor's events, forwarded to Java.
//
// Registered with xsi_pbfs_esm_facade by the event manager. Each notification holds the monitor's thread
// attached to the Java VM for the event (observer_support.h), makes one static call on
// orvane.qsf.controller.event.proxy.CommonProxy (the resident application state goes to
// SynchronousEventProxy) and answers 0; a thread that cannot be attached, or a method init() did not find,
// is answered with XSI_PBFS_ESM_OBSERVER_NG (0xC1010D07) and nothing is sent. The document
// processor cover, jam and document processor jam events are left to the base: they reach no Java method.
#ifndef JBRG_EVENT_XIOF_SLO_ESM_OBSERVER_H
#define JBRG_EVENT_XIOF_SLO_ESM_OBSERVER_H

#include <jni.h>

#include "xsi_pbfs_esm.h"

namespace orvane {

class xiof_slo_esm_observer : public xsi_pbfs_esm_observer {
public:
    xiof_slo_esm_observer();
    // Deletes the class references through the destroying thread's own environment.
    ~xiof_slo_esm_observer() override;

    // Finds the VM, then (attached) the two proxy classes and their eleven static methods in table order,
    // the first one missing ending the lookups. Answers JNI_GetCreatedJavaVMs's failure, 0 when the thread
    // cannot be attached, otherwise the detach's result.
    jint init();

    PLAT_RESULT notify_logout(dev_ulong user_id) override;
    PLAT_RESULT notify_pbp_connection_error(XSI_PBFS_EVENT_CONNECTION_ERROR error) override;
    PLAT_RESULT notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE state) override;
    PLAT_RESULT notify_usb_memory_status(unsigned int status) override;
    PLAT_RESULT notify_toner_status(unsigned char first, unsigned char second) override;
    PLAT_RESULT notify_waste_toner_bottle_status(unsigned char status) override;
    PLAT_RESULT notify_paper_rest_status(unsigned short source, unsigned char level) override;
    PLAT_RESULT notify_cover_status(unsigned int status) override;
    PLAT_RESULT notify_coin_vender_status(unsigned int status) override;
    PLAT_RESULT notify_key_card_status(unsigned char status) override;
    PLAT_RESULT notify_key_counter_status(unsigned int status) override;
    PLAT_RESULT notify_resident_app_state_changed(XSI_PBFS_ESM_REQ_APP_STATE state) override;

protected:
    // Filled by init().
    JavaVM* jvm_ = nullptr;
    jclass jcls_common_proxy_ = nullptr;
    jclass jcls_synchronous_event_proxy_ = nullptr;
    jmethodID mid_logout_ = nullptr;
    jmethodID mid_communication_error_ = nullptr;
    jmethodID mid_sleep_ = nullptr;
    jmethodID mid_usb_device_ = nullptr;
    jmethodID mid_coin_vendor_ = nullptr;
    jmethodID mid_toner_level_ = nullptr;
    jmethodID mid_paper_source_level_ = nullptr;
    jmethodID mid_cover_ = nullptr;
    jmethodID mid_waste_toner_ = nullptr;
    jmethodID mid_resident_apps_ = nullptr;
    jmethodID mid_key_device_ = nullptr;
};

}  // namespace orvane

#endif  // JBRG_EVENT_XIOF_SLO_ESM_OBSERVER_H
