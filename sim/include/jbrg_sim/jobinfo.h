// The simulated device's job information service as an event source.
//
// Each function sends one notification to every job information observer registered with
// xsi_ais_jobinfo_facade::xsi_ais_jobinfo_add_observer: it encodes the message as the service does, runs
// each observer's dispatch() on the service's IPC thread ("jobinfo"), and waits. The answer is the first
// non-zero answer of an observer, or 0 (also when none is registered). Call them from a thread that holds
// nothing the observers need (not from the "jobinfo" thread itself). docs/events-jobs.md describes them.
#ifndef JBRG_SIM_JOBINFO_H
#define JBRG_SIM_JOBINFO_H

#include <cstddef>
#include <cstdint>

#include "xsi_ais_jobinfo.h"

namespace jbrg_sim::jobinfo {

int32_t notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& event);
int32_t notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE& event);
int32_t notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& event);
int32_t notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& event);
// `job_name` null: the job came without a name.
int32_t notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& event, const char* job_name);
int32_t notify_imagelog_create_status(unsigned int user_job_id, uint32_t image_id,
                                      XSI_AIS_IMAGELOG_CREATE_STATUS_VAL status);

// Observers registered now.
std::size_t observer_count();

}  // namespace jbrg_sim::jobinfo

#endif  // JBRG_SIM_JOBINFO_H
