// The describers of user boxes: orvane/qsf/box/UserBoxImpl (qsf_fnd_user_box), with its
// UserBoxInfoImpl (qsf_fnd_user_box_info) and UserBoxDetailInfoImpl (qsf_fnd_user_box_detail_info).
// Each looks up its class and fields when it is made (box/box_describer.h); a setter answers false, setting
// nothing, for an object it cannot describe.
#ifndef JBRG_BOX_QSF_FND_USER_BOX_H
#define JBRG_BOX_QSF_FND_USER_BOX_H

#include <jni.h>

#include "box/box_describer.h"
#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_user_box : public box::describer {
public:
    qsf_fnd_user_box();
    explicit qsf_fnd_user_box(JNIEnv* env);

    jobject create_user_box();
    bool set_field_box_id(jobject box, dev_ulong box_id);
    bool set_field_exists(jobject box, bool exists);
    bool set_field_info(jobject box, jobject info);            // a UserBoxInfoImpl, or null
    bool set_field_detail_info(jobject box, jobject detail);   // a UserBoxDetailInfoImpl, or null
    bool set_field_cert_id(jobject box, dev_ulong cert_id);
};

class qsf_fnd_user_box_info : public box::describer {
public:
    qsf_fnd_user_box_info();
    explicit qsf_fnd_user_box_info(JNIEnv* env);

    jobject create_box_info();
    bool set_field_box_number(jobject info, dev_ulong number);
    bool set_field_box_name(jobject info, const char* name);
    // LOCAL_USER, NETWORK_USER; another value stores null.
    bool set_field_owner_type(jobject info, XSI_PBFS_BOX_OWNER_TYPE type);
    bool set_field_owner_type_no_owner(jobject info);
    bool set_field_owner_login_name(jobject info, const char* name);
    bool set_field_owner_user_name(jobject info, const char* name);
    bool set_field_owner_domain_name(jobject info, const char* name);
    // NOT_SHARED, SHARED; another value stores null.
    bool set_field_permission(jobject info, XSI_PBFS_BOX_SHARE_VAL share);
    bool set_field_current_size(jobject info, dev_ulong size);
    bool set_field_doc_num(jobject info, unsigned short count);
};

class qsf_fnd_user_box_detail_info : public box::describer {
public:
    qsf_fnd_user_box_detail_info();
    explicit qsf_fnd_user_box_detail_info(JNIEnv* env);

    jobject create_detail_info();
    bool set_field_max_size(jobject detail, dev_ulong size);
    // OFF, ON; another value stores null.
    bool set_field_delete_set(jobject detail, XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL value);
    bool set_field_period(jobject detail, unsigned char days);
    // PERMIT, PROHIBIT, UNKNOWN; another value stores null.
    bool set_field_ow_set(jobject detail, XSI_PBFS_BOX_UPDATE_VAL value);
    bool set_field_passwd(jobject detail, const char* password);
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_USER_BOX_H
