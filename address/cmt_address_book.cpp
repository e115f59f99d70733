#include "address/cmt_address_book.h"

#include <algorithm>
#include <optional>

#include "address/cmt_address_entries.h"
#include "core/cjvm.h"
#include "core/field_text.h"
#include "core/jni_scoped.h"
#include "core/platform_buffer.h"
#include "core/trace.h"
#include "xsi_pbfs_address_book.h"

namespace orvane {

namespace {

using facade = xsi_pbfs_address_book_facade;
using finish_op = PLAT_RESULT (facade::*)(unsigned int);

// Records a get hands back, and a chunk's buffer holds.
constexpr unsigned int kChunk = 20;

facade& book() { return *facade::xsi_pbfs_address_book_get_instance(); }

// Finishes the listing at the end of the scope, on every path out once it was opened.
class listing_close {
public:
    listing_close(finish_op finish, unsigned int handle) : finish_(finish), handle_(handle) {}
    ~listing_close() { (book().*finish_)(handle_); }
    listing_close(const listing_close&) = delete;
    listing_close& operator=(const listing_close&) = delete;
    // Closes the listing with another of the service's finishes instead.
    void close_with(finish_op finish) { finish_ = finish; }

private:
    finish_op finish_;
    unsigned int handle_;
};

// The trace lines of one query. Lines with a value are written as the text here followed by the value and
// "]" ("... = [" 12 "]").
struct query_texts {
    const char* prepared;        // + total
    const char* prepare_failed;
    const char* array_failed;
    const char* loop_start;      // null: none
    const char* got;             // + records got; null: none
    const char* get_failed;      // + code in hex ("0x%08lx")
    const char* chunk_start;     // null: none
    const char* chunk_end;       // null: none
    const char* loop_end;        // null: none
    const char* end;             // null: none
};

// Reads a listing the caller opened (`total` records) chunk by chunk into a new array made by `make_array`,
// each record made an object by `build`: 20 records a chunk, in a buffer of its own for the chunk. Null on any
// failure, traced.
template <class Record, class Get, class MakeArray, class Build>
jobjectArray read_listing(JNIEnv* env, unsigned int total, const query_texts& t, listing_close& listing,
                          finish_op array_failure_finish, MakeArray make_array, Get get, Build build,
                          const trace_site& site) {
    jni::local_ref<jobjectArray> array(env, make_array(static_cast<int>(total)));
    if (!array) {
        trace_at(site, "%s", t.array_failed);
        listing.close_with(array_failure_finish);
        return nullptr;
    }
    if (t.loop_start != nullptr) trace_at(site, "%s", t.loop_start);
    for (unsigned int index = 0; index < total;) {
        platform_buffer<Record> buffer(kChunk);
        if (!buffer) {
            trace_at(site, "Fail to malloc! tmp_address == NULL");
            return nullptr;
        }
        unsigned int get_num = 0;
        PLAT_RESULT result = get(get_num, buffer.get());
        if (t.got != nullptr) trace_at(site, "%s%d]", t.got, static_cast<int>(get_num));
        if (result != XSI_PBFS_ADDRESSBOOK_OK) {
            trace_at(site, "%s0x%08lx]", t.get_failed, dev_lx(result));
            return nullptr;
        }
        // Never more than the buffer holds or the array has room for. A get that hands back nothing before the
        // total is reached leaves the rest unreadable: the query fails rather than answer an array with holes.
        unsigned int got = std::min({get_num, kChunk, total - index});
        if (got == 0) {
            trace_at(site, "Fail to read the listing! %u of %u records.", index, total);
            return nullptr;
        }
        if (t.chunk_start != nullptr) trace_at(site, "%s", t.chunk_start);
        for (unsigned int i = 0; i < got; ++i, ++index) {
            jni::local_ref<jobject> entry(env, build(buffer[i]));
            if (!entry) return nullptr;
            env->SetObjectArrayElement(array.get(), static_cast<jsize>(index), entry.get());
        }
        if (t.chunk_end != nullptr) trace_at(site, "%s", t.chunk_end);
    }
    if (t.loop_end != nullptr) trace_at(site, "%s", t.loop_end);
    if (t.end != nullptr) trace_at(site, "%s", t.end);
    return array.release();
}

// ---- Building the entries ----------------------------------------------------------------------------------

// An object `describer` makes, or null traced "Fail to create_object! <what> is null.".
template <class Describer>
jobject made(Describer& describer, const char* what, const trace_site& site) {
    jobject object = describer.create_object();
    if (object == nullptr) trace_at(site, "Fail to create_object! %s is null.", what);
    return object;
}

template <std::size_t N, std::size_t M>
jobject name_object(cmt_name_info& names, const char (&name)[N], const char (&pronunciation)[M], const char* what,
                    const trace_site& site) {
    jobject object = made(names, what, site);
    if (object == nullptr) return nullptr;
    field_text<N> n(name);
    field_text<M> p(pronunciation);
    names.set_field_name(object, n.get());
    names.set_field_pronunciation(object, p.get());
    return object;
}

// A describer of a query, made (its class and fields looked up) when the query first needs it: most address
// books use one or two kinds of destination, and a query need not look up the classes of the others.
template <class Describer>
class on_first_use {
public:
    explicit on_first_use(JNIEnv* env) : env_(env) {}
    Describer& get() {
        if (!made_) made_.emplace(env_);
        return *made_;
    }

private:
    JNIEnv* env_;
    std::optional<Describer> made_;
};

// The destinations of an entry, made and filled from the platform's records.
struct destinations {
    explicit destinations(JNIEnv* env) : email_(env), ftp_(env), smb_(env), fax_(env), ifax_(env) {}

