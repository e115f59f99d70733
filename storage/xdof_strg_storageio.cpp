#include "storage/xdof_strg_storageio.h"

#include <limits>

#include "core/field_text.h"
#include "core/platform_buffer.h"
#include "xam_ads.h"
#include "xdc_strg.h"

namespace orvane {

namespace {

// ---- The class's values as the storage library's ----------------------------------------------------------

// The library's area id of each storage type's areas 0 and 1. Type 1's first area has the same id as the
// fallback for values the table does not know: that is how the device numbers its media.
constexpr int kAreaIds[3][2] = {{45, 43}, {100, 22}, {17, 16}};
constexpr int kOtherArea = 100;

// The library's disk id of each storage type; the order runs the other way round from the types.
constexpr int kDiskIds[3] = {2, 1, 0};
constexpr int kOtherDisk = 1;

// The library's open mode of each mode 1..5 (index 0 unused): modes 2 and 3 are the library's 3 and 2.
constexpr int kOpenModes[6] = {0, 1, 3, 2, 4, 5};
constexpr int kOtherMode = 0;

// The library's origin of each seek mode 0..2: the class's first mode, XDOF_STRG_SEEK_CUR, is the library's
// origin 1, the start of the file, and its mode 1 the library's current position 0. The device's own table,
// kept as it is.
constexpr int kOrigins[3] = {1, 0, 2};
constexpr int kOtherOrigin = 0;

// The attribute bits that pass in either direction.
constexpr unsigned kAttributeBits = XDOF_STRG_ATTR_ARCHIVE | XDOF_STRG_ATTR_HIDDEN | XDOF_STRG_ATTR_READONLY;

// File type bits of a status's mode.
constexpr dev_ulong kTypeMask = 0xF000;
constexpr dev_ulong kTypeFile = 0x8000;
constexpr dev_ulong kTypeDirectory = 0x4000;

// The return value of each library code 0..6; any other code, negative ones included, is XDOF_STRG_ERROR.
constexpr int kReturnValues[7] = {XDOF_STRG_NOERROR, XDOF_STRG_EOF, 4, 5, 35, XDOF_STRG_ERROR, 29};

// Where the installed applications live, as the storage type of their medium: flash is type 2, the hard
// disk and an SD card type 0.
int install_device_of(dev_long area) {
    switch (area) {
        case XAM_ADS_AREA_FLASH: return 2;
        case XAM_ADS_AREA_HDD:
        case XAM_ADS_AREA_SD: return 0;
        default: return -1;
    }
}

int area_id(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area) {
    const bool known = type >= 0 && type < 3 && (area == 0 || area == 1);
    return known ? kAreaIds[type][area] : kOtherArea;
}

// A path the library can take: the NUL character cannot be part of a name. Java's modified UTF-8 writes it
// as C0 80, two bytes that are never text on the device, and a C string would end at a real one.
bool takes(const std::string& path) {
    return path.find('\0') == std::string::npos && path.find("\xC0\x80") == std::string::npos;
}

// The status of a path, and its library code.
int stat_of(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path, XDC_STRG_STAT& status) {
    if (!takes(path)) return XDC_STRG_R_PARAM;
    return xdc_strg_stat(area_id(type, area), path.c_str(), &status);
}

xam_ads_facade& apps() { return *xam_ads_facade::xam_ads_get_instance(); }

}  // namespace

xdof_strg_storageio::~xdof_strg_storageio() = default;

int xdof_strg_storageio::getReturnValue(int code) {
    return code >= 0 && code < 7 ? kReturnValues[code] : XDOF_STRG_ERROR;
}

int xdof_strg_storageio::init() { return xdc_strg_init() == XDC_STRG_R_OK ? 0 : -1; }

// ---- Files ------------------------------------------------------------------------------------------------

int xdof_strg_storageio::open(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                              XDOF_STRG_FOPEN_MODE mode, dev_ulong& handle) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    const int library_mode = mode >= 1 && mode <= 5 ? kOpenModes[mode] : kOtherMode;
    dev_ulong opened = 0;
    const int code = xdc_strg_fopen(area_id(type, area), path.c_str(), library_mode, &opened);
    if (code == XDC_STRG_R_OK) handle = opened;
    return getReturnValue(code);
}

int xdof_strg_storageio::close(dev_ulong handle) { return getReturnValue(xdc_strg_fclose(handle)); }

int xdof_strg_storageio::read(signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done) {
    dev_ulong count = 0;
    const int code = xdc_strg_fread(buffer, size, handle, &count);
    if (code == XDC_STRG_R_OK) done = count;
    return getReturnValue(code);
}

