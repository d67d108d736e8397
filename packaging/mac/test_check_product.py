"""The checks of the product can fail: each kind of damage, done to a copy of a built application, is reported.

test_check_product.py <Morvel.app> <stub folder> <libSystem stub> <zip>   (after build.sh)
"""
import shutil
import struct
import sys
import tempfile
from pathlib import Path

import check_product
import macho
import sign


def slices_of(app):
    return [part.data for part in macho.parse((app / "Contents/MacOS/Morvel").read_bytes())]


def rewrite(app, slices):
    (app / "Contents/MacOS/Morvel").write_bytes(sign.universal(slices))


def change_code(app):
    first, *others = slices_of(app)
    rewrite(app, [first[:0x2000] + bytes([first[0x2000] ^ 1]) + first[0x2001:], *others])


def drop_slice(app):
    rewrite(app, slices_of(app)[:1])


def drop_signature(app):
    changed = []
    for data in slices_of(app):
        thin = bytearray(data)
        offset = macho.parse_slice(data).find(macho.LC_CODE_SIGNATURE)[0]
        struct.pack_into("<I", thin, offset, 0x7FFFFFFF)
        changed.append(bytes(thin))
    rewrite(app, changed)


def load_foreign_library(app):
    rewrite(app, [data.replace(b"/usr/lib/libobjc", b"/opt/lib/libobjc") for data in slices_of(app)])


def change_plist(app):
    plist = app / "Contents/Info.plist"
    plist.write_text(plist.read_text().replace("13.0", "12.0"))


def change_icon(app):
    icon = app / "Contents/Resources/Morvel.icns"
    icon.write_bytes(icon.read_bytes()[:-1] + b"\0")


def forget_licence(app):
    (app / "Contents/Resources/Copyright.txt").write_text("Copyright: The Morvel authors")


def add_file(app):
    (app / "Contents/Resources/extra").write_text("not in the zip")


DAMAGES = {
    change_code: "its signature does not match",
    drop_slice: "slices:",
    drop_signature: "has no signature",
    load_foreign_library: "which is not the system's",
    change_plist: "LSMinimumSystemVersion",
    change_icon: "Morvel.icns differs from the sealed one",
    forget_licence: "the licence of the JSON library",
    add_file: "exactly the application's files",
}


def main():
    app, stub_folder, system_stub, archive = sys.argv[1:]
    failures = []
    with tempfile.TemporaryDirectory() as folder:
        for damage, wanted in DAMAGES.items():
            copy = Path(folder) / damage.__name__ / "Morvel.app"
            shutil.copytree(app, copy)
            damage(copy)
            if not any(wanted in found for found in check_product.problems(copy, stub_folder, system_stub, archive)):
                failures.append(f"{damage.__name__} was not noticed")
        empty = Path(folder) / "stubs"
        empty.mkdir()
        if not any("which no stub declares" in found
                   for found in check_product.problems(Path(app), empty, system_stub, archive)):
            failures.append("symbols without a stub were not noticed")
    print("\n".join(failures) or "every damage is noticed")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
