package jbrg.test.storage;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.storage.xdof_strg_storageJNI.*;

import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;

/** Files and directories in the device's storage areas, as a Java application uses them. */
public final class StorageModule {
    private StorageModule() {}

    // The medium and areas (area 0 of the hard disk is the library's area 45, area 1 its area 43), the open
    // modes 1 to 5 and the seek modes 0 (from the start), 1 (from here) and 2 (from the end).
    static final int HDD = 0, QSF = 0, SECOND = 1;
    static final int READ = 1, APPEND = 2, WRITE = 3, READ_WRITE = 4, CREATE_READ_WRITE = 5;
    static final int FROM_START = 0, FROM_HERE = 1, FROM_END = 2;
    static final int NOT_FOUND = 4, EXISTS = 5, NO_SPACE = 35, ACCESS = 29;

    static long open(String path, int mode) {
        long[] handle = {0};
        equal(0, xdof_strg_storageio_open(HDD, QSF, path, mode, handle), "open " + path + " in mode " + mode);
        that(handle[0] != 0, "a handle");
        return handle[0];
    }

    static void writeText(long handle, String text) {
        byte[] bytes = text.getBytes(StandardCharsets.UTF_8);
        long[] done = {0};
        equal(0, xdof_strg_storageio_write(bytes, bytes.length, handle, done), "write");
        equal((long) bytes.length, done[0], "all written");
    }

    static String readText(long handle, int size) {
        byte[] buffer = new byte[size];
        long[] done = {-1};
        int rc = xdof_strg_storageio_read(buffer, size, handle, done);
        return rc + ":" + new String(buffer, 0, (int) done[0], StandardCharsets.UTF_8);
    }

    /** Write, append, read, seek and tell: the modes and origins as the class numbers them. */
    public static void files() {
        equal(0, xdof_strg_storageio_mkdir(HDD, QSF, "notes"), "a folder for the notes");
        long h = open("notes/today.txt", WRITE);
        equal(ACCESS + ":", readText(h, 4), "reading a file open for writing");
        writeText(h, "hello ");
        equal(0, xdof_strg_storageio_fflush(h), "flushed");
        equal(0, xdof_strg_storageio_close(h), "closed");
        h = open("notes/today.txt", APPEND);
        writeText(h, "world");
        equal(0, xdof_strg_storageio_close(h), "closed");

        h = open("notes/today.txt", READ);
        equal("0:hello", readText(h, 5), "the first five bytes");
        int[] position = {-1};
        equal(0, xdof_strg_storageio_ftell(h, position), "tell");
        equal(5, position[0], "after five bytes");
        equal(0, xdof_strg_storageio_fseek(h, 1, FROM_HERE), "one on");
        equal("0:world", readText(h, 100), "the rest, short of the buffer");
        equal("1:", readText(h, 100), "the end: EOF, nothing read");
        equal(0, xdof_strg_storageio_fseek(h, 0, FROM_START), "mode 0 is the start of the file");
        equal("0:he", readText(h, 2), "from the start");
        equal(0, xdof_strg_storageio_fseek(h, -5, FROM_END), "five before the end");
        equal("0:world", readText(h, 5), "the last five");
        byte[] tail = {9, 9, 9, 9, 9, 9};
        long[] count = {0};
        equal(0, xdof_strg_storageio_fseek(h, -2, FROM_END), "two before the end");
        equal(0, xdof_strg_storageio_read(tail, 6, h, count), "a short read");
        equal(new byte[] {'l', 'd', 9, 9, 9, 9}, tail, "what was read, and the rest of the array as it was");
        equal(-1, xdof_strg_storageio_fseek(h, -1, FROM_START), "before the start");
        long[] done = {7};
        equal(ACCESS, xdof_strg_storageio_write(new byte[1], 1, h, done), "writing a file open for reading");
        equal(0L, done[0], "nothing written");
        equal(0, xdof_strg_storageio_close(h), "closed");
        equal(NOT_FOUND, xdof_strg_storageio_close(h), "a second close");
        equal(NOT_FOUND, xdof_strg_storageio_read(new byte[4], 4, h, done), "a closed handle");
        equal(NOT_FOUND, xdof_strg_storageio_read(new byte[4], 4, 0, done), "a handle never opened");

        h = open("notes/today.txt", READ_WRITE);
        writeText(h, "HELLO");
        equal(0, xdof_strg_storageio_fseek(h, 0, FROM_START), "back");
        equal("0:HELLO world", readText(h, 64), "changed in place");
        equal(0, xdof_strg_storageio_close(h), "closed");
        h = open("notes/tomorrow.txt", CREATE_READ_WRITE);
        equal("1:", readText(h, 64), "made empty");
        writeText(h, "€");
        equal(0, xdof_strg_storageio_close(h), "closed");
        long[] handle = {5};
        equal(-1, xdof_strg_storageio_open(HDD, QSF, "notes/x", XDOF_STRG_READ_get(), handle),
                "0 is not a mode the library opens with");
        equal(0L, handle[0], "no handle");
        equal(0, xdof_strg_storageio_sync(), "sync");
    }

