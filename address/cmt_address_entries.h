// The describers of the address book's Java objects (package orvane/qsf/address/ and its attribute/): one
// native class per Java class, which looks the class, its constructor and its fields up when it is made
// (core/jni_describer.h) and sets one field per call. A query of cmt_address_book makes one of each it needs
// and builds every entry of its listing with them.
#ifndef JBRG_ADDRESS_CMT_ADDRESS_ENTRIES_H
#define JBRG_ADDRESS_CMT_ADDRESS_ENTRIES_H

#include <jni.h>

#include "core/jni_describer.h"
#include "xsi_pbfs_address_book.h"

namespace orvane {

// orvane/qsf/address/attribute/NameInfoImpl
class cmt_name_info : public jni::describer {
public:
    explicit cmt_name_info(JNIEnv* env);
    jobject create_object();
    bool set_field_name(jobject info, const char* name);
    bool set_field_pronunciation(jobject info, const char* pronunciation);
};

// orvane/qsf/address/attribute/EmailInfoImpl
class cmt_email_info : public jni::describer {
public:
    explicit cmt_email_info(JNIEnv* env);
    jobject create_object();
    bool set_field_mailAddress(jobject info, const char* address);
};

// orvane/qsf/address/attribute/FtpInfoImpl and SmbInfoImpl: the same five fields.
class cmt_folder_info : public jni::describer {
public:
    jobject create_object();
    bool set_field_host(jobject info, const char* host);
    bool set_field_path(jobject info, const char* path);
    bool set_field_port(jobject info, int port);
    bool set_field_loginName(jobject info, const char* name);
    bool set_field_password(jobject info, const char* password);

protected:
    cmt_folder_info(JNIEnv* env, const char* class_path);
};

class cmt_ftp_info : public cmt_folder_info {
public:
    explicit cmt_ftp_info(JNIEnv* env);
};

class cmt_smb_info : public cmt_folder_info {
public:
    explicit cmt_smb_info(JNIEnv* env);
};

// orvane/qsf/address/attribute/FaxInfoImpl
class cmt_fax_info : public jni::describer {
public:
    explicit cmt_fax_info(JNIEnv* env);
    jobject create_object();
    bool set_field_faxNum(jobject info, const char* number);
    bool set_field_bitrateType(jobject info, signed char value);
    bool set_field_ecm(jobject info, signed char value);
    bool set_field_faxAddress(jobject info, const char* address);
    bool set_field_encode(jobject info, signed char value);
    bool set_field_encodeID(jobject info, signed char value);
    bool set_field_encodeBox(jobject info, signed char value);
    bool set_field_encodeBoxNum(jobject info, signed char value);
    bool set_field_name(jobject info, const char* name);
    bool set_field_department(jobject info, const char* department);
    bool set_field_company(jobject info, const char* company);
    bool set_field_honorificTitleType(jobject info, signed char value);
    bool set_field_password(jobject info, const char* password);
};

// orvane/qsf/address/attribute/IfaxInfoImpl
class cmt_ifax_info : public jni::describer {
public:
    explicit cmt_ifax_info(JNIEnv* env);
    jobject create_object();
    bool set_field_ifaxAddress(jobject info, const char* address);
    bool set_field_modeType(jobject info, signed char value);
    bool set_field_sizeType(jobject info, signed char value);
    bool set_field_resolutionType(jobject info, signed char value);
    bool set_field_fileType(jobject info, signed char value);
    bool set_field_viaServer(jobject info, signed char value);
};

// The fields an address, and a group member, carry: a name and destinations.
class cmt_addressee : public jni::describer {
public:
    jobject create_object();
    jobjectArray create_object_array(int n);
    bool set_field_name(jobject entry, jobject name);
    bool set_field_email(jobject entry, jobject email);
    bool set_field_ftp(jobject entry, jobject ftp);
    bool set_field_smb(jobject entry, jobject smb);
    bool set_field_fax(jobject entry, jobject fax);
    bool set_field_ifax(jobject entry, jobject ifax);
    bool set_field_number(jobject entry, int number);

protected:
    cmt_addressee(JNIEnv* env, const char* class_path, const jni::field_spec* fields, std::size_t count);
};

// orvane/qsf/address/PersonalAddressImpl
class cmt_personal_address : public cmt_addressee {
public:
    explicit cmt_personal_address(JNIEnv* env);
};

// orvane/qsf/address/GroupAddressMemberImpl
class cmt_group_address_member : public cmt_addressee {
public:
    explicit cmt_group_address_member(JNIEnv* env);
    bool set_field_type(jobject member, signed char type);
};

// orvane/qsf/address/GroupAddressImpl
class cmt_group_address : public jni::describer {
public:
    explicit cmt_group_address(JNIEnv* env);
    jobject create_object();
    jobjectArray create_object_array(int n);
    bool set_field_id(jobject group, int id);
    bool set_field_number(jobject group, int number);
    bool set_field_name(jobject group, jobject name);
};

}  // namespace orvane

#endif  // JBRG_ADDRESS_CMT_ADDRESS_ENTRIES_H
