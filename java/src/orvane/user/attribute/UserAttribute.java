package orvane.user.attribute;

/** One attribute of a device user, given to the user object through its setAttribute. */
public interface UserAttribute {
    /** The attribute's value as text (null when it has none). */
    String getValue();
}
