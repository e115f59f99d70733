#!/usr/bin/env python3
"""Checks that a library exports exactly the Java natives its wrapper modules declare.

The union of the modules' manifests (one JNI name a line, written by the wrapper generator) must equal the
`Java_` symbols the library exports (`nm -D --defined-only`), and every name a module description marks as
stated (`<module>.stated` beside its manifest: Java applications link against those names as they stand) must be
among them, so that an overload cannot rename one. Beside that, each module's count is printed next
to the number of exports the module has on the device, so that a module still growing shows how far it is.
The manifests lie in one folder per package below the manifest root (`<root>/<package path>/<module>.exports`);
a module is shown as `<package path>/<module>`.
"""

import argparse
import os
import subprocess
import sys

# The modules of libjbrgCMT and their number of exports on the device (each module's name is unique there).
DEVICE_COUNTS = {
    'cmt_account_module': 28,
    'cmt_address_book_module': 66,
    'xamf_amo': 44,
    'qsf_fnd_document_box_module': 194,
    'CMT_SystemInformation': 344,
    'cmt_iccard': 37,
    'qsf_fnd_charge_module': 9,
    'qsf_fnd_event': 318,
    'qsf_fnd_job_module': 390,
    'qsf_fnd_job_log': 177,
    'xdof_strg_storage': 42,
    'cmt_common': 14,
    'qsf_fnd_user': 184,
    'qsf_fnd_webservice_module': 6,
}


def exported(nm, library):
    out = subprocess.run([nm, '-D', '--defined-only', library], check=True, capture_output=True, text=True).stdout
    names = set()
    for line in out.splitlines():
        parts = line.split()
        if parts and parts[-1].startswith('Java_'):
            names.add(parts[-1])
    return names


def read_names(path):
    with open(path, encoding='utf-8') as f:
        return {line.strip() for line in f if line.strip()}


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument('--nm', default='nm')
    ap.add_argument('--library', required=True)
    ap.add_argument('--root', help='the folder below which the manifests lie in their package folders')
    ap.add_argument('manifests', nargs='*')
    args = ap.parse_args()

    declared = set()
    stated = set()
    per_module = {}
    built = set()
    for path in args.manifests:
        module = os.path.splitext(os.path.relpath(path, args.root) if args.root else os.path.basename(path))[0]
        names = read_names(path)
        per_module[module] = len(names)
        built.add(os.path.basename(module))
        declared |= names
        stated_path = path.rsplit('.', 1)[0] + '.stated'
        if os.path.exists(stated_path):
            stated |= read_names(stated_path)
    actual = exported(args.nm, args.library)

    print(f'{"module":40} {"exports":>8} {"device":>8}')
    rows = [(module, per_module[module], DEVICE_COUNTS.get(os.path.basename(module))) for module in per_module]
    rows += [(module, None, count) for module, count in DEVICE_COUNTS.items() if module not in built]
    for module, have, want in sorted(rows, key=lambda row: (os.path.basename(row[0]).lower(), row[0])):
        mark = '' if have == want else ('  (not built yet)' if have is None else '  (differs)')
        print(f'{module:40} {have if have is not None else "-":>8} {want if want is not None else "-":>8}{mark}')
    print(f'{"total":40} {len(declared):>8} {sum(DEVICE_COUNTS.values()):>8}')

    missing = sorted(declared - actual)
    extra = sorted(actual - declared)
    renamed = sorted(stated - actual)
    for name in missing:
        print(f'declared but not exported: {name}')
    for name in extra:
        print(f'exported but not declared: {name}')
    for name in renamed:
        print(f'stated but not exported under that name (renamed by an overload?): {name}')
    if missing or extra or renamed:
        print(f'export check: FAILED ({len(missing)} missing, {len(extra)} undeclared, {len(renamed)} stated names '
              'not exported)')
        return 1
    print(f'export check: {len(stated)} stated names exported as stated')
    print(f'export check: {len(actual)} Java natives exported, exactly as declared')
    return 0


if __name__ == '__main__':
    sys.exit(main())
