// Inside the simulated device: what every service of it shares.
//
// Each platform operation starts with an `op` object, which writes the call to the call log and takes the
// next forcing queued for that operation:
//
//     extern "C" PLAT_RESULT xsi_pbfs_startup(int mode) {
//         jbrg_sim::op call("xsi_pbfs_startup", mode);
//         if (call.forced()) return call.result();
//         ...the device's own behaviour...
//     }
//
// Each service keeps its state in a `service` object that loads its part of the scenario; all services are
// guarded by the one device lock, taken with `device_lock`.
#ifndef JBRG_SIM_SIM_H
#define JBRG_SIM_SIM_H

#include <cstdint>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <type_traits>
#include <vector>

#include "plat_types.h"

namespace jbrg_sim {

// ---- Arguments as the call log writes them ---------------------------------------------------------------

inline std::string arg_text(const char* s) { return s ? std::string(s) : std::string("(null)"); }
inline std::string arg_text(char* s) { return arg_text(static_cast<const char*>(s)); }
inline std::string arg_text(const std::string& s) { return s; }
inline std::string arg_text(bool b) { return b ? "true" : "false"; }
std::string arg_text(const void* p);  // "(null)" or "0x..." (pointers differ from run to run)
template <class T, std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>, int> = 0>
std::string arg_text(T v) {
    if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<long long>(v));
    } else {
        return std::to_string(v);
    }
}

// ---- One platform call ------------------------------------------------------------------------------------

class op {
public:
    template <class... A>
    explicit op(const char* name, const A&... args) : op(name, std::vector<std::string>{arg_text(args)...}) {}
    op(const char* name, std::vector<std::string> args);

    // True when a forced result was queued for this call: the operation returns result() and does nothing else.
    bool forced() const { return forced_; }
    int32_t result() const { return result_; }

    // Where an out-value was forced for `out`, writes it over `*value`.
    void out(const char* out, dev_ulong* value) const;
    void out(const char* out, dev_long* value) const;
    void out(const char* out, std::string* value) const;

private:
    const std::string* forced_out(const char* out) const;

    std::string name_;
    bool forced_ = false;
    int32_t result_ = 0;
    std::vector<std::pair<std::string, std::string>> outs_;
};

// ---- Services and their state -----------------------------------------------------------------------------

// The one lock of the device's state. Reentrant, so that one service may call another while holding it.
std::unique_lock<std::recursive_mutex> device_lock();

// A part of the device that keeps state. Each service is a static object that registers itself; a scenario
// load hands every service the whole scenario and each reads its own section.
class service {
public:
    service();
    virtual ~service() = default;
    // Called under the device lock with the scenario's JSON (an empty object for the empty device).
    virtual void load(const nlohmann::json& scenario) = 0;
};

}  // namespace jbrg_sim

#endif  // JBRG_SIM_SIM_H
