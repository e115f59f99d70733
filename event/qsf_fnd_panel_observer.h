// The panel observer: forwards the operation panel's automatic reset to Java.
//
// Registered with the panel facade by the event manager. The panel calls it on its own IPC thread; for each
// event the observer holds that thread attached to the Java VM (observer_support.h), calls the static method
// of orvane.qsf.controller.event.proxy.PanelProxy and lets the thread go again. Every other notification of
// the panel is left to the platform base, which answers 0.
#ifndef JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H
#define JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H

#include <jni.h>

#include "xsi_pbfs_panel.h"

namespace orvane {

class qsf_fnd_panel_observer : public xsi_pbfs_panel_observer {
public:
    // What the observer answers the panel when the reset cannot be delivered: the thread cannot be attached,
    // or init() did not find the method to call.
    static constexpr PLAT_RESULT kFailure = PLAT_CODE(0xC1010706);

    qsf_fnd_panel_observer();
    // Deletes the class reference through the destroying thread's own environment.
    ~qsf_fnd_panel_observer() override;

    // Finds the VM, and with the thread attached looks up PanelProxy and its three methods. A non-zero
    // answer of the VM lookup is returned as it is; a failed attach gives 0; otherwise the detach's answer.
    int init();

    PLAT_RESULT notify_auto_panel_reset() override;

protected:
    // Filled by init().
    JavaVM* jvm_ = nullptr;
    jclass jcls_panel_proxy_ = nullptr;
    jmethodID mid_fire_appl_start_ = nullptr;
    jmethodID mid_fire_appl_stop_ = nullptr;
    jmethodID mid_fire_auto_reset_ = nullptr;
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H
