// Links between the system information of the simulated device and the services whose work it counts.
#ifndef JBRG_SIM_SYSTEM_INFO_INTERNAL_H
#define JBRG_SIM_SYSTEM_INFO_INTERNAL_H

#include <map>

namespace jbrg_sim::sysinfo {

// One page of a job of `category` (XSI_AIS_JOB_CATEGORY_*) went through the machine: its page counters
// advance. `box_job_type` is the XSI_AIS_BOX_JOB_TYPE of a box job (0 for other jobs); `numbers` the job's
// integer settings (paper size and colour mode are read from them). Under the device lock.
void count_page(int category, int box_job_type, const std::map<int, unsigned int>& numbers);

}  // namespace jbrg_sim::sysinfo

#endif  // JBRG_SIM_SYSTEM_INFO_INTERNAL_H
