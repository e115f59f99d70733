// The application-management service: the installed applications, their start and stop, the answers of the
// application platform and the observers the service sends its requests to.
//
// The "apps" section of the scenario lists what is installed:
//
//   "apps": {
//     "installed": [
//       {"id": "com.example.scan", "name": "Scan", "names": {"0": "Sukyan"}, "version": "1.2.0",
//        "type": 1, "state": 0, "detail_state": 0, "button_label": "Scan", "vendor": "Example",
//        "category": 2, "icon_path": "/apps/scan/icon.png", "area": 1, "path": "/apps/scan",
//        "top_url": "...", "app_file": "scan.jar", "login_url": "...", "pc_cfg_url": "...", "menu_url": "...",
//        "libraries": ["lib/a.jar", "lib/b.jar"]}
//     ],
//     "basis_state": -1
//   }
//
// Only "id" is required. "names" gives the name per language (ENV_LANG_VAL as text); other languages, and the
// detail without a language, use "name". "type" defaults to 1 (Java applications); "state" (the list's
// XAM_ADS_LIST_STATE_*) to 0; "detail_state" to what "state" means in the detail's counting (running 1,
// starting or stopping 2, stopped 0); "area" to 1.
//
// Behaviour worth knowing when reading the bridge against it:
//   - An unknown application id answers XAM_ADS_RESULT_NO_APP (0xC2010009); a null pointer argument
//     XAM_ADS_RESULT_PARAM (0xC2010002); starting a running application or stopping a stopped one
//     XAM_ADS_RESULT_STATE (0xC201000C).
//   - Start makes an application running (list state 1, detail state 1), stop makes it stopped (0, 0).
//   - Texts longer than a record's field are cut to its capacity; library names to 256 characters.
//   - get_app_num_info and get_library_num report their out-value "num", which force_out can replace;
//     get_app_list reports "out_count".
//   - Every call logs its arguments in order: numbers in decimal, texts as text, buffers as pointers.
#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xam_ads.h"

namespace {

using json = nlohmann::json;

struct installed_app {
    std::string id;
    std::string name;
    std::map<int32_t, std::string> names;
    std::string version;
    int32_t type = XAM_ADS_APP_TYPE_JAVA;
    int32_t state = XAM_ADS_LIST_STATE_STOPPED;
    int32_t detail_state = XAM_ADS_DETAIL_STATE_STOPPED;
    std::string button_label, vendor, icon_path, path, top_url, app_file, login_url, pc_cfg_url, menu_url;
    int32_t category = 0;
    int32_t area = XAM_ADS_AREA_FLASH;
    std::vector<std::string> libraries;
    std::string config_url;

