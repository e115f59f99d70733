package jbrg.simulator;

/**
 * One line the bridge gave to the platform's trace printer.
 *
 * @param module the trace module number
 * @param level  the trace level
 * @param flags  the trace flags
 * @param format the format string as given
 * @param text   the printed line
 */
public record TraceLine(long module, long level, long flags, String format, String text) {
    @Override
    public String toString() {
        return text;
    }
}
