"""What programs ask of the system: their sockets, and the programs that they run."""

import re
import subprocess

# What makes sockets or names somebody to talk to (`io_uring` could, too), and what runs programs.
CALLS = ("socket,socketpair,connect,bind,listen,accept,accept4,sendto,sendmsg,sendmmsg,io_uring_setup,"
         "execve,execveat,uselib")


class Reaches(Exception):
    """A program reached for what it is not to."""


def can_be_traced():
    return subprocess.run(["strace", "-qq", "-o", "/dev/null", "true"]).returncode == 0


class SystemCalls:
    """Those of a command and of all that it starts, once it is run by way of `before`."""

    def __init__(self, file):
        self.file = file
        # With the filter, all other calls go at their usual pace.
        self.before = ["strace", "-f", "--seccomp-bpf", "-qq", "-e", f"trace={CALLS}", "-e", "signal=none",
                       "-o", str(file)]

    def calls(self):
        lines = self.file.read_text(errors="replace").splitlines()
        return [re.sub(r"^\d+ +", "", line) for line in lines if "resumed>" not in line]

    def programs(self):
        """The paths of those that were run, or were to be."""
        return [re.search(r'"([^"]*)"', call).group(1) for call in self.calls() if call.startswith("exec")]

    def places(self):
        """The paths of the sockets that were reached for."""
        return {self.place(call) for call in self.others() if call.startswith("connect")}

    def others(self):
        return [call for call in self.calls() if not call.startswith(("exec", "---", "+++"))]

    @staticmethod
    def place(call):
        """The path of the socket that a call names; the call itself where that is none, nothing where it names none."""
        path = re.search(r"sa_family=AF_UNIX, sun_path=@?\"([^\"]*)\"", call)
        return path.group(1) if path else call if "sa_family=" in call else None

    def expect(self, programs, places=()):
        """Just these programs were run, and none of them reached for anybody but in these places."""
        if self.programs() != programs:
            raise Reaches(f"ran {self.programs()}, not {programs}")
        for call in self.others():
            if not self.is_harmless(call, places):
                raise Reaches(f"reaches out: {call}")

    def is_harmless(self, call, places):
        if not places or self.place(call) not in {None, *places}:
            return False
        makes_one = re.match(r"socket(?:pair)?\((\w+)", call)
        return makes_one.group(1) == "AF_UNIX" if makes_one else call.startswith(("connect(", "send"))
