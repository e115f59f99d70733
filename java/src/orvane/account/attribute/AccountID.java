package orvane.account.attribute;

import orvane.user.attribute.UserAttribute;

/** The accounting id of a user, as decimal text. */
public final class AccountID implements UserAttribute {
    private final String value;

    public AccountID(String value) {
        this.value = value;
    }

    @Override
    public String getValue() {
        return value;
    }

    @Override
    public String toString() {
        return "AccountID(" + value + ")";
    }
}
