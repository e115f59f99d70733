// The system information of the basic-function services: machine settings, page counters, paper sources,
// fax lines, model and screen.
//
// The "system_info" section of the scenario (every key optional):
//
//   "system_info": {
//     "model_type": 2, "screen_size": 2, "copy_service_mode": false,
//     "settings":      [ {"key": 101, "value": 15}, {"key": 1, "text": "Floor 3 MFP"},
//                        {"key": 9000, "value": 3, "min": 0, "max": 9, "writable": true, "admin": false,
//                         "login": false} ],
//     "paper_sources": [ {"key": 400, "remain": 3, "size": 2, "direction": 0, "kind": 0} ],
//     "fax_lines":     [ {"key": 500, "encrypted": true} ],
//     "counters":      [ {"kind": 2, "size": 2, "color": 1, "count": 1200} ]
//   }
//
// "settings" changes the machine's own settings (a number within its range, a text for a text setting) or
// adds settings of other keys (a number with its range and rules, or a read-only text). "paper_sources" and
// "fax_lines", when given, are all the machine has. Counters start at 0 but for those listed.
//
// Behaviour worth knowing when reading the bridge against it:
//   - The `_bkg` forms check the certificate first (LOGIN_ERROR for one that is not a current login), then
//     the key (UNSUPPORTED_ERROR), then the rules. A "login" setting (the user colour limit) is kept per
//     account and read and written only through `_bkg`; the plain forms answer LOGIN_ERROR for it.
//   - Writing checks rights before the range: a read-only or text setting is ERROR_COMPETENCE for anyone,
//     an "admin" setting for any caller but `_bkg` with the certificate of an administrator (rights 0).
//   - The colour-supported setting follows the model type unless the scenario sets it.
//   - Counters advance as the job service's jobs report their pages (count_page below).
//   - Forced out-values: "value" (machine info, number or text), "count", "size" (screen), "type" (model),
//     "valid" (fax line), "mode" (copy service), "paper_remain", "paper_size", "paper_direction",
//     "paper_kind" (paper info). The count query is logged by its fields.
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "jbrg_sim/system_info.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "system_info_internal.h"
#include "user_internal.h"
#include "xsi_ais_job.h"
#include "xsi_pbfs_systeminfo.h"

namespace {

using json = nlohmann::json;

struct setting {
    bool is_text = false;
    std::string text;
    uint32_t value = 0;
    uint32_t min = 0;
    uint32_t max = UINT32_MAX;
    bool zero_off = false;  // 0 is taken besides the range (a timer that can be switched off)
    bool writable = true;
    bool admin = false;
    bool login = false;

