#include "address/cmt_address_entries.h"

#include <iterator>

namespace orvane {

namespace {

constexpr const char kString[] = "Ljava/lang/String;";

constexpr jni::field_spec kNameFields[] = {{"name", kString}, {"pronunciation", kString}};
constexpr jni::field_spec kEmailFields[] = {{"mailAddress", kString}};
enum folder_field { kHost, kPath, kPort, kLoginName, kFolderPassword };
constexpr jni::field_spec kFolderFields[] = {
    {"host", kString}, {"path", kString}, {"port", "I"}, {"loginName", kString}, {"password", kString}};
enum fax_field {
    kFaxNum, kBitrate, kEcm, kFaxAddress, kEncode, kEncodeId, kEncodeBox, kEncodeBoxNum, kFaxName, kDepartment,
    kCompany, kHonorific, kFaxPassword
};
constexpr jni::field_spec kFaxFields[] = {
    {"faxNum", kString},   {"bitrateType", "B"}, {"ecm", "B"},          {"faxAddress", kString}, {"encode", "B"},
    {"encodeID", "B"},     {"encodeBox", "B"},   {"encodeBoxNum", "B"}, {"name", kString},      {"department", kString},
    {"company", kString},  {"honorificTitleType", "B"}, {"password", kString},
};
enum ifax_field { kIfaxAddress, kMode, kSize, kResolution, kFile, kViaServer };
constexpr jni::field_spec kIfaxFields[] = {{"ifaxAddress", kString}, {"modeType", "B"}, {"sizeType", "B"},
                                           {"resolutionType", "B"}, {"fileType", "B"}, {"viaServer", "B"}};

// An addressee's fields, in this order; a group member has its type after them.
enum addressee_field { kName, kEmail, kFtp, kSmb, kFax, kIfax, kNumber, kType };
#define JBRG_ADDRESSEE_FIELDS                                                                     \
    {"name", "Lorvane/qsf/address/attribute/NameInfoImpl;"},                                      \
        {"email", "Lorvane/qsf/address/attribute/EmailInfoImpl;"},                                \
        {"ftp", "Lorvane/qsf/address/attribute/FtpInfoImpl;"},                                    \
        {"smb", "Lorvane/qsf/address/attribute/SmbInfoImpl;"},                                    \
        {"fax", "Lorvane/qsf/address/attribute/FaxInfoImpl;"},                                    \
        {"ifax", "Lorvane/qsf/address/attribute/IfaxInfoImpl;"}, {"number", "I"}
constexpr jni::field_spec kPersonalFields[] = {JBRG_ADDRESSEE_FIELDS};
constexpr jni::field_spec kMemberFields[] = {JBRG_ADDRESSEE_FIELDS, {"type", "B"}};
#undef JBRG_ADDRESSEE_FIELDS

enum group_field { kGroupId, kGroupNumber, kGroupName };
constexpr jni::field_spec kGroupFields[] = {
    {"id", "I"}, {"number", "I"}, {"name", "Lorvane/qsf/address/attribute/NameInfoImpl;"}};

}  // namespace

// ---- Names and destinations ------------------------------------------------------------------------------

cmt_name_info::cmt_name_info(JNIEnv* env)
    : describer(env, "orvane/qsf/address/attribute/NameInfoImpl", kNameFields, std::size(kNameFields)) {}
jobject cmt_name_info::create_object() { return create(JBRG_TRACE_SITE); }
bool cmt_name_info::set_field_name(jobject info, const char* name) { return set_text(info, 0, name); }
bool cmt_name_info::set_field_pronunciation(jobject info, const char* pronunciation) {
    return set_text(info, 1, pronunciation);
}

cmt_email_info::cmt_email_info(JNIEnv* env)
    : describer(env, "orvane/qsf/address/attribute/EmailInfoImpl", kEmailFields, std::size(kEmailFields)) {}
jobject cmt_email_info::create_object() { return create(JBRG_TRACE_SITE); }
bool cmt_email_info::set_field_mailAddress(jobject info, const char* address) { return set_text(info, 0, address); }

cmt_folder_info::cmt_folder_info(JNIEnv* env, const char* class_path)
    : describer(env, class_path, kFolderFields, std::size(kFolderFields)) {}
jobject cmt_folder_info::create_object() { return create(JBRG_TRACE_SITE); }
bool cmt_folder_info::set_field_host(jobject info, const char* host) { return set_text(info, kHost, host); }
bool cmt_folder_info::set_field_path(jobject info, const char* path) { return set_text(info, kPath, path); }
bool cmt_folder_info::set_field_port(jobject info, int port) { return set_int(info, kPort, port); }
bool cmt_folder_info::set_field_loginName(jobject info, const char* name) { return set_text(info, kLoginName, name); }
bool cmt_folder_info::set_field_password(jobject info, const char* password) {
    return set_text(info, kFolderPassword, password);
}
cmt_ftp_info::cmt_ftp_info(JNIEnv* env) : cmt_folder_info(env, "orvane/qsf/address/attribute/FtpInfoImpl") {}
cmt_smb_info::cmt_smb_info(JNIEnv* env) : cmt_folder_info(env, "orvane/qsf/address/attribute/SmbInfoImpl") {}

cmt_fax_info::cmt_fax_info(JNIEnv* env)
    : describer(env, "orvane/qsf/address/attribute/FaxInfoImpl", kFaxFields, std::size(kFaxFields)) {}
jobject cmt_fax_info::create_object() { return create(JBRG_TRACE_SITE); }
bool cmt_fax_info::set_field_faxNum(jobject info, const char* number) { return set_text(info, kFaxNum, number); }
bool cmt_fax_info::set_field_bitrateType(jobject info, signed char value) { return set_byte(info, kBitrate, value); }
bool cmt_fax_info::set_field_ecm(jobject info, signed char value) { return set_byte(info, kEcm, value); }
bool cmt_fax_info::set_field_faxAddress(jobject info, const char* address) { return set_text(info, kFaxAddress, address); }
bool cmt_fax_info::set_field_encode(jobject info, signed char value) { return set_byte(info, kEncode, value); }
bool cmt_fax_info::set_field_encodeID(jobject info, signed char value) { return set_byte(info, kEncodeId, value); }
bool cmt_fax_info::set_field_encodeBox(jobject info, signed char value) { return set_byte(info, kEncodeBox, value); }
bool cmt_fax_info::set_field_encodeBoxNum(jobject info, signed char value) {
    return set_byte(info, kEncodeBoxNum, value);
}
bool cmt_fax_info::set_field_name(jobject info, const char* name) { return set_text(info, kFaxName, name); }
bool cmt_fax_info::set_field_department(jobject info, const char* department) {
    return set_text(info, kDepartment, department);
}
bool cmt_fax_info::set_field_company(jobject info, const char* company) { return set_text(info, kCompany, company); }
bool cmt_fax_info::set_field_honorificTitleType(jobject info, signed char value) {
    return set_byte(info, kHonorific, value);
}
bool cmt_fax_info::set_field_password(jobject info, const char* password) { return set_text(info, kFaxPassword, password); }

cmt_ifax_info::cmt_ifax_info(JNIEnv* env)
    : describer(env, "orvane/qsf/address/attribute/IfaxInfoImpl", kIfaxFields, std::size(kIfaxFields)) {}
jobject cmt_ifax_info::create_object() { return create(JBRG_TRACE_SITE); }
bool cmt_ifax_info::set_field_ifaxAddress(jobject info, const char* address) { return set_text(info, kIfaxAddress, address); }
bool cmt_ifax_info::set_field_modeType(jobject info, signed char value) { return set_byte(info, kMode, value); }
bool cmt_ifax_info::set_field_sizeType(jobject info, signed char value) { return set_byte(info, kSize, value); }
bool cmt_ifax_info::set_field_resolutionType(jobject info, signed char value) {
    return set_byte(info, kResolution, value);
}
bool cmt_ifax_info::set_field_fileType(jobject info, signed char value) { return set_byte(info, kFile, value); }
bool cmt_ifax_info::set_field_viaServer(jobject info, signed char value) { return set_byte(info, kViaServer, value); }

// ---- Addresses, members, groups -------------------------------------------------------------------------

cmt_addressee::cmt_addressee(JNIEnv* env, const char* class_path, const jni::field_spec* fields, std::size_t count)
    : describer(env, class_path, fields, count) {}
jobject cmt_addressee::create_object() { return create(JBRG_TRACE_SITE); }
jobjectArray cmt_addressee::create_object_array(int n) { return create_array(n, JBRG_TRACE_SITE); }
bool cmt_addressee::set_field_name(jobject entry, jobject name) { return set_object(entry, kName, name); }
bool cmt_addressee::set_field_email(jobject entry, jobject email) { return set_object(entry, kEmail, email); }
bool cmt_addressee::set_field_ftp(jobject entry, jobject ftp) { return set_object(entry, kFtp, ftp); }
bool cmt_addressee::set_field_smb(jobject entry, jobject smb) { return set_object(entry, kSmb, smb); }
bool cmt_addressee::set_field_fax(jobject entry, jobject fax) { return set_object(entry, kFax, fax); }
bool cmt_addressee::set_field_ifax(jobject entry, jobject ifax) { return set_object(entry, kIfax, ifax); }
bool cmt_addressee::set_field_number(jobject entry, int number) { return set_int(entry, kNumber, number); }

cmt_personal_address::cmt_personal_address(JNIEnv* env)
    : cmt_addressee(env, "orvane/qsf/address/PersonalAddressImpl", kPersonalFields, std::size(kPersonalFields)) {}

cmt_group_address_member::cmt_group_address_member(JNIEnv* env)
    : cmt_addressee(env, "orvane/qsf/address/GroupAddressMemberImpl", kMemberFields, std::size(kMemberFields)) {}
bool cmt_group_address_member::set_field_type(jobject member, signed char type) { return set_byte(member, kType, type); }

cmt_group_address::cmt_group_address(JNIEnv* env)
    : describer(env, "orvane/qsf/address/GroupAddressImpl", kGroupFields, std::size(kGroupFields)) {}
jobject cmt_group_address::create_object() { return create(JBRG_TRACE_SITE); }
jobjectArray cmt_group_address::create_object_array(int n) { return create_array(n, JBRG_TRACE_SITE); }
bool cmt_group_address::set_field_id(jobject group, int id) { return set_int(group, kGroupId, id); }
bool cmt_group_address::set_field_number(jobject group, int number) { return set_int(group, kGroupNumber, number); }
bool cmt_group_address::set_field_name(jobject group, jobject name) { return set_object(group, kGroupName, name); }

}  // namespace orvane
