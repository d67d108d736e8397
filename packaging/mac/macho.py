"""Reading Mach-O files: as much of the format as packaging and its checks need. Little-endian, 64-bit slices."""
import struct
from dataclasses import dataclass, field

FAT_MAGIC = 0xCAFEBABE
MACHO_MAGIC = 0xFEEDFACF
CPU_NAMES = {0x01000007: "x86_64", 0x0100000C: "arm64"}
LC_SYMTAB, LC_DYSYMTAB, LC_SEGMENT_64, LC_CODE_SIGNATURE, LC_BUILD_VERSION = 0x2, 0xB, 0x19, 0x1D, 0x32
LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB, LC_RPATH = 0xC, 0x80000018, 0x8000001F, 0x8000001C


@dataclass
class Slice:
    data: bytes
    cpu: str = ""
    cpu_type: int = 0
    cpu_subtype: int = 0
    commands: list = field(default_factory=list)  # (command, offset of the command, size)

    def find(self, wanted):
        return next(((offset, size) for command, offset, size in self.commands if command == wanted), None)


def parse_slice(data):
    magic, cpu_type, cpu_subtype, _, count, _, _, _ = struct.unpack_from("<8I", data)
    if magic != MACHO_MAGIC:
        raise ValueError("not a 64-bit Mach-O slice")
    result = Slice(data, CPU_NAMES.get(cpu_type, hex(cpu_type)), cpu_type, cpu_subtype)
    offset = 32
    for _ in range(count):
        command, size = struct.unpack_from("<2I", data, offset)
        result.commands.append((command, offset, size))
        offset += size
    return result


def parse(data):
    """The slices of a thin or universal file."""
    if struct.unpack_from(">I", data)[0] != FAT_MAGIC:
        return [parse_slice(data)]
    count = struct.unpack_from(">I", data, 4)[0]
    entries = [struct.unpack_from(">5I", data, 8 + 20 * i) for i in range(count)]
    return [parse_slice(data[offset:offset + size]) for _, _, offset, size, _ in entries]


def text(data, offset):
    return data[offset:data.index(b"\0", offset)].decode()


def libraries(macho):
    found = []
    for command, offset, _ in macho.commands:
        if command in (LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB):
            found.append(text(macho.data, offset + struct.unpack_from("<I", macho.data, offset + 8)[0]))
    return found


def symbols(macho, undefined):
    """Names in the symbol table: the undefined ones with the ordinal of their library, or the defined external ones."""
    table = macho.find(LC_SYMTAB)
    if table is None:
        return {}
    symbol_offset, count, strings, _ = struct.unpack_from("<4I", macho.data, table[0] + 8)
    found = {}
    for i in range(count):
        name, kind, _, description, value = struct.unpack_from("<IBBHQ", macho.data, symbol_offset + 16 * i)
        is_debug, is_external, is_undefined = kind & 0xE0, kind & 1, (kind & 0x0E) == 0 and value == 0
        if not is_debug and is_external and is_undefined == undefined:
            found[text(macho.data, strings + name)] = description >> 8
    return found


def minimum_system(macho):
    command = macho.find(LC_BUILD_VERSION)
    if command is None:
        return None
    version = struct.unpack_from("<I", macho.data, command[0] + 12)[0]
    return (version >> 16, version >> 8 & 0xFF)


def signature(macho):
    """The code signature's bytes, or None."""
    command = macho.find(LC_CODE_SIGNATURE)
    if command is None:
        return None
    offset, size = struct.unpack_from("<2I", macho.data, command[0] + 8)
    return macho.data[offset:offset + size]
