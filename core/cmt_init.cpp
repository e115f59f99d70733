#include "core/cmt_init.h"

#include "core/cjvm.h"
#include "core/trace.h"
#include "storage/xdof_strg_storageio.h"
#include "xsi_startup.h"

namespace orvane {

cmt_init::~cmt_init() = default;

void cmt_init::init() {
    JBRG_TRACE("[Start]");
    CJvm::CreateJVM();
    (void)xsi_pbfs_startup(0);
    (void)xsi_ais_startup(0);
    (void)xdof_strg_storageio::init();
    mixsInit();
    JBRG_TRACE("[Exit]");
}

void cmt_init::mixsInit() {}

}  // namespace orvane