    bool takes(uint32_t v) const { return (v >= min && v <= max) || (zero_off && v == 0); }
};

setting text_setting(const char* text) {
    setting s;
    s.is_text = true;
    s.text = text;
    s.writable = false;
    return s;
}

setting number(uint32_t value, uint32_t min, uint32_t max) {
    setting s;
    s.value = value;
    s.min = min;
    s.max = max;
    return s;
}

setting read_only(uint32_t value) {
    setting s = number(value, 0, 1);
    s.writable = false;
    return s;
}

// The machine's own settings as it leaves the factory.
std::map<int32_t, setting> factory_settings() {
    std::map<int32_t, setting> m;
    m[XSI_PBFS_ENTKEY_MACHINE_NAME] = text_setting("MFP-SIM");
    m[XSI_PBFS_ENTKEY_SERIAL_NUMBER] = text_setting("SIM0000001");
    m[XSI_PBFS_ENTKEY_FIRMWARE_VERSION] = text_setting("1.00.000");
    m[XSI_PBFS_ENTKEY_LOCATION] = text_setting("");
    m[XSI_PBFS_ENTKEY_LOW_POWER_TIMER] = number(5, 1, 240);
    m[XSI_PBFS_ENTKEY_SLEEP_TIMER] = number(30, 1, 240);
    m[XSI_PBFS_ENTKEY_AUTO_SLEEP] = number(1, 0, 1);
    m[XSI_PBFS_ENTKEY_PANEL_RESET_TIME] = number(90, 5, 495);
    m[XSI_PBFS_ENTKEY_PANEL_RESET_TIME].zero_off = true;
    m[XSI_PBFS_ENTKEY_LANGUAGE] = number(0, 0, 31);
    m[XSI_PBFS_ENTKEY_DEFAULT_PAPER_SOURCE] = number(0, 0, 5);
    m[XSI_PBFS_ENTKEY_COLOR_SUPPORTED] = read_only(1);
    m[XSI_PBFS_ENTKEY_DUPLEX_SUPPORTED] = read_only(1);
    m[XSI_PBFS_ENTKEY_ADMIN_LOCK] = number(0, 0, 1);
    m[XSI_PBFS_ENTKEY_ADMIN_LOCK].admin = true;
    m[XSI_PBFS_ENTKEY_USER_COLOR_LIMIT] = number(0, 0, 999999);
    m[XSI_PBFS_ENTKEY_USER_COLOR_LIMIT].login = true;
    return m;
}

constexpr int kSizes = XSI_PBFS_PAPER_SIZE_NUM;  // 1..9 are counted; 0 sums
constexpr int kColors = 3;                       // 1 mono, 2 full colour; 0 sums
using counter_table = std::array<std::array<std::array<uint32_t, kColors>, kSizes>, XSI_PBFS_COUNT_KIND_NUM>;

struct contents {
    uint32_t model_type = XSI_PBFS_MODEL_TYPE_COLOR_MFP;
    uint32_t screen_size = XSI_PBFS_SCREEN_SIZE_7;
    bool copy_service_mode = false;
    std::map<int32_t, setting> settings;
    std::map<int32_t, XSI_PBFS_PAPER_INFO> paper;
    std::map<int32_t, bool> fax_lines;
    counter_table counters{};
    // Values of "login" settings per account ("login_name@domain"), by key.
    std::map<int32_t, std::map<std::string, uint32_t>> per_account;
};

bool colour_model(uint32_t type) {
    return type == XSI_PBFS_MODEL_TYPE_COLOR_MFP || type == XSI_PBFS_MODEL_TYPE_COLOR_PRINTER;
}

void read_setting(const jbrg_sim::scenario_part& part, const json& entry, const std::string& where,
                  std::map<int32_t, setting>& settings, std::set<int32_t>& seen, bool& colour_given) {
    part.only_keys(entry, {"key", "value", "text", "min", "max", "writable", "admin", "login"}, where);
    if (!entry.contains("key")) part.fail(where, "needs a key");
    const auto key = static_cast<int32_t>(part.integer(entry.at("key"), INT32_MIN, INT32_MAX, part.at(where, "key")));
    if (!seen.insert(key).second) {
        part.fail(part.at(where, "key"), "the setting " + std::to_string(key) + " is given twice");
    }
    if (entry.contains("value") == entry.contains("text")) part.fail(where, "needs either a value or a text");
    if (key == XSI_PBFS_ENTKEY_COLOR_SUPPORTED) colour_given = true;
    auto known = settings.find(key);
    setting s = known != settings.end() ? known->second : setting{};
    if (known == settings.end()) s.is_text = entry.contains("text");
    if (entry.contains("text")) {
        if (!s.is_text) part.fail(part.at(where, "text"), "the setting is a number, not a text");
        for (const char* rule : {"min", "max", "writable", "admin", "login"}) {
            if (entry.contains(rule)) {
                part.fail(part.at(where, rule), "the setting is a text: it has no " + std::string(rule));
            }
        }
        s.text = part.text_at(entry, "text", where);
        part.fits(s.text, XSI_PBFS_SYSINFO_TEXT_SIZE, part.at(where, "text"));
        s.writable = false;
    } else {
        if (s.is_text) part.fail(part.at(where, "value"), "the setting is a text, not a number");
        s.min = static_cast<uint32_t>(part.integer_at(entry, "min", s.min, 0, UINT32_MAX, where));
        s.max = static_cast<uint32_t>(part.integer_at(entry, "max", s.max, 0, UINT32_MAX, where));
        if (s.min > s.max) part.fail(where, "has min above max");
        s.writable = part.flag_at(entry, "writable", s.writable, where);
        s.admin = part.flag_at(entry, "admin", s.admin, where);
        s.login = part.flag_at(entry, "login", s.login, where);
        s.value = static_cast<uint32_t>(part.integer(entry.at("value"), 0, UINT32_MAX, part.at(where, "value")));
        if (!s.takes(s.value)) part.fail(part.at(where, "value"), "is out of the setting's range");
    }
    settings[key] = s;
}

contents parse(const json& scenario) {
    const jbrg_sim::scenario_part part(scenario, "system_info",
                                       {"model_type", "screen_size", "copy_service_mode", "settings",
                                        "paper_sources", "fax_lines", "counters"});
    contents c;
    c.model_type = static_cast<uint32_t>(part.integer_at("model_type", XSI_PBFS_MODEL_TYPE_COLOR_MFP,
                                                         XSI_PBFS_MODEL_TYPE_MONO_MFP,
                                                         XSI_PBFS_MODEL_TYPE_COLOR_PRINTER));
    c.screen_size = static_cast<uint32_t>(
        part.integer_at("screen_size", XSI_PBFS_SCREEN_SIZE_7, XSI_PBFS_SCREEN_SIZE_NONE, XSI_PBFS_SCREEN_SIZE_10_1));
    c.copy_service_mode = part.flag_at("copy_service_mode", false);

    c.settings = factory_settings();
    std::set<int32_t> seen;
    bool colour_given = false;
    const json& settings = part.list_at("settings");
    for (std::size_t i = 0; i < settings.size(); ++i) {
        read_setting(part, settings[i], part.at("/settings", i), c.settings, seen, colour_given);
    }
    if (!colour_given) c.settings[XSI_PBFS_ENTKEY_COLOR_SUPPORTED].value = colour_model(c.model_type) ? 1 : 0;

    if (part.has("paper_sources")) {
        const json& sources = part.list_at("paper_sources");
        for (std::size_t i = 0; i < sources.size(); ++i) {
            const json& entry = sources[i];
            const std::string where = part.at("/paper_sources", i);
            part.only_keys(entry, {"key", "remain", "size", "direction", "kind"}, where);
            if (!entry.contains("key")) part.fail(where, "needs a key");
            const auto key = static_cast<int32_t>(part.integer(entry.at("key"), XSI_PBFS_ENTKEY_PAPER_SOURCE_1,
                                                               XSI_PBFS_ENTKEY_PAPER_SOURCE_MP, part.at(where, "key")));
            XSI_PBFS_PAPER_INFO info{};
            info.paper_remain = static_cast<dev_ulong>(
                part.integer_at(entry, "remain", XSI_PBFS_PAPER_REMAIN_FULL, 0, XSI_PBFS_PAPER_REMAIN_FULL, where));
            info.paper_size = static_cast<dev_ulong>(
                part.integer_at(entry, "size", XSI_PBFS_PAPER_SIZE_A4, 1, XSI_PBFS_PAPER_SIZE_NUM - 1, where));
            info.paper_direction = static_cast<dev_ulong>(part.integer_at(entry, "direction", 0, 0, 1, where));
            info.paper_kind = static_cast<dev_ulong>(
                part.integer_at(entry, "kind", 0, 0, XSI_PBFS_PAPER_KIND_ENVELOPE, where));
            if (!c.paper.emplace(key, info).second) {
                part.fail(part.at(where, "key"), "the paper source " + std::to_string(key) + " is given twice");
            }
        }
    } else {
        c.paper[XSI_PBFS_ENTKEY_PAPER_SOURCE_1] = {XSI_PBFS_PAPER_REMAIN_FULL, XSI_PBFS_PAPER_SIZE_A4,
                                                   XSI_PBFS_PAPER_DIRECTION_LANDSCAPE, XSI_PBFS_PAPER_KIND_PLAIN};
        c.paper[XSI_PBFS_ENTKEY_PAPER_SOURCE_2] = {XSI_PBFS_PAPER_REMAIN_HALF, XSI_PBFS_PAPER_SIZE_A3,
                                                   XSI_PBFS_PAPER_DIRECTION_PORTRAIT, XSI_PBFS_PAPER_KIND_PLAIN};
        c.paper[XSI_PBFS_ENTKEY_PAPER_SOURCE_MP] = {XSI_PBFS_PAPER_REMAIN_EMPTY, XSI_PBFS_PAPER_SIZE_A4,
                                                    XSI_PBFS_PAPER_DIRECTION_PORTRAIT, XSI_PBFS_PAPER_KIND_PLAIN};
    }

    if (part.has("fax_lines")) {
        const json& lines = part.list_at("fax_lines");
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const json& entry = lines[i];
            const std::string where = part.at("/fax_lines", i);
            part.only_keys(entry, {"key", "encrypted"}, where);
            if (!entry.contains("key")) part.fail(where, "needs a key");
            const auto key = static_cast<int32_t>(part.integer(entry.at("key"), XSI_PBFS_ENTKEY_FAX_LINE_1,
                                                               XSI_PBFS_ENTKEY_FAX_LINE_2, part.at(where, "key")));
            if (!c.fax_lines.emplace(key, part.flag_at(entry, "encrypted", false, where)).second) {
                part.fail(part.at(where, "key"), "the fax line " + std::to_string(key) + " is given twice");
            }
        }
    } else {
        c.fax_lines[XSI_PBFS_ENTKEY_FAX_LINE_1] = false;
    }

