#!/usr/bin/env python3
"""Installs the package in a fresh Debian of its own, uses it there as a person would, and removes it without a trace.

try_package.py morvel_1.2.3_amd64.deb

As root, with debootstrap, Xvfb, openbox, xdotool and Debian's x11-apps and x11-utils. The X server and the window
manager are this machine's and are reached through the abstract socket, which a changed root shares; so nothing is in
the fresh system but what the package asked for. Takes some minutes, mostly to fetch that system.
"""
import contextlib
import os
import platform
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PERSON = 1000
PATIENCE = 20  # seconds until something must be seen
LEAST_COLOURS = 30  # of a bar with text and pictures; a bare strip has a handful


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, stdin=subprocess.DEVNULL, **options)


def output(*command, **options):
    return run(*command, capture_output=True, **options).stdout


def expect(what, seen):
    """The first answer of `seen` that counts as true."""
    end = time.monotonic() + PATIENCE
    while not (answer := seen()):
        if time.monotonic() > end:
            sys.exit(f"  NOT SEEN  {what}")
        time.sleep(0.2)
    print(f"  seen      {what}", flush=True)
    return answer


class FreshSystem:
    """A minimal Debian in a folder, with a home for one person. Gone with `close`."""

    def __init__(self):
        self.root = Path(tempfile.mkdtemp(prefix="morvel-package-"))
        self.root.chmod(0o755)
        release = platform.freedesktop_os_release()["VERSION_CODENAME"]
        run("debootstrap", "--variant=minbase", release, self.root, stdout=subprocess.DEVNULL)
        run("mount", "-t", "proc", "proc", self.root / "proc")
        home = self.root / "home/person"
        home.mkdir()
        os.chown(home, PERSON, PERSON)

    def close(self):
        run("umount", self.root / "proc")
        shutil.rmtree(self.root)

    def administer(self, *command):
        environment = dict(os.environ, DEBIAN_FRONTEND="noninteractive", LC_ALL="C")
        run("chroot", self.root, *command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment)

    def start(self, display, *command):
        """A program of the person's, with nothing of this machine's environment."""
        inside = ["env", "-i", f"DISPLAY={display}", "HOME=/home/person", "PATH=/usr/bin:/bin", *command]
        return subprocess.Popen(["chroot", f"--userspec={PERSON}:{PERSON}", str(self.root), *inside],
                                stdin=subprocess.DEVNULL)

    def files(self):
        """What is there outside of the package manager's own records and the person's home."""
        kept = {"proc", "dev", "home", "tmp", "run", "var"}
        found = set()
        for folder, subfolders, names in os.walk(self.root):
            if folder == str(self.root):
                subfolders[:] = [name for name in subfolders if name not in kept]
            found.update(os.path.join(folder, name) for name in names)
        return {os.path.relpath(path, self.root) for path in found}


def start_desktop(cleaning):
    """An X server, a window manager and a window. Returns the environment of its clients."""
    end, start = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(start), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                              pass_fds=[start], stderr=subprocess.DEVNULL)
    cleaning.callback(stop, server)
    os.close(start)
    with os.fdopen(end) as told:
        environment = dict(os.environ, DISPLAY=":" + told.readline().strip())
    for command in (["openbox"], ["xclock", "-title", "A window"]):
        cleaning.callback(stop, subprocess.Popen(command, env=environment, stderr=subprocess.DEVNULL))
    return environment


def stop(process):
    process.terminate()
    try:
        return process.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        process.kill()
        sys.exit(f"  NOT SEEN  the end of {process.args}")


def window(pattern, environment):
    found = re.search(rf"(0x[0-9a-f]+) .*{pattern}", output("xwininfo", "-root", "-tree", env=environment).decode())
    return found and found[1]


def colours(window_id, environment):
    dump = subprocess.run(["xwd", "-silent", "-id", window_id], capture_output=True, env=environment).stdout
    if not dump:
        return 0  # it is not on the screen yet
    header, entries = struct.unpack_from(">I", dump)[0], struct.unpack_from(">I", dump, 76)[0]
    return len(set(struct.iter_unpack("<I", dump[header + 12 * entries:])))


def maps(system, process, part):
    maps = (system.root / f"proc/{process.pid}/maps").read_text()
    return re.search(rf"/usr/lib/\S*{re.escape(part)}$", maps, re.MULTILINE)


def main():
    package = Path(sys.argv[1]).resolve()
    with contextlib.ExitStack() as cleaning:
        system = FreshSystem()
        cleaning.callback(system.close)
        environment = start_desktop(cleaning)
        display = environment["DISPLAY"]

        system.administer("apt-get", "update")
        before = system.files()
        shutil.copy(package, system.root / "root/morvel.deb")
        system.administer("apt-get", "install", "--yes", "--no-install-recommends", "/root/morvel.deb")
        (system.root / "root/morvel.deb").unlink()
        print("  seen      it installs, with all it depends on", flush=True)

        bar = system.start(display, "morvel")
        cleaning.callback(bar.kill)
        panel = expect("the bar", lambda: window(r"1280x44\+0\+756", environment))
        expect("its picture", lambda: colours(panel, environment) >= LEAST_COLOURS)
        run("xdotool", "mousemove", 900, 778, "click", 3, env=environment)

        def key_is_read():
            run("xdotool", "key", "Escape", env=environment)
            return maps(system, bar, "/morvel/morvel-keyboard.so")

        expect("a key in its menu", key_is_read)
        again = system.start(display, "morvel")
        settings = expect("the settings, by starting it again", lambda: window('"Morvel Settings"', environment))
        expect("their picture", lambda: colours(settings, environment) >= LEAST_COLOURS)
        expect("the settings' module in the program", lambda: maps(system, bar, "/morvel/morvel-forms.so"))
        if again.wait(PATIENCE) != 0:
            sys.exit("  NOT SEEN  the second start's good end")
        if stop(bar) != 0:
            sys.exit("  NOT SEEN  the bar's good end")

        system.administer("apt-get", "purge", "--yes", "--auto-remove", "morvel")
        # Packages that came with it may leave caches that they made themselves; it may leave nothing of its own.
        if left := sorted(path for path in system.files() - before if "morvel" in path):
            sys.exit("  LEFT      " + " ".join(left))
        print("  seen      nothing left after its removal", flush=True)


if __name__ == "__main__":
    main()
