"""The linker stubs: for each system library, exactly the symbols that our objects use.

stubs.py update <zig folder> <facts folder> <object file>…   rewrites the stubs from the objects' undefined symbols
stubs.py check <facts folder>                                compares the stubs with the API facts
"""
import re
import sys
from pathlib import Path

import macho

HERE = Path(__file__).parent / "stubs"
FRAMEWORKS = "/System/Library/Frameworks"
# Install names as the libraries record them. Dispatch and Blocks are in libSystem, which the toolchain brings.
LIBRARIES = {
    "AppKit": f"{FRAMEWORKS}/AppKit.framework/Versions/C/AppKit",
    "ApplicationServices": f"{FRAMEWORKS}/ApplicationServices.framework/Versions/A/ApplicationServices",
    "ColorSync": f"{FRAMEWORKS}/ColorSync.framework/Versions/A/ColorSync",
    "CoreFoundation": f"{FRAMEWORKS}/CoreFoundation.framework/Versions/A/CoreFoundation",
    "CoreGraphics": f"{FRAMEWORKS}/CoreGraphics.framework/Versions/A/CoreGraphics",
    "Foundation": f"{FRAMEWORKS}/Foundation.framework/Versions/C/Foundation",
    "ObjectiveC": "/usr/lib/libobjc.A.dylib",
    "QuartzCore": f"{FRAMEWORKS}/QuartzCore.framework/Versions/A/QuartzCore",
    "ServiceManagement": f"{FRAMEWORKS}/ServiceManagement.framework/Versions/A/ServiceManagement",
}


def exported(facts):
    """The library of every exported function and constant the facts know."""
    owner = {}
    for table in ("functions.tsv", "constants.tsv", "stated_functions.tsv"):
        lines = (facts / table).read_text().splitlines()
        columns = lines[0].split("\t")
        for line in lines[1:]:
            row = dict(zip(columns, line.split("\t")))
            if row.get("linkage") in ("header-only", "private") or row.get("kind") in ("enumerator", "header"):
                continue
            owner["_" + row["name"]] = row["framework"]
    return owner


def stub_path(library):
    return HERE / ("libobjc.tbd" if library == "ObjectiveC" else f"{library}.framework/{library}.tbd")


def symbols_in(stub):
    listed = re.search(r"symbols: \[(.*?)\]", stub.read_text(), re.S)
    return [name.strip() for name in listed.group(1).split(",") if name.strip()] if listed else []


def update(zig, facts, objects):
    used = set()
    for path in objects:
        used |= set(macho.symbols(macho.parse_slice(Path(path).read_bytes()), undefined=True))
    system = (zig / "lib/libc/darwin/libSystem.tbd").read_text()
    in_system = set(re.findall(r"[\w$]+", system))
    owner = exported(facts)
    for library, install_name in LIBRARIES.items():
        names = sorted(n for n in used if owner.get(n) == library and n not in in_system)
        listing = ",\n               ".join(names)
        path = stub_path(library)
        path.parent.mkdir(parents=True, exist_ok=True)
        exports = f"""exports:
  - targets: [ arm64-macos, x86_64-macos ]
    symbols: [ {listing} ]
""" if names else ""
        path.write_text(f"""--- !tapi-tbd
tbd-version: 4
targets: [ arm64-macos, x86_64-macos ]
install-name: '{install_name}'
{exports}...
""")


def check(facts):
    owner = exported(facts)
    wrong = []
    for library in LIBRARIES:
        for name in symbols_in(stub_path(library)):
            if owner.get(name) != library:
                wrong.append(f"{library} lists {name}, which the facts place in {owner.get(name, 'no library')}")
    print("\n".join(wrong) or "stubs agree with the API facts")
    return 1 if wrong else 0


if __name__ == "__main__":
    if sys.argv[1] == "update":
        update(Path(sys.argv[2]), Path(sys.argv[3]), sys.argv[4:])
    else:
        sys.exit(check(Path(sys.argv[2])))
