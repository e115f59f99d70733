#include "device_attr/qsf_fnd_webservice_proxy.h"

namespace orvane {

namespace {

struct code_row {
    dev_long code;
    int result;
};

// The web service's codes, each its own result; any other code is the general failure, 5. Nothing is traced.
constexpr code_row kCodes[] = {
    {XSI_PBFS_WEBSERVICE_OK, 0},
    {XSI_PBFS_WEBSERVICE_PARAM_ERROR, 1},
    {XSI_PBFS_WEBSERVICE_RESERVED, 2},
    {XSI_PBFS_WEBSERVICE_NOT_RESERVED, 3},
    {XSI_PBFS_WEBSERVICE_UNSUPPORTED, 4},
    {XSI_PBFS_WEBSERVICE_ERROR, 5},
    {XSI_PBFS_WEBSERVICE_NO_FILE, 6},
    {XSI_PBFS_WEBSERVICE_BUSY, 7},
};
constexpr int kOtherFailure = 5;

xsi_pbfs_webservice_facade& service() { return *xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_instance(); }

// An application id the service keeps: not empty, shorter than its field. The service refuses any other with
// its parameter error; the proxy answers the same without asking it.
bool acceptable_app_id(const std::string& app_id) {
    return !app_id.empty() && app_id.size() < XSI_PBFS_WEBSERVICE_APP_ID_SIZE;
}

}  // namespace

qsf_fnd_webservice_proxy::~qsf_fnd_webservice_proxy() = default;

int qsf_fnd_webservice_proxy::convert_retcode(dev_long code) {
    for (const code_row& row : kCodes) {
        if (row.code == code) return row.result;
    }
    return kOtherFailure;
}

int qsf_fnd_webservice_proxy::reserve(XSI_PBFS_WEBSERVICE_KIND kind, const std::string& app_id) {
    if (!acceptable_app_id(app_id)) return convert_retcode(XSI_PBFS_WEBSERVICE_PARAM_ERROR);
    return convert_retcode(service().xsi_pbfs_webservice_reserve(kind, app_id.c_str()));
}

int qsf_fnd_webservice_proxy::release(XSI_PBFS_WEBSERVICE_KIND kind, const std::string& app_id) {
    if (!acceptable_app_id(app_id)) return convert_retcode(XSI_PBFS_WEBSERVICE_PARAM_ERROR);
    return convert_retcode(service().xsi_pbfs_webservice_release(kind, app_id.c_str()));
}

int qsf_fnd_webservice_proxy::get_certificate_filepath(XSI_PBFS_SSL_FILE_TYPE type, std::string& path) {
    return convert_retcode(service().xsi_pbfs_webservice_get_certificate(type, path));
}

int qsf_fnd_webservice_proxy::get_hdo_certificate_filepath(std::string& first, std::string& second) {
    return convert_retcode(service().xsi_pbfs_webservice_get_hdo_certificate_filepath(first, second));
}

}  // namespace orvane
