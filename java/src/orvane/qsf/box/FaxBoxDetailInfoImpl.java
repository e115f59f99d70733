package orvane.qsf.box;

import orvane.box.attribute.DeleteSetting;

/** The settings of a fax box. Its fields are filled by the native box module. */
public class FaxBoxDetailInfoImpl {
    private DeleteSetting delsetting;
    private String password;

    public FaxBoxDetailInfoImpl() {}

    public DeleteSetting getDeleteSetting() {
        return delsetting;
    }

    public String getPassword() {
        return password;
    }

    @Override
    public String toString() {
        return delsetting + "|" + password;
    }
}
