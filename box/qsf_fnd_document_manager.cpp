#include "box/qsf_fnd_document_manager.h"

#include "box/box_describer.h"
#include "box/box_result.h"
#include "box/box_support.h"
#include "box/qsf_fnd_removable_memory_file.h"
#include "core/cjvm.h"
#include "core/jni_scoped.h"

namespace orvane {

std::atomic<qsf_fnd_document_manager*> qsf_fnd_document_manager::instance_{nullptr};

namespace {

// A RemovableMemoryFileImpl of one entry of a removable-memory listing, appended to `list`.
bool append_file(JNIEnv* env, const box::java_list& lists, jobject list, const XSI_PBFS_BOX_EASY_BOX_INFO& entry) {
    qsf_fnd_removable_memory_file_info describe_info(env);
    jni::local_ref<jobject> info(env, describe_info.create_removable_memory_file_info());
    if (!info) return false;
    box::field_text name(entry.name);
    box::field_text path(entry.path);
    describe_info.set_field_name(info.get(), name.get());
    describe_info.set_field_data_size(info.get(), entry.data_size);
    describe_info.set_field_date(info.get(), entry.date);
    describe_info.set_field_path(info.get(), path.get());
    qsf_fnd_removable_memory_file describe_file(env);
    jni::local_ref<jobject> file(env, describe_file.create_removable_memory_file());
    if (!file) return false;
    describe_file.set_field_info(file.get(), info.get());
    describe_file.set_field_isfile(file.get(), entry.kind != XSI_PBFS_BOX_EASY_KIND_FOLDER);
    return lists.append(env, list, file.get(), JBRG_TRACE_SITE);
}

}  // namespace

qsf_fnd_document_manager* qsf_fnd_document_manager::qsf_fnd_get_instance() {
    return box::guarded_instance(instance_);
}

int qsf_fnd_document_manager::qsf_fnd_delete_document(dev_ulong box_id, const std::string& passwd, dev_ulong doc_id) {
    JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s), doc_id=(%lu)", dev_lx(box_id), passwd.c_str(), dev_lx(doc_id));
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_document(box_id, passwd.c_str(), doc_id),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                 XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR},
                                JBRG_TRACE_SITE);
}

int qsf_fnd_document_manager::qsf_fnd_delete_document(dev_ulong box_id, const std::string& passwd, dev_ulong doc_id,
                                                      dev_ulong cert_id) {
    JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s), doc_id=(%lu), cert_id=(%lu)", dev_lx(box_id), passwd.c_str(),
               dev_lx(doc_id), dev_lx(cert_id));
    return box::convert_retcode(
        box::facade().xsi_pbfs_box_delete_document_bkg(box_id, passwd.c_str(), doc_id, cert_id),
        {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR, XSI_PBFS_BOX_LOGIN_ERROR,
         XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR},
        JBRG_TRACE_SITE);
}

int qsf_fnd_document_manager::qsf_fnd_delete_fax_document(dev_ulong box_id, const std::string& passwd,
                                                          dev_ulong doc_id) {
    JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s), doc_id=(%lu)", dev_lx(box_id), passwd.c_str(), dev_lx(doc_id));
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_fax_document(box_id, passwd.c_str(), doc_id),
                                {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
                                 XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR},
                                JBRG_TRACE_SITE);
}

int qsf_fnd_document_manager::qsf_fnd_delete_document(const std::string& path) {
    JBRG_TRACE("[Enter]. path=(%s)", path.c_str());
    return box::convert_retcode(box::facade().xsi_pbfs_box_delete_easy_document(path.c_str()),
                                {XSI_PBFS_BOX_PATH_ERROR}, JBRG_TRACE_SITE);
}

int qsf_fnd_document_manager::qsf_fnd_get_easy_box_list(const std::string& path, jobject list) {
    JBRG_TRACE("[Enter] path = [%s]", path.c_str());
    JNIEnv* env = box::caller_env(JBRG_TRACE_SITE);
    if (env == nullptr) return box::kBoxFailed;
    const box::java_list lists(env, JBRG_TRACE_SITE);
    if (!lists.holds(env, list, JBRG_TRACE_SITE)) return box::kBoxFailed;
    unsigned int handle = 0;
    unsigned int total_num = 0;
    PLAT_RESULT result = box::facade().xsi_pbfs_box_get_easy_box_info_prepare(path.c_str(), 1, handle, total_num);
    if (result != XSI_PBFS_BOX_OK) {
        JBRG_TRACE("result(%d)", static_cast<int>(result));
        return box::kBoxFailed;
    }
    box::open_listing listing(&xsi_pbfs_box_facade::xsi_pbfs_box_get_easy_box_info_finish, handle, JBRG_TRACE_SITE);
    if (total_num == 0) {
        JBRG_TRACE("total_num == 0.");
        return box::kBoxOk;
    }
    bool read = box::read_one_by_one(&xsi_pbfs_box_facade::xsi_pbfs_box_get_easy_box_info, handle, total_num,
                                     "easy_box_info", JBRG_TRACE_SITE, [&](const XSI_PBFS_BOX_EASY_BOX_INFO& entry) {
                                         return append_file(env, lists, list, entry);
                                     });
    return read ? box::kBoxOk : box::kBoxFailed;
}

}  // namespace orvane
