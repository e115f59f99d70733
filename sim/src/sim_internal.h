// Links between the parts of the simulated device that are not services of their own.
#ifndef JBRG_SIM_SIM_INTERNAL_H
#define JBRG_SIM_SIM_INTERNAL_H

#include <string>

#include "sim.h"

namespace jbrg_sim {

// Loads the start-up scenario, once, if nothing has yet. Every operation does this first (through `op`);
// control-surface calls that read device state without an operation call it themselves.
void ensure_loaded();

// Keeps one printed trace line for the control surface.
void record_trace(unsigned module, unsigned level, unsigned flags, const char* format, const char* text,
                  std::size_t length);

// A copy of one member of a service's state, for the control surface's getters: the device loaded first,
// the copy taken under the device lock.
template <class State, class T>
T read_locked(State& (*state)(), T State::*member) {
    ensure_loaded();
    auto lock = device_lock();
    return state().*member;
}

}  // namespace jbrg_sim

#endif  // JBRG_SIM_SIM_INTERNAL_H
