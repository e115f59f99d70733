"""The installed kit: `cmake --install` of a build into a temporary folder, then what a Java application
developer finds there and what works from it alone.

Environment: JBRG_BUILD (the build folder), JBRG_VERSION (the project's version), JBRG_JAVA_HOME (a JDK),
JBRG_TARGET_RUN and JBRG_TARGET_JAVA for a cross build (the emulator's words separated by "|", and the target's
java, which runs under it), JBRG_CLASS_DIRS (the build's class folders the jar packs besides the generated
classes, separated by ":"), JBRG_MANIFEST_ROOT (the build's manifest folder) and JBRG_MANIFESTS (the manifests of the library's modules,
<package path>/<module>.exports below that folder, separated by ":"; the test suite's probe modules have theirs
in the same folder)."""

import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
import unittest
import zipfile
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tools'))
import shuffled_unittest  # noqa: E402

BUILD = os.environ.get('JBRG_BUILD', '')
VERSION = os.environ.get('JBRG_VERSION', '')
JAVA_HOME = os.environ.get('JBRG_JAVA_HOME', '')
MANIFEST_ROOT = os.environ.get('JBRG_MANIFEST_ROOT', '')
CLASS_DIRS = [d for d in os.environ.get('JBRG_CLASS_DIRS', '').split(':') if d]
MANIFESTS = [m for m in os.environ.get('JBRG_MANIFESTS', '').split(':') if m]
# Programs of the target: run directly, or under the emulator.
TARGET_RUN = [w for w in os.environ.get('JBRG_TARGET_RUN', '').split('|') if w]
JAVA = TARGET_RUN + [os.environ.get('JBRG_TARGET_JAVA') or os.path.join(JAVA_HOME, 'bin', 'java')]
JAVAC = os.path.join(JAVA_HOME, 'bin', 'javac')

# A class compiled against the jar alone: loads the library and calls one generated native of each kind
# (a constructor, a getter, a destructor) of the system module.
CHECK = textwrap.dedent('''\
    import orvane.qsf.wrapper.system.cmt_commonJNI;

    public class KitCheck {
        public static void main(String[] args) {
            System.loadLibrary("jbrgCMT");
            long time = cmt_commonJNI.new_cmt_time__SWIG_1(86399L);
            System.out.println("year " + cmt_commonJNI.cmt_time_getYear(time, null)
                + " hour " + cmt_commonJNI.cmt_time_getHour(time, null));
            cmt_commonJNI.delete_cmt_time(time);
        }
    }
    ''')

kit = None  # the folder of the kit installed for this run


def setUpModule():
    global kit
    if not BUILD:
        return
    kit = tempfile.mkdtemp(prefix='jbrg-kit-')
    done = subprocess.run(['cmake', '--install', BUILD, '--prefix', kit], capture_output=True, text=True)
    if done.returncode != 0:
        raise RuntimeError('cmake --install failed:\n' + done.stdout + done.stderr)


def tearDownModule():
    if kit:
        shutil.rmtree(kit, ignore_errors=True)


def jar_names(path):
    with zipfile.ZipFile(path) as z:
        return set(z.namelist())


def library_modules():
    """Each module of the library as its package path and module name, from the build's manifests."""
    return [os.path.relpath(manifest, MANIFEST_ROOT)[:-len('.exports')] for manifest in MANIFESTS]


def run_check(kit_folder, work):
    """Compiles KitCheck against the kit's jar alone and runs it with the kit's libraries; answers the run."""
    with open(os.path.join(work, 'KitCheck.java'), 'w') as f:
        f.write(CHECK)
    jar = os.path.join(kit_folder, 'java', 'jbrg-kit.jar')
    subprocess.run([JAVAC, '-cp', jar, '-d', work, os.path.join(work, 'KitCheck.java')], check=True,
                   capture_output=True)
    env = {k: v for k, v in os.environ.items() if k not in ('LD_LIBRARY_PATH', 'JBRG_SIM_SCENARIO')}
    return subprocess.run([*JAVA, '-Djava.library.path=' + os.path.join(kit_folder, 'lib'), '-cp',
                           jar + os.pathsep + work, 'KitCheck'], capture_output=True, text=True, env=env,
                          cwd=work)


@unittest.skipUnless(BUILD and VERSION and JAVA_HOME and MANIFESTS and MANIFEST_ROOT,
                     'JBRG_BUILD, JBRG_VERSION, JBRG_JAVA_HOME, JBRG_MANIFEST_ROOT, JBRG_MANIFESTS name the build')
