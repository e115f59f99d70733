// The department store of the basic-function services: hidden departments and the department-accounting modes.
//
// Departments are kept by id, each as the whole record the application gave (name, restriction and limit
// slots, the reserved word, flags) plus the usage counters that only the store changes: a new department's
// counters start at 0, an update keeps them, reset_counter zeroes them.
//
// The "departments" section of the scenario says what the store holds:
//
//   "departments": {
//     "mode": 1, "mix_mode": 0, "invalid_dept_mode": 0, "limit_action": 0,
//     "capacity": 1000,
//     "accounts": [ {"id": "1001", "name": "Sales", "restrictions": [0, 1], "reserved": 0,
//                    "limits": [100], "flags": 0, "counters": [12, 3]} ]
//   }
//
// Every key may be left out: accounting off, copies and prints counted apart, jobs without a department
// refused, a job stopped at its limit, room for 1000 departments, none stored. A slot or counter list may be
// shorter than the record's (the rest are 0), never longer.
//
// Behaviour worth knowing when reading the bridge against it:
//   - add of an id that is there: XSI_PBFS_DEPT_EXIST; update, delete, retrieve and reset_counter of an id
//     that is not: XSI_PBFS_DEPT_NOT_FOUND.
//   - XSI_PBFS_DEPT_NG for what the store cannot take: a null pointer, an empty id, a name or id not
//     terminated inside its field, a mode value the device does not know, a full store.
//   - Calls log ids as text, modes as numbers, records and out-pointers as pointers.
//   - The mode getters report their out-value "mode", which force_out can replace.
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <map>
#include <stdexcept>
#include <string>

#include "scenario.h"
#include "sim.h"
#include "xsi_pbfs_dept.h"

namespace {

using json = nlohmann::json;

constexpr long long kDefaultCapacity = 1000;

// The mode values the device knows, per setting.
constexpr long long kDeptModeLast = XSI_PBFS_DEPT_DEPT_MODE_ON;
constexpr long long kMixModeLast = XSI_PBFS_DEPT_MIX_MODE_TOTAL;
constexpr long long kInvalidDeptModeLast = XSI_PBFS_DEPT_INVALID_DEPT_PERMIT_PRINT;
constexpr long long kLimitActionLast = XSI_PBFS_DEPT_LIMIT_ACTION_WARN;

bool known(long long value, long long last) { return value >= 0 && value <= last; }

// A text field is usable when it is terminated inside its capacity.
bool terminated(const char* field, std::size_t capacity) { return std::memchr(field, '\0', capacity) != nullptr; }

struct modes {
    long long dept = XSI_PBFS_DEPT_DEPT_MODE_OFF;
    long long mix = XSI_PBFS_DEPT_MIX_MODE_SEPARATE;
    long long invalid_dept = XSI_PBFS_DEPT_INVALID_DEPT_REJECT;
    long long limit_action = XSI_PBFS_DEPT_LIMIT_ACTION_STOP;
};

struct contents {
    modes mode;
    long long capacity = kDefaultCapacity;
    std::map<std::string, XSI_PBFS_DEPT_DEPTINFO> departments;
};

// ---- The scenario's "departments" section --------------------------------------------------------------

template <class T>
void numbers(const jbrg_sim::scenario_part& part, const json& object, const char* key, T* values, std::size_t count,
             long long low, long long high, const std::string& where) {
    const json& list = part.list_at(object, key, where);
    const std::string name = part.at(where, key);
    if (list.size() > count) part.fail(name, "has more than " + std::to_string(count) + " values");
    for (std::size_t i = 0; i < list.size(); ++i) {
        values[i] = static_cast<T>(part.integer(list[i], low, high, part.at(name, i)));
    }
}

contents parse(const json& scenario) {
    contents c;
    const jbrg_sim::scenario_part part(scenario, "departments",
                                       {"mode", "mix_mode", "invalid_dept_mode", "limit_action", "capacity", "accounts"});
    c.mode.dept = part.integer_at("mode", c.mode.dept, 0, kDeptModeLast);
    c.mode.mix = part.integer_at("mix_mode", c.mode.mix, 0, kMixModeLast);
    c.mode.invalid_dept = part.integer_at("invalid_dept_mode", c.mode.invalid_dept, 0, kInvalidDeptModeLast);
    c.mode.limit_action = part.integer_at("limit_action", c.mode.limit_action, 0, kLimitActionLast);
    c.capacity = part.integer_at("capacity", c.capacity, 0, INT32_MAX);
    const json& accounts = part.list_at("accounts");
    for (std::size_t i = 0; i < accounts.size(); ++i) {
        const json& a = accounts[i];
        const std::string where = part.at("/accounts", i);
        part.only_keys(a, {"id", "name", "restrictions", "reserved", "limits", "flags", "counters"}, where);
        if (!a.contains("id")) part.fail(where, "needs an id");
        XSI_PBFS_DEPT_DEPTINFO d{};
        part.text_into(a, "id", d.id, where);
        if (d.id[0] == '\0') part.fail(part.at(where, "id"), "is empty");
        if (c.departments.count(d.id) != 0) part.fail(part.at(where, "id"), "is defined twice");
        part.text_into(a, "name", d.name, where);
        numbers(part, a, "restrictions", d.restriction, XSI_PBFS_DEPT_SLOT_COUNT, INT32_MIN, INT32_MAX, where);
        numbers(part, a, "limits", d.limit, XSI_PBFS_DEPT_SLOT_COUNT, INT32_MIN, INT32_MAX, where);
        d.reserved = static_cast<dev_ulong>(part.integer_at(a, "reserved", 0, 0, UINT32_MAX, where));
        d.flags = static_cast<dev_ulong>(part.integer_at(a, "flags", 0, 0, UINT32_MAX, where));
        numbers(part, a, "counters", d.counter, XSI_PBFS_DEPT_COUNTER_COUNT, 0, UINT32_MAX, where);
        c.departments[d.id] = d;
    }
    if (static_cast<long long>(c.departments.size()) > c.capacity) {
        part.fail("/accounts", "more accounts than the capacity");
    }
    return c;
}

// ---- The store ---------------------------------------------------------------------------------------------

class dept_service final : public jbrg_sim::service {
public:
    apply_step read(const json& scenario) override {
        return [this, next = parse(scenario)] { state = next; };
    }

