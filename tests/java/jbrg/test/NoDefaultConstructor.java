package jbrg.test;

/** A class that can only be made with an argument. */
public class NoDefaultConstructor {
    public final int value;

    public NoDefaultConstructor(int value) {
        this.value = value;
    }
}
