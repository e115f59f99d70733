// Start-up of the platform's service clients.
//
// A process must start the basic-function and the job service clients before it uses their facades. The
// device answers a start-up that is not needed (a second one, or an unknown mode) as the services do.
#include "jbrg_sim/control.h"
#include "sim.h"
#include "xsi_startup.h"

namespace {

// Answer of a start-up with a mode the services do not know.
constexpr PLAT_RESULT kBadMode = PLAT_CODE(0xC1010001);

class startup_service final : public jbrg_sim::service {
public:
    apply_step read(const nlohmann::json&) override {
        return [this] { pbfs_started = ais_started = false; };
    }

    bool pbfs_started = false;
    bool ais_started = false;
};

startup_service& startup() {
    static startup_service* s = new startup_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const startup_service& registered = startup();

// Under the device lock its operation holds.
PLAT_RESULT start(bool& started, int mode) {
    if (mode != 0) return kBadMode;
    // Starting a client twice is harmless: the connection is already there.
    started = true;
    return PLAT_OK;
}

}  // namespace

extern "C" PLAT_RESULT xsi_pbfs_startup(int mode) {
    jbrg_sim::locked_op call("xsi_pbfs_startup", mode);
    if (call.forced()) return call.result();
    return start(startup().pbfs_started, mode);
}

extern "C" PLAT_RESULT xsi_ais_startup(int mode) {
    jbrg_sim::locked_op call("xsi_ais_startup", mode);
    if (call.forced()) return call.result();
    return start(startup().ais_started, mode);
}
