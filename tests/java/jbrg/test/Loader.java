package jbrg.test;

/**
 * Loads a native library for the test program. A library belongs to the class loader of the class that loads
 * it, and only that loader's classes find their natives in it; loading from here puts the bridge with the
 * application's classes, as on the device, rather than with no loader at all (a load from native code).
 */
public final class Loader {
    private Loader() {}

    public static void load(String path) {
        System.load(path);
    }
}
