// The simulated device's job service, as tests and the demo look into it.
//
// Job information sets, services and user jobs are made and changed only through the platform's job
// service (platform/include/xsi_ais_job.h); this header lets a test see what the device holds afterwards:
// the sets that exist, each user job with the certificates it was made and cancelled with, and the data a
// stream job received. docs/jobs.md describes the service.
//
// It is also the job service's event source (docs/events-jobs.md): a user job runs through its start, its
// pages and its end, reporting each to the job observers and the job information observers, either by
// itself (scenario "job": {"run_jobs": true}, or run_jobs(true)) or when finish() lets it; and every
// notification of the job observer can be sent on its own.
#ifndef JBRG_SIM_JOB_H
#define JBRG_SIM_JOB_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "xsi_ais_job.h"

namespace jbrg_sim::job {

// One job information set.
struct jobinfo_info {
    unsigned handler_id = 0;
    int category = 0;
    uint32_t cert_id = 0;          // the certificate of generate_jobinfo_bkg; 0 when made without one
    unsigned addresses = 0;        // destinations it holds
    std::string prepared;          // "", "box", "direct_print", "stream", "retrieve"
};

// One user job, running or cancelled.
struct user_job_info {
    unsigned user_job_id = 0;
    unsigned service_id = 0;
    unsigned handler_id = 0;       // the set it was built from (which may since have been deleted)
    int category = 0;
    uint32_t cert_id = 0;          // the certificate of the set it was built from
    bool cancelled = false;
    uint32_t cancel_cert_id = 0;   // the certificate the cancel was made with
    bool cancel_bkg = false;       // cancelled through xsi_ais_job_cancel_bkg
    bool continuous_read = false;
    std::string stream;            // bytes received by write_stream_data, in order
    unsigned stream_chunks = 0;    // accepted write_stream_data calls
    int stream_state = -1;         // state of the last accepted chunk; -1 before the first
    bool started = false;          // its start was reported
    unsigned pages_done = 0;       // pages reported
    unsigned pages = 0;            // pages it has (fixed when kicked)
    bool ended = false;            // its end was reported
    int end_result = -1;           // the end status reported (XSI_AIS_JOB_RESULT_*); -1 before the end
};

// The sets that exist, by handler id.
std::vector<jobinfo_info> jobinfos();

// The user job, running or cancelled; nothing for an id the device never handed out.
std::optional<user_job_info> user_job(unsigned user_job_id);

// The signage mode last set for a function type (the platform's numbering), 0 until one is set.
int signage_mode(int func_type);

// ---- The job service as an event source ----------------------------------------------------------------
//
// The notify_* functions send one notification to every registered job observer: the message is encoded as
// the service does and each observer's dispatch() runs on the service's IPC thread ("job"); the call waits.
// The answer is the first non-zero answer of an observer, or 0 (also when none is registered). Call them,
// and finish(), from a thread that holds nothing the observers need (never from the "job" thread).

int32_t notify_job_state_changed(const XSI_AIS_JOB_STATE& state);
int32_t notify_scan_count(unsigned int count_1, unsigned int count_2);
int32_t notify_start_phb(unsigned int value);
int32_t notify_disable_info(unsigned int value);
int32_t notify_main_message(unsigned int value);
int32_t notify_phb_info(unsigned int handler_id, const XSI_AIS_PHB_INFO& info);
int32_t notify_message_info(unsigned int handler_id, const XSI_AIS_PHB_GET_MESSAGE& message);
int32_t notify_app_service_request(uint32_t request_id, const XSI_AIS_JOB_SERVICE_MSG& message);

// Observers registered now.
std::size_t observer_count();

// Whether kicked jobs run by themselves (until the next scenario load, which takes the scenario's choice).
void run_jobs(bool on);
// The pages each job kicked from now on has (until the next scenario load).
void set_pages(unsigned pages);

// Lets the user job run to its end (or, cancelled, to its cancelled end) and waits until it has ended.
// False for an id the device never handed out.
bool finish(unsigned user_job_id);

}  // namespace jbrg_sim::job

#endif  // JBRG_SIM_JOB_H
