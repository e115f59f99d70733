/*
 * The smart card reader of the communication services.
 *
 * The reader reports to its observers when a reader is attached or detached, when it reads a card, loses it
 * or fails to read it. An observer derives from xdc_com_std_smart_card_observer and is registered with
 * xdc_com_std_facade::add_smart_card_observer; the reader calls it on its own IPC thread. The reader's
 * notifications answer nothing: the reader does not wait for its observers' verdict.
 *
 * The same facade tells about the reader attached now and keeps how it reads cards: the event mask (which
 * card types it reports), what it reads from a FeliCa card (the id only, or data of the services of one of two
 * service settings) and from a MIFARE Classic card (the id only, or the data of one sector, with the sector's
 * key, from one of five read settings). The settings are kept by the reader's service and survive a reader
 * being detached and attached again; every call about the reader answers NOT_EXIST while none is attached.
 */
#ifndef XDC_COM_STD_H
#define XDC_COM_STD_H

#include "gen_ipc.h"
#include "plat_types.h"

/* Result codes of the card reader. */
#define XDC_COM_STD_OK PLAT_CODE(0)
#define XDC_COM_STD_NG PLAT_CODE(0xC4020001)         /* general failure: null or unknown observer */
#define XDC_COM_STD_PARAM_ERROR PLAT_CODE(0xC4020002) /* a setting number or value the reader does not take */
#define XDC_COM_STD_NOT_EXIST PLAT_CODE(0xC4020003)   /* no reader is attached */
#define XDC_COM_STD_BUSY PLAT_CODE(0xC4020004)        /* the reader is reading a card */
#define XDC_COM_STD_NO_SETTING PLAT_CODE(0xC4020006)  /* the read setting asked for holds nothing */

/* Card types as the reader reports them (values of ENV_AUTH_IC_CARD_TYPE). */
#define ENV_AUTH_IC_CARD_TYPE_A 0        /* ISO/IEC 14443 Type A, MIFARE Classic: sector-organised data */
#define ENV_AUTH_IC_CARD_TYPE_B 1        /* ISO/IEC 14443 Type B */
#define ENV_AUTH_IC_CARD_TYPE_C 2        /* FeliCa: system- and service-organised data */
#define ENV_AUTH_IC_CARD_TYPE_V 3        /* ISO/IEC 15693 vicinity cards */
#define ENV_AUTH_IC_CARD_TYPE_PROX 4     /* 125 kHz proximity cards */
#define ENV_AUTH_IC_CARD_TYPE_LEGIC 5    /* LEGIC cards */
typedef int32_t ENV_AUTH_IC_CARD_TYPE;

/* The reader, as it reports itself when attached (all 16 bytes zeroed before use). */
typedef struct {
    uint16_t vendor;        /* USB vendor id */
    uint16_t product_id;    /* USB product id */
    uint32_t reader_type;
    uint32_t card_types;    /* one bit per ENV_AUTH_IC_CARD_TYPE the reader reads (bit n for type n) */
    uint32_t read_button;   /* non-zero: the reader has a read button */
} XDC_COM_STD_SMART_CARD_READER_INFO;
PLAT_ASSERT_SIZE(XDC_COM_STD_SMART_CARD_READER_INFO, 16);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_READER_INFO, vendor, 0);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_READER_INFO, product_id, 2);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_READER_INFO, reader_type, 4);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_READER_INFO, card_types, 8);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_READER_INFO, read_button, 12);

/* Setting numbers. */
typedef int32_t XDC_COM_STD_FELICA_SETTING_NUM;               /* 0 or 1 */
typedef int32_t XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM;  /* 0 to 4 */
#define XDC_COM_STD_FELICA_SETTING_COUNT 2
#define XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_COUNT 5

/* What the reader reads from a FeliCa card (set_felica_data_type). */
#define XDC_COM_STD_FELICA_DATA_ID 0         /* the IDm only */
#define XDC_COM_STD_FELICA_DATA_SERVICE 1    /* the IDm and the blocks of the service setting's services */

/* What the reader reads from a MIFARE Classic card (set_mifare_classic_data_type). */
#define XDC_COM_STD_MIFARE_DATA_ID 0         /* the UID only */
#define XDC_COM_STD_MIFARE_DATA_VALUE 1      /* the UID and the value blocks of the read setting's sector */
#define XDC_COM_STD_MIFARE_DATA_SECTOR 2     /* the UID and every block of the read setting's sector */

