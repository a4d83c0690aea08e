"""Runs commands and says how long they took and how much memory they had."""
import os
import shutil
import signal
import time
from dataclasses import dataclass

GRACE = 3    # seconds between asking a command to end and ending it


@dataclass
class Command:
    words: list
    stdin: str = os.devnull
    good_statuses: tuple = (0,)
    is_silent: bool = False    # what it writes to standard error is a failure
    output: str = "standard-output"


@dataclass
class Measured:
    seconds: float = 0.0
    mebibytes: float = 0.0    # peak of the largest process among the command and its children
    output_bytes: int = 0
    problem: str = None    # why there is no figure
    status: int = None     # the exit status, negative for a signal; None when it was ended
    message: str = ""      # the begin of what it wrote to standard error
    cpu_seconds: float = 0.0    # of it and its children, whatever else the machine did meanwhile


def spawned(command):
    # Its own process group, so that the limit ends its children too.
    to_file = os.O_WRONLY | os.O_CREAT | os.O_TRUNC
    actions = [
        (os.POSIX_SPAWN_OPEN, 0, command.stdin, os.O_RDONLY, 0),
        (os.POSIX_SPAWN_OPEN, 1, command.output, to_file, 0o600),
        (os.POSIX_SPAWN_OPEN, 2, "standard-error", to_file, 0o600),
    ]
    return os.posix_spawn(command.words[0], command.words, os.environ, file_actions=actions,
                          setpgroup=0, setsigmask=[])


def is_over(limit):
    """Waits until a child ends, at most that long. SIGCHLD is blocked, so none is missed."""
    return signal.sigtimedwait({signal.SIGCHLD}, limit) is not None


def ended(pid, limit):
    """Waits for the child; ends its whole group when the limit is reached. Reaps nothing."""
    is_in_time = False
    try:
        is_in_time = is_over(limit)
    finally:
        if not is_in_time:
            os.killpg(pid, signal.SIGTERM)
            if not is_over(GRACE):
                os.killpg(pid, signal.SIGKILL)
    return is_in_time


def first_line(path):
    with open(path, errors="replace") as text:
        return text.readline(1000).strip()


def remove_outputs(command):
    """Emptying a large file takes time: it is not to be the next run's."""
    for path in (command.output, "standard-error"):
        if os.path.exists(path):
            os.remove(path)


def problem_of(command, status, said, limit):
    if status is None:
        return f"> {limit:g} s"
    if status not in command.good_statuses:
        return f"refused: {said or 'exit status %d' % status}"
    return f"refused: {said}" if command.is_silent and said else None


def run(command, limit):
    words = list(command.words)
    words[0] = shutil.which(words[0])
    if words[0] is None:
        return Measured(problem=f"no {command.words[0]}")
    signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGCHLD})
    while is_over(0):
        pass    # left over from a command that was ended
    remove_outputs(command)
    begin = time.perf_counter()
    pid = spawned(Command(words, command.stdin, output=command.output))
    is_in_time = ended(pid, limit)
    _, wait_status, usage = os.wait4(pid, 0)
    seconds = time.perf_counter() - begin
    status = os.waitstatus_to_exitcode(wait_status) if is_in_time else None
    said = first_line("standard-error")
    output_bytes = os.path.getsize(command.output)
    remove_outputs(command)
    return Measured(seconds, usage.ru_maxrss / 1024, output_bytes,
                    problem_of(command, status, said, limit), status, said,
                    usage.ru_utime + usage.ru_stime)


def better(first, second):
    if first is None or second.problem is not None:
        return second
    return Measured(min(first.seconds, second.seconds), min(first.mebibytes, second.mebibytes),
                    second.output_bytes)


def best_in_turn(commands, runs, limit):
    """The best of the runs of each command (None for none), one run of each at a time: what
    slows the machine down for a while then hits all of them. A failure is not tried again."""
    best = [None] * len(commands)
    for _ in range(runs):
        for i, command in enumerate(commands):
            if command is not None and (best[i] is None or best[i].problem is None):
                best[i] = better(best[i], run(command, limit))
    return best


def floor_of_memory():
    """A command's peak counts from before it replaced this program in its process."""
    return run(Command(["true"]), 10).mebibytes
