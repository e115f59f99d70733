// The "job" section of a scenario, as the job service of the simulated device reads it.
//
// The "job" section of the scenario gives what the device holds at start:
//
//   "job": {
//     "defaults":      {"copies": 1, "file_name": "scan"},        device defaults, by setting name
//     "limits":        {"jobinfos": 16, "services": 16, "user_jobs": 16, "copies": 4, "stream_bytes": 1048576},
//     "prohibited_categories": [4],                                sets of these categories may not start
//     "disable_info":  {"color_mode": 18},                         disabled values, by item name
//     "main_message":  {"main_msg_1": 1, "main_msg_2": 0, "main_msg_3": 0,
//                       "msg_detail_filename": "detail.txt", "msg_detail_info": 0},
//     "scan_pages":    ["first page", "second page"],              what every scan job reads
//     "scan_chunk":    16384,                                      most bytes one get_scan_data gives
//     "ocr":           [ {"kind": "page", ...}, {"kind": "line", ...} ]  served to every set in order
//     "run_jobs":      false,                                      kicked jobs run by themselves
//     "pages":         1,                                          pages of every job kicked
//     "user_name":     "alice"                                     the user name job states carry
//   }
#ifndef JBRG_SIM_JOB_SECTION_H
#define JBRG_SIM_JOB_SECTION_H

#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "job_records.h"

namespace jbrg_sim::jobsvc {

struct layout {
    std::map<int, unsigned int> numbers;   // device defaults
    std::map<int, std::string> texts;
    limits limit;
    std::set<int> prohibited;
    unsigned short disable[kDisableItemCount] = {};
    XSI_AIS_PHB_GET_MESSAGE message{};
    std::vector<std::string> scan_pages;
    std::size_t scan_chunk = XSI_AIS_JOB_GET_SCAN_DATA_SIZE;
    std::vector<ocr_record> ocr;
    bool run_jobs = false;
    unsigned pages = 1;
    std::string user_name;
};


// Reads the "job" section of `scenario` (defaults where it has none); throws std::runtime_error for a
// section that does not read.
layout parse(const nlohmann::json& scenario);

}  // namespace jbrg_sim::jobsvc

#endif  // JBRG_SIM_JOB_SECTION_H
