"""Lists every C function, exported symbol and constant that our headers declare, for the test that compares each with
the API facts. scan_headers.py <src/Platform/Mac> <output>"""
import re
import sys
from pathlib import Path

# Their types cannot be written in C++: the dispatchers take any arguments.
UNTYPED = {"objc_msgSend", "objc_msgSendSuper", "objc_msgSend_stret", "objc_msgSendSuper_stret"}
CONSTANT = re.compile(r"^inline constexpr [\w:]+\s+((?:NS|kCF|kCG|kAX|DISPATCH_|QOS_)\w+)\s*=", re.M)


def extern_blocks(text):
    for start in re.finditer(r'extern "C" \{', text):
        depth, end = 1, start.end()
        while depth:
            depth += {"{": 1, "}": -1}.get(text[end], 0)
            end += 1
        yield text[start.end():end - 1]


def main():
    source, output = Path(sys.argv[1]), Path(sys.argv[2])
    headers = sorted([*(source / "apple").rglob("*.h"), source / "objc/Runtime.h"])
    lines = [f'#include "Platform/Mac/{h.relative_to(source)}"' for h in headers]
    functions, symbols, constants = [], [], []
    for header in headers:
        text = re.sub(r"//[^\n]*|^#[^\n]*", "", header.read_text(), flags=re.M)
        if header.name == "Runtime.h":
            namespace = "morvel::mac::objc"
        else:
            namespace = "morvel::mac"
            constants += [f'constantOf("{n}", {namespace}::{n}),' for n in CONSTANT.findall(text)]
        for block in extern_blocks(text):
            for statement in (" ".join(s.split()) for s in block.split(";")):
                called = re.search(r"(\w+)\(", statement)
                if called and called.group(1) not in UNTYPED:
                    name = called.group(1)
                    functions.append(f'{{"{name}", functionTypes<decltype({namespace}::{name})>()}},')
                elif statement.startswith("extern ") and not called and "_NSConcrete" not in statement:
                    name = statement.split()[-1]
                    symbols.append(f'{{"{name}", encodingOf<decltype({namespace}::{name})>()}},')
    lines += ["", "namespace morvel::mac::checked {", "", "const std::vector<DeclaredFunction> kDeclaredFunctions = {", *functions, "};",
              "const std::vector<DeclaredConstant> kDeclaredSymbols = {", *symbols, "};",
              "const std::vector<DeclaredConstant> kDeclaredConstants = {", *constants, "};", "", "}  // namespace morvel::mac::checked", ""]
    output.write_text("\n".join(lines))


if __name__ == "__main__":
    main()
