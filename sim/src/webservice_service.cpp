// The web services of the basic-function services: reservations of the device's web service endpoints by
// applications, and the files of the device's SSL certificates.
//
// The "webservice" section of the scenario (every key optional):
//
//   "webservice": {
//     "unsupported": [3],                                  kinds this machine does not offer
//     "reserved": [ {"kind": 0, "app_id": "scan-app"} ],   reservations held at start
//     "missing_certificates": [2],                         SSL files not installed
//     "hdo": true                                          whether the HDO client certificate is installed
//   }
//
// Behaviour worth knowing when reading the bridge against it:
//   - Checks in order: the application id (null, empty or of XSI_PBFS_WEBSERVICE_APP_ID_SIZE bytes or more)
//     and the kind (outside XSI_PBFS_WEBSERVICE_KIND) are PARAM_ERROR, a kind the machine does not offer
//     UNSUPPORTED, then the reservation: RESERVED when another application holds it, NOT_RESERVED for a
//     release by an application that does not. Reserving again by the holder is harmless.
//   - Certificate files are real PEM text files in the folder "certificates" below the storage root
//     (server.pem, server_key.pem, ca.pem, hdo_client.pem, hdo_client_key.pem). A scenario load wipes the
//     storage root; the files the machine has installed are written again when first asked for. An SSL file
//     the scenario marks missing gives NO_FILE and leaves the path as it was; an unknown type PARAM_ERROR.
//   - Forced out-values: "path" (get_certificate), "certificate" and "key" (get_hdo_certificate_filepath).
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include "jbrg_sim/control.h"
#include "jbrg_sim/webservice.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xsi_pbfs_webservice.h"

namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;

bool known_kind(long long kind) { return kind >= 0 && kind < XSI_PBFS_WEBSERVICE_KIND_NUM; }
bool known_type(long long type) { return type >= 0 && type < XSI_PBFS_SSL_FILE_NUM; }

bool good_app_id(const char* app_id) {
    return app_id != nullptr && app_id[0] != '\0' && std::strlen(app_id) < XSI_PBFS_WEBSERVICE_APP_ID_SIZE;
}

// The file of each SSL file type, and what it holds.
struct certificate_file {
    const char* name;
    const char* label;
};
constexpr std::array<certificate_file, XSI_PBFS_SSL_FILE_NUM> kSslFiles = {{
    {"server.pem", "CERTIFICATE"},
    {"server_key.pem", "PRIVATE KEY"},
    {"ca.pem", "CERTIFICATE"},
}};
constexpr certificate_file kHdoCertificate{"hdo_client.pem", "CERTIFICATE"};
constexpr certificate_file kHdoKey{"hdo_client_key.pem", "PRIVATE KEY"};

struct contents {
    std::set<int> unsupported;
    std::map<int, std::string> reserved;
    std::set<int> missing;
    bool hdo = true;
};

contents parse(const json& scenario) {
    const jbrg_sim::scenario_part part(scenario, "webservice", {"unsupported", "reserved", "missing_certificates", "hdo"});
    contents c;
    const json& unsupported = part.list_at("unsupported");
    for (std::size_t i = 0; i < unsupported.size(); ++i) {
        c.unsupported.insert(static_cast<int>(
            part.integer(unsupported[i], 0, XSI_PBFS_WEBSERVICE_KIND_NUM - 1, part.at("/unsupported", i))));
    }
    const json& reserved = part.list_at("reserved");
    for (std::size_t i = 0; i < reserved.size(); ++i) {
        const json& entry = reserved[i];
        const std::string where = part.at("/reserved", i);
        part.only_keys(entry, {"kind", "app_id"}, where);
        if (!entry.contains("kind")) part.fail(where, "needs a kind");
        const int kind = static_cast<int>(
            part.integer(entry.at("kind"), 0, XSI_PBFS_WEBSERVICE_KIND_NUM - 1, part.at(where, "kind")));
        const std::string app = part.text_at(entry, "app_id", where);
        if (!good_app_id(app.c_str())) part.fail(part.at(where, "app_id"), "is not an application id");
        if (c.unsupported.count(kind) != 0) part.fail(part.at(where, "kind"), "the machine does not offer this kind");
        if (!c.reserved.emplace(kind, app).second) part.fail(part.at(where, "kind"), "the kind is reserved twice");
    }
    const json& missing = part.list_at("missing_certificates");
    for (std::size_t i = 0; i < missing.size(); ++i) {
        c.missing.insert(static_cast<int>(
            part.integer(missing[i], 0, XSI_PBFS_SSL_FILE_NUM - 1, part.at("/missing_certificates", i))));
    }
    c.hdo = part.flag_at("hdo", true);
    return c;
}

