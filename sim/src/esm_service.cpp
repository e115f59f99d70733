// The status monitor of the basic-function services: its observers and the messages it sends them.
//
// The monitor keeps the observers registered through xsi_pbfs_esm_add_observer, in registration order, and
// sends each status message to all of them on its own IPC thread ("esm"), through the observer's dispatch().
// Observers are the process's objects, not device state: a scenario load keeps them, a reset forgets them.
//
// Behaviour worth knowing when reading the bridge against it:
//   - add of a null observer or of one registered already, remove of one not registered: XSI_PBFS_ESM_NG.
//   - Calls log the observer as a pointer.
//   - dispatch() of a message id the base does not know, or with fewer data words than the notification
//     takes, answers 0xE0010001 and calls nothing.
//
// The monitor also keeps the machine's energy state, which is device content (a scenario load or a reset
// sets it again). The "esm" section of the scenario:
//
//   "esm": { "state": 0, "prohibited": false, "suspended_by": ["app"] }
//
// state is XSI_PBFS_EVENT_SLEEP_STATE (default 0, awake; a machine whose energy saving is prohibited is
// awake); suspended_by lists the applications that hold deep sleep suspended. Energy-saving requests:
//   - request_energy_saving_mode checks the level (PARAM_ERROR), then the job service (BUSY while a user job
//     has neither ended nor been cancelled), then prohibition and, for deep sleep, suspension (PROHIBITED).
//     A granted request sets the state to the level (the level numbers are the state numbers) and, with the
//     device lock released, sends notify_sleep to the observers on the "esm" thread and waits for them; it
//     answers 0 whatever they answer. An observer must not request energy saving from inside notify_sleep:
//     the monitor's thread is the one delivering to it.
//   - Prohibition wakes a machine that is not awake (the observers hear notify_sleep with the awake state
//     the same way) and holds it awake until it is lifted.
//   - Application ids: null, empty or of XSI_PBFS_ESM_APP_ID_SIZE bytes or more are PARAM_ERROR. Wake-up
//     dates are kept per application; 0 cancels one.
#include <algorithm>
#include <cstring>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "job_store.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xsi_pbfs_esm.h"

