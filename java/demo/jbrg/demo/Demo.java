package jbrg.demo;

/** Runs a Java application's typical requests against the device the bridge is built for. */
public final class Demo {
    private Demo() {}

    public static void main(String[] args) {
        System.loadLibrary("jbrgCMT");
        System.out.println("libjbrgCMT loaded");
    }
}