    static List<String> list(int area, String path) {
        long[] dir = {0};
        equal(0, xdof_strg_storageio_opendir(HDD, area, path, dir), "opendir " + path);
        List<String> names = new ArrayList<>();
        int[] result = {-7};
        for (String name = xdof_strg_storageio_readdir(dir[0], result); result[0] == 0;
                name = xdof_strg_storageio_readdir(dir[0], result)) {
            names.add(name);
        }
        equal(1, result[0], "the listing ends with EOF");
        equal("", xdof_strg_storageio_readdir(dir[0], result), "and stays ended");
        equal(0, xdof_strg_storageio_closedir(dir[0]), "closedir");
        equal(NOT_FOUND, xdof_strg_storageio_closedir(dir[0]), "a second closedir");
        return names;
    }

    /** Directories made, listed, renamed, moved between areas and removed. */
    public static void directories() {
        equal(0, xdof_strg_storageio_mkdir(HDD, QSF, "inbox"), "mkdir");
        equal(EXISTS, xdof_strg_storageio_mkdir(HDD, QSF, "inbox"), "twice");
        writeAndClose("inbox/b.txt", "bb");
        writeAndClose("inbox/a.txt", "a");
        equal(List.of("a.txt", "b.txt"), list(QSF, "inbox"), "sorted");
        equal(0, xdof_strg_storageio_rename(HDD, QSF, "inbox/a.txt", "inbox/c.txt"), "rename");
        equal(EXISTS, xdof_strg_storageio_rename(HDD, QSF, "inbox/b.txt", "inbox/c.txt"), "onto another");
        equal(0, xdof_strg_storageio_move(HDD, QSF, "inbox/b.txt", HDD, SECOND, "b.txt"), "to the second area");
        equal(List.of("c.txt"), list(QSF, "inbox"), "what is left");
        equal(List.of("b.txt"), list(SECOND, ""), "what arrived");
        equal(0, xdof_strg_storageio_existfile(HDD, SECOND, "b.txt"), "exists");
        equal(NOT_FOUND, xdof_strg_storageio_existfile(HDD, QSF, "inbox/b.txt"), "moved away");

        boolean[] flag = {true};
        equal(0, xdof_strg_storageio_is_file(HDD, QSF, "inbox", flag), "is_file of a directory");
        equal(false, flag[0], "not a file");
        equal(0, xdof_strg_storageio_is_directory(HDD, QSF, "inbox", flag), "is_directory");
        equal(true, flag[0], "a directory");
        equal(NOT_FOUND, xdof_strg_storageio_is_file(HDD, QSF, "nothing", flag), "nothing there");
        equal(false, flag[0], "no flag");
        long[] size = {0};
        equal(0, xdof_strg_storageio_getfilesize(HDD, SECOND, "b.txt", size), "size");
        equal(2L, size[0], "two bytes");
        long[] time = {0};
        equal(0, xdof_strg_storageio_getlastmodified(HDD, SECOND, "b.txt", time), "time");
        that(Math.abs(time[0] - System.currentTimeMillis() / 1000) < 600, "written just now: " + time[0]);

        long[] attributes = {99};
        equal(0, xdof_strg_storageio_setattribute(HDD, QSF, "inbox/c.txt", 8 | 4 | 1), "archive and read only");
        equal(0, xdof_strg_storageio_getattribute(HDD, QSF, "inbox/c.txt", attributes), "read back");
        equal(5L, attributes[0], "bit 8 dropped");
        long[] handle = {0};
        equal(ACCESS, xdof_strg_storageio_open(HDD, QSF, "inbox/c.txt", WRITE, handle), "read only");
        equal(ACCESS, xdof_strg_storageio_remove(HDD, QSF, "inbox/c.txt"), "read only");
        equal(0, xdof_strg_storageio_setattribute(HDD, QSF, "inbox/c.txt", 8), "8 alone is no attribute");
        equal(0, xdof_strg_storageio_getattribute(HDD, QSF, "inbox/c.txt", attributes), "read back");
        equal(0L, attributes[0], "none");
        equal(ACCESS, xdof_strg_storageio_remove(HDD, QSF, "inbox"), "not empty");
        equal(0, xdof_strg_storageio_remove(HDD, QSF, "inbox/c.txt"), "remove the file");
        equal(0, xdof_strg_storageio_remove(HDD, QSF, "inbox"), "then the directory");
    }

