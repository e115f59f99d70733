// The describers of job-retention documents: orvane/qsf/box/document/JobDocumentImpl (qsf_fnd_job_document),
// its JobDocumentInfoImpl (qsf_fnd_job_document_info) and JobDocumentDetailInfoImpl
// (qsf_fnd_job_document_detail_info). They use the process-wide identifier cache (box/box_cached.h): a setter
// answers false, setting nothing, when an identifier it needs cannot be had or the object is not of its class.
#ifndef JBRG_BOX_QSF_FND_JOB_DOCUMENT_H
#define JBRG_BOX_QSF_FND_JOB_DOCUMENT_H

#include <jni.h>

#include "box/box_cached.h"
#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_job_document : public box::cached_describer {
public:
    qsf_fnd_job_document() = default;
    explicit qsf_fnd_job_document(JNIEnv* env) : cached_describer(env) {}

    jobject create_job_document();
    bool set_field_document_id(jobject document, dev_ulong doc_id);
    bool set_field_info(jobject document, jobject info);            // a JobDocumentInfoImpl, or null
    bool set_field_detail_info(jobject document, jobject detail);   // a JobDocumentDetailInfoImpl, or null
};

class qsf_fnd_job_document_info : public box::cached_describer {
public:
    qsf_fnd_job_document_info() = default;
    explicit qsf_fnd_job_document_info(JNIEnv* env) : cached_describer(env) {}

    jobject create_job_document_info();
    bool set_field_document_name(jobject info, const char* name);
    bool set_field_date(jobject info, dev_long seconds);
    bool set_field_data_size(jobject info, dev_ulong bytes);
    bool set_field_user_name(jobject info, const char* name);
    // QUICK, PROOF, PRIVATE, STORED; another value stores null.
    bool set_field_retention_type(jobject info, XSI_PBFS_BOX_DOC_TYPE type);

    // Fills `info` from one entry of a job-retention listing: name, date, data size, user name, type.
    bool describe(jobject info, const XSI_PBFS_BOX_JBRT_DOC_LIST& document);
};

class qsf_fnd_job_document_detail_info : public box::cached_describer {
public:
    qsf_fnd_job_document_detail_info() = default;
    explicit qsf_fnd_job_document_detail_info(JNIEnv* env) : cached_describer(env) {}

    jobject create_job_document_detail_info();
    bool set_field_page_count(jobject detail, dev_ulong pages);
    bool set_field_resolution(jobject detail, XSI_PBFS_BOX_DOC_RESO resolution);
    // By the kind of the pages' sizes, or by the paper size code of the job (its own numbering).
    bool set_field_storing_size(jobject detail, XSI_PBFS_BOX_DOC_PAGES_SIZE kind);
    bool set_field_storing_size(jobject detail, unsigned char size_code);
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_JOB_DOCUMENT_H
