"""A desktop of its own for the length of a test: display, buses, window manager, panel, banners, and a home."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "Support"))
from surroundings import adopt_orphans, end_with_parent, start_screen, start_session_bus, until

SKIPPED = 77
LIMIT = 400

LAUNCHER = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")
TOOLS = ("dbus-daemon", "openbox", "trayer", "dunst", "xdotool", "xclip", "import")

# Each banner is written down as it appears on the screen, and stays there.
BANNERS = """[global]
  origin = bottom-left
  stack_duplicates = false
  notification_limit = 0
[urgency_low]
  timeout = 0
[urgency_normal]
  timeout = 0
[urgency_critical]
  timeout = 0
[recorded]
  summary = "*"
  script = "{recorder}"
"""
RECORDER = """#!/bin/sh
printf '%s\\t%s\\t%s\\n' "$DUNST_URGENCY" "$DUNST_SUMMARY" "$DUNST_BODY" >>'{file}'
"""


def early_afternoon():
    """A zone where it is between one and two o'clock: a week looks alike there, whenever it is looked at."""
    return f"Etc/GMT{time.gmtime().tm_hour - 13:+}"


class Desktop:
    """Use it as a context: all that it started has ended, and its folder is gone, when that is left."""

    def __init__(self, name, pictures):
        self.name = name
        self.pictures = pathlib.Path(pictures) / name
        self.folder = None
        self.environment = None
        self.running = {}

    def __enter__(self):
        if not shutil.which("Xvfb"):
            print("skipped: there is no Xvfb here (Scripts/install-dependencies test installs it)")
            sys.exit(SKIPPED)
        missing = [tool for tool in TOOLS if not shutil.which(tool)]
        assert not missing, f"missing: {missing}; Scripts/install-dependencies test installs them"
        adopt_orphans()
        # Whoever ends the test does so in time for it to clean up.
        signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended from outside"))
        signal.signal(signal.SIGALRM, lambda *_: sys.exit("this takes far too long"))
        signal.alarm(LIMIT)
        shutil.rmtree(self.pictures, ignore_errors=True)
        self.pictures.mkdir(parents=True)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="end-to-end-"))
        try:
            self.start_all()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, kind, error, trace):
        try:
            if error is not None:
                self.tell_outputs()
                self.picture("failure")
        finally:
            self.close()

    # Starting and ending

    def start_all(self):
        def start(command, **options):
            self.start(command[0], *command, **options)

        self.make_environment()
        self.environment["DISPLAY"] = start_screen(start, "1280x1000")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = start_session_bus(start, self.runtime)
        os.environ.clear()
        os.environ.update(self.environment)
        self.start("at-spi", next(path for path in LAUNCHER if os.path.exists(path)), "--launch-immediately")
        self.wait_for_name("org.a11y.Bus")
        self.start("openbox", "openbox", "--sm-disable")
        self.start_panel()
        self.start_banners()

    def make_environment(self):
        self.home = self.folder / "home"
        self.runtime = self.folder / "run"
        for folder in (self.home, self.runtime):
            folder.mkdir(mode=0o700)
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "TMPDIR": str(self.folder),
            "LANG": "C.UTF-8",
            "TZ": early_afternoon(),
            "GSETTINGS_BACKEND": "memory",
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }

    def start(self, name, *command, pass_fds=()):
        output = open(self.folder / f"{name}.output", "ab")
        self.running[name] = subprocess.Popen(
            command, env=self.environment, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
            pass_fds=pass_fds, preexec_fn=end_with_parent, start_new_session=True)
        output.close()
        return self.running[name]

    def end(self, name, how=signal.SIGTERM):
        process = self.running.pop(name)
        process.send_signal(how)
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def close(self):
        try:
            for name in reversed(list(self.running)):
                self.end(name)
        finally:
            self.end_orphans()
            shutil.rmtree(self.folder, ignore_errors=True)

    def end_orphans(self):
        """Those of ours that outlived their parents; by now all children of this process are such."""
        children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
        end = time.monotonic() + 10
        while True:
            for child in children.read_text().split():
                patient = time.monotonic() < end - 5
                os.kill(int(child), signal.SIGTERM if patient else signal.SIGKILL)
            try:
                while os.waitpid(-1, os.WNOHANG)[0]:
                    pass
            except ChildProcessError:
                return
            if time.monotonic() > end:
                return
            time.sleep(0.05)

    def tell_outputs(self):
        for output in sorted(self.folder.glob("*.output")):
            text = output.read_text(errors="replace").strip()
            if text:
                print(f"--- {output.stem}\n{text[-4000:]}")

    # What lives on it

    def start_panel(self):
        self.start("trayer", "trayer", "--edge", "top", "--align", "right", "--widthtype", "request",
                   "--height", "24", "--SetPartialStrut", "true")

    def start_banners(self):
        self.banner_file = self.folder / "banners"
        recorder = self.folder / "recorder"
        recorder.write_text(RECORDER.format(file=self.banner_file))
        recorder.chmod(0o755)
        rules = self.folder / "dunstrc"
        rules.write_text(BANNERS.format(recorder=recorder))
        self.start("dunst", "dunst", "-conf", str(rules))
        self.wait_for_name("org.freedesktop.Notifications")

    def banners(self):
        """What has been shown so far: urgency, title and text of each, in order."""
        if not self.banner_file.exists():
            return []
        return [tuple(line.split("\t")) for line in self.banner_file.read_text().splitlines()]

    def wait_for_name(self, name):
        until(f"{name} is on the bus", lambda: self.ask(
            "dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus", "/",
            "org.freedesktop.DBus.NameHasOwner", f"string:{name}").endswith("true"))

    def ask(self, *command, given=""):
        """What a tool answers; nothing where it fails."""
        done = subprocess.run(command, env=self.environment, input=given, text=True, timeout=60,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return done.stdout.strip() if done.returncode == 0 else ""

    def picture(self, name):
        """Keeps a picture of the screen."""
        number = len(list(self.pictures.glob("*.png"))) + 1
        subprocess.run(["import", "-window", "root", str(self.pictures / f"{number:02}-{name}.png")],
                       env=self.environment, timeout=60, check=True)

    def pixels(self, box):
        """What is to be seen in the box (left, top, width, height): red, green and blue, a byte each."""
        left, top, width, height = box
        done = subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8",
                               "rgb:-"], env=self.environment, timeout=60, check=True, stdout=subprocess.PIPE)
        return done.stdout

    # The pointer and the keyboard

    def click(self, place, button=1):
        x, y = place
        self.ask("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def key(self, name):
        self.ask("xdotool", "key", name)
