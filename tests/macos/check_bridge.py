"""Compares the functions that a C header declares with those that a Swift source defines for C: their names, the kinds
of their parameters, and what they return. A mistake there compiles and links, and ends the program.

usage: check_bridge.py HEADER SWIFT
"""

import re
import sys
from pathlib import Path


def kind_in_c(declaration, functions):
    """The kind of a parameter or result: a word that is the same for both languages."""
    if "*" in declaration:
        return "pointer"
    words = [word for word in declaration.split() if word != "const"]
    return "function" if words[0] in functions else words[0]


def kind_in_swift(text, functions):
    text = text.strip().removeprefix("@escaping ")
    if re.fullmatch(r"Unsafe(Mutable)?(Raw)?Pointer(<.*>)?\??", text):
        return "pointer"
    return {"Int": "size_t", "UInt64": "uint64_t", "Void": "void"}.get(text, "function" if text in functions else text)


def parts(text):
    """What stands between commas, but not those within the brackets of a type."""
    return [part.strip() for part in re.split(r",(?![^<]*>)", text) if part.strip()]


def declared(source):
    source = re.sub(r"//.*", "", source)
    callbacks = re.findall(r"typedef (\w+) \(\*(\w+)\)\(([^)]*)\);", source)
    names = {name for _, name, _ in callbacks}

    def signature(parameters, result):
        return tuple(kind_in_c(part, names) for part in [*parts(parameters), result])

    functions = {name: signature(parameters, result)
                 for result, name, parameters in re.findall(r"^(\w+ \*?)(\w+)\(([^)]*)\);", source, re.MULTILINE)}
    return functions, {signature(parameters, result) for result, _, parameters in callbacks}


def defined(source):
    source = re.sub(r"//.*", "", source)
    callbacks = re.findall(r"typealias (\w+) = @convention\(c\) \(([^)]*)\) -> (\w+)", source)
    names = {name for name, _, _ in callbacks}

    def signature(parameters, result):
        return tuple(kind_in_swift(part.split(":")[-1], names) for part in [*parts(parameters), result or "Void"])

    functions = {name: signature(parameters, result) for name, parameters, result in re.findall(
        r'@_cdecl\("(\w+)"\)\s*public func \w+\(([^)]*)\)\s*(?:-> (\S+)\s*)?\{', source)}
    return functions, {signature(parameters, result) for _, parameters, result in callbacks}


def main(header, swift):
    in_c, callbacks_in_c = declared(Path(header).read_text())
    in_swift, callbacks_in_swift = defined(Path(swift).read_text())
    mistakes = [f"{name}: {in_c.get(name)} in C, {in_swift.get(name)} in Swift"
                for name in sorted(in_c.keys() | in_swift.keys()) if in_c.get(name) != in_swift.get(name)]
    if not in_c or not callbacks_in_c:
        mistakes.append("no function was found")
    if callbacks_in_c != callbacks_in_swift:
        mistakes.append(f"what is called back: {callbacks_in_c} in C, {callbacks_in_swift} in Swift")
    for mistake in mistakes:
        print(mistake, file=sys.stderr)
    return 1 if mistakes else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
