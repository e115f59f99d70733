// The describers of the documents of a user box: orvane/qsf/box/document/DocumentImpl (qsf_fnd_document) and
// its DocumentInfoImpl (qsf_fnd_document_info), which the fax documents share. Each looks up its class and
// fields when it is made (box/box_describer.h).
#ifndef JBRG_BOX_QSF_FND_DOCUMENT_H
#define JBRG_BOX_QSF_FND_DOCUMENT_H

#include <jni.h>

#include "box/box_describer.h"
#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_document : public box::describer {
public:
    qsf_fnd_document();
    explicit qsf_fnd_document(JNIEnv* env);

    jobject create_document();
    bool set_field_document_id(jobject document, dev_ulong doc_id);
    bool set_field_info(jobject document, jobject info);  // a DocumentInfoImpl, or null
    bool set_field_box_id(jobject document, dev_ulong box_id);
    bool set_field_box_password(jobject document, const char* password);
    bool set_field_cert_id(jobject document, dev_ulong cert_id);
};

class qsf_fnd_document_info : public box::describer {
public:
    qsf_fnd_document_info();
    explicit qsf_fnd_document_info(JNIEnv* env);

    jobject create_document_info();
    bool set_field_document_name(jobject info, const char* name);
    bool set_field_page_count(jobject info, dev_ulong pages);
    bool set_field_resolution(jobject info, XSI_PBFS_BOX_DOC_RESO resolution);
    // By the kind of the pages' sizes: unknown, non-standard, mixed (kind 1 is given by its size code).
    bool set_field_storing_size(jobject info, XSI_PBFS_BOX_DOC_PAGES_SIZE kind);
    // By the paper size code of a document whose pages have one standard size.
    bool set_field_storing_size(jobject info, unsigned char size_code);
    bool set_field_color(jobject info, XSI_PBFS_BOX_DOC_COLOR color);
    bool set_field_date(jobject info, dev_long seconds);
    bool set_field_data_size(jobject info, dev_ulong bytes);

    // Fills `info` from one document of a box listing: name, pages, resolution, storing size (by size code
    // for one standard size, else by kind), colour, date, data size.
    void describe(jobject info, const XSI_PBFS_BOX_DOC_INFO& document);
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_DOCUMENT_H
