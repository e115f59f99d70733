package orvane.qsf.box;

/** What a fax box listing tells of a fax box. Its fields are filled by the native box module. */
public class FaxBoxInfoImpl extends BoxInfoImpl {
    public FaxBoxInfoImpl() {}
}