    static void writeAndClose(String path, String text) {
        long h = open(path, WRITE);
        writeText(h, text);
        equal(0, xdof_strg_storageio_close(h), "closed " + path);
    }

    /** The medium: its sizes in KiB, its mount, its path, an application's home. */
    public static String[] medium() {
        List<String> out = new ArrayList<>();
        long[] total = {9}, used = {9}, available = {9}, free = {9};
        int rc = xdof_strg_storageio_getstoragesize(HDD, QSF, total, used, available, free);
        out.add("size " + rc + " " + total[0] + " " + used[0] + " " + available[0] + " " + free[0]);
        out.add("mounted " + xdof_strg_storageio_verifydiskmount(HDD, QSF) + " "
                + xdof_strg_storageio_verifydiskmount(HDD, SECOND));
        String[] path = {"x"};
        rc = xdof_strg_storageio_getfullpath(HDD, QSF, "", path);
        out.add("root " + rc + " " + path[0]);
        rc = xdof_strg_storageio_getfullpath(HDD, QSF, "a/b/", path);
        out.add("path " + rc + " " + path[0]);
        rc = xdof_strg_storageio_getfullpath(7, 7, "a", path);
        out.add("unknown " + rc + " [" + path[0] + "]");
        String[] home = {"x"};
        rc = xdof_strg_storageio_get_home_dir("", home);
        out.add("home of nobody " + rc + " [" + home[0] + "]");
        rc = xdof_strg_storageio_get_home_dir("jbrg.scan", home);
        out.add("home " + rc + " " + home[0]);
        rc = xdof_strg_storageio_get_home_dir("no.such.app", home);
        out.add("home of a stranger " + rc + " " + home[0]);
        long[] device = {9};
        rc = xdof_strg_storageio_get_install_device(device);
        out.add("device " + rc + " " + device[0]);
        return out.toArray(new String[0]);
    }

