#include "box/qsf_fnd_user_box_manager.h"

#include <cstring>

#include "box/box_describer.h"
#include "box/box_result.h"
#include "box/box_support.h"
#include "box/qsf_fnd_document.h"
#include "box/qsf_fnd_user_box.h"
#include "core/cjvm.h"
#include "core/jni_scoped.h"

// The box operations write the box password in plain text into their "[Enter]" trace lines, and the detail
// with a certificate writes it once more among the values it read: that is what the device's traces show, and
// they are kept as they are.

namespace orvane {

std::atomic<qsf_fnd_user_box_manager*> qsf_fnd_user_box_manager::instance_{nullptr};

namespace box {

namespace {

// One text into its fixed field, whole and terminated, or false.
template <std::size_t N>
bool copy_text(char (&field)[N], const std::string& text, const char* name, const trace_site& site) {
    if (text.size() >= N) {
        trace_at(site, "%s too long.", name);
        return false;
    }
    std::memset(field, 0, N);
    std::memcpy(field, text.data(), text.size());
    return true;
}

}  // namespace

bool to_detail_record(const QSF_FND_BOX_DETAIL_INFO& info, XSI_PBFS_BOX_DETAIL_INFO& record, const trace_site& site) {
    std::memset(&record, 0, sizeof record);
    XSI_PBFS_BOX_COMMON_INFO& common = record.box_common_info;
    common.box_num = info.box_number;
    common.box_owner_type = info.box_owner_type;
    common.box_share = info.box_share;
    record.box_capacity = info.box_capacity;
    record.box_preservation_period = info.box_preservation_period;
    record.box_data_update = info.box_data_update;
    record.box_doc_delete_after_job = info.box_doc_delete_after_job;
    return copy_text(common.box_name, info.box_name, "box_name", site) &&
           copy_text(common.box_owner_name, info.box_owner_name, "box_owner_name", site) &&
           copy_text(common.box_owner_login_name, info.box_owner_login_name, "box_owner_login_name", site) &&
           copy_text(common.box_owner_domain_name, info.box_owner_domain_name, "box_owner_domain_name", site) &&
           copy_text(record.box_pw, info.box_pw, "box_pw", site);
}

}  // namespace box

namespace {

using box::failure_trace;

// A UserBoxImpl of one entry of a box listing, appended to `list`.
bool append_box(JNIEnv* env, const box::java_list& lists, jobject list, const XSI_PBFS_BOX_LIST_INFO& entry,
                std::optional<dev_ulong> cert) {
    const XSI_PBFS_BOX_COMMON_INFO& common = entry.box_common_info;
    qsf_fnd_user_box_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_box_info());
    if (!info) return false;
    box::field_text name(common.box_name);
    box::field_text login(common.box_owner_login_name);
    box::field_text user(common.box_owner_name);
    box::field_text domain(common.box_owner_domain_name);
    describe_info.set_field_box_number(info.get(), common.box_num);
    describe_info.set_field_box_name(info.get(), name.get());
    // A box whose owner login name is empty has no owner, whatever its owner type says.
    if (login.length() == 0) {
        describe_info.set_field_owner_type_no_owner(info.get());
    } else {
        describe_info.set_field_owner_type(info.get(), common.box_owner_type);
    }
    describe_info.set_field_owner_login_name(info.get(), login.get());
    describe_info.set_field_owner_user_name(info.get(), user.get());
    describe_info.set_field_owner_domain_name(info.get(), domain.get());
    describe_info.set_field_permission(info.get(), common.box_share);
    describe_info.set_field_current_size(info.get(), entry.box_current_size);
    describe_info.set_field_doc_num(info.get(), entry.box_doc_num);

