package jbrg.test.device_attr;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.device.attribute.cmt_iccardJNI.*;

import java.util.ArrayList;
import java.util.List;

/** The IC card reader's settings as a Java application reads and edits them. */
public final class IcCardModule {
    private IcCardModule() {}

    /** The reader as an application sees it: state, identity, and what it holds after a failed read. */
    public static String[] reader() {
        long card = new_CMT_Device_ICCard();
        List<String> out = new ArrayList<>();
        out.add("status " + CMT_Device_ICCard_getReaderStatus(card, null));
        out.add("info " + CMT_Device_ICCard_getReaderInfo(card, null));
        out.add("vendor " + CMT_Device_ICCard_getVendorID(card, null));
        out.add("product " + CMT_Device_ICCard_getProductID(card, null));
        out.add("type " + CMT_Device_ICCard_getReaderType(card, null));
        out.add("cards " + CMT_Device_ICCard_getCardTypes(card, null));
        out.add("button " + CMT_Device_ICCard_getReadButton(card, null));
        delete_CMT_Device_ICCard(card);
        return out.toArray(new String[0]);
    }

    /** FeliCa settings written from the statics, read back into them, formatted as the device does. */
    public static void felica() {
        long card = new_CMT_Device_ICCard();
        equal(true, CMT_Device_ICCard_setTypeCReadType(card, null, 2), "read type 2");
        equal(false, CMT_Device_ICCard_setTypeCReadType(card, null, 0), "read type 0");
        CMT_Device_ICCard_setSystemCode(card, null, "FE00");
        CMT_Device_ICCard_setServiceCode(card, null, "000B", 4, 0);
        CMT_Device_ICCard_setServiceCode(card, null, "1234", 0x102, 1);
        equal(true, CMT_Device_ICCard_setTypeCInfo(card, null, 2), "written to setting 2");
        equal(false, CMT_Device_ICCard_setTypeCInfo(card, null, 3), "there is no setting 3");

        CMT_Device_ICCard_setSystemCode(card, null, "zz");
        equal("fe00", CMT_Device_ICCard_getTypeCSystemCode(card, null, 2), "lower case, read again");
        equal("b", CMT_Device_ICCard_getTypeCServiceCode(card, null, 2, 0), "0x000B without leading zeros");
        equal(4, CMT_Device_ICCard_getTypeCBlockNum(card, null, 2, 0), "blocks of service 0");
        equal(2, CMT_Device_ICCard_getTypeCBlockNum(card, null, 2, 1), "0x102 blocks keep their low 8 bits");
        equal("", CMT_Device_ICCard_getTypeCServiceCode(card, null, 2, 2), "no service 2");
        equal(0, CMT_Device_ICCard_getTypeCBlockNum(card, null, 2, -1), "no service -1");
        equal("", CMT_Device_ICCard_getTypeCSystemCode(card, null, 0), "no setting 0");
        CMT_Device_ICCard_setServiceCode(card, null, "1", 1, 5);
        delete_CMT_Device_ICCard(card);
    }

    /** Hexadecimal texts as the device's 32-bit strtol reads them. */
    public static void felicaCodes() {
        long card = new_CMT_Device_ICCard();
        CMT_Device_ICCard_setSystemCode(card, null, "zz");
        CMT_Device_ICCard_setServiceCode(card, null, "123456789", 1, 0);
        CMT_Device_ICCard_setServiceCode(card, null, "-1", 1, 1);
        equal(true, CMT_Device_ICCard_setTypeCInfo(card, null, 1), "written to setting 1");
        delete_CMT_Device_ICCard(card);
    }

