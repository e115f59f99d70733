#!/usr/bin/env python3
"""The wrapper generator: one declarative module description in, the module's Java natives out.

A description (`wrapper/<package>/<module>.wrap`) lists what one Java module exposes: records with their fields,
classes with their constructors, methods and static members, enumerations, constants and globals. From it this
generator writes, into the build folder:

  <module>_wrap.cpp               the C++ exports, one JNI function per export
  java/orvane/qsf/wrapper/<package path>/<module>JNI.java
                                  the Java class with the matching `native` declarations
  <module>.exports                the sorted JNI names of the exports (the module's manifest)
  <module>.stated, <module>.probe the names marked [[stated]], the table the hostile-argument probe calls

The build compiles the Java classes with `javac -h` and the C++ file against the header javac writes, so every
export's name and signature is exactly what Java resolves. The conventions the exports follow (value mapping,
handles, argument checks and their exception texts, array conversion) live in the runtime,
`wrapper/runtime/wrap_runtime.h`; this generator only decides which of them each export uses: how each parameter
and result type crosses is one row of the type map (TYPE_MAP below), looked up by the type's kind and shape.

A record or constant that several modules expose is described once, in a shared part
(`wrapper/shared/<name>.wrapi`), which each of those modules takes in with `use "shared/<name>.wrapi"`: the
modules cannot come to disagree about it. `--depfile` names the parts a module used, so that the build
regenerates every module that uses a part when the part changes.

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
    to_jni: str = 'static_cast<{jni}>({v})'  # a value {v} of the type as its JNI value

    def load(self, value: str) -> str:
        return self.to_jni.format(jni=self.jni, v=value)


SCALARS: Dict[str, Scalar] = {
    'bool': Scalar('bool', 'jboolean', 'boolean', 'Bool', '{v} ? JNI_TRUE : JNI_FALSE'),
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


class SourceLine(int):
    """A line number that knows its file, so that a declaration taken in from a shared part is reported where
    it is written."""
    path: str

    def __new__(cls, value: int, path: str):
        line = int.__new__(cls, value)
        line.path = path
        return line


def where(path: str, line: int) -> str:
    """`file:line` of a declaration: its own file when it came from a shared part, else `path`."""
    return f'{getattr(line, "path", path)}:{line}'


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
    filled: bool = False  # written `name[size, OUTPUT]`: the callee fills it and reports how much in its OUTPUT


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
    stated: bool = False     # [[stated]]: Java applications link against the export's name as it stands
    stated_overload: Optional[int] = None  # [[stated(N)]]: the overload number that name carries (__SWIG_N)


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
    parts: List[str] = dataclasses.field(default_factory=list)     # shared parts used, as files


# The extension of a shared part: not `.wrap`, so that the build does not take a part for a module.
PART_SUFFIX = '.wrapi'


class Parser:
    def __init__(self, text: str, path: str, module: Optional[Module] = None, part: bool = False):
        self.path = path
        self.toks = tokenize(text, path)
        self.i = 0
        self.module = module if module is not None else Module()
        self.part = part   # a shared part declares records, enumerations, typedefs, constants and includes only

    # -- token helpers
    def peek(self, k: int = 0) -> Optional[str]:
        j = self.i + k
        return self.toks[j].text if j < len(self.toks) else None

    def line(self) -> SourceLine:
        if self.i < len(self.toks):
            return SourceLine(self.toks[self.i].line, self.path)
        return SourceLine(self.toks[-1].line if self.toks else 1, self.path)

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
            if self.part and word in ('module', 'package', 'namespace', 'java_arrays', 'use'):
                raise self.fail(f'a shared part cannot declare "{word}": that is its modules\' business')
            if word == 'use':
                self.use()
            elif word == 'module':
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
                if inc[1:-1] not in m.includes:
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
        if not self.part and (not m.name or not m.package):
            raise DescriptionError(f'{self.path}: a description needs "module" and "package"')
        return m

    def use(self):
        """`use "shared/<name>.wrapi"`: the declarations of a shared part, taken in here as if written here. The
        path is relative to the folder of the package folders (`wrapper/`), found from the module's package."""
        written = self.take()
        if not written.startswith('"') or not written[1:-1].endswith(PART_SUFFIX):
            raise self.fail(f'use takes a quoted shared part, "<folder>/<name>{PART_SUFFIX}"')
        if not self.module.package:
            raise self.fail('"use" comes after "package", which tells where the shared parts are')
        root = os.path.dirname(os.path.abspath(self.path))
        for _ in self.module.package.split('.'):
            root = os.path.dirname(root)
        part = os.path.normpath(os.path.join(root, written[1:-1]))
        if part in self.module.parts:
            raise self.fail(f'{written[1:-1]} is used twice')
        try:
            with open(part, encoding='utf-8') as f:
                text = f.read()
        except OSError as error:
            raise self.fail(f'cannot read shared part {written[1:-1]}: {error.strerror}')
        self.module.parts.append(part)
        Parser(text, part, self.module, part=True).parse()

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
            stated_overload = None
            # [[stated]]: Java applications link against the export's name as it stands; an overloaded member
            # carries the number its name has, [[stated(N)]] for __SWIG_N, so that a change of numbering fails.
            if self.peek() == '[[':
                self.take('[[')
                if self.take() != 'stated':
                    raise self.fail('the only attribute of a member is "stated"')
                if self.peek() == '(':
                    self.take('(')
                    number = self.take()
                    if not number.isdigit():
                        raise self.fail('[[stated(N)]] takes the overload number N')
                    stated_overload = int(number)
                    self.take(')')
                self.take(']]')
                stated = True
            static = False
            if self.peek() == 'static':
                self.take('static')
                static = True
            if is_class and self.peek() == r.name and self.peek(1) == '(':
                self.take()
                fn = Function(r.name, None, self.params(), False, line, stated=stated, stated_overload=stated_overload)
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
                fn = Function(name, t, self.params(), static, line, stated=stated, stated_overload=stated_overload)
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
            filled = False
            if self.peek() == '[':
                self.take('[')
                if self.peek() != ']':
                    bound = self.ident()
                if self.peek() == ',':
                    self.take(',')
                    self.take('OUTPUT')
                    filled = True
                self.take(']')
                array = True
            name = ''
            if (len(words) > 1 and re.match(r'[A-Za-z_]', words[-1]) and
                    words[-1] not in ('int', 'long', 'char', 'short', 'unsigned', 'signed', 'double', 'float',
                                      'bool') and words[-2] not in ('const',)):
                name = words.pop()
            if words == ['void'] and not name:
                break
            out.append(Param(self.make_type(words), name, array, bound, filled))
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

    def element(self, base: str) -> Optional[Scalar]:
        """How a scalar, a typedef of one or an enumeration crosses; an enumeration is a plain jint."""
        s = self.scalar(base)
        if s:
            return s
        e = self.enum(base)
        return Scalar(e.cxx, 'jint', 'int', None) if e else None

    def kind(self, base: str) -> str:
        """The kind of a type name, as the type map's rows name it."""
        if base in ('jobject', 'void', 'char'):
            return base
        if base == 'std::string':
            return 'string'
        if self.element(base):
            return 'scalar'
        if self.record(base) or base.startswith('std::'):
            return 'record'
        return 'unknown'

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
        return DescriptionError(f'{where(self.path, line)}: module {self.m.name}: {message}')


