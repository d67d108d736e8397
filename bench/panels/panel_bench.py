#!/usr/bin/python3
"""Measure X11 desktop panels side by side.

Each panel gets a private Xvfb + openbox + session bus and an empty home; the client windows
are the harness's own. See docs/PERFORMANCE.md for the method.

  panel_bench.py                                   every panel under peers/, and the control
  panel_bench.py tint2 --panel 'mybar=mybar --bottom --height 44' --out mine
  panel_bench.py --quick --panel 'mybar=mybar' --env mybar:KEY=VALUE --prep 'mybar=cp x $HOME/'

The panel "none" is the control: the same loads with no panel. What the X server spends in the
control is subtracted from what it spends beside a panel.
"""
import argparse, array, ctypes, json, math, os, platform, random, select, shutil, signal
import statistics, subprocess, sys, tempfile, time
from Xlib import X, Xatom, Xutil, display, error
from Xlib.ext import damage as xdamage
from Xlib.protocol import event as xevent, rq

now = time.perf_counter
HERE = os.path.dirname(os.path.abspath(__file__))
SCREEN = (1920, 1080)
TICK = os.sysconf("SC_CLK_TCK")

FULL = dict(starts=5, idle=20.0, opens=30, focus_lat=20, repeats=3, secs=5.0, title_rate=200,
            title_n=(20, 100, 300), focus_rate=20, focus_n=(20, 100), churn=200, churn_rounds=2,
            quiet=0.20, drain=10.0)
QUICK = dict(FULL, starts=2, idle=4.0, opens=8, focus_lat=5, repeats=1, secs=1.5, churn=40,
             churn_rounds=1, quiet=0.12, drain=2.0)

