// The IC card reader's settings.
#ifndef JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H
#define JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H

#include <string>

namespace orvane {

class CMT_Device_ICCard {
public:
    virtual ~CMT_Device_ICCard();

    // The reader's card settings, shared by the whole process. They start as the reader's factory values:
    // system code "0", both service codes "0", no sector number and no authentication key.
    static std::string systemCode;
    static std::string serviceCode[2];
    static std::string sectorNum;
    static std::string authKey;
};

}  // namespace orvane

#endif  // JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H
