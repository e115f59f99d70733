// The simulated device's status monitor, as tests and the demo drive it.
//
// Observers are registered through the platform's facade (platform/include/xsi_pbfs_esm.h). Each function
// here sends one status message to every registered observer, on the monitor's own IPC thread (service
// "esm"), through the observer's dispatch(), and answers the first non-zero answer of an observer (0 when
// all answered 0 or none is registered). docs/events-device.md describes the service.
#ifndef JBRG_SIM_ESM_H
#define JBRG_SIM_ESM_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jbrg_sim::esm {

int32_t request_activate(int32_t scenario, uint32_t parameter);
int32_t notify_logout(uint32_t user_id);
int32_t notify_pbp_connection_error(int32_t error);
int32_t notify_sleep(int32_t state);
int32_t notify_usb_memory_status(uint32_t status);
int32_t notify_toner_status(uint8_t first, uint8_t second);
int32_t notify_waste_toner_bottle_status(uint8_t status);
int32_t notify_paper_rest_status(uint16_t source, uint8_t level);
int32_t notify_cover_status(uint32_t status);
int32_t notify_dp_cover_status(uint8_t status);
int32_t notify_jam_status(uint32_t status);
int32_t notify_dp_jam_status(uint8_t status);
int32_t notify_coin_vender_status(uint32_t status);
int32_t notify_key_card_status(uint8_t status);
int32_t notify_key_counter_status(uint32_t status);
int32_t notify_resident_app_state_changed(int32_t state);

// Sends a raw message (id and data words) as the monitor would; for messages the observers do not know.
int32_t send(uint32_t msg_id, const uint32_t* words, std::size_t count);

// The observers registered now.
std::size_t observers();

// ---- Energy saving, as the device holds it ------------------------------------------------------------
//
// The state starts from the scenario's "esm" section (docs/device-information.md); a granted request
// changes it, and the observers hear notify_sleep with the new state before the request answers.

// The machine's state now (XSI_PBFS_EVENT_SLEEP_STATE).
int32_t sleep_state();
// Whether energy saving is prohibited now.
bool save_mode_prohibited();
// The applications that suspend deep sleep now, in the order they suspended it.
std::vector<std::string> deep_sleep_suspended_by();
// The wake-up time an application set (seconds since 1970); nothing when it set none or cancelled it.
std::optional<uint32_t> wakeup_date(const std::string& app_id);
// Someone touches the panel: the machine wakes; when it was not awake, the observers hear notify_sleep with
// XSI_PBFS_SLEEP_STATE_AWAKE and their answer is returned (0 otherwise).
int32_t wake_up();

}  // namespace jbrg_sim::esm

#endif  // JBRG_SIM_ESM_H