RC_XML = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
<focus><focusNew>no</focusNew><followMouse>no</followMouse></focus>
<desktops><number>1</number><popupTime>0</popupTime></desktops>
<applications><application type="normal"><decor>no</decor></application></applications>
<keyboard/><mouse/></openbox_config>
"""


FOREIGN = 0.25      # a storm beside which others used more of a core than this is run again


class BenchError(Exception):
    pass


def on_alarm(*_):
    raise BenchError("time budget for this panel exceeded")


# ---------------------------------------------------------------- figures

def summary(samples):
    """Median with its spread; None when there is nothing to summarise."""
    s = sorted(x for x in samples if x is not None)
    if not s:
        return None
    return dict(median=statistics.median(s), min=s[0], max=s[-1],
                p95=s[min(len(s) - 1, math.ceil(0.95 * len(s)) - 1)], n=len(s),
                samples=[round(x, 4) for x in samples if x is not None])


# ---------------------------------------------------------------- processes

def proc_table():
    """{pid: (ppid, comm, utime+stime in ticks, state)}"""
    out = {}
    for d in os.listdir("/proc"):
        if d.isdigit():
            try:
                with open(f"/proc/{d}/stat") as f:
                    head, tail = f.read().rsplit(")", 1)
            except OSError:
                continue
            t = tail.split()
            out[int(d)] = (int(t[1]), head.split("(", 1)[1], int(t[11]) + int(t[12]), t[0])
    return out


def cpu_ns(pid):
    """CPU time of a whole process in ns (its CPUCLOCK_SCHED clock), 0 when it is gone."""
    try:
        return time.clock_gettime_ns((~pid << 3) | 2)
    except OSError:
        return 0


def descendants(table, root):
    kids = {}
    for pid, row in table.items():
        kids.setdefault(row[0], []).append(pid)
    out, todo = [], [root]
    while todo:
        for k in kids.get(todo.pop(), ()):
            out.append(k)
            todo.append(k)
    return out


def memory_kb(pids):
    tot = dict(rss=0, pss=0, private=0)
    for pid in pids:
        try:
            with open(f"/proc/{pid}/smaps_rollup") as f:
                lines = f.readlines()
        except OSError:
            continue
        for k, v in (line.split()[:2] for line in lines[1:]):
            if k == "Rss:":
                tot["rss"] += int(v)
            elif k == "Pss:":
                tot["pss"] += int(v)
            elif k in ("Private_Clean:", "Private_Dirty:"):
                tot["private"] += int(v)
    return tot


def busy_ticks():
    with open("/proc/stat") as f:
        v = list(map(int, f.readline().split()[1:9]))
    return sum(v) - v[3] - v[4], v[7]          # all but idle and iowait; steal


# ---------------------------------------------------------------- one display with its session

class Session:
    """A private X server, bus and window manager; a context manager that leaves nothing behind."""

    def __init__(self, spec):
        self.spec, self.popen, self.xlinked = spec, {}, {}
        self.clients = self.watch = None

    def __enter__(self):
        self.home = tempfile.mkdtemp(prefix="panelbench-")
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def _spawn(self, role, argv, **kw):
        p = subprocess.Popen(argv, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=self.log, start_new_session=True, **kw)
        self.popen[role] = p
        return p

    def _start(self):
        self.log = open(os.path.join(self.home, "log"), "wb")
        r, w = os.pipe()
        self._spawn("x", ["Xvfb", "-displayfd", str(w), "-screen", "0", "%dx%dx24" % SCREEN,
                          "-dpi", "96", "-nolisten", "tcp", "-noreset"], pass_fds=(w,))
        os.close(w)
        number = self._line(r, 15, "X server")
        self.display = ":" + number
        run = os.path.join(self.home, "run")
        os.mkdir(run, 0o700)
        self.env = dict(
            PATH=os.environ.get("PATH", "/usr/bin:/bin"), HOME=self.home, DISPLAY=self.display,
            LANG="C.UTF-8", XDG_RUNTIME_DIR=run, XDG_CONFIG_HOME=self.home + "/.config",
            XDG_CACHE_HOME=self.home + "/.cache", XDG_DATA_HOME=self.home + "/.local/share",
            NO_AT_BRIDGE="1", GTK_A11Y="none", GIO_USE_VFS="local", XDG_SESSION_TYPE="x11")
        for k in ("XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"):
            os.makedirs(self.env[k], exist_ok=True)
        self.env.update(self.spec.get("env") or {})
        if self.spec.get("files"):
            shutil.copytree(self.spec["files"], self.home, dirs_exist_ok=True)
        r, w = os.pipe()
        self._spawn("bus", ["dbus-daemon", "--session", "--nofork", "--nopidfile",
                            f"--print-address={w}"], pass_fds=(w,), env=self.env)
        os.close(w)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._line(r, 10, "session bus")
        rc = os.path.join(self.home, "rc.xml")
        with open(rc, "w") as f:
            f.write(RC_XML)
        self._spawn("wm", ["openbox", "--sm-disable", "--config-file", rc], env=self.env)
        self.watch = Watch(self.display)
        self.watch.root.change_attributes(background_pixel=0x5A6B7C)
        self.watch.root.clear_area()
        self._until(lambda: self.watch.prop(self.watch.root, "_NET_SUPPORTING_WM_CHECK"), 10,
                    "window manager")
        self.clients = Clients(self.display)
        if self.spec.get("prep"):
            subprocess.run(["sh", "-c", self.spec["prep"]], env=self.env, cwd=self.home,
                           timeout=30, check=True, stdin=subprocess.DEVNULL)

    @staticmethod
    def _line(fd, secs, what):
        buf, end = b"", now() + secs
        try:
            while not buf.endswith(b"\n"):
                if not select.select([fd], [], [], max(0, end - now()))[0]:
                    raise BenchError(what + " did not start")
                got = os.read(fd, 512)
                if not got:
                    raise BenchError(what + " ended at start")
                buf += got
        finally:
            os.close(fd)
        return buf.decode().strip()

    @staticmethod
    def _until(cond, secs, what):
        end = now() + secs
        while not cond():
            if now() > end:
                raise BenchError("timed out: " + what)
            time.sleep(0.01)

    def start_panel(self):
        """Run the panel's command; return the instant just before."""
        if self.spec.get("cmd") is None:
            return now()
        t0 = now()
        self._spawn("panel", ["sh", "-c", "exec " + self.spec["cmd"]], env=self.env, cwd=self.home)
        return t0

    def alive(self):
        p = self.popen.get("panel")
        if p and p.poll() is not None and not self.roles()["panel"]:
            raise BenchError(f"the panel ended with status {p.returncode}")

    def roles(self):
        """Every process of the measured desktop by role. The panel's are: what its command started,
        what it started that daemonised, and bus-activated processes that are X clients
        (applets in processes of their own). Bus-activated ones without X are 'services'."""
        table, role = proc_table(), {p.pid: r for r, p in self.popen.items()}
        out = dict(x=[], wm=[], bus=[], panel=[], services=[])
        me = os.getpid()
        for pid in descendants(table, me):
            if table[pid][3] == "Z":
                continue
            up = pid
            while up not in role and table.get(up, (me,))[0] != me:
                up = table[up][0]
            r = role.get(up, "panel")
            if r == "bus" and table[pid][1] != "dbus-daemon":
                r = "panel" if self._is_x_client(pid) else "services"
            if r in out:
                out[r].append(pid)
        return out

    def _is_x_client(self, pid):
        if not self.xlinked.get(pid):
            try:
                with open(f"/proc/{pid}/maps") as f:
                    maps = f.read()
                self.xlinked[pid] = "libX11" in maps or "libxcb" in maps
            except OSError:
                return False
        return self.xlinked[pid]

    def account(self):
        """CPU so far: {role: {pid: ns}}, with the machine's totals."""
        acc = {r: {p: cpu_ns(p) for p in pids} for r, pids in self.roles().items()}
        acc["self"] = {os.getpid(): time.process_time_ns()}
        return dict(acc=acc, t=now(), busy=busy_ticks())

    @staticmethod
    def spent(a, b):
        """CPU seconds between two accounts by role; 'foreign' is what nobody here spent."""
        out = {r: sum(max(0, v - a["acc"].get(r, {}).get(p, 0)) for p, v in m.items()) / 1e9
               for r, m in b["acc"].items()}
        out["wall"] = b["t"] - a["t"]
        busy = (b["busy"][0] - a["busy"][0]) / TICK
        out["foreign"] = max(0.0, busy - sum(v for k, v in out.items() if k != "wall"))
        out["steal"] = (b["busy"][1] - a["busy"][1]) / TICK
        return out

    def drain(self, limit, share=0.02):
        """Wait until panel and X server are quiet (both under `share` of a core for 200 ms).
        Returns the seconds it took to fall quiet, or None when they did not."""
        t0, calm = now(), 0
        roles = self.roles()
        pids = roles["panel"] + roles["x"]
        last, lt = sum(map(cpu_ns, pids)), now()
        while now() - t0 < limit:
            self.watch.idle(0.05)
            cur, t = sum(map(cpu_ns, pids)), now()
            calm = calm + 1 if (cur - last) / 1e9 / (t - lt) < share else 0
            last, lt = cur, t
            if calm >= 4:
                return max(0.0, now() - t0 - 0.2)
        return None

    def __exit__(self, *exc):
        left = signal.alarm(0)                     # the time budget must not cut the clean-up
        for c in (self.clients, self.watch):
            try:
                if c:
                    c.d.close()
            except Exception:
                pass
        try:
            order = self.roles()
            for group in (order["panel"] + order["services"], order["wm"], order["bus"], order["x"]):
                self._end(group)
            self._end(descendants(proc_table(), os.getpid()))
        finally:
            for p in self.popen.values():
                try:
                    p.wait(timeout=2)
                except subprocess.TimeoutExpired:
                    pass
            self.log.close()
            shutil.rmtree(self.home, ignore_errors=True)
            signal.alarm(left)
        return False

    @staticmethod
    def _end(pids):
        for sig, wait in ((signal.SIGTERM, 1.5), (signal.SIGKILL, 1.0)):
            for pid in pids:
                try:
                    os.kill(pid, sig)
                except OSError:
                    pass
            end = now() + wait
            while pids and now() < end:
                table = proc_table()
                for p in pids:                     # adopted orphans are ours to reap
                    if p in table and table[p][3] == "Z" and table[p][0] == os.getpid():
                        try:
                            os.waitpid(p, os.WNOHANG)
                        except OSError:
                            pass
                pids = [p for p in pids if p in table and table[p][3] != "Z"]
                time.sleep(0.02)


