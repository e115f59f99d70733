#!/usr/bin/env python3
"""The wrapper generator: one declarative module description in, the module's Java natives out.

A description (`wrapper/<package>/<module>.wrap`) lists what one Java module exposes: records with their fields,
classes with their constructors, methods and static members, enumerations, constants and globals. From it this
generator writes, into the build folder:

  <module>_wrap.cpp               the C++ exports, one JNI function per export
  java/orvane/qsf/wrapper/<package path>/<module>JNI.java
                                  the Java class with the matching `native` declarations
  <module>.exports                the sorted JNI names of the exports (the module's manifest)

The build compiles the Java class with `javac -h` and the C++ file against the header javac writes, so every
export's name and signature is exactly what Java resolves. The conventions the exports follow (value mapping,
handles, argument checks and their exception texts, array conversion) live in the runtime,
`wrapper/runtime/wrap_runtime.h`; this generator only decides which of them each export uses.

The description language is documented in docs/wrapper.md. Standard library only.
"""

from __future__ import annotations

import argparse
import dataclasses
import os
import re
import sys
from typing import Dict, List, Optional, Tuple

# ---- Value mapping -------------------------------------------------------------------------------------------

@dataclasses.dataclass(frozen=True)
class Scalar:
    cxx: str          # the C++ type the bridge uses (the device's long is dev_long, 32 bits on every ABI)
    jni: str          # the JNI type it crosses as
    java: str         # the Java type of that JNI type
    array: Optional[str]  # the element name of the SWIG_JavaArray functions, None when it has none


SCALARS: Dict[str, Scalar] = {
    'bool': Scalar('bool', 'jboolean', 'boolean', 'Bool'),
    'signed char': Scalar('signed char', 'jbyte', 'byte', 'Schar'),
    'unsigned char': Scalar('unsigned char', 'jshort', 'short', 'Uchar'),
    'short': Scalar('short', 'jshort', 'short', 'Short'),
    'unsigned short': Scalar('unsigned short', 'jint', 'int', 'Ushort'),
    'int': Scalar('int', 'jint', 'int', 'Int'),
    'unsigned int': Scalar('unsigned int', 'jlong', 'long', 'Uint'),
    'long': Scalar('dev_long', 'jint', 'int', 'Long'),
    'unsigned long': Scalar('dev_ulong', 'jlong', 'long', 'Ulong'),
    'long long': Scalar('long long', 'jlong', 'long', 'Longlong'),
    'float': Scalar('float', 'jfloat', 'float', 'Float'),
    'double': Scalar('double', 'jdouble', 'double', 'Double'),
}
# Spellings of the same types.
SCALAR_ALIASES = {
    'unsigned': 'unsigned int', 'long int': 'long', 'unsigned long int': 'unsigned long', 'short int': 'short',
    'unsigned short int': 'unsigned short', 'signed int': 'int', 'signed long': 'long', 'signed short': 'short',
    'long long int': 'long long', 'signed long long': 'long long',
}

JAVA_ARRAY = {'jboolean': 'jbooleanArray', 'jbyte': 'jbyteArray', 'jshort': 'jshortArray', 'jint': 'jintArray',
              'jlong': 'jlongArray', 'jfloat': 'jfloatArray', 'jdouble': 'jdoubleArray', 'jchar': 'jcharArray'}


class DescriptionError(Exception):
    pass


# ---- Reading a description -------------------------------------------------------------------------------

TOKEN = re.compile(r'\s*(?:(#[^\n]*)|("(?:[^"\\]|\\.)*")|((?:::)?[A-Za-z_][A-Za-z0-9_]*(?:::[A-Za-z_][A-Za-z0-9_]*)*)'
                   r'|(-?[0-9]+|0[xX][0-9a-fA-F]+)|(\[\[|\]\]|[{}()\[\];,*&<>=:.]))')


@dataclasses.dataclass
class Tok:
    text: str
    line: int


def tokenize(text: str, path: str) -> List[Tok]:
    tokens: List[Tok] = []
    pos, line = 0, 1
    while pos < len(text):
        m = TOKEN.match(text, pos)
        if not m:
            rest = text[pos:].lstrip()
            if not rest:
                break
            line += text[pos:pos + (len(text[pos:]) - len(rest))].count('\n')
            raise DescriptionError(f'{path}:{line}: cannot read "{rest[:20]}"')
        line += text[pos:m.start(m.lastindex)].count('\n')
        if m.group(1) is None:
            tokens.append(Tok(m.group(m.lastindex), line))
        line += m.group(m.lastindex).count('\n')
        pos = m.end()
    return tokens


@dataclasses.dataclass
class Type:
    """A type as a description writes it: `const std::string &`, `unsigned long * OUTPUT`, `XSI_X &`."""
    base: str            # 'unsigned long', 'std::string', 'XSI_X', 'std::vector< unsigned int >'
    const: bool = False
    pointer: bool = False
    reference: bool = False

    def declared(self) -> str:
        """The type as declared, in the form the null-reference messages quote it."""
        return f'{self.base} const' if self.const else self.base


