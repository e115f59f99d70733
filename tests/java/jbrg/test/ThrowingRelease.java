package jbrg.test;

/** A class whose release() method fails. */
public class ThrowingRelease {
    public void release() {
        throw new IllegalStateException("release failed");
    }
}
