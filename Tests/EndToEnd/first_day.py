#!/usr/bin/python3
"""first_day.py PROGRAM REPORT PICTURES

A user's first day with the program, from an empty home to the removed helper. (Debian's own Python: the screen is read
by way of its pyatspi.)
"""

import decimal
import json
import re
import time

from desktop import until
from story import DAY, HOUR, Story
from user import GAUGE_PATIENCE, LOOP_PATIENCE, SUPPORT, Session, span

# As a hand writes it: nothing in it stands where, or looks as, the program would write it.
OWN_SETTINGS = """{ "statusLine" : {"type":"command",
                   "padding" : 0, "command": "printf 'my own line'"},
\t"model": "opus",   "env":{"GREETING":"Grüß Gott, 世界 🍎", "EDITOR" : "vi", "ESCAPED":"\\u00e9\\ud83c\\udf4f\\/"},
  "numbers": [1e2, 0.10, -0.0, 12345678901234567890123, 0.1000000000000000055511151231257827],
  "empty": {}, "none": null,
      "allow": ["zsh","bash",   "awk"] }"""

SESSION_BODY = "Hitting 100% pauses Claude until the 5-hour session resets in {}."
WEEK_BODY = "Hitting 100% locks you out until the weekly window resets in {}."


def values(settings):
    """What a settings file says, its numbers to the last digit."""
    return json.loads(settings, parse_int=decimal.Decimal, parse_float=decimal.Decimal)


