package jbrg.bench;

import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.util.List;

/**
 * Compares two object graphs field by field: lists and arrays element by element, the device's Java classes
 * (orvane.*) by every instance field of their class and its superclasses, dates to the second, anything
 * else by equals. Used to
 * check that a baseline builds the same objects as the bridge path it stands beside.
 */
final class Same {
    private Same() {}

    /** Null when the two are the same; otherwise where and how they differ. */
    static String difference(Object a, Object b, String where) throws IllegalAccessException {
        if (a == null || b == null) {
            return a == b ? null : where + ": " + a + " against " + b;
        }
        if (a.getClass() != b.getClass()) {
            return where + ": " + a.getClass().getName() + " against " + b.getClass().getName();
        }
        if (a instanceof List) {
            List<?> x = (List<?>) a;
            List<?> y = (List<?>) b;
            return x.size() != y.size() ? where + ": " + x.size() + " against " + y.size() + " elements"
                                        : elements(x.toArray(), y.toArray(), where);
        }
        if (a instanceof Object[]) {
            Object[] x = (Object[]) a;
            Object[] y = (Object[]) b;
            return x.length != y.length ? where + ": " + x.length + " against " + y.length + " elements"
                                        : elements(x, y, where);
        }
        if (a instanceof java.util.Date) {
            // A date made through a Calendar keeps the milliseconds of the moment it was made: whole seconds.
            return ((java.util.Date) a).getTime() / 1000 == ((java.util.Date) b).getTime() / 1000 ? null
                    : where + ": " + a + " against " + b;
        }
        if (!a.getClass().getName().startsWith("orvane.") || a.getClass().isEnum()) {
            return a.equals(b) ? null : where + ": " + a + " against " + b;
        }
        for (Class<?> c = a.getClass(); c != null && c != Object.class; c = c.getSuperclass()) {
            for (Field f : c.getDeclaredFields()) {
                if (Modifier.isStatic(f.getModifiers())) {
                    continue;
                }
                f.setAccessible(true);
                String d = difference(f.get(a), f.get(b), where + "." + f.getName());
                if (d != null) {
                    return d;
                }
            }
        }
        return null;
    }

    private static String elements(Object[] x, Object[] y, String where) throws IllegalAccessException {
        for (int i = 0; i < x.length; i++) {
            String d = difference(x[i], y[i], where + "[" + i + "]");
            if (d != null) {
                return d;
            }
        }
        return null;
    }
}
