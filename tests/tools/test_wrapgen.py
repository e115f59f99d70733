"""The wrapper generator on descriptions written for the occasion: names, numbering, how each type crosses to
Java and the errors a module author meets."""

import os
import subprocess
import sys
import tempfile
import textwrap
import unittest
import shuffled_unittest

GENERATOR = os.path.join(os.path.dirname(__file__), '..', '..', 'tools', 'wrapgen', 'wrapgen.py')


def generate(description, *args, outputs=('exports',)):
    """Runs the generator on a description; answers the run and the text of each output asked for."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, 'm.wrap')
        with open(path, 'w', encoding='utf-8') as f:
            f.write(textwrap.dedent(description))
        files = {kind: os.path.join(folder, 'm.' + kind) for kind in outputs}
        options = [option for kind, file in files.items()
                   for option in ('--manifest' if kind == 'exports' else '--' + kind, file)]
        done = subprocess.run([sys.executable, GENERATOR, path, *options, *args], capture_output=True, text=True)
        texts = {}
        if done.returncode == 0:
            for kind, file in files.items():
                with open(file, encoding='utf-8') as f:
                    texts[kind] = f.read()
        return done, texts


def run(description, *args):
    done, texts = generate(description, *args)
    return done, texts.get('exports', '').split()


def probe_rows(description):
    """The probe table of a description: export -> [result, argument roles...]."""
    done, texts = generate(description, outputs=('probe',))
    assert done.returncode == 0, done.stderr
    return {line.split()[0]: line.split()[1:] for line in texts['probe'].splitlines() if not line.startswith('#')}


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
        done, texts = generate('''
            module m
            package p
            record R { char t[9]; R inner[3]; unsigned long ids[2]; R one; }
            class C {
                [[stated]] C();
                [[stated(0)]] int f(R& r, unsigned long n, int* OUTPUT);
                [[stated(1)]] int f(const char* s);
                static C* get();
                R make();
            }
        ''', outputs=('stated', 'probe'))
        self.assertEqual(0, done.returncode, done.stderr)
        # A stated overload carries its number: the name Java links against is the numbered one.
        self.assertEqual(['Java_orvane_qsf_wrapper_p_mJNI_C_1f_1_1SWIG_10', 'Java_orvane_qsf_wrapper_p_mJNI_C_1f_1_1SWIG_11',
                          'Java_orvane_qsf_wrapper_p_mJNI_new_1C'], texts['stated'].split())
        rows = {line.split()[0]: line.split()[1:] for line in texts['probe'].splitlines()
                if not line.startswith('#')}
        self.assertEqual(['void', 'self:R', 'owner', 'text:9'], rows['R_t_set'])
        # A record handle is followed by its owner; a primitive array's bare address is not.
        self.assertEqual(['void', 'self:R', 'owner', 'source:R:3', 'owner'], rows['R_inner_set'])
        self.assertEqual(['void', 'self:R', 'owner', 'source:unsignedlong:2'], rows['R_ids_set'])
        self.assertEqual(['void', 'self:R', 'owner', 'handle:R', 'owner'], rows['R_one_set'])
        self.assertEqual(['int', 'self:C', 'owner', 'handle:R', 'owner', 'long', 'out'], rows['C_f__SWIG_0'])
        self.assertEqual(['ref:C'], rows['C_get'])
        self.assertEqual(['new:C'], rows['new_C'])
        self.assertEqual(['void', 'dispose:C'], rows['delete_C'])


    def test_a_stated_name_that_the_numbering_would_change_does_not_generate(self):
        for members, said in (('[[stated]] int f(); int f(int x);', 'stated with no number but exported with __SWIG_0'),
                              ('int f(int x); [[stated(0)]] int f();', 'stated with __SWIG_0 but exported with __SWIG_1'),
                              ('[[stated(0)]] int f();', 'stated with __SWIG_0 but exported with no number')):
            done, _ = generate('module m\npackage p\nclass C {\n' + members + '\n}\n', outputs=('stated',))
            self.assertNotEqual(0, done.returncode)
            self.assertIn('C_f is ' + said, done.stderr)


class TypeMap(unittest.TestCase):
    """How each written type crosses: the Java types and probe roles of arguments and results, and the checks
    whose exception texts Java sees."""

    HEAD = '''
        module m
        package p
        typedef TID unsigned int;
        enum E { E_A }
        record R { int x; }
    '''

    def test_arguments(self):
        cases = {
            'int': ['int'], 'unsigned long': ['long'], 'long': ['int'], 'const unsigned int&': ['long'],
            'bool': ['boolean'], 'unsigned char': ['short'], 'signed char': ['byte'], 'unsigned short': ['int'],
            'E': ['int'], 'const E&': ['int'], 'TID': ['long'], 'jobject': ['Object'],
            'const char*': ['String'], 'char*': ['String'], 'std::string': ['String'],
            'const std::string&': ['String'], 'std::string& INOUT': ['String[]'],
            'unsigned long* OUTPUT': ['out'], 'E& OUTPUT': ['out'], 'signed char data[]': ['array:0'],
            # Everything else is a handle followed by its owner, a scalar the callee may change included.
            'R&': ['handle:R', 'owner'], 'const R&': ['handle:R', 'owner'], 'R': ['handle:R', 'owner'],
            'const R*': ['handle:R', 'owner'], 'int&': ['handle:int', 'owner'], 'void*': ['handle:void', 'owner'],
            'std::vector< int >': ['handle:std::vector<int>', 'owner'],
            'Opaque*': ['handle:Opaque', 'owner'],
        }
        methods = ''.join(f'    int f{i}({written});\n' for i, written in enumerate(cases))
        rows = probe_rows(self.HEAD + 'class C [[nodelete]] {\n' + methods + '}\n')
        for i, (written, roles) in enumerate(cases.items()):
            with self.subTest(written):
                self.assertEqual(['int', 'self:C', 'owner'] + roles, rows[f'C_f{i}'])

    def test_results(self):
        cases = {
            'void': 'void', 'unsigned long': 'long', 'bool': 'boolean', 'E': 'int', 'TID': 'long',
            'const char*': 'String', 'std::string': 'String', 'const std::string&': 'String', 'jobject': 'Object',
            # A scalar returned by reference is its value, not a handle.
            'const unsigned long&': 'long', 'unsigned int&': 'long',
            'R': 'new:R', 'R*': 'ref:R', 'R&': 'ref:R', 'const R&': 'ref:R', 'int*': 'ref:int',
        }
        methods = ''.join(f'    {written} f{i}();\n' for i, written in enumerate(cases))
        rows = probe_rows(self.HEAD + 'class C [[nodelete]] {\n' + methods + '}\nconstant R ORIGIN;\n')
        for i, (written, role) in enumerate(cases.items()):
            with self.subTest(written):
                self.assertEqual([role, 'self:C', 'owner'], rows[f'C_f{i}'])
        # A record constant is a copy Java owns, as a record result is.
        self.assertEqual(['new:R'], rows['ORIGIN_get'])

    def test_null_checks_quote_the_type_as_declared(self):
        done, texts = generate(self.HEAD + '''
            class C [[nodelete]] {
                int f(R& a, const R& b, R c, std::vector< unsigned int >& d, const std::string& e);
            }
        ''', outputs=('cpp',))
        self.assertEqual(0, done.returncode, done.stderr)
        for message in ('"R & reference is null"', '"R const & reference is null"', '"Attempt to dereference null R"',
                        '"std::vector< unsigned int > & reference is null"'):
            self.assertIn(message, texts['cpp'])
        self.assertIn('::jbrg::wrap::string_arg arg6(jenv, jarg6);', texts['cpp'])

    def test_an_array_is_checked_against_its_size_wherever_the_size_stands_and_a_const_one_is_not_written_back(self):
        done, texts = generate(self.HEAD + '''
            class C [[nodelete]] {
                static int fill(signed char buffer[size], unsigned long size);
                static int put(unsigned long size, const signed char data[size]);
            }
        ''', outputs=('cpp',))
        self.assertEqual(0, done.returncode, done.stderr)
        fill = texts['cpp'].split('C_1fill')[1].split('C_1put')[0]
        put = texts['cpp'].split('C_1put')[1]
        # The size follows the buffer: checked once it is read, before the call.
        self.assertLess(fill.index('arg1.covers(static_cast<dev_ulong>(jarg2))'), fill.index('C::fill('))
        self.assertIn('arg1.store();', fill)
        self.assertIn('arg2.covers(static_cast<dev_ulong>(jarg1))', put)
        self.assertNotIn('arg2.store();', put)
        done, _ = generate(self.HEAD + 'class C { static int f(int data[count]); }\n')
        self.assertIn('the size "count" of "data[]" is not a parameter', done.stderr)

    def test_a_filled_array_is_not_copied_in_and_is_written_back_as_far_as_the_callee_says(self):
        done, texts = generate(self.HEAD + '''
            class C [[nodelete]] {
                static int read(signed char buffer[size, OUTPUT], unsigned long size, unsigned long* OUTPUT);
            }
        ''', outputs=('cpp',))
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn('::jbrg::wrap::filled_arg<signed char, jbyte> arg1(jenv, jarg1);', texts['cpp'])
        self.assertLess(texts['cpp'].index('C::read('), texts['cpp'].index('arg1.store(arg3.value());'))
        done, _ = generate(self.HEAD + 'class C { static int f(int data[n, OUTPUT], int n); }\n')
        self.assertIn('needs exactly one OUTPUT argument', done.stderr)


class Errors(unittest.TestCase):
    def assertFails(self, description, *fragments, args=()):
        done, _ = run(description, *args)
        self.assertNotEqual(0, done.returncode)
        for fragment in fragments:
            self.assertIn(fragment, done.stderr)

    def test_an_unknown_type_names_the_module_the_line_and_the_type(self):
        for written in ('int f(Unknown u);', 'Unknown f();'):
            with self.subTest(written):
                self.assertFails(f'''
                    module m
                    package p
                    class C {{
                        {written}
                    }}
                ''', 'm.wrap:5: module m: unknown type "Unknown"')

    def test_a_shape_without_a_conversion_is_refused(self):
        # A pointer passed by reference is neither a value nor a handle Java can hold.
        self.assertFails('module m\npackage p\nclass C { int f(const int*& p); }\n',
                         'm.wrap:3: module m: "int" does not cross to Java as T*&')
        self.assertFails('module m\npackage p\nrecord R { int x; }\nclass C { void f(R* OUTPUT); }\n',
                         'OUTPUT does not apply to "R"')
        self.assertFails('module m\npackage p\nclass C { void f(const char* s[]); }\n',
                         'no Java array for elements of "char"')

    def test_descriptions_that_contradict_themselves_or_their_place(self):
        self.assertFails('module m\npackage p\n', 'declares module "m"', '"other"', args=('--module', 'other'))
        self.assertFails('module m\npackage p\n', 'declares package "p"', args=('--package', 'q'))
        self.assertFails('package p\n', 'needs "module" and "package"')
        self.assertFails('module m\npackage p\ntypedef T std::string;\n', 'typedef T: "std::string" is not a scalar')
        self.assertFails('module m\npackage p\nrecord R { int x; }\nglobal int R_x;\n',
                         'exports named twice: R_x_get, R_x_set')


class SharedParts(unittest.TestCase):
    """A record or constant several modules expose is described once, in a part each module uses."""

    PART = '''
        include "panel.h"
        constant int PANEL_SIZE;
        record P { char text[9]; }
    '''

    def generate_tree(self, modules, part=PART):
        """Lays out wrapper/<package>/<module>.wrap and wrapper/shared/panel.wrapi and runs the generator on
        each module; answers {module: (run, exports, depfile text)}."""
        results = {}
        with tempfile.TemporaryDirectory() as folder:
            root = os.path.join(folder, 'wrapper')
            os.makedirs(os.path.join(root, 'shared'))
            with open(os.path.join(root, 'shared', 'panel.wrapi'), 'w', encoding='utf-8') as f:
                f.write(textwrap.dedent(part))
            for package, module, text in modules:
                folder_of = os.path.join(root, *package.split('.'))
                os.makedirs(folder_of, exist_ok=True)
                path = os.path.join(folder_of, module + '.wrap')
                with open(path, 'w', encoding='utf-8') as f:
                    f.write(textwrap.dedent(text))
                manifest, depfile = path + '.exports', path + '.d'
                done = subprocess.run([sys.executable, GENERATOR, path, '--manifest', manifest, '--depfile', depfile,
                                       '--cpp', path + '.cpp'], capture_output=True, text=True)
                exports, deps = [], ''
                if done.returncode == 0:
                    with open(manifest, encoding='utf-8') as f:
                        exports = [n.split('JNI_', 1)[1] for n in f.read().split()]
                    with open(depfile, encoding='utf-8') as f:
                        deps = f.read().replace(folder, '<tree>')
                results[module] = (done, exports, deps)
        return results

    def test_two_modules_of_different_packages_publish_the_same_part_and_depend_on_it(self):
        results = self.generate_tree([
            ('event', 'a', 'module a\npackage event\nuse "shared/panel.wrapi"\nrecord Own { int x; }\n'),
            ('device.attribute', 'b', 'module b\npackage device.attribute\nuse "shared/panel.wrapi"\n'),
        ])
        shared = ['P_1text_1get', 'P_1text_1set', 'PANEL_1SIZE_1get', 'delete_1P', 'new_1P']
        for module in ('a', 'b'):
            done, exports, deps = results[module]
            self.assertEqual(0, done.returncode, done.stderr)
            self.assertTrue(set(shared) <= set(exports), exports)
            self.assertIn('<tree>/wrapper/shared/panel.wrapi', deps)
        self.assertEqual(len(shared) + 4, len(results['a'][1]))

    def test_a_part_declares_only_what_modules_share_and_its_errors_name_its_own_lines(self):
        cases = (
            ('module m\npackage p\nuse "shared/panel.wrapi"\n', 'record P { Unknown u; }\n',
             'panel.wrapi:1: module m: no field of type "Unknown"'),
            ('module m\npackage p\nuse "shared/panel.wrapi"\n', 'package q\n', 'a shared part cannot declare "package"'),
            ('module m\nuse "shared/panel.wrapi"\npackage p\n', PART_OK, '"use" comes after "package"'),
            ('module m\npackage p\nuse "shared/nothing.wrapi"\n', PART_OK, 'cannot read shared part shared/nothing.wrapi'),
            ('module m\npackage p\nuse "shared/panel.wrapi"\nuse "shared/panel.wrapi"\n', PART_OK, 'used twice'),
            ('module m\npackage p\nuse "shared/panel.wrap"\n', PART_OK, 'use takes a quoted shared part'),
        )
        for module, part, said in cases:
            with self.subTest(said):
                done, _, _ = self.generate_tree([('p', 'm', module)], part=part)['m']
                self.assertNotEqual(0, done.returncode)
                self.assertIn(said, done.stderr)


PART_OK = 'record P { int x; }\n'


if __name__ == '__main__':
    shuffled_unittest.run(__name__)
