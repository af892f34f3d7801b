"""A home with logs into which markers are planted, and the programs run on it."""

import contextlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "Support"))
from surroundings import end_with_parent, start_screen, start_session_bus, until

# In whatever a user or Claude Code wrote: prompts, answers, thoughts, tools' inputs and results, folders, titles.
TEXT_MARKER = "planted-in-a-text"
# In the name of a log's folder, which Claude Code makes of the project's path.
PATH_MARKER = "planted-in-a-path"
# What a turn is made of; everything else in a log is none of the program's business.
KEPT = {"type", "timestamp", "sessionId", "model", "effort"}
PATIENCE = 60.0

LIMIT_LINE = {
    "type": "assistant", "sessionId": "5f0c54a1-6f0e-4d2b-9c0f-1c7e2f9a4b11",
    "message": {"model": "<synthetic>", "role": "assistant",
                "content": [{"type": "text", "text": "You've hit your session limit · resets 3pm (Europe/Berlin)"}]},
}


def fail(message):
    sys.exit(f"{os.path.basename(sys.argv[0])}: {message}")


def marked(value, key=""):
    if isinstance(value, str):
        return value if key in KEPT else f"{value} {TEXT_MARKER}"
    if isinstance(value, list):
        return [marked(item, key) for item in value]
    if isinstance(value, dict):
        return {name: marked(item, name) for name, item in value.items()} | {TEXT_MARKER: TEXT_MARKER}
    return value


def marked_line(line):
    try:
        return json.dumps(marked(json.loads(line)), ensure_ascii=False)
    except ValueError:  # a torn line
        return f"{line} {TEXT_MARKER}"


class Scene:
    """Everything lies in a folder of its own and is gone at the end, processes too."""

    def __init__(self, bin_folder, stack):
        self.bin = pathlib.Path(bin_folder)
        self.folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="security-test-")))
        self.stack = stack
        self.home = self.folder / "home"
        self.home.mkdir()
        self.support = self.home / "Library/Application Support/Brindlewick"
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.home), "LC_ALL": "C.UTF-8",
                            "XDG_RUNTIME_DIR": str(self.folder), "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
        self.projects = self.home / ".claude/projects"
        self.make_home()

    def make_home(self):
        sample = [self.bin / "make-sample-home", "--home", self.home, "--megabytes", "0.5",
                  "--status-line", self.folder / "document.json"]
        subprocess.run(sample, check=True, stdout=subprocess.DEVNULL)
        first = min(self.projects.iterdir())
        first.rename(self.projects / f"-home-user-{PATH_MARKER}")
        limit = LIMIT_LINE | {"timestamp": time.strftime("%Y-%m-%dT%H:%M:%S.000Z", time.gmtime())}
        for log in self.projects.rglob("*.jsonl"):
            lines = log.read_text().splitlines() + [json.dumps(limit)]
            log.write_text("".join(marked_line(line) + "\n" for line in lines))
        self.document = json.dumps(self.marked_document())

    def marked_document(self):
        document = json.loads((self.folder / "document.json").read_text())
        limits = document.pop("rate_limits")
        return marked(document) | {"rate_limits": limits}

    def run(self, program, *arguments, standard_input="", before=(), variables=None):
        """Both streams of a program of ours that ends by itself, and well."""
        command = [*before, self.bin / program, *arguments]
        done = subprocess.run(command, input=standard_input.encode(), env=self.environment | (variables or {}),
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=PATIENCE)
        if done.returncode != 0:
            fail(f"{command} ended with {done.returncode}: {done.stdout.decode(errors='replace')}")
        return done.stdout

    def started(self, command, **options):
        process = subprocess.Popen(command, start_new_session=True, preexec_fn=end_with_parent, env=self.environment,
                                   **options)
        self.stack.callback(self.stop, process)
        return process

    def stop(self, process, number=signal.SIGTERM):
        """Ends the process with all that it started, and is back when it has ended."""
        if process.poll() is None:
            os.killpg(process.pid, number)
        with contextlib.suppress(subprocess.TimeoutExpired):
            return process.wait(PATIENCE)
        os.killpg(process.pid, signal.SIGKILL)
        fail(f"{process.args} does not end")

    def start_display(self):
        self.environment["DISPLAY"] = start_screen(self.start_quietly, "1024x768")

    def start_bus(self):
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = start_session_bus(self.start_quietly, self.folder)

    def start_quietly(self, command, **options):
        self.started(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)

    def start_watch(self, before=(), **options):
        """The report that keeps itself up to date, once it is on the screen."""
        screen = self.folder / "screen"
        with open(screen, "wb") as output:
            watch = self.started([*before, self.bin / "brindlewick-report", "--watch"], stdout=output, **options)
        until("the report on the screen", lambda: screen.stat().st_size > 0, PATIENCE)
        return watch, screen

    def start_application(self, before=()):
        """The desktop program, once its first refresh is over."""
        (self.support / "notification-state.json").unlink(missing_ok=True)
        with open(self.folder / "application-output", "wb") as output:
            application = self.started([*before, self.bin / "Brindlewick"], stdout=output, stderr=output)
        until("the first refresh", (self.support / "notification-state.json").exists, PATIENCE)
        return application


@contextlib.contextmanager
def scene(bin_folder):
    # Whoever ends the test does so in time for it to clean up.
    signal.signal(signal.SIGTERM, lambda *_: fail("ended from outside"))
    with contextlib.ExitStack() as stack:
        yield Scene(bin_folder, stack)


def wants(*programs):
    """Without these there is nothing to test with."""
    for program in programs:
        if shutil.which(program) is None:
            print(f"{program} is not installed")
            sys.exit(77)
