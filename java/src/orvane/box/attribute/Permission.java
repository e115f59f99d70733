package orvane.box.attribute;

/** Whether users other than its owner may use a box. */
public enum Permission {
    NOT_SHARED, SHARED
}
