"""The wrapper generator on descriptions written for the occasion: names, numbering and the errors a
module author meets."""

import os
import subprocess
import sys
import tempfile
import textwrap
import unittest

GENERATOR = os.path.join(os.path.dirname(__file__), '..', '..', 'tools', 'wrapgen', 'wrapgen.py')


def run(description, *args):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, 'm.wrap')
        with open(path, 'w', encoding='utf-8') as f:
            f.write(textwrap.dedent(description))
        manifest = os.path.join(folder, 'm.exports')
        done = subprocess.run([sys.executable, GENERATOR, path, '--manifest', manifest, *args],
                              capture_output=True, text=True)
        names = open(manifest, encoding='utf-8').read().split() if done.returncode == 0 else []
        return done, names


class Names(unittest.TestCase):
    def test_jni_names_escape_underscores_and_number_overloads(self):
        done, names = run('''
            module my_mod
            package device.attribute
            class a_b {
                a_b();
                a_b(int x);
                int f_g(int x);
                int f_g(const char* s);
            }
        ''')
        self.assertEqual(0, done.returncode, done.stderr)
        prefix = 'Java_orvane_qsf_wrapper_device_attribute_my_1modJNI_'
        self.assertEqual(sorted(prefix + n for n in [
            'new_1a_1b_1_1SWIG_10', 'new_1a_1b_1_1SWIG_11', 'a_1b_1f_1g_1_1SWIG_10', 'a_1b_1f_1g_1_1SWIG_11',
            'delete_1a_1b']), names)

    def test_records_enumerations_constants_and_globals(self):
        done, names = run('''
            module m
            package p
            enum E { E_A, E_B = 5 }
            record R { int x; char t[4]; }
            class C [[nodelete]] { static C* get(); }
            constant int LIMIT;
            global int counter;
        ''')
        self.assertEqual(0, done.returncode, done.stderr)
        short = sorted(n.split('mJNI_')[1] for n in names)
        self.assertEqual(sorted(['E_1A_1get', 'E_1B_1get', 'new_1R', 'delete_1R', 'R_1x_1set', 'R_1x_1get',
                                 'R_1t_1set', 'R_1t_1get', 'C_1get', 'LIMIT_1get', 'counter_1set',
                                 'counter_1get']), short)

    def test_stated_names_and_the_probe_table(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, 'm.wrap')
            with open(path, 'w', encoding='utf-8') as f:
                f.write(textwrap.dedent('''
                    module m
                    package p
                    record R { char t[9]; R inner[3]; }
                    class C {
                        [[stated]] C();
                        [[stated]] int f(R& r, unsigned long n, int* OUTPUT);
                        [[stated]] int f(const char* s);
                        static C* get();
                        R make();
                    }
                '''))
            stated, probe = os.path.join(folder, 'm.stated'), os.path.join(folder, 'm.probe')
            done = subprocess.run([sys.executable, GENERATOR, path, '--stated', stated, '--probe', probe],
                                  capture_output=True, text=True)
            self.assertEqual(0, done.returncode, done.stderr)
            # The overloaded f is exported as f__SWIG_0/1: its stated bare name is what the export check misses.
            self.assertEqual(['Java_orvane_qsf_wrapper_p_mJNI_C_1f', 'Java_orvane_qsf_wrapper_p_mJNI_new_1C'],
                             open(stated, encoding='utf-8').read().split())
            rows = {line.split()[0]: line.split()[1:] for line in open(probe, encoding='utf-8')
                    if not line.startswith('#')}
        self.assertEqual(['void', 'self:R', 'owner', 'text:9'], rows['R_t_set'])
        self.assertEqual(['void', 'self:R', 'owner', 'source:R:3', 'owner'], rows['R_inner_set'])
        self.assertEqual(['int', 'self:C', 'owner', 'handle:R', 'owner', 'long', 'out'], rows['C_f__SWIG_0'])
        self.assertEqual(['ref:C'], rows['C_get'])
        self.assertEqual(['new:R', 'self:C', 'owner'], rows['C_make'])
        self.assertEqual(['new:C'], rows['new_C'])
        self.assertEqual(['void', 'dispose:C'], rows['delete_C'])


class Errors(unittest.TestCase):
    def assertFails(self, description, *fragments, args=()):
        done, _ = run(description, *args)
        self.assertNotEqual(0, done.returncode)
        for fragment in fragments:
            self.assertIn(fragment, done.stderr)

    def test_an_unknown_type_names_the_line(self):
        self.assertFails('''
            module m
            package p
            class C {
                int f(Unknown u);
            }
        ''', 'm.wrap:5:', 'unknown type "Unknown"')

    def test_the_place_in_the_tree_must_agree(self):
        self.assertFails('module m\npackage p\n', 'declares module "m"', '"other"',
                         args=('--module', 'other'))
        self.assertFails('module m\npackage p\n', 'declares package "p"', args=('--package', 'q'))

    def test_a_description_needs_module_and_package(self):
        self.assertFails('package p\n', 'needs "module" and "package"')

    def test_an_export_named_twice_is_refused(self):
        self.assertFails('''
            module m
            package p
            record R { int x; }
            global int R_x;
        ''', 'exports named twice: R_x_get, R_x_set')

    def test_markers_only_apply_where_they_mean_something(self):
        self.assertFails('''
            module m
            package p
            record R { int x; }
            class C { void f(R* OUTPUT); }
        ''', 'OUTPUT does not apply to "R"')

    def test_a_typedef_must_name_a_scalar(self):
        self.assertFails('module m\npackage p\ntypedef T std::string;\n', 'typedef T: "std::string" is not a scalar')


if __name__ == '__main__':
    unittest.main()
