// The control surface of the simulated device: scenario, forcing, call log, traces and platform threads.
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "jbrg_sim/control.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"

namespace jbrg_sim {

namespace {

// The log and the forcings have their own lock, so that logging never waits for a service's work.
struct control_state {
    std::mutex mutex;
    std::vector<call> calls;
    // Per operation: the results still to force, and per out-parameter the values still to hand back.
    std::map<std::string, std::deque<int32_t>> results;
    std::map<std::string, std::map<std::string, std::deque<std::string>>> outs;
    // The traces, oldest first from `traces_head`, in slots that are written over in place once made, so that
    // a line costs the device no allocation once the log has reached its length.
    std::vector<trace> traces;
    std::size_t traces_head = 0;
    std::size_t traces_count = 0;
    std::string scenario_text = "{}";
};

// Lives for the whole process (never destroyed), so that platform threads still running at exit find it.
control_state& control() {
    static control_state* state = new control_state;
    return *state;
}

std::vector<service*>& services() {
    static std::vector<service*>* list = new std::vector<service*>;
    return *list;
}

std::vector<registrations*>& registration_lists() {
    static auto* lists = new std::vector<registrations*>;
    return *lists;
}

// Traces kept for the control surface; older lines are dropped first.
constexpr std::size_t kMaxTraces = 20000;

std::string default_scenario_text() {
    const char* path = std::getenv("JBRG_SIM_SCENARIO");
    if (path == nullptr || *path == '\0') return "{}";
    std::ifstream in(path);
    if (!in) throw std::runtime_error(std::string("cannot read scenario ") + path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

void apply_scenario(const std::string& text) {
    nlohmann::json scenario = text.empty() ? nlohmann::json::object() : nlohmann::json::parse(text);
    if (!scenario.is_object()) throw std::runtime_error("scenario: the file must hold a JSON object");
    auto lock = device_lock();
    std::vector<service::apply_step> steps;
    for (service* s : services()) steps.push_back(s->read(scenario));
    scenario_part::check_sections(scenario);
    for (service::apply_step& step : steps) step();
}

}  // namespace

void ensure_loaded() {
    static std::once_flag once;
    std::call_once(once, [] {
        std::string text = default_scenario_text();
        apply_scenario(text);
        std::lock_guard<std::mutex> guard(control().mutex);
        control().scenario_text = text;
    });
}

// ---- Internal ------------------------------------------------------------------------------------------

std::string arg_text(const void* p) {
    if (p == nullptr) return "(null)";
    char text[32];
    std::snprintf(text, sizeof text, "%p", p);
    return text;
}

std::unique_lock<std::recursive_mutex> device_lock() {
    static std::recursive_mutex* mutex = new std::recursive_mutex;
    return std::unique_lock<std::recursive_mutex>(*mutex);
}

service::service() { services().push_back(this); }

registrations::registrations() {
    auto lock = device_lock();
    registration_lists().push_back(this);
}

op::op(const char* name, std::vector<std::string> args) : name_(name) {
    ensure_loaded();
    control_state& c = control();
    std::lock_guard<std::mutex> guard(c.mutex);
    c.calls.push_back(call{name_, std::move(args)});
    if (auto r = c.results.find(name_); r != c.results.end()) {
        forced_ = true;
        result_ = r->second.front();
        r->second.pop_front();
        if (r->second.empty()) c.results.erase(r);
    }
    if (auto o = c.outs.find(name_); o != c.outs.end()) {
        for (auto it = o->second.begin(); it != o->second.end();) {
            outs_.emplace_back(it->first, it->second.front());
            it->second.pop_front();
            it = it->second.empty() ? o->second.erase(it) : std::next(it);
        }
        if (o->second.empty()) c.outs.erase(o);
    }
}

const std::string* op::forced_out(const char* out) const {
    for (const auto& [name, value] : outs_) {
        if (name == out) return &value;
    }
    return nullptr;
}

void op::out(const char* out, dev_ulong* value) const {
    if (const std::string* v = forced_out(out)) *value = static_cast<dev_ulong>(std::stoll(*v, nullptr, 0));
}

void op::out(const char* out, dev_long* value) const {
    if (const std::string* v = forced_out(out)) *value = static_cast<dev_long>(std::stoll(*v, nullptr, 0));
}

void op::out(const char* out, std::string* value) const {
    if (const std::string* v = forced_out(out)) *value = *v;
}

void record_trace(unsigned module, unsigned level, unsigned flags, const char* format, const char* text,
                  std::size_t length) {
    control_state& c = control();
    std::lock_guard<std::mutex> guard(c.mutex);
    // The slot after the newest line; a full log writes over its oldest. Only a full log has moved its head.
    std::size_t at;
    if (c.traces_count == kMaxTraces) {
        at = c.traces_head;
        c.traces_head = (c.traces_head + 1) % kMaxTraces;
    } else {
        at = c.traces_head + c.traces_count++;
    }
    if (at == c.traces.size()) c.traces.emplace_back();
    trace& t = c.traces[at];
    t.module = module;
    t.level = level;
    t.flags = flags;
    t.format.assign(format != nullptr ? format : "");
    t.text.assign(text, length);
}

// ---- Scenario ----------------------------------------------------------------------------------------

void load_scenario(const std::string& json_text) {
    ensure_loaded();
    apply_scenario(json_text);
    std::lock_guard<std::mutex> guard(control().mutex);
    control().scenario_text = json_text;
}

void load_scenario_file(const std::string& path) {
    std::ifstream in(path);
    if (!in) throw std::runtime_error("cannot read scenario " + path);
    std::stringstream text;
    text << in.rdbuf();
    load_scenario(text.str());
}

void reset() {
    ensure_loaded();
    std::string text;
    {
        std::lock_guard<std::mutex> guard(control().mutex);
        text = control().scenario_text;
    }
    apply_scenario(text);
    {
        // Powered on again: the observers registered before are gone.
        auto lock = device_lock();
        for (registrations* r : registration_lists()) r->forget();
    }
    clear_forcing();
    clear_calls();
    clear_traces();
}

// ---- Forcing -----------------------------------------------------------------------------------------

void force_result(const std::string& op_name, int32_t result, int times) {
    std::lock_guard<std::mutex> guard(control().mutex);
    for (int i = 0; i < times; ++i) control().results[op_name].push_back(result);
}

void force_out(const std::string& op_name, const std::string& out, const std::string& value, int times) {
    std::lock_guard<std::mutex> guard(control().mutex);
    for (int i = 0; i < times; ++i) control().outs[op_name][out].push_back(value);
}

void clear_forcing() {
    std::lock_guard<std::mutex> guard(control().mutex);
    control().results.clear();
    control().outs.clear();
}

// ---- Call log ----------------------------------------------------------------------------------------

std::string call::text() const {
    std::string s = op + "(";
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (i != 0) s += ", ";
        s += args[i];
    }
    return s + ")";
}

std::vector<call> calls() {
    std::lock_guard<std::mutex> guard(control().mutex);
    return control().calls;
}

std::vector<call> calls_of(const std::string& op_name) {
    std::vector<call> matching;
    for (call& c : calls()) {
        if (c.op == op_name) matching.push_back(std::move(c));
    }
    return matching;
}

std::vector<std::string> call_texts() {
    std::vector<std::string> texts;
    for (const call& c : calls()) texts.push_back(c.text());
    return texts;
}

void clear_calls() {
    std::lock_guard<std::mutex> guard(control().mutex);
    control().calls.clear();
}

// ---- Traces ------------------------------------------------------------------------------------------

std::vector<trace> traces() {
    control_state& c = control();
    std::lock_guard<std::mutex> guard(c.mutex);
    std::vector<trace> lines;
    lines.reserve(c.traces_count);
    for (std::size_t i = 0; i < c.traces_count; ++i) lines.push_back(c.traces[(c.traces_head + i) % kMaxTraces]);
    return lines;
}

std::vector<std::string> trace_texts() {
    std::vector<std::string> texts;
    for (const trace& t : traces()) texts.push_back(t.text);
    return texts;
}

void clear_traces() {
    control_state& c = control();
    std::lock_guard<std::mutex> guard(c.mutex);
    // The slots stay, to be written over.
    c.traces_head = 0;
    c.traces_count = 0;
}

// ---- Platform threads --------------------------------------------------------------------------------

namespace {

// One IPC thread of a platform service: runs the notifications handed to it, one at a time, in order.
class ipc_thread {
public:
    ipc_thread() : thread_([this] { run(); }) { thread_.detach(); }