# ---- The type map -----------------------------------------------------------------------------------------
#
# How every parameter and result type crosses the Java boundary: one row per kind of type name and the shape it
# is written in. A kind is what the module says the name is (Kinds.kind):
#
#   scalar   a scalar, a typedef of one or an enumeration (which crosses as a plain jint)
#   char     char, as in `const char*`
#   string   std::string
#   record   a record or class of the module, or a standard library type standing for one
#   jobject  a Java object passed through
#   void     no value
#   unknown  any other name: the platform's opaque types, which cross by pointer or reference only
#
# and a shape is how the type is written around the name: T, const T&, T&, T*, const T*, T* OUTPUT,
# T& OUTPUT, T* INOUT, T& INOUT, T[] (Generator.shape). A type whose kind has no row for its shape falls back to
# the `handle` rows when the shape is a pointer or reference: every other object crosses as a handle followed
# by its Java owner. A type that matches no row is refused, naming the module, the line and the type.
#
# The texts are templates: {j} is the JNI argument, {a} the converted argument; {cx} the C++ spelling of the
# type, {base} the type as written, {decl} as the null-reference messages quote it, {probe} its name in the
# probe table; of a scalar, {scx} its C++ type, {jni} / {java} the JNI and Java types it crosses as, {jarray}
# its JNI array type and {load} the `result` of that type as its JNI value.