int xdof_strg_storageio::write(const signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done) {
    dev_ulong count = 0;
    const int code = xdc_strg_fwrite(buffer, size, handle, &count);
    if (code == XDC_STRG_R_OK) done = count;
    return getReturnValue(code);
}

int xdof_strg_storageio::fseek(dev_ulong handle, dev_long offset, XDOF_STRG_SEEK_MODE mode) {
    const int origin = mode >= 0 && mode < 3 ? kOrigins[mode] : kOtherOrigin;
    return getReturnValue(xdc_strg_fseek(handle, offset, origin));
}

int xdof_strg_storageio::ftell(dev_ulong handle, dev_long& position) {
    dev_long at = 0;
    const int code = xdc_strg_ftell(handle, &at);
    if (code == XDC_STRG_R_OK) position = at;
    return getReturnValue(code);
}

int xdof_strg_storageio::fflush(dev_ulong handle) { return getReturnValue(xdc_strg_fflush_fsync(handle)); }

int xdof_strg_storageio::sync() { return getReturnValue(xdc_strg_sync()); }

// ---- Directories ------------------------------------------------------------------------------------------

int xdof_strg_storageio::opendir(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                 dev_ulong& handle) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    dev_ulong opened = 0;
    const int code = xdc_strg_opendir(area_id(type, area), path.c_str(), &opened);
    if (code == XDC_STRG_R_OK) handle = opened;
    return getReturnValue(code);
}

std::string xdof_strg_storageio::readdir(dev_ulong handle, int& result) {
    char name[XDC_STRG_NAME_MAX + 1] = {};
    const int code = xdc_strg_readdir(handle, name, sizeof name);
    result = getReturnValue(code);
    if (code != XDC_STRG_R_OK) return {};
    const field_text text(name);
    return std::string(text.get(), text.length());
}

int xdof_strg_storageio::closedir(dev_ulong handle) { return getReturnValue(xdc_strg_closedir(handle)); }

int xdof_strg_storageio::mkdir(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    return getReturnValue(xdc_strg_mkdir(area_id(type, area), path.c_str()));
}

int xdof_strg_storageio::remove(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    return getReturnValue(xdc_strg_remove(area_id(type, area), path.c_str()));
}

int xdof_strg_storageio::rename(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& from,
                                const std::string& to) {
    if (!takes(from) || !takes(to)) return XDOF_STRG_ERROR;
    return getReturnValue(xdc_strg_rename(area_id(type, area), from.c_str(), to.c_str()));
}

int xdof_strg_storageio::move(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                              XDOF_STRG_STORAGE_TYPE type2, XDOF_STRG_AREA area2, const std::string& path2) {
    if (!takes(path) || !takes(path2)) return XDOF_STRG_ERROR;
    return getReturnValue(xdc_strg_move(area_id(type, area), path.c_str(), area_id(type2, area2), path2.c_str()));
}

// ---- What is there ----------------------------------------------------------------------------------------

int xdof_strg_storageio::existfile(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    return getReturnValue(xdc_strg_exist(area_id(type, area), path.c_str()));
}

int xdof_strg_storageio::is_file(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                 bool& flag) {
    XDC_STRG_STAT status{};
    const int code = stat_of(type, area, path, status);
    if (code == XDC_STRG_R_OK) flag = (status.mode & kTypeMask) == kTypeFile;
    return getReturnValue(code);
}

int xdof_strg_storageio::is_directory(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                      bool& flag) {
    XDC_STRG_STAT status{};
    const int code = stat_of(type, area, path, status);
    if (code == XDC_STRG_R_OK) flag = (status.mode & kTypeMask) == kTypeDirectory;
    return getReturnValue(code);
}

int xdof_strg_storageio::getfilesize(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                     dev_ulong& size) {
    XDC_STRG_STAT status{};
    const int code = stat_of(type, area, path, status);
    if (code == XDC_STRG_R_OK) size = status.size;
    return getReturnValue(code);
}

int xdof_strg_storageio::getlastmodified(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                         dev_ulong& time) {
    XDC_STRG_STAT status{};
    const int code = stat_of(type, area, path, status);
    if (code == XDC_STRG_R_OK) time = status.mtime;
    return getReturnValue(code);
}

int xdof_strg_storageio::setattribute(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                      dev_ulong attributes) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    const auto bits = static_cast<unsigned char>(attributes & kAttributeBits);
    return getReturnValue(xdc_strg_set_attribute(area_id(type, area), path.c_str(), bits));
}