class installed_kit(unittest.TestCase):
    def test_the_layout(self):
        for rel in ['lib/libjbrgCMT.so', 'lib/libjbrgsim.so', 'java/jbrg-kit.jar', f'java/jbrg-kit-{VERSION}.jar',
                    'java/jbrg-kit-sources.jar', 'share/jbrg/scenario.schema.json', 'share/jbrg/examples/demo.json',
                    'share/doc/jbrg/GUIDE.md', 'share/doc/jbrg/simulator-java.md', 'bin/jbrg-scenario-load',
                    'bin/jbrg-scenario-validate']:
            self.assertTrue(os.path.isfile(os.path.join(kit, rel)), rel)
        if os.path.exists(os.path.join(BUILD, 'lib', 'libjbrgsimctl.so')):
            self.assertTrue(os.path.isfile(os.path.join(kit, 'lib', 'libjbrgsimctl.so')))
        self.assertEqual(jar_names(os.path.join(kit, 'java', 'jbrg-kit.jar')),
                         jar_names(os.path.join(kit, 'java', f'jbrg-kit-{VERSION}.jar')))

    def test_the_jar_holds_every_module_of_the_library_and_no_test_module(self):
        names = jar_names(os.path.join(kit, 'java', 'jbrg-kit.jar'))
        modules = library_modules()
        self.assertGreaterEqual(len(modules), 10)
        for module in modules:
            self.assertTrue(os.path.exists(os.path.join(MANIFEST_ROOT, module + '.exports')), module)
            self.assertIn(f'orvane/qsf/wrapper/{module}JNI.class', names)
        probes = glob.glob(os.path.join(MANIFEST_ROOT, 'probe', '*.exports'))
        self.assertTrue(probes, 'the build has probe modules, which the jar must leave out')
        jni = {n for n in names if re.search(r'JNI\.class$', n)}
        self.assertEqual({f'orvane/qsf/wrapper/{m}JNI.class' for m in modules}, jni,
                         'the probe modules of the tests stay out')

    def test_the_jar_holds_the_library_classes_and_the_proxies_it_calls_back(self):
        names = jar_names(os.path.join(kit, 'java', 'jbrg-kit.jar'))
        self.assertGreaterEqual(len(CLASS_DIRS), 2)
        for folder in CLASS_DIRS:
            found = glob.glob(os.path.join(folder, '**', '*.class'), recursive=True)
            built = [os.path.relpath(p, folder) for p in found]
            self.assertTrue(built, folder)
            self.assertLessEqual(set(built), names, folder)
        for known in ['orvane/qsf/user/UserImpl.class', 'orvane/address/SearchKey.class',
                      'orvane/qsf/controller/event/proxy/EventLog.class',
                      'orvane/qsf/controller/event/proxy/JobProxy.class']:
            self.assertIn(known, names)

    def test_the_manifest_carries_the_version(self):
        with zipfile.ZipFile(os.path.join(kit, 'java', 'jbrg-kit.jar')) as z:
            manifest = z.read('META-INF/MANIFEST.MF').decode()
        self.assertIn(f'Implementation-Version: {VERSION}', manifest)
        self.assertIn('Implementation-Title: jbrg', manifest)

    def test_the_sources_jar_has_a_source_for_each_top_level_class(self):
        classes = jar_names(os.path.join(kit, 'java', 'jbrg-kit.jar'))
        sources = jar_names(os.path.join(kit, 'java', 'jbrg-kit-sources.jar'))
        top = {n[:-len('.class')] for n in classes if n.endswith('.class') and '$' not in n}
        self.assertTrue(top)
        self.assertEqual(set(), {t for t in top if t + '.java' not in sources})

    def test_the_libraries_find_each_other_by_origin(self):
        for lib in glob.glob(os.path.join(kit, 'lib', '*.so')):
            dynamic = subprocess.run(['readelf', '-d', lib], capture_output=True, text=True, check=True).stdout
            paths = re.findall(r'\((?:RUNPATH|RPATH)\)\s+Library r(?:un)?path: \[(.*)\]', dynamic)
            self.assertEqual(['$ORIGIN'], paths, lib)
        dynamic = subprocess.run(['readelf', '-d', os.path.join(kit, 'lib', 'libjbrgCMT.so')], capture_output=True,
                                 text=True, check=True).stdout
        self.assertIn('[libjbrgsim.so]', dynamic)

    def test_a_class_compiled_against_the_jar_alone_calls_the_library(self):
        with tempfile.TemporaryDirectory() as work:
            done = run_check(kit, work)
            self.assertEqual(0, done.returncode, done.stderr)
            self.assertEqual('year 1970 hour 23', done.stdout.strip())

    def test_the_kit_works_wherever_it_lands(self):
        with tempfile.TemporaryDirectory() as elsewhere, tempfile.TemporaryDirectory() as work:
            moved = os.path.join(elsewhere, 'moved kit')
            shutil.copytree(kit, moved, symlinks=True)
            done = run_check(moved, work)
            self.assertEqual(0, done.returncode, done.stderr)
            self.assertEqual('year 1970 hour 23', done.stdout.strip())

    def test_the_installed_tools_take_the_installed_examples(self):
        examples = sorted(glob.glob(os.path.join(kit, 'share', 'jbrg', 'examples', '*.json')))
        self.assertGreaterEqual(len(examples), 3)
        env = {k: v for k, v in os.environ.items() if k not in ('LD_LIBRARY_PATH', 'JBRG_SIM_SCENARIO')}
        for command in ([*TARGET_RUN, os.path.join(kit, 'bin', 'jbrg-scenario-load')],
                        [sys.executable, os.path.join(kit, 'bin', 'jbrg-scenario-validate')]):
            done = subprocess.run(command + examples, capture_output=True, text=True, env=env)
            self.assertEqual(0, done.returncode, done.stderr)
            self.assertEqual([e + ': ok' for e in examples], done.stdout.splitlines())


if __name__ == '__main__':
    shuffled_unittest.run(__name__)