    std::set<std::array<long long, 3>> counted;
    const json& counters = part.list_at("counters");
    for (std::size_t i = 0; i < counters.size(); ++i) {
        const json& entry = counters[i];
        const std::string where = part.at("/counters", i);
        part.only_keys(entry, {"kind", "size", "color", "count"}, where);
        for (const char* k : {"kind", "size", "color", "count"}) {
            if (!entry.contains(k)) part.fail(where, "needs a " + std::string(k));
        }
        const long long kind = part.integer(entry.at("kind"), 0, XSI_PBFS_COUNT_KIND_NUM - 1, part.at(where, "kind"));
        const long long size = part.integer(entry.at("size"), 1, kSizes - 1, part.at(where, "size"));
        const long long color = part.integer(entry.at("color"), 1, kColors - 1, part.at(where, "color"));
        if (!counted.insert({kind, size, color}).second) part.fail(where, "is given twice");
        c.counters[kind][size][color] =
            static_cast<uint32_t>(part.integer(entry.at("count"), 0, UINT32_MAX, part.at(where, "count")));
    }
    return c;
}

contents& machine() {
    static auto* s = new jbrg_sim::state_service<contents, parse>;
    return s->state;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const contents& registered = machine();

const void* ptr(const void* p) { return p; }

std::string account_name(const jbrg_sim::user_account& a) { return a.login_name + "@" + a.domain; }

// Who asks: nobody in particular (the plain forms), or the account of a `_bkg` certificate.
struct caller {
    bool background = false;
    const jbrg_sim::user_account* account = nullptr;
};

// The caller of an operation, or LOGIN_ERROR for a `_bkg` certificate that is not a current login.
PLAT_RESULT caller_of(bool background, dev_ulong cert_id, caller& who) {
    who.background = background;
    if (!background) return XSI_PBFS_SYSINFO_OK;
    who.account = jbrg_sim::login_account(cert_id);
    return who.account == nullptr ? XSI_PBFS_SYSINFO_LOGIN_ERROR : XSI_PBFS_SYSINFO_OK;
}

// The setting `key` and its value as `who` sees it; under the device lock.
PLAT_RESULT find_setting(int32_t key, const caller& who, const setting*& s, uint32_t& value) {
    auto found = machine().settings.find(key);
    if (found == machine().settings.end()) return XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR;
    s = &found->second;
    value = s->value;
    if (s->login) {
        if (who.account == nullptr) return XSI_PBFS_SYSINFO_LOGIN_ERROR;
        const auto& values = machine().per_account[key];
        auto mine = values.find(account_name(*who.account));
        if (mine != values.end()) value = mine->second;
    }
    return XSI_PBFS_SYSINFO_OK;
}

// The caller and the setting it addresses, as find_setting gives it; the certificate is checked first.
PLAT_RESULT look_up(bool background, XSI_PBFS_ENTKEY key, dev_ulong cert_id, caller& who, const setting*& s,
                    uint32_t& now) {
    PLAT_RESULT r = caller_of(background, cert_id, who);
    return r == XSI_PBFS_SYSINFO_OK ? find_setting(key, who, s, now) : r;
}

PLAT_RESULT get_number(const jbrg_sim::op& call, bool background, XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                       unsigned int& value) {
    caller who;
    const setting* s = nullptr;
    uint32_t now = 0;
    PLAT_RESULT r = look_up(background, key, cert_id, who, s, now);
    if (r == XSI_PBFS_SYSINFO_OK && s->is_text) r = XSI_PBFS_SYSINFO_ERROR;
    if (r != XSI_PBFS_SYSINFO_OK) return r;
    dev_ulong out = now;
    call.out("value", &out);
    value = out;
    return XSI_PBFS_SYSINFO_OK;
}

PLAT_RESULT get_text(const jbrg_sim::op& call, bool background, XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                     std::string& value) {
    caller who;
    const setting* s = nullptr;
    uint32_t now = 0;
    if (PLAT_RESULT r = look_up(background, key, cert_id, who, s, now); r != XSI_PBFS_SYSINFO_OK) return r;
    std::string out = s->is_text ? s->text : std::to_string(now);
    call.out("value", &out);
    value = out;
    return XSI_PBFS_SYSINFO_OK;
}

PLAT_RESULT set_number(bool background, XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int value) {
    caller who;
    const setting* s = nullptr;
    uint32_t now = 0;
    if (PLAT_RESULT r = look_up(background, key, cert_id, who, s, now); r != XSI_PBFS_SYSINFO_OK) return r;
    const bool administrator = who.account != nullptr && who.account->rights == 0;
    if (s->is_text || !s->writable || (s->admin && !administrator)) return XSI_PBFS_SYSINFO_ERROR_COMPETENCE;
    if (!s->takes(value)) return XSI_PBFS_SYSINFO_ERROR;
    if (s->login) {
        machine().per_account[key][account_name(*who.account)] = value;
    } else {
        machine().settings[key].value = value;
    }
    return XSI_PBFS_SYSINFO_OK;
}

std::string query_text(const XSI_PBFS_COUNT_INFO& q) {
    return "{count_kind=" + std::to_string(q.count_kind) + ", paper_size=" + std::to_string(q.paper_size) +
           ", color_info=" + std::to_string(q.color_info) + "}";
}

// The sum of the counters a query names; false for a kind, size or colour the machine does not count.
bool sum_of(uint32_t kind, uint32_t size, uint32_t color, dev_ulong& total) {
    if (kind >= XSI_PBFS_COUNT_KIND_NUM || size >= static_cast<uint32_t>(kSizes) ||
        color >= static_cast<uint32_t>(kColors)) {
        return false;
    }
    total = 0;
    for (uint32_t sz = 1; sz < static_cast<uint32_t>(kSizes); ++sz) {
        if (size != XSI_PBFS_PAPER_SIZE_ALL && sz != size) continue;
        for (uint32_t c = 1; c < static_cast<uint32_t>(kColors); ++c) {
            if (color != XSI_PBFS_COUNT_COLOR_ALL && c != color) continue;
            total += machine().counters[kind][sz][c];
        }
    }
    return true;
}

}  // namespace

