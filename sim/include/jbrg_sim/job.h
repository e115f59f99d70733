// The simulated device's job service, as tests and the demo look into it.
//
// Job information sets, services and user jobs are made and changed only through the platform's job
// service (platform/include/xsi_ais_job.h); this header lets a test see what the device holds afterwards:
// the sets that exist, each user job with the certificates it was made and cancelled with, and the data a
// stream job received. docs/jobs.md describes the service.
#ifndef JBRG_SIM_JOB_H
#define JBRG_SIM_JOB_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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
};

// The sets that exist, by handler id.
std::vector<jobinfo_info> jobinfos();

// The user job, running or cancelled; nothing for an id the device never handed out.
std::optional<user_job_info> user_job(unsigned user_job_id);

// The signage mode last set for a function type (the platform's numbering), 0 until one is set.
int signage_mode(int func_type);

}  // namespace jbrg_sim::job

#endif  // JBRG_SIM_JOB_H
