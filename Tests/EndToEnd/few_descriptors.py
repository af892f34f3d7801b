#!/usr/bin/python3
"""few_descriptors.py PROGRAM REPORT PICTURES

The program under a limit of 64 descriptors, on a home of many logs: it shows them, follows the gauge and opens its
windows. (Debian's own Python: the screen is read by way of its pyatspi.)
"""

import os
import sqlite3

from story import HOUR, Story
from user import SUPPORT, Session

LIMIT = 64
LOGS = 400


class FewDescriptors(Story):
    def tell(self):
        for number in range(LOGS):
            Session(self.desktop.home, f"-home-user-{number % 20}").turn(self.now - HOUR - 60 * number)
        self.desktop.ask(str(self.user.report), "helper", "install")
        self.user.status_line(40, 30, self.resets)
        process = self.user.start_program(descriptors=LIMIT)
        self.user.wait_for_spent(40)
        self.user.open_from_popover("Dashboard")
        self.user.open_from_popover("Settings")
        for percent in range(41, 61):
            self.user.status_line(percent, 30, self.resets)
        self.user.wait_for_spent(60)
        for _ in range(5):
            self.user.reader.press(self.user.popover(), "Refresh now")
        self.desktop.picture("with-few-descriptors")
        assert self.user.is_running()
        with open(f"/proc/{process.pid}/limits", encoding="ascii") as limits:
            assert f"Max open files            {LIMIT} " in limits.read(), "it has the limit"
        print(f"{len(os.listdir(f'/proc/{process.pid}/fd'))} descriptors are open")
        database = sqlite3.connect(self.desktop.home / SUPPORT / "usage.db")
        assert database.execute("SELECT COUNT(*) FROM usage_event").fetchone() == (LOGS,)
        database.close()


if __name__ == "__main__":
    FewDescriptors.play("few-descriptors")
