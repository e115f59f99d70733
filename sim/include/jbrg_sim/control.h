// The control surface of the simulated device.
//
// The simulated device (libjbrgsim.so) implements the device platform in memory so that the bridge runs off
// the device. Tests and the demo steer and observe it only through this header:
//
//   scenario     what the device holds at start (users, jobs, boxes, storage areas, ...), from JSON
//   forcing      make the next N calls of a named platform operation return a given result code, or hand back
//                a given out-value
//   call log     every platform call made, in order, with its arguments as text
//   traces       every line given to the platform trace printer
//   delivery     run an observer notification on one of the device's own threads and wait for its answer
//
// Everything here is thread-safe. docs/simulator.md describes each operation's name and arguments as the
// call log shows them.
#ifndef JBRG_SIM_CONTROL_H
#define JBRG_SIM_CONTROL_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace jbrg_sim {

// ---- Scenario -------------------------------------------------------------------------------------------

// Replaces the whole device state with the scenario given as JSON text (throws std::runtime_error when the
// text is not a valid scenario). An empty text gives the empty device.
void load_scenario(const std::string& json_text);
void load_scenario_file(const std::string& path);

// Back to the device as it was after the last load_scenario (or, before any, the scenario named by the
// environment variable JBRG_SIM_SCENARIO, or the empty device), and clears forcing, call log and traces.
void reset();

// ---- Forcing ----------------------------------------------------------------------------------------------

// The next `times` calls of operation `op` return `result` without doing anything else (they are still
// logged). Forcings of one operation queue up in the order given.
void force_result(const std::string& op, int32_t result, int times = 1);

// The next `times` calls of `op` do their work and then report `value` in their out-parameter `out`
// (as text: decimal for numbers).
void force_out(const std::string& op, const std::string& out, const std::string& value, int times = 1);

// Drops every forcing not yet used.
void clear_forcing();

// ---- Call log ------------------------------------------------------------------------------------------

struct call {
    std::string op;                 // the platform operation, e.g. "xsi_pbfs_startup" or "xdc_strg_fopen"
    std::vector<std::string> args;  // its arguments as text, in order (see docs/simulator.md)
    std::string text() const;       // "op(arg, arg, ...)"
};

std::vector<call> calls();
std::vector<call> calls_of(const std::string& op);
std::vector<std::string> call_texts();
void clear_calls();

// ---- Traces --------------------------------------------------------------------------------------------

struct trace {
    unsigned module;
    unsigned level;
    unsigned flags;
    std::string format;  // the format string given to the printer
    std::string text;    // the printed line
};

std::vector<trace> traces();
std::vector<std::string> trace_texts();
void clear_traces();

// ---- Delivery on platform threads ----------------------------------------------------------------------

// Runs `notification` on the IPC thread of the named platform service (one thread per service, created on
// first use, living until the process ends) and waits for its answer.
int32_t deliver(const std::string& service, std::function<int32_t()> notification);

// The same without waiting: the answer arrives in the future.
std::future<int32_t> deliver_async(const std::string& service, std::function<int32_t()> notification);

// Runs `notification` on a new thread that exists only for it, and waits for its answer.
int32_t deliver_on_new_thread(std::function<int32_t()> notification);

// ---- Memory partition ----------------------------------------------------------------------------------

// Blocks of emwOSWSubAllocMem not yet given back.
std::size_t blocks_in_use();

// ---- Storage -------------------------------------------------------------------------------------------

// The host folder under which the storage areas live: the one the scenario's "storage" "root" or the
// environment variable JBRG_SIM_STORAGE_ROOT names (kept as it is), or else a private one created on first use
// below $TMPDIR and removed at exit. Throws std::runtime_error when the host refuses to make it.
std::string storage_root();

// The host folder of a storage area; empty for an area the scenario does not define.
std::string area_folder(int area_id);

// The files of a storage area (links and other non-folders too), as paths relative to its folder
// ("/"-separated), sorted; none for an area the scenario does not define.
std::vector<std::string> area_files(int area_id);

}  // namespace jbrg_sim

#endif  // JBRG_SIM_CONTROL_H