    const std::string& name_in(std::optional<int32_t> lang) const {
        if (lang) {
            auto it = names.find(*lang);
            if (it != names.end()) return it->second;
        }
        return name;
    }
};

using jbrg_sim::scenario_part;

int32_t number_of(const scenario_part& part, const json& o, const char* key, int32_t fallback, const std::string& where) {
    return static_cast<int32_t>(part.integer_at(o, key, fallback, INT32_MIN, INT32_MAX, where));
}

int32_t detail_state_for(int32_t list_state) {
    if (list_state == XAM_ADS_LIST_STATE_RUNNING) return XAM_ADS_DETAIL_STATE_RUNNING;
    if (list_state == XAM_ADS_LIST_STATE_STARTING || list_state == XAM_ADS_LIST_STATE_STOPPING) {
        return XAM_ADS_DETAIL_STATE_CHANGING;
    }
    return XAM_ADS_DETAIL_STATE_STOPPED;
}

installed_app parse_app(const scenario_part& part, const json& a, const std::string& where) {
    part.only_keys(a,
                   {"id", "name", "names", "version", "type", "state", "detail_state", "button_label", "vendor",
                    "category", "icon_path", "area", "path", "top_url", "app_file", "login_url", "pc_cfg_url",
                    "menu_url", "libraries"},
                   where);
    if (!a.contains("id") || !a.at("id").is_string()) part.fail(where, "needs an id, a string");
    installed_app app;
    app.id = a.at("id").get<std::string>();
    app.name = part.text_at(a, "name", where);
    if (a.contains("names")) {
        const std::string names = part.at(where, "names");
        if (!a.at("names").is_object()) part.fail(names, "must be an object");
        for (const auto& item : a.at("names").items()) {
            if (!item.value().is_string()) part.fail(part.at(names, item.key()), "must be a string");
            try {
                app.names[std::stoi(item.key())] = item.value().get<std::string>();
            } catch (const std::logic_error&) {
                part.fail(part.at(names, item.key()), "the key must be a language number");
            }
        }
    }
    app.version = part.text_at(a, "version", where);
    app.type = number_of(part, a, "type", XAM_ADS_APP_TYPE_JAVA, where);
    app.state = number_of(part, a, "state", XAM_ADS_LIST_STATE_STOPPED, where);
    app.detail_state = number_of(part, a, "detail_state", detail_state_for(app.state), where);
    app.button_label = part.text_at(a, "button_label", where);
    app.vendor = part.text_at(a, "vendor", where);
    app.category = number_of(part, a, "category", 0, where);
    app.icon_path = part.text_at(a, "icon_path", where);
    app.area = number_of(part, a, "area", XAM_ADS_AREA_FLASH, where);
    app.path = part.text_at(a, "path", where);
    app.top_url = part.text_at(a, "top_url", where);
    app.app_file = part.text_at(a, "app_file", where);
    app.login_url = part.text_at(a, "login_url", where);
    app.pc_cfg_url = part.text_at(a, "pc_cfg_url", where);
    app.menu_url = part.text_at(a, "menu_url", where);
    const json& libraries = part.list_at(a, "libraries", where);
    for (std::size_t i = 0; i < libraries.size(); ++i) {
        if (!libraries[i].is_string()) part.fail(part.at(part.at(where, "libraries"), i), "must be a string");
        app.libraries.push_back(libraries[i].get<std::string>());
    }
    return app;
}

class app_service final : public jbrg_sim::service, public jbrg_sim::registrations {
public:
    // Under the device lock (as every member below).
    apply_step read(const json& scenario) override {
        const scenario_part part(scenario, "apps", {"installed", "basis_state"});
        std::vector<installed_app> next;
        const json& installed = part.list_at("installed");
        for (std::size_t i = 0; i < installed.size(); ++i) {
            const std::string where = scenario_part::at("/installed", i);
            installed_app app = parse_app(part, installed[i], where);
            for (const installed_app& other : next) {
                if (other.id == app.id) part.fail(where, "the application " + app.id + " is installed twice");
            }
            next.push_back(std::move(app));
        }
        const int32_t basis = number_of(part, part.section(), "basis_state", -1, "");
        return [this, next, basis] {
            apps = next;
            basis_state = basis;
            results.clear();
            // Registrations belong to the running process, not to the device's content: a load keeps them.
        };
    }

    // A reset powers the device on again: no observer is registered and registration ids start again.
    void forget() override {
        auto lock = jbrg_sim::device_lock();
        observers.clear();
        next_registration = 1;
    }

    installed_app* find(const char* id) {
        if (id == nullptr) return nullptr;
        for (installed_app& a : apps) {
            if (a.id == id) return &a;
        }
        return nullptr;
    }

