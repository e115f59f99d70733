package orvane.address;

/** What an address book search looks for: the start of an entry's name. */
public class SearchKey {
    private String name;

    public SearchKey(String name) {
        this.name = name;
    }

    public String getName() {
        return name;
    }
}