@dataclasses.dataclass(frozen=True)
class ArgIn:
    """A type as an argument: what Java passes, how it is checked and converted, what the call receives."""
    jni: str
    java: str
    role: str                      # the argument's role in the probe table
    before: Tuple[str, ...]        # statements before the call (the checks return at once after a throw)
    call: str                      # the argument as the call receives it
    after: Tuple[str, ...] = ()    # statements after the call (out-values written back)
    handle: bool = False           # a handle, followed by its Java owner


@dataclasses.dataclass(frozen=True)
class ResultOut:
    """A type as a result: what Java receives and how `result` is stored into `jresult`."""
    jni: str
    java: str
    role: str                      # the result's role in the probe table
    store: Tuple[str, ...]
    bind: str = 'auto&&'           # how the call's result is bound


@dataclasses.dataclass(frozen=True)
class TypeRow:
    kind: str
    shape: str
    arg: Optional[ArgIn]           # None: not an argument
    result: Optional[ResultOut]    # None: not a result


_CHECKED = 'if (!{a}) return jresult;'
_STORE = ('{a}.store();',)
SCALAR_IN = ArgIn('{jni}', '{java}', '{java}', (), 'static_cast<{cx}>({j})')
SCALAR_OUT = ResultOut('{jni}', '{java}', '{java}', ('jresult = {load};',))
STRING_IN = ArgIn('jstring', 'String', 'String', ('::jbrg::wrap::string_arg {a}(jenv, {j});', _CHECKED), '{a}.value()')
STRING_OUT = ResultOut('jstring', 'String', 'String', ('jresult = ::jbrg::wrap::new_string(jenv, result);',))
CSTR_BEFORE = ('::jbrg::wrap::cstr_arg {a}(jenv, {j});', 'if (!{a}.ok()) return jresult;')
OUT_BEFORE = ('::jbrg::wrap::out_arg<{scx}, {jni}> {a}(jenv, {j});', _CHECKED)
HOLDER_BEFORE = ('::jbrg::wrap::string_holder_arg {a}(jenv, {j});', _CHECKED)
# A zero handle for a reference throws NullPointerException, the class is not called.
HANDLE_REF_IN = ArgIn('jlong', 'long', 'handle:{probe}', (
    'auto* {a} = ::jbrg::wrap::reference<{cx}>(jenv, {j}, "{decl} & reference is null");', _CHECKED), '*{a}',
    handle=True)
# A zero handle for a pointer is passed on as a null pointer: the classes take it as "none".
HANDLE_PTR_IN = ArgIn('jlong', 'long', 'handle:{probe}', (), '::orvane::from_handle<{cx}>({j})', handle=True)
HANDLE_PTR_OUT = ResultOut('jlong', 'long', 'ref:{probe}', ('jresult = ::orvane::to_handle(result);',))
HANDLE_REF_OUT = ResultOut('jlong', 'long', 'ref:{probe}', ('jresult = ::orvane::to_handle(&result);',))

