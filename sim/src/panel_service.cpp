// The operation panel: what applications ask of it, and the notifications it sends its observers.
//
// The "panel" section of the scenario says how the panel starts:
//
//   "panel": {
//     "unavailable_screens": [ 4, 6 ],                                  // screens that cannot be shown now
//     "keypad": { "display_mode": 1, "layout": 2, "position": 0, "x": 100, "y": 40 }
//   }
//
// Both keys may be left out (every screen available, keypad hidden at 0, 0 with layout and position 0).
// Unknown keys, wrong types and values out of range are refused.
//
// Behaviour worth knowing when reading the bridge against it:
//   - An application id must be a non-empty text; a null or empty one gives XSI_PBFS_PANEL_PARAM_ERROR, as
//     does an enumeration value the panel does not know (view update types 0..6, LED 0..1, buzzer 0..2,
//     screens 0..7, text types 0..2, request kind 0).
//   - A soft keyboard text takes up to XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE - 1 (384) bytes; a longer
//     one gives XSI_PBFS_PANEL_PARAM_ERROR and the text kept before stays.
//   - A screen listed as unavailable is refused by request_display_screen with XSI_PBFS_PANEL_NOT_AVAILABLE
//     and reported by is_screen_available as 0; the out-value "available" can be forced.
//   - Menu applications: initialized(id, true) adds the application, initialized(id, false) changes
//     nothing; terminated(id, ...) removes it and gives XSI_PBFS_PANEL_NG for one that is not there.
//   - The keypad: display mode 1 shows it with the record's layout, position and place (layout or position
//     above 2: XSI_PBFS_PANEL_PARAM_ERROR, nothing changes); any other mode hides it, keeping layout,
//     position and place. Either way the record comes back holding the keypad as it was before the request,
//     so an all-zero request both reads and hides it.
//   - The automatic reset timer: STOP holds it for the application (a second STOP is harmless), START
//     releases that hold (XSI_PBFS_PANEL_NG for an application that holds none), RESTART releases the
//     application's hold if it has one and counts the reset time from now. The timer runs while nobody holds
//     it; when its time runs out (jbrg_sim::panel::reset_timer_expire) the observers hear the automatic
//     reset. Holds are panel content: a scenario load or a reset drops them.
//   - Every call logs its parameters in order; the keypad record is logged by its fields,
//     "{display_mode=1, layout=0, position=2, x=10, y=20}", so that what reached the panel can be read.
#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/panel.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xsi_pbfs_panel.h"

namespace {

using json = nlohmann::json;

// ---- The scenario's "panel" section -------------------------------------------------------------------

struct contents {
    std::set<int> unavailable;
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO keypad{};
    std::map<std::string, int> views;
    std::map<std::string, int> ext_auth_views;
    std::vector<std::string> events;
    int led = XSI_PBFS_LED_OFF;
    std::string led_owner;
    std::vector<std::string> buzzes;
    int screen = -1;
    std::vector<std::string> menu_apps;
    std::map<std::pair<std::string, uint32_t>, std::pair<std::string, int>> texts;
    bool ext_auth_initialized = false;
    bool j_foundation_started = false;
    unsigned resets_ended = 0;
    std::vector<std::string> reset_timer_holders;
    unsigned reset_timer_restarts = 0;
};

contents parse(const json& scenario) {
    contents c;
    const jbrg_sim::scenario_part part(scenario, "panel", {"unavailable_screens", "keypad"});
    const json& screens = part.list_at("unavailable_screens");
    for (std::size_t i = 0; i < screens.size(); ++i) {
        c.unavailable.insert(static_cast<int>(
            part.integer(screens[i], 0, XSI_PBFS_PANEL_DISPLAY_TYPE_COUNT - 1, part.at("/unavailable_screens", i))));
    }
    if (part.has("keypad")) {
        const json& k = part.section().at("keypad");
        part.only_keys(k, {"display_mode", "layout", "position", "x", "y"}, "/keypad");
        c.keypad.display_mode = static_cast<dev_ulong>(part.integer_at(k, "display_mode", 0, 0, 1, "/keypad"));
        c.keypad.layout = static_cast<dev_ulong>(part.integer_at(k, "layout", 0, 0, 2, "/keypad"));
        c.keypad.position = static_cast<dev_ulong>(part.integer_at(k, "position", 0, 0, 2, "/keypad"));
        c.keypad.x = static_cast<uint16_t>(part.integer_at(k, "x", 0, 0, 65535, "/keypad"));
        c.keypad.y = static_cast<uint16_t>(part.integer_at(k, "y", 0, 0, 65535, "/keypad"));
    }
    return c;
}

// ---- The panel ----------------------------------------------------------------------------------------

class panel_service final : public jbrg_sim::service {
public:
    apply_step read(const json& scenario) override {
        return [this, next = parse(scenario)] { state = next; };
    }

