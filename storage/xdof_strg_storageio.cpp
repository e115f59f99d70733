#include "storage/xdof_strg_storageio.h"

#include "xdc_strg.h"

namespace orvane {

xdof_strg_storageio::~xdof_strg_storageio() = default;

int xdof_strg_storageio::init() { return xdc_strg_init() == XDC_STRG_R_OK ? 0 : -1; }

}  // namespace orvane
