// The simulated device's operation panel, as tests and the demo drive and look into it.
//
// The panel's own operations are the platform's (platform/include/xsi_pbfs_panel.h); this header delivers
// the panel's notifications to the registered observers and shows what the panel holds after the
// applications' requests. docs/panel.md describes the service.
#ifndef JBRG_SIM_PANEL_H
#define JBRG_SIM_PANEL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jbrg_sim::panel {

// ---- Notifications ------------------------------------------------------------------------------------
//
// Each runs on the panel service's IPC thread: the panel builds the message and hands it to dispatch() of
// every registered observer, in the order they registered. The answer is the first non-zero answer of an
// observer (every observer is still called), or 0 when all answer 0 or none is registered.

int32_t notify_auto_reset();
int32_t notify_appl_start(const std::string& app_id);
int32_t notify_appl_stop(const std::string& app_id);
// Any panel message (msg_id of XSI_PBFS_PANEL_MSG) with its data bytes as they are.
int32_t notify(uint32_t msg_id, const std::string& data);

// Observers registered with the panel now.
std::size_t observers();

// ---- What the panel holds -------------------------------------------------------------------------------

// The last view update type an application reported (the panel's numbering); nothing before the first.
std::optional<int> view(const std::string& app_id);
std::optional<int> ext_auth_view(const std::string& app_id);
// Events raised, in order, as "app_id:event".
std::vector<std::string> events();
// The Start key LED (0 off, 1 on) and the application that set it last ("" before any).
int start_led();
std::string start_led_owner();
// Buzzer sounds, in order, as "app_id:type".
std::vector<std::string> buzzes();
// The screen shown on request (the panel's numbering); -1 before any.
int screen();
// Menu applications that reported a successful start and have not ended.
std::vector<std::string> menu_applications();
// The text put into item `item` of screen `identifier`'s soft keyboard, and its display type.
std::optional<std::string> softkeyboard_text(const std::string& identifier, uint32_t item);
std::optional<int> softkeyboard_text_type(const std::string& identifier, uint32_t item);
// Flags of the last extended-authentication initialisation and Java foundation start; resets ended.
bool extension_authentication_initialized();
bool j_foundation_started();
unsigned resets_ended();

// The soft numeric keypad (the panel's numbering: layout and position 0..2).
struct keypad_state {
    uint32_t display_mode = 0;
    uint32_t layout = 0;
    uint32_t position = 0;
    uint16_t x = 0;
    uint16_t y = 0;
};
keypad_state keypad();

// The keypad's initial setting the application-management service keeps for an application.
struct keypad_setting {
    uint32_t display_mode = 0;
    uint32_t layout = 0;
    uint32_t x = 0;
    uint32_t y = 0;
};
std::optional<keypad_setting> keypad_initial_setting(const std::string& app_id);

// ---- The automatic reset timer ----------------------------------------------------------------------------

// Whether the timer runs (no application holds it stopped), and the applications that hold it, in order.
bool reset_timer_running();
std::vector<std::string> reset_timer_holders();
// How many times an application restarted the count.
unsigned reset_timer_restarts();
// The reset time runs out: when the timer runs, the observers hear notify_auto_reset and true is returned;
// when an application holds it, nothing happens and false is returned.
bool reset_timer_expire();

}  // namespace jbrg_sim::panel

#endif  // JBRG_SIM_PANEL_H