namespace {

// Answer of dispatch() to a message it cannot decode.
constexpr PLAT_RESULT kUnknownMessage = PLAT_CODE(0xE0010001);

jbrg_sim::observer_list<xsi_pbfs_esm_observer>& registered() {
    static auto* observers = new jbrg_sim::observer_list<xsi_pbfs_esm_observer>;
    return *observers;
}

// Sends one message to every observer registered when it is sent, on the monitor's IPC thread.
int32_t send_message(uint32_t msg_id, std::vector<dev_ulong> words) {
    return jbrg_sim::deliver("esm", [msg_id, words]() mutable {
        static dev_ulong sequence = 0;
        return registered().call_each([&](xsi_pbfs_esm_observer* observer) {
            gen_ipc_msghdr header{msg_id, 0, static_cast<dev_ulong>(words.size() * sizeof(dev_ulong)), ++sequence};
            return observer->dispatch(0, reinterpret_cast<char*>(words.data()), header.length, header);
        });
    });
}

// ---- The energy state --------------------------------------------------------------------------------------

bool good_app_id(const char* app_id) {
    return app_id != nullptr && app_id[0] != '\0' && std::strlen(app_id) < XSI_PBFS_ESM_APP_ID_SIZE;
}

struct energy {
    int32_t state = XSI_PBFS_SLEEP_STATE_AWAKE;
    bool prohibited = false;
    std::vector<std::string> suspended_by;
    std::map<std::string, uint32_t> wakeup_dates;
};

energy parse(const nlohmann::json& scenario) {
    const jbrg_sim::scenario_part part(scenario, "esm", {"state", "prohibited", "suspended_by"});
    energy e;
    e.state = static_cast<int32_t>(
        part.integer_at("state", XSI_PBFS_SLEEP_STATE_AWAKE, XSI_PBFS_SLEEP_STATE_AWAKE, XSI_PBFS_SLEEP_STATE_DEEP_SLEEP));
    e.prohibited = part.flag_at("prohibited", false);
    if (e.prohibited && e.state != XSI_PBFS_SLEEP_STATE_AWAKE) {
        part.fail("/state", "a machine that may not save energy is awake");
    }
    const nlohmann::json& apps = part.list_at("suspended_by");
    for (std::size_t i = 0; i < apps.size(); ++i) {
        const nlohmann::json& app = apps[i];
        const std::string where = part.at("/suspended_by", i);
        if (!app.is_string() || !good_app_id(app.get<std::string>().c_str())) {
            part.fail(where, "is not an application id");
        }
        if (std::find(e.suspended_by.begin(), e.suspended_by.end(), app.get<std::string>()) != e.suspended_by.end()) {
            part.fail(where, "names \"" + app.get<std::string>() + "\" twice");
        }
        e.suspended_by.push_back(app.get<std::string>());
    }
    return e;
}

energy& machine() {
    static auto* s = new jbrg_sim::state_service<energy, parse>;
    return s->state;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const energy& registered_energy = machine();

// Wakes the machine; true when it was not awake. Under the device lock.
bool wake() {
    const bool was_asleep = machine().state != XSI_PBFS_SLEEP_STATE_AWAKE;
    machine().state = XSI_PBFS_SLEEP_STATE_AWAKE;
    return was_asleep;
}

}  // namespace

// ---- The observer base ----------------------------------------------------------------------------------

xsi_pbfs_esm_observer::~xsi_pbfs_esm_observer() = default;

PLAT_RESULT xsi_pbfs_esm_observer::dispatch(long, char* data, unsigned int size, gen_ipc_msghdr header) {
    const unsigned available = data != nullptr ? size / sizeof(dev_ulong) : 0;
    auto word = [&](unsigned i) {
        dev_ulong value = 0;
        std::memcpy(&value, data + i * sizeof(dev_ulong), sizeof value);
        return value;
    };
    // How many words each message carries.
    auto needs = [&](unsigned count) { return available >= count; };
    switch (header.msg_id) {
    case XSI_PBFS_ESM_MSG_REQUEST_ACTIVATE:
        if (!needs(2)) break;
        return request_activate(static_cast<XSI_PBFS_KIND_OF_SCENARIO>(word(0)), word(1));
    case XSI_PBFS_ESM_MSG_LOGOUT:
        if (!needs(1)) break;
        return notify_logout(word(0));
    case XSI_PBFS_ESM_MSG_CONNECTION_ERROR:
        if (!needs(1)) break;
        return notify_pbp_connection_error(static_cast<XSI_PBFS_EVENT_CONNECTION_ERROR>(word(0)));
    case XSI_PBFS_ESM_MSG_SLEEP:
        if (!needs(1)) break;
        return notify_sleep(static_cast<XSI_PBFS_EVENT_SLEEP_STATE>(word(0)));
    case XSI_PBFS_ESM_MSG_USB_MEMORY:
        if (!needs(1)) break;
        return notify_usb_memory_status(word(0));
    case XSI_PBFS_ESM_MSG_TONER:
        if (!needs(2)) break;
        return notify_toner_status(static_cast<unsigned char>(word(0)), static_cast<unsigned char>(word(1)));
    case XSI_PBFS_ESM_MSG_WASTE_TONER:
        if (!needs(1)) break;
        return notify_waste_toner_bottle_status(static_cast<unsigned char>(word(0)));
    case XSI_PBFS_ESM_MSG_PAPER_REST:
        if (!needs(2)) break;
        return notify_paper_rest_status(static_cast<unsigned short>(word(0)), static_cast<unsigned char>(word(1)));
    case XSI_PBFS_ESM_MSG_COVER:
        if (!needs(1)) break;
        return notify_cover_status(word(0));
    case XSI_PBFS_ESM_MSG_DP_COVER:
        if (!needs(1)) break;
        return notify_dp_cover_status(static_cast<unsigned char>(word(0)));
    case XSI_PBFS_ESM_MSG_JAM:
        if (!needs(1)) break;
        return notify_jam_status(word(0));
    case XSI_PBFS_ESM_MSG_DP_JAM:
        if (!needs(1)) break;
        return notify_dp_jam_status(static_cast<unsigned char>(word(0)));
    case XSI_PBFS_ESM_MSG_COIN_VENDER:
        if (!needs(1)) break;
        return notify_coin_vender_status(word(0));
    case XSI_PBFS_ESM_MSG_KEY_CARD:
        if (!needs(1)) break;
        return notify_key_card_status(static_cast<unsigned char>(word(0)));
    case XSI_PBFS_ESM_MSG_KEY_COUNTER:
        if (!needs(1)) break;
        return notify_key_counter_status(word(0));
    case XSI_PBFS_ESM_MSG_RESIDENT_APP_STATE:
        if (!needs(1)) break;
        return notify_resident_app_state_changed(static_cast<XSI_PBFS_ESM_REQ_APP_STATE>(word(0)));
    default:
        break;
    }
    return kUnknownMessage;
}

PLAT_RESULT xsi_pbfs_esm_observer::request_activate(XSI_PBFS_KIND_OF_SCENARIO, unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_logout(dev_ulong) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_pbp_connection_error(XSI_PBFS_EVENT_CONNECTION_ERROR) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_usb_memory_status(unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_toner_status(unsigned char, unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_waste_toner_bottle_status(unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_paper_rest_status(unsigned short, unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_cover_status(unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_dp_cover_status(unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_jam_status(unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_dp_jam_status(unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_coin_vender_status(unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_key_card_status(unsigned char) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_key_counter_status(unsigned int) { return 0; }
PLAT_RESULT xsi_pbfs_esm_observer::notify_resident_app_state_changed(XSI_PBFS_ESM_REQ_APP_STATE) { return 0; }

// ---- The facade -----------------------------------------------------------------------------------------

xsi_pbfs_esm_facade* xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance() {
    static auto* instance = new xsi_pbfs_esm_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_add_observer(xsi_pbfs_esm_observer* observer) {
    jbrg_sim::op call("xsi_pbfs_esm_add_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !registered().add(observer)) return XSI_PBFS_ESM_NG;
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_remove_observer(xsi_pbfs_esm_observer* observer) {
    jbrg_sim::op call("xsi_pbfs_esm_remove_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !registered().remove(observer)) return XSI_PBFS_ESM_NG;
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_STATUS_SLEEP level) {
    // The observers hear the new state after the device lock is released: a plain op, locked for the decision.
    jbrg_sim::op call("xsi_pbfs_esm_request_energy_saving_mode", level);
    if (call.forced()) return call.result();
    {
        auto lock = jbrg_sim::device_lock();
        if (level < XSI_PBFS_ESM_SLEEP_LOW_POWER || level > XSI_PBFS_ESM_SLEEP_DEEP) return XSI_PBFS_ESM_PARAM_ERROR;
        if (jbrg_sim::jobsvc::jobs().running_user_jobs() != 0) return XSI_PBFS_ESM_BUSY;
        if (machine().prohibited || (level == XSI_PBFS_ESM_SLEEP_DEEP && !machine().suspended_by.empty())) {
            return XSI_PBFS_ESM_PROHIBITED;
        }
        machine().state = level;
    }
    send_message(XSI_PBFS_ESM_MSG_SLEEP, {static_cast<dev_ulong>(level)});
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_request_save_mode_prohibition(bool prohibit) {
    jbrg_sim::op call("xsi_pbfs_esm_request_save_mode_prohibition", prohibit);
    if (call.forced()) return call.result();
    bool woke = false;
    {
        auto lock = jbrg_sim::device_lock();
        machine().prohibited = prohibit;
        if (prohibit) woke = wake();
    }
    if (woke) send_message(XSI_PBFS_ESM_MSG_SLEEP, {XSI_PBFS_SLEEP_STATE_AWAKE});
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_suspend_deep_sleep(const char* app_id) {
    jbrg_sim::locked_op call("xsi_pbfs_esm_suspend_deep_sleep", app_id);
    if (call.forced()) return call.result();
    if (!good_app_id(app_id)) return XSI_PBFS_ESM_PARAM_ERROR;
    std::vector<std::string>& apps = machine().suspended_by;
    if (std::find(apps.begin(), apps.end(), app_id) == apps.end()) apps.emplace_back(app_id);
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_resume_deep_sleep(const char* app_id) {
    jbrg_sim::locked_op call("xsi_pbfs_esm_resume_deep_sleep", app_id);
    if (call.forced()) return call.result();
    if (!good_app_id(app_id)) return XSI_PBFS_ESM_PARAM_ERROR;
    std::vector<std::string>& apps = machine().suspended_by;
    auto at = std::find(apps.begin(), apps.end(), app_id);
    if (at == apps.end()) return XSI_PBFS_ESM_NOT_SUSPENDED;
    apps.erase(at);
    return XSI_PBFS_ESM_OK;
}

PLAT_RESULT xsi_pbfs_esm_facade::xsi_pbfs_esm_set_wakeup_date(const char* app_id, dev_ulong date) {
    jbrg_sim::locked_op call("xsi_pbfs_esm_set_wakeup_date", app_id, date);
    if (call.forced()) return call.result();
    if (!good_app_id(app_id)) return XSI_PBFS_ESM_PARAM_ERROR;
    if (date == 0) {
        machine().wakeup_dates.erase(app_id);
        return XSI_PBFS_ESM_OK;
    }
    // The device keeps dates as signed 32-bit seconds, and wakes only for one still to come.
    if (date > 0x7FFFFFFFu || static_cast<long long>(date) <= static_cast<long long>(std::time(nullptr))) {
        return XSI_PBFS_ESM_PARAM_ERROR;
    }
    machine().wakeup_dates[app_id] = date;
    return XSI_PBFS_ESM_OK;
}

// ---- The control surface --------------------------------------------------------------------------------

namespace jbrg_sim::esm {

int32_t request_activate(int32_t scenario, uint32_t parameter) {
    return send_message(XSI_PBFS_ESM_MSG_REQUEST_ACTIVATE, {static_cast<dev_ulong>(scenario), parameter});
}
int32_t notify_logout(uint32_t user_id) { return send_message(XSI_PBFS_ESM_MSG_LOGOUT, {user_id}); }
int32_t notify_pbp_connection_error(int32_t error) {
    return send_message(XSI_PBFS_ESM_MSG_CONNECTION_ERROR, {static_cast<dev_ulong>(error)});
}
int32_t notify_sleep(int32_t state) { return send_message(XSI_PBFS_ESM_MSG_SLEEP, {static_cast<dev_ulong>(state)}); }
int32_t notify_usb_memory_status(uint32_t status) { return send_message(XSI_PBFS_ESM_MSG_USB_MEMORY, {status}); }
int32_t notify_toner_status(uint8_t first, uint8_t second) {
    return send_message(XSI_PBFS_ESM_MSG_TONER, {first, second});
}
int32_t notify_waste_toner_bottle_status(uint8_t status) {
    return send_message(XSI_PBFS_ESM_MSG_WASTE_TONER, {status});
}
int32_t notify_paper_rest_status(uint16_t source, uint8_t level) {
    return send_message(XSI_PBFS_ESM_MSG_PAPER_REST, {source, level});
}
int32_t notify_cover_status(uint32_t status) { return send_message(XSI_PBFS_ESM_MSG_COVER, {status}); }
int32_t notify_dp_cover_status(uint8_t status) { return send_message(XSI_PBFS_ESM_MSG_DP_COVER, {status}); }
int32_t notify_jam_status(uint32_t status) { return send_message(XSI_PBFS_ESM_MSG_JAM, {status}); }
int32_t notify_dp_jam_status(uint8_t status) { return send_message(XSI_PBFS_ESM_MSG_DP_JAM, {status}); }
int32_t notify_coin_vender_status(uint32_t status) { return send_message(XSI_PBFS_ESM_MSG_COIN_VENDER, {status}); }
int32_t notify_key_card_status(uint8_t status) { return send_message(XSI_PBFS_ESM_MSG_KEY_CARD, {status}); }
int32_t notify_key_counter_status(uint32_t status) { return send_message(XSI_PBFS_ESM_MSG_KEY_COUNTER, {status}); }
int32_t notify_resident_app_state_changed(int32_t state) {
    return send_message(XSI_PBFS_ESM_MSG_RESIDENT_APP_STATE, {static_cast<dev_ulong>(state)});
}

int32_t send(uint32_t msg_id, const uint32_t* words, std::size_t count) {
    return send_message(msg_id, std::vector<dev_ulong>(words, words + count));
}

std::size_t observers() { return registered().size(); }

int32_t sleep_state() { return read_locked(machine, &energy::state); }
bool save_mode_prohibited() { return read_locked(machine, &energy::prohibited); }
std::vector<std::string> deep_sleep_suspended_by() { return read_locked(machine, &energy::suspended_by); }

std::optional<uint32_t> wakeup_date(const std::string& app_id) {
    const std::map<std::string, uint32_t> dates = read_locked(machine, &energy::wakeup_dates);
    auto at = dates.find(app_id);
    if (at == dates.end()) return std::nullopt;
    return at->second;
}

int32_t wake_up() {
    ensure_loaded();
    bool woke = false;
    {
        auto lock = device_lock();
        woke = wake();
    }
    return woke ? send_message(XSI_PBFS_ESM_MSG_SLEEP, {XSI_PBFS_SLEEP_STATE_AWAKE}) : 0;
}

}  // namespace jbrg_sim::esm
