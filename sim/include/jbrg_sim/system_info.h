// The simulated device's system information, as tests and the demo look into it.
//
// Its operations are the platform's (platform/include/xsi_pbfs_systeminfo.h). The machine settings, paper
// sources, fax lines, model and screen come from the scenario's "system_info" section; the page counters
// start there and advance as the device's jobs print, scan and send pages. docs/device-information.md
// describes the service.
#ifndef JBRG_SIM_SYSTEM_INFO_H
#define JBRG_SIM_SYSTEM_INFO_H

#include <cstdint>
#include <optional>
#include <string>

namespace jbrg_sim::system_info {

// The page counter of a kind, paper size and colour (XSI_PBFS_COUNT_KIND_*, XSI_PBFS_PAPER_SIZE_*,
// XSI_PBFS_COUNT_COLOR_*; size and colour 0 sum over all); 0 for a combination the device does not count.
uint32_t count(uint32_t kind, uint32_t paper_size, uint32_t color);

// A machine setting as the device holds it now: a number, or a text; nothing for a key it does not have.
std::optional<uint32_t> setting(int32_t key);
std::optional<std::string> setting_text(int32_t key);

}  // namespace jbrg_sim::system_info

#endif  // JBRG_SIM_SYSTEM_INFO_H
