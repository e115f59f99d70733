package orvane.qsf.box;

/** What a box listing tells of a user box. Its fields are filled by the native box module. */
public class UserBoxInfoImpl extends BoxInfoImpl {
    public UserBoxInfoImpl() {}
}
