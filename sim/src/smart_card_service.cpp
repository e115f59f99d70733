// The smart card reader of the communication services: its observers and the events it sends them.
//
// The reader keeps the observers registered through add_smart_card_observer, in registration order, and
// sends each event to all of them on its own IPC thread ("smart_card"), through the observer's dispatch().
// Observers are the process's objects, not device state: a scenario load keeps them, a reset forgets them.
//
// Behaviour worth knowing when reading the bridge against it:
//   - add of a null observer or of one registered already, remove of one not registered: XDC_COM_STD_NG.
//   - Calls log the observer as a pointer.
//   - dispatch() copies the event's record out of the message (the message need not be aligned); a message
//     id it does not know, or data of another size than the record, answers 0xE0010001 and calls nothing.
//     A known message answers 0: the reader's events answer nothing.
//
// The reader's service also keeps which reader is attached and how it reads cards; that is device content,
// set by the "smart_card" section of the scenario:
//
//   "smart_card": {
//     "reader": {"vendor": 4660, "product_id": 1, "reader_type": 1, "card_types": 7, "read_button": false},
//     "event_masks": 63, "felica_data_type": 0, "mifare_data_type": 0,
//     "felica": [ {"number": 0, "system_code": 65024, "services": [ {"service_code": 11, "blocks": 4} ]} ],
//     "mifare": [ {"number": 0, "key_type": 0, "key": "A0A1A2A3A4A5", "sector": 2} ]
//   }
//
// "reader": null means no reader is attached; without the key the reader above is. Event masks default to
// every card type (bits 0..5), data types to the id only; settings not listed hold nothing.
//   - Every operation about the reader, its settings included, answers NOT_EXIST while none is attached,
//     before it looks at its arguments. The settings stay with the service while the reader is away.
//   - PARAM_ERROR: an event mask with bits above 5, a data type the reader does not know, a setting number
//     out of range, a FeliCa block count above XDC_COM_STD_FELICA_MAX_BLOCKS, a MIFARE key type other than
//     A or B or a sector past 0x27. A MIFARE read setting never written or cleared answers NO_SETTING;
//     clearing one that holds nothing is harmless.
//   - jbrg_sim::smart_card::reader_added(info) attaches the reader with that information and
//     reader_removed() detaches it, before the observers hear the event.
//   - Records are logged as pointers, the event mask in decimal. Forced out-values of
//     get_smart_card_reader_information: "vendor", "product_id", "reader_type", "card_types", "read_button".
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/smart_card.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xdc_com_std.h"

