package orvane.qsf.box;

import orvane.box.attribute.OwnerType;
import orvane.box.attribute.Permission;

/** What a box listing tells of a user box or a fax box. Its fields are filled by the native box module. */
public abstract class BoxInfoImpl {
    private int boxnumber;
    private String boxname;
    private OwnerType ownertype;
    private String ownerloginname;
    private String ownerusername;
    private String ownerdomainname;
    private Permission permission;
    private long currentsize;
    private int num;

    protected BoxInfoImpl() {}

    public int getBoxNumber() {
        return boxnumber;
    }

    public String getBoxName() {
        return boxname;
    }

    public OwnerType getOwnerType() {
        return ownertype;
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
        return boxnumber + "|" + boxname + "|" + ownertype + "|" + ownerloginname + "|" + ownerusername + "|" + ownerdomainname + "|" + permission + "|" + currentsize + "|" + num;
    }
}