    qsf_fnd_user_box describe_box(env);
    jni::local_ref<jobject> made(env, describe_box.create_user_box());
    if (!made) return false;
    describe_box.set_field_box_id(made.get(), entry.box_id);
    describe_box.set_field_exists(made.get(), true);
    describe_box.set_field_info(made.get(), info.get());
    if (cert) describe_box.set_field_cert_id(made.get(), *cert);
    return lists.append(env, list, made.get(), JBRG_TRACE_SITE);
}

// A DocumentImpl of one entry of a document listing, appended to `list`.
bool append_document(JNIEnv* env, const box::java_list& lists, jobject list, const XSI_PBFS_BOX_DOC_INFO& entry,
                     dev_ulong box_id, const std::string& passwd, std::optional<dev_ulong> cert) {
    qsf_fnd_document_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_document_info());
    if (!info) return false;
    describe_info.describe(info.get(), entry);
    qsf_fnd_document describe_document(env);
    jni::local_ref<jobject> document(env, describe_document.create_document());
    if (!document) return false;
    describe_document.set_field_document_id(document.get(), entry.doc_id);
    describe_document.set_field_info(document.get(), info.get());
    describe_document.set_field_box_id(document.get(), box_id);
    describe_document.set_field_box_password(document.get(), passwd.c_str());
    if (cert) describe_document.set_field_cert_id(document.get(), *cert);
    return lists.append(env, list, document.get(), JBRG_TRACE_SITE);
}

}  // namespace

qsf_fnd_user_box_manager* qsf_fnd_user_box_manager::qsf_fnd_get_instance() {
    return box::guarded_instance(instance_);
}

// ---- Boxes ------------------------------------------------------------------------------------------------

jobject qsf_fnd_user_box_manager::qsf_fnd_get_user_box_list() { return qsf_fnd_get_user_box_list(certificate{}); }
jobject qsf_fnd_user_box_manager::qsf_fnd_get_user_box_list(dev_ulong cert_id) {
    return qsf_fnd_get_user_box_list(certificate{cert_id});
}

jobject qsf_fnd_user_box_manager::qsf_fnd_get_user_box_list(certificate cert) {
    JBRG_TRACE("[Enter]");
    JNIEnv* env = box::caller_env(JBRG_TRACE_SITE);
    if (env == nullptr) return nullptr;
    const box::java_list lists(env, JBRG_TRACE_SITE);
    if (lists.add == nullptr) return nullptr;
    jmethodID make = env->GetMethodID(lists.type.get(), "<init>", "()V");
    if (box::missing(env, make, JBRG_TRACE_SITE, "GetMethodID")) return nullptr;
    jni::local_ref<jobject> list(env, env->NewObject(lists.type.get(), make));
    if (box::missing(env, list.get(), JBRG_TRACE_SITE, "NewObject")) return nullptr;

    unsigned int handle = 0;
    unsigned int total_num = 0;
    PLAT_RESULT result = cert ? box::facade().xsi_pbfs_box_get_box_info_prepare_bkg(1, *cert, handle, total_num)
                              : box::facade().xsi_pbfs_box_get_box_info_prepare(1, handle, total_num);
    if (result != XSI_PBFS_BOX_OK) {
        JBRG_TRACE("result(%d)", static_cast<int>(result));
        return nullptr;
    }
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_box_info_finish, handle, JBRG_TRACE_SITE);
    if (total_num == 0) {
        JBRG_TRACE("total_num == 0.");
        return list.release();
    }
    // A box that cannot be described fails the listing: a list without it would tell Java the box is not there.
    bool read = box::read_one_by_one(&xsi_pbfs_box_facade::xsi_pbfs_box_get_box_list_info, handle, total_num,
                                     "box_list_info", JBRG_TRACE_SITE, [&](const XSI_PBFS_BOX_LIST_INFO& entry) {
                                         return append_box(env, lists, list.get(), entry, cert);
                                     });
    if (!read) return nullptr;
    return list.release();
}

int qsf_fnd_user_box_manager::qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd,
                                                               jobject detail) {
    return qsf_fnd_get_user_box_detail_info(box_id, passwd, detail, certificate{});
}
int qsf_fnd_user_box_manager::qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd,
                                                               jobject detail, dev_ulong cert_id) {
    return qsf_fnd_get_user_box_detail_info(box_id, passwd, detail, certificate{cert_id});
}

