package orvane.box.attribute;

/** Who owns a document box. */
public enum OwnerType {
    LOCAL_USER, NETWORK_USER, NO_OWNER
}
