#include "box/qsf_fnd_job_document.h"

#include "box/box_describer.h"
#include "box/box_enums.h"

namespace orvane {

namespace {

// JobDocumentImpl
jni::class_id jcls_document{"orvane/qsf/box/document/JobDocumentImpl"};
jni::method_id mid_document_constructor{jcls_document, "<init>", "()V"};
jni::field_id fid_document_id{jcls_document, "docid", "J"};
jni::field_id fid_info{jcls_document, "info", "Lorvane/qsf/box/document/JobDocumentInfoImpl;"};
jni::field_id fid_detail_info{jcls_document, "detail_info", "Lorvane/qsf/box/document/JobDocumentDetailInfoImpl;"};

// JobDocumentInfoImpl
jni::class_id jcls_document_info{"orvane/qsf/box/document/JobDocumentInfoImpl"};
jni::method_id mid_info_constructor{jcls_document_info, "<init>", "()V"};
jni::field_id fid_document_name{jcls_document_info, "docname", "Ljava/lang/String;"};
jni::field_id fid_date{jcls_document_info, "date", "Ljava/util/Date;"};
jni::field_id fid_data_size{jcls_document_info, "datasize", "J"};
jni::field_id fid_user_name{jcls_document_info, "username", "Ljava/lang/String;"};
jni::field_id fid_retention_type{jcls_document_info, "type", "Lorvane/box/document/attribute/JobRetentionType;"};
box::cached_enum jbrt{box::kRetentionType};

// JobDocumentDetailInfoImpl
jni::class_id jcls_document_detail{"orvane/qsf/box/document/JobDocumentDetailInfoImpl"};
jni::method_id mid_detail_constructor{jcls_document_detail, "<init>", "()V"};
jni::field_id fid_page_count{jcls_document_detail, "pagecount", "J"};
jni::field_id fid_resolution{jcls_document_detail, "resolution", "Lorvane/box/document/attribute/Resolution;"};
jni::field_id fid_storing_size{jcls_document_detail, "storingsize", "Lorvane/box/document/attribute/StoringSize;"};
box::cached_enum reso{box::kJobResolution};
box::cached_enum ssize_kind{box::kJobStoringSizeKind};
box::cached_enum ssize_code{box::kJobSizeCode};

}  // namespace

jobject qsf_fnd_job_document::create_job_document() { return create(mid_document_constructor, JBRG_TRACE_SITE); }
bool qsf_fnd_job_document::set_field_document_id(jobject document, dev_ulong doc_id) {
    return set_long(document, fid_document_id, doc_id, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document::set_field_info(jobject document, jobject info) {
    return set_object(document, fid_info, info, jcls_document_info, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document::set_field_detail_info(jobject document, jobject detail) {
    return set_object(document, fid_detail_info, detail, jcls_document_detail, JBRG_TRACE_SITE);
}

jobject qsf_fnd_job_document_info::create_job_document_info() { return create(mid_info_constructor, JBRG_TRACE_SITE); }
bool qsf_fnd_job_document_info::set_field_document_name(jobject info, const char* name) {
    return set_text(info, fid_document_name, name, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_info::set_field_date(jobject info, dev_long seconds) {
    return set_date(info, fid_date, seconds, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_info::set_field_data_size(jobject info, dev_ulong bytes) {
    return set_long(info, fid_data_size, bytes, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_info::set_field_user_name(jobject info, const char* name) {
    return set_text(info, fid_user_name, name, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_info::set_field_retention_type(jobject info, XSI_PBFS_BOX_DOC_TYPE type) {
    return set_enum(info, fid_retention_type, jbrt, type, JBRG_TRACE_SITE);
}

bool qsf_fnd_job_document_info::describe(jobject info, const XSI_PBFS_BOX_JBRT_DOC_LIST& document) {
    box::field_text name(document.doc_name);
    box::field_text user(document.user_name);
    return set_field_document_name(info, name.get()) && set_field_date(info, document.date) &&
           set_field_data_size(info, document.data_size) && set_field_user_name(info, user.get()) &&
           set_field_retention_type(info, document.type);
}

jobject qsf_fnd_job_document_detail_info::create_job_document_detail_info() {
    return create(mid_detail_constructor, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_detail_info::set_field_page_count(jobject detail, dev_ulong pages) {
    return set_long(detail, fid_page_count, pages, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_detail_info::set_field_resolution(jobject detail, XSI_PBFS_BOX_DOC_RESO resolution) {
    return set_enum(detail, fid_resolution, reso, resolution, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_detail_info::set_field_storing_size(jobject detail, XSI_PBFS_BOX_DOC_PAGES_SIZE kind) {
    return set_enum(detail, fid_storing_size, ssize_kind, kind, JBRG_TRACE_SITE);
}
bool qsf_fnd_job_document_detail_info::set_field_storing_size(jobject detail, unsigned char size_code) {
    return set_enum(detail, fid_storing_size, ssize_code, size_code, JBRG_TRACE_SITE);
}

}  // namespace orvane