int qsf_fnd_user_box_manager::qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd,
                                                               jobject detail, certificate cert) {
    JBRG_TRACE("[Enter]");
    JNIEnv* env = box::caller_env(JBRG_TRACE_SITE);
    if (env == nullptr) return box::kBoxFailed;
    qsf_fnd_user_box_detail_info describe(env);
    if (!describe.describes(detail)) {
        JBRG_TRACE("detail is not a UserBoxDetailInfoImpl.");
        return box::kBoxFailed;
    }
    XSI_PBFS_BOX_DETAIL_INFO record{};
    PLAT_RESULT result =
        cert ? box::facade().xsi_pbfs_box_get_box_detail_info_bkg(box_id, passwd.c_str(), *cert, record)
             : box::facade().xsi_pbfs_box_get_box_detail_info(box_id, passwd.c_str(), record);
    int answer = cert ? box::convert_retcode(result,
                                             {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                              XSI_PBFS_BOX_LOGIN_ERROR},
                                             JBRG_TRACE_SITE)
                      : box::convert_retcode(result,
                                             {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR},
                                             JBRG_TRACE_SITE);
    if (answer != box::kBoxOk) return answer;
    box::field_text password(record.box_pw);
    if (cert) {
        JBRG_TRACE("box capacity=(%ld)", dev_ld(record.box_capacity));
        JBRG_TRACE("delete after job=(%d)", static_cast<int>(record.box_doc_delete_after_job));
        JBRG_TRACE("period=(%d)", static_cast<int>(record.box_preservation_period));
        JBRG_TRACE("date update=(%d)", static_cast<int>(record.box_data_update));
        JBRG_TRACE("password=(%s)", password.get());
    }
    describe.set_field_max_size(detail, record.box_capacity);
    describe.set_field_delete_set(detail, record.box_doc_delete_after_job);
    describe.set_field_period(detail, record.box_preservation_period);
    describe.set_field_ow_set(detail, record.box_data_update);
    describe.set_field_passwd(detail, password.get());
    return box::kBoxOk;
}

int qsf_fnd_user_box_manager::qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info) {
    return qsf_fnd_add_box(info, certificate{});
}
int qsf_fnd_user_box_manager::qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info, dev_ulong cert_id) {
    return qsf_fnd_add_box(info, certificate{cert_id});
}

int qsf_fnd_user_box_manager::qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info, certificate cert) {
    JBRG_TRACE("[Enter]");
    XSI_PBFS_BOX_DETAIL_INFO record;
    if (!box::to_detail_record(info, record, JBRG_TRACE_SITE)) return box::kBoxFailed;
    // Adding knows neither the box id error nor the password error: they become 1.
    if (cert) {
        return box::convert_retcode(box::facade().xsi_pbfs_box_add_box_bkg(record, *cert),
                                    {XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR,
                                     XSI_PBFS_BOX_BOX_CAPACITY_FULL, XSI_PBFS_BOX_LOGIN_ERROR},
                                    JBRG_TRACE_SITE);
    }
    return box::convert_retcode(box::facade().xsi_pbfs_box_add_box(record),
                                {XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR,
                                 XSI_PBFS_BOX_BOX_CAPACITY_FULL},
                                JBRG_TRACE_SITE);
}

int qsf_fnd_user_box_manager::qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd,
                                                 const QSF_FND_BOX_DETAIL_INFO& info) {
    return qsf_fnd_update_box(box_id, passwd, info, certificate{});
}
int qsf_fnd_user_box_manager::qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd,
                                                 const QSF_FND_BOX_DETAIL_INFO& info, dev_ulong cert_id) {
    return qsf_fnd_update_box(box_id, passwd, info, certificate{cert_id});
}

int qsf_fnd_user_box_manager::qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd,
                                                 const QSF_FND_BOX_DETAIL_INFO& info, certificate cert) {
    JBRG_TRACE("[Enter]");
    XSI_PBFS_BOX_DETAIL_INFO record;
    if (!box::to_detail_record(info, record, JBRG_TRACE_SITE)) return box::kBoxFailed;
    // Updating does not know the box-count limit: it becomes 1.
    if (cert) {
        return box::convert_retcode(
            box::facade().xsi_pbfs_box_update_box_info_bkg(box_id, passwd.c_str(), *cert, record),
            {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR, XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR,
             XSI_PBFS_BOX_BOX_CAPACITY_FULL, XSI_PBFS_BOX_LOGIN_ERROR},
            JBRG_TRACE_SITE);
    }
    return box::convert_retcode(box::facade().xsi_pbfs_box_update_box_info(box_id, passwd.c_str(), record),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                 XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, XSI_PBFS_BOX_BOX_CAPACITY_FULL},
                                JBRG_TRACE_SITE);
}

int qsf_fnd_user_box_manager::qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd) {
    return qsf_fnd_delete_box(box_id, passwd, certificate{});
}
int qsf_fnd_user_box_manager::qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd, dev_ulong cert_id) {
    return qsf_fnd_delete_box(box_id, passwd, certificate{cert_id});
}

