"""Checks the built application: what a Mac would refuse or a user would miss, found on the machine that built it."""
import hashlib
import plistlib
import re
import struct
import sys
import zipfile
from pathlib import Path

import macho
import sign
import stubs

IDENTIFIER = "app.morvel.Morvel"
LIMIT = 4 * 1024 * 1024


def check_slice(part, allowed, info, resources):
    """Yields what is wrong with one slice."""
    if len(part.data) >= LIMIT:
        yield f"{len(part.data)} bytes, the limit is {LIMIT}"
    for library in macho.libraries(part):
        if not library.startswith(("/usr/lib/", "/System/Library/Frameworks/")):
            yield f"loads {library}, which is not the system's"
    if stubs.LIBRARIES["AppKit"] not in macho.libraries(part):
        yield "does not load AppKit, whose classes it looks up by name"
    if part.find(macho.LC_RPATH):
        yield "has a search path for libraries"
    if macho.minimum_system(part) != (13, 0):
        yield f"asks for macOS {macho.minimum_system(part)}"
    undefined = macho.symbols(part, undefined=True)
    if not undefined:
        yield "lists no undefined symbols: the check would prove nothing"
    for name in sorted(set(undefined) - allowed):
        yield f"needs {name}, which no stub declares"
    yield from check_signature(part, info, resources)


def check_signature(part, info, resources):
    found = macho.signature(part)
    if not found or struct.unpack_from(">I", found)[0] != sign.SUPER_BLOB:
        yield "has no signature"
        return
    start = struct.unpack_from("<I", part.data, part.find(macho.LC_CODE_SIGNATURE)[0] + 8)[0]
    text_segment = next(o for c, o, _ in part.commands if c == macho.LC_SEGMENT_64 and
                        part.data[o + 8:o + 24].rstrip(b"\0") == b"__TEXT")
    text_size = struct.unpack_from("<Q", part.data, text_segment + 48)[0]
    wanted = sign.code_directory(part.data[:start], IDENTIFIER, [info, sign.requirements(IDENTIFIER), resources],
                                 text_size)
    if wanted not in found:
        yield "its signature does not match its code, Info.plist, requirement and resources"
    if sign.requirements(IDENTIFIER) not in found:
        yield "its signature lacks the requirement that keeps the user's grant across updates"


def check_bundle(app):
    info = plistlib.loads((app / "Contents/Info.plist").read_bytes())
    expected = {"CFBundleIdentifier": IDENTIFIER, "LSUIElement": True, "LSMinimumSystemVersion": "13.0",
                "CFBundleExecutable": "Morvel", "CFBundlePackageType": "APPL"}
    for key, value in expected.items():
        if info.get(key) != value:
            yield f"Info.plist: {key} is {info.get(key)!r}"
    if not re.fullmatch(r"\d+\.\d+\.\d+", info.get("CFBundleShortVersionString", "")):
        yield "Info.plist: no version"
    if not info.get("NSAppleEventsUsageDescription"):
        yield "Info.plist: no usage text for Automation"
    icon = (app / "Contents/Resources/Morvel.icns").read_bytes()
    if icon[:4] != b"icns" or struct.unpack_from(">I", icon, 4)[0] != len(icon):
        yield "the icon is not an icns file"
    if "Niels Lohmann" not in (app / "Contents/Resources/Copyright.txt").read_text():
        yield "the licence of the JSON library, whose code is in the program, is not told"
    listed = plistlib.loads((app / "Contents/_CodeSignature/CodeResources").read_bytes())["files2"]
    for name, entry in listed.items():
        if entry["hash2"] != hashlib.sha256((app / "Contents" / name).read_bytes()).digest():
            yield f"{name} differs from the sealed one"


def check_zip(path, app):
    with zipfile.ZipFile(path) as archive:
        modes = {entry.filename: entry.external_attr >> 16 for entry in archive.infolist()}
    if not modes.get("Morvel.app/Contents/MacOS/Morvel", 0) & 0o111:
        yield "the executable in the zip is not executable"
    files = {str(p.relative_to(app.parent)) for p in app.rglob("*") if p.is_file()}
    if files != set(modes):
        yield "the zip does not hold exactly the application's files"


def problems(app, stub_folder, system_stub, archive):
    allowed = set(re.findall(r"[\w$]+", Path(system_stub).read_text()))
    for stub in Path(stub_folder).rglob("*.tbd"):
        allowed |= set(stubs.symbols_in(stub))
    info = (app / "Contents/Info.plist").read_bytes()
    resources = (app / "Contents/_CodeSignature/CodeResources").read_bytes()
    parts = macho.parse((app / "Contents/MacOS/Morvel").read_bytes())
    if sorted(part.cpu for part in parts) != ["arm64", "x86_64"]:
        yield f"slices: {[part.cpu for part in parts]}"
    for part in parts:
        yield from (f"{part.cpu}: {wrong}" for wrong in check_slice(part, allowed, info, resources))
    yield from check_bundle(app)
    yield from check_zip(archive, app)


def main():
    app, stub_folder, system_stub, archive = sys.argv[1:]
    found = list(problems(Path(app), stub_folder, system_stub, archive))
    for part in macho.parse((Path(app) / "Contents/MacOS/Morvel").read_bytes()):
        print(f"{part.cpu}: {len(part.data) // 1024} KB, {len(macho.libraries(part))} system libraries")
    print("\n".join(found) or "the product is as it should be")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
