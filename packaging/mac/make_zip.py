"""Zips the application with its modes, in a fixed order and with fixed times, so that equal builds give equal files."""
import stat
import sys
import zipfile
from pathlib import Path


def main():
    app, target = Path(sys.argv[1]), sys.argv[2]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as archive:
        for path in sorted(app.rglob("*")):
            if not path.is_file():
                continue
            entry = zipfile.ZipInfo(str(path.relative_to(app.parent)), (2020, 1, 1, 0, 0, 0))
            entry.create_system = 3  # Unix: the upper half of the attributes is the mode
            entry.external_attr = (stat.S_IFREG | path.stat().st_mode & 0o777) << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, path.read_bytes())


if __name__ == "__main__":
    main()
