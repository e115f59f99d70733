#include "box/qsf_fnd_fax_box_manager.h"

#include "box/box_result.h"
#include "box/box_support.h"
#include "box/qsf_fnd_document.h"
#include "box/qsf_fnd_fax_box.h"
#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/jni_scoped.h"

namespace orvane {

std::atomic<qsf_fnd_fax_box_manager*> qsf_fnd_fax_box_manager::instance_{nullptr};

namespace {

using box::failure_trace;

// Entries a get hands back: boxes, documents.
constexpr unsigned int kBoxChunk = 50;
constexpr unsigned int kDocumentChunk = 100;

bool append_fax_box(JNIEnv* env, jobject list, const XSI_PBFS_BOX_FAX_BOX_LIST& entry) {
    qsf_fnd_fax_box_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_fax_box_info());
    if (!info) return false;
    describe_info.describe(info.get(), entry);
    qsf_fnd_fax_box describe_box(env);
    jni::local_ref<jobject> made(env, describe_box.create_fax_box());
    if (!made) return false;
    describe_box.set_field_box_id(made.get(), entry.box_id);
    describe_box.set_field_exists(made.get(), true);
    describe_box.set_field_info(made.get(), info.get());
    return box::append(env, list, made.get());
}

bool append_fax_document(JNIEnv* env, jobject list, const XSI_PBFS_BOX_FAX_DOC_LIST& entry, dev_ulong box_id,
                         const std::string& passwd) {
    qsf_fnd_document_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_document_info());
    if (!info) return false;
    describe_info.describe(info.get(), entry);
    qsf_fnd_fax_document describe_document(env);
    jni::local_ref<jobject> document(env, describe_document.create_fax_document());
    if (!document) return false;
    describe_document.set_field_document_id(document.get(), entry.doc_id);
    describe_document.set_field_info(document.get(), info.get());
    describe_document.set_field_box_id(document.get(), box_id);
    describe_document.set_field_box_password(document.get(), passwd.c_str());
    return box::append(env, list, document.get());
}

}  // namespace

qsf_fnd_fax_box_manager* qsf_fnd_fax_box_manager::qsf_fnd_get_instance() { return box::guarded_instance(instance_); }

int qsf_fnd_fax_box_manager::qsf_fnd_get_fax_box_list(jobject list) {
    JNIEnv* env = box::list_env(list);
    if (env == nullptr) return box::kBoxFailed;
    unsigned int handle = 0;
    unsigned int total = 0;
    if (box::facade().xsi_pbfs_box_get_fax_box_list_prepare(kBoxChunk, handle, total) != XSI_PBFS_BOX_OK) {
        return box::kBoxFailed;
    }
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_list_finish, handle, JBRG_TRACE_SITE,
                              false);
    if (total == 0) return box::kBoxOk;
    box::platform_buffer<XSI_PBFS_BOX_FAX_BOX_LIST> buffer(kBoxChunk);
    if (!buffer) return box::kBoxFailed;
    bool read = box::read_in_chunks(&xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_list, handle, total, buffer,
                                    kBoxChunk, [&](const XSI_PBFS_BOX_FAX_BOX_LIST& entry) {
                                        return append_fax_box(env, list, entry);
                                    });
    return read ? box::kBoxOk : box::kBoxFailed;
}

int qsf_fnd_fax_box_manager::qsf_fnd_get_fax_box_detail_info(dev_ulong box_id, const std::string& passwd,
                                                             jobject detail) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) return box::kBoxFailed;
    qsf_fnd_fax_box_detail_info describe(env);
    if (!describe.accepts(detail)) return box::kBoxFailed;
    XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO record{};
    int answer = box::convert_retcode(
        box::facade().xsi_pbfs_box_get_fax_box_detail_info(box_id, passwd.c_str(), record),
        {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR}, JBRG_TRACE_SITE, failure_trace::none);
    if (answer != box::kBoxOk) return answer;
    box::field_text password(record.box_pw);
    describe.set_field_delete_set(detail, record.box_doc_delete_after_job);
    describe.set_field_passwd(detail, password.get());
    return box::kBoxOk;
}

int qsf_fnd_fax_box_manager::qsf_fnd_add_fax_box(const QSF_FND_BOX_DETAIL_INFO& info) {
    XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO record;
    if (!box::to_detail_record(info, record, JBRG_TRACE_SITE)) return box::kBoxFailed;
    return box::convert_retcode(box::facade().xsi_pbfs_box_add_fax_box(record),
                                {XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR,
                                 XSI_PBFS_BOX_BOX_CAPACITY_FULL},
                                JBRG_TRACE_SITE, failure_trace::none);
}

int qsf_fnd_fax_box_manager::qsf_fnd_update_fax_box(dev_ulong box_id, const std::string& passwd,
                                                    const QSF_FND_BOX_DETAIL_INFO& info) {
    XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO record;
    if (!box::to_detail_record(info, record, JBRG_TRACE_SITE)) return box::kBoxFailed;
    return box::convert_retcode(box::facade().xsi_pbfs_box_update_fax_box_info(box_id, passwd.c_str(), record),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                 XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, XSI_PBFS_BOX_BOX_CAPACITY_FULL},
                                JBRG_TRACE_SITE, failure_trace::none);
}

int qsf_fnd_fax_box_manager::qsf_fnd_delete_fax_box(dev_ulong box_id, const std::string& passwd) {
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_fax_box(box_id, passwd.c_str()),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR}, JBRG_TRACE_SITE,
                                failure_trace::none);
}

int qsf_fnd_fax_box_manager::qsf_fnd_get_fax_document_list(dev_ulong box_id, const std::string& passwd, jobject list) {
    JNIEnv* env = box::list_env(list);
    if (env == nullptr) return box::kBoxFailed;
    unsigned int handle = 0;
    unsigned int total = 0;
    int answer = box::convert_retcode(
        box::facade().xsi_pbfs_box_get_fax_document_list_prepare(box_id, passwd.c_str(), kDocumentChunk, handle, total),
        {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR}, JBRG_TRACE_SITE, failure_trace::none);
    if (answer != box::kBoxOk) return answer;
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_document_list_finish, handle,
                              JBRG_TRACE_SITE, false);
    if (total == 0) return box::kBoxOk;
    box::platform_buffer<XSI_PBFS_BOX_FAX_DOC_LIST> buffer(kDocumentChunk);
    if (!buffer) return box::kBoxFailed;
    bool read = box::read_in_chunks(&xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_document_list, handle, total, buffer,
                                    kDocumentChunk, [&](const XSI_PBFS_BOX_FAX_DOC_LIST& entry) {
                                        return append_fax_document(env, list, entry, box_id, passwd);
                                    });
    return read ? box::kBoxOk : box::kBoxFailed;
}

}  // namespace orvane
