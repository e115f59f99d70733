package orvane.qsf.address.attribute;

/** A fax destination. Its fields are filled by the native address book module. */
public class FaxInfoImpl {
    private String faxNum;
    private byte bitrateType;
    private byte ecm;
    private String faxAddress;
    private byte encode;
    private byte encodeID;
    private byte encodeBox;
    private byte encodeBoxNum;
    private String name;
    private String department;
    private String company;
    private byte honorificTitleType;
    private String password;

    public FaxInfoImpl() {}

    public String getFaxNum() {
        return faxNum;
    }

    public byte getBitrateType() {
        return bitrateType;
    }

    public byte getEcm() {
        return ecm;
    }

    public String getFaxAddress() {
        return faxAddress;
    }

    public byte getEncode() {
        return encode;
    }

    public byte getEncodeID() {
        return encodeID;
    }

    public byte getEncodeBox() {
        return encodeBox;
    }

    public byte getEncodeBoxNum() {
        return encodeBoxNum;
    }

    public String getName() {
        return name;
    }

    public String getDepartment() {
        return department;
    }

    public String getCompany() {
        return company;
    }

    public byte getHonorificTitleType() {
        return honorificTitleType;
    }

    public String getPassword() {
        return password;
    }

    @Override
    public String toString() {
        return faxNum + "|" + bitrateType + "|" + ecm + "|" + faxAddress + "|" + encode + "|" + encodeID + "|" + encodeBox + "|" + encodeBoxNum + "|" + name + "|" + department + "|" + company + "|" + honorificTitleType + "|" + password;
    }
}
