package orvane.user.attribute;

/** The user's e-mail address. */
public final class MailAddress implements UserAttribute {
    private final String value;

    public MailAddress(String value) {
        this.value = value;
    }

    @Override
    public String getValue() {
        return value;
    }

    @Override
    public String toString() {
        return "MailAddress(" + value + ")";
    }
}
