#include "box/qsf_fnd_user_box.h"

#include <iterator>

#include "box/box_enums.h"

namespace orvane {

namespace {

constexpr const char kUserBoxClass[] = "orvane/qsf/box/UserBoxImpl";
enum user_box_field { kBoxId, kExists, kInfo, kDetail, kCertId };
constexpr box::field_spec kUserBoxFields[] = {
    {"boxid", "J"},
    {"exists", "Z"},
    {"info", "Lorvane/qsf/box/UserBoxInfoImpl;"},
    {"detail", "Lorvane/qsf/box/UserBoxDetailInfoImpl;"},
    {"certid", "J"},
};

constexpr const char kInfoClass[] = "orvane/qsf/box/UserBoxInfoImpl";
enum info_field { kNumber, kName, kOwnerType, kLoginName, kUserName, kDomainName, kPermission, kSize, kDocs };
constexpr box::field_spec kInfoFields[] = {
    {"boxnumber", "I"},
    {"boxname", "Ljava/lang/String;"},
    {"ownertype", "Lorvane/box/attribute/OwnerType;"},
    {"ownerloginname", "Ljava/lang/String;"},
    {"ownerusername", "Ljava/lang/String;"},
    {"ownerdomainname", "Ljava/lang/String;"},
    {"permission", "Lorvane/box/attribute/Permission;"},
    {"currentsize", "J"},
    {"num", "I"},
};

constexpr const char kDetailClass[] = "orvane/qsf/box/UserBoxDetailInfoImpl";
enum detail_field { kMaxSize, kDeleteSetting, kPeriod, kOverwrite, kPassword };
constexpr box::field_spec kDetailFields[] = {
    {"maxsize", "I"},
    {"delsetting", "Lorvane/box/attribute/DeleteSetting;"},
    {"period", "I"},
    {"ovsetting", "Lorvane/box/attribute/OverwriteSetting;"},
    {"password", "Ljava/lang/String;"},
};

}  // namespace

// ---- UserBoxImpl ----------------------------------------------------------------------------------------

qsf_fnd_user_box::qsf_fnd_user_box() : describer(kUserBoxClass, kUserBoxFields, std::size(kUserBoxFields)) {}
qsf_fnd_user_box::qsf_fnd_user_box(JNIEnv* env)
    : describer(env, kUserBoxClass, kUserBoxFields, std::size(kUserBoxFields)) {}

jobject qsf_fnd_user_box::create_user_box() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_user_box::set_field_box_id(jobject box, dev_ulong box_id) { return set_long(box, kBoxId, box_id); }
bool qsf_fnd_user_box::set_field_exists(jobject box, bool exists) { return set_bool(box, kExists, exists); }
bool qsf_fnd_user_box::set_field_info(jobject box, jobject info) { return set_object(box, kInfo, info); }
bool qsf_fnd_user_box::set_field_detail_info(jobject box, jobject detail) { return set_object(box, kDetail, detail); }
bool qsf_fnd_user_box::set_field_cert_id(jobject box, dev_ulong cert_id) { return set_long(box, kCertId, cert_id); }

// ---- UserBoxInfoImpl ------------------------------------------------------------------------------------

qsf_fnd_user_box_info::qsf_fnd_user_box_info() : describer(kInfoClass, kInfoFields, std::size(kInfoFields)) {}
qsf_fnd_user_box_info::qsf_fnd_user_box_info(JNIEnv* env)
    : describer(env, kInfoClass, kInfoFields, std::size(kInfoFields)) {}

jobject qsf_fnd_user_box_info::create_box_info() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_user_box_info::set_field_box_number(jobject info, dev_ulong number) {
    return set_int(info, kNumber, static_cast<int32_t>(number));
}
bool qsf_fnd_user_box_info::set_field_box_name(jobject info, const char* name) { return set_text(info, kName, name); }
bool qsf_fnd_user_box_info::set_field_owner_type(jobject info, XSI_PBFS_BOX_OWNER_TYPE type) {
    return set_enum(info, kOwnerType, box::kOwnerType, type, JBRG_TRACE_SITE);
}
bool qsf_fnd_user_box_info::set_field_owner_type_no_owner(jobject info) {
    return set_constant(info, kOwnerType, box::kOwnerTypeClass, box::kNoOwner, JBRG_TRACE_SITE);
}
bool qsf_fnd_user_box_info::set_field_owner_login_name(jobject info, const char* name) {
    return set_text(info, kLoginName, name);
}
bool qsf_fnd_user_box_info::set_field_owner_user_name(jobject info, const char* name) { return set_text(info, kUserName, name); }
bool qsf_fnd_user_box_info::set_field_owner_domain_name(jobject info, const char* name) {
    return set_text(info, kDomainName, name);
}
bool qsf_fnd_user_box_info::set_field_permission(jobject info, XSI_PBFS_BOX_SHARE_VAL share) {
    return set_enum(info, kPermission, box::kPermission, share, JBRG_TRACE_SITE);
}
bool qsf_fnd_user_box_info::set_field_current_size(jobject info, dev_ulong size) { return set_long(info, kSize, size); }
bool qsf_fnd_user_box_info::set_field_doc_num(jobject info, unsigned short count) { return set_int(info, kDocs, count); }

// ---- UserBoxDetailInfoImpl ------------------------------------------------------------------------------

qsf_fnd_user_box_detail_info::qsf_fnd_user_box_detail_info()
    : describer(kDetailClass, kDetailFields, std::size(kDetailFields)) {}
qsf_fnd_user_box_detail_info::qsf_fnd_user_box_detail_info(JNIEnv* env)
    : describer(env, kDetailClass, kDetailFields, std::size(kDetailFields)) {}

jobject qsf_fnd_user_box_detail_info::create_detail_info() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_user_box_detail_info::set_field_max_size(jobject detail, dev_ulong size) {
    return set_int(detail, kMaxSize, static_cast<int32_t>(size));
}
bool qsf_fnd_user_box_detail_info::set_field_delete_set(jobject detail, XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL value) {
    return set_enum(detail, kDeleteSetting, box::kDeleteSetting, value, JBRG_TRACE_SITE);
}
bool qsf_fnd_user_box_detail_info::set_field_period(jobject detail, unsigned char days) {
    return set_int(detail, kPeriod, days);
}
bool qsf_fnd_user_box_detail_info::set_field_ow_set(jobject detail, XSI_PBFS_BOX_UPDATE_VAL value) {
    return set_enum(detail, kOverwrite, box::kOverwriteSetting, value, JBRG_TRACE_SITE);
}
bool qsf_fnd_user_box_detail_info::set_field_passwd(jobject detail, const char* password) {
    return set_text(detail, kPassword, password);
}

}  // namespace orvane
