#!/usr/bin/python3
"""isolation.py PROGRAM REPORT PICTURES

All that a user does with the program, and everything that it asks of the system for it: it talks to the display, the
session bus and the accessibility bus, and nothing is run but the status line that the user had before. (Debian's own
Python: the screen is read by way of its pyatspi.)
"""

import json
import os
import re
import shutil
import sys

from desktop import SKIPPED, until
from story import HOUR, Story
from system_calls import SystemCalls, can_be_traced
from user import SUPPORT, Session

# A system that wants programs signed has it; nowhere else is it run.
SIGNER = "/usr/bin/codesign"
OWN_LINE = """#!/bin/sh
read -r line
echo "my own line"
"""


class Isolation(Story):
    def __init__(self, desktop, program, report):
        super().__init__(desktop, program, report)
        self.program_calls = SystemCalls(desktop.folder / "program.calls")
        self.status_line_calls = SystemCalls(desktop.folder / "status-line.calls")

    def tell(self):
        self.session = Session(self.desktop.home)
        self.session.turn(self.now - HOUR)
        self.user.start_program(before=self.program_calls.before)
        self.opens_all_windows()
        self.installs_the_helper()
        self.sees_a_banner()
        self.switches_start_at_login()
        self.removes_the_helper()
        self.quits()
        self.expect_helper_to_run_the_users_line_alone()
        self.expect_program_to_run_nothing_and_reach_for_nobody_else()

    def opens_all_windows(self):
        popover = self.user.popover()
        self.reader.wait_for_text(popover, "Current session")
        self.reader.press(popover, "Refresh now")
        dashboard, _ = self.user.dashboard_in_figures()
        for tab in ("Models", "History", "This Week"):
            self.reader.press(dashboard, tab, "radio button")
        self.settings = self.user.open_from_popover("Settings")

    def installs_the_helper(self):
        self.own_line = self.desktop.home / "own-line"
        self.own_line.write_text(OWN_LINE)
        self.own_line.chmod(0o755)
        own_settings = {"statusLine": {"type": "command", "command": str(self.own_line)}}
        self.user.settings.write_text(json.dumps(own_settings))
        self.reader.press(self.settings, "Install helper")
        self.reader.wait_for_text(self.settings, "Installed")

    def sees_a_banner(self):
        self.reader.press(self.settings, "Send a test notification")
        until("there is the test's banner", lambda: len(self.desktop.banners()) == 1)
        popover = self.user.popover()
        line = self.user.status_line(91, 30, self.resets, before=self.status_line_calls.before)
        assert line.strip() == "my own line", line
        until("91% are spent", lambda: self.user.spent(popover) == 91)
        until("there is a banner", lambda: "90% of your session limit used" in
              [title for _, title, _ in self.desktop.banners()])
        self.desktop.picture("traced")
        self.desktop.key("Escape")
        until("the popover closes", lambda: not self.user.is_popover_open())

    def switches_start_at_login(self):
        entry = self.desktop.home / ".config/autostart/app.brindlewick.Brindlewick.desktop"
        for wanted in (True, False):
            self.user.choose_start_at_login(was_on=not wanted)
            until("the entry is as chosen", lambda wanted=wanted: entry.exists() == wanted)

    def removes_the_helper(self):
        self.reader.press(self.settings, "Remove helper")
        self.reader.wait_for_text(self.settings, "Not installed")

    def quits(self):
        self.reader.press(self.user.popover(), "Quit")
        self.user.wait_for_end()

    def expect_helper_to_run_the_users_line_alone(self):
        """The first shell is Claude Code's, and finds the helper; the second is the helper's."""
        shell = shutil.which("sh")
        helper = str(self.desktop.home / SUPPORT / "bin/brindlewick-statusline")
        self.status_line_calls.expect([shell, helper, "/bin/sh", str(self.own_line)])

    def expect_program_to_run_nothing_and_reach_for_nobody_else(self):
        display = f"/tmp/.X11-unix/X{self.desktop.environment['DISPLAY'][1:]}"
        places = {display, str(self.desktop.runtime / "bus"), self.accessibility_bus()}
        signing = [SIGNER] * self.program_calls.programs().count(SIGNER) if os.path.exists(SIGNER) else []
        self.program_calls.expect([self.user.program, *signing], places)
        assert self.program_calls.places() == places, f"reached for {self.program_calls.places()}, not {places}"

    def accessibility_bus(self):
        address = self.desktop.ask("dbus-send", "--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                                   "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        return re.match(r"unix:path=([^,]+)", address).group(1)


if __name__ == "__main__":
    if not shutil.which("strace") or not can_be_traced():
        print("skipped: nobody can trace a program here")
        sys.exit(SKIPPED)
    Isolation.play("isolation")