/* One FeliCa service setting: the system and the blocks to read from two of its services (10 bytes). */
typedef struct {
    uint16_t service_code;
    uint8_t num_of_blocks;   /* 0: the service is not read */
    uint8_t pad;
} XDC_COM_STD_FELICA_SERVICE;
typedef struct {
    uint16_t system_code;
    XDC_COM_STD_FELICA_SERVICE service[2];
} XDC_COM_STD_FELICA_SERVICE_SETTING;
PLAT_ASSERT_OFFSET(XDC_COM_STD_FELICA_SERVICE_SETTING, system_code, 0);
PLAT_ASSERT_OFFSET(XDC_COM_STD_FELICA_SERVICE_SETTING, service, 2);
PLAT_ASSERT_SIZE(XDC_COM_STD_FELICA_SERVICE, 4);
PLAT_ASSERT_SIZE(XDC_COM_STD_FELICA_SERVICE_SETTING, 10);

/* Block counts a FeliCa service setting takes per service. */
#define XDC_COM_STD_FELICA_MAX_BLOCKS 15

/* One MIFARE Classic read setting (12 bytes). */
#define XDC_COM_STD_MIFARE_KEY_TYPE_A 0
#define XDC_COM_STD_MIFARE_KEY_TYPE_B 1
#define XDC_COM_STD_MIFARE_KEY_SIZE 6
#define XDC_COM_STD_MIFARE_SECTOR_COUNT 40   /* sectors 0x00..0x27 (MIFARE Classic 4K) */
typedef struct {
    int32_t key_type;                                /* XDC_COM_STD_MIFARE_KEY_TYPE_* */
    uint8_t key[XDC_COM_STD_MIFARE_KEY_SIZE];
    uint16_t sector_num;
} XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING;
PLAT_ASSERT_OFFSET(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING, key_type, 0);
PLAT_ASSERT_OFFSET(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING, key, 4);
PLAT_ASSERT_OFFSET(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING, sector_num, 10);
PLAT_ASSERT_SIZE(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING, 12);

/* A failed read. */
typedef struct {
    int32_t error;          /* XDC_COM_STD_CARD_ERROR_* */
    uint32_t detail;        /* the reader's own detail code */
    uint32_t reserved[2];
} XDC_COM_STD_SMART_CARD_ERROR_INFO;
PLAT_ASSERT_SIZE(XDC_COM_STD_SMART_CARD_ERROR_INFO, 16);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_ERROR_INFO, error, 0);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_ERROR_INFO, detail, 4);

#define XDC_COM_STD_CARD_ERROR_READ 1             /* the card could not be read */
#define XDC_COM_STD_CARD_ERROR_AUTHENTICATION 2   /* a sector key or service was refused */
#define XDC_COM_STD_CARD_ERROR_MULTIPLE_CARDS 3   /* more than one card in the field */

/* Capacity of a card id, terminating zero included, and of the card data area. */
#define XDC_COM_STD_CARD_ID_SIZE 64
#define XDC_COM_STD_SERVICE_DATA_SIZE 1024
/* Bytes per data block, for every card type. */
#define XDC_COM_STD_BLOCK_SIZE 16

/*
 * A card that was read.
 *
 * card_id is the card's id (UID or IDm) as upper-case hexadecimal text, NUL-terminated inside its field;
 * card_id_size is the number of characters of that text.
 *
 * service_data_exist is non-zero when data were read from the card. Then service_data holds
 * service_data_count entries, one after the other, in service_data_size bytes. An entry reads, byte by byte
 * (16-bit values high byte first):
 *
 *   card type A (sector-organised):
 *     sectors (1 byte), then per sector: sector number (1 byte), block count n (1 byte), n * 16 data bytes
 *   every other card type (system- and service-organised):
 *     system code (2 bytes), services (1 byte), then per service: service code (2 bytes),
 *     block count n (1 byte), n * 16 data bytes
 */
