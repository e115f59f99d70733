// The platform's job service: job information sets, destinations, services, user jobs, prohibition state,
// document and stream preparation, scan and OCR data.
//
// The device keeps every job information set (by handler id) with its settings, its destinations and what
// was prepared for it; start (xsi_ais_job_start) builds a service from a set, kick runs the service as a
// user job, which stays in the job list of its kind until it is cancelled. Ids are handed out from counters
// that start again with each scenario load: handler ids from 1, service ids from 1001, user job ids from
// 2001, address ids from 1 in each set. The ranges differ so that an id passed in the place of another is
// refused rather than taken.
//
// Behaviour worth knowing when reading the bridge against it:
//   - An unknown handler id or address id, an unknown setting, a value of the wrong kind (an integer for a
//     text setting or the other way round), an enumeration value the service does not know and a null text
//     pointer are refused with XSI_AIS_JOB_PARAM_ERROR; an unknown category with XSI_AIS_JOB_NO_CATEGORY;
//     an unknown service id with XSI_AIS_JOB_ILLEGAL_SERVICE_ID; an unknown user job id with
//     XSI_AIS_JOB_NOT_FOUND, and a cancelled one (for cancel, data and continuous reading) with
//     XSI_AIS_JOB_CANCELED.
//   - The _bkg operations (generate_jobinfo_bkg, cancel_bkg) act for a login: a certificate id that names no
//     current login is refused with XSI_AIS_JOB_LOGIN_ERROR and changes nothing. The service records the
//     certificate on the set and on the cancel; the plain cancel's is taken as given.
//   - A store box job leaves a document in its box when it ends normally, a direct-print or stream-print job
//     of a set made for a login a quick-copy retained document (box_internal.h, docs/boxes.md).
//   - Every call logs its parameters in order: numbers in decimal, texts as they are ("(null)" for a null
//     pointer), records, vectors and out-parameters as pointers.
//   - A forced result returns at once, leaving the device unchanged; out-values forced for the same call are
//     still written, as a device that fails after handing out an id does.
#include <algorithm>
//
// The service's parts: job_records.h (what it knows, what it keeps), job_section.* (its scenario section),
// job_store.* (the store and its ids), job_facade.cpp (the facade's operations), job_run.cpp (observers,
// jobs running on the service's thread and their events).
#ifndef JBRG_SIM_JOB_STORE_H
#define JBRG_SIM_JOB_STORE_H

#include <algorithm>
#include <map>

#include "job_records.h"
#include "job_section.h"
#include "sim.h"

namespace jbrg_sim::jobsvc {

constexpr unsigned int kFirstHandler = 1;
constexpr unsigned int kFirstService = 1001;
constexpr unsigned int kFirstUserJob = 2001;

class job_service final : public service {
public:
    job_service() : layout_(parse(nlohmann::json::object())) {}

    // Under the device lock, as every member below.
    apply_step read(const nlohmann::json& scenario) override {
        return [this, next = parse(scenario)] { apply(next); };
    }

    void apply(const layout& next) {
        layout_ = next;
        jobinfos.clear();
        services.clear();
        user_jobs.clear();
        function_defaults[0].clear();
        function_defaults[1].clear();
        signage[0] = signage[1] = 0;
        prohibited_state = XSI_AIS_STATE_OF_PROHIBITION_PERMIT;
        next_handler = kFirstHandler;
        next_service = kFirstService;
        next_user_job = kFirstUserJob;
        run_jobs = layout_.run_jobs;
        pages = layout_.pages;
        next_receipt = 1;
        ++generation;
    }

    const layout& scenario() const { return layout_; }

    // The settings a new set of the category starts with: the device defaults, then its function's own.
    settings initial(int category) const {
        settings now;
        for (const setting_def& s : kSettings) {
            if (s.text) {
                auto t = layout_.texts.find(s.id);
                now.texts[s.id] = t != layout_.texts.end() ? t->second : s.factory_text;
            } else {
                now.numbers[s.id] = default_of(s);
            }
        }
        int f = function_of(category);
        if (f >= 0) {
            for (const auto& [id, value] : function_defaults[f]) now.numbers[id] = value;
        }
        return now;
    }

    PLAT_RESULT generate(int category, dev_ulong cert_id, unsigned int& handler_id) {
        if (!known_category(category)) return XSI_AIS_JOB_NO_CATEGORY;
        if (jobinfos.size() >= layout_.limit.jobinfos) return XSI_AIS_JOB_LIMIT;
        jobinfo j;
        j.category = category;
        j.cert_id = cert_id;
        j.now = initial(category);
        handler_id = next_handler++;
        jobinfos[handler_id] = std::move(j);
        return XSI_AIS_JOB_OK;
    }

    unsigned int default_of(const setting_def& s) const {
        auto n = layout_.numbers.find(s.id);
        return n != layout_.numbers.end() ? n->second : s.factory;
    }

    jobinfo* find(unsigned int handler_id) {
        auto j = jobinfos.find(handler_id);
        return j == jobinfos.end() ? nullptr : &j->second;
    }

    bool start_prohibited(const jobinfo& j) const {
        return prohibited_state == XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT || layout_.prohibited.count(j.category) != 0;
    }

    std::size_t running_services() const {
        std::size_t n = 0;
        for (const auto& [id, s] : services) {
            if (s.user_job_id == 0) {
                ++n;
            } else if (!user_jobs.at(s.user_job_id).info.cancelled && !user_jobs.at(s.user_job_id).info.ended) {
                ++n;
            }
        }
        return n;
    }

    std::size_t running_user_jobs() const {
        return static_cast<std::size_t>(std::count_if(
            user_jobs.begin(), user_jobs.end(),
            [](const auto& u) { return !u.second.info.cancelled && !u.second.info.ended; }));
    }

    std::map<unsigned int, jobinfo> jobinfos;
    std::map<unsigned int, service_rec> services;
    std::map<unsigned int, user_job_rec> user_jobs;
    std::map<int, unsigned int> function_defaults[2];
    int signage[2] = {0, 0};
    int prohibited_state = XSI_AIS_STATE_OF_PROHIBITION_PERMIT;
    unsigned int next_handler = kFirstHandler;
    unsigned int next_service = kFirstService;
    unsigned int next_user_job = kFirstUserJob;
    bool run_jobs = false;
    unsigned pages = 1;
    dev_ulong next_receipt = 1;
    // Counts scenario loads: a job run posted before a load does not touch the jobs after it.
    unsigned long generation = 0;

private:
    layout layout_;
};

// The job service of the device.
job_service& jobs();

// One operation on a job information set: logged, forced and under the device lock as a locked_op, with the
// set its handler id names looked up. When its result was not forced, an unknown handler id ends it with
// XSI_AIS_JOB_PARAM_ERROR before anything else.
class set_op : public locked_op {
public:
    template <class... A>
    set_op(const char* name, unsigned int handler_id, const A&... more)
        : locked_op(name, handler_id, more...), set_(forced() ? nullptr : jobs().find(handler_id)) {}

    // True when the operation ends here with answer(): its result was forced or its set is unknown.
    bool ends() const { return set_ == nullptr; }
    PLAT_RESULT answer() const { return forced() ? result() : XSI_AIS_JOB_PARAM_ERROR; }
    jobinfo* set() const { return set_; }

private:
    jobinfo* set_;
};

// Lets the user job run on the service's IPC thread (job_run.cpp). Under the device lock.
void post_run(unsigned int user_job_id);

}  // namespace jbrg_sim::jobsvc

#endif  // JBRG_SIM_JOB_STORE_H
