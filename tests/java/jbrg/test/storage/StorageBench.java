package jbrg.test.storage;

import static orvane.qsf.wrapper.storage.xdof_strg_storageJNI.*;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.channels.FileChannel;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;

/**
 * A file of `blocks` blocks of 64 KiB written and read whole, through the storage module and, as the
 * baseline, through java.nio's FileChannel on the same folder. Each returns the bytes it moved.
 */
public final class StorageBench {
    private StorageBench() {}

    static final int BLOCK = 64 * 1024;
    static final int WRITE = 3, READ = 1;

    public static long writeBridge(int blocks) {
        byte[] block = new byte[BLOCK];
        long[] handle = {0};
        long[] done = {0};
        check(xdof_strg_storageio_open(0, 0, "bench.bin", WRITE, handle), "open");
        long moved = 0;
        for (int i = 0; i < blocks; ++i) {
            block[0] = (byte) i;
            check(xdof_strg_storageio_write(block, BLOCK, handle[0], done), "write");
            moved += done[0];
        }
        check(xdof_strg_storageio_close(handle[0]), "close");
        return moved;
    }

    public static long readBridge(int blocks) {
        byte[] block = new byte[BLOCK];
        long[] handle = {0};
        long[] done = {0};
        check(xdof_strg_storageio_open(0, 0, "bench.bin", READ, handle), "open");
        long moved = 0;
        while (xdof_strg_storageio_read(block, BLOCK, handle[0], done) == 0) {
            moved += done[0];
        }
        check(xdof_strg_storageio_close(handle[0]), "close");
        return moved;
    }

    public static long writeChannel(String folder, int blocks) throws IOException {
        ByteBuffer buffer = ByteBuffer.wrap(new byte[BLOCK]);
        long moved = 0;
        try (FileChannel channel = FileChannel.open(Path.of(folder, "baseline.bin"), StandardOpenOption.CREATE,
                StandardOpenOption.WRITE, StandardOpenOption.TRUNCATE_EXISTING)) {
            for (int i = 0; i < blocks; ++i) {
                buffer.clear();
                buffer.put(0, (byte) i);
                moved += channel.write(buffer);
            }
        }
        return moved;
    }

    public static long readChannel(String folder, int blocks) throws IOException {
        ByteBuffer buffer = ByteBuffer.wrap(new byte[BLOCK]);
        long moved = 0;
        try (FileChannel channel = FileChannel.open(Path.of(folder, "baseline.bin"), StandardOpenOption.READ)) {
            for (int n = channel.read(buffer); n > 0; n = channel.read(buffer)) {
                moved += n;
                buffer.clear();
            }
        }
        return moved;
    }

    private static void check(int result, String what) {
        if (result != 0) {
            throw new IllegalStateException(what + " answered " + result);
        }
    }
}
