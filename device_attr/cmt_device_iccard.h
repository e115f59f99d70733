// The IC card reader's state and identity, and how it reads FeliCa ("Type C") and MIFARE Classic ("Type A")
// cards.
//
// An instance keeps what its last getReaderInfo() learnt about the reader. The read settings being edited are
// kept as text in static members that every instance and thread shares: FeliCa settings are read into them
// (getTypeCInfo) and written from them (setTypeCInfo); MIFARE settings follow a read-edit-write cycle in which
// the getters answer only while getTypeAResult says the statics hold what was read (getTypeAInfo sets it, a
// successful setTypeAInfo clears it). The class is meant for one Java caller at a time; a lock keeps the
// statics whole when two call at once, it does not make their edits atomic.
#ifndef JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H
#define JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H

#include <string>

namespace orvane {

class CMT_Device_ICCard {
public:
    // Reader states of getReaderStatus().
    static constexpr int READER_UNKNOWN = -1;
    static constexpr int READER_NOT_EXIST = 0;
    static constexpr int READER_EXIST = 1;
    // The places (sites) of the MIFARE read settings, 1 to 5.
    static constexpr int TYPEA_SETTING_SITE_1 = 1;
    static constexpr int TYPEA_SETTING_SITE_2 = 2;
    static constexpr int TYPEA_SETTING_SITE_3 = 3;
    static constexpr int TYPEA_SETTING_SITE_4 = 4;
    static constexpr int TYPEA_SETTING_SITE_5 = 5;
    static constexpr int AUTH_KEY_TYPE_A = 0;
    static constexpr int AUTH_KEY_TYPE_B = 1;
    // setTypeAReadType's type that reads the sector's data.
    static constexpr int READ_MIFARE = 1;

    virtual ~CMT_Device_ICCard();

    // ---- The reader ----
    int getReaderStatus();
    int getReaderInfo();
    unsigned int getVendorID();
    unsigned int getProductID();
    unsigned int getReaderType();
    unsigned int getCardTypes();
    bool getReadButton();
    bool setReaderType(char mask);

    // ---- FeliCa ("Type C") ----
    bool setTypeCReadType(int type);
    void setSystemCode(const std::string& code);
    void setServiceCode(const std::string& code, int blocks, int index);
    bool setTypeCInfo(int setting);
    bool getTypeCInfo(int setting);
    std::string getTypeCSystemCode(int setting);
    std::string getTypeCServiceCode(int setting, int index);
    int getTypeCBlockNum(int setting, int index);

    // ---- MIFARE Classic ("Type A") ----
    bool setTypeAReadType(int type);
    int getTypeAsettingSite(int site);
    bool getTypeAInfo(int site);
    bool setTypeAInfo(int site);
    std::string getTypeASectorNum();
    std::string getAuthKey();
    int getAuthKeyType();
    int getAuthKeyType(int type);
    void setTypeASectorNum(const std::string& sector);
    void setAuthKey(const std::string& key);
    void setAuthKeyType(int type);

    // The read settings being edited, shared by the whole process. They start as the reader's factory
    // values: system code "0", both service codes "0", no blocks, no sector number, no key, key A.
    static std::string systemCode;
    static std::string serviceCode[2];
    static int blockNum[2];
    static std::string sectorNum;
    static std::string authKey;
    static int authKeyType;
    static int getTypeAResult;

private:
    // A member getReaderInfo() fills, or 0xFFFFFFFF when the reader cannot be read.
    unsigned int reader_value(unsigned int CMT_Device_ICCard::*member);

    unsigned int vendor_ = 0;
    unsigned int product_id_ = 0;
    unsigned int reader_type_ = 0;
    unsigned int card_types_ = 0;
    bool read_button_ = false;
};

}  // namespace orvane

#endif  // JBRG_DEVICE_ATTR_CMT_DEVICE_ICCARD_H