contents& web() {
    static auto* s = new jbrg_sim::state_service<contents, parse>;
    return s->state;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const contents& registered = web();

// The folder of the certificate files, below the storage root. Under the device lock; throws when the host
// gives no room for it.
std::string folder() { return jbrg_sim::storage_root() + "/certificates"; }

// The path of an installed file, written (as a small PEM text) if it is not there yet.
std::string installed(const certificate_file& file) {
    fs::create_directories(folder());
    const std::string path = folder() + "/" + file.name;
    if (!fs::exists(path)) {
        std::ofstream out(path);
        out << "-----BEGIN " << file.label << "-----\n"
            << "TUZQLVNJTSBkZXZpY2UgY2VydGlmaWNhdGUgKHNpbXVsYXRlZCk=\n"
            << "-----END " << file.label << "-----\n";
        if (!out) throw std::runtime_error("cannot write " + path);
    }
    return path;
}

// Every file the machine has installed, in place; the folder.
std::string lay_out_files() {
    for (int type = 0; type < XSI_PBFS_SSL_FILE_NUM; ++type) {
        if (web().missing.count(type) == 0) installed(kSslFiles[static_cast<std::size_t>(type)]);
    }
    if (web().hdo) {
        installed(kHdoCertificate);
        installed(kHdoKey);
    }
    return folder();
}

// The checks reserve and release share: PARAM_ERROR, UNSUPPORTED or OK.
PLAT_RESULT check(XSI_PBFS_WEBSERVICE_KIND kind, const char* app_id) {
    if (!good_app_id(app_id) || !known_kind(kind)) return XSI_PBFS_WEBSERVICE_PARAM_ERROR;
    if (web().unsupported.count(kind) != 0) return XSI_PBFS_WEBSERVICE_UNSUPPORTED;
    return XSI_PBFS_WEBSERVICE_OK;
}

}  // namespace

// ---- The facade -----------------------------------------------------------------------------------------

xsi_pbfs_webservice_facade* xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_instance() {
    static auto* instance = new xsi_pbfs_webservice_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_webservice_facade::xsi_pbfs_webservice_reserve(XSI_PBFS_WEBSERVICE_KIND kind, const char* app_id) {
    jbrg_sim::locked_op call("xsi_pbfs_webservice_reserve", kind, app_id);
    if (call.forced()) return call.result();
    if (PLAT_RESULT r = check(kind, app_id); r != XSI_PBFS_WEBSERVICE_OK) return r;
    auto [holder, added] = web().reserved.emplace(kind, app_id);
    if (!added && holder->second != app_id) return XSI_PBFS_WEBSERVICE_RESERVED;
    return XSI_PBFS_WEBSERVICE_OK;
}

PLAT_RESULT xsi_pbfs_webservice_facade::xsi_pbfs_webservice_release(XSI_PBFS_WEBSERVICE_KIND kind, const char* app_id) {
    jbrg_sim::locked_op call("xsi_pbfs_webservice_release", kind, app_id);
    if (call.forced()) return call.result();
    if (PLAT_RESULT r = check(kind, app_id); r != XSI_PBFS_WEBSERVICE_OK) return r;
    auto holder = web().reserved.find(kind);
    if (holder == web().reserved.end() || holder->second != app_id) return XSI_PBFS_WEBSERVICE_NOT_RESERVED;
    web().reserved.erase(holder);
    return XSI_PBFS_WEBSERVICE_OK;
}

PLAT_RESULT xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_TYPE type,
                                                                            std::string& path) {
    jbrg_sim::locked_op call("xsi_pbfs_webservice_get_certificate", type, static_cast<const void*>(&path));
    if (call.forced()) return call.result();
    if (!known_type(type)) return XSI_PBFS_WEBSERVICE_PARAM_ERROR;
    if (web().missing.count(type) != 0) return XSI_PBFS_WEBSERVICE_NO_FILE;
    std::string out;
    try {
        out = installed(kSslFiles[static_cast<std::size_t>(type)]);
    } catch (const std::exception&) {
        return XSI_PBFS_WEBSERVICE_ERROR;
    }
    call.out("path", &out);
    path = out;
    return XSI_PBFS_WEBSERVICE_OK;
}

PLAT_RESULT xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_hdo_certificate_filepath(std::string& certificate,
                                                                                         std::string& key) {
    jbrg_sim::locked_op call("xsi_pbfs_webservice_get_hdo_certificate_filepath",
                             static_cast<const void*>(&certificate), static_cast<const void*>(&key));
    if (call.forced()) return call.result();
    if (!web().hdo) return XSI_PBFS_WEBSERVICE_NO_FILE;
    std::string certificate_path, key_path;
    try {
        certificate_path = installed(kHdoCertificate);
        key_path = installed(kHdoKey);
    } catch (const std::exception&) {
        return XSI_PBFS_WEBSERVICE_ERROR;
    }
    call.out("certificate", &certificate_path);
    call.out("key", &key_path);
    certificate = certificate_path;
    key = key_path;
    return XSI_PBFS_WEBSERVICE_OK;
}

// ---- The control surface --------------------------------------------------------------------------------

namespace jbrg_sim::webservice {

std::string reserved_by(int32_t kind) {
    ensure_loaded();
    auto lock = device_lock();
    auto holder = ::web().reserved.find(kind);
    return holder == ::web().reserved.end() ? std::string() : holder->second;
}

std::string certificate_folder() {
    ensure_loaded();
    auto lock = device_lock();
    return lay_out_files();
}

}  // namespace jbrg_sim::webservice
