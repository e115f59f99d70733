#include "bench/listing_builders.h"

#include <ctime>
#include <string>

#include "emw_services.h"

namespace jbrg_bench {

namespace {

void set_object(JNIEnv* env, jobject o, jfieldID f, jobject v) {
    env->SetObjectField(o, f, v);
    env->DeleteLocalRef(v);
}

void set_text(JNIEnv* env, jobject o, jfieldID f, const char* text) { set_object(env, o, f, env->NewStringUTF(text)); }

jobject constant(JNIEnv* env, const char* enum_class, const char* name) {
    jclass type = env->FindClass(enum_class);
    std::string signature = std::string("L") + enum_class + ";";
    jobject value = env->GetStaticObjectField(type, env->GetStaticFieldID(type, name, signature.c_str()));
    env->DeleteLocalRef(type);
    return value;
}

jobject date(JNIEnv* env, time_t seconds) {
    struct tm local {};
    emwCLBLocalTime_r(&seconds, &local);
    jclass calendar = env->FindClass("java/util/Calendar");
    jobject c = env->CallStaticObjectMethod(calendar,
                                            env->GetStaticMethodID(calendar, "getInstance", "()Ljava/util/Calendar;"));
    env->CallVoidMethod(c, env->GetMethodID(calendar, "set", "(IIIIII)V"), local.tm_year + 1900, local.tm_mon,
                        local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    jobject d = env->CallObjectMethod(c, env->GetMethodID(calendar, "getTime", "()Ljava/util/Date;"));
    env->DeleteLocalRef(c);
    env->DeleteLocalRef(calendar);
    return d;
}

// One attribute of a user, made by its (String) constructor, found for this value.
void set_user_attribute(const user_builder& b, jobject user, const char* attribute_class, const char* text) {
    JNIEnv* env = b.env;
    jclass c = env->FindClass(attribute_class);
    jstring value = env->NewStringUTF(text);
    jobject attribute = env->NewObject(c, env->GetMethodID(c, "<init>", "(Ljava/lang/String;)V"), value);
    env->CallVoidMethod(user, b.set_attribute, attribute);
    env->DeleteLocalRef(attribute);
    env->DeleteLocalRef(value);
    env->DeleteLocalRef(c);
}

}  // namespace

jobject new_array_list(JNIEnv* env, jmethodID* add) {
    jclass c = env->FindClass("java/util/ArrayList");
    *add = env->GetMethodID(c, "add", "(Ljava/lang/Object;)Z");
    jobject list = env->NewObject(c, env->GetMethodID(c, "<init>", "()V"));
    env->DeleteLocalRef(c);
    return list;
}

user_builder::user_builder(JNIEnv* e)
    : env(e),
      user_class(e->FindClass("orvane/qsf/user/UserImpl")),
      user_init(e->GetMethodID(user_class, "<init>", "()V")),
      set_attribute(e->GetMethodID(user_class, "setAttribute", "(Lorvane/user/attribute/UserAttribute;)V")) {}

user_builder::~user_builder() { env->DeleteLocalRef(user_class); }

void user_builder::append(jobject list, jmethodID add, const XSI_PBFS_USERINFO_RECORD& r) const {
    jobject user = env->NewObject(user_class, user_init);
    set_user_attribute(*this, user, "orvane/user/attribute/LoginName", r.login_name);
    set_user_attribute(*this, user, "orvane/user/attribute/UserName", r.user_name);
    set_user_attribute(*this, user, "orvane/user/attribute/MailAddress", r.email);
    jobject level = r.rights == 0   ? constant(env, "orvane/user/attribute/AccessLevel", "ADMIN")
                    : r.rights == 1 ? constant(env, "orvane/user/attribute/AccessLevel", "USER")
                                    : nullptr;
    env->CallVoidMethod(user, set_attribute, level);
    if (level != nullptr) env->DeleteLocalRef(level);
    env->CallBooleanMethod(list, add, user);
    env->DeleteLocalRef(user);
}

void append_user_box(JNIEnv* env, jobject list, jmethodID add, const XSI_PBFS_BOX_LIST_INFO& r) {
    const XSI_PBFS_BOX_COMMON_INFO& c = r.box_common_info;
    jclass ic = env->FindClass("orvane/qsf/box/UserBoxInfoImpl");
    jfieldID number = env->GetFieldID(ic, "boxnumber", "I");
    jfieldID name = env->GetFieldID(ic, "boxname", "Ljava/lang/String;");
    jfieldID owner = env->GetFieldID(ic, "ownertype", "Lorvane/box/attribute/OwnerType;");
    jfieldID login = env->GetFieldID(ic, "ownerloginname", "Ljava/lang/String;");
    jfieldID user = env->GetFieldID(ic, "ownerusername", "Ljava/lang/String;");
    jfieldID domain = env->GetFieldID(ic, "ownerdomainname", "Ljava/lang/String;");
    jfieldID permission = env->GetFieldID(ic, "permission", "Lorvane/box/attribute/Permission;");
    jfieldID size = env->GetFieldID(ic, "currentsize", "J");
    jfieldID docs = env->GetFieldID(ic, "num", "I");
    jobject info = env->NewObject(ic, env->GetMethodID(ic, "<init>", "()V"));
    env->SetIntField(info, number, static_cast<jint>(c.box_num));
    set_text(env, info, name, c.box_name);
    const char* owner_type = c.box_owner_login_name[0] == '\0' ? "NO_OWNER"
                             : c.box_owner_type == 0           ? "LOCAL_USER"
                                                               : "NETWORK_USER";
    set_object(env, info, owner, constant(env, "orvane/box/attribute/OwnerType", owner_type));
    set_text(env, info, login, c.box_owner_login_name);
    set_text(env, info, user, c.box_owner_name);
    set_text(env, info, domain, c.box_owner_domain_name);
    set_object(env, info, permission,
               constant(env, "orvane/box/attribute/Permission", c.box_share == 0 ? "NOT_SHARED" : "SHARED"));
    env->SetLongField(info, size, static_cast<jlong>(r.box_current_size));
    env->SetIntField(info, docs, r.box_doc_num);

    jclass bc = env->FindClass("orvane/qsf/box/UserBoxImpl");
    jfieldID id = env->GetFieldID(bc, "boxid", "J");
    jfieldID exists = env->GetFieldID(bc, "exists", "Z");
    jfieldID info_field = env->GetFieldID(bc, "info", "Lorvane/qsf/box/UserBoxInfoImpl;");
    // The describer looks up every field of its class, those a listing leaves unset too.
    env->GetFieldID(bc, "detail", "Lorvane/qsf/box/UserBoxDetailInfoImpl;");
    env->GetFieldID(bc, "certid", "J");
    jobject box = env->NewObject(bc, env->GetMethodID(bc, "<init>", "()V"));
    env->SetLongField(box, id, static_cast<jlong>(r.box_id));
    env->SetBooleanField(box, exists, JNI_TRUE);
    env->SetObjectField(box, info_field, info);
    env->CallBooleanMethod(list, add, box);
    env->DeleteLocalRef(box);
    env->DeleteLocalRef(bc);
    env->DeleteLocalRef(info);
    env->DeleteLocalRef(ic);
}

void append_document(JNIEnv* env, jobject list, jmethodID add, const XSI_PBFS_BOX_DOC_INFO& r, uint32_t box_id) {
    jclass ic = env->FindClass("orvane/qsf/box/document/DocumentInfoImpl");
    jfieldID name = env->GetFieldID(ic, "docname", "Ljava/lang/String;");
    jfieldID pages = env->GetFieldID(ic, "pagecount", "J");
    jfieldID reso = env->GetFieldID(ic, "resolution", "Lorvane/box/document/attribute/Resolution;");
    jfieldID size = env->GetFieldID(ic, "storingsize", "Lorvane/box/document/attribute/StoringSize;");
    jfieldID color = env->GetFieldID(ic, "color", "Lorvane/box/document/attribute/ColorMode;");
    jfieldID when = env->GetFieldID(ic, "date", "Ljava/util/Date;");
    jfieldID data = env->GetFieldID(ic, "datasize", "J");
    jobject info = env->NewObject(ic, env->GetMethodID(ic, "<init>", "()V"));
    set_text(env, info, name, r.doc_name);
    env->SetLongField(info, pages, r.page_count);
    set_object(env, info, reso, constant(env, "orvane/box/document/attribute/Resolution", "R600x600"));
    set_object(env, info, size, constant(env, "orvane/box/document/attribute/StoringSize", "A4"));
    set_object(env, info, color, constant(env, "orvane/box/document/attribute/ColorMode", "MONOCHROME"));
    set_object(env, info, when, date(env, r.date));
    env->SetLongField(info, data, r.data_size);

    jclass dc = env->FindClass("orvane/qsf/box/document/DocumentImpl");
    jfieldID id = env->GetFieldID(dc, "docid", "J");
    jfieldID info_field = env->GetFieldID(dc, "info", "Lorvane/qsf/box/document/DocumentInfoImpl;");
    jfieldID box = env->GetFieldID(dc, "boxid", "J");
    jfieldID pw = env->GetFieldID(dc, "passwd", "Ljava/lang/String;");
    env->GetFieldID(dc, "certid", "J");
    jobject doc = env->NewObject(dc, env->GetMethodID(dc, "<init>", "()V"));
    env->SetLongField(doc, id, r.doc_id);
    env->SetObjectField(doc, info_field, info);
    env->SetLongField(doc, box, box_id);
    set_text(env, doc, pw, "");
    env->CallBooleanMethod(list, add, doc);
    env->DeleteLocalRef(doc);
    env->DeleteLocalRef(info);
    env->DeleteLocalRef(dc);
    env->DeleteLocalRef(ic);
}

jobjectArray personal_addresses(JNIEnv* env, const std::vector<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS>& records) {
    jclass pc = env->FindClass("orvane/qsf/address/PersonalAddressImpl");
    jmethodID pinit = env->GetMethodID(pc, "<init>", "()V");
    jfieldID pname = env->GetFieldID(pc, "name", "Lorvane/qsf/address/attribute/NameInfoImpl;");
    jfieldID pemail = env->GetFieldID(pc, "email", "Lorvane/qsf/address/attribute/EmailInfoImpl;");
    jfieldID pnumber = env->GetFieldID(pc, "number", "I");
    jclass nc = env->FindClass("orvane/qsf/address/attribute/NameInfoImpl");
    jmethodID ninit = env->GetMethodID(nc, "<init>", "()V");
    jfieldID nname = env->GetFieldID(nc, "name", "Ljava/lang/String;");
    jfieldID npron = env->GetFieldID(nc, "pronunciation", "Ljava/lang/String;");
    jclass ec = env->FindClass("orvane/qsf/address/attribute/EmailInfoImpl");
    jmethodID einit = env->GetMethodID(ec, "<init>", "()V");
    jfieldID eaddress = env->GetFieldID(ec, "mailAddress", "Ljava/lang/String;");
    jobjectArray array = env->NewObjectArray(static_cast<jsize>(records.size()), pc, nullptr);
    jsize index = 0;
    for (const auto& r : records) {
        jobject a = env->NewObject(pc, pinit);
        jobject n = env->NewObject(nc, ninit);
        set_text(env, n, nname, r.name);
        set_text(env, n, npron, r.pronunciation);
        env->SetObjectField(a, pname, n);
        env->SetIntField(a, pnumber, static_cast<jint>(r.number));
        jobject e = env->NewObject(ec, einit);
        set_text(env, e, eaddress, r.email.mail_address);
        env->SetObjectField(a, pemail, e);
        env->SetObjectArrayElement(array, index++, a);
        env->DeleteLocalRef(e);
        env->DeleteLocalRef(n);
        env->DeleteLocalRef(a);
    }
    env->DeleteLocalRef(pc);
    env->DeleteLocalRef(nc);
    env->DeleteLocalRef(ec);
    return array;
}

}  // namespace jbrg_bench
