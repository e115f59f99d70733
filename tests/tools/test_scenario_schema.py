"""The scenario schema against the simulated device that reads the scenarios: every example file is taken by
both; what the schema refuses the device refuses at the same JSON pointer; every key the schema lists with a
default is one the device reads, and takes that default and refuses what lies past its range.

Run with the path of jbrg-scenario-load (the simulator's loader) in JBRG_SCENARIO_LOAD."""

import glob
import json
import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..')
sys.path.insert(0, os.path.join(ROOT, 'tools'))
import scenario_validate  # noqa: E402
import shuffled_unittest  # noqa: E402

SCHEMA_PATH = os.path.join(ROOT, 'sim', 'schema', 'scenario.schema.json')
LOADER = os.environ.get('JBRG_SCENARIO_LOAD', '')

with open(SCHEMA_PATH, encoding='utf-8') as f:
    SCHEMA = json.load(f)


def load(scenarios):
    """Loads each scenario (a parsed value) into the simulated device; answers for each "ok" or the
    device's refusal."""
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for i, scenario in enumerate(scenarios):
            paths.append(os.path.join(folder, f'{i}.json'))
            with open(paths[-1], 'w', encoding='utf-8') as f:
                json.dump(scenario, f)
        done = subprocess.run([LOADER, *paths], capture_output=True, text=True, env={**os.environ,
                              'JBRG_SIM_SCENARIO': ''})
        answers = {}
        for line in (done.stdout + done.stderr).splitlines():
            path, _, answer = line.partition(': ')
            answers[path] = answer
        return [answers.get(p, 'no answer') for p in paths]


def sections():
    return {name: SCHEMA['$defs'].get(s['$ref'].split('/')[-1]) if '$ref' in s else s
            for name, s in SCHEMA['properties'].items() if name != '$schema'}


@unittest.skipUnless(LOADER, 'JBRG_SCENARIO_LOAD names no loader')
class examples(unittest.TestCase):
    def test_every_scenario_of_the_tree_fits_the_schema_and_loads(self):
        files = sorted(glob.glob(os.path.join(ROOT, 'sim', 'scenarios', '*.json')))
        self.assertGreaterEqual(len(files), 3)
        scenarios = []
        for path in files:
            with open(path, encoding='utf-8') as f:
                scenarios.append(json.load(f))
            self.assertIsNone(scenario_validate.refusal(SCHEMA, scenarios[-1]), path)
        self.assertEqual(['ok'] * len(files), load(scenarios), files)