    /** The MIFARE read-edit-write cycle. */
    public static void mifare() {
        long card = new_CMT_Device_ICCard();
        equal(true, CMT_Device_ICCard_getTypeAInfo(card, null, 3), "a blank setting reads");
        equal("", CMT_Device_ICCard_getAuthKey(card, null), "blank key");
        equal("", CMT_Device_ICCard_getTypeASectorNum(card, null), "blank sector");

        CMT_Device_ICCard_setAuthKey(card, null, "A0A1A2A3A4A5FFFF");
        CMT_Device_ICCard_setTypeASectorNum(card, null, "1f");
        CMT_Device_ICCard_setAuthKeyType(card, null, AUTH_KEY_TYPE_B_get());
        equal(true, CMT_Device_ICCard_setTypeAInfo(card, null, 3), "written");
        equal(0, CMT_Device_ICCard_getAuthKeyType__SWIG_0(card, null), "not read since it was written");
        equal("", CMT_Device_ICCard_getAuthKey(card, null), "not read since it was written");

        equal(true, CMT_Device_ICCard_getTypeAInfo(card, null, 3), "read again");
        equal("A0A1A2A3A4A5", CMT_Device_ICCard_getAuthKey(card, null), "upper case, 12 digits");
        equal("1f", CMT_Device_ICCard_getTypeASectorNum(card, null), "two digits");
        equal(1, CMT_Device_ICCard_getAuthKeyType__SWIG_0(card, null), "key B");

        CMT_Device_ICCard_setAuthKey(card, null, "a1b2c3d4e5f6");
        equal(false, CMT_Device_ICCard_setTypeAInfo(card, null, 3), "lower case refused");
        CMT_Device_ICCard_setAuthKey(card, null, "A1B2");
        equal(false, CMT_Device_ICCard_setTypeAInfo(card, null, 3), "too short");
        CMT_Device_ICCard_setAuthKey(card, null, "");
        equal(false, CMT_Device_ICCard_setTypeAInfo(card, null, 3), "a sector without a key");
        CMT_Device_ICCard_setTypeASectorNum(card, null, "");
        equal(true, CMT_Device_ICCard_setTypeAInfo(card, null, 3), "neither: cleared");

        equal(0, CMT_Device_ICCard_getTypeAsettingSite(card, null, 1), "site 1");
        equal(0, CMT_Device_ICCard_getTypeAsettingSite(card, null, 0), "site 0");
        equal(0, CMT_Device_ICCard_getTypeAsettingSite(card, null, 9), "site 9");
        equal(4, CMT_Device_ICCard_getTypeAsettingSite(card, null, TYPEA_SETTING_SITE_5_get()), "site 5");
        equal(1, CMT_Device_ICCard_getAuthKeyType__SWIG_1(card, null, 1), "B is 1");
        equal(0, CMT_Device_ICCard_getAuthKeyType__SWIG_1(card, null, 7), "anything else is A");
        equal(true, CMT_Device_ICCard_setTypeAReadType(card, null, READ_MIFARE_get()), "read the sector");
        delete_CMT_Device_ICCard(card);
    }

    /** Null texts are refused; the constants are the class's. */
    public static void badArguments() {
        long card = new_CMT_Device_ICCard();
        throwsWith(NullPointerException.class, "null std::string",
                () -> CMT_Device_ICCard_setSystemCode(card, null, null));
        throwsWith(NullPointerException.class, "null std::string",
                () -> CMT_Device_ICCard_setServiceCode(card, null, null, 1, 0));
        throwsWith(NullPointerException.class, "null std::string",
                () -> CMT_Device_ICCard_setAuthKey(card, null, null));
        equal(-1, READER_UNKNOWN_get(), "unknown");
        equal(0, READER_NOT_EXIST_get(), "none");
        equal(1, READER_EXIST_get(), "a reader");
        equal(1, TYPEA_SETTING_SITE_1_get(), "site 1");
        equal(0, AUTH_KEY_TYPE_A_get(), "key A");
        equal(0L, CMT_Device_ICCard_getVendorID(0, null), "a zero handle reaches nothing");
        delete_CMT_Device_ICCard(card);
    }
}
