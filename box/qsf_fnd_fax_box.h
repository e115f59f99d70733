// The describers of fax boxes and their documents: orvane/qsf/box/FaxBoxImpl (qsf_fnd_fax_box) with its
// FaxBoxInfoImpl (qsf_fnd_fax_box_info) and FaxBoxDetailInfoImpl (qsf_fnd_fax_box_detail_info), and
// orvane/qsf/box/document/FaxDocumentImpl (qsf_fnd_fax_document), whose information is a DocumentInfoImpl
// (qsf_fnd_document_info). They use the process-wide identifier cache (box/box_cached.h). Their enumerations
// give every value a constant: an unknown owner type is NO_OWNER, an unknown share NOT_SHARED, an unknown
// delete setting OFF.
#ifndef JBRG_BOX_QSF_FND_FAX_BOX_H
#define JBRG_BOX_QSF_FND_FAX_BOX_H

#include <jni.h>

#include "box/box_cached.h"
#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_fax_box : public box::cached_describer {
public:
    explicit qsf_fnd_fax_box(JNIEnv* env) : cached_describer(env) {}

    jobject create_fax_box();
    bool set_field_box_id(jobject box, dev_ulong box_id);
    bool set_field_exists(jobject box, bool exists);
    bool set_field_info(jobject box, jobject info);
    bool set_field_detail_info(jobject box, jobject detail);
};

class qsf_fnd_fax_box_info : public box::cached_describer {
public:
    explicit qsf_fnd_fax_box_info(JNIEnv* env) : cached_describer(env) {}

    jobject create_fax_box_info();
    // Fills `info` from one entry of a fax box listing, in the order of the user boxes' listing.
    bool describe(jobject info, const XSI_PBFS_BOX_FAX_BOX_LIST& entry);
};

class qsf_fnd_fax_box_detail_info : public box::cached_describer {
public:
    explicit qsf_fnd_fax_box_detail_info(JNIEnv* env) : cached_describer(env) {}

    bool set_field_delete_set(jobject detail, XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL value);
    bool set_field_passwd(jobject detail, const char* password);
    // True when `detail` is a FaxBoxDetailInfoImpl.
    bool accepts(jobject detail);
};

class qsf_fnd_fax_document : public box::cached_describer {
public:
    explicit qsf_fnd_fax_document(JNIEnv* env) : cached_describer(env) {}

    jobject create_fax_document();
    bool set_field_document_id(jobject document, dev_ulong doc_id);
    bool set_field_info(jobject document, jobject info);
    bool set_field_box_id(jobject document, dev_ulong box_id);
    bool set_field_box_password(jobject document, const char* password);
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_FAX_BOX_H
