// The job service of the simulated device: what it knows of settings, categories and functions, and the
// records it keeps of job information sets, services and user jobs. Used under the device lock.
#ifndef JBRG_SIM_JOB_RECORDS_H
#define JBRG_SIM_JOB_RECORDS_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "jbrg_sim/job.h"
#include "xsi_ais_job.h"

namespace jbrg_sim::jobsvc {

struct setting_def {
    int id;
    const char* name;
    bool text;
    unsigned int factory;       // the factory default of an integer setting
    const char* factory_text;   // the factory default of a text setting
};

inline constexpr setting_def kSettings[] = {
    {XSI_AIS_JOB_SETTING_COPIES, "copies", false, 1, ""},
    {XSI_AIS_JOB_SETTING_COLOR_MODE, "color_mode", false, 0, ""},
    {XSI_AIS_JOB_SETTING_ORIGINAL_SIZE, "original_size", false, 0, ""},
    {XSI_AIS_JOB_SETTING_DUPLEX, "duplex", false, 0, ""},
    {XSI_AIS_JOB_SETTING_RESOLUTION, "resolution", false, 300, ""},
    {XSI_AIS_JOB_SETTING_DENSITY, "density", false, 5, ""},
    {XSI_AIS_JOB_SETTING_ZOOM, "zoom", false, 100, ""},
    {XSI_AIS_JOB_SETTING_PAPER_SOURCE, "paper_source", false, 0, ""},
    {XSI_AIS_JOB_SETTING_FILE_FORMAT, "file_format", false, 1, ""},
    {XSI_AIS_JOB_SETTING_FILE_NAME, "file_name", true, 0, "doc"},
    {XSI_AIS_JOB_SETTING_MAIL_SUBJECT, "mail_subject", true, 0, ""},
    {XSI_AIS_JOB_SETTING_MAIL_BODY, "mail_body", true, 0, ""},
};

inline const setting_def* setting(int id) {
    for (const setting_def& s : kSettings) {
        if (s.id == id) return &s;
    }
    return nullptr;
}

inline constexpr const char* kDisableItems[] = {
    "color_mode",      "original_size",  "original_duplex",         "original_dir", "original_image",
    "original_mixed",  "zoom_mode",      "combine_setting",         "paper_source_setting",
    "file_format",     "scn_resolution", "fax_resolution",          "scn_mult_mode",
    "removal_blankpaper_mode",           "pdf_a_level",             "china_red_copy",
};
inline constexpr int kDisableItemCount = static_cast<int>(sizeof kDisableItems / sizeof kDisableItems[0]);

inline bool known_category(int c) { return c >= XSI_AIS_JOB_CATEGORY_COPY && c <= XSI_AIS_JOB_CATEGORY_RETRIEVE; }
inline bool known_phb_setting(int s) { return s >= XSI_AIS_PHB_SETTING_CUSTOM_SIZE && s <= XSI_AIS_PHB_SETTING_ERASE; }
inline bool known_func(int f) { return f == XSI_AIS_JOB_FUNC_COPY || f == XSI_AIS_JOB_FUNC_SCAN; }

// The function whose defaults a new set of the category starts from; -1 for none.
inline int function_of(int category) {
    switch (category) {
        case XSI_AIS_JOB_CATEGORY_COPY:
            return XSI_AIS_JOB_FUNC_COPY;
        case XSI_AIS_JOB_CATEGORY_SCAN:
        case XSI_AIS_JOB_CATEGORY_SEND:
            return XSI_AIS_JOB_FUNC_SCAN;
        default:
            return -1;
    }
}

// The job list a user job of the category appears in (besides XSI_AIS_JOB_KIND_ALL).
inline int kind_of(int category) {
    switch (category) {
        case XSI_AIS_JOB_CATEGORY_SCAN:
        case XSI_AIS_JOB_CATEGORY_SEND:
        case XSI_AIS_JOB_CATEGORY_RETRIEVE:
            return XSI_AIS_JOB_KIND_SCAN;
        case XSI_AIS_JOB_CATEGORY_FAX:
            return XSI_AIS_JOB_KIND_FAX;
        default:
            return XSI_AIS_JOB_KIND_PRINT;
    }
}

struct values3 {
    unsigned int v1 = 0, v2 = 0, v3 = 0;
};

// The settings of a set: what copy_jobinfo saves and rollback_jobinfo restores.
struct settings {
    std::map<int, unsigned int> numbers;
    std::map<int, std::string> texts;
    std::map<int, values3> threes;
    std::map<unsigned int, XSI_AIS_JOB_SEND_INFO> addresses;
};

struct jobinfo {
    int category = 0;
    dev_ulong cert_id = 0;
    settings now;
    std::optional<settings> copy;  // saved by copy_jobinfo, until commit or rollback
    unsigned int next_address = 1;
    std::string prepared;
    std::size_t ocr_next = 0;      // the next OCR record this set reads
    std::string user_name;         // the user of its certificate (generate_jobinfo_bkg); "" without one
    dev_ulong store_box = 0;       // the box a store box job stores into (prepared with XSI_AIS_BOX_JOB_STORE)
    std::string store_pass;        // and the password that opens it
    int box_job_type = 0;          // XSI_AIS_BOX_JOB_TYPE of a prepared box job; 0 for none
};

struct service_rec {
    unsigned int handler_id = 0;
    int category = 0;
    dev_ulong cert_id = 0;
    std::string prepared;
    unsigned int user_job_id = 0;  // 0 until kicked
};

struct user_job_rec {
    jbrg_sim::job::user_job_info info;
    std::map<int, unsigned int> numbers;  // the settings of its set when it was kicked
    bool scan_end_reported = false;
    std::size_t scan_page = 0;
    std::size_t scan_offset = 0;
    bool scan_done = false;
    // What it leaves behind when it ends normally (from its set, when kicked).
    std::string user_name;
    dev_ulong store_box = 0;
    std::string store_pass;
    std::string doc_name;          // the set's file name; "" for the device's own name
    int box_job_type = 0;          // what a box job does (XSI_AIS_BOX_JOB_TYPE); 0 for other jobs
};

struct ocr_record {
    bool line = false;
    XSI_AIS_JOB_GET_OCR_DATA data{};
};

struct limits {
    std::size_t jobinfos = 16;
    std::size_t services = 16;
    std::size_t user_jobs = 16;
    std::size_t copies = 4;
    std::size_t stream_bytes = 1048576;
};

// The three-value settings a set answers before any was set.
inline values3 three_of(const jobinfo& j, int id) {
    auto t = j.now.threes.find(id);
    return t == j.now.threes.end() ? values3{} : t->second;
}

inline bool known_address_type(dev_ulong t) { return t >= XSI_AIS_JOB_ADDRESS_FTP && t <= XSI_AIS_JOB_ADDRESS_FAX; }

}  // namespace jbrg_sim::jobsvc

#endif  // JBRG_SIM_JOB_RECORDS_H
