// The job information service: the device's job history, its send and receive lists and its image logs.
//
// The "jobinfo" section of the scenario says what the history holds:
//
//   "jobinfo": {
//     "joblogs": [
//       { "job_log_type": 1, "receipt_id": 12, "job_type": 3, "job_name": "Quote", "user_name": "Ann", ...,
//         "send":    [ { "category": 0, "destination_name": "Head office", "result": 0, "result_err": 0,
//                        "fax": { "fax_no": "0312345678", "port_no": 1, "page_number": 3, "time": 42 } },
//                      { "category": 2, "destination_name": "Ann", "mail": { "mail_address": "ann@example.com" } } ],
//         "receive": [ { "category": 0, "fax": { "destination_name": "Branch", "fax_no": "0311", "port_no": 2,
//                                                  "time": 30, "result": 0, "result_err": 0 } } ] } ],
//     "imagelogs": [ { "image_id": 7, "text": "..." } ]
//   }
//
// A job log entry takes every field of XSI_AIS_JOBINFO_JOBLOG by its name except send_num and receive_num,
// which the device counts from the entry's lists; a send or receive record takes its fields by name and its
// detail as objects named fax, i_fax, mail and pc. Left-out fields are 0 or empty. Enumerated fields are
// given as numbers; job_log_type must be one of the four logs. Entries are keyed by (job_log_type,
// receipt_id) and image logs by image_id, each at most once. Unknown keys, wrong types, numbers out of range
// and texts longer than their field are refused.
//
// Behaviour worth knowing when reading the bridge against it:
//   - A job log entry is found by receipt id and log: another log's entry with the same receipt id is a
//     different entry. An unknown entry or image log gives XSI_AIS_JOBINFO_NOT_FOUND; a log type that is not
//     one of the four gives XSI_AIS_JOBINFO_PARAM_ERROR.
//   - There is one send list and one receive list at a time. Creating one copies the entry's records; a
//     second create while the list is open gives XSI_AIS_JOBINFO_LIMIT. Each get hands out the next record;
//     after the last, XSI_AIS_JOBINFO_NO_HIT. Get or delete without an open list: XSI_AIS_JOBINFO_PARAM_ERROR.
//     A scenario load drops open lists.
//   - Deleting an image log removes it; reading it afterwards gives XSI_AIS_JOBINFO_NOT_FOUND.
//   - Out records are cleared to zero on every call that is not forced, and filled only on success; the text
//     out of retrieve_imagelog is emptied the same way. The out-value "text" of retrieve_imagelog can be forced.
//   - Every call logs its parameters in order: numbers in decimal, records and the text out as pointers.
#include <algorithm>
#include <atomic>
#include <mutex>
#include <cstring>
#include <initializer_list>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "jbrg_sim/control.h"
#include "jbrg_sim/jobinfo.h"
#include "scenario.h"
#include "sim.h"
#include "xsi_ais_jobinfo.h"