    jobject email_object(const XSI_PBFS_ADDRESSBOOK_EMAIL_INFO& r, const trace_site& site) {
        cmt_email_info& email = email_.get();
        jobject o = made(email, "emailObj", site);
        if (o == nullptr) return nullptr;
        field_text address(r.mail_address);
        email.set_field_mailAddress(o, address.get());
        return o;
    }
    jobject folder_object(cmt_folder_info& d, const XSI_PBFS_ADDRESSBOOK_FOLDER_INFO& r, const char* what,
                          const trace_site& site) {
        jobject o = made(d, what, site);
        if (o == nullptr) return nullptr;
        field_text host(r.host);
        field_text path(r.path);
        field_text login(r.login_name);
        field_text password(r.password);
        d.set_field_host(o, host.get());
        d.set_field_path(o, path.get());
        d.set_field_port(o, static_cast<int>(r.port));
        d.set_field_loginName(o, login.get());
        d.set_field_password(o, password.get());
        return o;
    }
    jobject ifax_object(const XSI_PBFS_ADDRESSBOOK_IFAX_INFO& r, const trace_site& site) {
        cmt_ifax_info& ifax = ifax_.get();
        jobject o = made(ifax, "ifaxObj", site);
        if (o == nullptr) return nullptr;
        field_text address(r.ifax_address);
        ifax.set_field_ifaxAddress(o, address.get());
        ifax.set_field_modeType(o, r.mode_type);
        ifax.set_field_sizeType(o, r.size_type);
        ifax.set_field_resolutionType(o, r.resolution_type);
        ifax.set_field_fileType(o, r.file_type);
        ifax.set_field_viaServer(o, r.via_server);
        return o;
    }
    jobject fax_object(const XSI_PBFS_ADDRESSBOOK_FAX_INFO& r, const trace_site& site) {
        cmt_fax_info& fax = fax_.get();
        jobject o = made(fax, "faxObj", site);
        if (o == nullptr) return nullptr;
        field_text number(r.fax_num);
        field_text address(r.fax_address);
        field_text password(r.password);
        field_text name(r.name);
        field_text department(r.department);
        field_text company(r.company);
        fax.set_field_faxNum(o, number.get());
        fax.set_field_bitrateType(o, r.bitrate_type);
        fax.set_field_ecm(o, r.ecm);
        fax.set_field_faxAddress(o, address.get());
        fax.set_field_password(o, password.get());
        fax.set_field_encode(o, r.encode);
        fax.set_field_encodeID(o, r.encode_id);
        fax.set_field_encodeBox(o, r.encode_box);
        fax.set_field_encodeBoxNum(o, r.encode_box_num);
        fax.set_field_name(o, name.get());
        fax.set_field_department(o, department.get());
        fax.set_field_company(o, company.get());
        fax.set_field_honorificTitleType(o, r.honorific_title_type);
        return o;
    }

