#include "event/qsf_fnd_panel_observer.h"

#include "event/observer_support.h"

namespace orvane {

qsf_fnd_panel_observer::qsf_fnd_panel_observer() = default;

qsf_fnd_panel_observer::~qsf_fnd_panel_observer() { release_classes(jvm_, {&jcls_panel_proxy_}); }

int qsf_fnd_panel_observer::init() {
    // The lookups form one chain: the first one missing leaves every later one unset. The application
    // start and stop methods are looked up and kept although no notification calls them, so a proxy
    // without them never gets its automatic reset either.
    return init_identifiers(jvm_, {{&jcls_panel_proxy_, "orvane/qsf/controller/event/proxy/PanelProxy"}},
                            {
                                {&mid_fire_appl_start_, "fireApplStartEvent", "(Ljava/lang/String;)V"},
                                {&mid_fire_appl_stop_, "fireApplStopEvent", "(Ljava/lang/String;)V"},
                                {&mid_fire_auto_reset_, "fireAutoResetEvent", "()V"},
                            });
}

PLAT_RESULT qsf_fnd_panel_observer::notify_auto_panel_reset() {
    // A reset that cannot reach Java, for want of a thread or of the method, is answered with the failure
    // code, as every observer answers an event it could not deliver.
    return fire_static(jvm_, kFailure, jcls_panel_proxy_, mid_fire_auto_reset_);
}

}  // namespace orvane
