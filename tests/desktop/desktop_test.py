#!/usr/bin/env python3
"""The real station on a virtual X screen with a window manager.

Each scenario starts its own Xvfb and openbox, runs the `quillon` program
with a private settings and journal folder, drives it only through X input
(xdotool key presses, as an operator uses the menus' Alt letters) and judges
it only from captures of the root window. Every capture is left as a PNG in
the output folder.

    desktop_test.py SCENARIO --quillon PROGRAM --out FOLDER

Scenarios: timing, simulation, captions, fullscreen, recovery.
"""
import argparse
import os
import re
import signal
import subprocess
import sys
import tempfile
import time

# The video is one flat colour, so that the picture is found on the screen
# by its colour and anything over it stands out.
PICTURE = (24, 96, 72)
SCREEN = (1280, 1024)
# The station's overlay geometry counts from a corner 9 pixels left of the
# picture and 43 above it.
FRAME_TO_PICTURE = (9, 43)

SCRIPT = "Good evening, everyone.\n\nThis is the first line\nand this the second.\n\nBye.\n"


class Failure(Exception):
    pass


def run(*cmd, env=None, timeout=60):
    return subprocess.run(cmd, env=env, capture_output=True, text=True, timeout=timeout)


def wait_for(what, check, timeout):
    """Polls `check` until it gives something true; its value is returned."""
    end = time.monotonic() + timeout
    while True:
        value = check()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure("timed out waiting for " + what)
        time.sleep(0.1)


class Capture:
    """One capture of the root window, as RGB rows."""

    def __init__(self, png):
        ppm = subprocess.run(["convert", png, "ppm:-"], capture_output=True, check=True).stdout
        fields = re.match(rb"P6\s+(\d+)\s+(\d+)\s+(\d+)\s", ppm)
        self.width, self.height = int(fields.group(1)), int(fields.group(2))
        self.data = ppm[fields.end():]
        self.png = png

    def pixel(self, x, y):
        i = (y * self.width + x) * 3
        return self.data[i], self.data[i + 1], self.data[i + 2]

    def points(self, rect, step=1):
        x0, y0, w, h = rect
        for y in range(max(y0, 0), min(y0 + h, self.height), step):
            for x in range(max(x0, 0), min(x0 + w, self.width), step):
                yield x, y

    def pixels(self, rect, step=1):
        return (self.pixel(x, y) for x, y in self.points(rect, step))

    def picture(self, within=(0, 0) + SCREEN, step=2):
        """The bounding rectangle of the picture's colour, or None; to the
        pixel with a step of 1."""
        found = [(x, y) for x, y in self.points(within, step) if near(self.pixel(x, y), PICTURE, 24)]
        if len(found) < 1600 // (step * step):
            return None
        xs, ys = [x for x, _ in found], [y for _, y in found]
        return (min(xs), min(ys), max(xs) - min(xs) + 1, max(ys) - min(ys) + 1)

    def panel(self, rect):
        """What a rectangle shows: shares of dark and picture-coloured pixels,
        the number of bright ones and the brightest one's level."""
        dark = pic = bright = total = 0
        top = 0
        for p in self.pixels(rect):
            total += 1
            if max(p) < 50:
                dark += 1
            elif near(p, PICTURE, 24):
                pic += 1
            if min(p) > 140:
                bright += 1
                top = max(top, min(p))
        total = max(total, 1)
        return {"dark": dark / total, "picture": pic / total, "bright": bright, "level": top}

    def shows_text_panel(self, rect):
        """A dark panel with light text on it, where the picture would be."""
        p = self.panel(rect)
        return p["dark"] > 0.45 and p["picture"] < 0.1 and p["bright"] >= 20

    def shows_picture(self, rect):
        return self.panel(rect)["picture"] > 0.8


def near(p, colour, tolerance):
    return all(abs(a - b) <= tolerance for a, b in zip(p, colour))


