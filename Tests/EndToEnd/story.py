"""What all stories share: a user of the program, on a desktop of their own."""

import sys
import time

from desktop import Desktop
from user import User

HOUR = 3600.0
DAY = 24 * HOUR


class Story:
    def __init__(self, desktop, program, report):
        self.desktop = desktop
        self.user = User(desktop, program, report)
        self.reader = self.user.reader
        self.now = time.time()
        # Minutes are told of the session and hours of the week: both change in the middle of what is measured here.
        self.resets = {"session": self.now + 2 * HOUR + 10 * 60 + 30, "week": self.now + 3 * DAY + 2.5 * HOUR}

    @classmethod
    def play(cls, name):
        """As the command line says: with this program and report, and a folder for the pictures."""
        program, report, pictures = sys.argv[1:4]
        with Desktop(name, pictures) as desktop:
            cls(desktop, program, report).tell()
