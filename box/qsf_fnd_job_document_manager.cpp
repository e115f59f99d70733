#include "box/qsf_fnd_job_document_manager.h"

#include "box/box_enums.h"
#include "box/box_result.h"
#include "box/box_support.h"
#include "box/qsf_fnd_job_document.h"
#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/jni_scoped.h"

namespace orvane {

std::atomic<qsf_fnd_job_document_manager*> qsf_fnd_job_document_manager::instance_{nullptr};

namespace {

using box::failure_trace;

// Entries a get of the retention listing hands back.
constexpr unsigned int kChunk = 100;

jni::class_id jcls_detail{"orvane/qsf/box/document/JobDocumentDetailInfoImpl"};

// A JobDocumentImpl of one entry, appended to `list`; false when either object cannot be made.
bool append_job_document(JNIEnv* env, jobject list, const XSI_PBFS_BOX_JBRT_DOC_LIST& entry) {
    qsf_fnd_job_document_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_job_document_info());
    if (!info) return false;
    describe_info.describe(info.get(), entry);
    qsf_fnd_job_document describe_document(env);
    jni::local_ref<jobject> document(env, describe_document.create_job_document());
    if (!document) return false;
    describe_document.set_field_document_id(document.get(), entry.doc_id);
    describe_document.set_field_info(document.get(), info.get());
    return box::append(env, list, document.get());
}

}  // namespace

qsf_fnd_job_document_manager* qsf_fnd_job_document_manager::qsf_fnd_get_instance() {
    return box::guarded_instance(instance_);
}

int qsf_fnd_job_document_manager::qsf_fnd_get_job_retention_doc_list(XSI_PBFS_BOX_JBRT_BOX_TYPE type, jobject list) {
    JNIEnv* env = box::list_env(list);
    if (env == nullptr) return box::kBoxFailed;
    unsigned int handle = 0;
    unsigned int total_num = 0;
    if (box::facade().xsi_pbfs_box_get_job_retention_doc_list_prepare(type, kChunk, handle, total_num) !=
        XSI_PBFS_BOX_OK) {
        return box::kBoxFailed;
    }
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_list_finish, handle,
                              JBRG_TRACE_SITE, false);
    if (total_num == 0) return box::kBoxOk;
    box::platform_buffer<XSI_PBFS_BOX_JBRT_DOC_LIST> buffer(kChunk);
    if (!buffer) return box::kBoxFailed;
    bool read = box::read_in_chunks(&xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_list, handle, total_num,
                                    buffer, kChunk, [&](const XSI_PBFS_BOX_JBRT_DOC_LIST& entry) {
                                        return append_job_document(env, list, entry);
                                    });
    return read ? box::kBoxOk : box::kBoxFailed;
}

int qsf_fnd_job_document_manager::qsf_fnd_get_job_document_detail_info(dev_ulong doc_id, const std::string& passwd,
                                                                       jobject detail) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr || !jcls_detail.ensure(JBRG_TRACE_SITE) || detail == nullptr ||
        !env->IsInstanceOf(detail, jcls_detail.get())) {
        return box::kBoxFailed;
    }
    XSI_PBFS_BOX_JBRT_DOC_INFO record{};
    int answer = box::convert_retcode(
        box::facade().xsi_pbfs_box_get_job_retention_doc_info(doc_id, passwd.c_str(), record),
        {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR}, JBRG_TRACE_SITE, failure_trace::none);
    if (answer != box::kBoxOk) return answer;
    qsf_fnd_job_document_detail_info describe(env);
    describe.set_field_page_count(detail, record.page_count);
    describe.set_field_resolution(detail, record.resolution);
    // Of the size code word, the low byte is the job's paper size.
    if (record.pages_size == box::kStandardSizeKind) {
        describe.set_field_storing_size(detail, static_cast<unsigned char>(record.size_code & 0xFFu));
    } else {
        describe.set_field_storing_size(detail, record.pages_size);
    }
    return box::kBoxOk;
}

int qsf_fnd_job_document_manager::qsf_fnd_delete_job_retention_document(XSI_PBFS_BOX_JBRT_BOX_TYPE type,
                                                                        dev_ulong doc_id, const std::string& passwd) {
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_job_retention_doc(type, doc_id, passwd.c_str()),
                                {XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR},
                                JBRG_TRACE_SITE, failure_trace::none);
}

}  // namespace orvane
