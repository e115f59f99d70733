// What the authentication service tells the other services of the simulated device.
#ifndef JBRG_SIM_AUTH_INTERNAL_H
#define JBRG_SIM_AUTH_INTERNAL_H

#include "plat_types.h"

namespace jbrg_sim {

// True when `id` names a current login (a certificate id handed out and not yet ended by a logout). Takes
// the device lock itself.
bool certificate_valid(dev_ulong id);

}  // namespace jbrg_sim

#endif  // JBRG_SIM_AUTH_INTERNAL_H