    cmt_folder_info& ftp() { return ftp_.get(); }
    cmt_folder_info& smb() { return smb_.get(); }

private:
    on_first_use<cmt_email_info> email_;
    on_first_use<cmt_ftp_info> ftp_;
    on_first_use<cmt_smb_info> smb_;
    on_first_use<cmt_fax_info> fax_;
    on_first_use<cmt_ifax_info> ifax_;
};

// Stores one destination object in `entry`'s field; false when it could not be made.
bool store(JNIEnv* env, jobject made_object, jobject entry, bool (cmt_addressee::*set)(jobject, jobject),
           cmt_addressee& addressee) {
    jni::local_ref<jobject> object(env, made_object);
    if (!object) return false;
    (addressee.*set)(entry, object.get());
    return true;
}

// The describers of a personal address query.
struct personal_builder {
    explicit personal_builder(JNIEnv* e) : env(e), address(e), names(e), dest(e) {}

    jobject build(const XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS& r, const char* address_failed, const trace_site& site) {
        jni::local_ref<jobject> entry(env, address.create_object());
        if (!entry) {
            trace_at(site, "%s", address_failed);
            return nullptr;
        }
        jni::local_ref<jobject> name(env, name_object(names, r.name, r.pronunciation, "nameObj", site));
        if (!name) return nullptr;
        address.set_field_name(entry.get(), name.get());
        address.set_field_number(entry.get(), static_cast<int>(r.number));
        // One object for each destination registered for the address; the others stay null.
        const dev_ulong has = r.destinations;
        if ((has & XSI_PBFS_ADDRESSBOOK_DEST_EMAIL) != 0 &&
            !store(env, dest.email_object(r.email, site), entry.get(), &cmt_addressee::set_field_email, address)) {
            return nullptr;
        }
        if ((has & XSI_PBFS_ADDRESSBOOK_DEST_FTP) != 0 &&
            !store(env, dest.folder_object(dest.ftp(), r.ftp, "ftpObj", site), entry.get(), &cmt_addressee::set_field_ftp,
                   address)) {
            return nullptr;
        }
        if ((has & XSI_PBFS_ADDRESSBOOK_DEST_SMB) != 0 &&
            !store(env, dest.folder_object(dest.smb(), r.smb, "smbObj", site), entry.get(), &cmt_addressee::set_field_smb,
                   address)) {
            return nullptr;
        }
        if ((has & XSI_PBFS_ADDRESSBOOK_DEST_FAX) != 0 &&
            !store(env, dest.fax_object(r.fax, site), entry.get(), &cmt_addressee::set_field_fax, address)) {
            return nullptr;
        }
        if ((has & XSI_PBFS_ADDRESSBOOK_DEST_IFAX) != 0 &&
            !store(env, dest.ifax_object(r.ifax, site), entry.get(), &cmt_addressee::set_field_ifax, address)) {
            return nullptr;
        }
        return entry.release();
    }

    JNIEnv* env;
    cmt_personal_address address;
    cmt_name_info names;
    destinations dest;
};

// The describers of a group query.
struct group_builder {
    explicit group_builder(JNIEnv* e) : env(e), groups(e), names(e) {}

    jobject build(const XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS& r, const trace_site& site) {
        jni::local_ref<jobject> group(env, made(groups, "groupObj", site));
        if (!group) return nullptr;
        jni::local_ref<jobject> name(env, name_object(names, r.name, r.pronunciation, "g_nameObj", site));
        if (!name) return nullptr;
        groups.set_field_name(group.get(), name.get());
        groups.set_field_id(group.get(), r.id);
        groups.set_field_number(group.get(), r.number);
        return group.release();
    }

    JNIEnv* env;
    cmt_group_address groups;
    cmt_name_info names;
};

// The describers of a member query.
struct member_builder {
    explicit member_builder(JNIEnv* e) : env(e), members(e), names(e), dest(e) {}

