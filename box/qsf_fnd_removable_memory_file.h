// The describers of the files of a removable memory: orvane/qsf/box/document/RemovableMemoryFileImpl
// (qsf_fnd_removable_memory_file) and its RemovableMemoryFileInfoImpl (qsf_fnd_removable_memory_file_info).
// Each looks up its class and fields when it is made (box/box_describer.h).
#ifndef JBRG_BOX_QSF_FND_REMOVABLE_MEMORY_FILE_H
#define JBRG_BOX_QSF_FND_REMOVABLE_MEMORY_FILE_H

#include <jni.h>

#include "box/box_describer.h"
#include "xsi_pbfs_box.h"

namespace orvane {

class qsf_fnd_removable_memory_file : public box::describer {
public:
    qsf_fnd_removable_memory_file();
    explicit qsf_fnd_removable_memory_file(JNIEnv* env);

    jobject create_removable_memory_file();
    bool set_field_info(jobject file, jobject info);  // a RemovableMemoryFileInfoImpl, or null
    bool set_field_isfile(jobject file, bool is_file);
};

class qsf_fnd_removable_memory_file_info : public box::describer {
public:
    qsf_fnd_removable_memory_file_info();
    explicit qsf_fnd_removable_memory_file_info(JNIEnv* env);

    jobject create_removable_memory_file_info();
    bool set_field_name(jobject info, const char* name);
    bool set_field_data_size(jobject info, dev_ulong bytes);
    bool set_field_date(jobject info, dev_long seconds);
    bool set_field_path(jobject info, const char* path);
};

}  // namespace orvane

#endif  // JBRG_BOX_QSF_FND_REMOVABLE_MEMORY_FILE_H
