#include "device_attr/cmt_device_iccard.h"

namespace orvane {

std::string CMT_Device_ICCard::systemCode = "0";
std::string CMT_Device_ICCard::serviceCode[2] = {"0", "0"};
std::string CMT_Device_ICCard::sectorNum;
std::string CMT_Device_ICCard::authKey;

CMT_Device_ICCard::~CMT_Device_ICCard() = default;

}  // namespace orvane
