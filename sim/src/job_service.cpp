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
//
// Behaviour worth knowing when reading the bridge against it:
//   - An unknown handler id or address id, an unknown setting, a value of the wrong kind (an integer for a
//     text setting or the other way round), an enumeration value the service does not know and a null text
//     pointer are refused with XSI_AIS_JOB_PARAM_ERROR; an unknown category with XSI_AIS_JOB_NO_CATEGORY;
//     an unknown service id with XSI_AIS_JOB_ILLEGAL_SERVICE_ID; an unknown user job id with
//     XSI_AIS_JOB_NOT_FOUND, and a cancelled one (for cancel, data and continuous reading) with
//     XSI_AIS_JOB_CANCELED.
//   - Certificate ids are taken as given: the service records them on the set (generate_jobinfo_bkg) and on
//     the cancel (cancel, cancel_bkg) and does not check them against the logins.
//   - Every call logs its parameters in order: numbers in decimal, texts as they are ("(null)" for a null
//     pointer), records, vectors and out-parameters as pointers.
//   - A forced result returns at once, leaving the device unchanged; out-values forced for the same call are
//     still written, as a device that fails after handing out an id does.
#include <algorithm>
#include <atomic>
#include <climits>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "sim.h"
#include "sim_internal.h"
#include "xsi_ais_job.h"

