// The job service's store: the one service object, registered with the device, and what the control
// surface reads of it.
#include <optional>
#include <vector>

#include "jbrg_sim/job.h"
#include "job_store.h"
#include "sim_internal.h"

namespace jbrg_sim::jobsvc {

job_service& jobs() {
    static job_service* s = new job_service;
    return *s;
}
namespace {
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const job_service& registered = jobs();
}  // namespace

}  // namespace jbrg_sim::jobsvc

// ---- Control surface ------------------------------------------------------------------------------------

namespace jbrg_sim::job {

using jobsvc::jobs;
using jobsvc::known_func;

std::vector<jobinfo_info> jobinfos() {
    ensure_loaded();
    auto lock = device_lock();
    std::vector<jobinfo_info> list;
    for (const auto& [id, j] : jobs().jobinfos) {
        list.push_back(jobinfo_info{id, j.category, j.cert_id, static_cast<unsigned>(j.now.addresses.size()), j.prepared});
    }
    return list;
}

std::optional<user_job_info> user_job(unsigned user_job_id) {
    ensure_loaded();
    auto lock = device_lock();
    auto u = jobs().user_jobs.find(user_job_id);
    if (u == jobs().user_jobs.end()) return std::nullopt;
    return u->second.info;
}

int signage_mode(int func_type) {
    ensure_loaded();
    auto lock = device_lock();
    return known_func(func_type) ? jobs().signage[func_type] : 0;
}

}  // namespace jbrg_sim::job
