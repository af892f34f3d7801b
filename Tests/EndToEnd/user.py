"""A user of the program: their home, their sessions, and their hand on the panel."""

import datetime
import itertools
import json
import pathlib
import re
import subprocess
import time
import uuid

from desktop import until
from reader import Reader

SUPPORT = "Library/Application Support/Brindlewick"

# A change of the gauge is followed by itself, a fraction of a second later; the rest is for a busy machine. The loop
# would need up to 30 seconds, so of two changes in a row it can show but one within this.
GAUGE_PATIENCE = 10.0
# What nobody tells of shows at the loop's next run.
LOOP_PATIENCE = 35.0 + GAUGE_PATIENCE


class Session:
    """A session log that grows turn by turn."""

    def __init__(self, home, project="-home-user-orchard"):
        self.identifier = str(uuid.uuid4())
        self.file = pathlib.Path(home) / ".claude/projects" / project / f"{self.identifier}.jsonl"
        self.file.parent.mkdir(parents=True, exist_ok=True)
        self.parent = None
        self.count = itertools.count()

    def turn(self, at, model="claude-opus-4-5-20251101", output=900, cached=60000, effort="high"):
        """A question and its billed answer."""
        self.append(at - 5, type="user", message={"role": "user", "content": "Why does the reader stop early?"})
        self.append(at, type="assistant", effort=effort, requestId=f"req_{next(self.count):024}", message={
            "model": model, "id": f"msg_{uuid.uuid4().hex[:24]}", "type": "message", "role": "assistant",
            "content": [{"type": "text", "text": "It takes a short read for the end of the file."}],
            "stop_reason": "end_turn", "stop_sequence": None,
            "usage": {"input_tokens": 4, "cache_creation_input_tokens": 5200, "cache_read_input_tokens": cached,
                      "cache_creation": {"ephemeral_5m_input_tokens": 0, "ephemeral_1h_input_tokens": 5200},
                      "output_tokens": output, "service_tier": "standard"}})

    def append(self, at, **line):
        moment = datetime.datetime.fromtimestamp(at, datetime.timezone.utc)
        identifier = str(uuid.uuid4())
        whole = {"parentUuid": self.parent, "isSidechain": False, **line, "uuid": identifier,
                 "timestamp": moment.strftime("%Y-%m-%dT%H:%M:%S.") + f"{moment.microsecond // 1000:03}Z",
                 "userType": "external", "entrypoint": "cli", "cwd": "/home/user/orchard",
                 "sessionId": self.identifier, "version": "2.1.123", "gitBranch": "main"}
        self.parent = identifier
        with open(self.file, "a", encoding="utf-8") as log:
            log.write(json.dumps(whole, separators=(",", ":")) + "\n")


