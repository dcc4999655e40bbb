#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures the test suite's power: plants each fault of scripts/faults.txt, one at a time,
rebuilds, runs the suite and records whether any test failed.

Usage: scripts/plant_faults.py [--build DIR] [--only ID[,ID...]] [--exclude-tests REGEX]
                               [--all-failures]

Each line of faults.txt is `id | file | original | replacement | what`, where original must
occur exactly once in file (so a fault can never land somewhere unintended); `\\n` in the
texts stands for a newline. The file is restored after every fault, whatever happens. Not part
of `make test`: a full run rebuilds once per fault. With --all-failures the suite runs to the
end for each fault and the report names every failing test, so one can see which tests a fault
depends on before cutting any.
"""
import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def load_faults(path):
    faults = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        parts = [p.strip() for p in line.split(" | ")]
        if len(parts) != 5:
            sys.exit(f"faults.txt:{number}: expected 5 fields separated by ' | '")
        fid, file, original, replacement, what = parts
        faults.append({
            "id": fid,
            "file": file,
            "original": original.replace("\\n", "\n"),
            "replacement": replacement.replace("\\n", "\n"),
            "what": what,
        })
    return faults


def run(cmd, cwd):
    return subprocess.run(cmd, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True).returncode


def failing_tests(cmd, cwd):
    """Runs ctest to the end; returns the failing suites, then their failing GoogleTest cases."""
    out = subprocess.run(cmd + ["--output-on-failure"], cwd=cwd, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, text=True).stdout
    summary = out.split("The following tests FAILED:", 1)
    suites = re.findall(r"^\s+\d+ - (\S+) \(", summary[1], re.M) if len(summary) > 1 else []
    cases = set(re.findall(r"^\[  FAILED  \] (\S+?\.\S+?)(?:,| \(|\s*$)", out, re.M))
    return sorted(set(suites)) + sorted(cases)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build-faults")
    parser.add_argument("--only", default="")
    parser.add_argument("--exclude-tests", default="")
    parser.add_argument("--all-failures", action="store_true")
    parser.add_argument("--faults", default=str(ROOT / "scripts" / "faults.txt"))
    args = parser.parse_args()

    faults = load_faults(pathlib.Path(args.faults))
    if args.only:
        wanted = set(args.only.split(","))
        faults = [f for f in faults if f["id"] in wanted]
    build = ROOT / args.build
    if run(["cmake", "-S", str(ROOT), "-B", str(build), "-DCMAKE_BUILD_TYPE=Debug",
            "-DJCP_BUILD_BENCH=OFF"], ROOT) != 0:
        sys.exit("configure failed")
    ctest = ["ctest", "-j", "2", "--timeout", "120"]
    if args.exclude_tests:
        ctest += ["-E", args.exclude_tests]
    if run(["cmake", "--build", str(build), "-j", "2"], ROOT) != 0 or run(ctest, build) != 0:
        sys.exit("the suite is not green without faults; fix that first")

    caught = 0
    print(f"{'id':<6} {'result':<8} what")
    for fault in faults:
        path = ROOT / fault["file"]
        text = path.read_text()
        if text.count(fault["original"]) != 1:
            print(f"{fault['id']:<6} {'STALE':<8} {fault['what']} (original text not found once)")
            continue
        try:
            path.write_text(text.replace(fault["original"], fault["replacement"]))
            built = run(["cmake", "--build", str(build), "-j", "2"], ROOT) == 0
            by = []
            if not built:
                failed = True
            elif args.all_failures:
                by = failing_tests(ctest, build)
                failed = bool(by)
            else:
                # One failing test is enough to call the fault caught.
                failed = run(ctest + ["--stop-on-failure"], build) != 0
        finally:
            path.write_text(text)
        # A fault that does not compile says nothing about the tests.
        result = "nobuild" if not built else ("caught" if failed else "MISSED")
        caught += built and failed
        print(f"{fault['id']:<6} {result:<8} {fault['what']}", flush=True)
        if by:
            print(f"       caught by: {' '.join(by)}", flush=True)
    # Rebuild the clean tree so the build directory matches the sources again.
    run(["cmake", "--build", str(build), "-j", "2"], ROOT)
    print(f"{caught} of {len(faults)} faults caught")


if __name__ == "__main__":
    main()