    std::vector<installed_app> apps;
    int32_t basis_state = -1;
    std::vector<jbrg_sim::apps::result> results;
    std::vector<std::pair<dev_ulong, xam_ads_app_operation_observer*>> observers;
    dev_ulong next_registration = 1;
};

app_service& app_state() {
    static app_service* s = new app_service;
    return *s;
}
[[maybe_unused]] const app_service& registered = app_state();

void copy_text(char* field, std::size_t capacity, const std::string& text) {
    std::size_t n = std::min(text.size(), capacity - 1);
    std::memcpy(field, text.data(), n);
    std::memset(field + n, 0, capacity - n);
}
template <std::size_t N>
void copy_text(char (&field)[N], const std::string& text) {
    copy_text(field, N, text);
}

// Under the device lock, as the helpers of the facade below.
PLAT_RESULT detail_of(const char* app_id, XAM_ADS_APP_INFO_DETAIL* detail, std::optional<int32_t> lang) {
    if (app_id == nullptr || detail == nullptr) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    std::memset(detail, 0, sizeof *detail);
    copy_text(detail->app_id, a->id);
    copy_text(detail->app_name, a->name_in(lang));
    copy_text(detail->button_label, a->button_label);
    copy_text(detail->vendor_name, a->vendor);
    detail->category = a->category;
    copy_text(detail->icon_path, a->icon_path);
    detail->execution_state = a->detail_state;
    detail->installed_app_area = a->area;
    copy_text(detail->installed_app_path, a->path);
    copy_text(detail->top_url, a->top_url);
    copy_text(detail->app_file, a->app_file);
    copy_text(detail->login_url, a->login_url);
    copy_text(detail->pc_cfg_url, a->config_url.empty() ? a->pc_cfg_url : a->config_url);
    copy_text(detail->menu_url, a->menu_url);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT record_result(const char* request, const char* app_id, XAM_ADS_RETCODE code) {
    if (app_id == nullptr) return XAM_ADS_RESULT_PARAM;
    app_state().results.push_back(jbrg_sim::apps::result{request, app_id, code});
    return XAM_ADS_RESULT_OK;
}

// Sends one request to every registered observer on the service's IPC thread.
int32_t send(dev_ulong msg_id, std::string data) {
    jbrg_sim::ensure_loaded();
    return jbrg_sim::deliver("xam_ads", [msg_id, data]() mutable -> int32_t {
        std::vector<xam_ads_app_operation_observer*> targets;
        {
            auto lock = jbrg_sim::device_lock();
            for (const auto& r : app_state().observers) targets.push_back(r.second);
        }
        int32_t answer = 0;
        for (xam_ads_app_operation_observer* o : targets) {
            std::vector<char> buffer(data.begin(), data.end());
            buffer.push_back('\0');
            gen_ipc_msghdr header{msg_id, 0, static_cast<dev_ulong>(data.size()), 0};
            int32_t one = o->dispatch(0, buffer.data(), static_cast<unsigned>(data.size()), header);
            if (answer == 0) answer = one;
        }
        return answer;
    });
}

std::string control_bytes(int32_t control) {
    return std::string(reinterpret_cast<const char*>(&control), sizeof control);
}

}  // namespace

// ---- The observer base ------------------------------------------------------------------------------------

xam_ads_app_operation_observer::~xam_ads_app_operation_observer() = default;

PLAT_RESULT xam_ads_app_operation_observer::dispatch(long kind, char* data, unsigned int size,
                                                     gen_ipc_msghdr header) {
    (void)kind;
    // An application id arrives zero-terminated; a message without data names the empty id.
    const char* app_id = (data != nullptr && size > 0) ? data : "";
    switch (header.msg_id) {
        case XAM_ADS_MSG_RUN_APP:
            notify_run_app(app_id);
            return XAM_ADS_RESULT_OK;
        case XAM_ADS_MSG_TERMINATE_APP:
            notify_terminate_app(app_id);
            return XAM_ADS_RESULT_OK;
        case XAM_ADS_MSG_OPEN_WINDOW:
            notify_open_window(app_id);
            return XAM_ADS_RESULT_OK;
        case XAM_ADS_MSG_CLOSE_WINDOW:
            notify_close_window(app_id);
            return XAM_ADS_RESULT_OK;
        case XAM_ADS_MSG_BASIS_CONTROL: {
            if (data == nullptr || size < sizeof(XAM_ADS_BASIS_CONTROL)) return XAM_ADS_RESULT_PARAM;
            XAM_ADS_BASIS_CONTROL control;
            std::memcpy(&control, data, sizeof control);
            return notify_basis_control(control);
        }
        case XAM_ADS_MSG_IS_ENABLE_RUN:
            return is_enable_run_app();
        default:
            return gen_ipc_observer::dispatch(kind, data, size, header);
    }
}

void xam_ads_app_operation_observer::notify_run_app(const char*) {}
void xam_ads_app_operation_observer::notify_terminate_app(const char*) {}
void xam_ads_app_operation_observer::notify_open_window(const char*) {}
void xam_ads_app_operation_observer::notify_close_window(const char*) {}
PLAT_RESULT xam_ads_app_operation_observer::notify_basis_control(XAM_ADS_BASIS_CONTROL) { return XAM_ADS_RESULT_OK; }
PLAT_RESULT xam_ads_app_operation_observer::is_enable_run_app() { return XAM_ADS_RESULT_OK; }

// ---- The facade ---------------------------------------------------------------------------------------

xam_ads_facade* xam_ads_facade::xam_ads_get_instance() {
    static xam_ads_facade* instance = new xam_ads_facade;
    return instance;
}

PLAT_RESULT xam_ads_facade::xam_ads_get_app_num_info(XAM_ADS_APP_TYPE type, dev_ulong* num) {
    jbrg_sim::locked_op call("xam_ads_get_app_num_info", type, static_cast<const void*>(num));
    if (call.forced()) return call.result();
    if (num == nullptr) return XAM_ADS_RESULT_PARAM;
    *num = static_cast<dev_ulong>(std::count_if(app_state().apps.begin(), app_state().apps.end(), [&](const installed_app& a) {
        return type == XAM_ADS_APP_TYPE_ALL || a.type == type;
    }));
    call.out("num", num);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_get_app_list(XAM_ADS_APP_TYPE type, dev_ulong start, dev_ulong count,
                                                 XAM_ADS_APP_INFO* list, dev_ulong* out_count, ENV_LANG_VAL lang,
                                                 dev_ulong reserved) {
    jbrg_sim::locked_op call("xam_ads_get_app_list", type, start, count, static_cast<const void*>(list),
                             static_cast<const void*>(out_count), lang, reserved);
    if (call.forced()) return call.result();
    if (out_count == nullptr || (list == nullptr && count > 0) || reserved != 0) return XAM_ADS_RESULT_PARAM;
    dev_ulong index = 0;
    dev_ulong written = 0;
    for (const installed_app& a : app_state().apps) {
        if (type != XAM_ADS_APP_TYPE_ALL && a.type != type) continue;
        if (index++ < start) continue;
        if (written == count) break;
        XAM_ADS_APP_INFO& r = list[written++];
        std::memset(&r, 0, sizeof r);
        copy_text(r.app_id, a.id);
        copy_text(r.app_name, a.name_in(lang));
        copy_text(r.version, a.version);
        r.execution_state = a.state;
    }
    *out_count = written;
    call.out("out_count", out_count);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_get_app_info_detail(const char* app_id, XAM_ADS_APP_INFO_DETAIL* detail) {
    jbrg_sim::locked_op call("xam_ads_get_app_info_detail", app_id, static_cast<const void*>(detail));
    if (call.forced()) return call.result();
    return detail_of(app_id, detail, std::nullopt);
}

PLAT_RESULT xam_ads_facade::xam_ads_get_app_info_detail(const char* app_id, XAM_ADS_APP_INFO_DETAIL* detail,
                                                        ENV_LANG_VAL lang) {
    jbrg_sim::locked_op call("xam_ads_get_app_info_detail", app_id, static_cast<const void*>(detail), lang);
    if (call.forced()) return call.result();
    return detail_of(app_id, detail, lang);
}

PLAT_RESULT xam_ads_facade::xam_ads_get_library_num(const char* app_id, dev_ulong* num) {
    jbrg_sim::locked_op call("xam_ads_get_library_num", app_id, static_cast<const void*>(num));
    if (call.forced()) return call.result();
    if (app_id == nullptr || num == nullptr) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    *num = static_cast<dev_ulong>(a->libraries.size());
    call.out("num", num);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_get_library_list(const char* app_id, dev_ulong num, char* list) {
    jbrg_sim::locked_op call("xam_ads_get_library_list", app_id, num, static_cast<const void*>(list));
    if (call.forced()) return call.result();
    if (app_id == nullptr || (list == nullptr && num > 0)) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    // As many names as the caller has slots for; the slots beyond the application's libraries are left alone.
    std::size_t n = std::min<std::size_t>(num, a->libraries.size());
    for (std::size_t i = 0; i < n; ++i) copy_text(list + i * XAM_ADS_LIB_NAME_SIZE, XAM_ADS_LIB_NAME_SIZE, a->libraries[i]);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_start_app(const char* app_id) {
    jbrg_sim::locked_op call("xam_ads_start_app", app_id);
    if (call.forced()) return call.result();
    if (app_id == nullptr) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    if (a->state != XAM_ADS_LIST_STATE_STOPPED) return XAM_ADS_RESULT_STATE;
    a->state = XAM_ADS_LIST_STATE_RUNNING;
    a->detail_state = XAM_ADS_DETAIL_STATE_RUNNING;
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_stop_app(const char* app_id) {
    jbrg_sim::locked_op call("xam_ads_stop_app", app_id);
    if (call.forced()) return call.result();
    if (app_id == nullptr) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    if (a->state == XAM_ADS_LIST_STATE_STOPPED) return XAM_ADS_RESULT_STATE;
    a->state = XAM_ADS_LIST_STATE_STOPPED;
    a->detail_state = XAM_ADS_DETAIL_STATE_STOPPED;
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_set_config_url(const char* app_id, const char* url) {
    jbrg_sim::locked_op call("xam_ads_set_config_url", app_id, url);
    if (call.forced()) return call.result();
    if (app_id == nullptr || url == nullptr) return XAM_ADS_RESULT_PARAM;
    installed_app* a = app_state().find(app_id);
    if (a == nullptr) return XAM_ADS_RESULT_NO_APP;
    a->config_url = url;
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_notify_run_app_result(const char* app_id, XAM_ADS_RETCODE result) {
    jbrg_sim::locked_op call("xam_ads_notify_run_app_result", app_id, jbrg_sim::arg_text(result));
    if (call.forced()) return call.result();
    return record_result("run_app", app_id, result);
}

PLAT_RESULT xam_ads_facade::xam_ads_notify_terminate_app_result(const char* app_id, XAM_ADS_RETCODE result) {
    jbrg_sim::locked_op call("xam_ads_notify_terminate_app_result", app_id, jbrg_sim::arg_text(result));
    if (call.forced()) return call.result();
    return record_result("terminate_app", app_id, result);
}

PLAT_RESULT xam_ads_facade::xam_ads_notify_open_window_result(const char* app_id, XAM_ADS_RETCODE result) {
    jbrg_sim::locked_op call("xam_ads_notify_open_window_result", app_id, jbrg_sim::arg_text(result));
    if (call.forced()) return call.result();
    return record_result("open_window", app_id, result);
}

PLAT_RESULT xam_ads_facade::xam_ads_notify_close_window_result(const char* app_id, XAM_ADS_RETCODE result) {
    jbrg_sim::locked_op call("xam_ads_notify_close_window_result", app_id, jbrg_sim::arg_text(result));
    if (call.forced()) return call.result();
    return record_result("close_window", app_id, result);
}

PLAT_RESULT xam_ads_facade::xam_ads_notify_ovpl_basis_state(XAM_ADS_BASIS_TYPE type, XAM_ADS_BASIS_STATE state) {
    jbrg_sim::locked_op call("xam_ads_notify_ovpl_basis_state", type, state);
    if (call.forced()) return call.result();
    if (type != XAM_ADS_BASIS_TYPE_JAVA) return XAM_ADS_RESULT_PARAM;
    if (state != XAM_ADS_BASIS_STATE_NOT_READY && state != XAM_ADS_BASIS_STATE_READY) return XAM_ADS_RESULT_PARAM;
    app_state().basis_state = state;
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_add_app_operation_observer(xam_ads_app_operation_observer* observer,
                                                               XAM_ADS_BASIS_TYPE type, dev_ulong& id) {
    jbrg_sim::locked_op call("xam_ads_add_app_operation_observer", static_cast<const void*>(observer), type);
    if (call.forced()) return call.result();
    if (observer == nullptr || type != XAM_ADS_BASIS_TYPE_JAVA) return XAM_ADS_RESULT_PARAM;
    id = app_state().next_registration++;
    app_state().observers.emplace_back(id, observer);
    return XAM_ADS_RESULT_OK;
}

PLAT_RESULT xam_ads_facade::xam_ads_remove_app_operation_observer(dev_ulong id) {
    jbrg_sim::locked_op call("xam_ads_remove_app_operation_observer", id);
    if (call.forced()) return call.result();
    auto& list = app_state().observers;
    auto it = std::find_if(list.begin(), list.end(), [&](const auto& r) { return r.first == id; });
    if (it == list.end()) return XAM_ADS_RESULT_ERR;
    list.erase(it);
    return XAM_ADS_RESULT_OK;
}

// ---- Control surface ----------------------------------------------------------------------------------

namespace jbrg_sim::apps {

std::optional<app_info> app(const std::string& app_id) {
    ensure_loaded();
    auto lock = device_lock();
    installed_app* a = app_state().find(app_id.c_str());
    if (a == nullptr) return std::nullopt;
    return app_info{a->id, a->state, a->detail_state, a->config_url};
}

std::vector<result> results() {
    ensure_loaded();
    auto lock = device_lock();
    return app_state().results;
}

int32_t basis_state() {
    ensure_loaded();
    auto lock = device_lock();
    return app_state().basis_state;
}

std::size_t observers() {
    ensure_loaded();
    auto lock = device_lock();
    return app_state().observers.size();
}

int32_t run_app(const std::string& app_id) { return send(XAM_ADS_MSG_RUN_APP, app_id); }
int32_t terminate_app(const std::string& app_id) { return send(XAM_ADS_MSG_TERMINATE_APP, app_id); }
int32_t open_window(const std::string& app_id) { return send(XAM_ADS_MSG_OPEN_WINDOW, app_id); }
int32_t close_window(const std::string& app_id) { return send(XAM_ADS_MSG_CLOSE_WINDOW, app_id); }
int32_t basis_control(int32_t control) { return send(XAM_ADS_MSG_BASIS_CONTROL, control_bytes(control)); }
int32_t is_enable_run_app() { return send(XAM_ADS_MSG_IS_ENABLE_RUN, std::string()); }

}  // namespace jbrg_sim::apps
