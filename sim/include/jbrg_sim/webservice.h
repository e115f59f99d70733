// The simulated device's web services, as tests look into them.
//
// Reservations and certificate paths go through the platform's facade (platform/include/xsi_pbfs_webservice.h);
// the services offered, reservations held at start and the certificates installed come from the scenario's
// "webservice" section. docs/device-information.md describes the service.
#ifndef JBRG_SIM_WEBSERVICE_H
#define JBRG_SIM_WEBSERVICE_H

#include <cstdint>
#include <string>

namespace jbrg_sim::webservice {

// The application that holds web service `kind` (XSI_PBFS_WEBSERVICE_KIND) now; "" when none does.
std::string reserved_by(int32_t kind);

// The host folder that holds the device's certificate files (below the storage root).
std::string certificate_folder();

}  // namespace jbrg_sim::webservice

#endif  // JBRG_SIM_WEBSERVICE_H
