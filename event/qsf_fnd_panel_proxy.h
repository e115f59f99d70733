// The panel proxy: Java applications drive the device's operation panel through it.
//
// It tells the panel that an application's view changed, raises panel events, switches the Start key LED,
// sounds the buzzer, asks for screens, reports the end of a panel reset, announces menu applications, puts
// texts on the soft keyboard and shows, hides and queries the soft numeric keypad. Each operation fetches the
// panel facade (and, for the keypad's initial setting, the application-management facade) and translates
// this library's values into the platform's. It keeps no state; Java creates and deletes instances at will.
#ifndef JBRG_EVENT_QSF_FND_PANEL_PROXY_H
#define JBRG_EVENT_QSF_FND_PANEL_PROXY_H

#include <cstdint>
#include <string>

#include "plat_types.h"
#include "xsi_pbfs_panel.h"

// This library's description of the soft numeric keypad, as Java sets and reads it. Layout and position
// count from 1 (1..3), unlike the panel's own record, which counts them from 0.
typedef struct {
    dev_ulong display_mode_;   // 1 shown; any other value not shown
    dev_ulong layout_;         // 1, 2 or 3
    dev_ulong position_;       // 1, 2 or 3
    uint16_t x_coord_;         // place on the screen
    uint16_t y_coord_;
} XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO;
PLAT_ASSERT_OFFSET(XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO, layout_, 4);
PLAT_ASSERT_OFFSET(XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO, position_, 8);
PLAT_ASSERT_OFFSET(XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO, x_coord_, 12);
PLAT_ASSERT_OFFSET(XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO, y_coord_, 14);
PLAT_ASSERT_SIZE(XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO, 16);

namespace orvane {

// What changed in an application's view (this library's numbering, 0..5).
enum QSF_FND_VIEW_UPDATE_TYPE : int {
    QSF_FND_VIEW_UPDATE_SHOW = 0,
    QSF_FND_VIEW_UPDATE_CONTENT = 1,
    QSF_FND_VIEW_UPDATE_HIDE = 2,
    QSF_FND_VIEW_UPDATE_BACKGROUND = 3,
    QSF_FND_VIEW_UPDATE_FOREGROUND = 4,
    QSF_FND_VIEW_UPDATE_CLOSE = 5
};

// The Start key LED: 0 off, 1 on.
enum QSF_FND_LED_STATE : int { QSF_FND_LED_OFF = 0, QSF_FND_LED_ON = 1 };

// The buzzer's sounds: 0 key click, 1 completion, 2 warning.
enum QSF_FND_BUZZER_TYPE : int { QSF_FND_BUZZER_INPUT = 0, QSF_FND_BUZZER_COMPLETE = 1, QSF_FND_BUZZER_WARNING = 2 };

class qsf_fnd_panel_proxy {
public:
    qsf_fnd_panel_proxy() = default;
    virtual ~qsf_fnd_panel_proxy() = default;

    // Operations given a value outside their enumeration make no platform call.
    void view_update(const std::string& app_id, QSF_FND_VIEW_UPDATE_TYPE type);
    void view_update_ext_auth_app(const std::string& app_id, QSF_FND_VIEW_UPDATE_TYPE type);
    void request_event(const std::string& app_id, unsigned int event);
    void request_start_led(const std::string& app_id, QSF_FND_LED_STATE state);
    void request_buzzer(const std::string& app_id, QSF_FND_BUZZER_TYPE type);
    void extension_authentication_init(bool initialize);
    void j_foundation_start(bool started);
    void notify_reset_completed();
    void request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE type);
    void menu_application_initialized(const std::string& app_id, bool result);
    void menu_application_terminated(const std::string& app_id, bool result);

    // True when the panel can show the screen now; false also when the panel cannot be asked.
    bool is_screen_available(XSI_PBFS_PANEL_DISPLAY_TYPE type);
    // True on failure: the panel refused the text (one longer than the soft keyboard takes, among others,
    // XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE - 1 bytes); the text is handed over whole, never cut here.
    bool set_softkeyboard_text(std::string& identifier, dev_ulong item, const std::string& text,
                               XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE type);

    // Hands the keypad's initial setting to the application-management service; answers 0 whatever it says.
    int softnumerickeypad_init(const char* app_id, const XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);
    // Shows the keypad as `info` says; true on failure.
    bool softnumerickeypad_open(const char* app_id, XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);
    // Hides the keypad; true on failure.
    bool softnumerickeypad_close(const char* app_id);
    // The keypad as the panel reports it, into `info`: 0, or 1 when the panel cannot be asked (`info` as it was).
    int softnumerickeypad_get_current(const char* app_id, XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_PANEL_PROXY_H