@dataclasses.dataclass
class Param:
    type: Type
    name: str            # the parameter's name, or a marker: OUTPUT, INOUT
    array: bool = False  # written `name[]`: an input array
    bound: str = ''      # written `name[size]`: an input array that must hold at least `size` elements


@dataclasses.dataclass
class Field:
    type: Type
    name: str
    count: Optional[int]  # N of `name[N]`, None for a single value
    line: int


@dataclasses.dataclass
class Function:
    name: str
    result: Optional[Type]   # None for a constructor
    params: List[Param]
    static: bool
    line: int
    export: str = ''         # the export's name, with its overload number
    extension: str = ''      # a free function called as extension(*self, args...) in place of a member
    stated: bool = False     # [[stated]]: Java applications link against the bare name


@dataclasses.dataclass
class Record:
    cxx: str                 # C++ name, possibly qualified
    name: str                # bare name, used in export names
    fields: List[Field]
    is_class: bool = False
    functions: List[Function] = dataclasses.field(default_factory=list)
    statics: List[Field] = dataclasses.field(default_factory=list)
    deletable: bool = True
    constructible: bool = True


@dataclasses.dataclass
class Enum:
    cxx: str
    name: str
    constants: List[Tuple[str, str]]   # (export name, C++ expression)


@dataclasses.dataclass
class Module:
    name: str = ''
    package: str = ''
    namespace: str = ''
    java_arrays: bool = False
    includes: List[str] = dataclasses.field(default_factory=list)
    typedefs: Dict[str, str] = dataclasses.field(default_factory=dict)
    records: List[Record] = dataclasses.field(default_factory=list)
    enums: List[Enum] = dataclasses.field(default_factory=list)
    constants: List[Tuple[Type, str, str]] = dataclasses.field(default_factory=list)  # (type, export, expr)
    globals: List[Field] = dataclasses.field(default_factory=list)
    order: List[object] = dataclasses.field(default_factory=list)  # declarations in order


