#include "box/box_enums.h"

namespace orvane::box {

const char* constant_of(const enum_table& table, int32_t value, const trace_site& site) {
    for (std::size_t i = 0; i < table.count; ++i) {
        if (table.entries[i].value == value) return table.entries[i].constant;
    }
    if (table.traces_default) trace_at(site, "switch default");
    return table.fallback;
}

}  // namespace orvane::box