    jobject build(const XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER& r, const trace_site& site) {
        jni::local_ref<jobject> member(env, made(members, "memberObj", site));
        if (!member) return nullptr;
        jni::local_ref<jobject> name(env, name_object(names, r.name, r.pronunciation, "m_nameObj", site));
        if (!name) return nullptr;
        members.set_field_name(member.get(), name.get());
        members.set_field_type(member.get(), r.type);
        members.set_field_number(member.get(), static_cast<int>(r.number));
        // The member is the one destination its type names.
        bool stored = false;
        switch (r.type) {
            case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP:
                stored = store(env, dest.folder_object(dest.ftp(), r.destination.ftp, "ftpObj", site), member.get(),
                               &cmt_addressee::set_field_ftp, members);
                break;
            case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_SMB:
                stored = store(env, dest.folder_object(dest.smb(), r.destination.smb, "smbObj", site), member.get(),
                               &cmt_addressee::set_field_smb, members);
                break;
            case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_IFAX:
                stored = store(env, dest.ifax_object(r.destination.ifax, site), member.get(),
                               &cmt_addressee::set_field_ifax, members);
                break;
            case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FAX:
                stored = store(env, dest.fax_object(r.destination.fax, site), member.get(),
                               &cmt_addressee::set_field_fax, members);
                break;
            case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL:
                stored = store(env, dest.email_object(r.destination.email, site), member.get(),
                               &cmt_addressee::set_field_email, members);
                break;
            default:
                // "dstination" is how the device's trace spells it.
                trace_at(site, "Fail to retrieve dstination detail! type = [%d]", static_cast<int>(r.type));
                return nullptr;
        }
        return stored ? member.release() : nullptr;
    }

    JNIEnv* env;
    cmt_group_address_member members;
    cmt_name_info names;
    destinations dest;
};

// The search key's name as the platform takes it: the UTF-8 text of the key's `name`.
class search_name {
public:
    search_name(JNIEnv* env, jobject key, const trace_site& site) : env_(env) {
        jni::local_ref<jclass> type(env, env->FindClass("orvane/address/SearchKey"));
        if (jni::missing(env, type.get(), site, "FindClass")) return;
        if (key == nullptr || !env->IsInstanceOf(key, type.get())) {
            trace_at(site, "keyObj is not a SearchKey.");
            return;
        }
        jfieldID field = env->GetFieldID(type.get(), "name", "Ljava/lang/String;");
        if (jni::missing(env, field, site, "GetFieldID")) return;
        name_ = static_cast<jstring>(env->GetObjectField(key, field));
        if (name_ == nullptr) {
            trace_at(site, "keyObj.name==NULL");
            return;
        }
        chars_ = env->GetStringUTFChars(name_, nullptr);
    }
    ~search_name() {
        if (chars_ != nullptr) env_->ReleaseStringUTFChars(name_, chars_);
        if (name_ != nullptr) env_->DeleteLocalRef(name_);
    }
    search_name(const search_name&) = delete;
    search_name& operator=(const search_name&) = delete;