# ---------------------------------------------------------------- X: the harness's own windows

def disc_icon(i, n=48):
    rnd = random.Random(i)
    rgb = 0xFF000000 | rnd.randrange(0x303030, 0xFFFFFF)
    c = (n - 1) / 2
    return [n, n] + [rgb if (x - c) ** 2 + (y - c) ** 2 < c * c else 0
                     for y in range(n) for x in range(n)]


class Clients:
    """Ordinary client windows: undecorated, small, well above the bottom edge."""

    def __init__(self, name):
        self.d = display.Display(name)
        self.root = self.d.screen().root
        a = self.d.intern_atom
        self.at = {k: a(k) for k in (
            "_NET_WM_NAME", "UTF8_STRING", "_NET_WM_PID", "_NET_WM_WINDOW_TYPE", "_NET_WM_ICON",
            "_NET_WM_WINDOW_TYPE_NORMAL", "_NET_ACTIVE_WINDOW", "WM_PROTOCOLS",
            "WM_DELETE_WINDOW")}
        self.icons = [array.array("I", disc_icon(i)) for i in range(8)]
        self.wins, self.serial, self.edits = [], 0, 0

    def create(self):
        i = self.serial
        self.serial += 1
        x, y = 40 + (i * 37) % 1400, 40 + (i * 23) % 600
        w = self.root.create_window(x, y, 320, 200, 0, X.CopyFromParent,
                                    background_pixel=0x808080 + (i * 0x1357) % 0x7F7F7F)
        at = self.at
        w.set_wm_class("app%03d" % i, "App%03d" % i)
        w.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize)
        w.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=1,
                       initial_state=Xutil.NormalState)
        w.change_property(at["WM_PROTOCOLS"], Xatom.ATOM, 32, [at["WM_DELETE_WINDOW"]])
        w.change_property(at["_NET_WM_PID"], Xatom.CARDINAL, 32, [os.getpid()])
        w.change_property(at["_NET_WM_WINDOW_TYPE"], Xatom.ATOM, 32,
                          [at["_NET_WM_WINDOW_TYPE_NORMAL"]])
        w.change_property(at["_NET_WM_ICON"], Xatom.CARDINAL, 32, self.icons[i % 8])
        self.title(w, "Window %d - document" % i)
        return w

    def title(self, w, text):
        """As toolkits do it: WM_NAME and _NET_WM_NAME both."""
        b = text.encode()
        w.change_property(Xatom.WM_NAME, Xatom.STRING, 8, b)
        w.change_property(self.at["_NET_WM_NAME"], self.at["UTF8_STRING"], 8, b)

    def grow(self, n):
        """Have n windows open."""
        while len(self.wins) < n:
            w = self.create()
            w.map()
            self.wins.append(w)
            if len(self.wins) % 10 == 0:
                self.d.sync()
                time.sleep(0.02)
        self.d.sync()

    def activate(self, w):
        ev = xevent.ClientMessage(window=w, client_type=self.at["_NET_ACTIVE_WINDOW"],
                                  data=(32, [2, X.CurrentTime, 0, 0, 0]))
        self.root.send_event(ev, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.d.flush()


# ---------------------------------------------------------------- X: looking at the panel

class Watch:
    """The harness's eye: finds the dock window, sees its damage, reads its pixels."""

    def __init__(self, name):
        self.d = display.Display(name)
        self.root = self.d.screen().root
        self.d.set_error_handler(lambda *a: None)
        self.d.damage_query_version()
        self.damage_code = self.d.extension_event.DamageNotify
        self.atoms = {}
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask | X.PropertyChangeMask)
        self.d.sync()
        self.win = self.dmg = None
        self.paints, self.last_damage = 0, 0.0

    def atom(self, name):
        if name not in self.atoms:
            self.atoms[name] = self.d.intern_atom(name)
        return self.atoms[name]

    def prop(self, w, name):
        try:
            p = w.get_full_property(self.atom(name), X.AnyPropertyType)
        except error.XError:
            return None
        return list(p.value) if p else None

    def poll(self, timeout=0.0):
        """Events that arrive within `timeout` s: [(time, event)]; damage is re-armed here."""
        n = self.d.pending_events()
        if not n and timeout > 0:
            select.select([self.d.fileno()], [], [], timeout)
            n = self.d.pending_events()
        t, out, rearm = now(), [], False
        while n:
            for _ in range(n):
                ev = self.d.next_event()
                if ev.type == self.damage_code:
                    self.paints += 1
                    self.last_damage = t
                    rearm = True
                out.append((t, ev))
            n = self.d.pending_events()
        if rearm and self.dmg is not None:
            self.d.damage_subtract(self.dmg)
            self.d.flush()
        return out

    def idle(self, secs):
        end = now() + secs
        while True:
            left = end - now()
            self.poll(max(0.0, left))
            if left <= 0:
                return

    def quiet(self, calm, limit):
        """Wait until the panel was not painted for `calm` s."""
        end = now() + limit
        self.last_damage = now()
        while now() - self.last_damage < calm and now() < end:
            self.poll(0.02)

    # -- the dock window

    def is_dock(self, w):
        types = self.prop(w, "_NET_WM_WINDOW_TYPE") or []
        g = self.geometry(w)
        if not g or g[2] < 16 or g[3] < 8:
            return False
        if self.atom("_NET_WM_WINDOW_TYPE_DOCK") in types:
            return True
        try:
            over = w.get_attributes().override_redirect
        except error.XError:
            return False
        x, y, wd, ht = g
        edge = x <= 0 or y <= 0 or x + wd >= SCREEN[0] or y + ht >= SCREEN[1]
        return bool(over and edge and max(wd, ht) >= 300 and min(wd, ht) <= 200)

    def geometry(self, w):
        """Rectangle on the screen, clipped to it; None when there is nothing to see."""
        try:
            g = w.get_geometry()
            o = w.translate_coords(self.root, 0, 0)   # root's origin in the window: negate
        except error.XError:
            return None
        x, y = -o.x, -o.y
        x0, y0 = max(0, x), max(0, y)
        x1, y1 = min(SCREEN[0], x + g.width), min(SCREEN[1], y + g.height)
        return (x0, y0, x1 - x0, y1 - y0) if x1 > x0 and y1 > y0 else None

    def find_dock(self, session, limit):
        """First dock window that gets mapped: (window, instant seen mapped). The display is
        private, so a window of neither harness nor WM is the panel's; a _NET_WM_PID must agree."""
        own = {session.clients.d.display.info.resource_id_base,
               self.d.display.info.resource_id_base}
        mask = ~self.d.display.info.resource_id_mask
        cand, mapped, end, look = {}, {}, now() + limit, 0.0
        while now() < end:
            for t, ev in self.poll(0.01):
                if ev.type == X.CreateNotify and (ev.window.id & mask) not in own:
                    w = ev.window
                    w.change_attributes(event_mask=X.StructureNotifyMask)
                    cand[w.id] = w
                    try:
                        if w.get_attributes().map_state == X.IsViewable:
                            mapped.setdefault(w.id, now())
                    except error.XError:
                        cand.pop(w.id)
                elif ev.type == X.MapNotify and ev.window.id in cand:
                    mapped.setdefault(ev.window.id, t)
            for wid in sorted(mapped, key=mapped.get):
                w = cand.get(wid)
                if w is not None and self.is_dock(w):
                    pid = self.prop(w, "_NET_WM_PID")
                    if not pid or pid[0] in session.roles()["panel"]:
                        return w, mapped[wid]
            if now() > look:
                look = now() + 1
                session.alive()
        raise BenchError("no dock window appeared")

    def attach(self, w=None):
        """Report damage of this window (again); it costs the X server work, so storms run without."""
        self.win = w or self.win
        if self.win and self.dmg is None:
            self.dmg = self.win.damage_create(xdamage.DamageReportNonEmpty)
            self.d.sync()

    def detach(self):
        if self.dmg is not None:
            self.d.damage_destroy(self.dmg)
            self.dmg = None
            self.d.sync()

    def image(self, w=None):
        """(rectangle, pixels) of the panel's area as it is on the screen."""
        g = self.geometry(w or self.win)
        if not g:
            return None, b""
        try:
            return g, self.root.get_image(*g, X.ZPixmap, 0xFFFFFFFF).data
        except error.XError:
            return g, b""

    def first_change(self, base, limit):
        """Instant of the first damage after which the pixels differ from `base`, else None;
        and every other event met on the way."""
        end, seen = now() + limit, []
        while now() < end:
            got = self.poll(min(0.05, max(0.001, end - now())))
            hit = [t for t, ev in got if ev.type == self.damage_code]
            seen += [(t, e) for t, e in got if e.type != self.damage_code]
            if hit and self.image() != base:
                return hit[0], seen
        return None, seen


