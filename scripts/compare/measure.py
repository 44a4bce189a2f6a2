"""Runs every program on both meshes, in alternating rounds, and judges what it wrote:

measure.py FOLDER ROUNDS writes FOLDER/results.json. FOLDER has the folders "tiny" and "large", each with in.stl and
the files of jobs/, and PATH has the programs. A program that fails once is not started again.
"""

import json
import os
import pathlib
import shlex
import struct
import subprocess
import sys

from judge_output import OutputIsWrong, judge
from programs import PROGRAMS

SIZES = ("tiny", "large")
SECONDS_ALLOWED = 600


class JobFailed(Exception):
    pass


def facets_of(folder):
    with open(folder / "in.stl", "rb") as file:
        file.seek(80)
        return struct.unpack("<I", file.read(4))[0]


def version_of(program):
    """Of the installed Debian package; None if it is not installed."""
    query = ["dpkg-query", "--show", "--showformat=${db:Status-Status} ${Version}", program.package]
    status, _, version = subprocess.run(query, capture_output=True, text=True).stdout.partition(" ")
    return version if status == "installed" else None


def run_once(program, folder):
    """CPU seconds and peak memory in KiB of the process and those it waits for, from a fresh start."""
    (folder / "out.stl").unlink(missing_ok=True)
    usage = folder / "usage"
    # The system counts the memory of a process from its fork, so a small program has to start it.
    measured = ["/usr/bin/time", "--quiet", "--format=%U %S %M", f"--output={usage}", "timeout", str(SECONDS_ALLOWED)]
    run = subprocess.run(
        measured + shlex.split(program.command),
        cwd=folder,
        env={**os.environ, "PWD": str(folder)},  # Blender looks there for files
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
    )
    if run.returncode == 124:
        raise JobFailed(f"not finished after {SECONDS_ALLOWED} seconds")
    if run.returncode != 0:
        sys.stderr.write(run.stdout.decode(errors="replace"))
        raise JobFailed(f"ends with status {run.returncode}")
    if not (folder / "out.stl").exists():
        sys.stderr.write(run.stdout.decode(errors="replace"))
        raise JobFailed("writes no output")
    user, system, kibibytes = usage.read_text().split()
    return float(user) + float(system), int(kibibytes)


def first_result(program):
    version = version_of(program) if program.package else ""
    result = {"name": program.name, "version": version, "cpu": {size: [] for size in SIZES}, "peak": []}
    if version is None:
        result["failure"] = f"is not installed (package {program.package})"
    return result


def run_round(program, result, folder):
    for size in SIZES:
        cpu, peak = run_once(program, folder / size)
        print(f"{program.name}, {size}: {cpu:.2f} s, {peak / 1024:.0f} MiB", flush=True)
        result["cpu"][size].append(cpu)
    result["peak"].append(peak)
    if "verdict" not in result:
        result["verdict"] = judge(folder / "large/in.stl", folder / "large/out.stl")._asdict()
        result["bytes"] = (folder / "large/out.stl").stat().st_size


def main(folder, rounds):
    results = [first_result(program) for program in PROGRAMS]
    for _ in range(rounds):
        for program, result in zip(PROGRAMS, results):
            if "failure" in result:
                continue
            try:
                run_round(program, result, folder)
            except (JobFailed, OutputIsWrong) as failure:
                result["failure"] = str(failure)
                print(f"{program.name}: {failure}", flush=True)
    facets = {size: facets_of(folder / size) for size in SIZES}
    summary = {"facets": facets, "rounds": rounds, "programs": results}
    (folder / "results.json").write_text(json.dumps(summary, indent=1))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]))
