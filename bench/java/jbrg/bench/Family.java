package jbrg.bench;

import java.util.List;

/** A family of bridge paths, each measured against its baseline by the runner. */
interface Family {
    /** The family's name in the table and the JSON. */
    String name();

    List<Result> run(Runner runner) throws Exception;
}
