// Inside the simulated device: what every service of it shares.
//
// Each platform operation that works on the device's state starts with a `locked_op`, which writes the call
// to the call log, takes the next forcing queued for that operation and, unless a result was forced, holds
// the device lock until the operation returns:
//
//     extern "C" PLAT_RESULT xsi_pbfs_startup(int mode) {
//         jbrg_sim::locked_op call("xsi_pbfs_startup", mode);
//         if (call.forced()) return call.result();
//         ...the device's own behaviour, under the device lock...
//     }
//
// An operation that must not hold the lock (it keeps state of its own, or waits for a device thread) starts
// with a plain `op`. Each service keeps its state in a `service` object that loads its part of the scenario
// (scenario.h); all services are guarded by the one device lock, `device_lock`.
#ifndef JBRG_SIM_SIM_H
#define JBRG_SIM_SIM_H

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
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

// One platform call that works on the device's state: logged and forced as by `op`; when no result was
// forced, the device lock is held from here until the operation returns.
class locked_op : public op {
public:
    template <class... A>
    explicit locked_op(const char* name, const A&... args) : op(name, args...) {
        if (!forced()) lock_ = device_lock();
    }

private:
    std::unique_lock<std::recursive_mutex> lock_;
};

// A part of the device that keeps state. Each service is a static object that registers itself; a scenario
// load hands every service the whole scenario and each reads its own section.
class service {
public:
    // What makes a scenario's part the service's state; it cannot fail.
    using apply_step = std::function<void()>;

    service();
    virtual ~service() = default;
    // Reads the service's part of the scenario's JSON (an empty object for the empty device), throwing
    // std::runtime_error for a part that does not read, and gives back the step that applies it. A load reads
    // every service's part before it applies any, so that a scenario that does not read changes nothing.
    // Both run under the device lock.
    virtual apply_step read(const nlohmann::json& scenario) = 0;
};

// A service whose whole state is one value that `Parse` reads from the scenario (throwing for a part that
// does not read): a load replaces the value.
template <class State, State (*Parse)(const nlohmann::json&)>
class state_service final : public service {
public:
    apply_step read(const nlohmann::json& scenario) override {
        return [this, next = Parse(scenario)] { state = next; };
    }
    State state;
};

// ---- Observers registered with a service ------------------------------------------------------------------

// What the running processes registered with the device (their observers). It is not the device's content:
// a scenario load keeps it. A reset powers the device on again, and the device forgets every registration.
class registrations {
public:
    registrations();  // registers the list with the device, for reset
    virtual ~registrations() = default;
    // Called by reset().
    virtual void forget() = 0;
};

// The observers of one service, in registration order. Kept apart from the device lock, so that a
// notification can run without it and its observer may call back into the device.
//
// A process deletes an observer once its removal has returned, so a notification must never reach one after
// that: call_each() calls only observers still registered, and remove() waits while another thread is inside a
// call to the observer it removes (an observer removing itself from within its own call does not wait).
template <class T>
class observer_list final : public registrations {
public:
    // False when `observer` is registered already.
    bool add(T* observer) {
        std::lock_guard<std::mutex> guard(mutex_);
        if (std::find(list_.begin(), list_.end(), observer) != list_.end()) return false;
        list_.push_back(observer);
        return true;
    }
    // False when `observer` is not registered. Returns once no other thread is calling it.
    bool remove(T* observer) {
        std::unique_lock<std::mutex> lock(mutex_);
        auto at = std::find(list_.begin(), list_.end(), observer);
        if (at == list_.end()) return false;
        list_.erase(at);
        const std::thread::id self = std::this_thread::get_id();
        called_.wait(lock, [&] {
            return std::none_of(calling_.begin(), calling_.end(),
                                [&](const auto& c) { return c.first == observer && c.second != self; });
        });
        return true;
    }
    // Calls `call(observer)` for each observer registered when it starts, in order, on this thread, leaving out
    // one removed in the meantime; the first non-zero answer, or 0.
    template <class F>
    int32_t call_each(F&& call) {
        int32_t answer = 0;
        for (T* observer : snapshot()) {
            const std::pair<T*, std::thread::id> entry{observer, std::this_thread::get_id()};
            {
                std::lock_guard<std::mutex> guard(mutex_);
                if (std::find(list_.begin(), list_.end(), observer) == list_.end()) continue;
                calling_.push_back(entry);
            }
            struct done {
                observer_list* list;
                std::pair<T*, std::thread::id> entry;
                ~done() {
                    {
                        std::lock_guard<std::mutex> guard(list->mutex_);
                        list->calling_.erase(std::find(list->calling_.begin(), list->calling_.end(), entry));
                    }
                    list->called_.notify_all();
                }
            } finished{this, entry};
            const int32_t one = call(observer);
            if (answer == 0) answer = one;
        }
        return answer;
    }
    // The observers registered now; a notification goes to these.
    std::vector<T*> snapshot() const {
        std::lock_guard<std::mutex> guard(mutex_);
        return list_;
    }
    std::size_t size() const {
        std::lock_guard<std::mutex> guard(mutex_);
        return list_.size();
    }
    void forget() override {
        std::lock_guard<std::mutex> guard(mutex_);
        list_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable called_;
    std::vector<T*> list_;
    std::vector<std::pair<T*, std::thread::id>> calling_;  // calls running now, and their threads
};

}  // namespace jbrg_sim

#endif  // JBRG_SIM_SIM_H