def twips_rect(picture, left, top, width, height):
    """An overlay's screen rectangle from its place in twips, counted from
    the main window's Left and Top."""
    return (picture[0] - FRAME_TO_PICTURE[0] + left // 15, picture[1] - FRAME_TO_PICTURE[1] + top // 15,
            width // 15, height // 15)


def subtitle_rect(picture, position, two_lines):
    """The subtitle overlay's rectangle, less the few pixels at each side
    that stand beside the picture, over the window's own grey."""
    top = 4000 - position * 350 + (0 if two_lines else 250)
    x, y, w, h = twips_rect(picture, 60, top, 5500, 700 if two_lines else 350)
    return (x + 8, y, w - 16, h)


def caption_rect(picture, position, longest, rows, align):
    width, height = longest * 150, rows * 250
    left = {"L": 60, "C": 60 + (5500 - width) // 2}.get(align, -60 + 5500 - width)
    return twips_rect(picture, left, max(4500 - position * 250 - height, 750), width, height)


def start_xvfb():
    """An Xvfb on a display nobody uses; tries further numbers while the one
    chosen turns out taken (another test may be starting beside this one).
    A server's abstract socket counts as taking its number, even where its
    file in /tmp is gone."""
    first = 100 + os.getpid() % 400
    for n in range(first, first + 50):
        with open("/proc/net/unix") as f:
            listening = "@/tmp/.X11-unix/X%d\n" % n in f.read()
        if listening or os.path.exists("/tmp/.X%d-lock" % n) or os.path.exists("/tmp/.X11-unix/X%d" % n):
            continue
        # -noreset: a server resetting after each short-lived client (xprop,
        # xdotool) drops whoever connects during the reset, openbox even.
        xvfb = subprocess.Popen(["Xvfb", ":%d" % n, "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp",
                                 "-noreset"],
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_for("Xvfb", lambda: xvfb.poll() is not None or os.path.exists("/tmp/.X11-unix/X%d" % n), 30)
        except Failure:
            xvfb.kill()
            xvfb.wait()
            continue
        if xvfb.poll() is None:
            return xvfb, ":%d" % n
    raise Failure("no X display could be started")


class Desktop:
    """Xvfb with openbox, and the programs run on it."""

    def __init__(self, out, name):
        self.out = out
        self.name = name
        self.shots = 0
        self.procs = []
        self.openbox = None
        self.xvfb, self.display = start_xvfb()
        try:
            self.start_openbox()
        except BaseException:
            self.close()
            raise

    def start_openbox(self):
        self.env = dict(os.environ, DISPLAY=self.display)
        self.env.pop("WAYLAND_DISPLAY", None)
        wait_for("the X server", lambda: run("xprop", "-root", env=self.env).returncode == 0, 30)
        self.openbox = subprocess.Popen(["openbox", "--sm-disable"], env=self.env,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for("openbox", lambda: "window id" in run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK",
                                                           env=self.env).stdout, 60)

    def close(self):
        for p in self.procs + [self.openbox, self.xvfb]:
            if p and p.poll() is None:
                p.terminate()
                try:
                    p.wait(10)
                except subprocess.TimeoutExpired:
                    p.kill()
                    p.wait()

    def xdotool(self, *args):
        return run("xdotool", *args, env=self.env).stdout.split()

    def key(self, *keys):
        for k in keys:
            self.xdotool("key", k)

    def window(self, title_regex, timeout=60):
        """The first visible window whose title matches; waits for it."""
        return wait_for("a window titled " + title_regex,
                        lambda: (self.xdotool("search", "--onlyvisible", "--name", title_regex) or [None])[0],
                        timeout)

    def activate(self, window):
        self.xdotool("windowactivate", "--sync", window)

    def geometry(self, window):
        """The window's client area on the screen: x, y, width, height."""
        info = run("xwininfo", "-id", window, env=self.env).stdout
        value = lambda k: int(re.search(k + r":\s+(-?\d+)", info).group(1))
        return (value("Absolute upper-left X"), value("Absolute upper-left Y"), value("Width"), value("Height"))

    def capture(self, label):
        self.shots += 1
        png = os.path.join(self.out, "%s-%02d-%s.png" % (self.name, self.shots, label))
        run("import", "-window", "root", png, env=self.env)
        return Capture(png)

    def until(self, label, check, timeout=30):
        """Captures the screen until `check(capture)` holds; gives that capture."""
        last = []

        def look():
            shot = self.capture(label)
            if last:
                os.remove(last.pop().png)
            if check(shot):
                return shot
            last.append(shot)
            return None
        return wait_for(label, look, timeout)


class Station:
    """The quillon program on the desktop, with its own folders."""

    def __init__(self, desk, program, video, script, home):
        self.desk = desk
        env = dict(desk.env, QUILLON_CONFIG_DIR=os.path.join(home, "config"),
                   QUILLON_STATE_DIR=os.path.join(home, "state"), QUILLON_SCRIPT=script,
                   QUILLON_AUDIO="null", HOME=home, XDG_RUNTIME_DIR=home,
                   ASAN_OPTIONS="detect_leaks=0:abort_on_error=1")
        self.log = open(os.path.join(home, "station.log"), "a")
        self.proc = subprocess.Popen([program, video], env=env, stdout=self.log, stderr=self.log)
        desk.procs.append(self.proc)
        self.home = home

    def main_window(self, timeout=90):
        window = self.desk.window("^QUILLON: ", timeout)
        self.check_alive()
        return window

    def windows(self):
        """The main window and the script window, once they stand side by
        side, both wholly on the screen, the script window to the right."""
        window, script = self.main_window(), self.desk.window("Quillon script$")

        def placed():
            s, t = self.desk.geometry(window), self.desk.geometry(script)
            inside = all(x >= 0 and y >= 0 and x + w <= SCREEN[0] and y + h <= SCREEN[1] for x, y, w, h in (s, t))
            return inside and t[0] >= s[0] + s[2]
        wait_for("the station and its script window side by side on the screen", placed, 10)
        return window, script

    def check_alive(self):
        if self.proc.poll() is not None:
            raise Failure("the station ended (status %s); see %s" % (self.proc.returncode, self.log.name))

    def kill(self):
        self.proc.send_signal(signal.SIGKILL)
        self.proc.wait()


def make_video(path):
    colour = "0x%02x%02x%02x" % PICTURE
    subprocess.run(["ffmpeg", "-hide_banner", "-loglevel", "error", "-nostdin", "-y", "-f", "lavfi", "-i",
                    "color=c=%s:size=320x240:rate=25:duration=20" % colour, "-c:v", "libx264", "-preset",
                    "ultrafast", "-pix_fmt", "yuv420p", path], check=True)


def picture_of(desk, station):
    """The picture's rectangle inside the station's window."""
    area = desk.geometry(station)
    shot = desk.until("picture", lambda c: c.picture(area))
    return shot.picture(area, step=1)


def text_extent(shot, area):
    """Top and bottom of the text on a script window's white page, and the
    width of its first line. Selected text counts as text; a lone caret does
    not."""
    x0, y0, w, h = area
    column = x0 + w - 30
    page = next(y for y in range(y0, y0 + h - 5) if all(shot.pixel(column, y + k) == (255, 255, 255) for k in range(5)))
    inked = lambda y: [x for x in range(x0 + 2, x0 + w // 2) if min(shot.pixel(x, y)) < 200]
    rows = [y for y in range(page, y0 + h - 8) if len(inked(y)) >= 2]
    if not rows:
        raise Failure("no text in the script window")
    width = max(max(inked(y)) for y in rows if y - rows[0] < 10) - x0
    return rows[0], rows[-1], width


def grey_text(c, rect):
    return c.shows_text_panel(rect) and c.panel(rect)["level"] <= 210


def white_text(c, rect):
    return c.shows_text_panel(rect) and c.panel(rect)["level"] >= 240


# The subtitles of SCRIPT: whether each has two lines.
SCRIPT_SUBTITLES = [False, True, False]


def time_by_keys(desk, window, picture, count):
    """Times the first `count` subtitles of SCRIPT by Space, each shown grey
    until its cue-in and white after it; Esc once the next one shows, as an
    operator who has seen the last tag go in."""
    desk.activate(window)
    desk.key("Home", "alt+s", "t")
    for two in SCRIPT_SUBTITLES[:count]:
        rect = subtitle_rect(picture, 0, two)
        desk.until("coming", lambda c: grey_text(c, rect))
        time.sleep(0.5)  # the operator waits for the line to start
        desk.key("space")
        desk.until("cued-in", lambda c: white_text(c, rect))
        time.sleep(1.2)  # and listens to it
        desk.key("space")
    desk.until("next", lambda c: grey_text(c, subtitle_rect(picture, 0, SCRIPT_SUBTITLES[count])))
    desk.key("Escape")
    desk.until("ended", lambda c: c.shows_picture(subtitle_rect(picture, 0, True)))


def open_station(desk, program, video, home, text):
    """The station on `text` as its script: the station, the script's path,
    the main and script windows, and the picture's rectangle."""
    path = os.path.join(home, "script.txt")
    with open(path, "w") as f:
        f.write(text)
    station = Station(desk, program, video, path, home)
    window, script_window = station.windows()
    return station, path, window, script_window, picture_of(desk, window)


def scenario_timing(desk, program, video, home):
    station, path, window, script_window, picture = open_station(desk, program, video, home, SCRIPT)
    page = desk.geometry(script_window)
    before = text_extent(desk.capture("script-before"), page)
    height = lambda e: e[1] - e[0]

    time_by_keys(desk, window, picture, 2)
    # The script window shows the two tags: two lines more, the first a tag.
    after = text_extent(desk.until("script-after", lambda c: height(text_extent(c, page)) > height(before), 20), page)
    pitch = height(before) / 5
    if not 1.5 * pitch < height(after) - height(before) < 2.5 * pitch or after[2] < before[2] * 1.2:
        raise Failure("the script window does not show two tags: %s then %s" % (before, after))

    desk.activate(script_window)
    desk.key("ctrl+s")
    saved = wait_for("the saved script", lambda: (lambda t: t if "SUB[" in t else None)(open(path).read()), 20)
    tag = r"SUB\[0 N (\d\d:\d\d:\d\d:\d\d)>(\d\d:\d\d:\d\d:\d\d)\]\n"
    m = re.fullmatch(tag + r"Good evening, everyone\.\n\n" + tag +
                     r"This is the first line\nand this the second\.\n\nBye\.\n?", saved)
    if not m:
        raise Failure("the saved script is not the timed script:\n" + saved)
    times = list(m.groups())
    if times != sorted(times) or len(set(times)) != 4:
        raise Failure("the saved cues are out of order: %s" % times)
    station.check_alive()


def scenario_simulation(desk, program, video, home):
    station, _, window, _, picture = open_station(
        desk, program, video, home,
        "SUB[0 N 00:00:02:00>00:00:05:00]\nGood evening, everyone.\n\n"
        "SUB[6 N 00:00:07:00>00:00:10:00]\nThis is the first line\nand this the second.\n\n"
        "DUB[0 N 00:00:11:00>00:00:16:00] ANNA\nWhere were you all night? I waited and waited.\n\n")
    low, high = subtitle_rect(picture, 0, False), subtitle_rect(picture, 6, True)
    desk.activate(window)
    desk.key("alt+s", "s", "a")
    # Each subtitle where its position puts it, and nothing where the other's would be.
    desk.until("low-subtitle", lambda c: white_text(c, low) and c.shows_picture(high))
    desk.until("high-subtitle", lambda c: white_text(c, high) and c.shows_picture(low))
    # The dubbing block across the top, its highlight growing with the time spoken.
    text1 = (picture[0], picture[1] + 4, 360, 66)
    highlight = lambda c: sum(1 for p in c.pixels(text1) if near(p, (255, 220, 0), 30))
    first = highlight(desk.until("dubbing", lambda c: highlight(c) > 50))
    desk.until("dubbing-later", lambda c: highlight(c) > first * 1.5, timeout=10)
    station.check_alive()


def scenario_captions(desk, program, video, home):
    station, _, window, _, picture = open_station(
        desk, program, video, home,
        "CAP[0NC 00:00:02:00>00:00:05:00]\nCAPTION ROW ONE\n\n"
        "CAP[8NL 00:00:07:00>00:00:10:00]\nLEFT ROW\nSECOND ROW\n\n")
    centred, raised = caption_rect(picture, 0, 15, 1, "C"), caption_rect(picture, 8, 10, 2, "L")
    desk.activate(window)
    desk.key("alt+c", "s", "a")
    desk.until("centred-caption", lambda c: c.shows_text_panel(centred) and c.shows_picture(raised))
    desk.until("raised-caption", lambda c: c.shows_text_panel(raised) and c.shows_picture(centred))
    station.check_alive()


def chrome_back(c, picture):
    """Menu bar above the picture (dark letters on a light bar) and the time
    labels under it (light digits on black)."""
    x, y, w, h = picture
    menu = c.panel((x, y - 18, w, 14))
    labels = c.panel((x, y + h + 3, w, 18))
    return menu["bright"] > w * 8 and menu["dark"] > 0.01 and labels["dark"] > 0.4 and labels["bright"] > 30


def scenario_fullscreen(desk, program, video, home):
    station, _, window, _, picture = open_station(
        desk, program, video, home,
        "SUB[0 N 00:00:02:00>00:00:04:00]\nOne\n\nSUB[0 N 00:00:10:00>00:00:12:00]\nTwo\n\n")
    normal = desk.geometry(window)
    if not chrome_back(desk.capture("normal"), picture):
        raise Failure("no menu bar or time labels round the picture at the start")
    rect = subtitle_rect(picture, 0, False)
    desk.activate(window)
    desk.key("alt+s", "s", "a")
    desk.until("first-subtitle", lambda c: white_text(c, rect))
    # Between subtitles the dubbing box holds the keys; Ctrl+F takes the picture full screen.
    desk.until("between", lambda c: c.shows_picture(rect))
    desk.key("ctrl+f")
    big = desk.until("full-screen", lambda c: (c.picture() or (0, 0, 0, 0))[2] > 900).picture()
    # The second subtitle over the big picture, as far down from its top.
    desk.until("full-screen-subtitle", lambda c: (lambda p: p["dark"] > 0.1 and p["bright"] >= 20)(
        c.panel((big[0], big[1] + 200, 360, 80))))
    after = desk.until("after", lambda c: (c.picture() or (0, 0, 999, 0))[2] < 400, timeout=30)
    if not chrome_back(after, after.picture()):
        raise Failure("the menus and time labels did not come back after the simulation")
    wait_for("the window's own size", lambda: desk.geometry(window)[2:] == normal[2:], 10)
    station.check_alive()


def scenario_recovery(desk, program, video, home):
    station, path, window, script_window, picture = open_station(desk, program, video, home, SCRIPT)
    time_by_keys(desk, window, picture, 1)
    journal = os.path.join(home, "state", "journal")
    wait_for("the journal", lambda: os.path.isdir(journal) and os.listdir(journal), 20)
    timed = text_extent(desk.capture("before-kill"), desk.geometry(script_window))
    station.kill()
    desk.until("gone", lambda c: c.picture() is None)

    station = Station(desk, program, video, path, home)
    rect = desk.geometry(desk.window("^QUILLON$"))
    # The question itself, a light box with its text, not the splash over it.
    desk.until("question", lambda c: (lambda p: p["bright"] > rect[2] * rect[3] * 0.5 and p["dark"] > 0.005)(
        c.panel(rect)))
    desk.key("Return")
    # Yes: the script comes back as it was, tag and all.
    page = desk.geometry(station.windows()[1])
    same = lambda e: abs(e[1] - e[0] - (timed[1] - timed[0])) <= 4 and abs(e[2] - timed[2]) <= 4
    desk.until("recovered", lambda c: same(text_extent(c, page)))
    station.check_alive()


SCENARIOS = {
    "timing": scenario_timing,
    "simulation": scenario_simulation,
    "captions": scenario_captions,
    "fullscreen": scenario_fullscreen,
    "recovery": scenario_recovery,
}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("scenario", choices=sorted(SCENARIOS))
    parser.add_argument("--quillon", required=True)
    parser.add_argument("--out", required=True)
    args = parser.parse_args()
    os.makedirs(args.out, exist_ok=True)
    for old in os.listdir(args.out):
        if old.startswith(args.scenario + "-") and old.endswith(".png"):
            os.remove(os.path.join(args.out, old))
    with tempfile.TemporaryDirectory(prefix="quillon-desktop-") as home:
        video = os.path.join(home, "picture.mp4")
        make_video(video)
        desk = None
        try:
            desk = Desktop(args.out, args.scenario)
            SCENARIOS[args.scenario](desk, args.quillon, video, home)
        except Failure as e:
            print("%s: %s" % (args.scenario, e), file=sys.stderr)
            log = os.path.join(home, "station.log")
            if os.path.exists(log):
                sys.stderr.write(open(log).read()[-4000:])
            return 1
        finally:
            if desk:
                desk.close()
    print("%s: passed; screenshots in %s" % (args.scenario, args.out))
    return 0


if __name__ == "__main__":
    sys.exit(main())
