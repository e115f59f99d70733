#include "box/qsf_fnd_document.h"

#include <iterator>

#include "box/box_enums.h"

namespace orvane {

namespace {

constexpr const char kDocumentClass[] = "orvane/qsf/box/document/DocumentImpl";
enum document_field { kDocId, kInfo, kBoxId, kPassword, kCertId };
constexpr box::field_spec kDocumentFields[] = {
    {"docid", "J"},
    {"info", "Lorvane/qsf/box/document/DocumentInfoImpl;"},
    {"boxid", "J"},
    {"passwd", "Ljava/lang/String;"},
    {"certid", "J"},
};

constexpr const char kInfoClass[] = "orvane/qsf/box/document/DocumentInfoImpl";
enum info_field { kName, kPages, kResolution, kStoringSize, kColor, kDate, kDataSize };
constexpr box::field_spec kInfoFields[] = {
    {"docname", "Ljava/lang/String;"},
    {"pagecount", "J"},
    {"resolution", "Lorvane/box/document/attribute/Resolution;"},
    {"storingsize", "Lorvane/box/document/attribute/StoringSize;"},
    {"color", "Lorvane/box/document/attribute/ColorMode;"},
    {"date", "Ljava/util/Date;"},
    {"datasize", "J"},
};

}  // namespace

// ---- DocumentImpl ---------------------------------------------------------------------------------------

qsf_fnd_document::qsf_fnd_document() : describer(kDocumentClass, kDocumentFields, std::size(kDocumentFields)) {}
qsf_fnd_document::qsf_fnd_document(JNIEnv* env)
    : describer(env, kDocumentClass, kDocumentFields, std::size(kDocumentFields)) {}

jobject qsf_fnd_document::create_document() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_document::set_field_document_id(jobject document, dev_ulong doc_id) {
    return set_long(document, kDocId, doc_id);
}
bool qsf_fnd_document::set_field_info(jobject document, jobject info) { return set_object(document, kInfo, info); }
bool qsf_fnd_document::set_field_box_id(jobject document, dev_ulong box_id) {
    return set_long(document, kBoxId, box_id);
}
bool qsf_fnd_document::set_field_box_password(jobject document, const char* password) {
    return set_text(document, kPassword, password);
}
bool qsf_fnd_document::set_field_cert_id(jobject document, dev_ulong cert_id) {
    return set_long(document, kCertId, cert_id);
}

// ---- DocumentInfoImpl -----------------------------------------------------------------------------------

qsf_fnd_document_info::qsf_fnd_document_info() : describer(kInfoClass, kInfoFields, std::size(kInfoFields)) {}
qsf_fnd_document_info::qsf_fnd_document_info(JNIEnv* env)
    : describer(env, kInfoClass, kInfoFields, std::size(kInfoFields)) {}

jobject qsf_fnd_document_info::create_document_info() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_document_info::set_field_document_name(jobject info, const char* name) { return set_text(info, kName, name); }
bool qsf_fnd_document_info::set_field_page_count(jobject info, dev_ulong pages) {
    return set_long(info, kPages, pages);
}
bool qsf_fnd_document_info::set_field_resolution(jobject info, XSI_PBFS_BOX_DOC_RESO resolution) {
    return set_enum(info, kResolution, box::kResolution, resolution, JBRG_TRACE_SITE);
}
bool qsf_fnd_document_info::set_field_storing_size(jobject info, XSI_PBFS_BOX_DOC_PAGES_SIZE kind) {
    return set_enum(info, kStoringSize, box::kStoringSizeKind, kind, JBRG_TRACE_SITE);
}
bool qsf_fnd_document_info::set_field_storing_size(jobject info, unsigned char size_code) {
    return set_enum(info, kStoringSize, box::kDocumentSizeCode, size_code, JBRG_TRACE_SITE);
}
bool qsf_fnd_document_info::set_field_color(jobject info, XSI_PBFS_BOX_DOC_COLOR color) {
    return set_enum(info, kColor, box::kColorMode, color, JBRG_TRACE_SITE);
}
bool qsf_fnd_document_info::set_field_date(jobject info, dev_long seconds) {
    return set_date(info, kDate, seconds, JBRG_TRACE_SITE);
}
bool qsf_fnd_document_info::set_field_data_size(jobject info, dev_ulong bytes) {
    return set_long(info, kDataSize, bytes);
}

void qsf_fnd_document_info::describe(jobject info, const XSI_PBFS_BOX_DOC_INFO& document) {
    box::field_text name(document.doc_name);
    set_field_document_name(info, name.get());
    set_field_page_count(info, document.page_count);
    set_field_resolution(info, document.resolution);
    if (document.pages_size == box::kStandardSizeKind) {
        set_field_storing_size(info, document.size_code);
    } else {
        set_field_storing_size(info, document.pages_size);
    }
    set_field_color(info, document.color);
    set_field_date(info, document.date);
    set_field_data_size(info, document.data_size);
}

}  // namespace orvane
