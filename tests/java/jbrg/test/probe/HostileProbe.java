package jbrg.test.probe;

import java.io.IOException;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * Calls every export of one module with hostile arguments, as the module's probe table (written by the wrapper
 * generator beside its manifest) describes them.
 *
 * <p>Each export is called once with harmless arguments, then once for each hostile value of each argument, the
 * others kept harmless: zero handles; null strings, arrays and objects; arrays of 0, 1 and one more than the
 * expected number of elements; out-arrays of length 0; strings of 10,000 characters (ASCII, "€", an emoji),
 * with an embedded NUL, and format directives; ints 0, -1, MIN, MAX; longs 0, -1, MIN, 2^32+5. Handles are only
 * ever zero or made by the module itself. Each text field setter is followed by its getter, which must answer
 * the longest prefix of what was set that fits the field, cut between whole characters.
 *
 * <p>What counts as a fault: a Java exception other than the wrapper's argument exceptions
 * (NullPointerException, IndexOutOfBoundsException, IllegalArgumentException, each with a message), or a text
 * read back that is not that prefix. A crash, a sanitizer report or a JNI warning is seen by the program that
 * runs the probe.
 */
public final class HostileProbe {
    private HostileProbe() {}

    private static final String ASCII = "x".repeat(10_000);
    private static final String EURO = "\u20AC".repeat(10_000);
    private static final String EMOJI = "\uD83D\uDE00".repeat(5_000);
    private static final String[] STRINGS = {
        null, "", ASCII, EURO, EMOJI, "a\u0000b", "%s%n%s%n%s%n%s%n", "a" + EMOJI, "ab" + EURO
    };
    private static final long[] LONGS = {0L, -1L, Long.MIN_VALUE, (1L << 32) + 5};
    private static final int[] INTS = {0, -1, Integer.MIN_VALUE, Integer.MAX_VALUE};

    /** One row of the table: an export, its result and its arguments. */
    private static final class Row {
        final String name;
        final String result;
        final String[] roles;
        Method method;

        Row(String line) {
            String[] words = line.trim().split("\\s+");
            name = words[0];
            result = words[1];
            roles = java.util.Arrays.copyOfRange(words, 2, words.length);
        }
    }

    private final List<String> faults = new ArrayList<>();
    private final Map<String, Row> rows = new LinkedHashMap<>();
    private final Map<String, Long> pool = new HashMap<>();
    private final List<long[]> owned = new ArrayList<>();  // {handle} made for the probe, with their type below
    private final List<String> ownedTypes = new ArrayList<>();
    private int calls;

    /**
     * Probes the module of one table. Returns the number of calls made, then one line per fault; nothing else.
     */
    public static String run(String table) throws Exception {
        HostileProbe probe = new HostileProbe();
        probe.load(Path.of(table));
        probe.probeAll();
        StringBuilder report = new StringBuilder().append(probe.calls).append('\n');
        for (String fault : probe.faults) {
            report.append(fault).append('\n');
        }
        return report.toString();
    }

    private void load(Path table) throws IOException, ClassNotFoundException {
        List<String> lines = Files.readAllLines(table, StandardCharsets.UTF_8);
        String jclass = lines.get(0).split("\\s+")[2].replace('/', '.');
        Class<?> natives = Class.forName(jclass);
        Map<String, Method> methods = new HashMap<>();
        for (Method m : natives.getDeclaredMethods()) {
            if (Modifier.isNative(m.getModifiers())) {
                methods.put(m.getName(), m);
            }
        }
        for (String line : lines.subList(1, lines.size())) {
            if (line.isBlank()) {
                continue;
            }
            Row row = new Row(line);
            row.method = methods.get(row.name);
            if (row.method == null) {
                faults.add(row.name + ": in the table but not a native of " + jclass);
                continue;
            }
            rows.put(row.name, row);
        }
    }

    // ---- Handles the module makes -------------------------------------------------------------------------

    /** The export that makes a T without arguments: new_T (or an overload of it), else a static getter. */
    private Row maker(String type) {
        Row getter = null;
        for (Row row : rows.values()) {
            if (row.roles.length != 0) {
                continue;
            }
            if (row.result.equals("new:" + type)) {
                return row;
            }
            if (row.result.equals("ref:" + type) && getter == null) {
                getter = row;
            }
        }
        return getter;
    }

    /** A new T that the probe deletes at the end (if Java owns it), or 0 when the module makes none. */
    private long make(String type) {
        return make(type, true);
    }

