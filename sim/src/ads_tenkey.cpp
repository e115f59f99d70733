// The application-management service's keeping of the soft numeric keypad's initial setting, per
// application. A setting for an application replaces the one it had; a null or empty application id gives
// XAM_ADS_RESULT_ERR. The call log shows the setting by its fields, "{display_mode=1, layout=2, x=10, y=20}".
#include <map>
#include <string>

#include "jbrg_sim/control.h"
#include "jbrg_sim/panel.h"
#include "sim.h"
#include "sim_internal.h"
#include "xam_ads.h"

namespace {

class tenkey_settings final : public jbrg_sim::service {
public:
    apply_step read(const nlohmann::json&) override {
        return [this] { settings.clear(); };
    }

    std::map<std::string, XAM_ADS_SOFTWARE_TENKEY_SETTING> settings;
};

tenkey_settings& keeper() {
    static tenkey_settings* s = new tenkey_settings;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const tenkey_settings& registered = keeper();

std::string setting_text(const XAM_ADS_SOFTWARE_TENKEY_SETTING& s) {
    return "{display_mode=" + std::to_string(s.display_mode) + ", layout=" + std::to_string(s.layout) +
           ", x=" + std::to_string(s.x) + ", y=" + std::to_string(s.y) + "}";
}

}  // namespace

PLAT_RESULT xam_ads_facade::xam_ads_request_software_tenkey_initial_setting(
    const char* app_id, const XAM_ADS_SOFTWARE_TENKEY_SETTING& setting) {
    jbrg_sim::locked_op call("xam_ads_request_software_tenkey_initial_setting", app_id, setting_text(setting));
    if (call.forced()) return call.result();
    if (app_id == nullptr || app_id[0] == '\0') return XAM_ADS_RESULT_ERR;
    keeper().settings[app_id] = setting;
    return XAM_ADS_RESULT_OK;
}

namespace jbrg_sim::panel {

std::optional<keypad_setting> keypad_initial_setting(const std::string& app_id) {
    ensure_loaded();
    auto lock = device_lock();
    auto at = keeper().settings.find(app_id);
    if (at == keeper().settings.end()) return std::nullopt;
    const XAM_ADS_SOFTWARE_TENKEY_SETTING& s = at->second;
    return keypad_setting{s.display_mode, s.layout, s.x, s.y};
}

}  // namespace jbrg_sim::panel