    // Null when the key has no name to search for.
    const char* get() const { return chars_; }

private:
    JNIEnv* env_;
    jstring name_ = nullptr;
    const char* chars_ = nullptr;
};

// The calling thread's environment, or null traced "Fail to get JNIEnv.".
JNIEnv* query_env(const trace_site& site) {
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) trace_at(site, "Fail to get JNIEnv.");
    return env;
}

const query_texts kAllPersonal = {
    "[TIMER] get_all_personal_address()::xsi_pbfs_address_book_get_personal_address_list_prepare end. total_num = [",
    "Fail to prepare!",
    "Fail to create_object_array! personalObjArray is null.",
    nullptr,
    nullptr,
    "Fail to xsi_pbfs_address_book_get_personal_address_list()! ret = [",
    "[TIMER] get_all_personal_address()::set_objects loop start.",
    "[TIMER] get_all_personal_address()::set_objects loop end.",
    "[TIMER] get_all_personal_address()::xsi_pbfs_address_book_get_personal_address_list loop end.",
    nullptr,
};
const query_texts kSearchPersonal = {
    "[TIMER] search_personal_address()::xsi_pbfs_address_book_search_personal_address_list_prepare end. total_num = [",
    "Fail to prepare!",
    "Fail to search! personalObjArray is null.",
    nullptr,
    nullptr,
    "Fail to xsi_pbfs_address_book_search_personal_address_list()! ret = [",
    "[TIMER] search_personal_address()::set_objects loop start.",
    nullptr,
    nullptr,
    "[TIMER] search_personal_address() end.",
};
const query_texts kAllGroups = {
    "[TIMER] get_all_group_list()::xsi_pbfs_address_book_get_group_address_list_prepare() g_total_num = [",
    "Fail to xsi_pbfs_address_book_get_group_address_list_prepare()!",
    "Fail to create_object_array! groupObjArray is null.",
    "[TIMER] get_all_group_list()::xsi_pbfs_address_book_get_group_address_list loop start.",
    "[TIMER] get_all_group_list()::xsi_pbfs_address_book_get_group_address_list() g_ret_num = [",
    "Fail to xsi_pbfs_address_book_get_group_address_list()! g_ret = [",
    nullptr,
    nullptr,
    "[TIMER] get_all_group_list()::xsi_pbfs_address_book_get_group_address_list loop end.",
    "[TIMER] get_all_group_list() end.",
};
const query_texts kSearchGroups = {
    "[TIMER] search_group_list()::xsi_pbfs_address_book_search_group_address_list_prepare() g_total_num = [",
    "Fail to xsi_pbfs_address_book_search_group_address_list_prepare()!",
    "Fail to create_object_array! groupObjArray is null.",
    "[TIMER] search_group_list()::xsi_pbfs_address_book_search_group_address_list loop start.",
    "[TIMER] search_group_list()::xsi_pbfs_address_book_search_group_address_list() g_ret_num = [",
    "Fail to xsi_pbfs_address_book_search_group_address_list()! g_ret = [",
    nullptr,
    nullptr,
    "[TIMER] search_group_list()::xsi_pbfs_address_book_search_group_address_list loop end.",
    "[TIMER] search_group_list() end.",
};
// The prepare's failure names the search operation although the call is the get operation: the device's
// trace reads so.
const query_texts kMembers = {
    nullptr,
    "Fail to xsi_pbfs_address_book_search_group_member_address_list_grp_mem_str_prepare()! m_ret = [",
    "Fail to create_object_array! memberObjArray is null.",
    "[TIMER] get_members()::get_member_list loop start.",
    nullptr,
    "Fail to xsi_pbfs_address_book_search_group_member_address_list()! m_ret = [",
    "[TIMER] get_members()::get_member_objects loop start.",
    "[TIMER] get_members()::get_member_objects loop end.",
    "[TIMER] get_members()::get_member_list loop end.",
    "[TIMER] get_members() end.",
};

// A personal-address query, the get (null `name`) or the search.
jobjectArray personal_query(const char* name, const query_texts& t, const trace_site& site) {
    JNIEnv* env = query_env(site);
    if (env == nullptr) return nullptr;
    unsigned int handle = 0;
    unsigned int total = 0;
    PLAT_RESULT result =
        name == nullptr ? book().xsi_pbfs_address_book_get_personal_address_list_prepare(kChunk, handle, total)
                        : book().xsi_pbfs_address_book_search_personal_address_list_prepare(kChunk, name, handle, total,
                                                                                           0);
    trace_at(site, "%s%d]", t.prepared, static_cast<int>(total));
    if (result != XSI_PBFS_ADDRESSBOOK_OK) {
        trace_at(site, "%s", t.prepare_failed);
        return nullptr;
    }
    finish_op finish = name == nullptr ? &facade::xsi_pbfs_address_book_get_personal_address_list_finish
                                       : &facade::xsi_pbfs_address_book_search_personal_address_list_finish;
    listing_close listing(finish, handle);
    personal_builder builder(env);
    const char* address_failed =
        name == nullptr ? "Fail to create_object! address is null." : "Fail to search! address is null.";
    return read_listing<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS>(
        env, total, t, listing, finish, [&](int n) { return builder.address.create_object_array(n); },
        [&](unsigned int& got, XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* records) {
            return name == nullptr
                       ? book().xsi_pbfs_address_book_get_personal_address_list(handle, got, records)
                       : book().xsi_pbfs_address_book_search_personal_address_list(handle, name, got, records, 0);
        },
        [&](const XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS& r) { return builder.build(r, address_failed, site); }, site);
}

// A group query, the get (null `name`) or the search.
jobjectArray group_query(const char* name, const query_texts& t, const trace_site& site) {
    JNIEnv* env = query_env(site);
    if (env == nullptr) return nullptr;
    unsigned int handle = 0;
    unsigned int total = 0;
    PLAT_RESULT result =
        name == nullptr ? book().xsi_pbfs_address_book_get_group_address_list_prepare(kChunk, handle, total)
                        : book().xsi_pbfs_address_book_search_group_address_list_prepare(kChunk, name, handle, total, 0);
    trace_at(site, "%s%d]", t.prepared, static_cast<int>(total));
    if (result != XSI_PBFS_ADDRESSBOOK_OK) {
        trace_at(site, "%s", t.prepare_failed);
        return nullptr;
    }
    listing_close listing(name == nullptr ? &facade::xsi_pbfs_address_book_get_group_address_list_finish
                                          : &facade::xsi_pbfs_address_book_search_group_address_list_finish,
                          handle);
    group_builder builder(env);
    // When the array cannot be made, the listing is closed with the search listing's finish, also for the get:
    // the device's query does so, and its service closes either kind of group listing with either finish.
    jobjectArray groups = read_listing<XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS>(
        env, total, t, listing, &facade::xsi_pbfs_address_book_search_group_address_list_finish,
        [&](int n) { return builder.groups.create_object_array(n); },
        [&](unsigned int& got, XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS* records) {
            return name == nullptr ? book().xsi_pbfs_address_book_get_group_address_list(handle, got, records)
                                   : book().xsi_pbfs_address_book_search_group_address_list(handle, name, got, records,
                                                                                            0);
        },
        [&](const XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS& r) { return builder.build(r, site); }, site);
    return groups;
}

// A search: the key's name, then the query with it.
jobjectArray search_query(jobject key, jobjectArray (*query)(const char*, const query_texts&, const trace_site&),
                          const query_texts& t, const trace_site& site) {
    JNIEnv* env = query_env(site);
    if (env == nullptr) return nullptr;
    search_name name(env, key, site);
    if (name.get() == nullptr) return nullptr;
    return query(name.get(), t, site);
}

}  // namespace

