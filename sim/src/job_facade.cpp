// The job service's facade: job information sets and their settings, destinations, services and user
// jobs, prohibition and panel messages, documents, streams, scan and OCR data. Each operation works on the
// store (job_store.h) under the device lock.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "box_internal.h"
#include "jbrg_sim/job.h"
#include "job_store.h"
#include "user_internal.h"
#include "xsi_ais_job.h"

using namespace jbrg_sim::jobsvc;

xsi_ais_job_facade* xsi_ais_job_facade::xsi_ais_job_get_instance() {
    static xsi_ais_job_facade* instance = new xsi_ais_job_facade;
    return instance;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id) {
    jbrg_sim::locked_op call("xsi_ais_job_generate_jobinfo", category, &handler_id);
    PLAT_RESULT r = call.forced() ? call.result() : jobs().generate(category, 0, handler_id);
    call.out("handler_id", &handler_id);
    return r;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_generate_jobinfo_bkg(XSI_AIS_JOB_CATEGORY category, dev_ulong cert_id,
                                                                 unsigned int& handler_id) {
    jbrg_sim::locked_op call("xsi_ais_job_generate_jobinfo_bkg", category, cert_id, &handler_id);
    PLAT_RESULT r = call.result();
    if (!call.forced()) {
        // The set is made for the certificate's user, who must be logged in.
        const jbrg_sim::user_account* user = jbrg_sim::login_account(cert_id);
        r = user == nullptr ? XSI_AIS_JOB_LOGIN_ERROR : jobs().generate(category, cert_id, handler_id);
        if (r == XSI_AIS_JOB_OK) {
            jobs().jobinfos.at(handler_id).user_name = user->user_name.empty() ? user->login_name : user->user_name;
        }
    }
    call.out("handler_id", &handler_id);
    return r;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      unsigned int value) {
    jbrg_sim::locked_op call("xsi_ais_job_set_value", handler_id, data_id, value);
    if (call.forced()) return call.result();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.numbers[data_id] = value;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      std::string value) {
    jbrg_sim::locked_op call("xsi_ais_job_set_value", handler_id, data_id, value);
    if (call.forced()) return call.result();
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || !s->text) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.texts[data_id] = std::move(value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id,
                                                      unsigned int value_1, unsigned int value_2,
                                                      unsigned int value_3) {
    set_op call("xsi_ais_job_set_value", handler_id, setting_id, value_1, value_2, value_3);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (!known_phb_setting(setting_id)) return XSI_AIS_JOB_PARAM_ERROR;
    j->now.threes[setting_id] = values3{value_1, value_2, value_3};
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      unsigned int& value) {
    jbrg_sim::locked_op call("xsi_ais_job_get_value", handler_id, data_id, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
    jobinfo* j = jobs().find(handler_id);
    const setting_def* s = setting(data_id);
    if (j == nullptr || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    value = j->now.numbers[data_id];
    call.out("value", &value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id,
                                                      std::string& value) {
    jbrg_sim::locked_op call("xsi_ais_job_get_value", handler_id, data_id, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
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
    jbrg_sim::locked_op call("xsi_ais_job_get_value", handler_id, setting_id, &value_1, &value_2, &value_3);
    auto outs = [&] {
        call.out("value_1", &value_1);
        call.out("value_2", &value_2);
        call.out("value_3", &value_3);
    };
    if (call.forced()) {
        outs();
        return call.result();
    }
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
    jbrg_sim::locked_op call("xsi_ais_job_get_default_jobinfo_val", key, &value);
    if (call.forced()) {
        call.out("value", &value);
        return call.result();
    }
    const setting_def* s = setting(key);
    if (s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    value = jobs().default_of(*s);
    call.out("value", &value);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_reset_jobinfo(unsigned int handler_id) {
    set_op call("xsi_ais_job_reset_jobinfo", handler_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    // Back to the defaults a new set of its category starts from; destinations, the saved copy and what
    // was prepared go too.
    j->now = jobs().initial(j->category);
    j->copy.reset();
    j->next_address = 1;
    j->prepared.clear();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_commit_jobinfo(unsigned int handler_id) {
    set_op call("xsi_ais_job_commit_jobinfo", handler_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    // The changes since copy_jobinfo stand; the saved copy is dropped.
    j->copy.reset();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_rollback_jobinfo(unsigned int handler_id) {
    set_op call("xsi_ais_job_rollback_jobinfo", handler_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (!j->copy) return XSI_AIS_JOB_RET_NOT_COPY_JOBINFO;
    j->now = std::move(*j->copy);
    j->copy.reset();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_copy_jobinfo(unsigned int handler_id) {
    set_op call("xsi_ais_job_copy_jobinfo", handler_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
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
    jbrg_sim::locked_op call("xsi_ais_job_delete_jobinfo", handler_id);
    if (call.forced()) return call.result();
    return jobs().jobinfos.erase(handler_id) == 1 ? XSI_AIS_JOB_OK : XSI_AIS_JOB_PARAM_ERROR;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_basic_func_set_value(XSI_AIS_JOB_FUNC_TYPE func_type,
                                                                 XSI_AIS_JOB_SETTING data_id, unsigned int value) {
    jbrg_sim::locked_op call("xsi_ais_job_basic_func_set_value", func_type, data_id, value);
    if (call.forced()) return call.result();
    const setting_def* s = setting(data_id);
    if (!known_func(func_type) || s == nullptr || s->text) return XSI_AIS_JOB_PARAM_ERROR;
    jobs().function_defaults[func_type][data_id] = value;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_signage_mode(XSI_AIS_JOB_FUNC_TYPE func_type,
                                                             XSI_AIS_JOB_SIGNAGE_MODE mode) {
    jbrg_sim::locked_op call("xsi_ais_job_set_signage_mode", func_type, mode);
    if (call.forced()) return call.result();
    if (!known_func(func_type) || static_cast<int>(mode) < XSI_AIS_JOB_SIGNAGE_OFF || mode > XSI_AIS_JOB_SIGNAGE_EXCLUSIVE) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    jobs().signage[func_type] = mode;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_notify_reset_default_value() {
    jbrg_sim::locked_op call("xsi_ais_job_notify_reset_default_value");
    if (call.forced()) return call.result();
    // The functions' own defaults go; new sets start from the device defaults again.
    jobs().function_defaults[0].clear();
    jobs().function_defaults[1].clear();
    return XSI_AIS_JOB_OK;
}

// ---- Destinations -------------------------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_add_address(unsigned int handler_id, unsigned int& address_id,
                                                        const XSI_AIS_JOB_SEND_INFO& info) {
    jbrg_sim::locked_op call("xsi_ais_job_add_address", handler_id, &address_id, &info);
    if (call.forced()) {
        call.out("address_id", &address_id);
        return call.result();
    }
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
    set_op call("xsi_ais_job_update_address", handler_id, address_id, &info);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (!known_address_type(info.address_type)) return XSI_AIS_JOB_PARAM_ERROR;
    auto a = j->now.addresses.find(address_id);
    if (a == j->now.addresses.end()) return XSI_AIS_JOB_PARAM_ERROR;
    a->second = info;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_delete_address(unsigned int handler_id, unsigned int address_id) {
    set_op call("xsi_ais_job_delete_address", handler_id, address_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (j->now.addresses.erase(address_id) == 0) return XSI_AIS_JOB_PARAM_ERROR;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_delete_all_address(unsigned int handler_id) {
    set_op call("xsi_ais_job_delete_all_address", handler_id);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    j->now.addresses.clear();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_address(unsigned int handler_id, unsigned int address_id,
                                                        XSI_AIS_JOB_SEND_INFO& info) {
    set_op call("xsi_ais_job_get_address", handler_id, address_id, &info);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    auto a = j->now.addresses.find(address_id);
    if (a == j->now.addresses.end()) return XSI_AIS_JOB_PARAM_ERROR;
    info = a->second;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_address_id(unsigned int handler_id, unsigned int& count,
                                                           std::vector<unsigned int>& address_ids) {
    jbrg_sim::locked_op call("xsi_ais_job_get_address_id", handler_id, &count, &address_ids);
    if (call.forced()) {
        call.out("count", &count);
        return call.result();
    }
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
    jbrg_sim::locked_op call("xsi_ais_job_start", category, handler_id, &service_id);
    if (call.forced()) {
        call.out("service_id", &service_id);
        return call.result();
    }
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
    jbrg_sim::locked_op call("xsi_ais_job_kick", service_id, &user_job_id);
    if (call.forced()) {
        call.out("user_job_id", &user_job_id);
        return call.result();
    }
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
    if (jobinfo* j = s.find(sv->second.handler_id); j != nullptr) {
        u.numbers = j->now.numbers;
        u.user_name = j->user_name;
        u.store_box = j->store_box;
        u.store_pass = j->store_pass;
        u.doc_name = j->now.texts[XSI_AIS_JOB_SETTING_FILE_NAME];
        u.box_job_type = j->box_job_type;
    }
    s.user_jobs[user_job_id] = std::move(u);
    if (s.run_jobs) post_run(user_job_id);
    call.out("user_job_id", &user_job_id);
    return XSI_AIS_JOB_OK;
}

namespace {

// Under the device lock, as the helpers below.
PLAT_RESULT cancel_job(unsigned int service_id, unsigned int user_job_id, dev_ulong cert_id, bool bkg) {
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
    jbrg_sim::locked_op call("xsi_ais_job_cancel", service_id, user_job_id, cert_id);
    if (call.forced()) return call.result();
    return cancel_job(service_id, user_job_id, cert_id, false);
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_cancel_bkg(unsigned int service_id, unsigned int user_job_id,
                                                       dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_ais_job_cancel_bkg", service_id, user_job_id, cert_id);
    if (call.forced()) return call.result();
    if (jbrg_sim::login_account(cert_id) == nullptr) return XSI_AIS_JOB_LOGIN_ERROR;
    return cancel_job(service_id, user_job_id, cert_id, true);
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_continuous_read(unsigned int service_id) {
    jbrg_sim::locked_op call("xsi_ais_job_continuous_read", service_id);
    if (call.forced()) return call.result();
    user_job_rec* job = nullptr;
    if (PLAT_RESULT r = running_service(service_id, job); r != XSI_AIS_JOB_OK) return r;
    job->info.continuous_read = true;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_continuous_read_end(unsigned int service_id) {
    jbrg_sim::locked_op call("xsi_ais_job_continuous_read_end", service_id);
    if (call.forced()) return call.result();
    user_job_rec* job = nullptr;
    if (PLAT_RESULT r = running_service(service_id, job); r != XSI_AIS_JOB_OK) return r;
    if (!job->info.continuous_read) return XSI_AIS_JOB_PARAM_ERROR;
    job->info.continuous_read = false;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_service_id(unsigned int user_job_id, unsigned int& service_id) {
    jbrg_sim::locked_op call("xsi_ais_job_get_service_id", user_job_id, &service_id);
    if (call.forced()) {
        call.out("service_id", &service_id);
        return call.result();
    }
    auto u = jobs().user_jobs.find(user_job_id);
    if (u == jobs().user_jobs.end()) return XSI_AIS_JOB_NOT_FOUND;
    service_id = u->second.info.service_id;
    call.out("service_id", &service_id);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_job_list(XSI_AIS_JOB_KIND kind, std::vector<unsigned int>& user_job_ids) {
    jbrg_sim::locked_op call("xsi_ais_job_get_job_list", kind, &user_job_ids);
    if (call.forced()) return call.result();
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
    jbrg_sim::locked_op call("xsi_ais_job_check_state_of_prohibition");
    if (call.forced()) return call.result();
    return jobs().prohibited_state == XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT ? XSI_AIS_JOB_OUTPUT_PROHIBITING
                                                                          : XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION state) {
    jbrg_sim::locked_op call("xsi_ais_job_set_state_of_prohibition", state);
    if (call.forced()) return call.result();
    if (state != XSI_AIS_STATE_OF_PROHIBITION_PERMIT && state != XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    jobs().prohibited_state = state;
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_start_phb(unsigned int handler_id, int& prohibited) {
    jbrg_sim::locked_op call("xsi_ais_job_get_start_phb", handler_id, &prohibited);
    if (call.forced()) {
        call.out("prohibited", &prohibited);
        return call.result();
    }
    jobinfo* j = jobs().find(handler_id);
    if (j == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    prohibited = jobs().start_prohibited(*j) ? 1 : 0;
    call.out("prohibited", &prohibited);
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_disable_info(unsigned int handler_id, XSI_AIS_PHB_DISABLE_ITEM item,
                                                             unsigned short& value) {
    jbrg_sim::locked_op call("xsi_ais_job_get_disable_info", handler_id, item, &value);
    auto out = [&] {
        dev_ulong v = value;
        call.out("value", &v);
        value = static_cast<unsigned short>(v);
    };
    if (call.forced()) {
        out();
        return call.result();
    }
    if (jobs().find(handler_id) == nullptr || item < 0 || item >= kDisableItemCount) return XSI_AIS_JOB_PARAM_ERROR;
    value = jobs().scenario().disable[item];
    out();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_main_message(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& msg) {
    set_op call("xsi_ais_job_get_main_message", handler_id, &msg);
    if (call.ends()) return call.answer();
    msg = jobs().scenario().message;
    return XSI_AIS_JOB_OK;
}

// ---- Documents and data ---------------------------------------------------------------------------------

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_box_job_prepare(unsigned int handler_id,
                                                            XSI_AIS_BOX_JOB_INIT_SETTING& setting) {
    set_op call("xsi_ais_job_box_job_prepare", handler_id, &setting);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (setting.box_job_type < XSI_AIS_BOX_JOB_PRINT || setting.box_job_type > XSI_AIS_BOX_JOB_STORE) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    j->store_box = 0;
    j->store_pass.clear();
    if (setting.box_job_type == XSI_AIS_BOX_JOB_STORE) {
        // A store names a user box its password opens; the document is stored when the job ends.
        std::string pass = jbrg_sim::field_text(setting.box_pass, sizeof setting.box_pass);
        if (jbrg_sim::boxsvc::check_user_box(setting.box_id, pass) != 0) return XSI_AIS_JOB_PARAM_ERROR;
        j->store_box = setting.box_id;
        j->store_pass = pass;
    }
    j->box_job_type = static_cast<int>(setting.box_job_type);
    j->prepared = "box";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_direct_print_prepare(unsigned int handler_id, char* file_path,
                                                                 char* file_name) {
    set_op call("xsi_ais_job_direct_print_prepare", handler_id, file_path, file_name);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (file_path == nullptr || file_name == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    j->prepared = "direct_print";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_direct_print_prepare(unsigned int handler_id,
                                                                 XSI_AIS_JOB_STREAM_WRITE_FILE file_format) {
    set_op call("xsi_ais_job_direct_print_prepare", handler_id, file_format);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (file_format < XSI_AIS_JOB_STREAM_FILE_PDF || file_format > XSI_AIS_JOB_STREAM_FILE_XPS) {
        return XSI_AIS_JOB_PARAM_ERROR;
    }
    j->prepared = "stream";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_write_stream_data(unsigned int user_job_id,
                                                              XSI_AIS_JOB_WRITE_STREAM_DATA& data) {
    jbrg_sim::locked_op call("xsi_ais_job_write_stream_data", user_job_id, &data);
    if (call.forced()) return call.result();
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
    set_op call("xsi_ais_job_retrieve_document_prepare", handler_id, box_pass, box_id, doc_id, store_path);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    if (store_path == nullptr) return XSI_AIS_JOB_PARAM_ERROR;
    j->prepared = "retrieve";
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_combine_document(unsigned int handler_id,
                                                             XSI_AIS_PHB_COMBINE_DOC_INFO& info) {
    set_op call("xsi_ais_job_combine_document", handler_id, &info);
    if (call.ends()) return call.answer();
    return XSI_AIS_JOB_OK;
}

PLAT_RESULT xsi_ais_job_facade::xsi_ais_job_get_scan_data(unsigned int user_job_id, XSI_AIS_JOB_GET_SCAN_DATA& data) {
    jbrg_sim::locked_op call("xsi_ais_job_get_scan_data", user_job_id, &data);
    if (call.forced()) return call.result();
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
    set_op call("xsi_ais_job_get_ocr_text_data", handler_id, &data);
    if (call.ends()) return call.answer();
    jobinfo* j = call.set();
    const std::vector<ocr_record>& records = jobs().scenario().ocr;
    if (j->ocr_next >= records.size()) return XSI_AIS_NO_HIT_JOB;
    data = records[j->ocr_next].data;
    ++j->ocr_next;
    data.retrieve_state = j->ocr_next < records.size() ? XSI_AIS_JOB_OCR_CONTINUE : XSI_AIS_JOB_OCR_END;
    return XSI_AIS_JOB_OK;
}