class Parser:
    def __init__(self, text: str, path: str):
        self.path = path
        self.toks = tokenize(text, path)
        self.i = 0
        self.module = Module()

    # -- token helpers
    def peek(self, k: int = 0) -> Optional[str]:
        j = self.i + k
        return self.toks[j].text if j < len(self.toks) else None

    def line(self) -> int:
        if self.i < len(self.toks):
            return self.toks[self.i].line
        return self.toks[-1].line if self.toks else 1

    def fail(self, message: str) -> DescriptionError:
        return DescriptionError(f'{self.path}:{self.line()}: {message}')

    def take(self, expected: Optional[str] = None) -> str:
        if self.i >= len(self.toks):
            raise self.fail(f'unexpected end, expected {expected or "more"}')
        t = self.toks[self.i].text
        if expected is not None and t != expected:
            raise self.fail(f'expected "{expected}", found "{t}"')
        self.i += 1
        return t

    def ident(self) -> str:
        t = self.take()
        if not re.match(r'(::)?[A-Za-z_]', t):
            raise self.fail(f'expected a name, found "{t}"')
        return t

    # -- grammar
    def parse(self) -> Module:
        m = self.module
        while self.peek() is not None:
            word = self.take()
            if word == 'module':
                m.name = self.ident()
            elif word == 'package':
                parts = [self.ident()]
                while self.peek() == '.':
                    self.take('.')
                    parts.append(self.ident())
                m.package = '.'.join(parts)
            elif word == 'namespace':
                m.namespace = self.ident()
            elif word == 'java_arrays':
                m.java_arrays = True
            elif word == 'include':
                inc = self.take()
                if not inc.startswith('"'):
                    raise self.fail('include takes a quoted header name')
                m.includes.append(inc[1:-1])
            elif word == 'typedef':
                name = self.ident()
                target = self.scalar_words(self.type_tokens_until(';'))
                if target not in SCALARS and target not in m.typedefs:
                    raise self.fail(f'typedef {name}: "{target}" is not a scalar type')
                m.typedefs[name] = target
                self.take(';')
            elif word in ('record', 'class'):
                self.record(word == 'class')
            elif word == 'enum':
                self.enum()
            elif word == 'constant':
                t = self.type_until_name()
                name = self.ident()
                expr = name
                if self.peek() == '=':
                    self.take('=')
                    expr = self.take()
                m.constants.append((t, name.split('::')[-1], expr))
                m.order.append(('constant', name.split('::')[-1]))
                self.take(';')
            elif word == 'global':
                line = self.line()
                t = self.type_until_name()
                name = self.ident()
                self.take(';')
                m.globals.append(Field(t, name, None, line))
                m.order.append(('global', name))
            else:
                raise self.fail(f'unknown declaration "{word}"')
        if not m.name or not m.package:
            raise DescriptionError(f'{self.path}: a description needs "module" and "package"')
        return m

    def qualified(self, name: str) -> str:
        if '::' in name or not self.module.namespace:
            return name
        return f'{self.module.namespace}::{name}'

    def record(self, is_class: bool):
        written = self.ident()
        # Records are platform types (global unless qualified); classes are the bridge's, in its namespace. A
        # class may name another C++ type it stands for: `class vectorl = std::vector< unsigned int > {`.
        cxx = self.qualified(written) if is_class else written
        if self.peek() == '=':
            self.take('=')
            cxx = self.make_type(self.type_tokens_until('{', '[[')).base
        attrs = []
        if self.peek() == '[[':
            self.take('[[')
            while self.peek() != ']]':
                attrs.append(self.ident())
                if self.peek() == ',':
                    self.take(',')
            self.take(']]')
        r = Record(cxx=cxx, name=written.split('::')[-1], fields=[], is_class=is_class)
        for a in attrs:
            if a == 'nodelete':
                r.deletable = False
            elif a == 'nonew':
                r.constructible = False
            else:
                raise self.fail(f'unknown attribute "{a}"')
        self.take('{')
        while self.peek() != '}':
            line = self.line()
            stated = False
            if self.peek() == '[[':  # [[stated]]: the export keeps its bare name, never an overload number
                self.take('[[')
                if self.take() != 'stated':
                    raise self.fail('the only attribute of a member is "stated"')
                self.take(']]')
                stated = True
            static = False
            if self.peek() == 'static':
                self.take('static')
                static = True
            if is_class and self.peek() == r.name and self.peek(1) == '(':
                self.take()
                fn = Function(r.name, None, self.params(), False, line, stated=stated)
                if self.peek() == '=':
                    self.take('=')
                    fn.extension = ' '.join(self.type_tokens_until(';'))
                r.functions.append(fn)
                self.take(';')
                continue
            t = self.type_until_name()
            name = self.ident()
            if self.peek() == '(':
                if not is_class:
                    raise self.fail('a record has fields only; declare a class for methods')
                fn = Function(name, t, self.params(), static, line, stated=stated)
                if self.peek() == '=':
                    self.take('=')
                    fn.extension = ' '.join(self.type_tokens_until(';'))
                r.functions.append(fn)
            else:
                count = None
                if self.peek() == '[':
                    self.take('[')
                    count = self.number()
                    self.take(']')
                f = Field(t, name, count, line)
                (r.statics if static else r.fields).append(f)
            self.take(';')
        self.take('}')
        self.module.records.append(r)
        self.module.order.append(('record', r.name))

    def number(self) -> int:
        t = self.take()
        try:
            return int(t, 0)
        except ValueError:
            raise self.fail(f'expected a number, found "{t}"')

    def enum(self):
        written = self.ident()
        self.take('{')
        # Enumerators of a scoped enumeration are reached through its scope; plain ones stand beside it.
        scope = written.rsplit('::', 1)[0] + '::' if '::' in written else ''
        e = Enum(cxx=written, name=written.split('::')[-1], constants=[])
        while self.peek() != '}':
            name = self.ident()
            if self.peek() == '=':  # values come from the C++ declaration; a value here is only a reminder
                self.take('=')
                self.take()
            e.constants.append((name, scope + name))
            if self.peek() == ',':
                self.take(',')
        self.take('}')
        if self.peek() == ';':
            self.take(';')
        self.module.enums.append(e)
        self.module.order.append(('enum', e.name))

    def type_tokens_until(self, *stops: str) -> List[str]:
        out = []
        while self.peek() not in stops:
            out.append(self.take())
        return out

    def scalar_words(self, words: List[str]) -> str:
        text = ' '.join(words)
        return SCALAR_ALIASES.get(text, text)

    def type_until_name(self) -> Type:
        """Reads a type up to the name that follows it (the name is left to read)."""
        words: List[str] = []
        while True:
            t = self.peek()
            if t is None:
                raise self.fail('unexpected end in a type')
            nxt = self.peek(1)
            if re.match(r'[A-Za-z_]', t) and words and nxt in ('(', ';', '[', ',', ')', '='):
                if t not in ('int', 'long', 'char', 'short', 'unsigned', 'signed', 'double', 'float', 'bool'):
                    break
            words.append(self.take())
            if t == '<':
                depth = 1
                while depth:
                    w = self.take()
                    words.append(w)
                    depth += {'<': 1, '>': -1}.get(w, 0)
        return self.make_type(words)

    def make_type(self, words: List[str]) -> Type:
        t = Type(base='')
        rest = []
        for w in words:
            if w == 'const':
                t.const = True
            elif w == '*':
                t.pointer = True
            elif w == '&':
                t.reference = True
            else:
                rest.append(w)
        if not rest:
            raise self.fail('a type without a name')
        base = ' '.join(rest)
        base = re.sub(r'\s*<\s*', '< ', base)
        base = re.sub(r'\s*>', ' >', base)
        t.base = SCALAR_ALIASES.get(base, base)
        return t

    def params(self) -> List[Param]:
        self.take('(')
        out: List[Param] = []
        while self.peek() != ')':
            words = self.type_tokens_until(',', ')', '[')
            array = False
            bound = ''
            if self.peek() == '[':
                self.take('[')
                if self.peek() != ']':
                    bound = self.ident()
                self.take(']')
                array = True
            name = ''
            if (len(words) > 1 and re.match(r'[A-Za-z_]', words[-1]) and
                    words[-1] not in ('int', 'long', 'char', 'short', 'unsigned', 'signed', 'double', 'float',
                                      'bool') and words[-2] not in ('const',)):
                name = words.pop()
            if words == ['void'] and not name:
                break
            out.append(Param(self.make_type(words), name, array, bound))
            if self.peek() == ',':
                self.take(',')
        self.take(')')
        return out


