package orvane.user.attribute;

/** The name a user logs in with. */
public final class LoginName implements UserAttribute {
    private final String value;

    public LoginName(String value) {
        this.value = value;
    }

    @Override
    public String getValue() {
        return value;
    }

    @Override
    public String toString() {
        return "LoginName(" + value + ")";
    }
}
