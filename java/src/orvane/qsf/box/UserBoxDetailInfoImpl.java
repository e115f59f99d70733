package orvane.qsf.box;

import orvane.box.attribute.DeleteSetting;
import orvane.box.attribute.OverwriteSetting;

/** The settings of a user box. Its fields are filled by the native box module. */
public class UserBoxDetailInfoImpl {
    private int maxsize;
    private DeleteSetting delsetting;
    private int period;
    private OverwriteSetting ovsetting;
    private String password;

    public UserBoxDetailInfoImpl() {}

    public int getMaxSize() {
        return maxsize;
    }

    public DeleteSetting getDeleteSetting() {
        return delsetting;
    }

    public int getPeriod() {
        return period;
    }

    public OverwriteSetting getOverwriteSetting() {
        return ovsetting;
    }

    public String getPassword() {
        return password;
    }

    @Override
    public String toString() {
        return maxsize + "|" + delsetting + "|" + period + "|" + ovsetting + "|" + password;
    }
}
