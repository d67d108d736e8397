"""Ad-hoc signing of the executable in a bundle, so that it runs on arm64 and so that every build has the same identity.

The permission to control the computer is granted to a signing requirement. An ad-hoc signature without one is known by
its hash, which changes with each build and loses the grant; ours carries the requirement `identifier "<identifier>"`.
"""
import hashlib
import plistlib
import struct
import sys
from pathlib import Path

import macho

PAGE = 4096
ADHOC = 0x2
HASH_SIZE = 32
CODE_DIRECTORY, REQUIREMENT, REQUIREMENTS, SUPER_BLOB, CMS = 0xFADE0C02, 0xFADE0C00, 0xFADE0C01, 0xFADE0CC0, 0xFADE0B01
SLOT_REQUIREMENTS, SLOT_CMS = 2, 0x10000
RESOURCE_RULES = {
    "^Resources/": True,
    "^Resources/.*\\.lproj/": {"optional": True, "weight": 1000.0},
    "^version.plist$": True,
}


def blob(magic, payload):
    return struct.pack(">2I", magic, 8 + len(payload)) + payload


def super_blob(magic, entries):
    offset = 12 + 8 * len(entries)
    index, body = b"", b""
    for slot, content in entries:
        index += struct.pack(">2I", slot, offset + len(body))
        body += content
    return blob(magic, struct.pack(">I", len(entries)) + index + body)


def requirements(identifier):
    name = identifier.encode()
    padded = name + b"\0" * (-len(name) % 4)
    op_identifier, designated = 2, 3
    expression = struct.pack(">3I", 1, op_identifier, len(name)) + padded
    return super_blob(REQUIREMENTS, [(designated, blob(REQUIREMENT, expression))])


def code_directory(code, identifier, specials, text_size):
    """`specials`: content of the special slots 1 upwards, None where absent."""
    name = identifier.encode() + b"\0"
    header_size = 88
    special_hashes = b"".join(hashlib.sha256(s).digest() if s is not None else bytes(HASH_SIZE)
                              for s in reversed(specials))
    pages = [hashlib.sha256(code[i:i + PAGE]).digest() for i in range(0, len(code), PAGE)]
    hash_offset = header_size + len(name) + len(special_hashes)
    main_binary = 1
    fields = struct.pack(">7I4BI", 0x20400, ADHOC, hash_offset, header_size, len(specials), len(pages), len(code),
                         HASH_SIZE, 2, 0, PAGE.bit_length() - 1, 0)
    fields += struct.pack(">3IQ3Q", 0, 0, 0, 0, 0, text_size, main_binary)
    return blob(CODE_DIRECTORY, fields + name + special_hashes + b"".join(pages))


def sign_slice(data, identifier, info, resources):
    """The slice with its signature replaced, or with one added where the linker left none."""
    thin = bytearray(data)
    parsed = macho.parse_slice(data)
    command = parsed.find(macho.LC_CODE_SIGNATURE)
    segments = {}
    for kind, offset, _ in parsed.commands:
        if kind == macho.LC_SEGMENT_64:
            segments[data[offset + 8:offset + 24].rstrip(b"\0").decode()] = offset
    if command is None:
        count, size = struct.unpack_from("<2I", thin, 16)
        command_offset = 32 + size
        if any(thin[command_offset:command_offset + 16]):
            raise ValueError("no room in the header for a signature command")
        struct.pack_into("<2I", thin, 16, count + 1, size + 16)
        start = -(-len(thin) // 16) * 16
    else:
        command_offset = command[0]
        start = struct.unpack_from("<I", thin, command_offset + 8)[0]
    del thin[start:]
    thin.extend(bytes(start - len(thin)))

    required = requirements(identifier)
    specials = [info, required, resources]
    text_size = struct.unpack_from("<Q", thin, segments["__TEXT"] + 48)[0]

    def signature():
        directory = code_directory(bytes(thin), identifier, specials, text_size)
        return super_blob(SUPER_BLOB, [(0, directory), (SLOT_REQUIREMENTS, required), (SLOT_CMS, blob(CMS, b""))])

    size = len(signature())
    struct.pack_into("<4I", thin, command_offset, macho.LC_CODE_SIGNATURE, 16, start, size)
    linkedit = segments["__LINKEDIT"]
    file_offset = struct.unpack_from("<Q", thin, linkedit + 40)[0]
    file_size = start + size - file_offset
    struct.pack_into("<Q", thin, linkedit + 48, file_size)
    struct.pack_into("<Q", thin, linkedit + 32, -(-file_size // 0x4000) * 0x4000)
    return bytes(thin) + signature()


def seal(bundle):
    """Writes the bundle's list of resource hashes and returns its bytes."""
    contents = bundle / "Contents"
    files, files2 = {}, {}
    for path in sorted((contents / "Resources").rglob("*")):
        if path.is_file():
            name, content = str(path.relative_to(contents)), path.read_bytes()
            files[name] = hashlib.sha1(content).digest()
            files2[name] = {"hash2": hashlib.sha256(content).digest()}
    rules2 = {"^.*": True, "^Info\\.plist$": {"omit": True, "weight": 20.0},
              "^PkgInfo$": {"omit": True, "weight": 20.0}, **RESOURCE_RULES}
    listing = plistlib.dumps({"files": files, "files2": files2, "rules": RESOURCE_RULES, "rules2": rules2})
    folder = contents / "_CodeSignature"
    folder.mkdir(exist_ok=True)
    (folder / "CodeResources").write_bytes(listing)
    return listing


def universal(slices):
    """One file of several thin ones, each aligned to 16 KB as arm64's pages want."""
    alignment = 14
    offset = 1 << alignment
    header = struct.pack(">2I", macho.FAT_MAGIC, len(slices))
    body = b""
    for data in slices:
        parsed = macho.parse_slice(data)
        body += bytes(-len(body) % (1 << alignment))
        header += struct.pack(">5I", parsed.cpu_type, parsed.cpu_subtype, offset + len(body), len(data), alignment)
        body += data
    return header + bytes(offset - len(header)) + body


def main():
    bundle, identifier, *thin = sys.argv[1:]
    bundle = Path(bundle)
    info = (bundle / "Contents/Info.plist").read_bytes()
    resources = seal(bundle)
    signed = [sign_slice(Path(path).read_bytes(), identifier, info, resources) for path in thin]
    executable = bundle / "Contents/MacOS" / plistlib.loads(info)["CFBundleExecutable"]
    executable.parent.mkdir(exist_ok=True)
    executable.write_bytes(universal(signed))
    executable.chmod(0o755)


if __name__ == "__main__":
    main()
