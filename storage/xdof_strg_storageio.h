// File access for Java applications inside the storage areas of the device's media.
//
// A thin translation onto the platform's storage library: the class's own enumerations (storage type, area,
// open mode, seek mode, attributes) become the library's identifiers through fixed tables, and the library's
// result codes fold into a small set of return values (getReturnValue). All operations are static; the class
// has no state. Handles are the library's, passed through untouched: every open and opendir must be paired
// with close and closedir by the caller.
//
// Paths are relative to the area's root. A path the library can never take is refused before it is asked:
// one holding the NUL character, which cannot be part of a file name (Java hands it over as the two bytes
// C0 80 of its modified UTF-8).
#ifndef JBRG_STORAGE_XDOF_STRG_STORAGEIO_H
#define JBRG_STORAGE_XDOF_STRG_STORAGEIO_H

#include <string>

#include "plat_types.h"

namespace orvane {

// The storage media: 0 the hard disk; 1 and 2 the device's other media.
enum XDOF_STRG_STORAGE_TYPE : int { XDOF_STRG_HDD = 0 };
// The areas of a medium: 0 the applications' own area; 1 the second area.
enum XDOF_STRG_AREA : int { XDOF_STRG_AREA_QSF = 0 };
// Open modes 1 to 5 (read, append, write, read and write, create and read and write); see the table in the
// definition. The first constant the class publishes, 0, is not a mode the library opens with.
enum XDOF_STRG_FOPEN_MODE : int { XDOF_STRG_READ = 0 };
// Seek modes 0 to 2; see the table in the definition.
enum XDOF_STRG_SEEK_MODE : int { XDOF_STRG_SEEK_CUR = 0 };
// Attribute bits; no other bit passes in either direction.
enum XDOF_STRG_ATTR : int {
    XDOF_STRG_ATTR_NO = 0,
    XDOF_STRG_ATTR_ARCHIVE = 1,
    XDOF_STRG_ATTR_HIDDEN = 2,
    XDOF_STRG_ATTR_READONLY = 4,
};
// Return values: these three, and the folded failures of getReturnValue (4, 5, 29, 35).
enum XDOF_STRG_RESULT : int { XDOF_STRG_ERROR = -1, XDOF_STRG_NOERROR = 0, XDOF_STRG_EOF = 1 };

class xdof_strg_storageio {
public:
    virtual ~xdof_strg_storageio();

    // Initialises the storage library: 0 on success, -1 otherwise.
    static int init();

    // ---- Files ----
    static int open(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                    XDOF_STRG_FOPEN_MODE mode, dev_ulong& handle);
    static int close(dev_ulong handle);
    static int read(signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done);
    static int write(const signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done);
    static int fseek(dev_ulong handle, dev_long offset, XDOF_STRG_SEEK_MODE mode);
    static int ftell(dev_ulong handle, dev_long& position);
    static int fflush(dev_ulong handle);
    static int sync();

    // ---- Directories ----
    static int opendir(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                       dev_ulong& handle);
    // The next entry's name; "" with `result` the folded failure (XDOF_STRG_EOF after the last entry).
    static std::string readdir(dev_ulong handle, int& result);
    static int closedir(dev_ulong handle);
    static int mkdir(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path);
    static int remove(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path);
    static int rename(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& from,
                      const std::string& to);
    static int move(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                    XDOF_STRG_STORAGE_TYPE type2, XDOF_STRG_AREA area2, const std::string& path2);

    // ---- What is there ----
    static int existfile(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path);
    static int is_file(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path, bool& flag);
    static int is_directory(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                            bool& flag);
    static int getfilesize(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                           dev_ulong& size);
    static int getlastmodified(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                               dev_ulong& time);
    static int setattribute(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                            dev_ulong attributes);
    static int getattribute(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                            dev_ulong& attributes);

    // ---- The medium ----
    // Sizes in kibibytes; all four are 0 unless the library answers.
    static int getstoragesize(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, dev_ulong& total, dev_ulong& used,
                              dev_ulong& available, dev_ulong& free);
    static int verifydiskmount(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area);
    static int remove_disk(XDOF_STRG_STORAGE_TYPE type);
    static int getfullpath(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, std::string relative,
                           std::string& full);
    static int get_home_dir(std::string app_id, std::string& home);
    static int get_install_device(dev_ulong& device);

    // The library's result code folded into the class's return values.
    static int getReturnValue(int code);
};

}  // namespace orvane

#endif  // JBRG_STORAGE_XDOF_STRG_STORAGEIO_H