namespace {

constexpr PLAT_RESULT kUnknownMessage = PLAT_CODE(0xE0010001);

jbrg_sim::observer_list<xdc_com_std_smart_card_observer>& registered() {
    static auto* observers = new jbrg_sim::observer_list<xdc_com_std_smart_card_observer>;
    return *observers;
}

int32_t send_message(uint32_t msg_id, std::vector<char> data) {
    return jbrg_sim::deliver("smart_card", [msg_id, data]() mutable {
        static dev_ulong sequence = 0;
        return registered().call_each([&](xdc_com_std_smart_card_observer* observer) {
            gen_ipc_msghdr header{msg_id, 0, static_cast<dev_ulong>(data.size()), ++sequence};
            return observer->dispatch(0, data.empty() ? nullptr : data.data(), header.length, header);
        });
    });
}

template <class Record>
std::vector<char> bytes_of(const Record& record) {
    const char* p = reinterpret_cast<const char*>(&record);
    return std::vector<char>(p, p + sizeof record);
}

template <class Record>
bool read_record(const char* data, unsigned int size, Record* record) {
    if (data == nullptr || size != sizeof(Record)) return false;
    std::memcpy(record, data, sizeof(Record));
    return true;
}

void put16(std::vector<uint8_t>& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

// ---- The reader and its settings --------------------------------------------------------------------------

constexpr unsigned kAllCardTypes = 0x3F;  // bits 0..5, one per ENV_AUTH_IC_CARD_TYPE

struct reader_state {
    bool attached = true;
    XDC_COM_STD_SMART_CARD_READER_INFO info{0x1234, 0x0001, 1, 0x07, 0};  // types A, B and FeliCa
    uint8_t event_masks = kAllCardTypes;
    int felica_data_type = XDC_COM_STD_FELICA_DATA_ID;
    int mifare_data_type = XDC_COM_STD_MIFARE_DATA_ID;
    std::array<XDC_COM_STD_FELICA_SERVICE_SETTING, XDC_COM_STD_FELICA_SETTING_COUNT> felica{};
    std::array<std::optional<XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING>, XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_COUNT>
        mifare{};
};

bool felica_fits(const XDC_COM_STD_FELICA_SERVICE_SETTING& s) {
    return std::all_of(std::begin(s.service), std::end(s.service),
                       [](const XDC_COM_STD_FELICA_SERVICE& v) { return v.num_of_blocks <= XDC_COM_STD_FELICA_MAX_BLOCKS; });
}

bool mifare_fits(const XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING& s) {
    return (s.key_type == XDC_COM_STD_MIFARE_KEY_TYPE_A || s.key_type == XDC_COM_STD_MIFARE_KEY_TYPE_B) &&
           s.sector_num < XDC_COM_STD_MIFARE_SECTOR_COUNT;
}

// Six key bytes from twelve hex digits; false for another text.
bool key_bytes(const std::string& hex, uint8_t (&key)[XDC_COM_STD_MIFARE_KEY_SIZE]) {
    if (hex.size() != 2 * XDC_COM_STD_MIFARE_KEY_SIZE) return false;
    for (std::size_t i = 0; i < XDC_COM_STD_MIFARE_KEY_SIZE; ++i) {
        unsigned byte = 0;
        for (char c : hex.substr(2 * i, 2)) {
            const char* digits = "0123456789abcdef";
            const char* at = std::strchr(digits, c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c);
            if (c == '\0' || at == nullptr) return false;
            byte = byte * 16 + static_cast<unsigned>(at - digits);
        }
        key[i] = static_cast<uint8_t>(byte);
    }
    return true;
}

void read_felica(const jbrg_sim::scenario_part& part, const nlohmann::json& entry, reader_state& r, std::size_t n) {
    const std::string where = part.at("/felica", n);
    part.only_keys(entry, {"number", "system_code", "services"}, where);
    const auto number = part.integer_at(entry, "number", 0, 0, XDC_COM_STD_FELICA_SETTING_COUNT - 1, where);
    XDC_COM_STD_FELICA_SERVICE_SETTING s{};
    s.system_code = static_cast<uint16_t>(part.integer_at(entry, "system_code", 0, 0, 0xFFFF, where));
    const nlohmann::json& services = part.list_at(entry, "services", where);
    if (services.size() > 2) part.fail(part.at(where, "services"), "has more than two services");
    for (std::size_t i = 0; i < services.size(); ++i) {
        const std::string at = part.at(part.at(where, "services"), i);
        part.only_keys(services[i], {"service_code", "blocks"}, at);
        s.service[i].service_code = static_cast<uint16_t>(part.integer_at(services[i], "service_code", 0, 0, 0xFFFF, at));
        s.service[i].num_of_blocks =
            static_cast<uint8_t>(part.integer_at(services[i], "blocks", 0, 0, XDC_COM_STD_FELICA_MAX_BLOCKS, at));
    }
    r.felica[static_cast<std::size_t>(number)] = s;
}

void read_mifare(const jbrg_sim::scenario_part& part, const nlohmann::json& entry, reader_state& r, std::size_t n) {
    const std::string where = part.at("/mifare", n);
    part.only_keys(entry, {"number", "key_type", "key", "sector"}, where);
    const auto number = part.integer_at(entry, "number", 0, 0, XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_COUNT - 1, where);
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING s{};
    s.key_type = static_cast<int32_t>(part.integer_at(entry, "key_type", 0, 0, XDC_COM_STD_MIFARE_KEY_TYPE_B, where));
    if (!key_bytes(part.text_at(entry, "key", where), s.key)) {
        part.fail(part.at(where, "key"), "must be twelve hex digits");
    }
    s.sector_num = static_cast<uint16_t>(part.integer_at(entry, "sector", 0, 0, XDC_COM_STD_MIFARE_SECTOR_COUNT - 1, where));
    r.mifare[static_cast<std::size_t>(number)] = s;
}

reader_state parse(const nlohmann::json& scenario) {
    const jbrg_sim::scenario_part part(
        scenario, "smart_card", {"reader", "event_masks", "felica_data_type", "mifare_data_type", "felica", "mifare"});
    reader_state r;
    if (part.has("reader") && part.section().at("reader").is_null()) {
        r.attached = false;
    } else if (part.has("reader")) {
        const nlohmann::json& info = part.section().at("reader");
        part.only_keys(info, {"vendor", "product_id", "reader_type", "card_types", "read_button"}, "/reader");
        r.info.vendor = static_cast<uint16_t>(part.integer_at(info, "vendor", r.info.vendor, 0, 0xFFFF, "/reader"));
        r.info.product_id =
            static_cast<uint16_t>(part.integer_at(info, "product_id", r.info.product_id, 0, 0xFFFF, "/reader"));
        r.info.reader_type =
            static_cast<uint32_t>(part.integer_at(info, "reader_type", r.info.reader_type, 0, UINT32_MAX, "/reader"));
        r.info.card_types =
            static_cast<uint32_t>(part.integer_at(info, "card_types", r.info.card_types, 0, kAllCardTypes, "/reader"));
        r.info.read_button = part.flag_at(info, "read_button", r.info.read_button != 0, "/reader") ? 1 : 0;
    }
    r.event_masks = static_cast<uint8_t>(part.integer_at("event_masks", kAllCardTypes, 0, kAllCardTypes));
    r.felica_data_type = static_cast<int>(
        part.integer_at("felica_data_type", XDC_COM_STD_FELICA_DATA_ID, XDC_COM_STD_FELICA_DATA_ID, XDC_COM_STD_FELICA_DATA_SERVICE));
    r.mifare_data_type = static_cast<int>(
        part.integer_at("mifare_data_type", XDC_COM_STD_MIFARE_DATA_ID, XDC_COM_STD_MIFARE_DATA_ID, XDC_COM_STD_MIFARE_DATA_SECTOR));
    const nlohmann::json& felica = part.list_at("felica");
    for (std::size_t n = 0; n < felica.size(); ++n) read_felica(part, felica[n], r, n);
    const nlohmann::json& mifare = part.list_at("mifare");
    for (std::size_t n = 0; n < mifare.size(); ++n) read_mifare(part, mifare[n], r, n);
    return r;
}

reader_state& reader() {
    static auto* s = new jbrg_sim::state_service<reader_state, parse>;
    return s->state;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const reader_state& registered_reader = reader();

// One operation about the reader: logged, forced and locked as a locked_op; it ends at once with answer()
// when its result was forced or no reader is attached.
class reader_op : public jbrg_sim::locked_op {
public:
    template <class... A>
    explicit reader_op(const char* name, const A&... args) : locked_op(name, args...) {}
    bool ends() const { return forced() || !reader().attached; }
    PLAT_RESULT answer() const { return forced() ? result() : XDC_COM_STD_NOT_EXIST; }
};

}  // namespace

// ---- The observer base ----------------------------------------------------------------------------------

xdc_com_std_smart_card_observer::~xdc_com_std_smart_card_observer() = default;

PLAT_RESULT xdc_com_std_smart_card_observer::dispatch(long, char* data, unsigned int size, gen_ipc_msghdr header) {
    switch (header.msg_id) {
    case XDC_COM_STD_MSG_CARD_DETECTED: {
        // The record is large; it lives on the heap rather than on the IPC thread's stack.
        auto card = std::make_unique<XDC_COM_STD_SMART_CARD_INFO>();
        if (!read_record(data, size, card.get())) break;
        smart_card_detected(*card);
        return 0;
    }
    case XDC_COM_STD_MSG_CARD_LOST:
        smart_card_lost();
        return 0;
    case XDC_COM_STD_MSG_CARD_ERROR: {
        XDC_COM_STD_SMART_CARD_ERROR_INFO error{};
        if (!read_record(data, size, &error)) break;
        smart_card_error_detected(error);
        return 0;
    }
    case XDC_COM_STD_MSG_READER_ADDED: {
        XDC_COM_STD_SMART_CARD_READER_INFO reader{};
        if (!read_record(data, size, &reader)) break;
        smart_card_reader_added(reader);
        return 0;
    }
    case XDC_COM_STD_MSG_READER_REMOVED:
        smart_card_reader_removed();
        return 0;
    default:
        break;
    }
    return kUnknownMessage;
}

void xdc_com_std_smart_card_observer::smart_card_detected(const XDC_COM_STD_SMART_CARD_INFO&) {}
void xdc_com_std_smart_card_observer::smart_card_lost() {}
void xdc_com_std_smart_card_observer::smart_card_error_detected(const XDC_COM_STD_SMART_CARD_ERROR_INFO&) {}
void xdc_com_std_smart_card_observer::smart_card_reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO&) {}
void xdc_com_std_smart_card_observer::smart_card_reader_removed() {}

// ---- The facade -----------------------------------------------------------------------------------------

xdc_com_std_facade* xdc_com_std_facade::get_instance() {
    static auto* instance = new xdc_com_std_facade;
    return instance;
}

PLAT_RESULT xdc_com_std_facade::add_smart_card_observer(xdc_com_std_smart_card_observer* observer) {
    jbrg_sim::op call("add_smart_card_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !registered().add(observer)) return XDC_COM_STD_NG;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::remove_smart_card_observer(xdc_com_std_smart_card_observer* observer) {
    jbrg_sim::op call("remove_smart_card_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !registered().remove(observer)) return XDC_COM_STD_NG;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::get_smart_card_reader_information(XDC_COM_STD_SMART_CARD_READER_INFO& info) {
    reader_op call("get_smart_card_reader_information", static_cast<const void*>(&info));
    if (call.ends()) return call.answer();
    XDC_COM_STD_SMART_CARD_READER_INFO out = reader().info;
    dev_ulong vendor = out.vendor, product = out.product_id;
    call.out("vendor", &vendor);
    call.out("product_id", &product);
    call.out("reader_type", &out.reader_type);
    call.out("card_types", &out.card_types);
    call.out("read_button", &out.read_button);
    out.vendor = static_cast<uint16_t>(vendor);
    out.product_id = static_cast<uint16_t>(product);
    info = out;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::set_smart_card_event_masks(unsigned char mask) {
    reader_op call("set_smart_card_event_masks", mask);
    if (call.ends()) return call.answer();
    if ((mask & ~kAllCardTypes) != 0) return XDC_COM_STD_PARAM_ERROR;
    reader().event_masks = mask;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::set_felica_data_type(int type) {
    reader_op call("set_felica_data_type", type);
    if (call.ends()) return call.answer();
    if (type != XDC_COM_STD_FELICA_DATA_ID && type != XDC_COM_STD_FELICA_DATA_SERVICE) return XDC_COM_STD_PARAM_ERROR;
    reader().felica_data_type = type;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::set_felica_service_setting(XDC_COM_STD_FELICA_SETTING_NUM number,
                                                           const XDC_COM_STD_FELICA_SERVICE_SETTING& setting) {
    reader_op call("set_felica_service_setting", number, static_cast<const void*>(&setting));
    if (call.ends()) return call.answer();
    if (number < 0 || number >= XDC_COM_STD_FELICA_SETTING_COUNT || !felica_fits(setting)) {
        return XDC_COM_STD_PARAM_ERROR;
    }
    reader().felica[static_cast<std::size_t>(number)] = setting;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::get_felica_service_setting(XDC_COM_STD_FELICA_SETTING_NUM number,
                                                           XDC_COM_STD_FELICA_SERVICE_SETTING& setting) {
    reader_op call("get_felica_service_setting", number, static_cast<const void*>(&setting));
    if (call.ends()) return call.answer();
    if (number < 0 || number >= XDC_COM_STD_FELICA_SETTING_COUNT) return XDC_COM_STD_PARAM_ERROR;
    setting = reader().felica[static_cast<std::size_t>(number)];
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::set_mifare_classic_data_type(int type) {
    reader_op call("set_mifare_classic_data_type", type);
    if (call.ends()) return call.answer();
    if (type < XDC_COM_STD_MIFARE_DATA_ID || type > XDC_COM_STD_MIFARE_DATA_SECTOR) return XDC_COM_STD_PARAM_ERROR;
    reader().mifare_data_type = type;
    return XDC_COM_STD_OK;
}

namespace {

bool mifare_number(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number) {
    return number >= 0 && number < XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_COUNT;
}

}  // namespace

PLAT_RESULT xdc_com_std_facade::get_mifare_classic_read_setting(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number,
                                                                XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING& setting) {
    reader_op call("get_mifare_classic_read_setting", number, static_cast<const void*>(&setting));
    if (call.ends()) return call.answer();
    if (!mifare_number(number)) return XDC_COM_STD_PARAM_ERROR;
    const auto& held = reader().mifare[static_cast<std::size_t>(number)];
    if (!held) return XDC_COM_STD_NO_SETTING;
    setting = *held;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::set_mifare_classic_read_setting(
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number, const XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING& setting) {
    reader_op call("set_mifare_classic_read_setting", number, static_cast<const void*>(&setting));
    if (call.ends()) return call.answer();
    if (!mifare_number(number) || !mifare_fits(setting)) return XDC_COM_STD_PARAM_ERROR;
    reader().mifare[static_cast<std::size_t>(number)] = setting;
    return XDC_COM_STD_OK;
}

PLAT_RESULT xdc_com_std_facade::clear_mifare_classic_read_setting(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number) {
    reader_op call("clear_mifare_classic_read_setting", number);
    if (call.ends()) return call.answer();
    if (!mifare_number(number)) return XDC_COM_STD_PARAM_ERROR;
    reader().mifare[static_cast<std::size_t>(number)].reset();
    return XDC_COM_STD_OK;
}

// ---- The control surface --------------------------------------------------------------------------------

namespace jbrg_sim::smart_card {

std::vector<uint8_t> sector_entry(const std::vector<sector>& sectors) {
    std::vector<uint8_t> out;
    out.push_back(static_cast<uint8_t>(sectors.size()));
    for (const sector& s : sectors) {
        out.push_back(static_cast<uint8_t>(s.number));
        out.push_back(static_cast<uint8_t>(s.blocks.size() / XDC_COM_STD_BLOCK_SIZE));
        out.insert(out.end(), s.blocks.begin(), s.blocks.end());
    }
    return out;
}

std::vector<uint8_t> system_entry(unsigned system_code, const std::vector<service>& services) {
    std::vector<uint8_t> out;
    put16(out, system_code);
    out.push_back(static_cast<uint8_t>(services.size()));
    for (const service& s : services) {
        put16(out, s.code);
        out.push_back(static_cast<uint8_t>(s.blocks.size() / XDC_COM_STD_BLOCK_SIZE));
        out.insert(out.end(), s.blocks.begin(), s.blocks.end());
    }
    return out;
}

XDC_COM_STD_SMART_CARD_INFO card(int32_t card_type, const std::string& card_id,
                                 const std::vector<std::vector<uint8_t>>& entries) {
    XDC_COM_STD_SMART_CARD_INFO info{};
    info.card_type = card_type;
    std::strncpy(info.card_id, card_id.c_str(), sizeof info.card_id - 1);
    info.card_id_size = static_cast<int32_t>(std::strlen(info.card_id));
    std::size_t used = 0;
    for (const auto& entry : entries) {
        const std::size_t n = std::min(entry.size(), sizeof info.service_data - used);
        std::memcpy(info.service_data + used, entry.data(), n);
        used += n;
    }
    info.service_data_exist = entries.empty() ? 0 : 1;
    info.service_data_count = static_cast<uint16_t>(entries.size());
    info.service_data_size = static_cast<dev_ulong>(used);
    return info;
}

int32_t card_detected(const XDC_COM_STD_SMART_CARD_INFO& card_info) {
    return send_message(XDC_COM_STD_MSG_CARD_DETECTED, bytes_of(card_info));
}
int32_t card_lost() { return send_message(XDC_COM_STD_MSG_CARD_LOST, {}); }
int32_t card_error(int32_t error, uint32_t detail) {
    XDC_COM_STD_SMART_CARD_ERROR_INFO info{};
    info.error = error;
    info.detail = detail;
    return send_message(XDC_COM_STD_MSG_CARD_ERROR, bytes_of(info));
}
int32_t reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO& reader_info) {
    ensure_loaded();
    {
        auto lock = device_lock();
        reader().attached = true;
        reader().info = reader_info;
    }
    return send_message(XDC_COM_STD_MSG_READER_ADDED, bytes_of(reader_info));
}
int32_t reader_removed() {
    ensure_loaded();
    {
        auto lock = device_lock();
        reader().attached = false;
    }
    return send_message(XDC_COM_STD_MSG_READER_REMOVED, {});
}

int32_t send(uint32_t msg_id, const void* data, std::size_t size) {
    const char* p = static_cast<const char*>(data);
    return send_message(msg_id, p != nullptr ? std::vector<char>(p, p + size) : std::vector<char>());
}

std::size_t observers() { return registered().size(); }

bool reader_attached() { return read_locked(reader, &reader_state::attached); }
uint8_t event_masks() { return read_locked(reader, &reader_state::event_masks); }
int felica_data_type() { return read_locked(reader, &reader_state::felica_data_type); }
int mifare_data_type() { return read_locked(reader, &reader_state::mifare_data_type); }

XDC_COM_STD_FELICA_SERVICE_SETTING felica_setting(int number) {
    if (number < 0 || number >= XDC_COM_STD_FELICA_SETTING_COUNT) return XDC_COM_STD_FELICA_SERVICE_SETTING{};
    return read_locked(reader, &reader_state::felica)[static_cast<std::size_t>(number)];
}

std::optional<XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING> mifare_setting(int number) {
    if (number < 0 || number >= XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_COUNT) return std::nullopt;
    return read_locked(reader, &reader_state::mifare)[static_cast<std::size_t>(number)];
}

}  // namespace jbrg_sim::smart_card
