package orvane.user.attribute;

/** The user's display name. */
public final class UserName implements UserAttribute {
    private final String value;

    public UserName(String value) {
        this.value = value;
    }

    @Override
    public String getValue() {
        return value;
    }

    @Override
    public String toString() {
        return "UserName(" + value + ")";
    }
}
