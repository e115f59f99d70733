/*
 * The web services of the basic-function services: the device's own web service endpoints that one
 * application at a time may reserve (take over), and the files of the device's SSL certificates.
 *
 * One facade, reached through xsi_pbfs_webservice_facade::xsi_pbfs_webservice_get_instance() at every call.
 * A reservation belongs to the application id that made it; another application's reservation of the same
 * service is refused until the first one releases it.
 */
#ifndef XSI_PBFS_WEBSERVICE_H
#define XSI_PBFS_WEBSERVICE_H

#include "plat_types.h"

/* Result codes of the web services. */
#define XSI_PBFS_WEBSERVICE_OK PLAT_CODE(0)
#define XSI_PBFS_WEBSERVICE_PARAM_ERROR PLAT_CODE(0xC1010601)    /* unknown kind or type, null or empty id */
#define XSI_PBFS_WEBSERVICE_RESERVED PLAT_CODE(0xC1010602)       /* another application holds the service */
#define XSI_PBFS_WEBSERVICE_NOT_RESERVED PLAT_CODE(0xC1010603)   /* release of a service the caller does not hold */
#define XSI_PBFS_WEBSERVICE_UNSUPPORTED PLAT_CODE(0xC1010604)    /* the service is not offered by this machine */
#define XSI_PBFS_WEBSERVICE_ERROR PLAT_CODE(0xC1010605)          /* any other failure */
#define XSI_PBFS_WEBSERVICE_NO_FILE PLAT_CODE(0xC1010606)        /* the certificate is not installed */
#define XSI_PBFS_WEBSERVICE_BUSY PLAT_CODE(0xC1010607)           /* the service is starting or stopping */

/* Capacity of an application id, terminating zero included. */
#define XSI_PBFS_WEBSERVICE_APP_ID_SIZE 65

#ifdef __cplusplus

#include <string>

/* The web services an application can reserve. */
enum XSI_PBFS_WEBSERVICE_KIND : int32_t {
    XSI_PBFS_WEBSERVICE_KIND_WSD_SCAN = 0,      /* scan by Web Services on Devices */
    XSI_PBFS_WEBSERVICE_KIND_WSD_PRINT = 1,
    XSI_PBFS_WEBSERVICE_KIND_EWS = 2,           /* the embedded web server's application pages */
    XSI_PBFS_WEBSERVICE_KIND_REST_API = 3,
    XSI_PBFS_WEBSERVICE_KIND_NUM = 4
};

/* The SSL files of the device. */
enum XSI_PBFS_SSL_FILE_TYPE : int32_t {
    XSI_PBFS_SSL_FILE_SERVER_CERTIFICATE = 0,   /* the device's server certificate (PEM) */
    XSI_PBFS_SSL_FILE_PRIVATE_KEY = 1,          /* its private key (PEM) */
    XSI_PBFS_SSL_FILE_CA_CERTIFICATE = 2,       /* the certificate authorities the device trusts (PEM) */
    XSI_PBFS_SSL_FILE_NUM = 3
};

class xsi_pbfs_webservice_facade {
public:
    static xsi_pbfs_webservice_facade* xsi_pbfs_webservice_get_instance();

    /* Reserving a service the application holds already is harmless. */
    PLAT_RESULT xsi_pbfs_webservice_reserve(XSI_PBFS_WEBSERVICE_KIND kind, const char* app_id);
    PLAT_RESULT xsi_pbfs_webservice_release(XSI_PBFS_WEBSERVICE_KIND kind, const char* app_id);
    /* The absolute path of an SSL file; `path` is left as it was on a failure. */
    PLAT_RESULT xsi_pbfs_webservice_get_certificate(XSI_PBFS_SSL_FILE_TYPE type, std::string& path);
    /* The paths of the device's HDO (device-to-device) client certificate and of its private key. */
    PLAT_RESULT xsi_pbfs_webservice_get_hdo_certificate_filepath(std::string& certificate, std::string& key);

private:
    xsi_pbfs_webservice_facade() = default;
};

#endif /* __cplusplus */

#endif /* XSI_PBFS_WEBSERVICE_H */
