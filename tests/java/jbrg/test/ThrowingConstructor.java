package jbrg.test;

/** A class whose constructor always fails. */
public class ThrowingConstructor {
    public ThrowingConstructor() {
        throw new IllegalStateException("refused");
    }
}