    std::future<int32_t> post(std::function<int32_t()> notification) {
        std::packaged_task<int32_t()> task(std::move(notification));
        std::future<int32_t> answer = task.get_future();
        {
            std::lock_guard<std::mutex> guard(mutex_);
            queue_.push_back(std::move(task));
        }
        ready_.notify_one();
        return answer;
    }

private:
    void run() {
        for (;;) {
            std::packaged_task<int32_t()> task;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                ready_.wait(lock, [this] { return !queue_.empty(); });
                task = std::move(queue_.front());
                queue_.pop_front();
            }
            task();
        }
    }

    std::mutex mutex_;
    std::condition_variable ready_;
    std::deque<std::packaged_task<int32_t()>> queue_;
    std::thread thread_;
};

// The device's IPC threads run until the process ends; they are never destroyed.
ipc_thread& thread_of(const std::string& service_name) {
    static std::mutex* mutex = new std::mutex;
    static auto* threads = new std::map<std::string, ipc_thread*>;
    std::lock_guard<std::mutex> guard(*mutex);
    ipc_thread*& t = (*threads)[service_name];
    if (t == nullptr) t = new ipc_thread;
    return *t;
}

}  // namespace

int32_t deliver(const std::string& service_name, std::function<int32_t()> notification) {
    return deliver_async(service_name, std::move(notification)).get();
}

std::future<int32_t> deliver_async(const std::string& service_name, std::function<int32_t()> notification) {
    return thread_of(service_name).post(std::move(notification));
}

int32_t deliver_on_new_thread(std::function<int32_t()> notification) {
    int32_t answer = 0;
    std::thread once([&] { answer = notification(); });
    once.join();
    return answer;
}

}  // namespace jbrg_sim
