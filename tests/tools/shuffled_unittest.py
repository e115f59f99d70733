"""Runs a test module's cases in a shuffled order, the seed printed first (JBRG_TEST_SEED=<seed> repeats it)."""
import os
import random
import sys
import unittest


def run(module_name):
    seed = int(os.environ.get('JBRG_TEST_SEED', random.randrange(1 << 30)))
    print(f'shuffle seed {seed} (JBRG_TEST_SEED={seed} repeats the order)', flush=True)
    cases = list(unittest.defaultTestLoader.loadTestsFromModule(sys.modules[module_name]))
    tests = [t for case in cases for t in case]
    random.Random(seed).shuffle(tests)
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite(tests))
    sys.exit(0 if result.wasSuccessful() else 1)