namespace {

using json = nlohmann::json;

// ---- The scenario's "jobinfo" section -------------------------------------------------------------------

using jbrg_sim::scenario_part;

dev_ulong ulong_of(const scenario_part& part, const json& object, const char* key, const std::string& where) {
    return static_cast<dev_ulong>(part.integer_at(object, key, 0, 0, UINT32_MAX, where));
}

template <class E>
E enum_of(const scenario_part& part, const json& object, const char* key, const std::string& where) {
    return static_cast<E>(part.integer_at(object, key, 0, INT32_MIN, INT32_MAX, where));
}

// The detail object `key` of a record, or an empty object when it is left out.
const json& detail_of(const scenario_part& part, const json& object, const char* key,
                      std::initializer_list<const char*> keys, const std::string& where) {
    static const json none = json::object();
    if (!object.contains(key)) return none;
    part.only_keys(object.at(key), keys, part.at(where, key));
    return object.at(key);
}

XSI_AIS_JOBINFO_SEND_INFO parse_send(const scenario_part& part, const json& s, const std::string& where) {
    part.only_keys(s, {"category", "destination_name", "result", "result_err", "fax", "i_fax", "mail", "pc"}, where);
    XSI_AIS_JOBINFO_SEND_INFO info{};
    info.category = enum_of<XSI_AIS_JOBINFO_SEND_CATEGORY_VAL>(part, s, "category", where);
    part.text_into(s, "destination_name", info.destination_name, where);
    info.result = enum_of<XSI_AIS_JOBINFO_RESULT_VAL>(part, s, "result", where);
    info.result_err = ulong_of(part, s, "result_err", where);
    const json& fax = detail_of(part, s, "fax", {"fax_no", "port_no", "page_number", "time"}, where);
    part.text_into(fax, "fax_no", info.detail.fax.fax_no, part.at(where, "fax"));
    info.detail.fax.port_no = ulong_of(part, fax, "port_no", part.at(where, "fax"));
    info.detail.fax.page_number = ulong_of(part, fax, "page_number", part.at(where, "fax"));
    info.detail.fax.time = ulong_of(part, fax, "time", part.at(where, "fax"));
    part.text_into(detail_of(part, s, "i_fax", {"i_fax_address"}, where), "i_fax_address", info.detail.i_fax.i_fax_address,
            part.at(where, "i_fax"));
    part.text_into(detail_of(part, s, "mail", {"mail_address"}, where), "mail_address", info.detail.mail.mail_address,
            part.at(where, "mail"));
    part.text_into(detail_of(part, s, "pc", {"host_name"}, where), "host_name", info.detail.pc.host_name,
                   part.at(where, "pc"));
    return info;
}

XSI_AIS_JOBINFO_RECEIVE_INFO parse_receive(const scenario_part& part, const json& r, const std::string& where) {
    part.only_keys(r, {"category", "fax", "i_fax", "mail", "pc"}, where);
    XSI_AIS_JOBINFO_RECEIVE_INFO info{};
    info.category = enum_of<XSI_AIS_JOBINFO_RECEIVE_CATEGORY_VAL>(part, r, "category", where);
    const json& fax =
        detail_of(part, r, "fax", {"destination_name", "fax_no", "port_no", "time", "result", "result_err"}, where);
    part.text_into(fax, "destination_name", info.detail.fax.destination_name, part.at(where, "fax"));
    part.text_into(fax, "fax_no", info.detail.fax.fax_no, part.at(where, "fax"));
    info.detail.fax.port_no = ulong_of(part, fax, "port_no", part.at(where, "fax"));
    info.detail.fax.time = ulong_of(part, fax, "time", part.at(where, "fax"));
    info.detail.fax.result = enum_of<XSI_AIS_JOBINFO_RESULT_VAL>(part, fax, "result", part.at(where, "fax"));
    info.detail.fax.result_err = ulong_of(part, fax, "result_err", part.at(where, "fax"));
    part.text_into(detail_of(part, r, "i_fax", {"i_fax_address"}, where), "i_fax_address", info.detail.i_fax.i_fax_address,
            part.at(where, "i_fax"));
    part.text_into(detail_of(part, r, "mail", {"mail_address"}, where), "mail_address", info.detail.mail.mail_address,
            part.at(where, "mail"));
    part.text_into(detail_of(part, r, "pc", {"host_name"}, where), "host_name", info.detail.pc.host_name,
                   part.at(where, "pc"));
    return info;
}

bool known_log(long long type) {
    return type >= XSI_AIS_JOBINFO_JOBLOG_TYPE_PRINT && type <= XSI_AIS_JOBINFO_JOBLOG_TYPE_STORE;
}

// One job log entry with its records.
struct entry {
    XSI_AIS_JOBINFO_JOBLOG log{};
    std::vector<XSI_AIS_JOBINFO_SEND_INFO> sends;
    std::vector<XSI_AIS_JOBINFO_RECEIVE_INFO> receives;
};

using entry_key = std::pair<int32_t, dev_ulong>;  // (log, receipt id)

struct history {
    std::map<entry_key, entry> entries;
    std::map<dev_ulong, std::string> images;
};

entry parse_entry(const scenario_part& part, const json& j, const std::string& where) {
    part.only_keys(j,
              {"job_log_type", "receipt_id", "job_type", "job_name", "user_name", "login_name", "domain", "dept_code",
               "dept_name", "start_time", "end_time", "received_time", "total_time", "result", "result_err",
               "input_attribute", "output_attribute", "scan_type", "print_color_mode", "copies", "completed_copies",
               "original_page_number", "total_page_number", "print_completion_page_number", "send", "receive"},
              where);
    entry e;
    XSI_AIS_JOBINFO_JOBLOG& l = e.log;
    if (!known_log(part.integer_at(j, "job_log_type", 0, INT32_MIN, INT32_MAX, where))) {
        part.fail(part.at(where, "job_log_type"), "is not a log of the device");
    }
    l.job_log_type = enum_of<XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL>(part, j, "job_log_type", where);
    l.receipt_id = ulong_of(part, j, "receipt_id", where);
    l.job_type = enum_of<XSI_AIS_JOBINFO_JOB_TYPE_VAL>(part, j, "job_type", where);
    part.text_into(j, "job_name", l.job_name, where);
    part.text_into(j, "user_name", l.user_name, where);
    part.text_into(j, "login_name", l.login_name, where);
    part.text_into(j, "domain", l.domain, where);
    part.text_into(j, "dept_code", l.dept_code, where);
    part.text_into(j, "dept_name", l.dept_name, where);
    l.start_time = ulong_of(part, j, "start_time", where);
    l.end_time = ulong_of(part, j, "end_time", where);
    l.received_time = ulong_of(part, j, "received_time", where);
    l.total_time = ulong_of(part, j, "total_time", where);
    l.result = enum_of<XSI_AIS_JOBINFO_RESULT_VAL>(part, j, "result", where);
    l.result_err = ulong_of(part, j, "result_err", where);
    l.input_attribute = ulong_of(part, j, "input_attribute", where);
    l.output_attribute = ulong_of(part, j, "output_attribute", where);
    l.scan_type = enum_of<XSI_AIS_JOBINFO_SCAN_TYPE_VAL>(part, j, "scan_type", where);
    l.print_color_mode = enum_of<XSI_AIS_JOBINFO_COLOR_MODE_VAL>(part, j, "print_color_mode", where);
    l.copies = ulong_of(part, j, "copies", where);
    l.completed_copies = ulong_of(part, j, "completed_copies", where);
    l.original_page_number = ulong_of(part, j, "original_page_number", where);
    l.total_page_number = ulong_of(part, j, "total_page_number", where);
    l.print_completion_page_number = ulong_of(part, j, "print_completion_page_number", where);
    const json& sends = part.list_at(j, "send", where);
    const json& receives = part.list_at(j, "receive", where);
    for (std::size_t i = 0; i < sends.size(); ++i) {
        e.sends.push_back(parse_send(part, sends[i], part.at(part.at(where, "send"), i)));
    }
    for (std::size_t i = 0; i < receives.size(); ++i) {
        e.receives.push_back(parse_receive(part, receives[i], part.at(part.at(where, "receive"), i)));
    }
    // The entry counts its own records.
    l.send_num = static_cast<dev_ulong>(e.sends.size());
    l.receive_num = static_cast<dev_ulong>(e.receives.size());
    return e;
}

history parse(const json& scenario) {
    history h;
    const scenario_part part(scenario, "jobinfo", {"joblogs", "imagelogs"});
    const json& joblogs = part.list_at("joblogs");
    for (std::size_t i = 0; i < joblogs.size(); ++i) {
        const std::string where = part.at("/joblogs", i);
        entry e = parse_entry(part, joblogs[i], where);
        entry_key key{e.log.job_log_type, e.log.receipt_id};
        if (h.entries.count(key) != 0) {
            part.fail(part.at(where, "receipt_id"), "the receipt id " + std::to_string(key.second) +
                                                        " is defined twice in log " + std::to_string(key.first));
        }
        h.entries.emplace(key, std::move(e));
    }
    const json& imagelogs = part.list_at("imagelogs");
    for (std::size_t n = 0; n < imagelogs.size(); ++n) {
        const json& i = imagelogs[n];
        const std::string where = part.at("/imagelogs", n);
        part.only_keys(i, {"image_id", "text"}, where);
        if (!i.contains("image_id")) part.fail(where, "needs an image_id");
        dev_ulong id = ulong_of(part, i, "image_id", where);
        if (h.images.count(id) != 0) part.fail(part.at(where, "image_id"), "is defined twice");
        h.images[id] = part.text_at(i, "text", where);
    }
    return h;
}

// ---- The service -----------------------------------------------------------------------------------------

// An open list: the records copied when it was created, and the next one to hand out.
template <class R>
struct open_list {
    std::vector<R> records;
    std::size_t next = 0;
};

class jobinfo_service final : public jbrg_sim::service {
public:
    // Under the device lock (as every member below).
    apply_step read(const json& scenario) override {
        return [this, next = parse(scenario)] {
            history_ = next;
            send_list.reset();
            receive_list.reset();
        };
    }