// ---- The pages the machine's jobs report ---------------------------------------------------------------

void jbrg_sim::sysinfo::count_page(int category, int box_job_type, const std::map<int, unsigned int>& numbers) {
    // Which counter a page of the job advances on the printing side and on the reading side (-1: none).
    int printed = -1;
    int read = -1;
    switch (category) {
        case XSI_AIS_JOB_CATEGORY_COPY:
            printed = XSI_PBFS_COUNT_KIND_COPY;
            read = XSI_PBFS_COUNT_KIND_SCAN_TOTAL;  // a copy's originals count only in the scan total
            break;
        case XSI_AIS_JOB_CATEGORY_SCAN:
        case XSI_AIS_JOB_CATEGORY_SEND:
            read = XSI_PBFS_COUNT_KIND_SCAN;
            break;
        case XSI_AIS_JOB_CATEGORY_FAX:
            read = XSI_PBFS_COUNT_KIND_FAX_SEND;
            break;
        case XSI_AIS_JOB_CATEGORY_BOX:
            // A box send passes on pages stored before: nothing goes through the printer or the scanner.
            if (box_job_type == XSI_AIS_BOX_JOB_PRINT) printed = XSI_PBFS_COUNT_KIND_PRINTER;
            if (box_job_type == XSI_AIS_BOX_JOB_STORE) read = XSI_PBFS_COUNT_KIND_SCAN;
            break;
        case XSI_AIS_JOB_CATEGORY_DIRECT_PRINT:
            printed = XSI_PBFS_COUNT_KIND_PRINTER;
            break;
        default:  // document retrieval hands stored pages to the application
            break;
    }
    auto setting_of = [&](int id) {
        auto n = numbers.find(id);
        return n == numbers.end() ? 0u : n->second;
    };
    // The job's sizes are numbered as the counters' sizes; automatic and unknown sizes count as other.
    uint32_t size = setting_of(XSI_AIS_JOB_SETTING_ORIGINAL_SIZE);
    if (size == XSI_PBFS_PAPER_SIZE_ALL || size >= XSI_PBFS_PAPER_SIZE_NUM) size = XSI_PBFS_PAPER_SIZE_OTHER;
    // Colour modes 2 (full colour), 3 (single colour) and 4 (two colours) use colour toner; a mono machine
    // has none.
    const uint32_t mode = setting_of(XSI_AIS_JOB_SETTING_COLOR_MODE);
    const uint32_t color = colour_model(machine().model_type) && mode >= 2 && mode <= 4
                               ? XSI_PBFS_COUNT_COLOR_FULL
                               : XSI_PBFS_COUNT_COLOR_MONO;
    counter_table& counters = machine().counters;
    if (printed >= 0) {
        ++counters[printed][size][color];
        ++counters[XSI_PBFS_COUNT_KIND_PRINT_TOTAL][size][color];
    }
    if (read >= 0) {
        if (read != XSI_PBFS_COUNT_KIND_SCAN_TOTAL) ++counters[read][size][color];
        ++counters[XSI_PBFS_COUNT_KIND_SCAN_TOTAL][size][color];
    }
}

