#!/usr/bin/python3
"""screen_reader.py PROGRAM REPORT PICTURES

The program by ear alone: what a screen reader says of its windows, and what can be done with one. (Debian's own Python:
the accessibility bus is read by way of its pyatspi.)
"""

import re
import time

from desktop import until
from story import DAY, HOUR, Story
from user import Session, faster_than_the_loop

CONTROLS = ("push button", "check box", "radio button", "menu item")


class ScreenReader(Story):
    def tell(self):
        for day in range(6):
            session = Session(self.desktop.home)
            for turn in reversed(range(8)):
                session.turn(self.now - day * DAY - turn * HOUR / 2 - 900, output=3000, cached=80000)
        self.desktop.ask(str(self.user.report), "helper", "install")
        self.user.status_line(42.5, 76.2, self.resets)
        self.user.start_program()
        self.hears_the_popover()
        self.walks_by_keyboard()
        self.refreshes()
        self.hears_the_dashboard()
        self.hears_the_settings()

    def hears_the_popover(self):
        popover = self.user.wait_for_spent(43)
        until("the popover is the active window", lambda: self.reader.has(popover, self.reader.pyatspi.STATE_ACTIVE))
        self.is_heard(popover, [
            ("label", "Brindlewick"),
            ("panel", "Current session"),
            ("label", "Under pace"),
            ("label", r"Burn rate 0\.\d times, Under pace"),
            ("label", r"43% of tokens spent against 5\d% of the window"),
            ("label", r"resets \d+:\d\d [AP]M"),
            ("label", r"2h \d\dm left"),
            ("push button", r"THIS WEEK\. Over pace\. Runs out .*\. 76% used, 56% elapsed\. resets .*"),
            ("push button", r"Copy /model \w+"),
            ("label", r"updated \d+:\d\d [AP]M"),
            ("push button", "Refresh now"),
            ("push button", "Dashboard"),
            ("push button", "Settings"),
            ("push button", "Quit")])

    def is_heard(self, window, wanted):
        """These stand in the window in this order; and nothing that can be pressed is without a name or out of reach."""
        elements = [(element.getRoleName(), element.name) for element in self.reader.elements(window)]
        rest = iter(elements)
        for role, pattern in wanted:
            assert any(heard[0] == role and re.fullmatch(pattern, heard[1]) for heard in rest), (role, pattern, elements)
        for element in self.reader.elements(window):
            role = element.getRoleName()
            assert role not in ("unknown", "invalid", ""), (role, element.name)
            if role in CONTROLS:
                assert element.name, f"a {role} without a name in {elements}"
                assert self.reader.has(element, self.reader.pyatspi.STATE_FOCUSABLE), element.name
                assert min(self.reader.box(element)[2:]) > 0, element.name

    def walks_by_keyboard(self):
        popover = self.user.popover()
        self.desktop.picture("popover")
        controls = [element.name for element in self.reader.elements(popover) if element.getRoleName() in CONTROLS]
        for name in controls:
            self.desktop.key("Tab")
            until(f'"{name}" has the focus', lambda name=name: self.focused(popover) == name)
        self.desktop.picture("focus-on-the-last-control")

    def focused(self, window):
        for element in self.reader.elements(window):
            if self.reader.has(element, self.reader.pyatspi.STATE_FOCUSED):
                return element.name
        return None

    def refreshes(self):
        session = Session(self.desktop.home)
        faster_than_the_loop([lambda: self.sees_a_turn_by_refreshing(session)] * 5)

    def sees_a_turn_by_refreshing(self, session):
        popover = self.user.popover()
        before = self.user.spent(popover)
        session.turn(time.time(), model="claude-haiku-4-5-20251001", output=15000, cached=300000)
        self.reader.press(popover, "Refresh now")
        until("the turn counts", lambda: self.user.spent(popover) > before)

    def hears_the_dashboard(self):
        dashboard = self.user.open_from_popover("Dashboard")
        summary = r"This week's usage chart\. \d+% of the weekly cap used so far\. .+"
        self.is_heard(dashboard, [
            ("radio button", "This Week"),
            ("radio button", "Models"),
            ("radio button", "History"),
            ("label", "You run out .*"),
            ("chart", summary),
            ("list item", r"\d+% of the weekly cap used"),
            ("list item", "56% of the week elapsed")])
        self.desktop.picture("dashboard")
        chart = self.reader.find(dashboard, "chart")
        assert re.fullmatch(summary, chart.description), chart.description

        self.reader.press(dashboard, "Models", "radio button")
        self.is_heard(self.shows(dashboard, "Opus"), [
            ("list", "This week"), ("list item", r"Opus \d+%"), ("list item", r"Haiku \d+%")])
        self.desktop.picture("models")
        self.reader.press(dashboard, "History", "radio button")
        self.is_heard(self.shows(dashboard, "busiest day"), [
            ("list", "Your rhythm over time"), ("list item", r"\w+, \w+ \d+, \d{4} — .*")])
        self.desktop.picture("history")

    def shows(self, window, part):
        """Waits until some text of the window has that part."""
        until(f'"{part}" is read', lambda: any(part in text for text in self.reader.texts(window)))
        return window

    def hears_the_settings(self):
        settings = self.user.open_from_popover("Settings")
        self.is_heard(settings, [
            ("panel", "Official usage gauge"),
            ("label", "Status"),
            ("label", "Installed"),
            ("push button", "Remove helper"),
            ("panel", "Meter and dashboard"),
            ("radio button", "Match system"),
            ("radio button", "Light"),
            ("radio button", "Dark"),
            ("panel", "Notifications"),
            ("check box", "Warn at 90%, 95%, and 99% of a limit"),
            ("push button", "Send a test notification"),
            ("check box", r"Poll while idle \(not yet available\)")])
        self.desktop.picture("settings")
        polling = self.reader.find(settings, "check box", "Poll while idle (not yet available)")
        assert not self.reader.has(polling, self.reader.pyatspi.STATE_ENABLED)


if __name__ == "__main__":
    ScreenReader.play("screen-reader")
