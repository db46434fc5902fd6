#!/usr/bin/env python3
"""Puts the faults of faults.tsv into a copy of the program, one at a time, and counts those that a test finds.

    tests/seeded_faults/run.py [FIRST [LAST]]      from the top folder; numbers of faults from 1, default all

Works in build/faults, with its own copy of the sources, and leaves the checkout alone. Exit status 1 when fewer than
nine of ten faults are found, when a text of the table does not occur once, or when the copy without a fault fails.
"""
import pathlib
import shutil
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parents[2]
COPY = TOP / "build" / "faults" / "copy"
BUILD = TOP / "build" / "faults" / "build"
COPIED = ["CMakeLists.txt", "CMakePresets.json", "LICENSE", "README.md", "cmake", "data", "docs", "fuzz", "help",
          "packaging", "src", "tests"]


def read_faults():
    rows = []
    for line in (TOP / "tests/seeded_faults/faults.tsv").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            rows.append((line.split("\t") + [""])[:3])
    return rows


def copy_sources():
    shutil.rmtree(COPY, ignore_errors=True)
    COPY.mkdir(parents=True)
    for name in COPIED:
        source = TOP / name
        if source.is_dir():
            shutil.copytree(source, COPY / name)
        elif source.exists():
            shutil.copy2(source, COPY / name)


def run(command, limit=900):
    """Exit status of a command; 1 when it takes too long."""
    try:
        return subprocess.run(command, cwd=COPY, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=limit, check=False).returncode
    except subprocess.TimeoutExpired:
        return 1


def build():
    return run(["cmake", "--build", str(BUILD)], 1800)


def tests():
    return run(["ctest", "--test-dir", str(BUILD), "--stop-on-failure", "--parallel", "2", "--timeout", "300"])


def main():
    faults = read_faults()
    first = int(sys.argv[1]) if len(sys.argv) > 1 else 1
    last = int(sys.argv[2]) if len(sys.argv) > 2 else len(faults)
    wrong = [f"{name}: {text}" for name, text, _ in faults
             if (TOP / "src" / name).read_text(encoding="utf-8").count(text) != 1]
    if wrong:
        print("These texts do not occur once:", *wrong, sep="\n  ")
        return 1
    copy_sources()
    configure = ["cmake", "-S", str(COPY), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                 "-DCMAKE_CXX_FLAGS_RELEASE=-O1", "-DQUOM_DESKTOP=OFF", "-DQUOM_BENCHMARKS=OFF"]
    if run(configure) or build() or tests():
        print("The copy without a fault does not pass its tests.")
        return 1
    found = tried = 0
    for number, (name, text, instead) in enumerate(faults, 1):
        if not first <= number <= last:
            continue
        path = COPY / "src" / name
        good = path.read_text(encoding="utf-8")
        path.write_text(good.replace(text, instead), encoding="utf-8")
        built = build() == 0
        caught = built and tests() != 0
        path.write_text(good, encoding="utf-8")
        tried += 1
        found += caught
        word = "found" if caught else "MISSED" if built else "DOES NOT BUILD"
        print(f"{number:3d} {word} {name}: {text} -> {instead}", flush=True)
    print(f"{found} of {tried} faults found")
    return 0 if 10 * found >= 9 * tried else 1


if __name__ == "__main__":
    sys.exit(main())