@unittest.skipUnless(LOADER, 'JBRG_SCENARIO_LOAD names no loader')
class agreement(unittest.TestCase):
    # Scenarios both refuse, and whether both give the same words (type, range, length and unknown keys are
    # worded alike; the device words its own checks its own way).
    REFUSED = [
        ({'users': {'local': [{'login_name': 'a'}, {'login_name': 'b', 'colour': 'red'}]}}, True),
        ({'usr': {}}, True),
        ({'panel': {'keypad': {'layout': 3}}}, True),
        ({'panel': []}, True),
        ({'boxes': {'user': [{'number': 0}]}}, True),
        ({'boxes': {'fax': [{'number': 1, 'documents': [{'resolution': 9}]}]}}, True),
        ({'job': {'defaults': {'copies': 'two'}}}, True),
        ({'job': {'defaults': {'file_name': 3}}}, True),
        ({'job': {'disable_info': {'zoom': 1}}}, False),
        ({'job': {'ocr': [{'kind': 'line', 'rect': [0, 0, -1, 4]}]}}, True),
        ({'job': {'ocr': [{'kind': 'page', 'text': 'x'}]}}, True),
        ({'job': {'user_name': 'u' * 200}}, True),
        ({'boxes': {'retained': [{'password': 'p' * 17}]}}, True),
        ({'jobinfo': {'joblogs': [{'send': [{'mail': {'mail_address': 'a', 'cc': 'b'}}]}]}}, True),
        ({'jobinfo': {'joblogs': [{'job_log_type': 4}]}}, False),
        ({'apps': {'installed': [{'id': 'a', 'libraries': ['x.jar', 3]}]}}, True),
        ({'apps': {'installed': [{'id': 'a', 'names': {'en': 'A'}}]}}, False),
        ({'storage': {'files': [{'area': 45, 'path': 'a', 'dir': 'yes'}]}}, True),
        ({'storage': {'statfs': {'blocks': -1}}}, True),
        ({'departments': {'accounts': [{'id': 'd1', 'counters': [1, -2]}]}}, True),
        ({'departments': {'accounts': [{'id': 'd1', 'limits': [0] * 11}]}}, False),
        ({'departments': {'accounts': [{'id': '123456789'}]}}, True),
        ({'system_info': {'counters': [{'kind': 0, 'size': 1, 'color': 3, 'count': 1}]}}, True),
        ({'system_info': {'paper_sources': [{'key': 405}]}}, True),
        ({'smart_card': {'reader': {'card_types': 64}}}, True),
        ({'smart_card': {'mifare': [{'number': 5, 'key': 'A0A1A2A3A4A5'}]}}, True),
        ({'smart_card': {'felica': [{'services': [{}, {}, {}]}]}}, False),
        ({'address_book': {'personal': [{'number': 1, 'fax': {'ecm': 128}}]}}, True),
        ({'address_book': {'groups_generated': {'members': 1001}}}, True),
        ({'webservice': {'unsupported': [4]}}, True),
        ({'esm': {'state': 4}}, True),
        ({'esm': {'suspended_by': ['a', '']}}, False),
        ({'webservice': {'reserved': [{'kind': 0, 'app_id': ''}]}}, False),
        ({'auth': {'mode': 3}}, True),
    ]

    def test_the_device_refuses_what_the_schema_refuses_at_the_same_pointer(self):
        scenarios = [scenario for scenario, _ in self.REFUSED]
        for scenario, device in zip(scenarios, load(scenarios)):
            schema = scenario_validate.refusal(SCHEMA, scenario)
            self.assertIsNotNone(schema, scenario)
            self.assertTrue(device.startswith('scenario: /'), (scenario, device))
            self.assertEqual(schema.split(': ')[1], device.split(': ')[1], (scenario, schema, device))

    def test_type_range_length_and_unknown_key_refusals_read_the_same(self):
        scenarios = [scenario for scenario, same in self.REFUSED if same]
        for scenario, device in zip(scenarios, load(scenarios)):
            self.assertEqual(scenario_validate.refusal(SCHEMA, scenario), device, scenario)

    def test_every_defaulted_key_is_read_by_the_device_with_its_default(self):
        scenarios = []
        for name, section in sections().items():
            defaults = {key: s['default'] for key, s in section['properties'].items() if 'default' in s}
            if defaults:
                scenarios.append({name: defaults})
        self.assertGreaterEqual(len(scenarios), 10)
        for scenario in scenarios:
            self.assertIsNone(scenario_validate.refusal(SCHEMA, scenario), scenario)
        self.assertEqual(['ok'] * len(scenarios), load(scenarios), scenarios)

    def test_the_device_refuses_each_section_integer_past_the_ends_of_its_range(self):
        scenarios = []
        for name, section in sections().items():
            for key, s in section['properties'].items():
                if s.get('type') == 'integer':
                    scenarios += [{name: {key: s['maximum'] + 1}}, {name: {key: s['minimum'] - 1}}]
        self.assertGreaterEqual(len(scenarios), 40)
        for scenario, device in zip(scenarios, load(scenarios)):
            self.assertEqual(scenario_validate.refusal(SCHEMA, scenario), device, scenario)


try:
    import jsonschema
except ImportError:
    jsonschema = None


