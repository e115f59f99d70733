#include "device_attr/cmt_device_iccard.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "core/trace.h"
#include "xdc_com_std.h"

namespace orvane {

std::string CMT_Device_ICCard::systemCode = "0";
std::string CMT_Device_ICCard::serviceCode[2] = {"0", "0"};
int CMT_Device_ICCard::blockNum[2] = {0, 0};
std::string CMT_Device_ICCard::sectorNum;
std::string CMT_Device_ICCard::authKey;
int CMT_Device_ICCard::authKeyType = 0;
int CMT_Device_ICCard::getTypeAResult = 0;

namespace {

// The reader's answers the class tells apart.
constexpr int32_t kReaderNotExist = PLAT_CODE(0xC4020003);
constexpr int32_t kNoSetting = PLAT_CODE(0xC4020006);

// Keeps the statics whole when two threads use them at once (reentrant: the getters read through the
// operations that load them).
std::recursive_mutex& statics_lock() {
    static std::recursive_mutex lock;
    return lock;
}
using statics_guard = std::lock_guard<std::recursive_mutex>;

xdc_com_std_facade& reader() { return *xdc_com_std_facade::get_instance(); }

// Hexadecimal text as the device's strtol(text, 0, 16) reads it, with the device's 32-bit long: leading
// blanks and a sign are taken, reading stops at the first character that is not a digit, text without
// digits is 0 and a value beyond the long's range stands at its limit. The caller keeps the low bits it needs.
int32_t device_hex(const std::string& text) {
    const long long value = std::strtoll(text.c_str(), nullptr, 16);
    if (value > INT32_MAX) return INT32_MAX;
    if (value < INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(value);
}

// A number as lower-case hexadecimal without leading zeros ("%x"), or as two digits at least ("%02x", "%02X").
std::string hex(unsigned value, int width = 1, bool upper = false) {
    char text[16];
    if (upper) {
        std::snprintf(text, sizeof text, "%0*X", width, value);
    } else {
        std::snprintf(text, sizeof text, "%0*x", width, value);
    }
    return text;
}

// One hexadecimal digit of a MIFARE key: "0"-"9" or "A"-"F"; lower-case letters are not taken.
int key_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The FeliCa setting number of setting 1 or 2; -1 for any other.
int felica_number(int setting) { return setting == 1 || setting == 2 ? setting - 1 : -1; }

// A service index the statics have: 0 or 1.
bool service_index(int index) { return index == 0 || index == 1; }

}  // namespace

CMT_Device_ICCard::~CMT_Device_ICCard() = default;

// ---- The reader ---------------------------------------------------------------------------------------------

int CMT_Device_ICCard::getReaderStatus() {
    XDC_COM_STD_SMART_CARD_READER_INFO info{};
    const int32_t rc = reader().get_smart_card_reader_information(info);
    const int status = rc == 0 ? READER_EXIST : rc == kReaderNotExist ? READER_NOT_EXIST : READER_UNKNOWN;
    JBRG_TRACE("END : %d", status);
    return status;
}

int CMT_Device_ICCard::getReaderInfo() {
    XDC_COM_STD_SMART_CARD_READER_INFO info{};
    int result = 0;
    if (reader().get_smart_card_reader_information(info) == 0) {
        vendor_ = info.vendor;
        product_id_ = info.product_id;
        reader_type_ = info.reader_type;
        card_types_ = info.card_types;
        read_button_ = info.read_button != 0;
        JBRG_TRACE("reader_info.vendor     %d", static_cast<int>(info.vendor));
        JBRG_TRACE("reader_info.productID  %d", static_cast<int>(info.product_id));
        JBRG_TRACE("reader_info.readerType %d", static_cast<int>(info.reader_type));
        JBRG_TRACE("reader_info.cardTypes  %d", static_cast<int>(info.card_types));
        JBRG_TRACE("reader_info.readButton %d", static_cast<int>(info.read_button));
        result = 1;
    }
    JBRG_TRACE("END : %d", result);
    return result;
}

unsigned int CMT_Device_ICCard::reader_value(unsigned int CMT_Device_ICCard::*member) {
    return getReaderInfo() == 1 ? this->*member : 0xFFFFFFFFu;
}

unsigned int CMT_Device_ICCard::getVendorID() {
    const unsigned int id = reader_value(&CMT_Device_ICCard::vendor_);
    JBRG_TRACE("END : 0x%04x", id);
    return id;
}

unsigned int CMT_Device_ICCard::getProductID() {
    const unsigned int id = reader_value(&CMT_Device_ICCard::product_id_);
    JBRG_TRACE("END : 0x%04x", id);
    return id;
}

unsigned int CMT_Device_ICCard::getReaderType() {
    const unsigned int type = reader_value(&CMT_Device_ICCard::reader_type_);
    JBRG_TRACE("END : 0x%02x", type);
    return type;
}

unsigned int CMT_Device_ICCard::getCardTypes() {
    const unsigned int types = reader_value(&CMT_Device_ICCard::card_types_);
    JBRG_TRACE("END : 0x%02x", types);
    return types;
}

// After a failed read the last known value stands.
bool CMT_Device_ICCard::getReadButton() {
    getReaderInfo();
    return read_button_;
}

bool CMT_Device_ICCard::setReaderType(char mask) {
    return reader().set_smart_card_event_masks(static_cast<unsigned char>(mask)) == 0;
}

// ---- FeliCa ---------------------------------------------------------------------------------------------------

bool CMT_Device_ICCard::setTypeCReadType(int type) {
    // 1 reads the IDm only, 2 the service data too.
    const int data_type = type == 1 ? 0 : type == 2 ? 1 : -1;
    const bool done = data_type >= 0 && reader().set_felica_data_type(data_type) == 0;
    JBRG_TRACE("END ( %d : %d ) : %d", type, data_type, done ? 1 : 0);
    return done;
}

void CMT_Device_ICCard::setSystemCode(const std::string& code) {
    statics_guard guard(statics_lock());
    systemCode = code;
}

void CMT_Device_ICCard::setServiceCode(const std::string& code, int blocks, int index) {
    if (!service_index(index)) {
        JBRG_TRACE("index %d is not a service (0 or 1): nothing stored", index);
        return;
    }
    statics_guard guard(statics_lock());
    serviceCode[index] = code;
    blockNum[index] = blocks;
}

bool CMT_Device_ICCard::setTypeCInfo(int setting) {
    const int number = felica_number(setting);
    if (number < 0) return false;
    statics_guard guard(statics_lock());
    XDC_COM_STD_FELICA_SERVICE_SETTING record{};
    record.system_code = static_cast<uint16_t>(device_hex(systemCode));
    for (int i = 0; i < 2; ++i) {
        record.service[i].service_code = static_cast<uint16_t>(device_hex(serviceCode[i]));
        record.service[i].num_of_blocks = static_cast<uint8_t>(blockNum[i]);
    }
    JBRG_TRACE("FELICA_Setting.system_code              %d", record.system_code);
    JBRG_TRACE("FELICA_Setting.service[0].service_code  %d", record.service[0].service_code);
    JBRG_TRACE("FELICA_Setting.service[0].num_of_blocks %d", record.service[0].num_of_blocks);
    JBRG_TRACE("FELICA_Setting.service[1].service_code  %d", record.service[1].service_code);
    JBRG_TRACE("FELICA_Setting.service[1].num_of_blocks %d", record.service[1].num_of_blocks);
    const bool done = reader().set_felica_service_setting(number, record) == 0;
    JBRG_TRACE("END (%d) : %d", setting, done ? 1 : 0);
    return done;
}

bool CMT_Device_ICCard::getTypeCInfo(int setting) {
    const int number = felica_number(setting);
    if (number < 0) return false;
    XDC_COM_STD_FELICA_SERVICE_SETTING record{};
    if (reader().get_felica_service_setting(number, record) != 0) return false;
    statics_guard guard(statics_lock());
    systemCode = hex(record.system_code);
    for (int i = 0; i < 2; ++i) {
        serviceCode[i] = hex(record.service[i].service_code);
        blockNum[i] = record.service[i].num_of_blocks;
    }
    return true;
}

std::string CMT_Device_ICCard::getTypeCSystemCode(int setting) {
    statics_guard guard(statics_lock());
    if (!getTypeCInfo(setting)) {
        JBRG_TRACE("END (%d) : NULL", setting);
        return {};
    }
    JBRG_TRACE("END (%d) : %s", setting, systemCode.c_str());
    return systemCode;
}

std::string CMT_Device_ICCard::getTypeCServiceCode(int setting, int index) {
    statics_guard guard(statics_lock());
    if (!service_index(index) || !getTypeCInfo(setting)) {
        JBRG_TRACE("END (%d,%d) : NULL", setting, index);
        return {};
    }
    JBRG_TRACE("END (%d,%d) : %s", setting, index, serviceCode[index].c_str());
    return serviceCode[index];
}

int CMT_Device_ICCard::getTypeCBlockNum(int setting, int index) {
    statics_guard guard(statics_lock());
    if (!service_index(index) || !getTypeCInfo(setting)) {
        JBRG_TRACE("END (%d,%d) : ERROR", setting, index);
        return 0;
    }
    JBRG_TRACE("END (%d,%d) : %d", setting, index, blockNum[index]);
    return blockNum[index];
}

// ---- MIFARE Classic -------------------------------------------------------------------------------------------

bool CMT_Device_ICCard::setTypeAReadType(int type) {
    // READ_MIFARE reads the sector's blocks (the reader's data type 2); anything else the UID only.
    const bool done = reader().set_mifare_classic_data_type(type == READ_MIFARE ? 2 : 0) == 0;
    if (done) {
        JBRG_TRACE("true!!");
    } else {
        JBRG_TRACE("CMT_Device_ICCard::setTypeAReadType false!!");
    }
    return done;
}

// Sites 2 to 5 are settings 1 to 4; site 1 and every other value are setting 0.
int CMT_Device_ICCard::getTypeAsettingSite(int site) { return site >= 2 && site <= 5 ? site - 1 : 0; }

bool CMT_Device_ICCard::getTypeAInfo(int site) {
    const int number = getTypeAsettingSite(site);
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING record{};
    const int32_t rc = reader().get_mifare_classic_read_setting(number, record);
    statics_guard guard(statics_lock());
    if (rc == kNoSetting) {
        getTypeAResult = 1;
        JBRG_TRACE("TypeA infomation is blank");  // the device's spelling
        authKey.clear();
        sectorNum.clear();
        return true;
    }
    if (rc != 0) return false;
    getTypeAResult = 1;
    sectorNum = hex(record.sector_num, 2);
    authKeyType = record.key_type;
    authKey.clear();
    for (uint8_t byte : record.key) authKey += hex(byte, 2, true);
    return true;
}

bool CMT_Device_ICCard::setTypeAInfo(int site) {
    const int number = getTypeAsettingSite(site);
    statics_guard guard(statics_lock());
    XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING record{};
    record.key_type = getAuthKeyType(authKeyType);
    record.sector_num = static_cast<uint16_t>(device_hex(sectorNum));
    JBRG_TRACE("authKey:%s, sector_num:%s", authKey.c_str(), sectorNum.c_str());
    int32_t rc;
    if (authKey.empty() && sectorNum.empty()) {
        JBRG_TRACE("authKey and sectorNum are empty, clear the data");
        rc = reader().clear_mifare_classic_read_setting(number);
    } else if (authKey.empty() || sectorNum.empty()) {
        JBRG_TRACE("Both of authKey and sectorNum must not be empty");
        return false;
    } else {
        // Two characters a byte, high nibble first, from the first twelve; a shorter key fails at its end,
        // whose code (0) is what the trace shows.
        for (std::size_t i = 0; i < 2 * sizeof record.key; ++i) {
            const char c = i < authKey.size() ? authKey[i] : '\0';
            const int digit = key_digit(c);
            if (digit < 0) {
                JBRG_TRACE("authKey is wrong : %04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
                return false;
            }
            record.key[i / 2] = static_cast<uint8_t>(i % 2 == 0 ? digit << 4 : record.key[i / 2] | digit);
        }
        rc = reader().set_mifare_classic_read_setting(number, record);
    }
    if (rc != 0) return false;
    getTypeAResult = 0;
    return true;
}

std::string CMT_Device_ICCard::getTypeASectorNum() {
    statics_guard guard(statics_lock());
    return getTypeAResult == 1 ? sectorNum : std::string();
}

std::string CMT_Device_ICCard::getAuthKey() {
    statics_guard guard(statics_lock());
    return getTypeAResult == 1 ? authKey : std::string();
}

int CMT_Device_ICCard::getAuthKeyType() {
    statics_guard guard(statics_lock());
    return getTypeAResult == 1 ? authKeyType : 0;
}

int CMT_Device_ICCard::getAuthKeyType(int type) { return type == AUTH_KEY_TYPE_B ? 1 : 0; }

void CMT_Device_ICCard::setTypeASectorNum(const std::string& sector) {
    statics_guard guard(statics_lock());
    sectorNum = sector;
}

void CMT_Device_ICCard::setAuthKey(const std::string& key) {
    statics_guard guard(statics_lock());
    authKey = key;
}

void CMT_Device_ICCard::setAuthKeyType(int type) {
    statics_guard guard(statics_lock());
    authKeyType = type;
}

}  // namespace orvane