jobject cmt_address_book::get_all_address(int type) {
    JBRG_TRACE("[Enter] type = [%d]", type);
    if (type == kPersonal) return get_all_personal_address();
    if (type == kGroup) return get_all_group_list();
    return nullptr;
}

jobject cmt_address_book::search_address(int type, jobject key) {
    JBRG_TRACE("[Enter] type = [%d]", type);
    if (key == nullptr) {
        JBRG_TRACE("keyObj==NULL");
        return nullptr;
    }
    if (type == kPersonal) return search_personal_address(key);
    if (type == kGroup) return search_group_list(key);
    return nullptr;
}

jobjectArray cmt_address_book::get_all_personal_address() {
    JBRG_TRACE("[TIMER] get_all_personal_address() start.");
    return personal_query(nullptr, kAllPersonal, JBRG_TRACE_SITE);
}

jobjectArray cmt_address_book::search_personal_address(jobject key) {
    JBRG_TRACE("[TIMER] search_personal_address() start.");
    return search_query(key, personal_query, kSearchPersonal, JBRG_TRACE_SITE);
}

jobjectArray cmt_address_book::get_all_group_list() {
    JBRG_TRACE("[TIMER] get_all_group_list() start.");
    return group_query(nullptr, kAllGroups, JBRG_TRACE_SITE);
}

jobjectArray cmt_address_book::search_group_list(jobject key) {
    JBRG_TRACE("[TIMER] search_group_list() start.");
    return search_query(key, group_query, kSearchGroups, JBRG_TRACE_SITE);
}

jobject cmt_address_book::get_members(int group_id) {
    JBRG_TRACE("[TIMER] get_members() start.");
    JNIEnv* env = query_env(JBRG_TRACE_SITE);
    if (env == nullptr) return nullptr;
    unsigned int handle = 0;
    unsigned int total = 0;
    // The group id is the platform's 16-bit one: an int above 65535 keeps its low 16 bits.
    PLAT_RESULT result = book().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(
        static_cast<unsigned short>(group_id), kChunk, handle, total);
    if (result != XSI_PBFS_ADDRESSBOOK_OK) {
        JBRG_TRACE("%s0x%08lx]", kMembers.prepare_failed, dev_lx(result));
        return nullptr;
    }
    finish_op finish = &facade::xsi_pbfs_address_book_get_group_member_address_list_finish;
    listing_close listing(finish, handle);
    member_builder builder(env);
    const trace_site site = JBRG_TRACE_SITE;
    return read_listing<XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER>(
        env, total, kMembers, listing, finish, [&](int n) { return builder.members.create_object_array(n); },
        [&](unsigned int& got, XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER* records) {
            return book().xsi_pbfs_address_book_get_group_member_address_list(handle, got, records);
        },
        [&](const XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER& r) { return builder.build(r, site); }, site);
}

}  // namespace orvane