int qsf_fnd_user_box_manager::qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd, certificate cert) {
    if (cert) {
        JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s), cert_id=(%lu)", dev_lx(box_id), passwd.c_str(), dev_lx(*cert));
        return box::convert_retcode(box::facade().xsi_pbfs_box_delete_box_bkg(box_id, passwd.c_str(), *cert),
                                    {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                     XSI_PBFS_BOX_LOGIN_ERROR},
                                    JBRG_TRACE_SITE);
    }
    JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s)", dev_lx(box_id), passwd.c_str());
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_box(box_id, passwd.c_str()),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR}, JBRG_TRACE_SITE);
}

dev_ulong qsf_fnd_user_box_manager::qsf_fnd_get_user_box_available_space() {
    return qsf_fnd_get_user_box_available_space(certificate{});
}
dev_ulong qsf_fnd_user_box_manager::qsf_fnd_get_user_box_available_space(dev_ulong cert_id) {
    return qsf_fnd_get_user_box_available_space(certificate{cert_id});
}

dev_ulong qsf_fnd_user_box_manager::qsf_fnd_get_user_box_available_space(certificate cert) {
    dev_ulong capacity = 0;
    PLAT_RESULT result;
    if (cert) {
        JBRG_TRACE("[Enter]. cert_id=(%lu)", dev_lx(*cert));
        result = box::facade().xsi_pbfs_box_get_box_available_capacity_bkg(XSI_PBFS_BOX_KIND_USER, *cert, capacity);
    } else {
        JBRG_TRACE("[Enter]");
        result = box::facade().xsi_pbfs_box_get_box_available_capacity(XSI_PBFS_BOX_KIND_USER, capacity);
    }
    if (result != XSI_PBFS_BOX_OK) {
        JBRG_TRACE("result(%d)=UNKNOWN", static_cast<int>(result));
        return 0;
    }
    return capacity;
}

// ---- Documents ------------------------------------------------------------------------------------------

int qsf_fnd_user_box_manager::qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list) {
    return qsf_fnd_get_document_list(box_id, passwd, list, certificate{});
}
int qsf_fnd_user_box_manager::qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list,
                                                        dev_ulong cert_id) {
    return qsf_fnd_get_document_list(box_id, passwd, list, certificate{cert_id});
}

int qsf_fnd_user_box_manager::qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list,
                                                        certificate cert) {
    if (cert) {
        JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s), cert_id=(%lu)", dev_lx(box_id), passwd.c_str(), dev_lx(*cert));
    } else {
        JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s)", dev_lx(box_id), passwd.c_str());
    }
    JNIEnv* env = box::caller_env(JBRG_TRACE_SITE);
    if (env == nullptr) return box::kBoxFailed;
    const box::java_list lists(env, JBRG_TRACE_SITE);
    if (!lists.holds(env, list, JBRG_TRACE_SITE)) return box::kBoxFailed;
    unsigned int handle = 0;
    unsigned int total_num = 0;
    PLAT_RESULT result;
    int answer;
    if (cert) {
        result = box::facade().xsi_pbfs_box_get_document_info_prepare_bkg(box_id, passwd.c_str(), 1, *cert, handle,
                                                                          total_num);
        answer = box::convert_retcode(result,
                                      {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                       XSI_PBFS_BOX_LOGIN_ERROR},
                                      JBRG_TRACE_SITE, failure_trace::bare);
    } else {
        result = box::facade().xsi_pbfs_box_get_document_info_prepare(box_id, passwd.c_str(), 1, handle, total_num);
        answer = box::convert_retcode(result, {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR},
                                      JBRG_TRACE_SITE, failure_trace::bare);
    }
    if (answer != box::kBoxOk) return answer;
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info_finish, handle, JBRG_TRACE_SITE);
    if (total_num == 0) {
        JBRG_TRACE("total_num == 0.");
        return box::kBoxOk;
    }
    bool read = box::read_one_by_one(&xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info, handle, total_num,
                                     "doc_info", JBRG_TRACE_SITE, [&](const XSI_PBFS_BOX_DOC_INFO& entry) {
                                         return append_document(env, lists, list, entry, box_id, passwd, cert);
                                     });
    return read ? box::kBoxOk : box::kBoxFailed;
}

}  // namespace orvane
