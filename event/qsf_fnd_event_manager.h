// The event manager: creates the library's six observers, registers each with its facade, and removes them
// again.
#ifndef JBRG_EVENT_QSF_FND_EVENT_MANAGER_H
#define JBRG_EVENT_QSF_FND_EVENT_MANAGER_H

namespace orvane {

class qsf_fnd_job_observer;
class qsf_fnd_panel_observer;
class qsf_fnd_acc_observer;
class qsf_fnd_jobinfo_observer;
class xiof_slo_esm_observer;
class xamf_amo_app_operation_observer;

class qsf_fnd_event_manager {
public:
    qsf_fnd_event_manager();
    virtual ~qsf_fnd_event_manager();

    qsf_fnd_event_manager(const qsf_fnd_event_manager&) = delete;
    qsf_fnd_event_manager& operator=(const qsf_fnd_event_manager&) = delete;

    // Creates, initialises and registers the six observers, in a fixed order. An observer whose own init()
    // failed is registered all the same and answers each event with its failure code. Always true.
    bool init();

    // Removes and deletes five of the observers. The application operation observer stays registered and
    // alive for the life of the process: the platform's application requests must reach Java even after the
    // other events stop. Always true; a second call does nothing.
    bool terminate();

private:
    qsf_fnd_job_observer* job_observer_ = nullptr;
    qsf_fnd_panel_observer* panel_observer_ = nullptr;
    qsf_fnd_acc_observer* smart_card_observer_ = nullptr;
    qsf_fnd_jobinfo_observer* jobinfo_observer_ = nullptr;
    xiof_slo_esm_observer* esm_observer_ = nullptr;
    xamf_amo_app_operation_observer* app_operation_observer_ = nullptr;
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_EVENT_MANAGER_H