int xdof_strg_storageio::getattribute(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, const std::string& path,
                                      dev_ulong& attributes) {
    if (!takes(path)) return XDOF_STRG_ERROR;
    unsigned char bits = 0;
    const int code = xdc_strg_get_attribute(area_id(type, area), path.c_str(), &bits);
    if (code == XDC_STRG_R_OK) attributes = bits & kAttributeBits;
    return getReturnValue(code);
}

// ---- The medium -------------------------------------------------------------------------------------------

int xdof_strg_storageio::getstoragesize(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, dev_ulong& total,
                                        dev_ulong& used, dev_ulong& available, dev_ulong& free) {
    total = used = available = free = 0;
    XDC_STRG_STATFS status{};
    const int code = xdc_strg_statfs(area_id(type, area), &status);
    if (code != XDC_STRG_R_OK) return getReturnValue(code);
    // Kibibytes per block, cut toward zero: blocks smaller than 1 KiB count nothing. The products are the
    // device's 32-bit values.
    const dev_ulong unit = status.block_size / 1024;
    total = status.blocks * unit;
    free = status.free * unit;
    used = total - free;
    available = status.available * unit;
    return getReturnValue(code);
}

int xdof_strg_storageio::verifydiskmount(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area) {
    return getReturnValue(xdc_strg_verify_area_mount(area_id(type, area)));
}

int xdof_strg_storageio::remove_disk(XDOF_STRG_STORAGE_TYPE type) {
    const int disk = type >= 0 && type < 3 ? kDiskIds[type] : kOtherDisk;
    return getReturnValue(xdc_strg_remove_disk(disk));
}

int xdof_strg_storageio::getfullpath(XDOF_STRG_STORAGE_TYPE type, XDOF_STRG_AREA area, std::string relative,
                                     std::string& full) {
    char root[XDC_STRG_PATH_MAX + 1] = {};
    const int code = xdc_strg_get_area_path(area_id(type, area), root, sizeof root);
    if (code != XDC_STRG_R_OK) {
        full.clear();
        return getReturnValue(code);
    }
    // Joined as given: no check for a doubled or trailing separator.
    const field_text text(root);
    full.assign(text.get(), text.length());
    if (!relative.empty()) full += "/" + relative;
    return getReturnValue(code);
}

int xdof_strg_storageio::get_home_dir(std::string app_id, std::string& home) {
    if (app_id.empty()) {
        home.clear();
        return XDOF_STRG_NOERROR;
    }
    XAM_ADS_APP_INFO_DETAIL detail{};
    if (!takes(app_id) || apps().xam_ads_get_app_info_detail(app_id.c_str(), &detail) != XAM_ADS_RESULT_OK) {
        return XDOF_STRG_ERROR;
    }
    const field_text directory(detail.installed_app_path);
    home = "/" + std::string(directory.get(), directory.length());
    return XDOF_STRG_NOERROR;
}

// The medium of the first installed Java application whose details read and say it is running: the
// application that asks is one of those that run.
int xdof_strg_storageio::get_install_device(dev_ulong& device) {
    dev_ulong count = 0;
    if (apps().xam_ads_get_app_num_info(XAM_ADS_APP_TYPE_JAVA, &count) != XAM_ADS_RESULT_OK || count == 0 ||
        count > std::numeric_limits<dev_ulong>::max() / sizeof(XAM_ADS_APP_INFO)) {
        return XDOF_STRG_ERROR;
    }
    platform_buffer<XAM_ADS_APP_INFO> list(count);
    dev_ulong listed = 0;
    if (!list || apps().xam_ads_get_app_list(XAM_ADS_APP_TYPE_JAVA, 0, count, list.get(), &listed, ENV_LANG_ENGLISH,
                                             0) != XAM_ADS_RESULT_OK) {
        return XDOF_STRG_ERROR;
    }
    for (dev_ulong i = 0; i < listed && i < count; ++i) {
        XAM_ADS_APP_INFO_DETAIL detail{};
        const field_text app_id(list[i].app_id);
        if (apps().xam_ads_get_app_info_detail(app_id.get(), &detail) != XAM_ADS_RESULT_OK) continue;
        if (detail.execution_state != XAM_ADS_DETAIL_STATE_RUNNING) continue;
        const int medium = install_device_of(detail.installed_app_area);
        if (medium < 0) return XDOF_STRG_ERROR;
        device = static_cast<dev_ulong>(medium);
        return XDOF_STRG_NOERROR;
    }
    return XDOF_STRG_ERROR;
}

}  // namespace orvane