# ---- Resolving types ------------------------------------------------------------------------------------

class Kinds:
    """What each type name of a module is: scalar, enumeration, record or class."""

    def __init__(self, m: Module, path: str):
        self.m = m
        self.path = path
        self.records = {}
        for r in m.records:
            self.records[r.name] = r
            self.records[r.cxx] = r
        self.enums = {}
        for e in m.enums:
            self.enums[e.name] = e
            self.enums[e.cxx] = e

    def scalar(self, base: str) -> Optional[Scalar]:
        seen = set()
        while base in self.m.typedefs and base not in seen:
            seen.add(base)
            base = self.m.typedefs[base]
        return SCALARS.get(base)

    def record(self, base: str) -> Optional[Record]:
        return self.records.get(base) or self.records.get(base.split('::')[-1])

    def enum(self, base: str) -> Optional[Enum]:
        return self.enums.get(base) or self.enums.get(base.split('::')[-1])

    def cxx(self, base: str) -> str:
        """The C++ spelling of a type name."""
        if base in self.m.typedefs:
            return base
        s = SCALARS.get(base)
        if s:
            return s.cxx
        r = self.record(base)
        if r:
            return r.cxx
        e = self.enum(base)
        if e:
            return e.cxx
        return base

    def probe_name(self, base: str) -> str:
        """The name the probe table gives a handle's type: the module's own name of a record or class, else the
        C++ spelling without spaces."""
        r = self.record(base)
        if r:
            return r.name
        return re.sub(r'\s+', '', base)

    def error(self, line: int, message: str) -> DescriptionError:
        return DescriptionError(f'{self.path}:{line}: {message}')


# ---- Writing the exports ----------------------------------------------------------------------------------

def jni_mangle(name: str) -> str:
    out = []
    for ch in name:
        if ch == '_':
            out.append('_1')
        elif ch == '/' or ch == '.':
            out.append('_')
        elif ch == ';':
            out.append('_2')
        elif ch == '[':
            out.append('_3')
        elif ch.isascii() and ch.isalnum():
            out.append(ch)
        else:
            out.append('_0%04x' % ord(ch))
    return ''.join(out)


@dataclasses.dataclass
class Export:
    name: str                      # e.g. cmt_time_getYear
    jni_result: str                # 'void', 'jint', ...
    java_result: str
    params: List[tuple]            # (jni type, C name, Java type[, the argument's role in the probe table])
    body: List[str]                # C++ statements
    uses_env: bool = True
    result_role: str = ''          # what the probe table says of the result (see Generator.probe)


