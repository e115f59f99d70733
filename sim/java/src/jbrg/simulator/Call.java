package jbrg.simulator;

import java.util.List;

/**
 * One platform call the simulated device received, as its call log keeps it.
 *
 * @param op   the platform operation, e.g. {@code "xsi_ais_auth_account_login"}
 * @param args its arguments as text, in declaration order: numbers in decimal, texts as they are
 *             ({@code "(null)"} for none), buffers and out-parameters as a pointer ({@code "0x..."})
 */
public record Call(String op, List<String> args) {
    public Call {
        args = List.copyOf(args);
    }

    /** The call as {@code op(arg, arg, ...)}. */
    @Override
    public String toString() {
        return op + "(" + String.join(", ", args) + ")";
    }
}
