#include "event/qsf_fnd_event_manager.h"

#include "core/trace.h"
#include "event/qsf_fnd_acc_observer.h"
#include "event/qsf_fnd_job_observer.h"
#include "event/qsf_fnd_jobinfo_observer.h"
#include "event/qsf_fnd_panel_observer.h"
#include "event/xamf_amo_app_operation_observer.h"
#include "event/xiof_slo_esm_observer.h"
#include "xam_ads.h"
#include "xdc_com_std.h"
#include "xsi_ais_job.h"
#include "xsi_ais_jobinfo.h"
#include "xsi_pbfs_esm.h"
#include "xsi_pbfs_panel.h"

namespace orvane {

namespace {
// The basis type the application operation observer is registered for.
constexpr XAM_ADS_BASIS_TYPE kAppOperationBasisType = XAM_ADS_BASIS_TYPE_JAVA;

// The application operation observer lives for the rest of the process (terminate() leaves it registered and
// alive, and nothing deletes it). It is made here alone so that a leak checker can be told this one allocation
// and no other (tests/lsan.supp).
[[gnu::noinline]] xamf_amo_app_operation_observer* make_lifelong_app_operation_observer() {
    return new xamf_amo_app_operation_observer();
}
}  // namespace

qsf_fnd_event_manager::qsf_fnd_event_manager() = default;

qsf_fnd_event_manager::~qsf_fnd_event_manager() { terminate(); }

bool qsf_fnd_event_manager::init() {
    JBRG_TRACE("[Enter]");
    // Each observer is made, initialised and registered in this order; an observer whose init() failed is
    // registered all the same and answers each event with its failure code.
    job_observer_ = new qsf_fnd_job_observer();
    (void)job_observer_->init();
    (void)xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_add_observer(job_observer_);

    panel_observer_ = new qsf_fnd_panel_observer();
    (void)panel_observer_->init();
    (void)xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_add_observer(panel_observer_);

    smart_card_observer_ = new qsf_fnd_acc_observer();
    (void)smart_card_observer_->init();
    (void)xdc_com_std_facade::get_instance()->add_smart_card_observer(smart_card_observer_);

    jobinfo_observer_ = new qsf_fnd_jobinfo_observer();
    (void)jobinfo_observer_->init();
    (void)xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_add_observer(jobinfo_observer_);

    esm_observer_ = new xiof_slo_esm_observer();
    (void)esm_observer_->init();
    (void)xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_add_observer(esm_observer_);

    app_operation_observer_ = make_lifelong_app_operation_observer();
    (void)app_operation_observer_->init();
    // The registration's identifier is not needed: the observer is never removed.
    dev_ulong id = 0;
    (void)xam_ads_facade::xam_ads_get_instance()->xam_ads_add_app_operation_observer(
        app_operation_observer_, kAppOperationBasisType, id);
    JBRG_TRACE("[Exit]");
    return true;
}

bool qsf_fnd_event_manager::terminate() {
    // Five observers are removed and deleted. The application operation observer is left registered and
    // alive on purpose: the platform's requests to run, terminate, open and close applications keep
    // reaching Java for the whole life of the process.
    if (job_observer_ != nullptr) {
        (void)xsi_ais_job_facade::xsi_ais_job_get_instance()->xsi_ais_job_remove_observer(job_observer_);
        delete job_observer_;
        job_observer_ = nullptr;
    }
    if (panel_observer_ != nullptr) {
        (void)xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_remove_observer(panel_observer_);
        delete panel_observer_;
        panel_observer_ = nullptr;
    }
    if (smart_card_observer_ != nullptr) {
        (void)xdc_com_std_facade::get_instance()->remove_smart_card_observer(smart_card_observer_);
        delete smart_card_observer_;
        smart_card_observer_ = nullptr;
    }
    if (jobinfo_observer_ != nullptr) {
        (void)xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance()->xsi_ais_jobinfo_remove_observer(
            jobinfo_observer_);
        delete jobinfo_observer_;
        jobinfo_observer_ = nullptr;
    }
    if (esm_observer_ != nullptr) {
        (void)xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance()->xsi_pbfs_esm_remove_observer(esm_observer_);
        delete esm_observer_;
        esm_observer_ = nullptr;
    }
    return true;
}

}  // namespace orvane