    contents state;
};

dept_service& store() {
    static dept_service* s = new dept_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const dept_service& registered = store();

// A department record the store can take: id and name terminated inside their fields, the id not empty.
bool acceptable(const XSI_PBFS_DEPT_DEPTINFO& info) {
    return terminated(info.id, sizeof info.id) && info.id[0] != '\0' && terminated(info.name, sizeof info.name);
}

// The stored department `id`, or null (under the device lock).
XSI_PBFS_DEPT_DEPTINFO* find(const char* id) {
    auto d = store().state.departments.find(id);
    return d == store().state.departments.end() ? nullptr : &d->second;
}

// What add and update take from the application: everything but the counters.
void take_settings(XSI_PBFS_DEPT_DEPTINFO& stored, const XSI_PBFS_DEPT_DEPTINFO& given) {
    std::memcpy(stored.name, given.name, sizeof stored.name);
    std::memcpy(stored.id, given.id, sizeof stored.id);
    std::memcpy(stored.restriction, given.restriction, sizeof stored.restriction);
    stored.reserved = given.reserved;
    std::memcpy(stored.limit, given.limit, sizeof stored.limit);
    stored.flags = given.flags;
}

// A mode setter: stores `value` when the device knows it.
PLAT_RESULT set_mode(const jbrg_sim::op& call, long long modes::*slot, long long value, long long last) {
    if (call.forced()) return call.result();
    if (!known(value, last)) return XSI_PBFS_DEPT_NG;
    auto lock = jbrg_sim::device_lock();
    store().state.mode.*slot = value;
    return XSI_PBFS_DEPT_OK;
}

// A mode getter: reports the stored value in the out-value "mode".
template <class E>
PLAT_RESULT get_mode(const jbrg_sim::op& call, long long modes::*slot, E* mode) {
    if (call.forced()) return call.result();
    if (mode == nullptr) return XSI_PBFS_DEPT_NG;
    auto lock = jbrg_sim::device_lock();
    auto value = static_cast<dev_long>(store().state.mode.*slot);
    call.out("mode", &value);
    *mode = static_cast<E>(value);
    return XSI_PBFS_DEPT_OK;
}

}  // namespace

xsi_pbfs_dept_facade* xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance() {
    static xsi_pbfs_dept_facade* instance = new xsi_pbfs_dept_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_add_hide_dept(const XSI_PBFS_DEPT_DEPTINFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_dept_add_hide_dept", static_cast<const void*>(&info));
    if (call.forced()) return call.result();
    if (!acceptable(info)) return XSI_PBFS_DEPT_NG;
    if (find(info.id) != nullptr) return XSI_PBFS_DEPT_EXIST;
    if (static_cast<long long>(store().state.departments.size()) >= store().state.capacity) return XSI_PBFS_DEPT_NG;
    XSI_PBFS_DEPT_DEPTINFO stored{};
    take_settings(stored, info);
    store().state.departments[stored.id] = stored;
    return XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_update_hide_dept(const XSI_PBFS_DEPT_DEPTINFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_dept_update_hide_dept", static_cast<const void*>(&info));
    if (call.forced()) return call.result();
    if (!acceptable(info)) return XSI_PBFS_DEPT_NG;
    XSI_PBFS_DEPT_DEPTINFO* stored = find(info.id);
    if (stored == nullptr) return XSI_PBFS_DEPT_NOT_FOUND;
    take_settings(*stored, info);
    return XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_delete_hide_dept(const char* id) {
    jbrg_sim::locked_op call("xsi_pbfs_dept_delete_hide_dept", id);
    if (call.forced()) return call.result();
    if (id == nullptr) return XSI_PBFS_DEPT_NG;
    return store().state.departments.erase(id) == 0 ? XSI_PBFS_DEPT_NOT_FOUND : XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_delete_all_hide_dept() {
    jbrg_sim::locked_op call("xsi_pbfs_dept_delete_all_hide_dept");
    if (call.forced()) return call.result();
    store().state.departments.clear();
    return XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_retrieve_hide_dept(const char* id, XSI_PBFS_DEPT_DEPTINFO* info) {
    jbrg_sim::locked_op call("xsi_pbfs_dept_retrieve_hide_dept", id, static_cast<const void*>(info));
    if (call.forced()) return call.result();
    if (id == nullptr || info == nullptr) return XSI_PBFS_DEPT_NG;
    const XSI_PBFS_DEPT_DEPTINFO* stored = find(id);
    if (stored == nullptr) return XSI_PBFS_DEPT_NOT_FOUND;
    *info = *stored;
    return XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_reset_hide_dept_counter(const char* id) {
    jbrg_sim::locked_op call("xsi_pbfs_dept_reset_hide_dept_counter", id);
    if (call.forced()) return call.result();
    if (id == nullptr) return XSI_PBFS_DEPT_NG;
    XSI_PBFS_DEPT_DEPTINFO* stored = find(id);
    if (stored == nullptr) return XSI_PBFS_DEPT_NOT_FOUND;
    std::memset(stored->counter, 0, sizeof stored->counter);
    return XSI_PBFS_DEPT_OK;
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_set_dept_mode(XSI_PBFS_DEPT_DEPT_MODE mode) {
    return set_mode(jbrg_sim::op("xsi_pbfs_dept_set_dept_mode", mode), &modes::dept, mode, kDeptModeLast);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_get_dept_mode(XSI_PBFS_DEPT_DEPT_MODE* mode) {
    return get_mode(jbrg_sim::op("xsi_pbfs_dept_get_dept_mode", static_cast<const void*>(mode)), &modes::dept,
                    mode);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_set_mix_mode(XSI_PBFS_DEPT_MIX_MODE mode) {
    return set_mode(jbrg_sim::op("xsi_pbfs_dept_set_mix_mode", mode), &modes::mix, mode, kMixModeLast);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_get_mix_mode(XSI_PBFS_DEPT_MIX_MODE* mode) {
    return get_mode(jbrg_sim::op("xsi_pbfs_dept_get_mix_mode", static_cast<const void*>(mode)), &modes::mix, mode);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_set_invalid_dept_mode(XSI_PBFS_DEPT_INVALID_DEPT_MODE mode) {
    return set_mode(jbrg_sim::op("xsi_pbfs_dept_set_invalid_dept_mode", mode), &modes::invalid_dept, mode,
                    kInvalidDeptModeLast);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_get_invalid_dept_mode(XSI_PBFS_DEPT_INVALID_DEPT_MODE* mode) {
    return get_mode(jbrg_sim::op("xsi_pbfs_dept_get_invalid_dept_mode", static_cast<const void*>(mode)),
                    &modes::invalid_dept, mode);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_set_limit_action_mode(XSI_PBFS_DEPT_LIMIT_ACTION mode) {
    return set_mode(jbrg_sim::op("xsi_pbfs_dept_set_limit_action_mode", mode), &modes::limit_action, mode,
                    kLimitActionLast);
}

PLAT_RESULT xsi_pbfs_dept_facade::xsi_pbfs_dept_get_limit_action_mode(XSI_PBFS_DEPT_LIMIT_ACTION* mode) {
    return get_mode(jbrg_sim::op("xsi_pbfs_dept_get_limit_action_mode", static_cast<const void*>(mode)),
                    &modes::limit_action, mode);
}
