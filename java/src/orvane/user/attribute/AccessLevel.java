package orvane.user.attribute;

/** A user's rights on the device: an administrator or an ordinary user. */
public final class AccessLevel implements UserAttribute {
    public static final AccessLevel ADMIN = new AccessLevel("ADMIN");
    public static final AccessLevel USER = new AccessLevel("USER");

    private final String name;

    private AccessLevel(String name) {
        this.name = name;
    }

    @Override
    public String getValue() {
        return name;
    }

    @Override
    public String toString() {
        return "AccessLevel(" + name + ")";
    }
}