def painted(data):
    """More than a frame and a fill: at least 3 colours in the area."""
    m = memoryview(data)
    return len(m) >= 4 and len(set(m[:len(m) // 4 * 4].cast("I"))) >= 3


# ---------------------------------------------------------------- measurements

def measure_start(spec, cfg, limit=20):
    with Session(spec) as s:
        w = s.watch
        s.clients.grow(12)
        w.idle(0.3)
        t0 = s.start_panel()
        win, t_map = w.find_dock(s, limit)
        t_paint = None
        while t_paint is None:
            if now() - t0 > limit:
                raise BenchError("the dock stayed blank")
            _, data = w.image(win)
            if painted(data):
                t_paint = now()
            else:
                w.poll(0.002)
        last, t_last = w.image(win), t_paint
        while now() - t_last < 0.8 and now() - t0 < limit:
            w.idle(0.015)
            img = w.image(win)
            if img != last:
                last, t_last = img, now()
        return dict(mapped=(t_map - t0) * 1e3, paint=(t_paint - t0) * 1e3,
                    settled=(t_last - t0) * 1e3)


def open_latency(s, cfg):
    w, c = s.watch, s.clients
    total, after_wm, missed, a = [], [], 0, s.account()
    for _ in range(cfg["opens"]):
        w.quiet(cfg["quiet"], 1.5)
        base = w.image()
        win = c.create()
        c.d.sync()
        w.poll()
        win.map()
        t0 = now()
        c.d.flush()
        t, seen = w.first_change(base, 2.0)
        if t is None:
            missed += 1
        else:
            total.append((t - t0) * 1e3)
            listed = [a for a, e in seen if e.type == X.PropertyNotify
                      and e.atom == w.atom("_NET_CLIENT_LIST") and a <= t]
            after_wm.append((t - listed[0]) * 1e3 if listed else None)
        w.quiet(cfg["quiet"], 1.5)
        win.destroy()
        c.d.flush()
        w.idle(0.05)
    sp = Session.spent(a, s.account())
    return dict(open_ms=summary(total), open_after_wm_ms=summary(after_wm), open_missed=missed,
                open_foreign=summary([sp["foreign"] / sp["wall"]]))


def focus_latency(s, cfg, n):
    w, c = s.watch, s.clients
    total, after_wm, missed, acc = [], [], 0, s.account()
    active = w.atom("_NET_ACTIVE_WINDOW")
    for i in range(cfg["focus_lat"]):
        win = c.wins[(i * 7 + 1) % n]
        w.quiet(cfg["quiet"], 1.0)
        base = w.image()
        w.poll()
        t0 = now()
        c.activate(win)
        t, seen = w.first_change(base, 1.0)
        if t is None:
            missed += 1
            continue
        total.append((t - t0) * 1e3)
        ch = [a for a, e in seen if e.type == X.PropertyNotify and e.atom == active and a <= t]
        after_wm.append((t - ch[0]) * 1e3 if ch else None)
    sp = Session.spent(acc, s.account())
    return {f"focus_ms_{n}": summary(after_wm), f"focus_req_ms_{n}": summary(total),
            f"focus_missed_{n}": missed,
            f"focus_ms_{n}_foreign": summary([sp["foreign"] / sp["wall"]])}


def paced(w, count, rate, act):
    """Call act(k) count times at `rate`; the seconds it took."""
    t0 = now()
    for k in range(count):
        due = t0 + k / rate
        while True:
            left = due - now()
            w.poll(max(0.0, left))
            if left <= 0:
                break
        act(k)
    return now() - t0


def storm(s, cfg, count, rate, act):
    """CPU spent on a paced series of events and on the catching up after it."""
    w = s.watch
    s.drain(cfg["drain"])
    w.detach()
    w.poll()
    a = s.account()
    took = paced(w, count, rate, act)
    lag = s.drain(cfg["drain"])
    out = Session.spent(a, s.account())
    out.update(count=count, rate=count / took, lag=lag)
    w.attach()
    s.alive()
    return out


def storms(s, cfg, rate, act):
    """The repeats of one storm; no more after one from which the panel did not recover. Runs
    disturbed by other work on the machine are replaced, three times at most."""
    runs, spare = [], 3
    while len(runs) < cfg["repeats"] and (not runs or runs[-1]["lag"] is not None):
        r = storm(s, cfg, int(rate * cfg["secs"]), rate, act)
        if r["foreign"] > FOREIGN * r["wall"] and spare and r["lag"] is not None:
            spare -= 1
            continue
        runs.append(r)
    return runs


def paint_rate(s, cfg, rate, act):
    """How often a second the panel is repainted in one more second of such a storm."""
    s.watch.attach()
    s.watch.poll()
    p0 = s.watch.paints
    took = paced(s.watch, rate, rate, act)
    n = s.watch.paints - p0
    s.drain(cfg["drain"])
    return n / took


def storm_figures(key, runs, out):
    """CPU is over the storm and the catching up after it, divided by the number of events."""
    for role, name in (("panel", "cpu_us"), ("x", "xserver_us"), ("wm", "wm_us")):
        out[f"{key}_{name}"] = summary([r[role] / r["count"] * 1e6 for r in runs])
    out[f"{key}_lag_ms"] = summary([r["lag"] * 1e3 for r in runs if r["lag"] is not None])
    out[f"{key}_rate"] = summary([r["rate"] for r in runs])
    out[f"{key}_never_quiet"] = sum(r["lag"] is None for r in runs)
    out[f"{key}_foreign"] = summary([r["foreign"] / r["wall"] for r in runs])
    out[f"{key}_steal_s"] = summary([r["steal"] for r in runs])


def title_storm(s, cfg, n, out):
    c = s.clients

    def act(k):
        c.edits += 1                               # never a title the window has had before
        c.title(c.wins[k % n], "Document %d - edit %d of the day" % (k % n, c.edits))
        c.d.flush()
    runs = storms(s, cfg, cfg["title_rate"], act)
    storm_figures(f"title_{n}", runs, out)
    out[f"title_{n}_paints_s"] = paint_rate(s, cfg, cfg["title_rate"], act)


def focus_storm(s, cfg, n, out):
    c = s.clients
    def act(k):
        c.activate(c.wins[k % n])
    runs = storms(s, cfg, cfg["focus_rate"], act)
    storm_figures(f"focus_{n}", runs, out)
    out[f"focus_{n}_paints_s"] = paint_rate(s, cfg, cfg["focus_rate"], act)


def churn(s, cfg, out):
    """Each tick maps one window and destroys the one mapped 10 ticks (0.5 s) before."""
    c, runs, mem = s.clients, [], [memory_kb(s.roles()["panel"])]
    for _ in range(cfg["churn_rounds"]):
        alive, total = [], cfg["churn"]

        def act(k):
            if k < total:
                win = c.create()
                win.map()
                alive.append(win)
            if k >= 10:
                alive.pop(0).destroy()
            c.d.flush()
        r = storm(s, cfg, total + 10, 20, act)
        r["count"] = total
        runs.append(r)
        s.watch.idle(0.5)
        mem.append(memory_kb(s.roles()["panel"]))
    storm_figures("churn", runs, out)
    grow = [b["rss"] - a["rss"] for a, b in zip(mem, mem[1:])]
    out["churn_rss_first_kb"], out["churn_rss_last_kb"] = grow[0], grow[-1]
    out["churn_private_kb"] = mem[-1]["private"] - mem[0]["private"]


def idle(s, cfg, out):
    roles = s.roles()
    t = proc_table()
    ticks = sum(t[p][2] for p in roles["panel"] if p in t)
    p0, a = s.watch.paints, s.account()
    slices = []
    for _ in range(4):
        b = s.account()
        s.watch.idle(cfg["idle"] / 4)
        slices.append(Session.spent(b, s.account()))
    sp = Session.spent(a, s.account())
    t = proc_table()
    out["idle_ticks"] = sum(t[p][2] for p in s.roles()["panel"] if p in t) - ticks
    out["idle_cpu_ms"] = summary([x["panel"] * 1e3 / (cfg["idle"] / 4) for x in slices])
    out["idle_cpu_total_ms"] = sp["panel"] * 1e3
    out["idle_xserver_ms"] = sp["x"] * 1e3
    out["idle_foreign"] = summary([sp["foreign"] / sp["wall"]])
    out["idle_paints"] = s.watch.paints - p0


def memory(s, n, out):
    roles = s.roles()
    m, sv = memory_kb(roles["panel"]), memory_kb(roles["services"])
    out[f"mem_{n}"] = dict(rss_mb=m["rss"] / 1024, pss_mb=m["pss"] / 1024,
                           private_mb=m["private"] / 1024, processes=len(roles["panel"]),
                           services_pss_mb=sv["pss"] / 1024, services=len(roles["services"]))


def measure(spec, cfg, log):
    """All figures of one panel; what was measured before a failure is kept."""
    out, control = {}, spec.get("cmd") is None
    signal.alarm(int(spec.get("budget") or 420))
    t_begin = now()
    try:
        if not control:
            measure_start(spec, cfg)                         # warms the page cache
            starts = [measure_start(spec, cfg) for _ in range(cfg["starts"])]
            for k in ("mapped", "paint", "settled"):
                out[f"start_{k}_ms"] = summary([x[k] for x in starts])
        with Session(spec) as s:
            w = s.watch
            if not control:
                s.start_panel()
                win, _ = w.find_dock(s, 20)
                s.drain(5)
                w.attach(win)
                bare = w.image()
            s.clients.grow(20)
            s.drain(cfg["drain"])
            if not control:
                out["dock"] = list(w.geometry(win) or ())
                out["buttons_change_pixels"] = w.image() != bare
                log("idle")
                idle(s, cfg, out)
                memory(s, 20, out)
                log("open latency")
                out.update(open_latency(s, cfg))
            for n in cfg["title_n"]:
                log(f"{n} windows")
                a = s.account()
                s.clients.grow(n)
                out[f"grow_{n}_quiet_s"] = s.drain(3 * cfg["drain"])
                out[f"grow_{n}_cpu_s"] = Session.spent(a, s.account())["panel"]
                if not control:
                    a = s.account()
                    w.idle(1.5)
                    sp = Session.spent(a, s.account())
                    out[f"rest_{n}_cpu_ms"] = sp["panel"] / sp["wall"] * 1e3
                if n in cfg["focus_n"]:
                    if not control:
                        out.update(focus_latency(s, cfg, n))
                    focus_storm(s, cfg, n, out)
                title_storm(s, cfg, n, out)
                if n == 20:
                    churn(s, cfg, out)
                elif not control:
                    memory(s, n, out)
            ends = cfg["title_n"][0], cfg["title_n"][-1]
            lo, hi = (out[f"title_{n}_cpu_us"]["median"] for n in ends)
            sane = lo > 0 and not any(out[f"title_{n}_never_quiet"] for n in ends)
            out["title_scaling"] = hi / lo if sane else None
    except (BenchError, error.XError, error.ConnectionClosedError, OSError,
            subprocess.SubprocessError) as e:
        out["failed"] = f"{type(e).__name__}: {e}"
        log("FAILED " + out["failed"])
    finally:
        signal.alarm(0)
    out["seconds"] = now() - t_begin
    return out


def screenshot(spec, path, n=12):
    with Session(spec) as s:
        s.start_panel()
        s.watch.find_dock(s, 20)
        s.clients.grow(n)
        s.drain(5)
        s.clients.activate(s.clients.wins[4])
        s.watch.idle(1.0)
        subprocess.run(["import", "-window", "root", "-depth", "8", "-colors", "64",
                        "PNG8:" + path], env=s.env, timeout=30, check=True)


# ---------------------------------------------------------------- report

def num(v):
    if v is None:
        return "-"
    a = abs(v)
    return "0" if a == 0 else f"{v:.0f}" if a >= 100 else f"{v:.1f}" if a >= 10 else f"{v:.2f}"


def cell(v, p95=False):
    if isinstance(v, dict):
        more = f", p95 {num(v['p95'])}" if p95 else ""
        return f"**{num(v['median'])}**{more} ({num(v['min'])}–{num(v['max'])})"
    return f"**{num(v)}**" if isinstance(v, (int, float)) else str(v) if v else "-"


def rows(cfg):
    """(title, key or function of a panel's figures and the control's, show p95)"""
    def net(key):
        def shifted(r, c):
            base = c[key]["median"] if c and c.get(key) else 0
            return r.get(key) and {k: r[key][k] - base for k in ("median", "min", "max")}
        return shifted

    def mem(n, f):
        return lambda r, c: (r.get(f"mem_{n}") or {}).get(f)
    out = [("Start: dock mapped, ms", "start_mapped_ms", False),
           ("Start: first paint, ms", "start_paint_ms", False),
           ("Start: picture settled, ms", "start_settled_ms", False),
           ("Idle CPU, N=20, ms per s", "idle_cpu_ms", False),
           ("Idle CPU, ticks in all (%g s)" % cfg["idle"], "idle_ticks", False),
           ("Idle repaints", "idle_paints", False),
           ("RSS, N=20, MB", mem(20, "rss_mb"), False),
           ("PSS, N=20, MB", mem(20, "pss_mb"), False),
           ("PSS, N=300, MB", mem(300, "pss_mb"), False),
           ("Processes (and helper services)", lambda r, c: "%d (+%d)" % (
               r["mem_20"]["processes"], r["mem_20"]["services"]) if r.get("mem_20") else None,
            False),
           ("Open: map to pixels, ms", "open_ms", True),
           ("Open: after the WM lists it, ms", "open_after_wm_ms", True)]
    for n in cfg["title_n"]:
        out += [(f"Title change, N={n}: panel µs", f"title_{n}_cpu_us", False),
                (f"Title change, N={n}: X server µs, net", net(f"title_{n}_xserver_us"), False),
                (f"Title storm, N={n}: repaints per s", f"title_{n}_paints_s", False)]
    for lo, n in zip(cfg["title_n"], cfg["title_n"][1:]):
        out += [(f"Growing from {lo} to {n} windows: panel CPU, s", f"grow_{n}_cpu_s", False),
                (f"CPU at rest, N={n}, ms per s", f"rest_{n}_cpu_ms", False)]
    out.append(("Scaling: title µs N=%d ÷ N=%d" % (cfg["title_n"][-1], cfg["title_n"][0]),
                "title_scaling", False))
    for n in cfg["focus_n"]:
        out += [(f"Focus change, N={n}: panel µs", f"focus_{n}_cpu_us", False),
                (f"Focus change, N={n}: X server µs, net", net(f"focus_{n}_xserver_us"), False),
                (f"Focus to pixels, N={n}, ms", f"focus_ms_{n}", True)]
    out += [("Open+close: panel µs per cycle", "churn_cpu_us", False),
            ("Open+close: X server µs, net", net("churn_xserver_us"), False),
            ("RSS growth, first %d cycles, KB" % cfg["churn"], "churn_rss_first_kb", False),
            ("RSS growth, last %d cycles, KB" % cfg["churn"], "churn_rss_last_kb", False)]
    return out


def markdown(doc):
    res = doc["panels"]
    control = res.get("none", {})
    names = [n for n in res if n != "none"]
    lines = ["| | " + " | ".join(f"{n} {res[n].get('version') or ''}".strip() for n in names) + " |",
             "|---" * (len(names) + 1) + "|"]
    for title, key, p95 in rows(doc["config"]):
        vals = [key(res[n], control) if callable(key) else res[n].get(key) for n in names]
        marks = [" †" if isinstance(key, str) and key.endswith("_cpu_us")
                 and res[n].get(key[:-6] + "never_quiet") else "" for n in names]
        lines.append(f"| {title} | "
                     + " | ".join(cell(v, p95) + m for v, m in zip(vals, marks)) + " |")
    notes = [f"{n}: {res[n]['failed']}" for n in names if res[n].get("failed")]
    for n in names:
        for k, v in res[n].items():
            if (k.endswith("_never_quiet") or "_missed" in k) and v:
                notes.append(f"{n}: {k} = {v}")
        busy = [f"{k[:-8]} {v['max']:.2f}" for k, v in res[n].items()
                if k.endswith("_foreign") and v and v["max"] > FOREIGN]
        if busy:
            notes.append(f"{n}: other work on the machine, cores in use, during {', '.join(busy)}")
    if any(r.get(k) for r in res.values() for k in r if k.endswith("_never_quiet")):
        notes.append("† the panel had not caught up at the end: not a full account")
    if control:
        notes.append("control (no panel), X server µs per event: " + ", ".join(
            f"{k[:-11].replace('_', ' N=')} {num(v['median'])}" for k, v in control.items()
            if k.endswith("_xserver_us") and v))
    return "\n".join(lines) + "\n\n" + "".join(f"- {x}\n" for x in notes)


def machine():
    with open("/proc/cpuinfo") as f:
        cpu = [ln.split(":", 1)[1].strip() for ln in f if ln.startswith("model name")]
    with open("/proc/meminfo") as f:
        mem = int(f.readline().split()[1])
    ver = {}
    for k, c in (("x server", ["dpkg-query", "-W", "-f", "${Version}", "xvfb"]),
                 ("openbox", ["dpkg-query", "-W", "-f", "${Version}", "openbox"])):
        try:
            ver[k] = subprocess.run(c, capture_output=True, text=True, timeout=10).stdout
        except OSError:
            pass
    return dict(cpu=cpu[0] if cpu else platform.machine(), cores=os.cpu_count(),
                memory_gb=round(mem / 2 ** 20, 1), kernel=platform.release().split("-")[0],
                screen="%dx%d" % SCREEN, python=platform.python_version(), **ver)


def load_specs(args):
    specs = {}
    for d in sorted(os.listdir(args.peers)) if os.path.isdir(args.peers) else ():
        f = os.path.join(args.peers, d, "panel.json")
        if os.path.exists(f):
            with open(f) as fh:
                specs[d] = json.load(fh)
            files = os.path.join(args.peers, d, "home")
            if os.path.isdir(files):
                specs[d]["files"] = files
    specs["none"] = dict(cmd=None)
    added = []
    for p in args.panel:
        name, cmd = p.split("=", 1)
        specs[name] = dict(cmd=cmd)
        added.append(name)
    for e in args.env:
        name, kv = e.split(":", 1)
        k, v = kv.split("=", 1)
        specs[name].setdefault("env", {})[k] = v
    for p in args.prep:
        name, cmd = p.split("=", 1)
        specs[name]["prep"] = cmd
    wanted = args.names + added or ["none"] + [n for n in specs if n != "none"]
    unknown = [n for n in wanted if n not in specs]
    if unknown:
        sys.exit("unknown panel: " + ", ".join(unknown))
    return {n: specs[n] for n in dict.fromkeys(wanted)}


def set_up_process():
    ctypes.CDLL(None).prctl(36, 1, 0, 0, 0)          # PR_SET_CHILD_SUBREAPER: orphans come to us
    signal.signal(signal.SIGALRM, on_alarm)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))


def main():
    ap = argparse.ArgumentParser(description=__doc__,
                                 formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("names", nargs="*", help="panels under the peers folder, or 'none'")
    ap.add_argument("--panel", action="append", default=[], metavar="NAME=COMMAND")
    ap.add_argument("--env", action="append", default=[], metavar="NAME:KEY=VALUE")
    ap.add_argument("--prep", action="append", default=[], metavar="NAME=COMMAND",
                    help="run before the panel, with its environment and $HOME")
    ap.add_argument("--peers", default=os.path.join(HERE, "peers"))
    ap.add_argument("--quick", action="store_true", help="under a minute a panel, wider spread")
    ap.add_argument("--out", default="panel-bench", help="writes OUT.json and OUT.md")
    ap.add_argument("--shots", metavar="PREFIX", help="only take PREFIX-<name>.png, 12 windows")
    args = ap.parse_args()
    cfg = dict(QUICK if args.quick else FULL)
    specs = load_specs(args)

    set_up_process()
    if args.shots:
        for name, spec in specs.items():
            if spec["cmd"]:
                screenshot(spec, f"{args.shots}-{name}.png")
                print(name, flush=True)
        return
    doc = dict(machine=machine(), mode="quick" if args.quick else "full", config=cfg, panels={})
    for name, spec in specs.items():
        def log(what, name=name):
            print(f"[{name}] {what}", file=sys.stderr, flush=True)
        log("start")
        res = dict(command=spec["cmd"], note=spec.get("note"), load=os.getloadavg()[0])
        if spec.get("version"):
            res["version"] = subprocess.run(["sh", "-c", spec["version"]], capture_output=True,
                                            text=True, timeout=10).stdout.strip()
        res.update(measure(spec, cfg, log))
        log(f"done in {res['seconds']:.0f} s")
        doc["panels"][name] = res
        with open(args.out + ".json", "w") as f:
            json.dump(doc, f, indent=1)
        with open(args.out + ".md", "w") as f:
            f.write(markdown(doc))
    print(markdown(doc))


if __name__ == "__main__":
    main()