    /** A new T; `keep`: the probe deletes it at the end, else the call it is made for does. */
    private long make(String type, boolean keep) {
        Row maker = maker(type);
        if (maker == null) {
            return 0L;
        }
        Object made = invoke(maker, new Object[0]);
        long handle = made instanceof Long ? (Long) made : 0L;
        if (keep && handle != 0L && maker.result.startsWith("new:")) {
            owned.add(new long[] {handle});
            ownedTypes.add(type);
        }
        return handle;
    }

    /** A T shared by the calls of the probe. */
    private long pooled(String type) {
        Long handle = pool.get(type);
        if (handle == null) {
            handle = make(type);
            pool.put(type, handle);
        }
        return handle;
    }

    private void releaseAll() {
        for (int i = owned.size() - 1; i >= 0; --i) {
            Row delete = rows.get("delete_" + ownedTypes.get(i));
            if (delete != null) {
                invoke(delete, new Object[] {owned.get(i)[0]});
            }
        }
        owned.clear();
        ownedTypes.clear();
        pool.clear();
    }

    // ---- Arguments ----------------------------------------------------------------------------------------

    private static String type(String role) {
        return role.split(":")[1];
    }

    private static int count(String role) {
        String[] parts = role.split(":");
        return Integer.parseInt(parts[parts.length - 1]);
    }

    /** The harmless value of an argument. */
    private Object harmless(String role, Class<?> javaType) {
        if (role.startsWith("self:") || role.startsWith("handle:")) {
            return pooled(type(role));
        }
        if (role.startsWith("dispose:")) {
            return make(type(role), false);
        }
        if (role.startsWith("source:")) {
            return 0L;
        }
        if (role.startsWith("text:")) {
            return "a";
        }
        if (role.startsWith("array:")) {
            int n = count(role);
            return java.lang.reflect.Array.newInstance(javaType.getComponentType(), n > 0 ? n : 1);
        }
        if (role.equals("out")) {
            return java.lang.reflect.Array.newInstance(javaType.getComponentType(), 1);
        }
        if (role.equals("owner")) {
            return null;
        }
        if (javaType == String.class) {
            return "a";
        }
        if (javaType == String[].class) {
            return new String[] {"a"};
        }
        if (javaType == Object.class) {
            return new ArrayList<Object>();
        }
        return zero(javaType);
    }

    private static Object zero(Class<?> t) {
        if (t == int.class) return 0;
        if (t == long.class) return 0L;
        if (t == short.class) return (short) 0;
        if (t == byte.class) return (byte) 0;
        if (t == boolean.class) return false;
        if (t == float.class) return 0f;
        if (t == double.class) return 0d;
        throw new IllegalStateException("no zero of " + t);
    }

    /** The hostile values of an argument. */
    private List<Object> hostile(String role, Class<?> javaType) {
        List<Object> values = new ArrayList<>();
        if (role.startsWith("self:") || role.startsWith("handle:")) {
            values.add(0L);
        } else if (role.startsWith("dispose:")) {
            values.add(0L);
        } else if (role.startsWith("source:")) {
            String t = type(role);
            values.add(make(t));  // one element where the field has count(role)
            values.add(pooled(t));
        } else if (role.startsWith("array:")) {
            int n = count(role);
            values.add(null);
            for (int length : new int[] {0, 1, n > 0 ? n + 1 : 2}) {
                values.add(java.lang.reflect.Array.newInstance(javaType.getComponentType(), length));
            }
        } else if (role.equals("out")) {
            values.add(null);
            values.add(java.lang.reflect.Array.newInstance(javaType.getComponentType(), 0));
        } else if (role.equals("owner")) {
            values.add(new Object());
        } else if (javaType == String.class) {
            for (String s : STRINGS) {
                values.add(s);
            }
        } else if (javaType == String[].class) {
            values.add(null);
            values.add(new String[0]);
            values.add(new String[] {null});
            values.add(new String[] {EURO});
            values.add(new String[] {EMOJI});
        } else if (javaType == Object.class) {
            values.add(null);
            values.add(new Object());
            values.add("text");
            values.add(new Object[1]);
            values.add(new String[1]);
        } else if (javaType == int.class) {
            for (int v : INTS) values.add(v);
        } else if (javaType == long.class) {
            for (long v : LONGS) values.add(v);
        } else if (javaType == short.class) {
            for (short v : new short[] {0, -1, Short.MIN_VALUE, Short.MAX_VALUE}) values.add(v);
        } else if (javaType == byte.class) {
            for (byte v : new byte[] {0, -1, Byte.MIN_VALUE, Byte.MAX_VALUE}) values.add(v);
        } else if (javaType == boolean.class) {
            values.add(true);
            values.add(false);
        } else if (javaType == float.class) {
            values.add(Float.NaN);
            values.add(-1f);
            values.add(Float.MAX_VALUE);
        } else if (javaType == double.class) {
            values.add(Double.NaN);
            values.add(-1d);
            values.add(Double.MAX_VALUE);
        }
        return values;
    }

