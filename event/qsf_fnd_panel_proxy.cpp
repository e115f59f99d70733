#include "event/qsf_fnd_panel_proxy.h"

#include <cstring>

#include "core/trace.h"
#include "xam_ads.h"

namespace orvane {

namespace {

// ---- Enumerations: this library's value -> the panel's ------------------------------------------------

// Indexed by QSF_FND_VIEW_UPDATE_TYPE. The numbering differs from the panel's, and the panel's 5 is never
// produced: it is the panel's own and no application asks for it.
constexpr XSI_PBFS_PANEL_VIEW_UPDATE_TYPE kViewUpdate[] = {
    XSI_PBFS_PANEL_VIEW_UPDATE_SHOW,        // 0 -> 0
    XSI_PBFS_PANEL_VIEW_UPDATE_CONTENT,     // 1 -> 3
    XSI_PBFS_PANEL_VIEW_UPDATE_HIDE,        // 2 -> 1
    XSI_PBFS_PANEL_VIEW_UPDATE_BACKGROUND,  // 3 -> 4
    XSI_PBFS_PANEL_VIEW_UPDATE_FOREGROUND,  // 4 -> 2
    XSI_PBFS_PANEL_VIEW_UPDATE_CLOSE,       // 5 -> 6
};

// Indexed by QSF_FND_LED_STATE / QSF_FND_BUZZER_TYPE: the same numbers on both sides.
constexpr XSI_PBFS_LED_STATE kLedState[] = {XSI_PBFS_LED_OFF, XSI_PBFS_LED_ON};
constexpr XSI_PBFS_BUZZER_TYPE kBuzzerType[] = {XSI_PBFS_BUZZER_INPUT, XSI_PBFS_BUZZER_COMPLETE,
                                                XSI_PBFS_BUZZER_WARNING};

// The table's entry for `value`, or null for a value the table does not hold (no platform call is made).
template <class T, std::size_t N>
const T* entry(const T (&table)[N], int value) {
    return value >= 0 && static_cast<std::size_t>(value) < N ? &table[value] : nullptr;
}

// ---- Keypad values between this library, the panel and the application-management service --------------

struct value_pair {
    dev_ulong from;
    dev_ulong to;
};

// A conversion: the listed values, and what every other value becomes.
template <std::size_t N>
struct value_map {
    value_pair pairs[N];
    dev_ulong otherwise;

