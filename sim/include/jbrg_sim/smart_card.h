// The simulated device's smart card reader, as tests and the demo drive it.
//
// Observers are registered through the platform's facade (platform/include/xdc_com_std.h). Each function
// here sends one reader event to every registered observer, on the reader's own IPC thread (service
// "smart_card"), through the observer's dispatch(), and answers the first non-zero answer (0 when all
// answered 0 or none is registered). The helpers below lay out a card's data area as the reader does
// (docs/events-device.md).
#ifndef JBRG_SIM_SMART_CARD_H
#define JBRG_SIM_SMART_CARD_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "xdc_com_std.h"

namespace jbrg_sim::smart_card {

// One sector of a sector-organised card (type A): its number and its blocks (16 bytes each).
struct sector {
    unsigned number = 0;
    std::vector<uint8_t> blocks;
};

// One service of a system-organised card: its code and its blocks (16 bytes each).
struct service {
    unsigned code = 0;
    std::vector<uint8_t> blocks;
};

// The bytes of one data entry.
std::vector<uint8_t> sector_entry(const std::vector<sector>& sectors);
std::vector<uint8_t> system_entry(unsigned system_code, const std::vector<service>& services);

// A card record: the type, the id text, and the data area made of the given entries (none: no data).
XDC_COM_STD_SMART_CARD_INFO card(int32_t card_type, const std::string& card_id,
                                 const std::vector<std::vector<uint8_t>>& entries = {});

int32_t card_detected(const XDC_COM_STD_SMART_CARD_INFO& card_info);
int32_t card_lost();
int32_t card_error(int32_t error, uint32_t detail = 0);
// A reader is attached (the device then answers with `reader_info`) or detached; the observers hear it.
int32_t reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO& reader_info);
int32_t reader_removed();

// Sends a raw message as the reader would; for messages the observers do not know or data that do not fit.
int32_t send(uint32_t msg_id, const void* data, std::size_t size);

// The observers registered now.
std::size_t observers();

// ---- The reader's settings, as the device holds them ------------------------------------------------------
//
// They start from the scenario's "smart_card" section (docs/device-information.md).

bool reader_attached();
uint8_t event_masks();
int felica_data_type();
int mifare_data_type();
// FeliCa service setting 0 or 1 (zeros when never written).
XDC_COM_STD_FELICA_SERVICE_SETTING felica_setting(int number);
// MIFARE Classic read setting 0 to 4; nothing when it holds nothing.
std::optional<XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING> mifare_setting(int number);

}  // namespace jbrg_sim::smart_card

#endif  // JBRG_SIM_SMART_CARD_H