// ---- The facade -----------------------------------------------------------------------------------------

xsi_pbfs_systeminfo_facade* xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_instance() {
    static auto* instance = new xsi_pbfs_systeminfo_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                                             unsigned int& value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_machine_info", key, cert_id, ptr(&value));
    if (call.forced()) return call.result();
    return get_number(call, false, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY key,
                                                                                 dev_ulong cert_id,
                                                                                 unsigned int& value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_machine_info_bkg", key, cert_id, ptr(&value));
    if (call.forced()) return call.result();
    return get_number(call, true, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                                             std::string& value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_machine_info", key, cert_id, ptr(&value));
    if (call.forced()) return call.result();
    return get_text(call, false, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY key,
                                                                                 dev_ulong cert_id,
                                                                                 std::string& value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_machine_info_bkg", key, cert_id, ptr(&value));
    if (call.forced()) return call.result();
    return get_text(call, true, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                                             unsigned int value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_set_machine_info", key, cert_id, value);
    if (call.forced()) return call.result();
    return set_number(false, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY key,
                                                                                 dev_ulong cert_id,
                                                                                 unsigned int value) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_set_machine_info_bkg", key, cert_id, value);
    if (call.forced()) return call.result();
    return set_number(true, key, cert_id, value);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY key,
                                                                           XSI_PBFS_PAPER_INFO& paper) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_paper_info", key, ptr(&paper));
    if (call.forced()) return call.result();
    auto found = machine().paper.find(key);
    if (found == machine().paper.end()) return XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR;
    XSI_PBFS_PAPER_INFO out = found->second;
    call.out("paper_remain", &out.paper_remain);
    call.out("paper_size", &out.paper_size);
    call.out("paper_direction", &out.paper_direction);
    call.out("paper_kind", &out.paper_kind);
    paper = out;
    return XSI_PBFS_SYSINFO_OK;
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_count(XSI_PBFS_COUNT_INFO& query, dev_ulong& count) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_count", query_text(query), ptr(&count));
    if (call.forced()) return call.result();
    dev_ulong total = 0;
    if (!sum_of(query.count_kind, query.paper_size, query.color_info, total)) return XSI_PBFS_SYSINFO_ERROR;
    call.out("count", &total);
    count = total;
    return XSI_PBFS_SYSINFO_OK;
}

namespace {

// The screen size and the model type: one number of the machine each.
PLAT_RESULT machine_number(const jbrg_sim::op& call, const char* out, uint32_t contents::*member,
                           unsigned int& value) {
    if (call.forced()) return call.result();
    dev_ulong v = machine().*member;
    call.out(out, &v);
    value = v;
    return XSI_PBFS_SYSINFO_OK;
}

// A yes/no answer of the machine.
PLAT_RESULT flag_out(const jbrg_sim::op& call, const char* out, bool now, unsigned char& value) {
    dev_ulong v = now ? 1 : 0;
    call.out(out, &v);
    value = static_cast<unsigned char>(v);
    return XSI_PBFS_SYSINFO_OK;
}

}  // namespace

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_screen_size(unsigned int& size) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_screen_size", ptr(&size));
    return machine_number(call, "size", &contents::screen_size, size);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_model_type(unsigned int& type) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_model_type", ptr(&type));
    return machine_number(call, "type", &contents::model_type, type);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_fax_encryption_validity(XSI_PBFS_ENTKEY key,
                                                                                        unsigned char& valid) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_fax_encryption_validity", key, ptr(&valid));
    if (call.forced()) return call.result();
    auto line = machine().fax_lines.find(key);
    if (line == machine().fax_lines.end()) return XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR;
    return flag_out(call, "valid", line->second, valid);
}

PLAT_RESULT xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_copy_service_mode(dev_ulong cert_id,
                                                                                  unsigned char& mode) {
    jbrg_sim::locked_op call("xsi_pbfs_systeminfo_get_copy_service_mode", cert_id, ptr(&mode));
    if (call.forced()) return call.result();
    if (cert_id != 0 && jbrg_sim::login_account(cert_id) == nullptr) return XSI_PBFS_SYSINFO_LOGIN_ERROR;
    return flag_out(call, "mode", machine().copy_service_mode, mode);
}

// ---- The control surface --------------------------------------------------------------------------------

namespace jbrg_sim::system_info {

uint32_t count(uint32_t kind, uint32_t paper_size, uint32_t color) {
    ensure_loaded();
    auto lock = device_lock();
    dev_ulong total = 0;
    return sum_of(kind, paper_size, color, total) ? total : 0;
}

std::optional<uint32_t> setting(int32_t key) {
    ensure_loaded();
    auto lock = device_lock();
    auto found = ::machine().settings.find(key);
    if (found == ::machine().settings.end() || found->second.is_text) return std::nullopt;
    return found->second.value;
}

std::optional<std::string> setting_text(int32_t key) {
    ensure_loaded();
    auto lock = device_lock();
    auto found = ::machine().settings.find(key);
    if (found == ::machine().settings.end()) return std::nullopt;
    return found->second.is_text ? found->second.text : std::to_string(found->second.value);
}

}  // namespace jbrg_sim::system_info