typedef struct {
    ENV_AUTH_IC_CARD_TYPE card_type;
    char card_id[XDC_COM_STD_CARD_ID_SIZE];
    int32_t card_id_size;
    uint16_t service_data_exist;
    uint16_t service_data_count;
    dev_ulong service_data_size;
    uint8_t service_data[XDC_COM_STD_SERVICE_DATA_SIZE];
} XDC_COM_STD_SMART_CARD_INFO;
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, card_type, 0);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, card_id, 4);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, card_id_size, 68);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, service_data_exist, 72);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, service_data_count, 74);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, service_data_size, 76);
PLAT_ASSERT_OFFSET(XDC_COM_STD_SMART_CARD_INFO, service_data, 80);
PLAT_ASSERT_SIZE(XDC_COM_STD_SMART_CARD_INFO, 1104);

/*
 * The messages of the card reader, as the IPC thread hands them to
 * xdc_com_std_smart_card_observer::dispatch: the message id names the event, the data are the event's record
 * (none for a lost card or a removed reader).
 */
enum {
    XDC_COM_STD_MSG_CARD_DETECTED = 1,    /* XDC_COM_STD_SMART_CARD_INFO */
    XDC_COM_STD_MSG_CARD_LOST = 2,
    XDC_COM_STD_MSG_CARD_ERROR = 3,       /* XDC_COM_STD_SMART_CARD_ERROR_INFO */
    XDC_COM_STD_MSG_READER_ADDED = 4,     /* XDC_COM_STD_SMART_CARD_READER_INFO */
    XDC_COM_STD_MSG_READER_REMOVED = 5
};

#ifdef __cplusplus

/* An observer of the card reader. Every event is ignored unless overridden. */
class xdc_com_std_smart_card_observer : public gen_ipc_observer {
public:
    ~xdc_com_std_smart_card_observer() override;

    /* Decodes one XDC_COM_STD_MSG_* message and calls its event; 0 for a known message. */
    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    virtual void smart_card_detected(const XDC_COM_STD_SMART_CARD_INFO& card_info);
    virtual void smart_card_lost();
    virtual void smart_card_error_detected(const XDC_COM_STD_SMART_CARD_ERROR_INFO& error_info);
    virtual void smart_card_reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO& reader_info);
    virtual void smart_card_reader_removed();
};

/* The card reader. One instance per process. */
class xdc_com_std_facade {
public:
    static xdc_com_std_facade* get_instance();

    /* Registers an observer; XDC_COM_STD_NG for a null one or one registered already. */
    PLAT_RESULT add_smart_card_observer(xdc_com_std_smart_card_observer* observer);
    /* Unregisters an observer; XDC_COM_STD_NG for one not registered. */
    PLAT_RESULT remove_smart_card_observer(xdc_com_std_smart_card_observer* observer);

    /* The reader attached now; NOT_EXIST when none is. */
    PLAT_RESULT get_smart_card_reader_information(XDC_COM_STD_SMART_CARD_READER_INFO& info);
    /* Which card types the reader reports: bit n for ENV_AUTH_IC_CARD_TYPE n (bits 0..5). */
    PLAT_RESULT set_smart_card_event_masks(unsigned char mask);
    /* XDC_COM_STD_FELICA_DATA_*; another value: PARAM_ERROR. */
    PLAT_RESULT set_felica_data_type(int type);
    /* Service setting `number`; PARAM_ERROR for another number or a block count past
     * XDC_COM_STD_FELICA_MAX_BLOCKS. Reading a setting never written gives zeros. */
    PLAT_RESULT set_felica_service_setting(XDC_COM_STD_FELICA_SETTING_NUM number,
                                           const XDC_COM_STD_FELICA_SERVICE_SETTING& setting);
    PLAT_RESULT get_felica_service_setting(XDC_COM_STD_FELICA_SETTING_NUM number,
                                           XDC_COM_STD_FELICA_SERVICE_SETTING& setting);
    /* XDC_COM_STD_MIFARE_DATA_*; another value: PARAM_ERROR. */
    PLAT_RESULT set_mifare_classic_data_type(int type);
    /* Read setting `number`; NO_SETTING when it holds nothing (never written, or cleared). */
    PLAT_RESULT get_mifare_classic_read_setting(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number,
                                                XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING& setting);
    /* PARAM_ERROR for another number, a key type other than A or B, or a sector past the card's last. */
    PLAT_RESULT set_mifare_classic_read_setting(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number,
                                                const XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING& setting);
    PLAT_RESULT clear_mifare_classic_read_setting(XDC_COM_STD_MIFARE_CLASSIC_READ_SETTING_NUM number);

private:
    xdc_com_std_facade() = default;
};

#endif /* __cplusplus */

#endif /* XDC_COM_STD_H */
