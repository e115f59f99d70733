// The fax boxes of the device, for Java: list them, read a box's delete setting and password, add, update
// and delete boxes, list a box's documents. Like the user box manager (box/qsf_fnd_user_box_manager.h) with
// larger listing chunks (50 boxes, 100 documents a get), no trace lines, no certificate forms, and describers
// that use the process-wide identifier cache (box/qsf_fnd_fax_box.h). A process-wide singleton without state.
#ifndef JBRG_BOX_QSF_FND_FAX_BOX_MANAGER_H
#define JBRG_BOX_QSF_FND_FAX_BOX_MANAGER_H

#include <jni.h>

#include <atomic>
#include <string>

#include "box/qsf_fnd_user_box_manager.h"

namespace orvane {

class qsf_fnd_fax_box_manager {
public:
    qsf_fnd_fax_box_manager() = default;

    static qsf_fnd_fax_box_manager* qsf_fnd_get_instance();

    // Appends a FaxBoxImpl per fax box to the caller's java.util.ArrayList: 0 or 1.
    int qsf_fnd_get_fax_box_list(jobject list);
    // Fills the caller's FaxBoxDetailInfoImpl (delete setting, password): 0; 2; 3; 1.
    int qsf_fnd_get_fax_box_detail_info(dev_ulong box_id, const std::string& passwd, jobject detail);
    // 0; 4; 5; 6; 1.
    int qsf_fnd_add_fax_box(const QSF_FND_BOX_DETAIL_INFO& info);
    // 0; 2; 3; 4; 6; 1.
    int qsf_fnd_update_fax_box(dev_ulong box_id, const std::string& passwd, const QSF_FND_BOX_DETAIL_INFO& info);
    // 0; 2; 3; 1.
    int qsf_fnd_delete_fax_box(dev_ulong box_id, const std::string& passwd);
    // Appends a FaxDocumentImpl per document of the box to the caller's java.util.ArrayList: 0; 2; 3; 1.
    int qsf_fnd_get_fax_document_list(dev_ulong box_id, const std::string& passwd, jobject list);

private:
    static std::atomic<qsf_fnd_fax_box_manager*> instance_;
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_FAX_BOX_MANAGER_H
