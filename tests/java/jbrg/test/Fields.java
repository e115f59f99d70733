package jbrg.test;

/** A value object whose fields native code fills. */
public class Fields {
    public String name = "unset";
    public int count = -1;
    public long id = -1;
    public boolean flag;
    public short small;
    public double ratio;
    public Object other;
}
