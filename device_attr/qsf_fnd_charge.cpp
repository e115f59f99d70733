#include "device_attr/qsf_fnd_charge.h"

namespace orvane {

namespace {
// The highest price the device reports.
constexpr int kMaxPrice = 10;
}  // namespace

qsf_fnd_charge::~qsf_fnd_charge() = default;

int qsf_fnd_charge::qsf_fnd_set_price(unsigned char*, unsigned int) { return 0; }
void qsf_fnd_charge::qsf_fnd_ext_charge_start() {}
void qsf_fnd_charge::qsf_fnd_ext_charge_stop() {}
void qsf_fnd_charge::qsf_fnd_ext_charge_preprocessing() {}
void qsf_fnd_charge::qsf_fnd_ext_charge_post_processing() {}
int qsf_fnd_charge::qsf_fnd_charge_price() { return 0; }
int qsf_fnd_charge::qsf_fnd_get_max_price() { return kMaxPrice; }
int qsf_fnd_charge::convert_retcode(dev_long) { return 0; }

int set_price_bytes(qsf_fnd_charge& charge, signed char* price, unsigned int length) {
    return charge.qsf_fnd_set_price(reinterpret_cast<unsigned char*>(price), length);
}

}  // namespace orvane
