// The job service's observers, and the jobs that run on its IPC thread and report their events.
#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "box_internal.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "job_store.h"
#include "sim_internal.h"
#include "system_info_internal.h"
#include "xsi_ais_job.h"

using namespace jbrg_sim::jobsvc;

// ---- Observers and running jobs ------------------------------------------------------------------------
//
// The registered observers are kept apart from the device lock: notifications run on the service's IPC
// thread ("job") without it, so that an observer may call back into the device. A job run is one task on
// that thread: it reports the job's start, its pages (to the job information observers, through that
// service's own thread), the end of scanning for jobs that read originals, and the end, followed by the
// job log update. Before each step it looks at the job again: a cancelled job reports its cancelled end
// instead and stops; a job that has ended reports nothing more.

namespace jbrg_sim::jobsvc {

namespace {

jbrg_sim::observer_list<xsi_ais_job_observer>& observers() {
    static auto* list = new jbrg_sim::observer_list<xsi_ais_job_observer>;
    return *list;
}

constexpr dev_ulong kJobSender = 1;  // the job service, as message headers name it
constexpr uint32_t kStoredPageBytes = 100 * 1024;  // what a page stored to a box takes

// Hands one message to every registered observer; on the "job" thread.
int32_t dispatch_all(int msg_id, std::vector<char>& data) {
    static std::atomic<dev_ulong> sequence{0};
    return observers().call_each([&](xsi_ais_job_observer* o) {
        gen_ipc_msghdr header{static_cast<dev_ulong>(msg_id), kJobSender, static_cast<dev_ulong>(data.size()),
                              ++sequence};
        return o->dispatch(1, data.data(), static_cast<unsigned int>(data.size()), header);
    });
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

// What a job that ends normally leaves behind: a store box job, a document in its box (if the box still
// exists, its password still opens it and it has room; else nothing); a direct-print or stream-print job of
// a logged-in user's set, a quick-copy document under that user's name. Under the device lock.
void leave_documents(const user_job_rec& u) {
    const jbrg_sim::job::user_job_info& i = u.info;
    // Named after the set's file name ("doc" unless set) and the job, so that no two jobs' documents share one.
    std::string name = (u.doc_name.empty() ? "doc" : u.doc_name) + std::to_string(i.user_job_id);
    if (u.store_box != 0 && jbrg_sim::boxsvc::check_user_box(u.store_box, u.store_pass) == 0) {
        jbrg_sim::box::document d;
        d.name = name;
        d.pages = i.pages_done;
        d.data_size = i.pages_done * kStoredPageBytes;
        jbrg_sim::boxsvc::store(u.store_box, d);
    }
    if (i.category == XSI_AIS_JOB_CATEGORY_DIRECT_PRINT && !u.user_name.empty()) {
        jbrg_sim::box::retained_document d;
        d.type = 0;  // quick copy
        d.name = name;
        d.user_name = u.user_name;
        d.pages = i.pages_done;
        d.data_size = static_cast<uint32_t>(i.stream.size());
        jbrg_sim::boxsvc::retain(d);
    }
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
        jbrg_sim::sysinfo::count_page(i.category, u.box_job_type, u.numbers);
        st.state = state_of(u, XSI_AIS_JOB_STATE_START, 0, user);
    } else if (reads && !u.scan_end_reported) {
        u.scan_end_reported = true;
        st.what = step::scan_end;
        st.state = state_of(u, XSI_AIS_JOB_STATE_SCAN_END, 0, user);
    } else {
        i.ended = true;
        i.end_result = XSI_AIS_JOB_RESULT_COMPLETE;
        leave_documents(u);
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

}  // namespace

void post_run(unsigned int user_job_id) {
    unsigned long generation = jobs().generation;
    // Nobody waits: the run reports to whoever is registered when it gets there.
    (void)jbrg_sim::deliver_async("job", [user_job_id, generation] { return run(user_job_id, generation); });
}

}  // namespace jbrg_sim::jobsvc

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
    return observers().add(observer) ? XSI_AIS_JOB_OK : XSI_AIS_JOB_DUPL_OBSERVER;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_remove_observer(xsi_ais_job_observer* observer) {
    jbrg_sim::op call("xsi_ais_job_remove_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !observers().remove(observer)) return XSI_AIS_JOB_NO_OBSERVER;
    return XSI_AIS_JOB_OK;
}

namespace jbrg_sim::job {

using jobsvc::jobs;
using jobsvc::run;

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

std::size_t observer_count() { return observers().size(); }

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
