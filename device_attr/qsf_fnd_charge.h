// The device's charging (pay-per-use) interface as Java sees it.
//
// This device charges nothing: every operation is a fixed answer that accepts the call and changes nothing,
// and the maximum price is a constant. Java applications written for charging devices run unchanged.
#ifndef JBRG_DEVICE_ATTR_QSF_FND_CHARGE_H
#define JBRG_DEVICE_ATTR_QSF_FND_CHARGE_H

#include "plat_types.h"

namespace orvane {

class qsf_fnd_charge {
public:
    virtual ~qsf_fnd_charge();

    // Always 0; the price data are neither read nor changed.
    int qsf_fnd_set_price(unsigned char* price, unsigned int length);
    void qsf_fnd_ext_charge_start();
    void qsf_fnd_ext_charge_stop();
    void qsf_fnd_ext_charge_preprocessing();
    void qsf_fnd_ext_charge_post_processing();
    // Always 0, whatever price was set.
    int qsf_fnd_charge_price();
    // Always 10.
    int qsf_fnd_get_max_price();
    // Always 0.
    int convert_retcode(dev_long code);
};

// qsf_fnd_set_price for price data that Java hands over as bytes.
int set_price_bytes(qsf_fnd_charge& charge, signed char* price, unsigned int length);

}  // namespace orvane

#endif  // JBRG_DEVICE_ATTR_QSF_FND_CHARGE_H
