package jbrg.test;

/** A class with a public no-argument constructor that counts its instances. */
public class Plain {
    public static int made;

    public Plain() {
        made++;
    }
}
