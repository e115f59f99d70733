package com.example.scanapp;

/** A device operation that did not succeed: which step, and the result code the device gave. */
public final class DeviceException extends Exception {
    private static final long serialVersionUID = 1L;

    private final String step;
    private final long code;

    public DeviceException(String step, long code) {
        super(step + " failed with result " + code);
        this.step = step;
        this.code = code;
    }

    public String step() {
        return step;
    }

    public long code() {
        return code;
    }
}