class Generator:
    def __init__(self, m: Module, path: str):
        self.m = m
        self.k = Kinds(m, path)
        self.exports: List[Export] = []

    # -- helpers
    def jclass(self) -> str:
        return 'orvane/qsf/wrapper/' + self.m.package.replace('.', '/') + '/' + self.m.name + 'JNI'

    def symbol(self, export: str) -> str:
        return 'Java_' + jni_mangle(self.jclass()) + '_' + jni_mangle(export)

    def add(self, e: Export):
        self.exports.append(e)

    # -- argument conversion: returns (JNI params, statements before the call, call expression,
    #    statements after the call)
    def convert_param(self, p: Param, n: int, line: int, named: Optional[Dict[str, str]] = None):
        t = p.type
        k = self.k
        j = f'jarg{n}'
        a = f'arg{n}'
        pre: List[str] = []
        post: List[str] = []
        marker = p.name if p.name in ('OUTPUT', 'INOUT') else ''
        s = k.scalar(t.base)
        e = k.enum(t.base)
        r = k.record(t.base)

        if t.base == 'jobject':
            return [('jobject', j, 'Object')], pre, j, post
        if p.array:
            if not s or not s.array:
                raise k.error(line, f'no Java array for elements of "{t.base}"')
            jt = JAVA_ARRAY[s.jni]
            pre.append(f'::jbrg::wrap::array_arg<{s.cxx}, {s.jni}> {a}(jenv, {j});')
            pre.append(f'if (!{a}) return jresult;')
            if p.bound:
                if not named or p.bound not in named:
                    raise k.error(line, f'the size "{p.bound}" of "{p.name}[]" is not an earlier parameter')
                pre.append(f'if (!{a}.covers({named[p.bound]})) return jresult;')
            post.append(f'{a}.store();')
            return [(jt, j, s.java + '[]', 'array:0')], pre, f'{a}.get()', post
        if marker == 'OUTPUT' and (s or e) and (t.pointer or t.reference):
            sc = s or SCALARS['int']
            cx = sc.cxx if s else k.cxx(t.base)
            jt = JAVA_ARRAY[sc.jni]
            pre.append(f'::jbrg::wrap::out_arg<{cx}, {sc.jni}> {a}(jenv, {j});')
            pre.append(f'if (!{a}) return jresult;')
            post.append(f'{a}.store();')
            call = f'{a}.pointer()' if t.pointer else f'{a}.value()'
            return [(jt, j, sc.java + '[]', 'out')], pre, call, post
        if marker == 'INOUT' and t.base == 'std::string' and (t.pointer or t.reference):
            pre.append(f'::jbrg::wrap::string_holder_arg {a}(jenv, {j});')
            pre.append(f'if (!{a}) return jresult;')
            post.append(f'{a}.store();')
            call = f'{a}.pointer()' if t.pointer else f'{a}.value()'
            return [('jobjectArray', j, 'String[]')], pre, call, post
        if marker:
            raise k.error(line, f'{marker} does not apply to "{t.base}"')
        if t.base == 'char' and t.pointer:
            pre.append(f'::jbrg::wrap::cstr_arg {a}(jenv, {j});')
            pre.append(f'if (!{a}.ok()) return jresult;')
            cast = '' if t.const else 'const_cast<char*>'
            return [('jstring', j, 'String')], pre, f'{cast}({a}.get())' if cast else f'{a}.get()', post
        if t.base == 'std::string' and not t.pointer and (not t.reference or t.const):
            pre.append(f'::jbrg::wrap::string_arg {a}(jenv, {j});')
            pre.append(f'if (!{a}) return jresult;')
            return [('jstring', j, 'String')], pre, f'{a}.value()', post
        if (s or e) and not t.pointer and not t.reference or (s or e) and t.reference and t.const:
            if s:
                return [(s.jni, j, s.java)], pre, f'static_cast<{k.cxx(t.base)}>({j})', post
            return [('jint', j, 'int')], pre, f'static_cast<{e.cxx}>({j})', post
        # Everything else crosses as a handle, followed by its Java owner.
        cx = k.cxx(t.base)
        params = [('jlong', j, 'long', 'handle:' + k.probe_name(t.base)), ('jobject', '', 'Object')]
        if t.reference:
            msg = f'{t.declared()} & reference is null'
            pre.append(f'auto* {a} = ::jbrg::wrap::reference<{cx}>(jenv, {j}, "{msg}");')
            pre.append(f'if (!{a}) return jresult;')
            return params, pre, f'*{a}', post
        if t.pointer:
            return params, pre, f'::orvane::from_handle<{cx}>({j})', post
        if r or t.base.startswith('std::'):
            pre.append(f'auto* {a} = ::jbrg::wrap::reference<{cx}>(jenv, {j}, '
                       f'"Attempt to dereference null {t.base}");')
            pre.append(f'if (!{a}) return jresult;')
            return params, pre, f'*{a}', post
        raise k.error(line, f'unknown type "{t.base}"')

    def convert_result(self, t: Optional[Type], line: int):
        """(JNI result type, Java type, statements storing `result` into `jresult`)."""
        k = self.k
        if t is None or (t.base == 'void' and not t.pointer):
            return 'void', 'void', []
        if t.base == 'jobject':
            return 'jobject', 'Object', ['jresult = result;']
        s = k.scalar(t.base)
        e = k.enum(t.base)
        if t.base == 'char' and t.pointer:
            return 'jstring', 'String', ['jresult = ::jbrg::wrap::new_string(jenv, result);']
        if t.base == 'std::string' and not t.pointer:
            return 'jstring', 'String', ['jresult = ::jbrg::wrap::new_string(jenv, result);']
        if s and not t.pointer:
            if s.jni == 'jboolean':
                return 'jboolean', 'boolean', ['jresult = result ? JNI_TRUE : JNI_FALSE;']
            return s.jni, s.java, [f'jresult = static_cast<{s.jni}>(result);']
        if e and not t.pointer:
            return 'jint', 'int', ['jresult = static_cast<jint>(result);']
        cx = k.cxx(t.base)
        if t.pointer:
            return 'jlong', 'long', ['jresult = ::orvane::to_handle(result);']
        if t.reference:
            return 'jlong', 'long', ['jresult = ::orvane::to_handle(&result);']
        # A record returned by value: a heap copy that Java deletes with delete_<RECORD>.
        return 'jlong', 'long', [f'jresult = ::jbrg::wrap::adopt(new {cx}(result));']

    def call_export(self, name: str, params: List[Param], result: Optional[Type], line: int,
                    self_type: Optional[str], call: str, constructor: Optional[str] = None,
                    extension: str = ''):
        jparams: List[Tuple[str, str, str]] = []
        body: List[str] = []
        post: List[str] = []
        args: List[str] = []
        n = 1
        if self_type:
            jparams += [('jlong', 'jarg1', 'long', 'self:' + self.k.probe_name(self_type)), ('jobject', '', 'Object')]
            body.append(f'auto* self = ::orvane::from_handle<{self_type}>(jarg1);')
            body.append('if (self == nullptr) return jresult;')
            n = 2
        named: Dict[str, str] = {}
        for p in params:
            jp, pre, expr, after = self.convert_param(p, n, line, named)
            if p.name:
                named[p.name] = expr
            jparams += jp
            body += pre
            post += after
            args.append(expr)
            n += 1
        if constructor:
            jres, jjava, store = 'jlong', 'long', ['jresult = ::jbrg::wrap::adopt(result);']
            if extension:  # a factory standing for the constructor: `T(args) = f;`
                body.append(f'{constructor}* result = {extension}({", ".join(args)});')
            else:
                body.append(f'{constructor}* result = new {constructor}({", ".join(args)});')
        else:
            jres, jjava, store = self.convert_result(result, line)
            target = f'self->{call}' if self_type else call
            if extension:
                invocation = f'{extension}({", ".join(["*self"] + args)})'
            else:
                invocation = f'{target}({", ".join(args)})'
            if jres == 'void':
                body.append(f'{invocation};')
            elif result is not None and result.reference and not result.const and jres == 'jlong':
                body.append(f'auto& result = {invocation};')
            else:
                body.append(f'auto&& result = {invocation};')
        body += post
        body += store
        self.add(Export(name, jres, jjava, jparams, body, result_role=self.result_role(result, jjava, constructor)))

    def result_role(self, result: Optional[Type], java: str, constructor: Optional[str] = None) -> str:
        """What the probe table says of a result: `new:T` for an object Java then owns, `ref:T` for one it
        does not, else the Java type."""
        k = self.k
        if constructor:
            return 'new:' + k.probe_name(constructor)
        if result is None or java != 'long' or (not result.pointer and not result.reference and
                                                (k.scalar(result.base) or k.enum(result.base))):
            return java
        owned = not result.pointer and not result.reference
        return ('new:' if owned else 'ref:') + k.probe_name(result.base)

    # -- the families
    def record_exports(self, r: Record):
        k = self.k
        if r.constructible and not any(f.result is None for f in r.functions):
            if not r.is_class:
                self.add(Export(f'new_{r.name}', 'jlong', 'long', [],
                                [f'jresult = ::jbrg::wrap::adopt(new {r.cxx}());'], uses_env=False,
                                result_role='new:' + r.name))
        # Fields.
        for f in r.fields:
            self.field_exports(f'{r.name}_{f.name}', f, f'self->{f.name}', r.cxx)
        # Constructors and methods, overloads numbered in declaration order.
        counts: Dict[str, int] = {}
        for fn in r.functions:
            key = 'new' if fn.result is None else fn.name
            counts[key] = counts.get(key, 0) + 1
        seen: Dict[str, int] = {}
        for fn in r.functions:
            key = 'new' if fn.result is None else fn.name
            base = f'new_{r.name}' if fn.result is None else f'{r.name}_{fn.name}'
            if counts[key] > 1:
                base += f'__SWIG_{seen.get(key, 0)}'
            seen[key] = seen.get(key, 0) + 1
            fn.export = base
            if fn.result is None:
                self.call_export(base, fn.params, None, fn.line, None, '', constructor=r.cxx,
                                 extension=fn.extension)
            elif fn.static:
                self.call_export(base, fn.params, fn.result, fn.line, None, f'{r.cxx}::{fn.name}')
            else:
                self.call_export(base, fn.params, fn.result, fn.line, r.cxx, fn.name, extension=fn.extension)
        for f in r.statics:
            self.field_exports(f'{r.name}_{f.name}', f, f'{r.cxx}::{f.name}', None)
        if r.deletable:
            self.add(Export(f'delete_{r.name}', 'void', 'void', [('jlong', 'jarg1', 'long', 'dispose:' + r.name)],
                            [f'::jbrg::wrap::dispose<{r.cxx}>(jarg1);'], uses_env=False))

    def field_exports(self, prefix: str, f: Field, lvalue: str, owner: Optional[str]):
        """`<prefix>_set` and `<prefix>_get` of a record field, static member or global."""
        k = self.k
        t = f.type
        s = k.scalar(t.base)
        e = k.enum(t.base)
        r = k.record(t.base)
        own: List[Tuple[str, str, str]] = []
        guard: List[str] = []
        if owner:
            own = [('jlong', 'jarg1', 'long', 'self:' + k.probe_name(owner)), ('jobject', '', 'Object')]
            # A zero owner handle reaches no record: the setter does nothing, the getter answers zero.
            guard = [f'auto* self = ::orvane::from_handle<{owner}>(jarg1);', 'if (self == nullptr) return jresult;']
        v = 'jarg2' if owner else 'jarg1'

        def both(set_param, set_body, get_result, get_java, get_body, set_uses_env=True):
            self.add(Export(f'{prefix}_set', 'void', 'void', own + [set_param], guard + set_body,
                            uses_env=set_uses_env))
            self.add(Export(f'{prefix}_get', get_result, get_java, list(own), guard + get_body))

        if f.count is not None:
            if t.base == 'char' and not t.pointer:
                both(('jstring', v, 'String', f'text:{f.count}'),
                     [f'::jbrg::wrap::set_text(jenv, {lvalue}, {f.count}, {v});'],
                     'jstring', 'String', [f'jresult = ::jbrg::wrap::get_text(jenv, {lvalue}, {f.count});'])
                return
            if s and s.array and self.m.java_arrays:
                jt = JAVA_ARRAY[s.jni]
                both((jt, v, s.java + '[]', f'array:{f.count}'),
                     [f'::jbrg::wrap::set_array_field<{s.cxx}, {s.jni}>(jenv, {lvalue}, {f.count}, {v});'],
                     jt, s.java + '[]',
                     [f'jresult = SWIG_JavaArrayOut{s.array}(jenv, {lvalue}, {f.count});'])
                return
            if s or e or r:
                cx = k.cxx(t.base)
                # Arrays of modules without Java arrays cross as the address of their first element.
                both(('jlong', v, 'long', f'source:{k.probe_name(t.base)}:{f.count}'),
                     [f'::jbrg::wrap::copy_elements<{cx}>(jenv, {lvalue}, {f.count}, {v});'],
                     'jlong', 'long', [f'jresult = ::orvane::to_handle(&{lvalue}[0]);'])
                if r:
                    # The source of an array of records is a record handle, followed by its owner as every
                    # record handle is; a primitive array's bare address has none.
                    self.exports[-2].params.append(('jobject', '', 'Object'))
                return
            raise k.error(f.line, f'no array field of "{t.base}"')
        if t.base == 'std::string' and not t.pointer:
            both(('jstring', v, 'String'),
                 [f'::jbrg::wrap::string_arg value(jenv, {v});', 'if (!value) return jresult;',
                  f'{lvalue} = value.value();'],
                 'jstring', 'String', [f'jresult = ::jbrg::wrap::new_string(jenv, {lvalue});'])
            return
        if t.base == 'char' and t.pointer:
            raise k.error(f.line, 'a char* field has no owner for its text; use char name[N]')
        if (s or e) and not t.pointer:
            if s:
                store = f'{lvalue} = static_cast<{k.cxx(t.base)}>({v});'
                jres, jjava = s.jni, s.java
                load = (f'jresult = {lvalue} ? JNI_TRUE : JNI_FALSE;' if s.jni == 'jboolean'
                        else f'jresult = static_cast<{s.jni}>({lvalue});')
            else:
                store = f'{lvalue} = static_cast<{e.cxx}>({v});'
                jres, jjava = 'jint', 'int'
                load = f'jresult = static_cast<jint>({lvalue});'
            both((jres, v, jjava), [store], jres, jjava, [load], set_uses_env=False)
            return
        if r and not t.pointer:
            cx = r.cxx
            both(('jlong', v, 'long', 'handle:' + k.probe_name(t.base)),
                 [f'auto* value = ::jbrg::wrap::reference<{cx}>(jenv, {v}, "Attempt to dereference null {t.base}");',
                  'if (!value) return jresult;', f'{lvalue} = *value;'],
                 'jlong', 'long', [f'jresult = ::orvane::to_handle(&{lvalue});'])
            # The setter's second argument is a handle too, followed by its owner.
            self.exports[-2].params.append(('jobject', '', 'Object'))
            return
        raise k.error(f.line, f'no field of type "{t.base}"')

    def generate(self):
        for kind, name in self.m.order:
            if kind == 'record':
                self.record_exports(next(r for r in self.m.records if r.name == name))
            elif kind == 'enum':
                e = next(x for x in self.m.enums if x.name == name)
                for export, expr in e.constants:
                    self.add(Export(f'{export}_get', 'jint', 'int', [],
                                    [f'jresult = static_cast<jint>({expr});'], uses_env=False))
            elif kind == 'constant':
                t, export, expr = next(c for c in self.m.constants if c[1] == name)
                jres, jjava, store = self.convert_result(t, 0)
                self.add(Export(f'{export}_get', jres, jjava, [],
                                [f'auto&& result = {expr};'] + store,
                                uses_env=jres == 'jstring'))
            elif kind == 'global':
                g = next(x for x in self.m.globals if x.name == name)
                self.field_exports(g.name, g, g.name, None)
        names = [e.name for e in self.exports]
        dup = {n for n in names if names.count(n) > 1}
        if dup:
            raise DescriptionError(f'{self.k.path}: exports named twice: {", ".join(sorted(dup))}')

    # -- output
    def cpp(self, header: str) -> str:
        out = [
            f'// Generated from {self.m.name}.wrap by tools/wrapgen/wrapgen.py: do not edit.',
            f'// The natives of orvane.qsf.wrapper.{self.m.package}.{self.m.name}JNI.',
            '#include <jni.h>',
            '',
        ]
        for inc in self.m.includes:
            out.append(f'#include "{inc}"')
        out += ['#include "wrapper/runtime/wrap_runtime.h"', f'#include "{header}"', '', 'extern "C" {', '']
        for e in self.exports:
            params = ['JNIEnv* jenv', 'jclass'] + [f'{p[0]} {p[1]}'.rstrip() for p in e.params]
            out.append(f'JNIEXPORT {e.jni_result} JNICALL {self.symbol(e.name)}({", ".join(params)}) {{')
            void = e.jni_result == 'void'
            if not void:
                out.append(f'    {e.jni_result} jresult = {{}};')
            out.append('    try {')
            for line in e.body:
                out.append('        ' + (line.replace('return jresult;', 'return;') if void else line))
            out.append('    } catch (...) {')
            out.append('        ::jbrg::wrap::throw_cxx_exception(jenv);')
            out.append('    }')
            if not void:
                out.append('    return jresult;')
            out.append('}')
            out.append('')
        out += ['}  // extern "C"', '']
        return '\n'.join(out)

    def java(self) -> str:
        out = [
            f'/* Generated from {self.m.name}.wrap by tools/wrapgen/wrapgen.py: do not edit. */',
            f'package orvane.qsf.wrapper.{self.m.package};',
            '',
            f'/** The natives of the {self.m.name} module. */',
            f'public class {self.m.name}JNI {{',
        ]
        for e in self.exports:
            args = []
            for i, p in enumerate(e.params):
                n, jt = p[1], p[2]
                pname = n if n else (e.params[i - 1][1] + '_')
                args.append(f'{jt} {pname}')
            out.append(f'  public final static native {e.java_result} {e.name}({", ".join(args)});')
        out += ['}', '']
        return '\n'.join(out)

    def manifest(self) -> str:
        return '\n'.join(sorted(self.symbol(e.name) for e in self.exports)) + '\n'

    def stated(self) -> str:
        """The JNI names of the exports marked [[stated]]: Java applications link against them as they stand, so
        each must be exported under exactly that name (an overload number would rename it)."""
        names = []
        for r in self.m.records:
            for fn in r.functions:
                if fn.stated:
                    names.append(f'new_{r.name}' if fn.result is None else f'{r.name}_{fn.name}')
        return ''.join(self.symbol(n) + '\n' for n in sorted(set(names)))

    def probe(self) -> str:
        """The module's exports as the hostile-argument probe calls them, one a line:

            <export> <result> <argument> ...

        A result is `void`, a Java type, `new:T` (an object Java then owns and deletes with delete_T) or `ref:T`
        (one it does not own). An argument is a Java type (`int`, `long`, `String`, `Object`, ...) or one of
        `self:T` (the object a method or field accessor acts on), `owner` (the Java owner after a handle),
        `handle:T` (another object or record), `dispose:T` (what delete_T frees), `source:T:N` (the source of
        an array field of N elements, by address), `text:N` (a text field of capacity N), `array:N` (a Java
        array, N elements exactly for a field, 0 when any length goes) and `out` (a one-element out-array)."""
        out = [f'# {self.m.name} {self.jclass()}']
        for e in self.exports:
            roles = []
            for p in e.params:
                if len(p) > 3:
                    roles.append(p[3])
                elif p[2] == 'Object':
                    roles.append('owner' if not p[1] else 'Object')
                else:
                    roles.append(p[2])
            out.append(' '.join([e.name, e.result_role or e.java_result] + roles))
        return '\n'.join(out) + '\n'


