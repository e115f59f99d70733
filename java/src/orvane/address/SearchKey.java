package orvane.address;

/** What an address book search looks for: the start of an entry's name or pronunciation (ASCII letters in either case). */
public class SearchKey {
    private String name;

    public SearchKey(String name) {
        this.name = name;
    }

    public String getName() {
        return name;
    }
}