    /** Arguments refused before the library is asked, and paths that would leave the area. */
    public static void badArguments() {
        throwsWith(NullPointerException.class, "null std::string",
                () -> xdof_strg_storageio_open(HDD, QSF, null, WRITE, new long[1]));
        throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                () -> xdof_strg_storageio_open(HDD, QSF, "x", WRITE, new long[0]));
        throwsWith(NullPointerException.class, "null array",
                () -> xdof_strg_storageio_read(null, 0, 1, new long[1]));
        throwsWith(IndexOutOfBoundsException.class, "incorrect array size",
                () -> xdof_strg_storageio_read(new byte[4], 5, 1, new long[1]));
        throwsWith(IndexOutOfBoundsException.class, "incorrect array size",
                () -> xdof_strg_storageio_write(new byte[4], 0xFFFF_FFFFL, 1, new long[1]));
        throwsWith(NullPointerException.class, "array null",
                () -> xdof_strg_storageio_getstoragesize(HDD, QSF, new long[1], null, new long[1], new long[1]));
        throwsWith(NullPointerException.class, "null std::string",
                () -> xdof_strg_storageio_rename(HDD, QSF, "a", null));
        equal(-1, xdof_strg_storageio_mkdir(HDD, QSF, "a\0b"), "a name with NUL");
        equal(-1, xdof_strg_storageio_open(HDD, QSF, "x\0", WRITE, new long[1]), "a name ending in NUL");
    }

    /** Every way out of the area the C++ side prepared; each answer, in order. */
    public static String[] escapes() {
        List<String> out = new ArrayList<>();
        long[] handle = {0};
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "../area43/x", WRITE, handle));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "/etc/passwd", READ, handle));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "a/../../x", WRITE, handle));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "out/x", WRITE, handle));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "out/secret", READ, handle));
        out.add("" + xdof_strg_storageio_mkdir(HDD, QSF, "out/made"));
        out.add("" + xdof_strg_storageio_remove(HDD, QSF, "out/secret"));
        out.add("" + xdof_strg_storageio_rename(HDD, QSF, "inside.txt", "out/inside.txt"));
        out.add("" + xdof_strg_storageio_move(HDD, QSF, "inside.txt", HDD, SECOND, "../x"));
        out.add("" + xdof_strg_storageio_setattribute(HDD, QSF, "out/secret", 4));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "n/".repeat(600), WRITE, handle));
        out.add("" + xdof_strg_storageio_open(HDD, QSF, "n".repeat(256), WRITE, handle));
        return out.toArray(new String[0]);
    }

    /** Two threads write a file each while a third lists the folder; nothing is lost. */
    public static void threads() throws InterruptedException {
        xdof_strg_storageio_mkdir(HDD, QSF, "shared");
        Throwable[] failure = {null};
        Runnable[] work = new Runnable[3];
        for (int t = 0; t < 2; ++t) {
            final String path = "shared/writer" + t;
            work[t] = () -> {
                long h = open(path, WRITE);
                byte[] block = new byte[4096];
                for (int i = 0; i < 64; ++i) {
                    java.util.Arrays.fill(block, (byte) i);
                    long[] done = {0};
                    equal(0, xdof_strg_storageio_write(block, block.length, h, done), path + " block " + i);
                }
                equal(0, xdof_strg_storageio_close(h), "closed " + path);
            };
        }
        work[2] = () -> {
            for (int i = 0; i < 50; ++i) {
                List<String> names = list(QSF, "shared");
                that(names.size() <= 2, "at most the two files: " + names);
            }
        };
        List<Thread> threads = new ArrayList<>();
        for (Runnable r : work) {
            Thread t = new Thread(() -> {
                try {
                    r.run();
                } catch (Throwable e) {
                    synchronized (failure) {
                        failure[0] = e;
                    }
                }
            });
            threads.add(t);
            t.start();
        }
        for (Thread t : threads) {
            t.join();
        }
        if (failure[0] != null) {
            throw new AssertionError("a thread failed", failure[0]);
        }
        for (int t = 0; t < 2; ++t) {
            long h = open("shared/writer" + t, READ);
            byte[] block = new byte[4096];
            for (int i = 0; i < 64; ++i) {
                long[] done = {0};
                equal(0, xdof_strg_storageio_read(block, block.length, h, done), "read back block " + i);
                equal(4096L, done[0], "a whole block");
                equal((byte) i, block[4095], "its bytes");
            }
            equal(0, xdof_strg_storageio_close(h), "closed");
        }
    }

    /** What the medium says when it is full, and at the device's 32-bit limits. */
    public static String[] limits() {
        List<String> out = new ArrayList<>();
        long h = open("big.bin", WRITE);
        long[] done = {0};
        out.add("fits " + xdof_strg_storageio_write(new byte[8192], 8192, h, done) + " " + done[0]);
        done[0] = 0;
        out.add("too much " + xdof_strg_storageio_write(new byte[16384], 16384, h, done) + " " + done[0]);
        xdof_strg_storageio_close(h);
        long[] size = {0};
        xdof_strg_storageio_getfilesize(HDD, QSF, "big.bin", size);
        out.add("size " + size[0]);
        out.add("3 GiB " + xdof_strg_storageio_getfilesize(HDD, QSF, "three", size) + " " + size[0]);
        size[0] = 0;
        out.add("5 GiB " + xdof_strg_storageio_getfilesize(HDD, QSF, "five", size) + " " + size[0]);
        h = open("three", READ_WRITE);
        out.add("to the last position " + xdof_strg_storageio_fseek(h, Integer.MAX_VALUE, FROM_START));
        out.add("read there " + xdof_strg_storageio_read(new byte[2], 2, h, done));
        out.add("write there " + xdof_strg_storageio_write(new byte[2], 2, h, done));
        int[] position = {0};
        xdof_strg_storageio_ftell(h, position);
        out.add("position " + position[0]);
        out.add("one more " + xdof_strg_storageio_fseek(h, 1, FROM_HERE));
        xdof_strg_storageio_close(h);
        return out.toArray(new String[0]);
    }
}
