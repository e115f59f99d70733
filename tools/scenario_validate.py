#!/usr/bin/env python3
"""Checks scenario files of the simulated device against its JSON Schema, off the device and without the
simulator: python3 scenario_validate.py [--schema FILE] SCENARIO.json...

The schema (share/jbrg/scenario.schema.json in the kit) is draft 2020-12; this checker knows the keywords the
schema uses: type, const, properties, additionalProperties, propertyNames, required, items, minItems, maxItems,
minimum, maximum, minLength, maxLength (counted in UTF-8 bytes, as the device's fields hold them), pattern,
oneOf and local $ref. Each refusal is printed as the simulator prints it, "scenario: <JSON pointer>: <why>";
the exit status is 1 when a file is refused."""

import argparse
import json
import os
import re
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
SCHEMA_PLACES = (os.path.join(HERE, '..', 'share', 'jbrg', 'scenario.schema.json'),
                 os.path.join(HERE, '..', 'sim', 'schema', 'scenario.schema.json'))

TYPES = {
    'object': lambda v: isinstance(v, dict),
    'array': lambda v: isinstance(v, list),
    'string': lambda v: isinstance(v, str),
    'integer': lambda v: isinstance(v, int) and not isinstance(v, bool),
    'boolean': lambda v: isinstance(v, bool),
    'null': lambda v: v is None,
}


class Refused(Exception):
    def __init__(self, pointer, why):
        super().__init__(f'scenario: {pointer}: {why}')
        self.pointer = pointer
        self.why = why


def escape(key):
    return key.replace('~', '~0').replace('/', '~1')


def resolve(root, schema):
    while '$ref' in schema:
        ref = schema['$ref']
        if not ref.startswith('#/'):
            raise ValueError(f'only local references are known: {ref}')
        schema = root
        for name in ref[2:].split('/'):
            schema = schema[name.replace('~1', '/').replace('~0', '~')]
    return schema


def check(root, schema, value, pointer):
    """Raises Refused for the first value the schema refuses, depth first, keys in the file's order."""
    schema = resolve(root, schema)
    if 'oneOf' in schema:
        fits = []
        refusals = []
        for choice in schema['oneOf']:
            try:
                check(root, choice, value, pointer)
                fits.append(choice)
            except Refused as r:
                refusals.append(r)
        if len(fits) != 1:
            if not fits and len(refusals) == 1:
                raise refusals[0]
            # Of the choices that refuse, the one that went deepest says most.
            deepest = max(refusals, key=lambda r: len(r.pointer)) if refusals else None
            if deepest is not None and deepest.pointer != pointer:
                raise deepest
            raise Refused(pointer or '/', 'fits none of its forms' if not fits else 'fits more than one form')
    if 'type' in schema and not TYPES[schema['type']](value):
        names = {'object': 'an object', 'array': 'a list', 'string': 'a string', 'boolean': 'true or false',
                 'null': 'null'}
        if schema['type'] == 'integer':
            raise Refused(pointer, range_text(schema))
        raise Refused(pointer, 'must be ' + names[schema['type']])
    if 'const' in schema and value != schema['const']:
        raise Refused(pointer, f'must be {json.dumps(schema["const"])}')
    if isinstance(value, bool):
        return
    if isinstance(value, int) and (value < schema.get('minimum', value) or value > schema.get('maximum', value)):
        raise Refused(pointer, range_text(schema))
    if isinstance(value, str):
        if 'maxLength' in schema and len(value.encode('utf-8')) > schema['maxLength']:
            raise Refused(pointer, f'must be a string of at most {schema["maxLength"]} bytes')
        if len(value) < schema.get('minLength', 0):
            raise Refused(pointer, 'must not be empty' if schema['minLength'] == 1 else
                          f'must be a string of at least {schema["minLength"]} characters')
        if 'pattern' in schema and not re.search(schema['pattern'], value):
            raise Refused(pointer, f'must match {schema["pattern"]}')
    if isinstance(value, list):
        if len(value) > schema.get('maxItems', len(value)):
            raise Refused(pointer, f'must hold at most {schema["maxItems"]} values')
        if len(value) < schema.get('minItems', 0):
            raise Refused(pointer, f'must hold at least {schema["minItems"]} values')
        if 'items' in schema:
            for i, item in enumerate(value):
                check(root, schema['items'], item, f'{pointer}/{i}')
    if isinstance(value, dict):
        properties = schema.get('properties', {})
        extra = schema.get('additionalProperties', True)
        for key, item in value.items():
            at = f'{pointer}/{escape(key)}'
            if 'propertyNames' in schema:
                check(root, {'type': 'string', **schema['propertyNames']}, key, at)
            if key in properties:
                check(root, properties[key], item, at)
            elif extra is False:
                raise Refused(at, 'unknown section' if pointer == '' else 'unknown key')
            elif isinstance(extra, dict):
                check(root, extra, item, at)
        for key in schema.get('required', []):
            if key not in value:
                raise Refused(pointer, f'needs {key}')


def range_text(schema):
    if 'minimum' in schema and 'maximum' in schema:
        return f'must be an integer from {schema["minimum"]} to {schema["maximum"]}'
    return 'must be an integer'


def refusal(schema, scenario):
    """The refusal of a scenario (a parsed JSON value), or None when the schema takes it."""
    if not isinstance(scenario, dict):
        return 'scenario: the file must hold a JSON object'
    try:
        check(schema, schema, scenario, '')
    except Refused as r:
        return str(r)
    return None


def main(argv=None):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--schema', help='the schema file (default: the one beside this tool in the kit or tree)')
    parser.add_argument('scenarios', nargs='+')
    args = parser.parse_args(argv)
    schema_path = args.schema or next((p for p in SCHEMA_PLACES if os.path.exists(p)), SCHEMA_PLACES[0])
    with open(schema_path, encoding='utf-8') as f:
        schema = json.load(f)
    failed = False
    for path in args.scenarios:
        try:
            with open(path, encoding='utf-8') as f:
                scenario = json.load(f)
        except (OSError, ValueError) as e:
            print(f'{path}: {e}', file=sys.stderr)
            failed = True
            continue
        why = refusal(schema, scenario)
        if why:
            print(f'{path}: {why}', file=sys.stderr)
            failed = True
        else:
            print(f'{path}: ok')
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