@unittest.skipUnless(jsonschema, 'no python3-jsonschema for this Python')
class standard_validator(unittest.TestCase):
    """A general JSON Schema validator, where one is installed: the schema is a draft 2020-12 schema, and that
    validator takes and refuses what ours does."""

    def test_the_schema_is_a_draft_2020_12_schema(self):
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

    def test_it_agrees_with_ours(self):
        checker = jsonschema.Draft202012Validator(SCHEMA)
        for path in glob.glob(os.path.join(ROOT, 'sim', 'scenarios', '*.json')):
            with open(path, encoding='utf-8') as f:
                self.assertEqual([], [e.message for e in checker.iter_errors(json.load(f))], path)
        for scenario, _ in agreement.REFUSED:
            self.assertFalse(checker.is_valid(scenario), scenario)


class validator(unittest.TestCase):
    """The validator on schemas of its own."""

    def refusal(self, schema, value):
        return scenario_validate.refusal(schema, value)

    def test_it_names_the_first_refused_value_by_its_pointer(self):
        schema = {'type': 'object', 'additionalProperties': False, 'properties': {
            'a': {'type': 'array', 'items': {'$ref': '#/$defs/thing'}}},
            '$defs': {'thing': {'type': 'object', 'additionalProperties': False, 'required': ['n'],
                                'properties': {'n': {'type': 'integer', 'minimum': 1, 'maximum': 2},
                                               'a/b': {'type': 'string', 'maxLength': 2}}}}}
        self.assertIsNone(self.refusal(schema, {'a': [{'n': 1}, {'n': 2, 'a/b': 'xy'}]}))
        self.assertEqual('scenario: /a/1/n: must be an integer from 1 to 2', self.refusal(schema, {'a': [{'n': 1}, {'n': 3}]}))
        self.assertEqual('scenario: /a/0/n: must be an integer from 1 to 2', self.refusal(schema, {'a': [{'n': True}]}))
        self.assertEqual('scenario: /a/0/a~1b: must be a string of at most 2 bytes',
                         self.refusal(schema, {'a': [{'n': 1, 'a/b': 'xé'}]}))
        self.assertEqual('scenario: /a/0: needs n', self.refusal(schema, {'a': [{}]}))
        self.assertEqual('scenario: /b: unknown section', self.refusal(schema, {'b': 1}))
        self.assertEqual('scenario: the file must hold a JSON object', self.refusal(schema, [1]))

    def test_one_of_takes_exactly_one_form_and_reports_the_deepest_refusal(self):
        schema = {'type': 'object', 'properties': {'r': {'oneOf': [
            {'type': 'null'},
            {'type': 'object', 'additionalProperties': False, 'properties': {'k': {'const': 'x'},
                                                                            'v': {'type': 'boolean'}}}]}}}
        self.assertIsNone(self.refusal(schema, {'r': None}))
        self.assertIsNone(self.refusal(schema, {'r': {'k': 'x'}}))
        self.assertEqual('scenario: /r/v: must be true or false', self.refusal(schema, {'r': {'v': 1}}))
        self.assertEqual('scenario: /r/k: must be "x"', self.refusal(schema, {'r': {'k': 'y'}}))

    def test_the_command_line_answers_per_file_and_fails_when_one_is_refused(self):
        with tempfile.TemporaryDirectory() as folder:
            good, bad = os.path.join(folder, 'good.json'), os.path.join(folder, 'bad.json')
            with open(good, 'w') as f:
                json.dump({'job': {'pages': 2}}, f)
            with open(bad, 'w') as f:
                json.dump({'job': {'pages': 1001}}, f)
            tool = os.path.join(ROOT, 'tools', 'scenario_validate.py')
            done = subprocess.run([sys.executable, tool, good, bad], capture_output=True, text=True)
            self.assertEqual(1, done.returncode)
            self.assertIn(good + ': ok', done.stdout)
            self.assertIn(bad + ': scenario: /job/pages: must be an integer from 0 to 1000', done.stderr)
            done = subprocess.run([sys.executable, tool, good], capture_output=True, text=True)
            self.assertEqual(0, done.returncode)


if __name__ == '__main__':
    shuffled_unittest.run(__name__)