class User:
    """What the user does with the program on a desktop."""

    def __init__(self, desktop, program, report):
        self.desktop = desktop
        self.program = program
        self.report = report
        self.reader = Reader()
        self.home = desktop.home
        self.settings = self.home / ".claude/settings.json"

    def start_program(self, descriptors=None, before=()):
        limit = ("sh", "-c", f'ulimit -n {descriptors} && exec "$0"') if descriptors else ()
        return self.desktop.start("program", *before, *limit, str(self.program))

    def wait_for_end(self):
        process = self.desktop.running["program"]
        until("the program has ended", lambda: process.poll() is not None)
        assert process.returncode == 0, f"ended with {process.returncode}"
        del self.desktop.running["program"]

    def is_running(self):
        return self.desktop.running["program"].poll() is None

    # The panel

    def item(self):
        """Where the item stands in the panel: left, top, width, height. Absent where it does not."""
        windows = self.desktop.ask("xdotool", "search", "--onlyvisible", "--class", "^Brindlewick$").split()
        for window in windows:
            shape = self.desktop.ask("xdotool", "getwindowgeometry", "--shell", window)
            box = [int(number) for number in re.findall(r"^(?:X|Y|WIDTH|HEIGHT)=(-?\d+)$", shape, re.MULTILINE)]
            if len(box) == 4 and 16 <= box[2] <= 32 and box[1] < 32:
                return tuple(box)
        return None

    def wait_for_item(self):
        return until("the item is in the panel", self.item)

    def click_item(self, button=1):
        # A hand needs its time: what comes sooner would be taken for the same click.
        time.sleep(0.5)
        left, top, width, height = self.wait_for_item()
        self.desktop.click((left + width // 2, top + height // 2), button)

    def item_picture(self):
        return self.desktop.pixels(self.wait_for_item())

    def choose_start_at_login(self, was_on):
        """In the item's menu, which tells what was chosen before."""
        self.click_item(button=3)
        menu = self.reader.window("popup menu", None)
        assert self.reader.texts(menu) == ["Open", "Refresh now", "Settings…", "Start at login", "Quit"]
        entry = self.reader.find(menu, "menu item", "Start at login")
        assert self.reader.has(entry, self.reader.pyatspi.STATE_CHECKED) == was_on
        self.desktop.picture("menu")
        left, top, width, height = self.reader.box(entry)
        self.desktop.click((left + width // 2, top + height // 2))
        until("the menu closes", lambda: not self.reader.is_open("popup menu", None))

    # The windows

    def is_popover_open(self):
        return self.reader.is_open("dialog", "Brindlewick")

    def popover(self):
        """Opens the popover by a click on the item, where it is not open."""
        if not self.is_popover_open():
            self.click_item()
        return self.reader.window("dialog", "Brindlewick")

    def open_from_popover(self, button):
        self.reader.press(self.popover(), button)
        until("the popover is not in the way", lambda: not self.is_popover_open())
        return self.reader.window("frame", f"Brindlewick — {button}")

    def dashboard_in_figures(self):
        """Opens the dashboard beside the popover's place; gives it, and what of it tells the week in figures."""
        dashboard = self.open_from_popover("Dashboard")
        active = self.reader.pyatspi.STATE_ACTIVE
        until("the dashboard is the active window", lambda: self.reader.has(dashboard, active))
        self.desktop.ask("xdotool", "getactivewindow", "windowmove", "0", "24", "windowsize", "860", "940")
        return dashboard, self.reader.find(dashboard, "list", "This week in figures")

    def week_used(self, figures):
        """How many percent of the week's cap the dashboard tells as used."""
        for text in self.reader.texts(figures):
            if text.endswith("% of the weekly cap used"):
                return int(text.split("%")[0])
        return None

    def spent(self, popover):
        """How many percent of the session's tokens the popover tells as spent."""
        for text in self.reader.texts(popover):
            if "% of tokens spent against " in text:
                return int(text.split("%")[0])
        return None

    def wait_for_spent(self, percent):
        """Waits until the popover tells that much, opening it where need be."""
        popover = self.popover()
        until(f"{percent}% are spent", lambda: self.spent(popover) == percent)
        return popover

    # Claude Code

    def status_line(self, session, week, resets, before=()):
        """Claude Code draws its status line: gives the document to the user's command, and tells what that prints.
        The shell is run by way of `before`."""
        document = {
            "session_id": str(uuid.uuid4()), "cwd": "/home/user/orchard", "version": "2.1.123",
            "model": {"id": "claude-opus-4-5", "display_name": "Opus"},
            "rate_limits": {"five_hour": {"used_percentage": session, "resets_at": int(resets["session"])},
                            "seven_day": {"used_percentage": week, "resets_at": int(resets["week"])}}}
        command = json.loads(self.settings.read_bytes())["statusLine"]["command"]
        done = subprocess.run([*before, "sh", "-c", command], input=json.dumps(document), text=True, timeout=60,
                              check=True, stdout=subprocess.PIPE, env=self.desktop.environment)
        return done.stdout

    # The same numbers from elsewhere

    def report_json(self):
        return json.loads(self.desktop.ask(str(self.report), "--json"))


def faster_than_the_loop(steps):
    """Takes the steps, each of which waits until the program has followed. Its loop alone would come by only every 30
    seconds, and so show at most one of them at a time."""
    start = time.monotonic()
    for step in steps:
        step()
    assert time.monotonic() - start < 30 * (len(steps) - 1), "only the loop has shown it"


def span(seconds):
    """A span as the program tells it."""
    minutes = round(seconds) // 60
    days, hours, rest = minutes // 1440, minutes % 1440 // 60, minutes % 60
    if days:
        return f"{days}d {hours}h" if hours else f"{days}d"
    if not hours:
        return f"{max(rest, 1)}m"
    return f"{hours}h {rest}m" if rest and hours < 6 else f"{hours}h"
