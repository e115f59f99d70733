#include "box/qsf_fnd_removable_memory_file.h"

#include <iterator>

namespace orvane {

namespace {

constexpr const char kFileClass[] = "orvane/qsf/box/document/RemovableMemoryFileImpl";
enum file_field { kInfo, kIsFile };
constexpr box::field_spec kFileFields[] = {
    {"info", "Lorvane/qsf/box/document/RemovableMemoryFileInfoImpl;"},
    {"isfile", "Z"},
};

constexpr const char kInfoClass[] = "orvane/qsf/box/document/RemovableMemoryFileInfoImpl";
enum info_field { kName, kDataSize, kDate, kPath };
constexpr box::field_spec kInfoFields[] = {
    {"name", "Ljava/lang/String;"},
    {"datasize", "J"},
    {"date", "Ljava/util/Date;"},
    {"path", "Ljava/lang/String;"},
};

}  // namespace

qsf_fnd_removable_memory_file::qsf_fnd_removable_memory_file()
    : describer(kFileClass, kFileFields, std::size(kFileFields)) {}
qsf_fnd_removable_memory_file::qsf_fnd_removable_memory_file(JNIEnv* env)
    : describer(env, kFileClass, kFileFields, std::size(kFileFields)) {}

jobject qsf_fnd_removable_memory_file::create_removable_memory_file() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_removable_memory_file::set_field_info(jobject file, jobject info) { return set_object(file, kInfo, info); }
bool qsf_fnd_removable_memory_file::set_field_isfile(jobject file, bool is_file) {
    return set_bool(file, kIsFile, is_file);
}

qsf_fnd_removable_memory_file_info::qsf_fnd_removable_memory_file_info()
    : describer(kInfoClass, kInfoFields, std::size(kInfoFields)) {}
qsf_fnd_removable_memory_file_info::qsf_fnd_removable_memory_file_info(JNIEnv* env)
    : describer(env, kInfoClass, kInfoFields, std::size(kInfoFields)) {}

jobject qsf_fnd_removable_memory_file_info::create_removable_memory_file_info() { return create(JBRG_TRACE_SITE); }
bool qsf_fnd_removable_memory_file_info::set_field_name(jobject info, const char* name) { return set_text(info, kName, name); }
bool qsf_fnd_removable_memory_file_info::set_field_data_size(jobject info, dev_ulong bytes) {
    return set_long(info, kDataSize, bytes);
}
bool qsf_fnd_removable_memory_file_info::set_field_date(jobject info, dev_long seconds) {
    return set_date(info, kDate, seconds, JBRG_TRACE_SITE);
}
bool qsf_fnd_removable_memory_file_info::set_field_path(jobject info, const char* path) { return set_text(info, kPath, path); }

}  // namespace orvane
