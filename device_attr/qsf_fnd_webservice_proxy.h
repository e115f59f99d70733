// Reserving the device's web services and finding its SSL certificate files, for Java.
//
// Stateless: every operation takes the web service facade at the call and folds its answer into the
// proxy's result set (0 success, 1 to 7 the service's own failures, 5 for any other code).
#ifndef JBRG_DEVICE_ATTR_QSF_FND_WEBSERVICE_PROXY_H
#define JBRG_DEVICE_ATTR_QSF_FND_WEBSERVICE_PROXY_H

#include <string>

#include "plat_types.h"
#include "xsi_pbfs_webservice.h"

namespace orvane {

class qsf_fnd_webservice_proxy {
public:
    virtual ~qsf_fnd_webservice_proxy();

    int reserve(XSI_PBFS_WEBSERVICE_KIND kind, const std::string& app_id);
    int release(XSI_PBFS_WEBSERVICE_KIND kind, const std::string& app_id);
    // The path is left as it was when the service fails.
    int get_certificate_filepath(XSI_PBFS_SSL_FILE_TYPE type, std::string& path);
    int get_hdo_certificate_filepath(std::string& first, std::string& second);

    static int convert_retcode(dev_long code);
};

}  // namespace orvane

#endif  // JBRG_DEVICE_ATTR_QSF_FND_WEBSERVICE_PROXY_H