TYPE_MAP: Tuple[TypeRow, ...] = (
    TypeRow('jobject', 'T', ArgIn('jobject', 'Object', 'Object', (), '{j}'),
            ResultOut('jobject', 'Object', 'Object', ('jresult = result;',))),
    TypeRow('void', 'T', None, ResultOut('void', 'void', 'void', ())),
    # Scalars by value or const reference: the value, narrowed or widened (an unsigned 32-bit value keeps the
    # low 32 bits of the Java long).
    TypeRow('scalar', 'T', SCALAR_IN, SCALAR_OUT),
    TypeRow('scalar', 'const T&', SCALAR_IN, SCALAR_OUT),
    # A scalar the callee may change is an object of its own, given by handle; returned, its value.
    TypeRow('scalar', 'T&', HANDLE_REF_IN, SCALAR_OUT),
    TypeRow('scalar', 'T* OUTPUT', ArgIn('{jarray}', '{java}[]', 'out', OUT_BEFORE, '{a}.pointer()', _STORE), None),
    TypeRow('scalar', 'T& OUTPUT', ArgIn('{jarray}', '{java}[]', 'out', OUT_BEFORE, '{a}.value()', _STORE), None),
    TypeRow('scalar', 'T[]', ArgIn('{jarray}', '{java}[]', 'array:0', (
        '::jbrg::wrap::array_arg<{scx}, {jni}> {a}(jenv, {j});', _CHECKED), '{a}.get()', _STORE), None),
    # Texts: a null const char* is a null pointer; a null std::string throws.
    TypeRow('char', 'T*', ArgIn('jstring', 'String', 'String', CSTR_BEFORE, 'const_cast<char*>({a}.get())'),
            STRING_OUT),
    TypeRow('char', 'const T*', ArgIn('jstring', 'String', 'String', CSTR_BEFORE, '{a}.get()'), STRING_OUT),
    TypeRow('string', 'T', STRING_IN, STRING_OUT),
    TypeRow('string', 'const T&', STRING_IN, STRING_OUT),
    TypeRow('string', 'T&', HANDLE_REF_IN, STRING_OUT),
    TypeRow('string', 'T* INOUT', ArgIn('jobjectArray', 'String[]', 'String[]', HOLDER_BEFORE, '{a}.pointer()',
                                        _STORE), None),
    TypeRow('string', 'T& INOUT', ArgIn('jobjectArray', 'String[]', 'String[]', HOLDER_BEFORE, '{a}.value()',
                                        _STORE), None),
    # A record by value: the argument is copied from a handle; the result is a heap copy Java owns.
    TypeRow('record', 'T', ArgIn('jlong', 'long', 'handle:{probe}', (
        'auto* {a} = ::jbrg::wrap::reference<{cx}>(jenv, {j}, "Attempt to dereference null {base}");', _CHECKED),
        '*{a}', handle=True),
        ResultOut('jlong', 'long', 'new:{probe}', ('jresult = ::jbrg::wrap::adopt(new {cx}(result));',))),
    # Everything else by pointer or reference.
    TypeRow('handle', 'T&', HANDLE_REF_IN, dataclasses.replace(HANDLE_REF_OUT, bind='auto&')),
    TypeRow('handle', 'const T&', HANDLE_REF_IN, HANDLE_REF_OUT),
    TypeRow('handle', 'T*', HANDLE_PTR_IN, HANDLE_PTR_OUT),
    TypeRow('handle', 'const T*', HANDLE_PTR_IN, HANDLE_PTR_OUT),
)
ROWS: Dict[Tuple[str, str], TypeRow] = {(row.kind, row.shape): row for row in TYPE_MAP}


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


@dataclasses.dataclass(frozen=True)
class JParam:
    jni: str
    name: str                      # '' for the Java owner that follows a handle
    java: str
    role: str                      # the argument's role in the probe table (see Generator.probe)


OWNER = JParam('jobject', '', 'Object', 'owner')


@dataclasses.dataclass(frozen=True)
class Export:
    name: str                      # e.g. cmt_time_getYear
    jni_result: str                # 'void', 'jint', ...
    java_result: str
    params: Tuple[JParam, ...]
    body: Tuple[str, ...]          # C++ statements
    result_role: str = ''          # what the probe table says of the result (see Generator.probe)


