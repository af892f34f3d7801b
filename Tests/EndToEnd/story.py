"""What all stories share: a user of the program, on a desktop of their own."""

import sys
import time

from desktop import Desktop
from user import User

HOUR = 3600.0
DAY = 24 * HOUR


class Story:
    # How long until the windows reset.
    session_left = 2.5 * HOUR
    week_left = 80 * HOUR

    def __init__(self, desktop, program, report):
        self.desktop = desktop
        self.user = User(desktop, program, report)
        self.reader = self.user.reader
        self.now = time.time()
        self.resets = {"session": self.now + self.session_left, "week": self.now + self.week_left}

    @classmethod
    def play(cls, name):
        """As the command line says: with this program and report, and a folder for the pictures."""
        program, report, pictures = sys.argv[1:4]
        with Desktop(name, pictures) as desktop:
            cls(desktop, program, report).tell()
