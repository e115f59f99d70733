// The user boxes of the device, for Java: list them, read a box's details and the space left for boxes, add,
// update and delete boxes, list a box's documents. Every operation exists twice: without and with the
// certificate id of a login, which acts for that user (the box service's _bkg operations) and knows one more
// failure, the login error (9).
//
// The manager is a process-wide singleton without state (qsf_fnd_get_instance). It builds its Java objects
// through the describers of box/qsf_fnd_user_box.h and box/qsf_fnd_document.h, one per entry. Results are
// the box results of box/box_result.h.
#ifndef JBRG_BOX_QSF_FND_USER_BOX_MANAGER_H
#define JBRG_BOX_QSF_FND_USER_BOX_MANAGER_H

#include <jni.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

#include "core/trace.h"
#include "xsi_pbfs_box.h"

namespace orvane {

// A box's description as Java hands it in to add or update a box: a record of the library's own, with owned
// strings, made and filled by Java through the module's accessors.
struct QSF_FND_BOX_DETAIL_INFO {
    dev_ulong box_number = 0;
    std::string box_name;
    XSI_PBFS_BOX_OWNER_TYPE box_owner_type = XSI_PBFS_BOX_OWNER_TYPE_LOCAL_USER;
    std::string box_owner_name;
    std::string box_owner_login_name;
    std::string box_owner_domain_name;
    XSI_PBFS_BOX_SHARE_VAL box_share = XSI_PBFS_BOX_SHARE_VAL_NOT_SHARE;
    dev_ulong box_capacity = 0;
    unsigned char box_preservation_period = 0;
    XSI_PBFS_BOX_UPDATE_VAL box_data_update = XSI_PBFS_BOX_UPDATE_VAL_UNKNOWN;
    XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL box_doc_delete_after_job = XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_OFF;
    std::string box_pw;
};

namespace box {
// Copies `info` into the box service's record. Each text must fit its field with its terminating zero (192
// bytes of name, 384 of owner name and owner login name, 256 of domain, 16 of password): a text that does not
// is refused whole (traced "<field> too long." at `site`, false) rather than cut, so that no box is made with
// a name or password other than the one asked for.
bool to_detail_record(const QSF_FND_BOX_DETAIL_INFO& info, XSI_PBFS_BOX_DETAIL_INFO& record, const trace_site& site);
}  // namespace box

class qsf_fnd_user_box_manager {
public:
    qsf_fnd_user_box_manager() = default;

    static qsf_fnd_user_box_manager* qsf_fnd_get_instance();

    // A new java.util.ArrayList of UserBoxImpl, or null on failure.
    jobject qsf_fnd_get_user_box_list();
    jobject qsf_fnd_get_user_box_list(dev_ulong cert_id);
    // Fills the caller's UserBoxDetailInfoImpl: 0, 2, 3, (9), 1.
    int qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd, jobject detail);
    int qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd, jobject detail,
                                         dev_ulong cert_id);
    // 0, 4, 5, 6, (9), 1.
    int qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info);
    int qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info, dev_ulong cert_id);
    // 0, 2, 3, 4, 6, (9), 1.
    int qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd, const QSF_FND_BOX_DETAIL_INFO& info);
    int qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd, const QSF_FND_BOX_DETAIL_INFO& info,
                           dev_ulong cert_id);
    // 0, 2, 3, (9), 1.
    int qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd);
    int qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd, dev_ulong cert_id);
    // Megabytes left for user boxes; 0 on failure.
    dev_ulong qsf_fnd_get_user_box_available_space();
    dev_ulong qsf_fnd_get_user_box_available_space(dev_ulong cert_id);
    // Appends a DocumentImpl per document of the box to the caller's java.util.ArrayList: 0, 2, 3, (9), 1.
    int qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list);
    int qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list, dev_ulong cert_id);

private:
    // Each operation once, for both forms: without a certificate, or with one. They carry the operations'
    // names, which their trace lines show.
    using certificate = std::optional<dev_ulong>;

    jobject qsf_fnd_get_user_box_list(certificate cert);
    int qsf_fnd_get_user_box_detail_info(dev_ulong box_id, const std::string& passwd, jobject detail, certificate cert);
    int qsf_fnd_add_box(const QSF_FND_BOX_DETAIL_INFO& info, certificate cert);
    int qsf_fnd_update_box(dev_ulong box_id, const std::string& passwd, const QSF_FND_BOX_DETAIL_INFO& info,
                           certificate cert);
    int qsf_fnd_delete_box(dev_ulong box_id, const std::string& passwd, certificate cert);
    dev_ulong qsf_fnd_get_user_box_available_space(certificate cert);
    int qsf_fnd_get_document_list(dev_ulong box_id, const std::string& passwd, jobject list, certificate cert);

    static std::atomic<qsf_fnd_user_box_manager*> instance_;
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_USER_BOX_MANAGER_H