    // ---- Calls --------------------------------------------------------------------------------------------

    private void probeAll() {
        try {
            for (Row row : rows.values()) {
                probe(row);
            }
        } finally {
            releaseAll();
        }
    }

    private Object[] harmlessArguments(Row row) {
        Class<?>[] types = row.method.getParameterTypes();
        if (types.length != row.roles.length) {
            faults.add(row.name + ": the table gives " + row.roles.length + " arguments, Java " + types.length);
            return null;
        }
        Object[] args = new Object[types.length];
        for (int i = 0; i < types.length; ++i) {
            args[i] = harmless(row.roles[i], types[i]);
        }
        return args;
    }

    private void probe(Row row) {
        Object[] base = harmlessArguments(row);
        if (base == null) {
            return;
        }
        call(row, base.clone());
        Class<?>[] types = row.method.getParameterTypes();
        for (int i = 0; i < types.length; ++i) {
            for (Object value : hostile(row.roles[i], types[i])) {
                Object[] args = base.clone();
                args[i] = value;
                call(row, args);
            }
        }
    }

    /** One call; a text field setter is followed by its getter. */
    private void call(Row row, Object[] args) {
        Object result = invoke(row, args);
        if (row.result.startsWith("new:") && result instanceof Long && (Long) result != 0L) {
            // What Java owns goes back at once: the sanitizer run counts every block left over.
            Row delete = rows.get("delete_" + type(row.result));
            if (delete != null) {
                invoke(delete, new Object[] {result});
            }
        }
        int text = textArgument(row);
        if (text < 0 || !row.name.endsWith("_set")) {
            return;
        }
        Row getter = rows.get(row.name.substring(0, row.name.length() - 4) + "_get");
        long self = args[0] instanceof Long ? (Long) args[0] : 0L;
        if (getter == null || self == 0L) {
            return;
        }
        Object[] getArgs = new Object[getter.roles.length];
        getArgs[0] = self;
        Object read = invoke(getter, getArgs);
        String set = (String) args[text];
        String expected = set == null ? "" : fitting(set, count(row.roles[text]) - 1);
        if (!expected.equals(read)) {
            faults.add(row.name + ": set " + describe(set) + ", read back " + describe(read) + ", expected "
                    + describe(expected));
        }
    }

    private static int textArgument(Row row) {
        for (int i = 0; i < row.roles.length; ++i) {
            if (row.roles[i].startsWith("text:")) {
                return i;
            }
        }
        return -1;
    }

    /** The longest prefix of `s` whose modified UTF-8 takes at most `bytes` bytes, in whole characters. */
    static String fitting(String s, int bytes) {
        int used = 0;
        int end = 0;
        while (end < s.length()) {
            int cp = s.codePointAt(end);
            int units = Character.charCount(cp);
            int size = 0;
            for (int k = 0; k < units; ++k) {
                char c = s.charAt(end + k);
                size += c != 0 && c < 0x80 ? 1 : c < 0x800 ? 2 : 3;
            }
            if (used + size > bytes) {
                break;
            }
            used += size;
            end += units;
        }
        return s.substring(0, end);
    }

    private Object invoke(Row row, Object[] args) {
        ++calls;
        try {
            return row.method.invoke(null, args);
        } catch (InvocationTargetException e) {
            Throwable thrown = e.getCause();
            boolean documented = (thrown instanceof NullPointerException
                    || thrown instanceof IndexOutOfBoundsException
                    || thrown instanceof IllegalArgumentException)
                    && thrown.getMessage() != null && !thrown.getMessage().isEmpty();
            if (!documented) {
                faults.add(row.name + describeArgs(args) + ": threw " + thrown);
            }
        } catch (IllegalAccessException | IllegalArgumentException e) {
            faults.add(row.name + ": cannot be called: " + e);
        }
        return null;
    }

    private static String describe(Object value) {
        if (!(value instanceof String)) {
            return String.valueOf(value);
        }
        String s = (String) value;
        return s.length() <= 24 ? '"' + s + '"' : '"' + s.substring(0, 12) + "...\" (" + s.length() + " chars)";
    }

    private static String describeArgs(Object[] args) {
        StringBuilder b = new StringBuilder("(");
        for (int i = 0; i < args.length; ++i) {
            if (i > 0) {
                b.append(", ");
            }
            Object a = args[i];
            b.append(a != null && a.getClass().isArray() && !(a instanceof Object[])
                    ? a.getClass().getComponentType() + "[" + java.lang.reflect.Array.getLength(a) + "]"
                    : describe(a));
        }
        return b.append(')').toString();
    }
}
