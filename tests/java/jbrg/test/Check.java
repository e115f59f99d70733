package jbrg.test;

import java.util.Objects;

/** Assertions for tests written in Java: each failure is an AssertionError naming what was checked. */
public final class Check {
    private Check() {}

    /** Code that is expected to throw. */
    @FunctionalInterface
    public interface Action {
        void run() throws Throwable;
    }

    public static void equal(Object expected, Object actual, String what) {
        if (!Objects.deepEquals(expected, actual)) {
            throw new AssertionError(what + ": expected <" + show(expected) + "> but was <" + show(actual) + ">");
        }
    }

    public static void that(boolean condition, String what) {
        if (!condition) {
            throw new AssertionError(what);
        }
    }

    /** The action throws exactly `type` with exactly `message`. */
    public static void throwsWith(Class<? extends Throwable> type, String message, Action action) {
        try {
            action.run();
        } catch (Throwable thrown) {
            if (thrown.getClass() != type || !Objects.equals(message, thrown.getMessage())) {
                throw new AssertionError("expected " + type.getName() + ": " + message + " but got " + thrown, thrown);
            }
            return;
        }
        throw new AssertionError("expected " + type.getName() + ": " + message + " but nothing was thrown");
    }

    private static String show(Object value) {
        if (value instanceof short[]) {
            return java.util.Arrays.toString((short[]) value);
        }
        if (value instanceof long[]) {
            return java.util.Arrays.toString((long[]) value);
        }
        if (value instanceof int[]) {
            return java.util.Arrays.toString((int[]) value);
        }
        if (value instanceof byte[]) {
            return java.util.Arrays.toString((byte[]) value);
        }
        if (value instanceof Object[]) {
            return java.util.Arrays.deepToString((Object[]) value);
        }
        return String.valueOf(value);
    }
}
