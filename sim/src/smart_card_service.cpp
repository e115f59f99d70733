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
#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/smart_card.h"
#include "sim.h"
#include "xdc_com_std.h"

namespace {

constexpr PLAT_RESULT kUnknownMessage = PLAT_CODE(0xE0010001);

jbrg_sim::observer_list<xdc_com_std_smart_card_observer>& registered() {
    static auto* observers = new jbrg_sim::observer_list<xdc_com_std_smart_card_observer>;
    return *observers;
}

int32_t send_message(uint32_t msg_id, std::vector<char> data) {
    return jbrg_sim::deliver("smart_card", [msg_id, data]() mutable {
        const std::vector<xdc_com_std_smart_card_observer*> observers = registered().snapshot();
        int32_t answer = 0;
        static dev_ulong sequence = 0;
        for (xdc_com_std_smart_card_observer* observer : observers) {
            gen_ipc_msghdr header{msg_id, 0, static_cast<dev_ulong>(data.size()), ++sequence};
            const int32_t one =
                observer->dispatch(0, data.empty() ? nullptr : data.data(), header.length, header);
            if (answer == 0) answer = one;
        }
        return answer;
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
    return send_message(XDC_COM_STD_MSG_READER_ADDED, bytes_of(reader_info));
}
int32_t reader_removed() { return send_message(XDC_COM_STD_MSG_READER_REMOVED, {}); }

int32_t send(uint32_t msg_id, const void* data, std::size_t size) {
    const char* p = static_cast<const char*>(data);
    return send_message(msg_id, p != nullptr ? std::vector<char>(p, p + size) : std::vector<char>());
}

std::size_t observers() { return registered().size(); }

}  // namespace jbrg_sim::smart_card
