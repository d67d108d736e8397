"""Writes the changelog that a Debian package carries from the one that people read.

debian_changelog.py CHANGELOG.md changelog

The first release needs a version and a date: a heading `## [1.2.3] - 2026-01-31`. What is listed under "Unreleased" is
left out. A line that is neither heading, item nor the continuation of one belongs to no release and is left out too.
"""
import re
import sys
from datetime import datetime, timezone

AUTHOR = "The Morvel authors <morvel@example.org>"
RELEASE = re.compile(r"## \[(\d+\.\d+\.\d+)\] - (\d{4}-\d{2}-\d{2})$")


def releases(lines):
    """Yields (version, date, lines of the items) in the order of the file."""
    current = None
    for line in lines:
        if line.startswith("## "):
            if current:
                yield current
            found = RELEASE.match(line)
            current = found and (found[1], datetime.strptime(found[2], "%Y-%m-%d"), [])
        elif current and line.startswith("- "):
            current[2].append("  * " + line[2:])
        elif current and line.startswith("  "):
            current[2].append("    " + line.strip())
    if current:
        yield current


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        found = list(releases(file.read().splitlines()))
    if not found:
        sys.exit(f"{sys.argv[1]} names no release.")
    with open(sys.argv[2], "w", encoding="utf-8") as out:
        for version, date, items in found:
            stamp = date.replace(tzinfo=timezone.utc).strftime("%a, %d %b %Y %H:%M:%S +0000")
            body = "\n".join(items)
            out.write(f"morvel ({version}) stable; urgency=medium\n\n{body}\n\n -- {AUTHOR}  {stamp}\n\n")


if __name__ == "__main__":
    main()
