"""Runs one side of a job and says what it cost: wall time, processor time, peak memory, and what its data still owes
the disk."""

import os
import pathlib
import shutil
import subprocess
import threading
import time

LONGEST_RUN = 1800  # seconds; a job that takes longer hangs


class JobFailed(Exception):
    """A command of a job did not do its work; the text is for a reader."""


def warm(paths):
    """Reads the inputs once, so that both sides find them in the page cache."""
    for path in paths:
        with open(path, "rb", buffering=0) as file:
            while file.read(1 << 20):
                pass


def fresh_folder(folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)


def write_back(folder):
    """Seconds until what a run left in the page cache stands on the disk."""
    start = time.perf_counter()
    for path in sorted(p for p in folder.rglob("*") if p.is_file()):
        with open(path, "rb") as file:
            os.fsync(file.fileno())
    return time.perf_counter() - start


def run_command(command, log):
    """Runs one command to its end. The kernel tells the child's own peak, so nothing of ours weighs in but the floor
    that `memory_floor` measures."""
    start = time.perf_counter()
    child = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    watchdog = threading.Timer(LONGEST_RUN, child.kill)
    watchdog.start()
    try:
        _, status, usage = os.wait4(child.pid, 0)
    except BaseException:
        child.kill()
        raise
    finally:
        watchdog.cancel()
    child.returncode = os.waitstatus_to_exitcode(status)
    return {
        "wall": time.perf_counter() - start,
        "cpu": usage.ru_utime + usage.ru_stime,
        "peak": usage.ru_maxrss * 1024,
        "exit": child.returncode,
    }


def run_job(commands, folder, inputs, start_with=None):
    """Runs the commands of one side in a fresh `folder`, with a copy of the database that they change if there is one;
    times add up, the peak is the largest."""
    fresh_folder(folder)
    if start_with is not None:
        shutil.copyfile(start_with, folder / "out.gpkg")
    warm(inputs)
    os.sync()  # no run pays for the pages that another left dirty
    log_path = folder.parent / (folder.name + ".log")
    total = {"wall": 0.0, "cpu": 0.0, "peak": 0}
    for command in commands:
        with open(log_path, "wb") as log:
            cost = run_command(command, log)
        if cost["exit"] != 0:
            tail = log_path.read_text(errors="replace").strip().splitlines()[-5:]
            words = [pathlib.Path(command[0]).name, *map(str, command[1:])]
            raise JobFailed(" ".join([*words, f"ended with {cost['exit']}:", *tail]))
        total["wall"] += cost["wall"]
        total["cpu"] += cost["cpu"]
        total["peak"] = max(total["peak"], cost["peak"])
    total["write_back"] = write_back(folder)
    return total


def memory_floor():
    """The peak that a child has from being started by Python alone; figures near it say nothing."""
    with open(os.devnull, "wb") as log:
        return run_command(["true"], log)["peak"]