    contents state;
    // Registered observers belong to the processes that registered them, not to the scenario.
    jbrg_sim::observer_list<xsi_pbfs_panel_observer> observers;
};

panel_service& the_panel() {
    static panel_service* s = new panel_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const panel_service& registered = the_panel();

bool known_app(const char* app_id) { return app_id != nullptr && app_id[0] != '\0'; }

std::string keypad_text(const XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& k) {
    return "{display_mode=" + std::to_string(k.display_mode) + ", layout=" + std::to_string(k.layout) +
           ", position=" + std::to_string(k.position) + ", x=" + std::to_string(k.x) +
           ", y=" + std::to_string(k.y) + "}";
}

// Under the device lock its operation holds.
PLAT_RESULT view_update(const jbrg_sim::op& call, std::map<std::string, int>& views, const char* app_id,
                        XSI_PBFS_PANEL_VIEW_UPDATE_TYPE type) {
    if (call.forced()) return call.result();
    if (!known_app(app_id) || type < XSI_PBFS_PANEL_VIEW_UPDATE_SHOW || type > XSI_PBFS_PANEL_VIEW_UPDATE_CLOSE) {
        return XSI_PBFS_PANEL_PARAM_ERROR;
    }
    views[app_id] = type;
    return XSI_PBFS_PANEL_OK;
}

bool screen_known(XSI_PBFS_PANEL_DISPLAY_TYPE type) { return type >= 0 && type < XSI_PBFS_PANEL_DISPLAY_TYPE_COUNT; }

// Hands one message to every registered observer on the panel's IPC thread.
int32_t send(uint32_t msg_id, std::string data) {
    return jbrg_sim::deliver("panel", [msg_id, data = std::move(data)]() mutable -> int32_t {
        return the_panel().observers.call_each([&](xsi_pbfs_panel_observer* o) {
            gen_ipc_msghdr header{msg_id, 0x0701u, static_cast<dev_ulong>(data.size()), 0};
            std::vector<char> bytes(data.begin(), data.end());
            bytes.push_back('\0');  // a spare byte, so that empty data still has an address
            return o->dispatch(0, bytes.data(), static_cast<unsigned int>(data.size()), header);
        });
    });
}

// Reads one text of at most `capacity` bytes from the front of `data`, never past `size`.
std::string text_at(const char* data, unsigned int size, unsigned int capacity) {
    const unsigned int n = std::min(size, capacity);
    return std::string(data, strnlen(data, n));
}

}  // namespace

// ---- The observer base ---------------------------------------------------------------------------------

xsi_pbfs_panel_observer::~xsi_pbfs_panel_observer() = default;

PLAT_RESULT xsi_pbfs_panel_observer::dispatch(long, char* data, unsigned int size, gen_ipc_msghdr header) {
    if (size != 0 && data == nullptr) return XSI_PBFS_PANEL_PARAM_ERROR;
    constexpr unsigned int id_size = XSI_PBFS_PANEL_APP_ID_SIZE;
    auto word = [&](unsigned int at) {
        dev_ulong v = 0;
        std::memcpy(&v, data + at, sizeof v);
        return v;
    };
    switch (header.msg_id) {
        case XSI_PBFS_PANEL_MSG_KEY_EVENT:
            if (size < 8) break;
            return notify_key_event(word(0), word(4));
        case XSI_PBFS_PANEL_MSG_AUTO_PANEL_RESET:
            return notify_auto_panel_reset();
        case XSI_PBFS_PANEL_MSG_RESET_END:
            return notify_reset_end();
        case XSI_PBFS_PANEL_MSG_PANEL_DISPLAY: {
            if (size < id_size + sizeof(XSI_PBFS_PANEL_DISPLAY_PROPERTY)) break;
            const std::string app = text_at(data, size, id_size);
            auto* display = new XSI_PBFS_PANEL_DISPLAY_PROPERTY;
            std::memcpy(display, data + id_size, sizeof *display);
            const PLAT_RESULT r = notify_panel_display(app.c_str(), *display);
            delete display;
            return r;
        }
        case XSI_PBFS_PANEL_MSG_PANEL_OPERATION: {
            if (size < id_size + sizeof(XSI_PBFS_PANEL_OPERATION_PROPERTY)) break;
            const std::string app = text_at(data, size, id_size);
            XSI_PBFS_PANEL_OPERATION_PROPERTY operation;
            std::memcpy(&operation, data + id_size, sizeof operation);
            return notify_panel_operation(app.c_str(), operation);
        }
        case XSI_PBFS_PANEL_MSG_REQUEST_EVENT:
            if (size < id_size + 4) break;
            return notify_request_event(text_at(data, size, id_size).c_str(), word(id_size));
        case XSI_PBFS_PANEL_MSG_REQUEST_BUZZER:
            if (size < 4) break;
            return notify_request_buzzer(static_cast<XSI_PBFS_BUZZER_TYPE>(word(0)));
        case XSI_PBFS_PANEL_MSG_REQUEST_START_LED:
            if (size < 4) break;
            return notify_request_start_led(static_cast<XSI_PBFS_LED_STATE>(word(0)));
        case XSI_PBFS_PANEL_MSG_EXT_AUTH_INITIALIZE:
            if (size < 4) break;
            return notify_extension_authentication_initialize(word(0) != 0);
        case XSI_PBFS_PANEL_MSG_REQUEST_DISPLAY_SCREEN:
            if (size < 4) break;
            return notify_request_display_screen(static_cast<XSI_PBFS_PANEL_DISPLAY_TYPE>(word(0)));
        case XSI_PBFS_PANEL_MSG_REQUEST_SET_VALUE: {
            if (size < id_size + 4) break;
            const std::string app = text_at(data, size, id_size);
            const std::string value = text_at(data + id_size + 4, size - id_size - 4, size - id_size - 4);
            return notify_request_set_value(app.c_str(), word(id_size), value.c_str());
        }
        case XSI_PBFS_PANEL_MSG_APPL_START:
            return notify_appl_start(text_at(data, size, size).c_str());
        case XSI_PBFS_PANEL_MSG_APPL_STOP:
            return notify_appl_stop(text_at(data, size, size).c_str());
        default:
            break;
    }
    return XSI_PBFS_PANEL_PARAM_ERROR;
}

PLAT_RESULT xsi_pbfs_panel_observer::notify_key_event(dev_ulong, dev_ulong) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_auto_panel_reset() { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_panel_display(const char*, const XSI_PBFS_PANEL_DISPLAY_PROPERTY&) {
    return 0;
}
PLAT_RESULT xsi_pbfs_panel_observer::notify_panel_operation(const char*, const XSI_PBFS_PANEL_OPERATION_PROPERTY&) {
    return 0;
}
PLAT_RESULT xsi_pbfs_panel_observer::notify_request_event(const char*, dev_ulong) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_request_buzzer(XSI_PBFS_BUZZER_TYPE) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_request_start_led(XSI_PBFS_LED_STATE) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_extension_authentication_initialize(bool) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_reset_end() { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_request_set_value(const char*, dev_ulong, const char*) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_appl_start(const char*) { return 0; }
PLAT_RESULT xsi_pbfs_panel_observer::notify_appl_stop(const char*) { return 0; }

// ---- The facade ----------------------------------------------------------------------------------------

xsi_pbfs_panel_facade* xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance() {
    static xsi_pbfs_panel_facade* instance = new xsi_pbfs_panel_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_add_observer(xsi_pbfs_panel_observer* observer) {
    jbrg_sim::op call("xsi_pbfs_panel_add_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr) return XSI_PBFS_PANEL_PARAM_ERROR;
    return the_panel().observers.add(observer) ? XSI_PBFS_PANEL_OK : XSI_PBFS_PANEL_DUPL_OBSERVER;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_remove_observer(xsi_pbfs_panel_observer* observer) {
    jbrg_sim::op call("xsi_pbfs_panel_remove_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr) return XSI_PBFS_PANEL_PARAM_ERROR;
    return the_panel().observers.remove(observer) ? XSI_PBFS_PANEL_OK : XSI_PBFS_PANEL_NO_OBSERVER;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_notify_view_update(const char* app_id,
                                                                     XSI_PBFS_PANEL_VIEW_UPDATE_TYPE type) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_notify_view_update", app_id, type);
    return view_update(call, the_panel().state.views, app_id, type);
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_notify_view_update_ext_auth_app(
    const char* app_id, XSI_PBFS_PANEL_VIEW_UPDATE_TYPE type) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_notify_view_update_ext_auth_app", app_id, type);
    return view_update(call, the_panel().state.ext_auth_views, app_id, type);
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_notify_request_event(const char* app_id, unsigned int event) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_notify_request_event", app_id, event);
    if (call.forced()) return call.result();
    if (!known_app(app_id)) return XSI_PBFS_PANEL_PARAM_ERROR;
    the_panel().state.events.push_back(std::string(app_id) + ":" + std::to_string(event));
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_request_start_led(const char* app_id, XSI_PBFS_LED_STATE state) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_request_start_led", app_id, state);
    if (call.forced()) return call.result();
    if (!known_app(app_id) || (state != XSI_PBFS_LED_OFF && state != XSI_PBFS_LED_ON)) {
        return XSI_PBFS_PANEL_PARAM_ERROR;
    }
    the_panel().state.led = state;
    the_panel().state.led_owner = app_id;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_request_buzzer(const char* app_id, XSI_PBFS_BUZZER_TYPE type) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_request_buzzer", app_id, type);
    if (call.forced()) return call.result();
    if (!known_app(app_id) || type < XSI_PBFS_BUZZER_INPUT || type > XSI_PBFS_BUZZER_WARNING) {
        return XSI_PBFS_PANEL_PARAM_ERROR;
    }
    the_panel().state.buzzes.push_back(std::string(app_id) + ":" + std::to_string(type));
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_extension_authentication_initialize(bool initialize) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_extension_authentication_initialize", initialize);
    if (call.forced()) return call.result();
    the_panel().state.ext_auth_initialized = initialize;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_notify_j_foundation_started(bool started) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_notify_j_foundation_started", started);
    if (call.forced()) return call.result();
    the_panel().state.j_foundation_started = started;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_notify_reset_end() {
    jbrg_sim::locked_op call("xsi_pbfs_panel_notify_reset_end");
    if (call.forced()) return call.result();
    ++the_panel().state.resets_ended;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE type) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_request_display_screen", type);
    if (call.forced()) return call.result();
    if (!screen_known(type)) return XSI_PBFS_PANEL_PARAM_ERROR;
    if (the_panel().state.unavailable.count(type) != 0) return XSI_PBFS_PANEL_NOT_AVAILABLE;
    the_panel().state.screen = type;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_menu_application_initialized(const char* app_id, bool result) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_menu_application_initialized", app_id, result);
    if (call.forced()) return call.result();
    if (!known_app(app_id)) return XSI_PBFS_PANEL_PARAM_ERROR;
    auto& apps = the_panel().state.menu_apps;
    if (result && std::find(apps.begin(), apps.end(), app_id) == apps.end()) apps.emplace_back(app_id);
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_menu_application_terminated(const char* app_id, bool result) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_menu_application_terminated", app_id, result);
    if (call.forced()) return call.result();
    if (!known_app(app_id)) return XSI_PBFS_PANEL_PARAM_ERROR;
    auto& apps = the_panel().state.menu_apps;
    auto at = std::find(apps.begin(), apps.end(), app_id);
    if (at == apps.end()) return XSI_PBFS_PANEL_NG;
    apps.erase(at);
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_is_screen_available(XSI_PBFS_PANEL_DISPLAY_TYPE type,
                                                                      int& available) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_is_screen_available", type, static_cast<const void*>(&available));
    if (call.forced()) return call.result();
    if (!screen_known(type)) return XSI_PBFS_PANEL_PARAM_ERROR;
    dev_long value = the_panel().state.unavailable.count(type) != 0 ? 0 : 1;
    call.out("available", &value);
    available = value;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_set_display_text(const char* identifier, dev_ulong item,
                                                                   const char* text,
                                                                   XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE type) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_set_display_text", identifier, item, text, type);
    if (call.forced()) return call.result();
    if (!known_app(identifier) || text == nullptr || type < XSI_PBFS_PANEL_DISPLAY_TEXT_PLAIN ||
        type > XSI_PBFS_PANEL_DISPLAY_TEXT_NUMERIC ||
        std::strlen(text) >= XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE) {
        return XSI_PBFS_PANEL_PARAM_ERROR;
    }
    the_panel().state.texts[{identifier, item}] = {text, type};
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_request_display_soft_tenkey(
    const char* app_id, XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST kind, XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_request_display_soft_tenkey", app_id, kind, keypad_text(info));
    if (call.forced()) return call.result();
    if (!known_app(app_id) || kind != XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY) return XSI_PBFS_PANEL_PARAM_ERROR;
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& keypad = the_panel().state.keypad;
    const XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO before = keypad;
    if (info.display_mode == XSI_PBFS_PANEL_SOFT_TENKEY_SHOW) {
        if (info.layout >= XSI_PBFS_PANEL_SOFT_TENKEY_LAYOUT_NUM || info.position >= XSI_PBFS_PANEL_SOFT_TENKEY_POSITION_NUM) {
            return XSI_PBFS_PANEL_PARAM_ERROR;
        }
        keypad = info;
    } else {
        keypad.display_mode = XSI_PBFS_PANEL_SOFT_TENKEY_HIDE;
    }
    info = before;
    return XSI_PBFS_PANEL_OK;
}

PLAT_RESULT xsi_pbfs_panel_facade::xsi_pbfs_panel_reset_timer_ctrl(const char* app_id, XSI_PBFS_PNL_RST_TMR control) {
    jbrg_sim::locked_op call("xsi_pbfs_panel_reset_timer_ctrl", app_id, control);
    if (call.forced()) return call.result();
    if (!known_app(app_id) || control < XSI_PBFS_PNL_RST_TMR_STOP || control > XSI_PBFS_PNL_RST_TMR_RESTART) {
        return XSI_PBFS_PANEL_PARAM_ERROR;
    }
    contents& c = the_panel().state;
    auto held = std::find(c.reset_timer_holders.begin(), c.reset_timer_holders.end(), app_id);
    switch (control) {
        case XSI_PBFS_PNL_RST_TMR_STOP:
            if (held == c.reset_timer_holders.end()) c.reset_timer_holders.emplace_back(app_id);
            break;
        case XSI_PBFS_PNL_RST_TMR_START:
            if (held == c.reset_timer_holders.end()) return XSI_PBFS_PANEL_NG;
            c.reset_timer_holders.erase(held);
            break;
        case XSI_PBFS_PNL_RST_TMR_RESTART:
            if (held != c.reset_timer_holders.end()) c.reset_timer_holders.erase(held);
            ++c.reset_timer_restarts;
            break;
    }
    return XSI_PBFS_PANEL_OK;
}

// ---- The control surface -------------------------------------------------------------------------------

namespace jbrg_sim::panel {

int32_t notify_auto_reset() { return send(XSI_PBFS_PANEL_MSG_AUTO_PANEL_RESET, ""); }
int32_t notify_appl_start(const std::string& app_id) { return send(XSI_PBFS_PANEL_MSG_APPL_START, app_id); }
int32_t notify_appl_stop(const std::string& app_id) { return send(XSI_PBFS_PANEL_MSG_APPL_STOP, app_id); }
int32_t notify(uint32_t msg_id, const std::string& data) { return send(msg_id, data); }

std::size_t observers() { return ::the_panel().observers.size(); }

namespace {
template <class T>
T read(T contents::*member) {
    ensure_loaded();
    auto lock = device_lock();
    return ::the_panel().state.*member;
}
std::optional<int> find_view(const std::map<std::string, int>& views, const std::string& app_id) {
    auto at = views.find(app_id);
    if (at == views.end()) return std::nullopt;
    return at->second;
}
}  // namespace

std::optional<int> view(const std::string& app_id) { return find_view(read(&contents::views), app_id); }
std::optional<int> ext_auth_view(const std::string& app_id) {
    return find_view(read(&contents::ext_auth_views), app_id);
}
std::vector<std::string> events() { return read(&contents::events); }
int start_led() { return read(&contents::led); }
std::string start_led_owner() { return read(&contents::led_owner); }
std::vector<std::string> buzzes() { return read(&contents::buzzes); }
int screen() { return read(&contents::screen); }
std::vector<std::string> menu_applications() { return read(&contents::menu_apps); }

std::optional<std::string> softkeyboard_text(const std::string& identifier, uint32_t item) {
    auto texts = read(&contents::texts);
    auto at = texts.find({identifier, item});
    if (at == texts.end()) return std::nullopt;
    return at->second.first;
}

std::optional<int> softkeyboard_text_type(const std::string& identifier, uint32_t item) {
    auto texts = read(&contents::texts);
    auto at = texts.find({identifier, item});
    if (at == texts.end()) return std::nullopt;
    return at->second.second;
}

bool extension_authentication_initialized() { return read(&contents::ext_auth_initialized); }
bool j_foundation_started() { return read(&contents::j_foundation_started); }
unsigned resets_ended() { return read(&contents::resets_ended); }

bool reset_timer_running() { return read(&contents::reset_timer_holders).empty(); }
std::vector<std::string> reset_timer_holders() { return read(&contents::reset_timer_holders); }
unsigned reset_timer_restarts() { return read(&contents::reset_timer_restarts); }

bool reset_timer_expire() {
    // The observers hear the reset without the device lock, as every panel notification.
    if (!reset_timer_running()) return false;
    notify_auto_reset();
    return true;
}

keypad_state keypad() {
    const XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO k = read(&contents::keypad);
    return keypad_state{k.display_mode, k.layout, k.position, k.x, k.y};
}

}  // namespace jbrg_sim::panel
