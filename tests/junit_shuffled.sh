#!/bin/sh
# Runs JUnit 5 tests in a shuffled order (classes and methods), printing the seed first:
#   junit_shuffled.sh JAVA JUNIT_JAR LIBRARY_DIR CLASS_PATH TEST_CLASSES
# JUNIT_SEED=<seed> repeats an order. The exit status is JUnit's: not 0 when a test fails or none is found.
set -eu
java=$1 junit=$2 libraries=$3 classpath=$4 tests=$5
# The test classes are named one by one rather than found by the VM: a 32-bit VM under qemu cannot list a folder
# of a 64-bit host (its readdir answers EOVERFLOW for the host's inode numbers).
selectors=$(cd "$tests" && find . -name '*.class' ! -name '*$*' | sed 's|^\./||; s|\.class$||; s|/|.|g; s|^|--select-class=|')
seed=${JUNIT_SEED:-$(od -An -N4 -tu4 /dev/urandom | tr -d ' ')}
echo "Tests in random order, seed $seed (JUNIT_SEED=$seed repeats it)"
exec "$java" -Djava.library.path="$libraries" -jar "$junit" --disable-banner --fail-if-no-tests \
    --config=junit.jupiter.testmethod.order.default='org.junit.jupiter.api.MethodOrderer$Random' \
    --config=junit.jupiter.testclass.order.default='org.junit.jupiter.api.ClassOrderer$Random' \
    --config=junit.jupiter.execution.order.random.seed="$seed" \
    --class-path "$classpath:$tests" $selectors