    // The entry of `receipt_id` in log `type`, or the failure that answers the lookup.
    PLAT_RESULT find(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type, const entry*& found) const {
        if (!known_log(type)) return XSI_AIS_JOBINFO_PARAM_ERROR;
        auto e = history_.entries.find({type, receipt_id});
        if (e == history_.entries.end()) return XSI_AIS_JOBINFO_NOT_FOUND;
        found = &e->second;
        return XSI_AIS_JOBINFO_OK;
    }

    std::map<dev_ulong, std::string>& images() { return history_.images; }

    std::optional<open_list<XSI_AIS_JOBINFO_SEND_INFO>> send_list;
    std::optional<open_list<XSI_AIS_JOBINFO_RECEIVE_INFO>> receive_list;

private:
    history history_;
};

jobinfo_service& jobinfo() {
    static jobinfo_service* s = new jobinfo_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const jobinfo_service& registered = jobinfo();

const void* ptr(const void* p) { return p; }

template <class R>
PLAT_RESULT create_list(std::optional<open_list<R>>& list, unsigned int receipt_id,
                        XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type, std::vector<R> entry::*records) {
    if (list) return XSI_AIS_JOBINFO_LIMIT;
    const entry* e = nullptr;
    if (PLAT_RESULT r = jobinfo().find(receipt_id, type, e); r != XSI_AIS_JOBINFO_OK) return r;
    list.emplace();
    list->records = e->*records;
    return XSI_AIS_JOBINFO_OK;
}

template <class R>
PLAT_RESULT next_record(std::optional<open_list<R>>& list, R& out) {
    out = R{};
    if (!list) return XSI_AIS_JOBINFO_PARAM_ERROR;
    if (list->next >= list->records.size()) return XSI_AIS_JOBINFO_NO_HIT;
    out = list->records[list->next++];
    return XSI_AIS_JOBINFO_OK;
}

template <class R>
PLAT_RESULT end_list(std::optional<open_list<R>>& list) {
    if (!list) return XSI_AIS_JOBINFO_PARAM_ERROR;
    list.reset();
    return XSI_AIS_JOBINFO_OK;
}

}  // namespace

xsi_ais_jobinfo_facade* xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance() {
    static xsi_ais_jobinfo_facade* instance = new xsi_ais_jobinfo_facade;
    return instance;
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_retrieve_joblog(unsigned int receipt_id,
                                                                    XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type,
                                                                    XSI_AIS_JOBINFO_JOBLOG& log) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_retrieve_joblog", receipt_id, type, ptr(&log));
    if (call.forced()) return call.result();
    log = XSI_AIS_JOBINFO_JOBLOG{};
    const entry* e = nullptr;
    if (PLAT_RESULT r = jobinfo().find(receipt_id, type, e); r != XSI_AIS_JOBINFO_OK) return r;
    log = e->log;
    return XSI_AIS_JOBINFO_OK;
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_create_send_info_list(unsigned int receipt_id,
                                                                          XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_create_send_info_list", receipt_id, type);
    if (call.forced()) return call.result();
    return create_list(jobinfo().send_list, receipt_id, type, &entry::sends);
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_send_info(XSI_AIS_JOBINFO_SEND_INFO& info) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_get_send_info", ptr(&info));
    if (call.forced()) return call.result();
    return next_record(jobinfo().send_list, info);
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_delete_send_info_list() {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_delete_send_info_list");
    if (call.forced()) return call.result();
    return end_list(jobinfo().send_list);
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_create_receive_info_list(unsigned int receipt_id,
                                                                             XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_create_receive_info_list", receipt_id, type);
    if (call.forced()) return call.result();
    return create_list(jobinfo().receive_list, receipt_id, type, &entry::receives);
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_receive_info(XSI_AIS_JOBINFO_RECEIVE_INFO& info) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_get_receive_info", ptr(&info));
    if (call.forced()) return call.result();
    return next_record(jobinfo().receive_list, info);
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_delete_receive_info_list() {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_delete_receive_info_list");
    if (call.forced()) return call.result();
    return end_list(jobinfo().receive_list);
}

// Out "text": the image log's text.
PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_retrieve_imagelog(dev_ulong image_id, std::string& text) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_retrieve_imagelog", image_id, ptr(&text));
    if (call.forced()) return call.result();
    text.clear();
    auto& images = jobinfo().images();
    auto image = images.find(image_id);
    PLAT_RESULT result = XSI_AIS_JOBINFO_NOT_FOUND;
    if (image != images.end()) {
        text = image->second;
        result = XSI_AIS_JOBINFO_OK;
    }
    call.out("text", &text);
    return result;
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_delete_imagelog(dev_ulong image_id) {
    jbrg_sim::locked_op call("xsi_ais_jobinfo_delete_imagelog", image_id);
    if (call.forced()) return call.result();
    return jobinfo().images().erase(image_id) != 0 ? XSI_AIS_JOBINFO_OK : XSI_AIS_JOBINFO_NOT_FOUND;
}

// ---- Observers ------------------------------------------------------------------------------------------
//
// The registered observers are kept apart from the device lock: notifications run on the service's IPC
// thread without it, so that an observer may call back into the device.

namespace {

jbrg_sim::observer_list<xsi_ais_jobinfo_observer>& observers() {
    static auto* list = new jbrg_sim::observer_list<xsi_ais_jobinfo_observer>;
    return *list;
}

constexpr dev_ulong kJobinfoSender = 2;  // the job information service, as message headers name it

// Sends one message to every registered observer, on the service's IPC thread.
int32_t send(int msg_id, std::vector<char> data) {
    static std::atomic<dev_ulong> sequence{0};
    return jbrg_sim::deliver("jobinfo", [msg_id, data]() mutable {
        return observers().call_each([&](xsi_ais_jobinfo_observer* o) {
            gen_ipc_msghdr header{static_cast<dev_ulong>(msg_id), kJobinfoSender, static_cast<dev_ulong>(data.size()),
                                  ++sequence};
            return o->dispatch(1, data.data(), static_cast<unsigned int>(data.size()), header);
        });
    });
}

template <class R>
std::vector<char> bytes_of(const R& record) {
    std::vector<char> b(sizeof record);
    std::memcpy(b.data(), &record, sizeof record);
    return b;
}

template <class R>
bool read_record(const char* data, unsigned int size, R& record) {
    if (data == nullptr || size != sizeof record) return false;
    std::memcpy(&record, data, sizeof record);
    return true;
}

}  // namespace

xsi_ais_jobinfo_observer::~xsi_ais_jobinfo_observer() = default;

PLAT_RESULT xsi_ais_jobinfo_observer::dispatch(long, char* data, unsigned int size, gen_ipc_msghdr header) {
    switch (static_cast<int>(header.msg_id)) {
        case XSI_AIS_JOBINFO_MSG_JOB_UPDATE_LOG: {
            XSI_AIS_EVENT_JOB_UPDATE_LOG e{};
            if (!read_record(data, size, e)) break;
            return notify_job_update_log(e);
        }
        case XSI_AIS_JOBINFO_MSG_PRINT_PAGE: {
            XSI_AIS_EVENT_PRINT_PAGE e{};
            if (!read_record(data, size, e)) break;
            return notify_print_page_info(e);
        }
        case XSI_AIS_JOBINFO_MSG_SCAN_PAGE: {
            XSI_AIS_EVENT_SCAN_PAGE e{};
            if (!read_record(data, size, e)) break;
            return notify_scan_page_info(e);
        }
        case XSI_AIS_JOBINFO_MSG_SEND_PAGE: {
            XSI_AIS_EVENT_SEND_PAGE e{};
            if (!read_record(data, size, e)) break;
            return notify_fax_send_page_info(e);
        }
        case XSI_AIS_JOBINFO_MSG_RENINT_START: {
            XSI_AIS_EVENT_RENINT_START e{};
            uint32_t named = 0;
            constexpr unsigned int fixed = sizeof e + sizeof named;
            if (data == nullptr || size < fixed) break;
            std::memcpy(&e, data, sizeof e);
            std::memcpy(&named, data + sizeof e, sizeof named);
            if (named == 0) {
                if (size != fixed) break;
                return notify_renint_start_info(e, nullptr);
            }
            // The name must end within the message.
            if (size == fixed || data[size - 1] != '\0') break;
            return notify_renint_start_info(e, data + fixed);
        }
        case XSI_AIS_JOBINFO_MSG_IMAGELOG_CREATE_STATUS: {
            uint32_t v[3] = {};
            if (data == nullptr || size != sizeof v) break;
            std::memcpy(v, data, sizeof v);
            return notify_imagelog_create_status(v[0], v[1], static_cast<XSI_AIS_IMAGELOG_CREATE_STATUS_VAL>(v[2]));
        }
        default:
            break;
    }
    return XSI_AIS_JOBINFO_IPC_ERROR;
}

PLAT_RESULT xsi_ais_jobinfo_observer::notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_jobinfo_observer::notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_jobinfo_observer::notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_jobinfo_observer::notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE&) { return PLAT_OK; }
PLAT_RESULT xsi_ais_jobinfo_observer::notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START&, const char*) {
    return PLAT_OK;
}
PLAT_RESULT xsi_ais_jobinfo_observer::notify_imagelog_create_status(unsigned int, dev_ulong,
                                                                    XSI_AIS_IMAGELOG_CREATE_STATUS_VAL) {
    return PLAT_OK;
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_add_observer(xsi_ais_jobinfo_observer* observer) {
    jbrg_sim::op call("xsi_ais_jobinfo_add_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr) return XSI_AIS_JOBINFO_PARAM_ERROR;
    return observers().add(observer) ? XSI_AIS_JOBINFO_OK : XSI_AIS_JOBINFO_DUPL_OBSERVER;
}

PLAT_RESULT xsi_ais_jobinfo_facade::xsi_ais_jobinfo_remove_observer(xsi_ais_jobinfo_observer* observer) {
    jbrg_sim::op call("xsi_ais_jobinfo_remove_observer", static_cast<const void*>(observer));
    if (call.forced()) return call.result();
    if (observer == nullptr || !observers().remove(observer)) return XSI_AIS_JOBINFO_NO_OBSERVER;
    return XSI_AIS_JOBINFO_OK;
}

namespace jbrg_sim::jobinfo {

int32_t notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& event) {
    return send(XSI_AIS_JOBINFO_MSG_JOB_UPDATE_LOG, bytes_of(event));
}
int32_t notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE& event) {
    return send(XSI_AIS_JOBINFO_MSG_PRINT_PAGE, bytes_of(event));
}
int32_t notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& event) {
    return send(XSI_AIS_JOBINFO_MSG_SCAN_PAGE, bytes_of(event));
}
int32_t notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& event) {
    return send(XSI_AIS_JOBINFO_MSG_SEND_PAGE, bytes_of(event));
}
int32_t notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& event, const char* job_name) {
    std::vector<char> data = bytes_of(event);
    uint32_t named = job_name != nullptr ? 1 : 0;
    data.insert(data.end(), reinterpret_cast<const char*>(&named), reinterpret_cast<const char*>(&named) + sizeof named);
    if (job_name != nullptr) data.insert(data.end(), job_name, job_name + std::strlen(job_name) + 1);
    return send(XSI_AIS_JOBINFO_MSG_RENINT_START, std::move(data));
}
int32_t notify_imagelog_create_status(unsigned int user_job_id, uint32_t image_id,
                                      XSI_AIS_IMAGELOG_CREATE_STATUS_VAL status) {
    uint32_t v[3] = {user_job_id, image_id, static_cast<uint32_t>(status)};
    std::vector<char> data(sizeof v);
    std::memcpy(data.data(), v, sizeof v);
    return send(XSI_AIS_JOBINFO_MSG_IMAGELOG_CREATE_STATUS, std::move(data));
}

std::size_t observer_count() { return observers().size(); }

}  // namespace jbrg_sim::jobinfo
