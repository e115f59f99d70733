package jbrg.test.device_attr;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.webservice.qsf_fnd_webservice_moduleJNI.*;

import java.io.File;
import orvane.qsf.wrapper.device.attribute.qsf_fnd_charge_moduleJNI;

/** Web service reservations, certificate files and the inert charging interface, as applications use them. */
public final class WebServiceModule {
    private WebServiceModule() {}

    static final int WSD_SCAN = 0, REST_API = 3;

    /** One application at a time holds a service; only the holder releases it. */
    public static void reservations() {
        long ws = new_qsf_fnd_webservice_proxy();
        equal(0, qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, "jbrg.a"), "a reserves");
        equal(0, qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, "jbrg.a"), "again, harmless");
        equal(2, qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, "jbrg.b"), "b must wait");
        equal(3, qsf_fnd_webservice_proxy_release(ws, null, WSD_SCAN, "jbrg.b"), "b holds nothing");
        equal(0, qsf_fnd_webservice_proxy_release(ws, null, WSD_SCAN, "jbrg.a"), "a releases");
        equal(0, qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, "jbrg.b"), "now b");
        equal(4, qsf_fnd_webservice_proxy_reserve(ws, null, REST_API, "jbrg.a"), "not offered here");
        equal(1, qsf_fnd_webservice_proxy_reserve(ws, null, 9, "jbrg.a"), "no such kind");
        equal(1, qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, ""), "no application");
        equal(1, qsf_fnd_webservice_proxy_release(ws, null, WSD_SCAN, "x".repeat(65)), "a long id");
        throwsWith(NullPointerException.class, "null std::string",
                () -> qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, null));
        delete_qsf_fnd_webservice_proxy(ws);
    }

    /** Certificate paths name files that exist; a missing certificate leaves the holder as it was. */
    public static void certificates() {
        long ws = new_qsf_fnd_webservice_proxy();
        for (int type = 0; type < 2; ++type) {
            String[] path = {""};
            equal(0, qsf_fnd_webservice_proxy_get_certificate_filepath(ws, null, type, path), "type " + type);
            that(new File(path[0]).isFile(), "type " + type + " is a file: " + path[0]);
        }
        String[] missing = {"kept"};
        equal(6, qsf_fnd_webservice_proxy_get_certificate_filepath(ws, null, 2, missing), "not installed");
        equal("kept", missing[0], "the holder is left");
        String[] first = {null};
        String[] second = {""};
        equal(0, qsf_fnd_webservice_proxy_get_hdo_certificate_filepath(ws, null, first, second), "hdo");
        that(new File(first[0]).isFile() && new File(second[0]).isFile(), "both are files");
        that(!first[0].equals(second[0]), "a certificate and a key");
        throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                () -> qsf_fnd_webservice_proxy_get_hdo_certificate_filepath(ws, null, first, new String[0]));
        throwsWith(NullPointerException.class, "array null",
                () -> qsf_fnd_webservice_proxy_get_certificate_filepath(ws, null, 0, null));
        delete_qsf_fnd_webservice_proxy(ws);
    }

    /** Each forced answer of the service once, as the C++ side queued them. */
    public static String[] forcedCodes() {
        long ws = new_qsf_fnd_webservice_proxy();
        String[] out = new String[9];
        for (int i = 0; i < out.length; ++i) {
            out[i] = Integer.toString(qsf_fnd_webservice_proxy_reserve(ws, null, WSD_SCAN, "jbrg.a"));
        }
        delete_qsf_fnd_webservice_proxy(ws);
        return out;
    }

    /** Charging accepts everything and changes nothing. */
    public static void charge() {
        long c = qsf_fnd_charge_moduleJNI.new_qsf_fnd_charge();
        byte[] price = {1, -2, 3};
        equal(0, qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_set_price(c, null, price, 3), "set");
        equal(new byte[] {1, -2, 3}, price, "the data are not changed");
        equal(0, qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_set_price(c, null, price, 1000), "any length");
        qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_ext_charge_start(c, null);
        qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_ext_charge_preprocessing(c, null);
        qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_ext_charge_post_processing(c, null);
        qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_ext_charge_stop(c, null);
        equal(0, qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_charge_price(c, null), "no price after a set");
        long other = qsf_fnd_charge_moduleJNI.new_qsf_fnd_charge();
        equal(10, qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_get_max_price(c, null), "10");
        equal(10, qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_get_max_price(other, null), "10 for every one");
        throwsWith(NullPointerException.class, "null array",
                () -> qsf_fnd_charge_moduleJNI.qsf_fnd_charge_qsf_fnd_set_price(c, null, null, 0));
        qsf_fnd_charge_moduleJNI.delete_qsf_fnd_charge(other);
        qsf_fnd_charge_moduleJNI.delete_qsf_fnd_charge(c);
    }
}
