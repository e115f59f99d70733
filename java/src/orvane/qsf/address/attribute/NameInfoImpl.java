package orvane.qsf.address.attribute;

/** The name of an address book entry and its pronunciation. Its fields are filled by the native address book module. */
public class NameInfoImpl {
    private String name;
    private String pronunciation;

    public NameInfoImpl() {}

    public String getName() {
        return name;
    }

    public String getPronunciation() {
        return pronunciation;
    }

    @Override
    public String toString() {
        return name + "|" + pronunciation;
    }
}