    dev_ulong operator()(dev_ulong value) const {
        for (const value_pair& p : pairs) {
            if (p.from == value) return p.to;
        }
        return otherwise;
    }
};

// Display mode, the same in every direction: 1 shown, anything else hidden.
constexpr value_map<1> kDisplayMode{{{1, 1}}, 0};
// Layout and position, this library (1..3) to the panel (0..2).
constexpr value_map<2> kToPanelPlace{{{2, 1}, {3, 2}}, 0};
// Layout and position, the panel (0..2) to this library (1..3).
constexpr value_map<2> kFromPanelPlace{{{1, 2}, {2, 3}}, 1};
// Layout, this library to the application-management service. That service numbers the layouts the other
// way round from the panel (3 is its 1), and it takes no position.
constexpr value_map<2> kToServiceLayout{{{2, 2}, {3, 1}}, 0};

XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO to_panel(const XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO out;
    std::memset(&out, 0, sizeof out);
    out.display_mode = kDisplayMode(info.display_mode_);
    out.layout = kToPanelPlace(info.layout_);
    out.position = kToPanelPlace(info.position_);
    out.x = info.x_coord_;
    out.y = info.y_coord_;
    return out;
}

void from_panel(const XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& panel, XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    info.display_mode_ = kDisplayMode(panel.display_mode);
    info.layout_ = kFromPanelPlace(panel.layout);
    info.position_ = kFromPanelPlace(panel.position);
    info.x_coord_ = panel.x;
    info.y_coord_ = panel.y;
}

XAM_ADS_SOFTWARE_TENKEY_SETTING to_service(const XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    XAM_ADS_SOFTWARE_TENKEY_SETTING out;
    std::memset(&out, 0, sizeof out);
    out.display_mode = kDisplayMode(info.display_mode_);
    out.layout = kToServiceLayout(info.layout_);
    out.x = info.x_coord_;
    out.y = info.y_coord_;
    return out;
}

// The keypad request of the panel; the record's display mode says whether to show or hide.
PLAT_RESULT request_keypad(const char* app_id, XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    return xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_request_display_soft_tenkey(
        app_id, XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY, info);
}

xsi_pbfs_panel_facade* facade() { return xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance(); }

}  // namespace

void qsf_fnd_panel_proxy::view_update(const std::string& app_id, QSF_FND_VIEW_UPDATE_TYPE type) {
    const XSI_PBFS_PANEL_VIEW_UPDATE_TYPE* mapped = entry(kViewUpdate, type);
    if (mapped == nullptr) return;
    facade()->xsi_pbfs_panel_notify_view_update(app_id.c_str(), *mapped);
}

void qsf_fnd_panel_proxy::view_update_ext_auth_app(const std::string& app_id, QSF_FND_VIEW_UPDATE_TYPE type) {
    JBRG_TRACE("[Start]");
    const XSI_PBFS_PANEL_VIEW_UPDATE_TYPE* mapped = entry(kViewUpdate, type);
    if (mapped != nullptr) {
        JBRG_TRACE("update_type = [%d]", static_cast<int>(*mapped));
        facade()->xsi_pbfs_panel_notify_view_update_ext_auth_app(app_id.c_str(), *mapped);
    }
    JBRG_TRACE("[End]");
}

void qsf_fnd_panel_proxy::request_event(const std::string& app_id, unsigned int event) {
    facade()->xsi_pbfs_panel_notify_request_event(app_id.c_str(), event);
}

void qsf_fnd_panel_proxy::request_start_led(const std::string& app_id, QSF_FND_LED_STATE state) {
    const XSI_PBFS_LED_STATE* mapped = entry(kLedState, state);
    if (mapped == nullptr) return;
    facade()->xsi_pbfs_panel_request_start_led(app_id.c_str(), *mapped);
}

void qsf_fnd_panel_proxy::request_buzzer(const std::string& app_id, QSF_FND_BUZZER_TYPE type) {
    const XSI_PBFS_BUZZER_TYPE* mapped = entry(kBuzzerType, type);
    if (mapped == nullptr) return;
    facade()->xsi_pbfs_panel_request_buzzer(app_id.c_str(), *mapped);
}

void qsf_fnd_panel_proxy::extension_authentication_init(bool initialize) {
    facade()->xsi_pbfs_panel_extension_authentication_initialize(initialize);
}

void qsf_fnd_panel_proxy::j_foundation_start(bool started) {
    facade()->xsi_pbfs_panel_notify_j_foundation_started(started);
}

void qsf_fnd_panel_proxy::notify_reset_completed() {
    const PLAT_RESULT ret = facade()->xsi_pbfs_panel_notify_reset_end();
    if (ret != 0) JBRG_TRACE("[Error]. ret = [0x%08lx]", dev_lx(ret));
}

void qsf_fnd_panel_proxy::request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE type) {
    const PLAT_RESULT ret = facade()->xsi_pbfs_panel_request_display_screen(type);
    if (ret != 0) JBRG_TRACE("[Error]. ret = [0x%08lx]", dev_lx(ret));
}

void qsf_fnd_panel_proxy::menu_application_initialized(const std::string& app_id, bool result) {
    facade()->xsi_pbfs_panel_menu_application_initialized(app_id.c_str(), result);
}

void qsf_fnd_panel_proxy::menu_application_terminated(const std::string& app_id, bool result) {
    facade()->xsi_pbfs_panel_menu_application_terminated(app_id.c_str(), result);
}

bool qsf_fnd_panel_proxy::is_screen_available(XSI_PBFS_PANEL_DISPLAY_TYPE type) {
    int available = 0;
    if (facade()->xsi_pbfs_panel_is_screen_available(type, available) != 0) return false;
    return available != 0;
}

bool qsf_fnd_panel_proxy::set_softkeyboard_text(std::string& identifier, dev_ulong item, const std::string& text,
                                                XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE type) {
    JBRG_TRACE("[Start]");
    const PLAT_RESULT ret = facade()->xsi_pbfs_panel_set_display_text(identifier.c_str(), item, text.c_str(), type);
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret != 0;
}

int qsf_fnd_panel_proxy::softnumerickeypad_init(const char* app_id, const XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    const XAM_ADS_SOFTWARE_TENKEY_SETTING setting = to_service(info);
    // The service's answer is not reported: the setting is a wish for the next screen, not a request now.
    xam_ads_facade::xam_ads_get_instance()->xam_ads_request_software_tenkey_initial_setting(app_id, setting);
    return 0;
}

bool qsf_fnd_panel_proxy::softnumerickeypad_open(const char* app_id, XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO panel = to_panel(info);
    const PLAT_RESULT ret = request_keypad(app_id, panel);
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret != 0;
}

bool qsf_fnd_panel_proxy::softnumerickeypad_close(const char* app_id) {
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO panel;
    std::memset(&panel, 0, sizeof panel);
    const PLAT_RESULT ret = request_keypad(app_id, panel);
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret != 0;
}

int qsf_fnd_panel_proxy::softnumerickeypad_get_current(const char* app_id, XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO panel;
    std::memset(&panel, 0, sizeof panel);
    if (request_keypad(app_id, panel) != 0) return 1;
    from_panel(panel, info);
    return 0;
}

}  // namespace orvane