def header_name(m: Module) -> str:
    # javac -h names the header after the class, its dots as underscores (no further escaping).
    return ('orvane.qsf.wrapper.' + m.package + '.' + m.name + 'JNI').replace('.', '_') + '.h'


def write_if_changed(path: str, text: str):
    os.makedirs(os.path.dirname(path) or '.', exist_ok=True)
    try:
        with open(path, encoding='utf-8') as f:
            if f.read() == text:
                return
    except FileNotFoundError:
        pass
    with open(path, 'w', encoding='utf-8') as f:
        f.write(text)


def main(argv: List[str]) -> int:
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument('description', help='the module description (.wrap)')
    ap.add_argument('--cpp', help='where to write the C++ exports')
    ap.add_argument('--java-root', help='root folder of the generated Java sources')
    ap.add_argument('--manifest', help='where to write the sorted export names')
    ap.add_argument('--stated', help='where to write the export names Java applications link against as stated')
    ap.add_argument('--probe', help='where to write the table of exports the hostile-argument probe calls')
    ap.add_argument('--module', help='the module the description must declare (its file name)')
    ap.add_argument('--package', help='the package the description must declare (its folder)')
    ap.add_argument('--print', choices=['header', 'java', 'module', 'count'],
                    help='print one fact about the module and stop')
    args = ap.parse_args(argv)
    try:
        with open(args.description, encoding='utf-8') as f:
            module = Parser(f.read(), args.description).parse()
        for what, expected, found in (('module', args.module, module.name),
                                      ('package', args.package, module.package)):
            if expected is not None and expected != found:
                raise DescriptionError(f'{args.description}: declares {what} "{found}", '
                                       f'but its place in the tree says "{expected}"')
        gen = Generator(module, args.description)
        gen.generate()
    except DescriptionError as error:
        print(f'wrapgen: {error}', file=sys.stderr)
        return 1
    java_rel = 'orvane/qsf/wrapper/' + module.package.replace('.', '/') + f'/{module.name}JNI.java'
    if args.print == 'header':
        print(header_name(module))
        return 0
    if args.print == 'java':
        print(java_rel)
        return 0
    if args.print == 'module':
        print(module.name)
        return 0
    if args.print == 'count':
        print(len(gen.exports))
        return 0
    if args.cpp:
        write_if_changed(args.cpp, gen.cpp(header_name(module)))
    if args.java_root:
        write_if_changed(os.path.join(args.java_root, java_rel), gen.java())
    if args.manifest:
        write_if_changed(args.manifest, gen.manifest())
    if args.stated:
        write_if_changed(args.stated, gen.stated())
    if args.probe:
        write_if_changed(args.probe, gen.probe())
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