namespace {

using json = nlohmann::json;

// ---- What the service knows ----------------------------------------------------------------------

struct setting_def {
    int id;
    const char* name;
    bool text;
    unsigned int factory;       // the factory default of an integer setting
    const char* factory_text;   // the factory default of a text setting
};

constexpr setting_def kSettings[] = {
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

const setting_def* setting(int id) {
    for (const setting_def& s : kSettings) {
        if (s.id == id) return &s;
    }
    return nullptr;
}

constexpr const char* kDisableItems[] = {
    "color_mode",      "original_size",  "original_duplex",         "original_dir", "original_image",
    "original_mixed",  "zoom_mode",      "combine_setting",         "paper_source_setting",
    "file_format",     "scn_resolution", "fax_resolution",          "scn_mult_mode",
    "removal_blankpaper_mode",           "pdf_a_level",             "china_red_copy",
};
constexpr int kDisableItemCount = static_cast<int>(sizeof kDisableItems / sizeof kDisableItems[0]);

bool known_category(int c) { return c >= XSI_AIS_JOB_CATEGORY_COPY && c <= XSI_AIS_JOB_CATEGORY_RETRIEVE; }
bool known_phb_setting(int s) { return s >= XSI_AIS_PHB_SETTING_CUSTOM_SIZE && s <= XSI_AIS_PHB_SETTING_ERASE; }
bool known_func(int f) { return f == XSI_AIS_JOB_FUNC_COPY || f == XSI_AIS_JOB_FUNC_SCAN; }

// The function whose defaults a new set of the category starts from; -1 for none.
int function_of(int category) {
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
int kind_of(int category) {
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

// ---- The scenario's "job" section ------------------------------------------------------------------

[[noreturn]] void bad(const std::string& what) { throw std::runtime_error("scenario job: " + what); }

void only_keys(const json& object, std::initializer_list<const char*> keys, const std::string& where) {
    if (!object.is_object()) bad(where + " must be an object");
    for (const auto& item : object.items()) {
        if (std::none_of(keys.begin(), keys.end(), [&](const char* k) { return item.key() == k; })) {
            bad("unknown key \"" + item.key() + "\" in " + where);
        }
    }
}

long long integer(const json& v, long long low, long long high, const std::string& where) {
    if (!v.is_number_integer()) bad(where + " must be an integer");
    long long n = v.get<long long>();
    if (n < low || n > high) bad(where + " is out of range");
    return n;
}

long long integer_at(const json& object, const char* key, long long fallback, long long low, long long high,
                     const std::string& where) {
    return object.contains(key) ? integer(object.at(key), low, high, where + "." + key) : fallback;
}

std::string text_at(const json& object, const char* key, const std::string& where) {
    if (!object.contains(key)) return "";
    if (!object.at(key).is_string()) bad(where + "." + key + " must be a string");
    return object.at(key).get<std::string>();
}

void rect_at(const json& object, XSI_AIS_JOB_OCR_RECT& rect, const std::string& where) {
    if (!object.contains("rect")) return;
    const json& r = object.at("rect");
    if (!r.is_array() || r.size() != 4) bad(where + ".rect must be a list of four integers");
    rect.left = static_cast<dev_ulong>(integer(r[0], 0, UINT32_MAX, where + ".rect"));
    rect.top = static_cast<dev_ulong>(integer(r[1], 0, UINT32_MAX, where + ".rect"));
    rect.right = static_cast<dev_ulong>(integer(r[2], 0, UINT32_MAX, where + ".rect"));
    rect.bottom = static_cast<dev_ulong>(integer(r[3], 0, UINT32_MAX, where + ".rect"));
}

void copy_text(char* field, std::size_t capacity, const std::string& text, const std::string& where) {
    if (text.size() >= capacity) bad(where + " is longer than " + std::to_string(capacity - 1) + " bytes");
    std::memset(field, 0, capacity);
    std::memcpy(field, text.data(), text.size());
}

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

ocr_record parse_ocr(const json& o, std::size_t index) {
    std::string where = "ocr[" + std::to_string(index) + "]";
    if (!o.is_object() || !o.contains("kind") || !o.at("kind").is_string()) bad(where + " needs a kind");
    std::string kind = o.at("kind").get<std::string>();
    ocr_record r;
    r.data.page_no = static_cast<dev_ulong>(integer_at(o, "page_no", 1, 0, UINT32_MAX, where));
    if (kind == "page") {
        only_keys(o, {"kind", "page_no", "sheet_width", "sheet_height", "sheet_rotate_angle", "page_block_num",
                      "block_num", "rect", "block_dir", "line_num"},
                  where);
        r.data.ocr_data_category = XSI_AIS_JOB_OCR_PAGE;
        XSI_AIS_JOB_OCR_PAGE_DATA& p = r.data.ocr_data.page_data;
        p.sheet_width = static_cast<dev_ulong>(integer_at(o, "sheet_width", 0, 0, UINT32_MAX, where));
        p.sheet_height = static_cast<dev_ulong>(integer_at(o, "sheet_height", 0, 0, UINT32_MAX, where));
        p.sheet_rotate_angle = static_cast<dev_ulong>(integer_at(o, "sheet_rotate_angle", 0, 0, 359, where));
        p.page_block_num = static_cast<dev_ulong>(integer_at(o, "page_block_num", 1, 0, UINT32_MAX, where));
        p.block_num = static_cast<dev_ulong>(integer_at(o, "block_num", 1, 0, UINT32_MAX, where));
        rect_at(o, p.block_data.block_rect, where);
        p.block_data.block_dir = static_cast<dev_ulong>(integer_at(o, "block_dir", 0, 0, 1, where));
        p.block_data.line_num =
            static_cast<dev_ulong>(integer_at(o, "line_num", 0, 0, XSI_AIS_JOB_OCR_LINE_SIZE, where));
    } else if (kind == "line") {
        only_keys(o, {"kind", "page_no", "block_no", "line_no", "rect", "text"}, where);
        r.line = true;
        r.data.ocr_data_category = XSI_AIS_JOB_OCR_TEXT_LINE;
        XSI_AIS_JOB_OCR_TEXT_DATA& t = r.data.ocr_data.text_data;
        t.block_no = static_cast<uint16_t>(integer_at(o, "block_no", 1, 0, UINT16_MAX, where));
        t.line_no = static_cast<uint16_t>(integer_at(o, "line_no", 1, 0, UINT16_MAX, where));
        rect_at(o, t.line_rect, where);
        std::string text = text_at(o, "text", where);
        // The text fills data_size bytes; the byte after it is 0 when there is room.
        if (text.size() > XSI_AIS_JOB_OCR_TEXT_SIZE) bad(where + ".text is longer than the record holds");
        std::memcpy(t.text_data, text.data(), text.size());
        t.data_size = static_cast<uint16_t>(text.size());
    } else {
        bad(where + ".kind must be \"page\" or \"line\"");
    }
    return r;
}

layout parse(const json& scenario) {
    layout l;
    const json none = json::object();
    const json& s = scenario.contains("job") ? scenario.at("job") : none;
    only_keys(s, {"defaults", "limits", "prohibited_categories", "disable_info", "main_message", "scan_pages",
                  "scan_chunk", "ocr", "run_jobs", "pages", "user_name"},
              "job");
    if (s.contains("defaults")) {
        const json& d = s.at("defaults");
        if (!d.is_object()) bad("defaults must be an object");
        for (const auto& item : d.items()) {
            const setting_def* def = nullptr;
            for (const setting_def& k : kSettings) {
                if (item.key() == k.name) def = &k;
            }
            if (def == nullptr) bad("unknown setting \"" + item.key() + "\" in defaults");
            if (def->text) {
                if (!item.value().is_string()) bad("defaults." + item.key() + " must be a string");
                l.texts[def->id] = item.value().get<std::string>();
            } else {
                l.numbers[def->id] =
                    static_cast<unsigned int>(integer(item.value(), 0, UINT32_MAX, "defaults." + item.key()));
            }
        }
    }
    if (s.contains("limits")) {
        const json& m = s.at("limits");
        only_keys(m, {"jobinfos", "services", "user_jobs", "copies", "stream_bytes"}, "limits");
        auto number = [&](const char* key, std::size_t fallback) {
            return static_cast<std::size_t>(integer_at(m, key, static_cast<long long>(fallback), 0, INT32_MAX, "limits"));
        };
        l.limit = limits{number("jobinfos", l.limit.jobinfos), number("services", l.limit.services),
                         number("user_jobs", l.limit.user_jobs), number("copies", l.limit.copies),
                         number("stream_bytes", l.limit.stream_bytes)};
    }
    if (s.contains("prohibited_categories")) {
        const json& p = s.at("prohibited_categories");
        if (!p.is_array()) bad("prohibited_categories must be a list");
        for (const json& c : p) {
            l.prohibited.insert(static_cast<int>(integer(c, XSI_AIS_JOB_CATEGORY_COPY, XSI_AIS_JOB_CATEGORY_RETRIEVE,
                                                         "a prohibited category")));
        }
    }
    if (s.contains("disable_info")) {
        const json& d = s.at("disable_info");
        if (!d.is_object()) bad("disable_info must be an object");
        for (const auto& item : d.items()) {
            int i = 0;
            while (i < kDisableItemCount && item.key() != kDisableItems[i]) ++i;
            if (i == kDisableItemCount) bad("unknown item \"" + item.key() + "\" in disable_info");
            l.disable[i] = static_cast<unsigned short>(integer(item.value(), 0, 0xFFFF, "disable_info." + item.key()));
        }
    }
    if (s.contains("main_message")) {
        const json& m = s.at("main_message");
        only_keys(m, {"main_msg_1", "main_msg_2", "main_msg_3", "msg_detail_filename", "msg_detail_info"},
                  "main_message");
        l.message.main_msg_1 = static_cast<dev_ulong>(integer_at(m, "main_msg_1", 0, 0, UINT32_MAX, "main_message"));
        l.message.main_msg_2 = static_cast<dev_ulong>(integer_at(m, "main_msg_2", 0, 0, UINT32_MAX, "main_message"));
        l.message.main_msg_3 = static_cast<dev_ulong>(integer_at(m, "main_msg_3", 0, 0, UINT32_MAX, "main_message"));
        copy_text(l.message.msg_detail_filename, sizeof l.message.msg_detail_filename,
                  text_at(m, "msg_detail_filename", "main_message"), "main_message.msg_detail_filename");
        l.message.msg_detail_info =
            static_cast<dev_ulong>(integer_at(m, "msg_detail_info", 0, 0, UINT32_MAX, "main_message"));
    }
    if (s.contains("scan_pages")) {
        const json& p = s.at("scan_pages");
        if (!p.is_array()) bad("scan_pages must be a list");
        for (const json& page : p) {
            if (!page.is_string()) bad("a scan page must be a string");
            l.scan_pages.push_back(page.get<std::string>());
        }
    }
    l.scan_chunk = static_cast<std::size_t>(integer_at(s, "scan_chunk", XSI_AIS_JOB_GET_SCAN_DATA_SIZE, 1,
                                                       XSI_AIS_JOB_GET_SCAN_DATA_SIZE, "job"));
    if (s.contains("run_jobs")) {
        if (!s.at("run_jobs").is_boolean()) bad("run_jobs must be true or false");
        l.run_jobs = s.at("run_jobs").get<bool>();
    }
    l.pages = static_cast<unsigned>(integer_at(s, "pages", 1, 0, 1000, "job"));
    l.user_name = text_at(s, "user_name", "job");
    if (l.user_name.size() >= XSI_AIS_JOB_STATE_USER_NAME_SIZE) bad("user_name is too long");
    if (s.contains("ocr")) {
        const json& o = s.at("ocr");
        if (!o.is_array()) bad("ocr must be a list");
        for (std::size_t i = 0; i < o.size(); ++i) l.ocr.push_back(parse_ocr(o[i], i));
    }
    return l;
}

// ---- The service ------------------------------------------------------------------------------------

constexpr unsigned int kFirstHandler = 1;
constexpr unsigned int kFirstService = 1001;
constexpr unsigned int kFirstUserJob = 2001;

class job_service final : public jbrg_sim::service {
public:
    job_service() : layout_(parse(json::object())) {}

    // Under the device lock, as every member below.
    void load(const json& scenario) override {
        layout next = parse(scenario);
        layout_ = std::move(next);
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

job_service& jobs() {
    static job_service* s = new job_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const job_service& registered = jobs();

// The three-value settings a set answers before any was set.
values3 three_of(const jobinfo& j, int id) {
    auto t = j.now.threes.find(id);
    return t == j.now.threes.end() ? values3{} : t->second;
}

bool known_address_type(dev_ulong t) { return t >= XSI_AIS_JOB_ADDRESS_FTP && t <= XSI_AIS_JOB_ADDRESS_FAX; }

// Lets the user job run on the service's IPC thread (defined with the observers below). Under the device lock.
void post_run(unsigned int user_job_id);

}  // namespace

// ---- The facade ---------------------------------------------------------------------------------------

xsi_ais_job_facade* xsi_ais_job_facade::xsi_ais_job_get_instance() {
    static xsi_ais_job_facade* instance = new xsi_ais_job_facade;
    return instance;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id) {
    jbrg_sim::op call("xsi_ais_job_generate_jobinfo", category, &handler_id);
    if (call.forced()) {
        call.out("handler_id", &handler_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    PLAT_RESULT r = jobs().generate(category, 0, handler_id);
    call.out("handler_id", &handler_id);
    return r;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_generate_jobinfo_bkg(XSI_AIS_JOB_CATEGORY category, dev_ulong cert_id,
                                                                 unsigned int& handler_id) {
    jbrg_sim::op call("xsi_ais_job_generate_jobinfo_bkg", category, cert_id, &handler_id);
    if (call.forced()) {
        call.out("handler_id", &handler_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    PLAT_RESULT r = jobs().generate(category, cert_id, handler_id);
    call.out("handler_id", &handler_id);
    return r;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      unsigned int value) {
    jbrg_sim::op call("xsi_ais_job_set_value", handler_id, data_id, value);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.numbers[data_id] = value;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      std::string value) {
    jbrg_sim::op call("xsi_ais_job_set_value", handler_id, data_id, value);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || !s->text) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.texts[data_id] = std::move(value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id,
                                                      unsigned int value_1, unsigned int value_2,
                                                      unsigned int value_3) {
    jbrg_sim::op call("xsi_ais_job_set_value", handler_id, setting_id, value_1, value_2, value_3);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || !known_phb_setting(setting_id)) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.threes[setting_id] = values3{value_1, value_2, value_3};
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      unsigned int& value) {
    jbrg_sim::op call("xsi_ais_job_get_value", handler_id, data_id, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    value = j->now.numbers[data_id];
    call.out("value", &value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      std::string& value) {
    jbrg_sim::op call("xsi_ais_job_get_value", handler_id, data_id, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || !s->text) return XSI_AIS_JOB_PARAM_ERROR;
    value = j->now.texts[data_id];
    call.out("value", &value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id,
                                                      unsigned int& value_1, unsigned int& value_2,
                                                      unsigned int& value_3) {
    jbrg_sim::op call("xsi_ais_job_get_value", handler_id, setting_id, &value_1, &value_2, &value_3);
    auto outs = [&] {
        call.out("value_1", &value_1);
        call.out("value_2", &value_2);
        call.out("value_3", &value_3);
    };
    if (call.forced()) {
        outs();
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || !known_phb_setting(setting_id)) return XSI_AIS_JOB_PARAM_ERROR;
    values3 v = three_of(*j, setting_id);
    value_1 = v.v1;
    value_2 = v.v2;
    value_3 = v.v3;
    outs();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_default_jobinfo_val(XSI_AIS_JOB_SETTING key, unsigned int& value) {
    jbrg_sim::op call("xsi_ais_job_get_default_jobinfo_val", key, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    const setting_def* s = setting(key);
    if (s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    value = jobs().default_of(*s);
    call.out("value", &value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_reset_jobinfo(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_reset_jobinfo", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    // Back to the defaults a new set of its category starts from; destinations, the saved copy and what
    // was prepared go too.
    j->now = jobs().initial(j->category);
    j->copy.reset();
    j->next_address = 1;
    j->prepared.clear();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_commit_jobinfo(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_commit_jobinfo", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    // The changes since copy_jobinfo stand; the saved copy is dropped.
    j->copy.reset();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_rollback_jobinfo(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_rollback_jobinfo", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    if (!j->copy) return XSI_AIS_JOB_RET_NOT_COPY_JOBINFO;
    j->now = std::move(*j->copy);
    j->copy.reset();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_copy_jobinfo(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_copy_jobinfo", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    if (!j->copy) {
        std::size_t copies = static_cast<std::size_t>(std::count_if(
            jobs().jobinfos.begin(), jobs().jobinfos.end(), [](const auto& k) { return k.second.copy.has_value(); }));
        if (copies >= jobs().scenario().limit.copies) return XSI_AIS_JOB_COPY_JOBINFO_LIMIT_OVER;
    }
    // A second copy of the same set replaces its first.
    j->copy = j->now;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_delete_jobinfo(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_delete_jobinfo", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    return jobs().jobinfos.erase(handler_id) == 1 ? XSI_AIS_JOB_OK : XSI_AIS_JOB_PARAM_ERROR;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_basic_func_set_value(XSI_AIS_JOB_FUNC_TYPE func_type,
                                                                 XSI_AIS_JOB_SETTING data_id, unsigned int value) {
    jbrg_sim::op call("xsi_ais_job_basic_func_set_value", func_type, data_id, value);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    const setting_def* s = setting(data_id);
    if (!known_func(func_type) || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    jobs().function_defaults[func_type][data_id] = value;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_signage_mode(XSI_AIS_JOB_FUNC_TYPE func_type,
                                                             XSI_AIS_JOB_SIGNAGE_MODE mode) {
    jbrg_sim::op call("xsi_ais_job_set_signage_mode", func_type, mode);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    if (!known_func(func_type) || static_cast<int>(mode) < XSI_AIS_JOB_SIGNAGE_OFF || mode > XSI_AIS_JOB_SIGNAGE_EXCLUSIVE) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    jobs().signage[func_type] = mode;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_notify_reset_default_value() {
    jbrg_sim::op call("xsi_ais_job_notify_reset_default_value");
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    // The functions' own defaults go; new sets start from the device defaults again.
    jobs().function_defaults[0].clear();
    jobs().function_defaults[1].clear();
    return XSI_AIS_JOB_OK;
}

// ---- Destinations -------------------------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_add_address(unsigned int handler_id, unsigned int& address_id,
                                                        const XSI_AIS_JOB_SEND_INFO& info) {
    jbrg_sim::op call("xsi_ais_job_add_address", handler_id, &address_id, &info);
    if (call.forced()) {
        call.out("address_id", &address_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || !known_address_type(info.address_type)) return XSI_AIS_JOB_PARAM_ERROR;
    if (j->now.addresses.size() >= XSI_AIS_JOB_ADDRESS_LIST_NUM) return XSI_AIS_JOB_LIMIT;
    address_id = j->next_address++;
    j->now.addresses[address_id] = info;
    call.out("address_id", &address_id);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_update_address(unsigned int handler_id, unsigned int address_id,
                                                           const XSI_AIS_JOB_SEND_INFO& info) {
    jbrg_sim::op call("xsi_ais_job_update_address", handler_id, address_id, &info);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || !known_address_type(info.address_type)) return XSI_AIS_JOB_PARAM_ERROR;
    auto a = j->now.addresses.find(address_id);
    if (a == j->now.addresses.end()) return XSI_AIS_JOB_PARAM_ERROR;
    a->second = info;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_delete_address(unsigned int handler_id, unsigned int address_id) {
    jbrg_sim::op call("xsi_ais_job_delete_address", handler_id, address_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || j->now.addresses.erase(address_id) == 0) return XSI_AIS_JOB_PARAM_ERROR;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_delete_all_address(unsigned int handler_id) {
    jbrg_sim::op call("xsi_ais_job_delete_all_address", handler_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.addresses.clear();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_address(unsigned int handler_id, unsigned int address_id,
                                                        XSI_AIS_JOB_SEND_INFO& info) {
    jbrg_sim::op call("xsi_ais_job_get_address", handler_id, address_id, &info);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    auto a = j->now.addresses.find(address_id);
    if (a == j->now.addresses.end()) return XSI_AIS_JOB_PARAM_ERROR;
    info = a->second;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_address_id(unsigned int handler_id, unsigned int& count,
                                                           std::vector<unsigned int>& address_ids) {
    jbrg_sim::op call("xsi_ais_job_get_address_id", handler_id, &count, &address_ids);
    if (call.forced()) {
        call.out("count", &count);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    address_ids.clear();
    for (const auto& [id, info] : j->now.addresses) address_ids.push_back(id);
    count = static_cast<unsigned int>(address_ids.size());
    call.out("count", &count);
    return XSI_AIS_JOB_OK;
}

// ---- Services and user jobs ---------------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_start(XSI_AIS_JOB_CATEGORY category, unsigned int handler_id,
                                                  unsigned int& service_id) {
    jbrg_sim::op call("xsi_ais_job_start", category, handler_id, &service_id);
    if (call.forced()) {
        call.out("service_id", &service_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    job_service& s = jobs();
    if (!known_category(category)) return XSI_AIS_JOB_NO_CATEGORY;
    jobinfo* j = s.find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    if (j->category != category) return XSI_AIS_JOB_NO_CATEGORY;
    if (s.prohibited_state == XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT) return XSI_AIS_JOB_OUTPUT_PROHIBITING;
    if (s.start_prohibited(*j)) return XSI_AIS_JOB_START_PROHIBITION;
    // What each category needs before it can start.
    bool ready = true;
    switch (category) {
        case XSI_AIS_JOB_CATEGORY_SEND:
        case XSI_AIS_JOB_CATEGORY_FAX:
            ready = !j->now.addresses.empty();
            break;
        case XSI_AIS_JOB_CATEGORY_BOX:
            ready = j->prepared == "box";
            break;
        case XSI_AIS_JOB_CATEGORY_DIRECT_PRINT:
            ready = j->prepared == "direct_print" || j->prepared == "stream";
            break;
        case XSI_AIS_JOB_CATEGORY_RETRIEVE:
            ready = j->prepared == "retrieve";
            break;
        default:
            break;
    }
    if (!ready) return XSI_AIS_JOB_PARAM_ERROR;
    if (s.running_services() >= s.scenario().limit.services) return XSI_AIS_JOB_LIMIT;
    service_id = s.next_service++;
    s.services[service_id] = service_rec{handler_id, category, j->cert_id, j->prepared, 0};
    call.out("service_id", &service_id);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_kick(unsigned int service_id, unsigned int& user_job_id) {
    jbrg_sim::op call("xsi_ais_job_kick", service_id, &user_job_id);
    if (call.forced()) {
        call.out("user_job_id", &user_job_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    job_service& s = jobs();
    auto sv = s.services.find(service_id);
    // A service runs once.
    if (sv == s.services.end() || sv->second.user_job_id != 0) return XSI_AIS_JOB_ILLEGAL_SERVICE_ID;
    if (s.running_user_jobs() >= s.scenario().limit.user_jobs) return XSI_AIS_JOB_USER_JOB_LIMIT_ERROR;
    user_job_id = s.next_user_job++;
    sv->second.user_job_id = user_job_id;
    user_job_rec u;
    u.info.user_job_id = user_job_id;
    u.info.service_id = service_id;
    u.info.handler_id = sv->second.handler_id;
    u.info.category = sv->second.category;
    u.info.cert_id = sv->second.cert_id;
    u.info.pages = s.pages;
    if (jobinfo* j = s.find(sv->second.handler_id); j != nullptr) u.numbers = j->now.numbers;
    s.user_jobs[user_job_id] = std::move(u);
    if (s.run_jobs) post_run(user_job_id);
    call.out("user_job_id", &user_job_id);
    return XSI_AIS_JOB_OK;
}

namespace {

PLAT_RESULT cancel_job(unsigned int service_id, unsigned int user_job_id, dev_ulong cert_id, bool bkg) {
    auto lock = jbrg_sim::device_lock();
    job_service& s = jobs();
    auto u = s.user_jobs.find(user_job_id);
    if (u == s.user_jobs.end()) return XSI_AIS_JOB_NOT_FOUND;
    if (u->second.info.service_id != service_id) return XSI_AIS_JOB_ILLEGAL_SERVICE_ID;
    if (u->second.info.cancelled) return XSI_AIS_JOB_CANCELED;
    // A job that has ended can no longer be cancelled.
    if (u->second.info.ended) return XSI_AIS_JOB_CANCEL_REJECT;
    u->second.info.cancelled = true;
    u->second.info.cancel_cert_id = cert_id;
    u->second.info.cancel_bkg = bkg;
    // The job ends as cancelled on the service's thread, after whatever it was reporting.
    post_run(user_job_id);
    return XSI_AIS_JOB_OK;
}

// The user job of a running service, for continuous reading.
PLAT_RESULT running_service(unsigned int service_id, user_job_rec*& job) {
    job_service& s = jobs();
    auto sv = s.services.find(service_id);
    if (sv == s.services.end()) return XSI_AIS_JOB_ILLEGAL_SERVICE_ID;
    if (sv->second.user_job_id == 0) return XSI_AIS_JOB_WAIT_EXEC;
    job = &s.user_jobs.at(sv->second.user_job_id);
    if (job->info.cancelled) return XSI_AIS_JOB_CANCELED;
    // Only a job that reads originals reads them continuously.
    if (kind_of(job->info.category) != XSI_AIS_JOB_KIND_SCAN && job->info.category != XSI_AIS_JOB_CATEGORY_COPY) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    return XSI_AIS_JOB_OK;
}

}  // namespace

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_cancel(unsigned int service_id, unsigned int user_job_id,
                                                   dev_ulong cert_id) {
    jbrg_sim::op call("xsi_ais_job_cancel", service_id, user_job_id, cert_id);
    if (call.forced()) return call.result();
    return cancel_job(service_id, user_job_id, cert_id, false);
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_cancel_bkg(unsigned int service_id, unsigned int user_job_id,
                                                       dev_ulong cert_id) {
    jbrg_sim::op call("xsi_ais_job_cancel_bkg", service_id, user_job_id, cert_id);
    if (call.forced()) return call.result();
    return cancel_job(service_id, user_job_id, cert_id, true);
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_continuous_read(unsigned int service_id) {
    jbrg_sim::op call("xsi_ais_job_continuous_read", service_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    user_job_rec* job = nullptr;
    if (PLAT_RESULT r = running_service(service_id, job); r != XSI_AIS_JOB_OK) return r;
    job->info.continuous_read = true;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_continuous_read_end(unsigned int service_id) {
    jbrg_sim::op call("xsi_ais_job_continuous_read_end", service_id);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    user_job_rec* job = nullptr;
    if (PLAT_RESULT r = running_service(service_id, job); r != XSI_AIS_JOB_OK) return r;
    if (!job->info.continuous_read) return XSI_AIS_JOB_PARAM_ERROR;
    job->info.continuous_read = false;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_service_id(unsigned int user_job_id, unsigned int& service_id) {
    jbrg_sim::op call("xsi_ais_job_get_service_id", user_job_id, &service_id);
    if (call.forced()) {
        call.out("service_id", &service_id);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    auto u = jobs().user_jobs.find(user_job_id);
    if (u == jobs().user_jobs.end()) return XSI_AIS_JOB_NOT_FOUND;
    service_id = u->second.info.service_id;
    call.out("service_id", &service_id);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_job_list(XSI_AIS_JOB_KIND kind, std::vector<unsigned int>& user_job_ids) {
    jbrg_sim::op call("xsi_ais_job_get_job_list", kind, &user_job_ids);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    if (kind < XSI_AIS_JOB_KIND_ALL || kind > XSI_AIS_JOB_KIND_FAX) return XSI_AIS_JOB_PARAM_ERROR;
    user_job_ids.clear();
    for (const auto& [id, u] : jobs().user_jobs) {
        if (u.info.cancelled || u.info.ended) continue;
        if (kind == XSI_AIS_JOB_KIND_ALL || kind_of(u.info.category) == kind) user_job_ids.push_back(id);
    }
    return XSI_AIS_JOB_OK;
}

// ---- Prohibition and panel messages ---------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_check_state_of_prohibition() {
    jbrg_sim::op call("xsi_ais_job_check_state_of_prohibition");
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    return jobs().prohibited_state == XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT ? XSI_AIS_JOB_OUTPUT_PROHIBITING
                                                                          : XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION state) {
    jbrg_sim::op call("xsi_ais_job_set_state_of_prohibition", state);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    if (state != XSI_AIS_STATE_OF_PROHIBITION_PERMIT && state != XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    jobs().prohibited_state = state;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_start_phb(unsigned int handler_id, int& prohibited) {
    jbrg_sim::op call("xsi_ais_job_get_start_phb", handler_id, &prohibited);
    if (call.forced()) {
        call.out("prohibited", &prohibited);
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    prohibited = jobs().start_prohibited(*j) ? 1 : 0;
    call.out("prohibited", &prohibited);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_disable_info(unsigned int handler_id, XSI_AIS_PHB_DISABLE_ITEM item,
                                                             unsigned short& value) {
    jbrg_sim::op call("xsi_ais_job_get_disable_info", handler_id, item, &value);
    auto out = [&] {
        dev_ulong v = value;
        call.out("value", &v);
        value = static_cast<unsigned short>(v);
    };
    if (call.forced()) {
        out();
        return call.result();
    }
    auto lock = jbrg_sim::device_lock();
    if (jobs().find(handler_id) == nullptr || item < 0 || item >= kDisableItemCount) return XSI_AIS_JOB_PARAM_ERROR;
    value = jobs().scenario().disable[item];
    out();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_main_message(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& msg) {
    jbrg_sim::op call("xsi_ais_job_get_main_message", handler_id, &msg);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    if (jobs().find(handler_id) == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    msg = jobs().scenario().message;
    return XSI_AIS_JOB_OK;
}

// ---- Documents and data ---------------------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_box_job_prepare(unsigned int handler_id,
                                                            XSI_AIS_BOX_JOB_INIT_SETTING& setting) {
    jbrg_sim::op call("xsi_ais_job_box_job_prepare", handler_id, &setting);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || setting.box_job_type < XSI_AIS_BOX_JOB_PRINT || setting.box_job_type > XSI_AIS_BOX_JOB_STORE) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    j->prepared = "box";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_direct_print_prepare(unsigned int handler_id, char* file_path,
                                                                 char* file_name) {
    jbrg_sim::op call("xsi_ais_job_direct_print_prepare", handler_id, file_path, file_name);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || file_path == nullptr || file_name == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    j->prepared = "direct_print";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_direct_print_prepare(unsigned int handler_id,
                                                                 XSI_AIS_JOB_STREAM_WRITE_FILE file_format) {
    jbrg_sim::op call("xsi_ais_job_direct_print_prepare", handler_id, file_format);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || file_format < XSI_AIS_JOB_STREAM_FILE_PDF || file_format > XSI_AIS_JOB_STREAM_FILE_XPS) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    j->prepared = "stream";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_write_stream_data(unsigned int user_job_id,
                                                              XSI_AIS_JOB_WRITE_STREAM_DATA& data) {
    jbrg_sim::op call("xsi_ais_job_write_stream_data", user_job_id, &data);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    auto u = jobs().user_jobs.find(user_job_id);
    if (u == jobs().user_jobs.end()) return XSI_AIS_JOB_NOT_FOUND;
    jbrg_sim::job::user_job_info& job = u->second.info;
    if (job.cancelled) return XSI_AIS_JOB_CANCELED;
    const service_rec& sv = jobs().services.at(job.service_id);
    // Only a stream job takes data, and only until its stream has ended.
    if (sv.prepared != "stream" || job.stream_state == XSI_AIS_JOB_STREAM_END ||
        job.stream_state == XSI_AIS_JOB_STREAM_ABORT) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    if (data.data_size > XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE || data.stream_state > XSI_AIS_JOB_STREAM_ABORT) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    if (job.stream.size() + data.data_size > jobs().scenario().limit.stream_bytes) return XSI_AIS_JOB_HDD_FULL;
    job.stream.append(reinterpret_cast<const char*>(data.stream_data), data.data_size);
    ++job.stream_chunks;
    job.stream_state = static_cast<int>(data.stream_state);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_retrieve_document_prepare(unsigned int handler_id, char* box_pass,
                                                                      dev_ulong box_id, dev_ulong doc_id,
                                                                      char* store_path) {
    jbrg_sim::op call("xsi_ais_job_retrieve_document_prepare", handler_id, box_pass, box_id, doc_id, store_path);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr || store_path == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    j->prepared = "retrieve";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_combine_document(unsigned int handler_id,
                                                             XSI_AIS_PHB_COMBINE_DOC_INFO& info) {
    jbrg_sim::op call("xsi_ais_job_combine_document", handler_id, &info);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    if (jobs().find(handler_id) == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_scan_data(unsigned int user_job_id, XSI_AIS_JOB_GET_SCAN_DATA& data) {
    jbrg_sim::op call("xsi_ais_job_get_scan_data", user_job_id, &data);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    auto u = jobs().user_jobs.find(user_job_id);
    if (u == jobs().user_jobs.end()) return XSI_AIS_JOB_NOT_FOUND;
    user_job_rec& job = u->second;
    if (job.info.cancelled) return XSI_AIS_JOB_CANCELED;
    if (job.info.category != XSI_AIS_JOB_CATEGORY_SCAN) return XSI_AIS_JOB_PARAM_ERROR;
    const std::vector<std::string>& pages = jobs().scenario().scan_pages;
    if (job.scan_done || pages.empty()) return XSI_AIS_NO_HIT_JOB;
    // The pages in order, each in chunks of at most scan_chunk bytes; the last chunk of a page says so.
    const std::string& page = pages[job.scan_page];
    std::size_t n = std::min(page.size() - job.scan_offset, jobs().scenario().scan_chunk);
    std::memcpy(data.scan_data, page.data() + job.scan_offset, n);
    data.data_size = static_cast<dev_ulong>(n);
    job.scan_offset += n;
    if (job.scan_offset < page.size()) {
        data.doc_state = XSI_AIS_JOB_SCAN_DATA_CONTINUE;
    } else if (job.scan_page + 1 < pages.size()) {
        data.doc_state = XSI_AIS_JOB_SCAN_PAGE_END;
        ++job.scan_page;
        job.scan_offset = 0;
    } else {
        data.doc_state = XSI_AIS_JOB_SCAN_DOC_END;
        job.scan_done = true;
    }
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_ocr_text_data(unsigned int handler_id, XSI_AIS_JOB_GET_OCR_DATA& data) {
    jbrg_sim::op call("xsi_ais_job_get_ocr_text_data", handler_id, &data);
    if (call.forced()) return call.result();
    auto lock = jbrg_sim::device_lock();
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    const std::vector<ocr_record>& records = jobs().scenario().ocr;
    if (j->ocr_next >= records.size()) return XSI_AIS_NO_HIT_JOB;
    data = records[j->ocr_next].data;
    ++j->ocr_next;
    data.retrieve_state = j->ocr_next < records.size() ? XSI_AIS_JOB_OCR_CONTINUE : XSI_AIS_JOB_OCR_END;
    return XSI_AIS_JOB_OK;
}

// ---- Control surface ------------------------------------------------------------------------------------

namespace jbrg_sim::job {

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

// ---- Observers and running jobs ------------------------------------------------------------------------
//
// The registered observers are kept apart from the device lock: notifications run on the service's IPC
// thread ("job") without it, so that an observer may call back into the device. A job run is one task on
// that thread: it reports the job's start, its pages (to the job information observers, through that
// service's own thread), the end of scanning for jobs that read originals, and the end, followed by the
// job log update. Before each step it looks at the job again: a cancelled job reports its cancelled end
// instead and stops; a job that has ended reports nothing more.

namespace {

std::mutex& observers_mutex() {
    static auto* m = new std::mutex;
    return *m;
}

std::vector<xsi_ais_job_observer*>& observers() {
    static auto* list = new std::vector<xsi_ais_job_observer*>;
    return *list;
}

constexpr dev_ulong kJobSender = 1;  // the job service, as message headers name it

// Hands one message to every registered observer; on the "job" thread.
int32_t dispatch_all(int msg_id, std::vector<char>& data) {
    static std::atomic<dev_ulong> sequence{0};
    std::vector<xsi_ais_job_observer*> targets;
    {
        std::lock_guard<std::mutex> guard(observers_mutex());
        targets = observers();
    }
    int32_t answer = 0;
    for (xsi_ais_job_observer* o : targets) {
        gen_ipc_msghdr header{static_cast<dev_ulong>(msg_id), kJobSender, static_cast<dev_ulong>(data.size()),
                              ++sequence};
        int32_t a = o->dispatch(1, data.data(), static_cast<unsigned int>(data.size()), header);
        if (answer == 0) answer = a;
    }
    return answer;
}

// The same from any other thread: runs on the "job" thread and waits.
int32_t send(int msg_id, std::vector<char> data) {
    return jbrg_sim::deliver("job", [msg_id, data]() mutable { return dispatch_all(msg_id, data); });
}

void append(std::vector<char>& data, const void* p, std::size_t n) {
    data.insert(data.end(), static_cast<const char*>(p), static_cast<const char*>(p) + n);
}

template <class... R>
std::vector<char> message(const R&... parts) {
    std::vector<char> data;
    (append(data, &parts, sizeof parts), ...);
    return data;
}

// Input and output device of a job of the category, as job states report them.
struct devices {
    uint8_t in, out;
};
devices devices_of(int category) {
    switch (category) {
        case XSI_AIS_JOB_CATEGORY_COPY: return {1, 2};          // scanner to printer
        case XSI_AIS_JOB_CATEGORY_SCAN: return {1, 3};          // scanner to the application
        case XSI_AIS_JOB_CATEGORY_SEND: return {1, 4};          // scanner to the network
        case XSI_AIS_JOB_CATEGORY_FAX: return {1, 5};           // scanner to the fax line
        case XSI_AIS_JOB_CATEGORY_BOX: return {6, 2};           // box to printer
        case XSI_AIS_JOB_CATEGORY_DIRECT_PRINT: return {3, 2};  // the application to printer
        case XSI_AIS_JOB_CATEGORY_RETRIEVE: return {6, 3};      // box to the application
        default: return {0, 0};
    }
}

XSI_AIS_JOB_STATE state_of(const user_job_rec& u, dev_ulong kind, dev_ulong result, const std::string& user) {
    XSI_AIS_JOB_STATE st{};
    st.state = kind;
    st.user_job_id = u.info.user_job_id;
    st.result = result;
    st.job_mode = static_cast<uint16_t>(u.info.category);
    std::memcpy(st.user_name, user.data(), std::min(user.size(), sizeof st.user_name - 1));
    devices d = devices_of(u.info.category);
    st.in_dev = d.in;
    st.out_dev = d.out;
    return st;
}

// One step of a job run, decided under the device lock and reported without it.
struct step {
    enum { none, start, page, scan_end, end } what = none;
    XSI_AIS_JOB_STATE state{};
    int category = 0;
    unsigned page_number = 0;
    std::map<int, unsigned int> numbers;
    dev_ulong receipt_id = 0;
};

step next_step(unsigned int user_job_id, unsigned long generation) {
    auto lock = jbrg_sim::device_lock();
    job_service& s = jobs();
    step st;
    if (s.generation != generation) return st;
    auto found = s.user_jobs.find(user_job_id);
    if (found == s.user_jobs.end() || found->second.info.ended) return st;
    user_job_rec& u = found->second;
    jbrg_sim::job::user_job_info& i = u.info;
    st.category = i.category;
    st.numbers = u.numbers;
    const std::string& user = s.scenario().user_name;
    bool reads = kind_of(i.category) == XSI_AIS_JOB_KIND_SCAN;
    if (i.cancelled) {
        i.ended = true;
        i.end_result = XSI_AIS_JOB_RESULT_CANCEL;
        st.what = step::end;
        st.state = state_of(u, XSI_AIS_JOB_STATE_END, XSI_AIS_JOB_RESULT_CANCEL, user);
    } else if (!i.started) {
        i.started = true;
        st.what = step::start;
        st.state = state_of(u, XSI_AIS_JOB_STATE_START, 0, user);
    } else if (i.pages_done < i.pages) {
        st.what = step::page;
        st.page_number = ++i.pages_done;
        st.state = state_of(u, XSI_AIS_JOB_STATE_START, 0, user);
    } else if (reads && !u.scan_end_reported) {
        u.scan_end_reported = true;
        st.what = step::scan_end;
        st.state = state_of(u, XSI_AIS_JOB_STATE_SCAN_END, 0, user);
    } else {
        i.ended = true;
        i.end_result = XSI_AIS_JOB_RESULT_COMPLETE;
        st.what = step::end;
        st.receipt_id = s.next_receipt++;
        st.state = state_of(u, XSI_AIS_JOB_STATE_END, XSI_AIS_JOB_RESULT_COMPLETE, user);
    }
    return st;
}

void report_page(const step& st) {
    auto n = [&](int id) {
        auto v = st.numbers.find(id);
        return static_cast<int32_t>(v == st.numbers.end() ? 0 : v->second);
    };
    uint32_t job = st.state.user_job_id;
    switch (kind_of(st.category)) {
        case XSI_AIS_JOB_KIND_SCAN: {
            XSI_AIS_EVENT_SCAN_PAGE e{};
            e.user_job_id = job;
            e.page_number = st.page_number;
            e.scan_paper_size = n(XSI_AIS_JOB_SETTING_ORIGINAL_SIZE);
            e.duplex = n(XSI_AIS_JOB_SETTING_DUPLEX);
            e.color_mono = n(XSI_AIS_JOB_SETTING_COLOR_MODE);
            e.resolution = n(XSI_AIS_JOB_SETTING_RESOLUTION);
            jbrg_sim::jobinfo::notify_scan_page_info(e);
            break;
        }
        case XSI_AIS_JOB_KIND_FAX: {
            XSI_AIS_EVENT_SEND_PAGE e{job, st.page_number};
            jbrg_sim::jobinfo::notify_fax_send_page_info(e);
            break;
        }
        default: {
            XSI_AIS_EVENT_PRINT_PAGE e{};
            e.user_job_id = job;
            e.page_number = st.page_number;
            e.exhaust = 1;
            e.cass = n(XSI_AIS_JOB_SETTING_PAPER_SOURCE);
            e.paper_size = n(XSI_AIS_JOB_SETTING_ORIGINAL_SIZE);
            e.duplex = n(XSI_AIS_JOB_SETTING_DUPLEX);
            e.color_mode = n(XSI_AIS_JOB_SETTING_COLOR_MODE);
            jbrg_sim::jobinfo::notify_print_page_info(e);
            break;
        }
    }
}

// The whole run (or what is left of it); on the "job" thread.
int32_t run(unsigned int user_job_id, unsigned long generation) {
    for (;;) {
        step st = next_step(user_job_id, generation);
        if (st.what == step::none) return 0;
        if (st.what == step::page) {
            report_page(st);
            continue;
        }
        auto data = message(st.state);
        dispatch_all(XSI_AIS_JOB_MSG_JOB_STATE_CHANGED, data);
        if (st.what == step::end) {
            if (st.receipt_id != 0) {
                XSI_AIS_EVENT_JOB_UPDATE_LOG e{user_job_id, st.receipt_id};
                jbrg_sim::jobinfo::notify_job_update_log(e);
            }
            return 0;
        }
    }
}

void post_run(unsigned int user_job_id) {
    unsigned long generation = jobs().generation;
    // Nobody waits: the run reports to whoever is registered when it gets there.
    (void)jbrg_sim::deliver_async("job", [user_job_id, generation] { return run(user_job_id, generation); });
}

}  // namespace

xsi_ais_job_observer::~xsi_ais_job_observer() = default;

PLAT_RESULT xsi_ais_job_observer::dispatch(long, char* data, unsigned int size, gen_ipc_msghdr header) {
    auto u32 = [&](std::size_t at) {
        uint32_t v = 0;
        std::memcpy(&v, data + at, sizeof v);
        return v;
    };
    if (data == nullptr && size != 0) return XSI_AIS_JOB_OBSERVER_BAD_MESSAGE;
    switch (static_cast<int>(header.msg_id)) {
        case XSI_AIS_JOB_MSG_JOB_STATE_CHANGED: {
            XSI_AIS_JOB_STATE st{};
            if (size != sizeof st) break;
            std::memcpy(&st, data, sizeof st);
            return notify_job_state_changed(st);
        }
        case XSI_AIS_JOB_MSG_SCAN_COUNT:
            if (size != 8) break;
            return notify_scan_count(u32(0), u32(4));
        case XSI_AIS_JOB_MSG_START_PHB:
            if (size != 4) break;
            return notify_start_phb(u32(0));
        case XSI_AIS_JOB_MSG_DISABLE_INFO:
            if (size != 4) break;
            return notify_disable_info(u32(0));
        case XSI_AIS_JOB_MSG_MAIN_MESSAGE:
            if (size != 4) break;
            return notify_main_message(u32(0));
        case XSI_AIS_JOB_MSG_PHB_INFO: {
            XSI_AIS_PHB_INFO info{};
            if (size != 4 + sizeof info) break;
            std::memcpy(&info, data + 4, sizeof info);
            return notify_phb_info(u32(0), info);
        }
        case XSI_AIS_JOB_MSG_MESSAGE_INFO: {
            XSI_AIS_PHB_GET_MESSAGE msg{};
            if (size != 4 + sizeof msg) break;
            std::memcpy(&msg, data + 4, sizeof msg);
            return notify_message_info(u32(0), msg);
        }
        case XSI_AIS_JOB_MSG_APP_SERVICE_REQUEST: {
            XSI_AIS_JOB_SERVICE_MSG msg{};
            if (size != 4 + sizeof msg) break;
            std::memcpy(&msg, data + 4, sizeof msg);
            return notify_app_service_request(u32(0), msg);
        }
        default:
            break;
    }
    return XSI_AIS_JOB_OBSERVER_BAD_MESSAGE;
}

PLAT_RESULT xsi_ais_job_observer::notify_job_state_changed(XSI_AIS_JOB_STATE) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_scan_count(unsigned int, unsigned int) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_start_phb(unsigned int) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_disable_info(unsigned int) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_main_message(unsigned int) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_phb_info(unsigned int, XSI_AIS_PHB_INFO&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_message_info(unsigned int, XSI_AIS_PHB_GET_MESSAGE&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_job_observer::notify_app_service_request(dev_ulong, const XSI_AIS_JOB_SERVICE_MSG&) {
    return PLAT_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_add_observer(xsi_ais_job_observer* observer) {
    jbrg_sim::op call("xsi_ais_job_add_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    std::lock_guard<std::mutex> guard(observers_mutex());
    auto& list = observers();
    if (std::find(list.begin(), list.end(), observer) != list.end()) return XSI_AIS_JOB_DUPL_OBSERVER;
    list.push_back(observer);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_remove_observer(xsi_ais_job_observer* observer) {
    jbrg_sim::op call("xsi_ais_job_remove_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    std::lock_guard<std::mutex> guard(observers_mutex());
    auto& list = observers();
    auto at = std::find(list.begin(), list.end(), observer);
    if (observer == nullptr || at == list.end()) return XSI_AIS_JOB_NO_OBSERVER;
    list.erase(at);
    return XSI_AIS_JOB_OK;
}

namespace jbrg_sim::job {

int32_t notify_job_state_changed(const XSI_AIS_JOB_STATE& state) {
    return send(XSI_AIS_JOB_MSG_JOB_STATE_CHANGED, message(state));
}
int32_t notify_scan_count(unsigned int count_1, unsigned int count_2) {
    uint32_t a = count_1, b = count_2;
    return send(XSI_AIS_JOB_MSG_SCAN_COUNT, message(a, b));
}
int32_t notify_start_phb(unsigned int value) {
    uint32_t v = value;
    return send(XSI_AIS_JOB_MSG_START_PHB, message(v));
}
int32_t notify_disable_info(unsigned int value) {
    uint32_t v = value;
    return send(XSI_AIS_JOB_MSG_DISABLE_INFO, message(v));
}
int32_t notify_main_message(unsigned int value) {
    uint32_t v = value;
    return send(XSI_AIS_JOB_MSG_MAIN_MESSAGE, message(v));
}
int32_t notify_phb_info(unsigned int handler_id, const XSI_AIS_PHB_INFO& info) {
    uint32_t h = handler_id;
    return send(XSI_AIS_JOB_MSG_PHB_INFO, message(h, info));
}
int32_t notify_message_info(unsigned int handler_id, const XSI_AIS_PHB_GET_MESSAGE& msg) {
    uint32_t h = handler_id;
    return send(XSI_AIS_JOB_MSG_MESSAGE_INFO, message(h, msg));
}
int32_t notify_app_service_request(uint32_t request_id, const XSI_AIS_JOB_SERVICE_MSG& msg) {
    return send(XSI_AIS_JOB_MSG_APP_SERVICE_REQUEST, message(request_id, msg));
}

std::size_t observer_count() {
    std::lock_guard<std::mutex> guard(observers_mutex());
    return observers().size();
}

void run_jobs(bool on) {
    ensure_loaded();
    auto lock = device_lock();
    jobs().run_jobs = on;
}

void set_pages(unsigned pages) {
    ensure_loaded();
    auto lock = device_lock();
    jobs().pages = pages;
}

bool finish(unsigned user_job_id) {
    ensure_loaded();
    unsigned long generation = 0;
    {
        auto lock = device_lock();
        if (jobs().user_jobs.count(user_job_id) == 0) return false;
        generation = jobs().generation;
    }
    deliver("job", [user_job_id, generation] { return run(user_job_id, generation); });
    auto lock = device_lock();
    auto u = jobs().user_jobs.find(user_job_id);
    return u != jobs().user_jobs.end() && u->second.info.ended;
}

}  // namespace jbrg_sim::job
