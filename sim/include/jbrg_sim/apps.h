// The simulated device's application-management service, as tests and the demo look into it and drive it.
//
// The installed applications come from the scenario's "apps" section (docs/applications.md); they are
// started, stopped and listed only through the platform's facade (platform/include/xam_ads.h). This header
// shows what the service holds afterwards, and sends the service's own requests (run, terminate, open and
// close a window, basis control, run permission) to the observers registered with it.
//
// Each request is delivered on the service's IPC thread ("xam_ads") to every registered observer in the
// order of registration, and the call waits until they have answered: the answer is the first non-zero
// answer, or 0. Run, terminate, open and close answer later (or at once) through the facade's
// xam_ads_notify_*_result, which results() records. The calling thread must not hold anything the observers
// need while it waits.
#ifndef JBRG_SIM_APPS_H
#define JBRG_SIM_APPS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jbrg_sim::apps {

// One installed application as the device holds it now.
struct app_info {
    std::string app_id;
    int32_t list_state = 0;      // XAM_ADS_LIST_STATE_*
    int32_t detail_state = 0;    // XAM_ADS_DETAIL_STATE_*
    std::string config_url;      // the last xam_ads_set_config_url, "" before one
};
std::optional<app_info> app(const std::string& app_id);

// One answer given through xam_ads_notify_*_result.
struct result {
    std::string request;         // "run_app", "terminate_app", "open_window", "close_window"
    std::string app_id;
    int32_t code = 0;
};
std::vector<result> results();

// The last state given by xam_ads_notify_ovpl_basis_state for basis type 1; -1 before one.
int32_t basis_state();

// Observers registered now.
std::size_t observers();

// The service's requests, delivered to the registered observers (see above).
int32_t run_app(const std::string& app_id);
int32_t terminate_app(const std::string& app_id);
int32_t open_window(const std::string& app_id);
int32_t close_window(const std::string& app_id);
int32_t basis_control(int32_t control);
int32_t is_enable_run_app();

}  // namespace jbrg_sim::apps

#endif  // JBRG_SIM_APPS_H
