package jbrg.test;

/** A class with a release() method that counts its calls. */
public class Releasable {
    public static int released;

    public void release() {
        released++;
    }
}
