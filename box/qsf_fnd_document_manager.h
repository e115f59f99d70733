// The documents of the device's boxes, for Java: deleting a document of a user box or a fax box, and the
// files of a removable memory (listed as RemovableMemoryFileImpl objects, deleted by path). A process-wide
// singleton without state (qsf_fnd_get_instance); results are the box results of box/box_result.h.
#ifndef JBRG_BOX_QSF_FND_DOCUMENT_MANAGER_H
#define JBRG_BOX_QSF_FND_DOCUMENT_MANAGER_H

#include <jni.h>

#include <atomic>
#include <string>

#include "plat_types.h"

namespace orvane {

class qsf_fnd_document_manager {
public:
    qsf_fnd_document_manager() = default;

    static qsf_fnd_document_manager* qsf_fnd_get_instance();

    // A document of a user box: 0; 2 no box; 3 wrong password; 7 no document; 1 otherwise.
    int qsf_fnd_delete_document(dev_ulong box_id, const std::string& passwd, dev_ulong doc_id);
    // The file at `path` of the removable memory: 0; 8 a path the memory rejects; 1 otherwise.
    int qsf_fnd_delete_document(const std::string& path);
    // As the first, acting for a login: also 9 when the certificate names no current login.
    int qsf_fnd_delete_document(dev_ulong box_id, const std::string& passwd, dev_ulong doc_id, dev_ulong cert_id);
    // A document of a fax box: 0; 2; 3; 7; 1.
    int qsf_fnd_delete_fax_document(dev_ulong box_id, const std::string& passwd, dev_ulong doc_id);
    // Appends a RemovableMemoryFileImpl per entry of the folder `path` to the caller's java.util.ArrayList:
    // 0 or 1.
    int qsf_fnd_get_easy_box_list(const std::string& path, jobject list);

private:
    static std::atomic<qsf_fnd_document_manager*> instance_;
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_DOCUMENT_MANAGER_H
