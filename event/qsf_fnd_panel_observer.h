// The panel observer: forwards the operation panel's automatic reset to Java.
//
// Registered with the panel facade by the event manager. The panel calls it on its own IPC thread; for each
// event the observer attaches that thread to the Java VM, calls the static method of
// orvane.qsf.controller.event.proxy.PanelProxy and detaches again. Every other notification of the panel
// is left to the platform base, which answers 0.
#ifndef JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H
#define JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H

#include <jni.h>

#include "xsi_pbfs_panel.h"

namespace orvane {

class qsf_fnd_panel_observer : public xsi_pbfs_panel_observer {
public:
    // What the observer answers the panel when it cannot attach the platform's thread.
    static constexpr PLAT_RESULT kFailure = PLAT_CODE(0xC1010706);

    qsf_fnd_panel_observer();
    ~qsf_fnd_panel_observer() override;

    // Finds the VM, and with the thread attached looks up PanelProxy and its three methods. A non-zero
    // answer of the VM lookup is returned as it is; a failed attach gives 0; otherwise the detach's answer.
    int init();

    PLAT_RESULT notify_auto_panel_reset() override;

    bool thread_attach();
    int thread_detach();

private:
    JavaVM* vm_ = nullptr;
    JNIEnv* env_ = nullptr;
    jclass panel_proxy_ = nullptr;
    jmethodID fire_appl_start_ = nullptr;
    jmethodID fire_appl_stop_ = nullptr;
    jmethodID fire_auto_reset_ = nullptr;
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_PANEL_OBSERVER_H
