"""What tests that run the finished programs put around them: a screen and a session bus of their own."""

import ctypes
import os
import signal
import time

# Nothing is started on demand: what is on the bus, the test has put there.
SESSION_BUS = """<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def until(what, question, patience=30.0):
    """Asks until the answer is one, and gives it; the test fails where there is none in time."""
    end = time.monotonic() + patience
    while True:
        answer = question()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"not within {patience:.0f} s: {what}")
        time.sleep(0.05)


def prctl(option, value):
    ctypes.CDLL(None).prctl(option, value, 0, 0, 0)


def adopt_orphans():
    """What a process of ours leaves behind becomes ours, so that it can be ended too."""
    prctl(36, 1)  # PR_SET_CHILD_SUBREAPER


def end_with_parent():
    """For a process that has just been started: even where the test is killed, it does not stay behind."""
    prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


def start_screen(start, size):
    """Starts a screen by way of `start(command, pass_fds=...)`, and gives the display's name."""
    return ":" + _first_line(start, "Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{size}x24", "-nolisten", "tcp",
                             "-noreset")


def start_session_bus(start, folder):
    """Starts a bus with its socket, "bus", in that folder by way of `start(command, pass_fds=...)`, and gives its
    address."""
    configuration = folder / "bus.conf"
    configuration.write_text(SESSION_BUS.format(folder=folder))
    return _first_line(start, "dbus-daemon", f"--config-file={configuration}", "--nofork", "--nosyslog",
                       "--print-address={fd}")


def _first_line(start, *command):
    """Starts what writes a line to the descriptor "{fd}", and gives that line."""
    reader, writer = os.pipe()
    start([word.replace("{fd}", str(writer)) for word in command], pass_fds=(writer,))
    os.close(writer)
    with os.fdopen(reader) as stream:
        line = stream.readline().strip()
    assert line, f"{command[0]} does not start; is it installed?"
    return line