class FirstDay(Story):
    def __init__(self, desktop, program, report):
        super().__init__(desktop, program, report)
        self.told = []

    def tell(self):
        self.starts_with_nothing_to_measure()
        self.looks_at_a_sample_week()
        self.has_a_first_turn()
        self.installs_the_helper()
        self.sees_the_gauge_move()
        self.copies_the_advice()
        self.asks_what_if()
        self.chooses_an_appearance()
        self.comes_close_to_the_limits()
        self.quits_and_comes_back()
        self.removes_the_helper()

    # The day

    def starts_with_nothing_to_measure(self):
        self.user.start_program()
        self.user.wait_for_item()
        popover = self.user.popover()
        self.reader.wait_for_text(popover, "Nothing to measure yet")
        assert "See a sample week" in self.reader.texts(popover)
        self.desktop.picture("nothing-to-measure")

    def looks_at_a_sample_week(self):
        popover = self.user.popover()
        self.reader.press(popover, "See a sample week")
        self.reader.wait_for_text(popover, "SAMPLE")
        self.reader.wait_for_text(popover, "Current session")
        self.desktop.picture("sample-week")
        self.reader.press(popover, "Exit")
        self.reader.wait_for_text(popover, "Nothing to measure yet")
        assert "SAMPLE" not in self.reader.texts(popover)

    def has_a_first_turn(self):
        popover = self.user.popover()
        self.session = session = Session(self.desktop.home)
        session.append(self.now - 700, type="user", message={"role": "user", "content": "Hello"})
        self.reader.press(popover, "Refresh now")
        self.reader.wait_for_text(popover, "Waiting for your first turn")

        for minutes in (160, 110, 80):
            session.turn(self.now - 60 * minutes, output=40000, cached=900000)
        self.reader.press(popover, "Refresh now")
        self.reader.wait_for_text(popover, "Current session")
        self.reader.wait_for_text(popover, "Connect gauge")
        assert self.user.spent(popover) > 0
        self.desktop.picture("first-turn")

    def installs_the_helper(self):
        self.user.settings.write_bytes(OWN_SETTINGS.encode())
        settings = self.user.open_from_popover("Settings")
        self.reader.wait_for_text(settings, "Not installed")
        self.reader.press(settings, "Install helper")
        self.reader.wait_for_text(settings, "Installed")
        self.desktop.picture("helper-installed")

        helper = self.desktop.home / SUPPORT / "bin/brindlewick-statusline"
        wrapped = "'printf '\\''my own line'\\'''"
        expected = values(OWN_SETTINGS)
        expected["statusLine"] = {"type": "command", "command": f"HWL_WRAPPED_STATUSLINE={wrapped} '{helper}'"}
        assert values(self.user.settings.read_bytes()) == expected
        assert self.backup().read_bytes() == OWN_SETTINGS.encode()

    def backup(self):
        return self.user.settings.with_name("settings.json.hwl-backup")

    def sees_the_gauge_move(self):
        """Meter, popover and dashboard are open, and nobody presses anything in between."""
        _, self.figures = self.user.dashboard_in_figures()
        popover = self.user.popover()
        assert self.user.week_used(self.figures) is None
        assert self.gauge_moves_to(21.4, 48) == "my own line"
        assert "Connect gauge" not in self.reader.texts(popover)
        self.desktop.picture("gauge")
        for step in range(1, 6):
            self.gauge_moves_to(21.4 + 5 * step, 48 + 3 * step)
        self.desktop.picture("gauge-moved")
        self.sees_the_logs_grow()
        self.check_banners()

    def gauge_moves_to(self, session, week):
        """All of them follow the gauge, sooner than the loop comes by."""
        before = self.user.item_picture()
        line = self.user.status_line(session, week, self.resets)
        self.popover_and_dashboard_follow(session, week)
        until("the meter follows", lambda: self.user.item_picture() != before, GAUGE_PATIENCE)
        return line

    def popover_and_dashboard_follow(self, session, week):
        popover = self.user.popover()
        told = round(session), round(week)
        until(f"{told} percent are shown", lambda: self.shown(popover) == told, GAUGE_PATIENCE)

    def shown(self, popover):
        """The percentages of the session, in the popover, and of the week, in the dashboard."""
        return self.user.spent(popover), self.user.week_used(self.figures)

    def sees_the_logs_grow(self):
        """What they tell counts on top of the gauge, as soon as the loop comes by."""
        popover = self.user.popover()
        meter, (session, week) = self.user.item_picture(), self.shown(popover)
        self.session.turn(time.time(), output=5000, cached=110000)
        until("the popover follows", lambda: (self.user.spent(popover) or 0) > session, LOOP_PATIENCE)
        # All of them show one snapshot: the next run need not come.
        until("the dashboard follows", lambda: (self.user.week_used(self.figures) or 0) > week, GAUGE_PATIENCE)
        until("the meter follows", lambda: self.user.item_picture() != meter, GAUGE_PATIENCE)
        self.desktop.picture("logs-grew")

    def copies_the_advice(self):
        """The week's other sessions come to light, and with them that it is too much."""
        for day in range(6):
            earlier = Session(self.desktop.home)
            for turn in reversed(range(8)):
                earlier.turn(self.now - day * DAY - turn * HOUR / 2 - 900, output=3000, cached=80000)
        self.user.status_line(42.5, 72.2, self.resets)
        popover = self.user.popover()
        self.reader.press(popover, "Refresh now")
        self.reader.wait_for_text(popover, "Route the rest to Sonnet")
        verdict = self.user.report_json()["verdict"]
        assert verdict["headline"].startswith("Locked out in ~2d "), verdict
        self.check_banners(("CRITICAL", verdict["headline"], verdict["subtext"]))

        self.reader.press(popover, "Copy /model sonnet")
        self.reader.wait_for_text(popover, "Copied")
        self.desktop.picture("copied")
        until("the command can be pasted", lambda: self.pasted() == "/model sonnet")
        self.reader.find(popover, "push button", "Copy /model sonnet")

    def pasted(self):
        return self.desktop.ask("xclip", "-selection", "clipboard", "-out")

    def asks_what_if(self):
        dashboard = self.user.open_from_popover("Dashboard")
        unasked = "Pick a model or an effort level to see where the week would land instead."
        self.reader.wait_for_text(dashboard, unasked)
        self.reader.press(dashboard, "Haiku", "check box")
        with_haiku = until("there is a result", lambda: self.landing(dashboard))
        assert unasked not in self.reader.texts(dashboard)
        assert "inside the cap" in self.reader.texts(dashboard)
        self.desktop.picture("what-if")
        self.reader.press(dashboard, "Fable", "check box")
        until("the result is another one", lambda: self.landing(dashboard) not in (None, with_haiku))
        self.reader.press(dashboard, "Reset")
        self.reader.wait_for_text(dashboard, unasked)

    def landing(self, dashboard):
        return next((text for text in self.reader.texts(dashboard) if text.startswith("lands ≈")), None)

    def chooses_an_appearance(self):
        settings = self.user.open_from_popover("Settings")
        for name, fits in (("Light", lambda light: light > 180), ("Dark", lambda light: light < 70)):
            self.reader.press(settings, name, "radio button")
            until(f"the settings are {name.lower()}", lambda fits=fits: fits(self.lightness(settings)))
            self.desktop.picture(f"settings-{name.lower()}")

    def lightness(self, window):
        """Of a window's pixels, on the average, from 0 to 255."""
        pixels = self.desktop.pixels(self.reader.box(window))
        return sum(pixels) / len(pixels)

    def comes_close_to_the_limits(self):
        self.climb(88, 72.2)
        self.climb(90, 72.2, ("NORMAL", "90% of your session limit used", SESSION_BODY, "session"))
        self.climb(96.4, 72.2, ("NORMAL", "95% of your session limit used", SESSION_BODY, "session"))
        self.climb(99.3, 91, ("NORMAL", "90% of your weekly limit used", WEEK_BODY, "week"),
                   ("CRITICAL", "99% of your session limit used", SESSION_BODY, "session"))
        self.desktop.picture("close-to-the-limits")
        # No level is told twice.
        self.climb(93, 92)
        self.climb(99.4, 92)

    def climb(self, session, week, *banners):
        """The gauge tells these percentages, and these banners come: urgency, title, body, and whose reset it tells."""
        self.user.popover()
        since = time.time()
        self.user.status_line(session, week, self.resets)
        self.popover_and_dashboard_follow(session, week)
        until("the banners come", lambda: len(self.desktop.banners()) >= len(self.told) + len(banners))
        shown = self.desktop.banners()
        for urgency, title, body, window in banners:
            possible = [(urgency, title, body.format(span(self.resets[window] - at))) for at in (since, time.time())]
            self.told.append(next((banner for banner in possible if banner in shown), possible[0]))
        self.check_banners()

    def check_banners(self, *new):
        """These have come since, in any order, and no others."""
        self.told += new
        until("the banners come", lambda: len(self.desktop.banners()) >= len(self.told))
        assert sorted(self.desktop.banners()) == sorted(self.told), (self.desktop.banners(), self.told)

    def quits_and_comes_back(self):
        popover = self.user.wait_for_spent(99)
        before = self.lasting(popover)
        self.agrees_with_the_report(popover)
        self.reader.press(popover, "Quit")
        self.user.wait_for_end()
        until("the item is gone", lambda: self.user.item() is None)

        self.user.start_program()
        popover = self.user.wait_for_spent(99)
        self.reader.press(popover, "Refresh now")
        until("it is as it was", lambda: self.lasting(popover) == before)
        self.agrees_with_the_report(popover)
        self.desktop.picture("back-again")
        self.check_banners()
        settings = self.user.open_from_popover("Settings")
        self.reader.wait_for_text(settings, "Installed")
        dark = self.reader.find(settings, "radio button", "Dark")
        assert self.reader.has(dark, self.reader.pyatspi.STATE_CHECKED)

    def lasting(self, popover):
        """What the popover tells but for what changes with the minute."""
        return [text for text in self.reader.texts(popover)
                if not text.startswith("updated ") and not re.search(r"\dh|\dm| left$", text)]

    def agrees_with_the_report(self, popover):
        meters = {meter["kind"]: meter for meter in self.user.report_json()["meters"]}
        texts = self.reader.texts(popover)
        assert self.user.spent(popover) == round(100 * meters["session5h"]["used"])
        week = round(100 * meters["weeklyAll"]["used"])
        assert any(text.startswith("THIS WEEK") and f"{week}% used" in text for text in texts), (week, texts)

    def removes_the_helper(self):
        settings = self.user.open_from_popover("Settings")
        self.reader.press(settings, "Remove helper")
        self.reader.wait_for_text(settings, "Not installed")
        assert values(self.user.settings.read_bytes()) == values(OWN_SETTINGS)
        assert self.user.status_line(12, 12, self.resets) == "my own line"
        self.desktop.picture("helper-removed")
        # These stay, and nothing else does.
        assert self.backup().read_bytes() == OWN_SETTINGS.encode()
        assert {file.name for file in self.user.settings.parent.iterdir()} == {
            "settings.json", self.backup().name, "projects"}
        assert [file.name for file in (self.desktop.home / SUPPORT / "bin").iterdir()] == ["brindlewick-statusline"]
        assert not (self.desktop.home / SUPPORT / "statusline-install.json").exists()
        assert self.user.is_running()
        self.check_banners()


if __name__ == "__main__":
    FirstDay.play("first-day")
