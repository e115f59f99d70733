// Links between the parts of the simulated device that are not services of their own.
#ifndef JBRG_SIM_SIM_INTERNAL_H
#define JBRG_SIM_SIM_INTERNAL_H

#include <string>

namespace jbrg_sim {

// Loads the start-up scenario, once, if nothing has yet. Every operation does this first (through `op`);
// control-surface calls that read device state without an operation call it themselves.
void ensure_loaded();

// Keeps one printed trace line for the control surface.
void record_trace(unsigned module, unsigned level, unsigned flags, const char* format, std::string text);

}  // namespace jbrg_sim

#endif  // JBRG_SIM_SIM_INTERNAL_H
