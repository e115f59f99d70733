package orvane.qsf.box;

import orvane.box.attribute.OwnerType;
import orvane.box.attribute.Permission;

/** What a fax box listing tells of a fax box. Its fields are filled by the native box module. */
public class FaxBoxInfoImpl {
    private int boxnumber;
    private String boxname;
    private String ownerloginname;
    private String ownerusername;
    private String ownerdomainname;
    private OwnerType ownertype;
    private Permission permission;
    private long currentsize;
    private int num;

    public FaxBoxInfoImpl() {}

    public int getBoxNumber() {
        return boxnumber;
    }

    public String getBoxName() {
        return boxname;
    }

    public String getOwnerLoginName() {
        return ownerloginname;
    }

    public String getOwnerUserName() {
        return ownerusername;
    }

    public String getOwnerDomainName() {
        return ownerdomainname;
    }

    public OwnerType getOwnerType() {
        return ownertype;
    }

    public Permission getPermission() {
        return permission;
    }

    public long getCurrentSize() {
        return currentsize;
    }

    public int getDocumentCount() {
        return num;
    }

    @Override
    public String toString() {
        return boxnumber + "|" + boxname + "|" + ownerloginname + "|" + ownerusername + "|" + ownerdomainname + "|" + ownertype + "|" + permission + "|" + currentsize + "|" + num;
    }
}
