package jbrg.test;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;

/** Captures what Java code prints on System.err, for the tests of the native side. */
public final class Console {
    private static PrintStream saved;
    private static ByteArrayOutputStream buffer;

    private Console() {}

    public static synchronized void begin() {
        saved = System.err;
        buffer = new ByteArrayOutputStream();
        System.setErr(new PrintStream(buffer, true, StandardCharsets.UTF_8));
    }

    public static synchronized String end() {
        if (saved == null) {
            return "";
        }
        System.err.flush();
        System.setErr(saved);
        saved = null;
        return buffer.toString(StandardCharsets.UTF_8);
    }
}
