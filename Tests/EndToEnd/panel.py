#!/usr/bin/python3
"""panel.py PROGRAM REPORT PICTURES

What the desktop does to the program, and the program to the desktop: clicks and keys, its menu, a second start, a panel
and a banner service that die. (Debian's own Python: the screen is read by way of its pyatspi.)
"""

import signal
import subprocess
import time

from desktop import until
from story import HOUR, Story
from user import Session


class Panel(Story):
    def tell(self):
        self.session = Session(self.desktop.home)
        self.session.turn(self.now - HOUR)
        self.desktop.ask(str(self.user.report), "helper", "install")
        self.user.status_line(40, 30, self.resets)
        self.user.start_program()
        self.is_opened_and_closed()
        self.is_started_a_second_time()
        self.starts_at_login()
        self.outlives_the_banner_service()
        self.outlives_a_panel_that_restarts()
        self.stands_on_the_desktop_without_a_panel()

    def is_opened_and_closed(self):
        for name, close in (("a second click on the item", self.user.click_item),
                            ("Escape", lambda: self.desktop.key("Escape")),
                            ("a click beside", lambda: self.desktop.click((300, 600)))):
            self.user.wait_for_spent(40)
            close()
            until(f"the popover closes at {name}", lambda: not self.user.is_popover_open())
            # The click that closed it does not open it again.
            time.sleep(0.5)
            assert not self.user.is_popover_open(), f"it is open again after {name}"

    def is_started_a_second_time(self):
        second = subprocess.run([str(self.user.program)], env=self.desktop.environment, timeout=60, check=False)
        assert second.returncode == 0, second.returncode
        until("the first one shows its popover", self.user.is_popover_open)
        self.desktop.picture("second-start")
        self.desktop.key("Escape")
        until("the popover closes", lambda: not self.user.is_popover_open())

    def starts_at_login(self):
        entry = self.desktop.home / ".config/autostart/app.brindlewick.Brindlewick.desktop"
        assert not entry.exists()
        self.user.choose_start_at_login(was_on=False)
        until("there is an entry", entry.exists)
        assert f'\nExec="{self.user.program}"\n' in entry.read_text(), entry.read_text()
        self.user.choose_start_at_login(was_on=True)
        until("the entry is gone", lambda: not entry.exists())

    def outlives_the_banner_service(self):
        self.user.status_line(91, 30, self.resets)
        until("there is a banner", lambda: self.titles() == ["90% of your session limit used"])
        self.desktop.end("dunst", signal.SIGKILL)
        self.user.status_line(96, 30, self.resets)
        self.user.wait_for_spent(96)
        assert self.user.is_running()
        self.desktop.start_banners()
        # The level that was reached in silence is not told later; the next one is.
        self.user.status_line(99.5, 30, self.resets)
        until("there is a banner again", lambda: "99% of your session limit used" in self.titles())
        assert self.titles() == ["90% of your session limit used", "99% of your session limit used"]
        self.desktop.key("Escape")

    def titles(self):
        """Of the banners that tell a level; those that tell the pace are not of interest here."""
        return [title for _, title, _ in self.desktop.banners() if title.endswith("limit used")]

    def outlives_a_panel_that_restarts(self):
        self.desktop.end("trayer", signal.SIGKILL)
        self.desktop.start_panel()
        self.user.wait_for_spent(100)
        self.desktop.picture("panel-is-back")
        self.desktop.key("Escape")
        until("the popover closes", lambda: not self.user.is_popover_open())

    def stands_on_the_desktop_without_a_panel(self):
        """Nobody tells that a panel has gone: the next run of the loop finds out, and reads the logs too."""
        self.desktop.end("trayer", signal.SIGKILL)
        self.session.turn(time.time(), output=20000, cached=400000)
        until("the popover is a window", self.user.is_popover_open, patience=90)
        until("the loop has read the logs", lambda: self.user.spent(self.user.popover()) != 100)
        self.desktop.picture("without-a-panel")
        self.desktop.start_panel()
        self.user.wait_for_item()
        # The next run finds out; here it need not be waited for.
        self.reader.press(self.user.popover(), "Refresh now")
        until("the window is gone", lambda: not self.user.is_popover_open())
        self.user.popover()


if __name__ == "__main__":
    Panel.play("panel")
