// The job-retention documents of the device (print jobs kept for quick copy, proof and hold, private and
// stored print), for Java: listed as JobDocumentImpl objects, their details read, deleted. A process-wide
// singleton without state (qsf_fnd_get_instance); results are the box results of box/box_result.h. It writes
// no trace lines.
#ifndef JBRG_BOX_QSF_FND_JOB_DOCUMENT_MANAGER_H
#define JBRG_BOX_QSF_FND_JOB_DOCUMENT_MANAGER_H

#include <jni.h>

#include <atomic>
#include <string>

#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_job_document_manager {
public:
    qsf_fnd_job_document_manager() = default;

    static qsf_fnd_job_document_manager* qsf_fnd_get_instance();

    // Appends a JobDocumentImpl per document of the retention box `type` to the caller's
    // java.util.ArrayList: 0 or 1 (the documents appended before a failure stay in the list).
    int qsf_fnd_get_job_retention_doc_list(XSI_PBFS_BOX_JBRT_BOX_TYPE type, jobject list);
    // Fills the caller's JobDocumentDetailInfoImpl: 0; 2 no such document; 3 wrong password; 1 otherwise.
    int qsf_fnd_get_job_document_detail_info(dev_ulong doc_id, const std::string& passwd, jobject detail);
    // 0; 7 no such document; 3 wrong password; 1 otherwise.
    int qsf_fnd_delete_job_retention_document(XSI_PBFS_BOX_JBRT_BOX_TYPE type, dev_ulong doc_id,
                                              const std::string& passwd);

private:
    static std::atomic<qsf_fnd_job_document_manager*> instance_;
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_JOB_DOCUMENT_MANAGER_H
