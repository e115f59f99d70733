#include "box/qsf_fnd_fax_box.h"

#include "box/box_describer.h"
#include "box/box_enums.h"
#include "core/cjvm.h"

namespace orvane {

namespace {

constexpr const char kString[] = "Ljava/lang/String;";

jni::class_id jcls_fax_box{"orvane/qsf/box/FaxBoxImpl"};
jni::method_id mid_fax_box_constructor{jcls_fax_box, "<init>", "()V"};
jni::field_id fid_box_id{jcls_fax_box, "boxid", "J"};
jni::field_id fid_exists{jcls_fax_box, "exists", "Z"};
jni::field_id fid_info{jcls_fax_box, "info", "Lorvane/qsf/box/FaxBoxInfoImpl;"};
jni::field_id fid_detail{jcls_fax_box, "detail", "Lorvane/qsf/box/FaxBoxDetailInfoImpl;"};

jni::class_id jcls_fax_box_info{"orvane/qsf/box/FaxBoxInfoImpl"};
jni::method_id mid_info_constructor{jcls_fax_box_info, "<init>", "()V"};
jni::field_id fid_box_number{jcls_fax_box_info, "boxnumber", "I"};
jni::field_id fid_box_name{jcls_fax_box_info, "boxname", kString};
jni::field_id fid_owner_login_name{jcls_fax_box_info, "ownerloginname", kString};
jni::field_id fid_owner_user_name{jcls_fax_box_info, "ownerusername", kString};
jni::field_id fid_owner_domain_name{jcls_fax_box_info, "ownerdomainname", kString};
jni::field_id fid_owner_type{jcls_fax_box_info, "ownertype", "Lorvane/box/attribute/OwnerType;"};
jni::field_id fid_permission{jcls_fax_box_info, "permission", "Lorvane/box/attribute/Permission;"};
jni::field_id fid_current_size{jcls_fax_box_info, "currentsize", "J"};
jni::field_id fid_num{jcls_fax_box_info, "num", "I"};
box::cached_enum owner_type{box::kFaxOwnerType};
box::cached_enum permission{box::kFaxPermission};

jni::class_id jcls_fax_box_detail{"orvane/qsf/box/FaxBoxDetailInfoImpl"};
jni::field_id fid_delsetting{jcls_fax_box_detail, "delsetting", "Lorvane/box/attribute/DeleteSetting;"};
jni::field_id fid_password{jcls_fax_box_detail, "password", kString};
box::cached_enum del{box::kFaxDeleteSetting};

jni::class_id jcls_fax_document{"orvane/qsf/box/document/FaxDocumentImpl"};
jni::method_id mid_document_constructor{jcls_fax_document, "<init>", "()V"};
jni::field_id fid_doc_id{jcls_fax_document, "docid", "J"};
jni::field_id fid_doc_info{jcls_fax_document, "info", "Lorvane/qsf/box/document/DocumentInfoImpl;"};
jni::field_id fid_doc_box_id{jcls_fax_document, "boxid", "J"};
jni::field_id fid_doc_passwd{jcls_fax_document, "passwd", kString};
jni::class_id jcls_document_info{"orvane/qsf/box/document/DocumentInfoImpl"};

}  // namespace

jobject qsf_fnd_fax_box::create_fax_box() { return create(mid_fax_box_constructor, JBRG_TRACE_SITE); }
bool qsf_fnd_fax_box::set_field_box_id(jobject box, dev_ulong box_id) {
    return set_long(box, fid_box_id, box_id, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_box::set_field_exists(jobject box, bool exists) {
    return set_bool(box, fid_exists, exists, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_box::set_field_info(jobject box, jobject info) {
    return set_object(box, fid_info, info, jcls_fax_box_info, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_box::set_field_detail_info(jobject box, jobject detail) {
    return set_object(box, fid_detail, detail, jcls_fax_box_detail, JBRG_TRACE_SITE);
}

jobject qsf_fnd_fax_box_info::create_fax_box_info() { return create(mid_info_constructor, JBRG_TRACE_SITE); }

bool qsf_fnd_fax_box_info::describe(jobject info, const XSI_PBFS_BOX_FAX_BOX_LIST& entry) {
    const XSI_PBFS_BOX_COMMON_INFO& common = entry.box_common_info;
    box::field_text name(common.box_name);
    box::field_text login(common.box_owner_login_name);
    box::field_text user(common.box_owner_name);
    box::field_text domain(common.box_owner_domain_name);
    bool ok = set_int(info, fid_box_number, static_cast<int32_t>(common.box_num), JBRG_TRACE_SITE) &&
              set_text(info, fid_box_name, name.get(), JBRG_TRACE_SITE);
    // A box whose owner login name is empty has no owner, whatever its owner type says.
    if (login.length() == 0) {
        ok = ok && set_enum(info, fid_owner_type, owner_type, -1, JBRG_TRACE_SITE);
    } else {
        ok = ok && set_enum(info, fid_owner_type, owner_type, common.box_owner_type, JBRG_TRACE_SITE);
    }
    return ok && set_text(info, fid_owner_login_name, login.get(), JBRG_TRACE_SITE) &&
           set_text(info, fid_owner_user_name, user.get(), JBRG_TRACE_SITE) &&
           set_text(info, fid_owner_domain_name, domain.get(), JBRG_TRACE_SITE) &&
           set_enum(info, fid_permission, permission, common.box_share, JBRG_TRACE_SITE) &&
           set_long(info, fid_current_size, entry.box_current_size, JBRG_TRACE_SITE) &&
           set_int(info, fid_num, entry.box_doc_num, JBRG_TRACE_SITE);
}

bool qsf_fnd_fax_box_detail_info::accepts(jobject detail) {
    // The delete setting's field stands for the class: it cannot be had without it.
    if (detail == nullptr || !fid_delsetting.ensure(JBRG_TRACE_SITE)) return false;
    JNIEnv* env = CJvm::GetJNIEnv();
    return env != nullptr && env->IsInstanceOf(detail, jcls_fax_box_detail.get());
}
bool qsf_fnd_fax_box_detail_info::set_field_delete_set(jobject detail, XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL value) {
    return set_enum(detail, fid_delsetting, del, value, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_box_detail_info::set_field_passwd(jobject detail, const char* password) {
    return set_text(detail, fid_password, password, JBRG_TRACE_SITE);
}

jobject qsf_fnd_fax_document::create_fax_document() { return create(mid_document_constructor, JBRG_TRACE_SITE); }
bool qsf_fnd_fax_document::set_field_document_id(jobject document, dev_ulong doc_id) {
    return set_long(document, fid_doc_id, doc_id, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_document::set_field_info(jobject document, jobject info) {
    return set_object(document, fid_doc_info, info, jcls_document_info, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_document::set_field_box_id(jobject document, dev_ulong box_id) {
    return set_long(document, fid_doc_box_id, box_id, JBRG_TRACE_SITE);
}
bool qsf_fnd_fax_document::set_field_box_password(jobject document, const char* password) {
    return set_text(document, fid_doc_passwd, password, JBRG_TRACE_SITE);
}

}  // namespace orvane
