"""Trims the full tables of Apple's published API to what this project can use, for the checked runtime.

trim_facts.py <folder of the full tables>

Kept: the classes named here, those that src/Platform/Mac names, and all their superclasses; their methods and those of
the protocols they adopt and of the delegates named here; the functions and constants that our headers declare.
The output in facts/ is committed, so that a clone needs nothing else.
"""
import re
import sys
from pathlib import Path

HERE = Path(__file__).parent
SOURCES = HERE.parent.parent / "src/Platform/Mac"
# Beyond what the sources name: what the runtime makes by itself, and protocols that our classes implement.
CLASSES = ["NSObject", "NSString", "NSMutableArray", "NSMutableDictionary", "NSData", "NSDate", "NSNull", "NSSet",
           "NSStatusBar", "NSStatusItem", "NSStatusBarButton", "NSButton", "NSStackView", "NSScrollView", "NSAlert",
           "NSPasteboard", "NSPasteboardItem", "NSDraggingItem", "NSDraggingSession", "NSTask", "NSPipe",
           "NSFileHandle", "NSAppleScript", "SMAppService", "NSURLSession", "NSWorkspaceOpenConfiguration", "NSTimer",
           "NSSearchField", "NSOpenPanel", "NSMutableParagraphStyle", "NSMutableAttributedString", "NSBundle",
           "NSImageSymbolConfiguration", "NSDictionary", "NSError", "NSPopUpButton", "NSSlider", "NSColorWell",
           "NSTabView", "NSTabViewItem", "NSStepper", "NSSwitch", "NSUUID", "NSProcessInfo", "NSScreen", "NSURLRequest",
           "NSMutableURLRequest", "NSHTTPURLResponse", "NSURLSessionConfiguration", "NSURLSessionDataTask",
           "NSLayoutConstraint", "NSClickGestureRecognizer", "NSTextView", "NSGraphicsContext", "NSBezierPath"]
PROTOCOLS = ["NSObject", "NSApplicationDelegate", "NSWindowDelegate", "NSMenuDelegate", "NSPopoverDelegate",
             "NSDraggingSource", "NSDraggingDestination", "NSDraggingInfo", "NSControlTextEditingDelegate",
             "NSTextFieldDelegate", "NSSearchFieldDelegate", "NSPasteboardWriting", "NSTableViewDelegate",
             "NSURLSessionDataDelegate", "NSAccessibility", "NSUserInterfaceItemIdentification"]
# Long tails of large classes that a bar has no use for.
DROPPED_METHODS = re.compile(r"Spelling|Scripting|Ruler|QuickLook|WritingTools|PDF|Print|print|Find|Toolbar|OpenGL|"
                             r"Gesture|Touch|Rotation|Binding|Restor|Continuous|Sharing|Deprecated|accessibility.*For|"
                             r"Rulebook|autosave|Autosave|Grammar|Substitution|linguistic|ForKeyPath|EPS")


def read(folder, table):
    lines = (folder / f"{table}.tsv").read_text().splitlines()
    columns = lines[0].split("\t")
    return columns, [dict(zip(columns, line.split("\t"))) for line in lines[1:]]


def write(table, columns, rows):
    lines = ["\t".join(columns)] + ["\t".join(row.get(c, "") for c in columns) for row in rows]
    (HERE / "facts" / f"{table}.tsv").write_text("\n".join(lines) + "\n")


def main():
    folder = Path(sys.argv[1])
    text = "\n".join(p.read_text() for p in sorted(SOURCES.rglob("*")) if p.suffix in (".h", ".cpp"))
    words = set(re.findall(r"\w+", text)) | set(CLASSES) | set(PROTOCOLS)
    selectors = set(re.findall(r'"([\w:]+)"_sel', text))

    columns, classes = read(folder, "classes")
    parents = {c["name"]: c["superclass"] for c in classes}
    kept = set()
    for name in parents:
        ancestor = name if name in words else ""
        while ancestor and ancestor not in kept:
            kept.add(ancestor)
            ancestor = parents.get(ancestor, "")
    write("classes", ["name", "superclass", "framework", "protocols"], [c for c in classes if c["name"] in kept])

    columns, protocols = read(folder, "protocols")
    inherits = {p["name"]: [i for i in p["inherits"].split(",") if i] for p in protocols}
    wanted = set(PROTOCOLS) | {p for c in classes if c["name"] in kept for p in c["protocols"].split(",") if p}
    pending = list(wanted)
    while pending:
        for parent in inherits.get(pending.pop(), []):
            if parent not in wanted:
                wanted.add(parent)
                pending.append(parent)
    write("protocols", ["name", "inherits", "framework"], [p for p in protocols if p["name"] in wanted])

    _, methods = read(folder, "methods")
    methods = [m for m in methods if m["owner"] in kept | wanted and
               (m["selector"] in selectors or not DROPPED_METHODS.search(m["selector"]))]
    write("methods", ["owner", "kind", "selector", "return_encoding", "argument_encodings", "return_type"], methods)

    for table in ("functions", "constants"):
        columns, rows = read(folder, table)
        keep = ["name", "framework", "return_encoding", "argument_encodings", "linkage"] if table == "functions" else \
            ["name", "encoding", "value", "framework", "kind"]
        write(table, keep, [r for r in rows if r["name"] in words])


if __name__ == "__main__":
    main()