class Generator:
    def __init__(self, m: Module, path: str):
        self.m = m
        self.path = path
        self.k = Kinds(m, path)
        self.exports: List[Export] = []

    # -- helpers
    def jclass(self) -> str:
        return 'orvane/qsf/wrapper/' + self.m.package.replace('.', '/') + '/' + self.m.name + 'JNI'

    def symbol(self, export: str) -> str:
        return 'Java_' + jni_mangle(self.jclass()) + '_' + jni_mangle(export)

    def add(self, name: str, jni_result: str, java_result: str, params: List[JParam], body: List[str],
            result_role: str = ''):
        """Records one export, complete: nothing changes it once it is recorded."""
        self.exports.append(Export(name, jni_result, java_result, tuple(params), tuple(body), result_role))

    # -- the type map
    @staticmethod
    def shape(t: Type, p: Optional[Param] = None) -> str:
        """How a type is written around its name, as the type map's rows name it."""
        if p is not None and p.array:
            return 'T[]'
        if t.pointer and t.reference:
            return 'T*&'   # a pointer passed by reference: no row takes it, neither a value nor a handle
        core = 'T*' if t.pointer else 'T&' if t.reference else 'T'
        if p is not None and p.name in ('OUTPUT', 'INOUT'):
            return f'{core} {p.name}'   # the marker decides, whatever the constness
        return 'const ' + core if t.const and core != 'T' else core

    def row(self, t: Type, shape: str, line: int, side: str) -> TypeRow:
        """The row of the type map for a type in the given shape, as an argument or a result (side)."""
        kind = self.k.kind(t.base)
        row = ROWS.get((kind, shape))
        if row is None and kind != 'jobject':
            row = ROWS.get(('handle', shape))
        if row is not None and getattr(row, side) is not None:
            if shape != 'T[]' or self.k.element(t.base).array:
                return row
        if shape == 'T[]':
            raise self.k.error(line, f'no Java array for elements of "{t.base}"')
        if shape.endswith(('OUTPUT', 'INOUT')):
            raise self.k.error(line, f'{shape.split()[-1]} does not apply to "{t.base}"')
        if kind == 'unknown':
            raise self.k.error(line, f'unknown type "{t.base}": declare it as a record, class, enum or typedef, '
                                     'or pass it by pointer or reference')
        raise self.k.error(line, f'"{t.base}" does not cross to Java as {shape} '
                                 f'({"an argument" if side == "arg" else "a result"})')

    def fill(self, text: str, t: Type, n: int = 0) -> str:
        """A template of the type map filled in for type t (argument n)."""
        k = self.k
        values = dict(j=f'jarg{n}', a=f'arg{n}', cx=k.cxx(t.base), base=t.base, decl=t.declared(),
                      probe=k.probe_name(t.base))
        el = k.element(t.base)
        if el:
            values.update(scx=el.cxx, jni=el.jni, java=el.java, jarray=JAVA_ARRAY[el.jni], load=el.load('result'))
        return text.format(**values)

    def convert_param(self, p: Param, n: int, line: int, named: Dict[str, str]):
        """(JNI params, statements before the call, the argument as the call receives it, statements after)."""
        t = p.type
        arg = self.row(t, self.shape(t, p), line, 'arg').arg
        params = [JParam(self.fill(arg.jni, t), f'jarg{n}', self.fill(arg.java, t), self.fill(arg.role, t))]
        if arg.handle:
            params.append(OWNER)
        before = [self.fill(s, t, n) for s in arg.before]
        if p.filled:
            # Nothing is copied in; what the callee filled is written back once its count is known.
            before = [b.replace('::jbrg::wrap::array_arg<', '::jbrg::wrap::filled_arg<') for b in before]
        if p.bound and p.bound in named:
            before.append(self.bound_check(n, named[p.bound]))
        # An array the callee takes as const cannot have changed: nothing is written back.
        after = [] if p.array and (t.const or p.filled) else [self.fill(s, t, n) for s in arg.after]
        return params, before, self.fill(arg.call, t, n), after

    @staticmethod
    def bound_check(n: int, size: str) -> str:
        """The check that array argument n holds at least `size` elements."""
        return f'if (!arg{n}.covers({size})) return jresult;'


    def convert_result(self, t: Optional[Type], line: int) -> ResultOut:
        """The result row of t, filled in."""
        if t is None:
            t = Type('void')
        out = self.row(t, self.shape(t), line, 'result').result
        return ResultOut(self.fill(out.jni, t), self.fill(out.java, t), self.fill(out.role, t),
                         tuple(self.fill(s, t) for s in out.store), out.bind)

    def call_export(self, name: str, params: List[Param], result: Optional[Type], line: int,
                    self_type: Optional[str], call: str, constructor: Optional[str] = None,
                    extension: str = ''):
        jparams: List[JParam] = []
        body: List[str] = []
        post: List[str] = []
        args: List[str] = []
        n = 1
        if self_type:
            jparams += [JParam('jlong', 'jarg1', 'long', 'self:' + self.k.probe_name(self_type)), OWNER]
            body.append(f'auto* self = ::orvane::from_handle<{self_type}>(jarg1);')
            body.append('if (self == nullptr) return jresult;')
            n = 2
        named: Dict[str, str] = {}
        later_bounds: List[Tuple[int, Param]] = []   # arrays sized by a parameter that follows them
        for p in params:
            jp, pre, expr, after = self.convert_param(p, n, line, named)
            if p.bound and p.bound not in named:
                later_bounds.append((n, p))
            if p.name:
                named[p.name] = expr
            jparams += jp
            body += pre
            post += after
            args.append(expr)
            n += 1
        # An array sized by a later parameter (`buffer[size], size`) is checked once that parameter is read.
        for at, p in later_bounds:
            if p.bound not in named:
                raise self.k.error(line, f'the size "{p.bound}" of "{p.name}[]" is not a parameter')
            body.append(self.bound_check(at, named[p.bound]))
        # A filled array is written back as far as the function's one OUTPUT argument says.
        filled = [(i, p) for i, p in enumerate(params) if p.filled]
        if filled:
            outputs = [i for i, p in enumerate(params) if p.name == 'OUTPUT']
            if len(outputs) != 1:
                raise self.k.error(line, f'"{filled[0][1].name}[..., OUTPUT]" needs exactly one OUTPUT argument '
                                         f'to say how much the callee filled')
            count = args[outputs[0]]
            count = count[:-len('.pointer()')] + '.value()' if count.endswith('.pointer()') else count
            first = n - len(params)
            post = [f'arg{first + i}.store({count});' for i, _ in filled] + post
        if constructor:
            out = ResultOut('jlong', 'long', 'new:' + self.k.probe_name(constructor),
                            ('jresult = ::jbrg::wrap::adopt(result);',))
            if extension:  # a factory standing for the constructor: `T(args) = f;`
                body.append(f'{constructor}* result = {extension}({", ".join(args)});')
            else:
                body.append(f'{constructor}* result = new {constructor}({", ".join(args)});')
        else:
            out = self.convert_result(result, line)
            target = f'self->{call}' if self_type else call
            if extension:
                invocation = f'{extension}({", ".join(["*self"] + args)})'
            else:
                invocation = f'{target}({", ".join(args)})'
            body.append(f'{invocation};' if out.jni == 'void' else f'{out.bind} result = {invocation};')
        self.add(name, out.jni, out.java, jparams, body + post + list(out.store), out.role)

    # -- the families
    def record_exports(self, r: Record):
        if r.constructible and not any(f.result is None for f in r.functions):
            if not r.is_class:
                self.add(f'new_{r.name}', 'jlong', 'long', [], [f'jresult = ::jbrg::wrap::adopt(new {r.cxx}());'],
                         'new:' + r.name)
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
            number = seen.get(key, 0)
            if counts[key] > 1:
                base += f'__SWIG_{number}'
            expected = number if counts[key] > 1 else None
            if fn.stated and fn.stated_overload != expected:
                written = 'no number' if fn.stated_overload is None else f'__SWIG_{fn.stated_overload}'
                actual = 'no number' if expected is None else f'__SWIG_{expected}'
                raise DescriptionError(f'{where(self.path, fn.line)}: module {self.m.name}: {base.split("__SWIG_")[0]} is '
                                       f'stated with {written} but exported with {actual}')
            seen[key] = number + 1
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
            self.add(f'delete_{r.name}', 'void', 'void', [JParam('jlong', 'jarg1', 'long', 'dispose:' + r.name)],
                     [f'::jbrg::wrap::dispose<{r.cxx}>(jarg1);'])

    def field_exports(self, prefix: str, f: Field, lvalue: str, owner: Optional[str]):
        """`<prefix>_set` and `<prefix>_get` of a record field, static member or global."""
        k = self.k
        t = f.type
        el = k.element(t.base)
        r = k.record(t.base)
        own: List[JParam] = []
        guard: List[str] = []
        if owner:
            own = [JParam('jlong', 'jarg1', 'long', 'self:' + k.probe_name(owner)), OWNER]
            # A zero owner handle reaches no record: the setter does nothing, the getter answers zero.
            guard = [f'auto* self = ::orvane::from_handle<{owner}>(jarg1);', 'if (self == nullptr) return jresult;']
        v = 'jarg2' if owner else 'jarg1'

        def both(value: List[JParam], set_body: List[str], get_jni: str, get_java: str, get_body: List[str]):
            self.add(f'{prefix}_set', 'void', 'void', own + value, guard + set_body)
            self.add(f'{prefix}_get', get_jni, get_java, own, guard + get_body)

        if f.count is not None:
            if t.base == 'char' and not t.pointer:
                both([JParam('jstring', v, 'String', f'text:{f.count}')],
                     [f'::jbrg::wrap::set_text(jenv, {lvalue}, {f.count}, {v});'],
                     'jstring', 'String', [f'jresult = ::jbrg::wrap::get_text(jenv, {lvalue}, {f.count});'])
                return
            if el and el.array and self.m.java_arrays:
                jt = JAVA_ARRAY[el.jni]
                both([JParam(jt, v, el.java + '[]', f'array:{f.count}')],
                     [f'::jbrg::wrap::set_array_field<{el.cxx}, {el.jni}>(jenv, {lvalue}, {f.count}, {v});'],
                     jt, el.java + '[]',
                     [f'jresult = SWIG_JavaArrayOut{el.array}(jenv, {lvalue}, {f.count});'])
                return
            if el or r:
                # Arrays of modules without Java arrays cross as the address of their first element. The source
                # of an array of records is a record handle, followed by its owner as every record handle is; a
                # primitive array's bare address has none.
                source = [JParam('jlong', v, 'long', f'source:{k.probe_name(t.base)}:{f.count}')]
                both(source + [OWNER] if r else source,
                     [f'::jbrg::wrap::copy_elements<{k.cxx(t.base)}>(jenv, {lvalue}, {f.count}, {v});'],
                     'jlong', 'long', [f'jresult = ::orvane::to_handle(&{lvalue}[0]);'])
                return
            raise k.error(f.line, f'no array field of "{t.base}"')
        if t.base == 'std::string' and not t.pointer:
            both([JParam('jstring', v, 'String', 'String')],
                 [f'::jbrg::wrap::string_arg value(jenv, {v});', 'if (!value) return jresult;',
                  f'{lvalue} = value.value();'],
                 'jstring', 'String', [f'jresult = ::jbrg::wrap::new_string(jenv, {lvalue});'])
            return
        if t.base == 'char' and t.pointer:
            raise k.error(f.line, 'a char* field has no owner for its text; use char name[N]')
        if el and not t.pointer:
            both([JParam(el.jni, v, el.java, el.java)], [f'{lvalue} = static_cast<{k.cxx(t.base)}>({v});'],
                 el.jni, el.java, [f'jresult = {el.load(lvalue)};'])
            return
        if r and not t.pointer:
            # The setter's value is a handle too, followed by its owner; the record is copied.
            both([JParam('jlong', v, 'long', 'handle:' + k.probe_name(t.base)), OWNER],
                 [f'auto* value = ::jbrg::wrap::reference<{r.cxx}>(jenv, {v}, "Attempt to dereference null {t.base}");',
                  'if (!value) return jresult;', f'{lvalue} = *value;'],
                 'jlong', 'long', [f'jresult = ::orvane::to_handle(&{lvalue});'])
            return
        raise k.error(f.line, f'no field of type "{t.base}"')

    def generate(self):
        for kind, name in self.m.order:
            if kind == 'record':
                self.record_exports(next(r for r in self.m.records if r.name == name))
            elif kind == 'enum':
                e = next(x for x in self.m.enums if x.name == name)
                for export, expr in e.constants:
                    self.add(f'{export}_get', 'jint', 'int', [], [f'jresult = static_cast<jint>({expr});'])
            elif kind == 'constant':
                t, export, expr = next(c for c in self.m.constants if c[1] == name)
                out = self.convert_result(t, 0)
                self.add(f'{export}_get', out.jni, out.java, [], [f'auto&& result = {expr};', *out.store], out.role)
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
            params = ['JNIEnv* jenv', 'jclass'] + [f'{p.jni} {p.name}'.rstrip() for p in e.params]
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
                # The owner after a handle is named after it.
                args.append(f'{p.java} {p.name or e.params[i - 1].name + "_"}')
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
                    names.append(fn.export)
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
            out.append(' '.join([e.name, e.result_role or e.java_result] + [p.role for p in e.params]))
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
    ap.add_argument('--depfile', help='where to write, as a make rule for the --cpp file, the description and '
                                      'the shared parts it uses')
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
    if args.depfile:
        target = args.cpp or args.description
        sources = [os.path.abspath(args.description)] + module.parts
        write_if_changed(args.depfile, f'{target}: ' + ' '.join(s.replace(' ', '\\ ') for s in sources) + '\n')
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
