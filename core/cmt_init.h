// Start-up of the library's platform connections.
#ifndef JBRG_CORE_CMT_INIT_H
#define JBRG_CORE_CMT_INIT_H

namespace orvane {

class cmt_init {
public:
    virtual ~cmt_init();

    // Brings the library up, once, before any other part is used: finds the running Java VM, starts the
    // basic-function and job service clients, initialises storage, then runs mixsInit(). The results of
    // these calls are not looked at: a service that failed to start reports its own errors when used.
    // Not guarded against a second call.
    void init();

    // A hook run last by init(); it does nothing.
    void mixsInit();
};

}  // namespace orvane

#endif  // JBRG_CORE_CMT_INIT_H
