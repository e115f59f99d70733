#!/bin/sh
# Compiles the example application and its JUnit 5 tests against a kit, and runs the tests in a shuffled order
# against the simulated device of the kit.
#
#   kit/example/run-tests.sh KIT_DIR
#
# KIT_DIR/java/jbrg-kit.jar is the only jar the code is compiled against (besides JUnit 5 of /usr/share/java);
# KIT_DIR/lib holds libjbrgCMT.so, libjbrgsim.so and libjbrgsimctl.so. The exit status is not 0 when a test
# fails. The order's seed is printed first; JUNIT_SEED=<seed> repeats an order.
#
#   JAVA_HOME      the JDK that compiles (default: the one of javac on PATH)
#   JBRG_JAVA_RUN  the program that runs the tests' Java VM (default: that JDK's java; for an ARM kit, a script
#                  that starts an ARM VM under an emulator)
#   BUILD_DIR      the folder for the classes (default: a temporary one, removed at the end)
set -eu

if [ $# -ne 1 ]; then
    echo "usage: $0 KIT_DIR" >&2
    exit 2
fi
kit=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
jar="$kit/java/jbrg-kit.jar"
junit=/usr/share/java/junit-platform-console-standalone.jar
for needed in "$jar" "$junit" "$kit/lib/libjbrgCMT.so" "$kit/lib/libjbrgsim.so" "$kit/lib/libjbrgsimctl.so"; do
    if [ ! -f "$needed" ]; then
        echo "$0: missing $needed" >&2
        exit 2
    fi
done
if [ -n "${JAVA_HOME:-}" ]; then
    javac="$JAVA_HOME/bin/javac"
    java="$JAVA_HOME/bin/java"
else
    javac=javac
    java=java
fi

if [ -n "${BUILD_DIR:-}" ]; then
    out="$BUILD_DIR"
    rm -rf "$out"
    mkdir -p "$out"
else
    out=$(mktemp -d)
    trap 'rm -rf "$out"' EXIT
fi

# The application against the kit alone; its tests against the application, the kit and JUnit.
find "$here/src" -name '*.java' > "$out/app-sources"
find "$here/test" -name '*.java' > "$out/test-sources"
"$javac" --release 17 -Xlint:all -Werror -encoding UTF-8 -cp "$jar" -d "$out/app" @"$out/app-sources"
"$javac" --release 17 -Xlint:all -Werror -encoding UTF-8 -cp "$jar:$out/app:$junit" -d "$out/test" \
    @"$out/test-sources"

# The kit's libraries find each other through their run path ($ORIGIN); the simulated device starts empty
# (each test class loads its own scenario).
JBRG_SIM_SCENARIO=
export JBRG_SIM_SCENARIO
# The test classes are named one by one rather than found by the VM: a 32-bit VM under qemu cannot list a folder
# of a 64-bit host (its readdir answers EOVERFLOW for the host's inode numbers).
selectors=$(cd "$out/test" && find . -name '*.class' ! -name '*$*' | sed 's|^\./||; s|\.class$||; s|/|.|g; s|^|--select-class=|')
seed=${JUNIT_SEED:-$(od -An -N4 -tu4 /dev/urandom | tr -d ' ')}
echo "Tests in random order, seed $seed (JUNIT_SEED=$seed repeats it)"
"${JBRG_JAVA_RUN:-$java}" -Djava.library.path="$kit/lib" -jar "$junit" --disable-banner --fail-if-no-tests \
    --config=junit.jupiter.testmethod.order.default='org.junit.jupiter.api.MethodOrderer$Random' \
    --config=junit.jupiter.testclass.order.default='org.junit.jupiter.api.ClassOrderer$Random' \
    --config=junit.jupiter.execution.order.random.seed="$seed" \
    --class-path "$jar:$out/app:$out/test" $selectors
