#!/usr/bin/env python3
"""Every answer of "quomc --json" against docs/console.schema.json.

schema_check.py QUOMC PROGRAM_FOLDER SCHEMA FOLDER: calls every command with good and failing arguments; FOLDER takes
the files. Exit status 77 where python3-jsonschema is missing.
"""
import copy
import json
import os
import re
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: python3-jsonschema is not installed")
    sys.exit(77)

# Arguments, exit status, and what stands on the standard input. {dir} is the folder of the files.
GOOD = [
    ("list", 0), ("find butane", 0), ("find ane", 0), ("show water", 0), ("show argon", 0), ("show #400", 0),
    ("models propane", 0), ("models helium", 0), ("models water --eos 14 --hlv 4 --watson 0.375", 0),
    ("state propane --T 300 --rho 100", 0), ("state water --T 300 --p 101.325", 0),
    ("state propane --p 500 --rho 8 --energy 3 --volume 1", 0), ("state argon --T 300 --p 100 --eos 0", 0),
    ("state water --T 300 --p 100 --eos 16", 0), ("state water --T 647.096 --p 22064", 0),
    ("state water --T 250 --p 1 --ref 2 --tenv 280", 0), ("state propane --T 450 --p 9000 --energy 2 --volume 2", 0),
    ("saturation propane --T 300", 0), ("saturation water --p 101.325 --concept partial", 0),
    ("saturation ethanol --T 350 --energy 1 --volume 2", 0),
    ("virial argon --T 273.15 --b0 0.03 --b1 2 --b2 0.5", 0),
    ("calc propane --mode 1 --T 300 --rho 10 --functions --ext 4", 0), ("calc propane --mode 2 --T 300 --rho 505", 0),
    ("calc propane --mode 3 --T 300 --p 500 --ext 2", 0), ("calc propane --mode 3 --T 80 --p 500 --ext 3", 0),
    ("calc propane --mode 4 --T 300 --functions", 0), ("calc propane --mode 5 --p 500 --concept partial", 0),
    ("calc propane --mode 6 --T 300", 0), ("calc propane --mode 7 --p 500", 0),
    ("calc propane --mode 8 --T 300 --p 500 --volume 1", 0), ("calc propane --mode 9 --T 300 --m 20 --V 0.1", 0),
    ("calc propane --mode 10 --T 300 --m 20 --V 0.1 --concept partial", 0), ("calc propane --mode 11 --T 300", 0),
    ("calc propane --mode 13 --p 500 --rho 8", 0), ("calc propane --mode 14 --T 60", 0),
    ("calc propane --mode 15 --T 300", 0), ("calc propane --mode 16 --T 300", 0), ("calc propane --mode 17 --T 200", 0),
    ("calc water --mode 18 --T 260", 0), ("calc water --mode 19 --T 300", 0), ("calc water --mode 20 --T 300", 0),
    ("calc water --mode 21 --T 300", 0), ("calc water --mode 22 --T 400", 0), ("calc water --mode 24 --T 260", 0),
    ("tank propane --T 300 --V 0.1 --m 20", 0), ("tank propane --T 300 --V 0.1 --m 1 --energy 3", 0),
    ("tank propane --T 300 --V 0.1 --m 20 --concept partial", 0), ("tank water --T 700 --V 1 --n 1", 0),
    ("iso propane --T 450 --hold h --value 5000", 0), ("iso propane --T 450 --hold h --value 5000 --phase L", 0),
    ("iso water --p 1 --hold s --T0 250 --p0 1 --energy 3", 0),
    ("sweep propane --mode 3 --in {dir}/states.csv --out {dir}/results.csv --functions", 0),
    ("batch propane --mode 4 --data {dir}/points.BAQ --lst {dir}/points.LST --csv {dir}/points.CSV", 0),
    ("batch propane --mode 16 --data {dir}/points.BAQ", 0),
    ("project --save {dir}/propane.QC6 propane --eos 5 --comment x", 0), ("project {dir}/propane.QC6 --info", 0),
    ("project --save {dir}/virial.QC6 water --eos 10 --b0 1 --energy 3", 0), ("project {dir}/odd.QC6", 0),
    ("kinds", 0), ("curve propane --kind 1 --T 340 --dens 20", 0), ("curve propane --kind 3 --p 500 --tie-line", 0),
    ("curve propane --kind 6 --volume 2 --vapor-fraction 1", 0), ("curve propane --kind 300 --units T=C,rho=g/cm3", 0),
    ("curve propane --kind 5 --v 0.5 --energy 3 --volume 1", 0), ("curve propane --kind 107 --T 400", 0),
    ("curve propane --kind 150 --process isenthalpe --T1 400 --p1 2000 --p2 500", 0),
    ("curve propane --kind 1 --T 340 --s-curve --energy 2", 0), ("curve water --kind 13", 0),
    ("diagram propane --kind 1 --curves T=300,340 --coexistence --marks T,p --dens 20 --out {dir}/pv.oc2", 0),
    ("diagram propane --kind 300 --energy 3 --interchange --out {dir}/rho.csv", 0),
    ("chart propane --kind ph --units T=C,p=bar --ref 0C --out {dir}/ph.json", 0),
    ("audit water", 0), ("audit --rules", 0), ("starter", 0), ("show 1,3-Propanediol", 0),
    ("data {dir}/set.BAQ --info", 0), ("data {dir}/points.XY --info", 0), ("data {dir}/set.BAQ --convert {dir}/a.XY", 0),
    ("data {dir}/set.BAQ --join {dir}/set.BAQ --out {dir}/b.BAQ", 0),
]
FAILING = [
    ("", 2), ("melt water", 2), ("find qqqqqqqq", 1), ("show #0", 1), ("show #99999", 1),
    ("models water --eos 14 --hlv 7", 1), ("models water --eos 7", 2), ("models water --eos 7 --ji nowhere.dat", 3),
    ("state water --T 300", 2), ("state water --T nan --p 1", 2), ("state water --T 300,5 --p 100", 2),
    ("state water --T 500 --rho 1500", 1), ("state water --T 300 --p 1 --volume 2 --eos 16", 1),
    ("saturation water", 2), ("saturation water --T 650", 1), ("saturation water --p 3e4", 1),
    ("saturation propane --T 370 --concept partial --evp 3", 1),
    ("virial water", 2), ("virial water --T -5", 2), ("calc propane --mode 12", 2), ("calc propane --mode 25", 2),
    ("calc propane --mode 3 --T 300", 2), ("calc propane --mode 4 --T 500", 1), ("calc propane --mode 22 --T 300", 1),
    ("calc propane --mode 9 --T 300", 2),
    ("curve propane", 2), ("curve propane --kind 999", 2), ("curve propane --kind 202", 2), ("kinds propane", 2),
    ("curve propane --kind 1 --p 500", 2), ("curve propane --kind 6 --T 300", 2), ("curve propane --kind 11", 1),
    ("curve propane --kind 1 --T 400 --tie-line", 1), ("curve propane --kind 1 --x 5", 2),
    ("curve propane --kind 1 --process isentrope --T1 300", 2),
    ("diagram propane --kind 1 --out {dir}/x.csv", 2), ("diagram propane --kind 1 --curves T=5 --out {dir}/x.csv", 1),
    ("diagram propane --kind 1 --curves T=300 --out {dir}/no/x.csv", 3),
    ("chart argon --kind ph --eos 16 --out {dir}/x.csv", 1), ("chart water --kind pv --out {dir}/x.csv", 2),
    ("audit watre", 1), ("tank propane --T 300 --V 1", 2), ("tank propane --T 300 --V 1 --m 9000", 1),
    ("iso propane --T 300 --hold h", 2), ("iso propane --T 300 --hold v --value 50 --phase L", 1),
    ("iso propane --p 5 --hold h --T0 300 --p0 5 --phase L", 1), ("sweep propane --mode 3 --in - --out -", 2),
    ("sweep propane --mode 3 --in {dir}/nowhere.csv --out {dir}/x.csv", 3),
    ("batch propane --mode 4", 2), ("batch propane --mode 4 --data {dir}/nowhere.BAQ", 3),
    ("batch propane --mode 9 --data {dir}/points.BAQ", 2), ("batch propane --mode 2 --eos 0 --data {dir}/points.BAQ", 1),
    ("list --program-folder /nowhere/at/all", 3), ("data {dir}/set.BAQ", 2), ("data {dir}/nowhere.BAQ --info", 3),
    ("data {dir}/states.csv --info", 2), ("data {dir}/points.XY --convert {dir}/c.BAQ", 2),
    ("project {dir}/nowhere.QC6", 3), ("project {dir}/states.csv", 3), ("project {dir}/no_cas.QC6 --info", 1),
    ("project {dir}/propane.QC6 --eos 5", 2), ("project --save {dir}/x.txt propane", 2), ("project", 2),
    ("project --save {dir}/x.QC6 watre", 1), ("project --save {dir}/x/y/z.QC6 water", 3),
]
# What every command refuses, behind its good arguments.
REFUSED_BY_ALL = [(" --colour red", 2), (" --db nowhere.q07", 3)]

# Numbers without a unit: counts, codes, fractions, ratios.
PURE = set("""status index mode PhaseRegion y nRoots fd RefKode EOSKode EVPKode HLVKode cpKode code omega nWat SystemNo
              lines failed warned malformed value low high evp records doubtful count points
              line values_per_point active calculated mean kind section boundary dens curve_status n Par Tag
              vapor_fraction values states""".split())
# Of a diagram, whose axes name their units: another one in every kind.
OF_AXES = {"x", "y", "par", "tag", "XMin", "XMax", "YMin", "YMax"}
PURE_OF_PHASES = {"lnphi", "s_res", "cp_res"}
RECORD = set("KFDB Wagner AntLo AntHi August RhoL RhoS HLV cpPoly cpDIPPR cpL cpS".split())  # units are in the formula


class Check:
    def __init__(self, quomc, program_folder, schema, folder):
        self.quomc, self.program_folder, self.folder = quomc, program_folder, folder
        jsonschema.Draft202012Validator.check_schema(schema)
        self.validator = jsonschema.Draft202012Validator(schema)
        self.faults = []
        self.units = {}  # of every key, in molar units
        self.calls = 0

    def fault(self, line, what):
        self.faults.append(f"quomc {line}\n    {what}")

    def answer(self, line, status):
        """The object that a call answers; None where it is none."""
        self.calls += 1
        words = line.format(dir=self.folder).split()
        where = [] if "--program-folder" in words else ["--program-folder", self.program_folder]
        run = subprocess.run([self.quomc, "--json", *where, *words], stdin=subprocess.DEVNULL, capture_output=True,
                             cwd=self.folder, timeout=120)
        if run.returncode != status:
            self.fault(line, f"exit status {run.returncode}, not {status}: {run.stderr.decode()}")

        def no_number(text):
            raise ValueError(f"{text} is no number of JSON")

        try:
            answer = json.loads(run.stdout.decode("utf-8"), parse_constant=no_number)
        except ValueError as wrong:
            self.fault(line, f"no JSON object: {wrong}")
            return None
        if answer.get("status") != run.returncode:
            self.fault(line, f"status {answer.get('status')} at exit status {run.returncode}")
        return answer

    def check(self, line, status):
        answer = self.answer(line, status)
        if answer is None:
            return None
        for error in sorted(self.validator.iter_errors(answer), key=str):
            self.fault(line, f"/{'/'.join(map(str, error.absolute_path))}: {error.message[:300]}")
        command = line.split()[0] if line and not line.startswith("melt") else None
        if answer.get("command") != command:
            self.fault(line, f"command {answer.get('command')}")
        self.check_units(line, answer)
        return answer

    def check_units(self, line, answer):
        """Every number has a unit or is known to be pure; one key has one unit in all commands."""
        units = answer.get("units", {})
        pure_energy = re.search("--energy [12]", line) is not None

        def walk(key, value):
            if isinstance(value, dict):
                if "unit" in value:  # a row of its own unit
                    return
                for name, part in value.items():
                    walk(name, part)
            elif isinstance(value, list):
                for part in value:
                    walk(key, part)
            elif isinstance(value, (int, float)) and not isinstance(value, bool):
                pure = key in PURE | OF_AXES or re.sub("_[LV]$", "", key) in PURE_OF_PHASES
                if not pure and key not in units and not pure_energy:
                    self.fault(line, f"the number {key} has no unit")

        walk("", {name: part for name, part in answer.items() if name not in RECORD | {"units"}})
        if "--energy" in line or "--volume" in line or "--units" in line:
            return
        for key, unit in units.items():  # "target" is a value of any function
            if key not in OF_AXES | {"target"} and self.units.setdefault(key, unit) != unit:
                self.fault(line, f"{key} is in {unit}, elsewhere in {self.units[key]}")

    def check_refusals(self, good):
        """Wrong objects, each made of a good one, are refused."""
        def change(path, value):
            def apply(x):
                for name in path[:-1]:
                    x = x[name]
                x[path[-1]] = value
            return apply

        def drop(*path):
            def apply(x):
                for name in path[:-1]:
                    x = x[name]
                del x[path[-1]]
            return apply

        wrong = {
            "a number as text": change(("functions", "h_V"), "NaN"),
            "a renamed key": lambda x: x["functions"].update(hV=x["functions"].pop("h_V")),
            "a key too many": change(("functions", "x_V"), 1.0),
            "a section too many": change(("slots",), {}),
            "a section too few": drop("state"),
            "no units": drop("units"),
            "no warnings": drop("warnings"),
            "a warning without its name": lambda x: x["warnings"].append({"text": "T"}),
            "an unknown phase": change(("state", "phase"), "gas"),
            "a key of state too few": drop("state", "T"),
            "a message at status 0": change(("message",), "no"),
            "no message at status 1": change(("status",), 1),
            "an unknown command": change(("command",), "melt"),
            "the object of another command": change(("command",), "tank"),
        }
        if not self.validator.is_valid(good):
            self.fault("state", "the good object is refused")
        for name, spoil in wrong.items():
            spoilt = copy.deepcopy(good)
            spoil(spoilt)
            if self.validator.is_valid(spoilt):
                self.fault("state", f"the schema takes {name}")


def main():
    quomc, program_folder, schema_path, folder = map(os.path.abspath, sys.argv[1:5])
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "points.BAQ"), "w", encoding="ascii") as points:
        points.write("date\ncomment\n74-98-6;Propane\n2\n" + "300\n990\n490\n21\n14900\n0\n" + "310\n1200\n0\n0\n0\n0\n")
    with open(os.path.join(folder, "states.csv"), "w", encoding="ascii") as table:
        table.write("T;p\n300;500\n80;500\n300;2000\n")
    for name, text in [("set.BAQ", "1.1.2026\n\n67-64-1;Acetone\n2\n300,30,780,0,0,126,310\n"), ("points.XY", "c\n1;2\n")]:
        with open(os.path.join(folder, name), "w", encoding="ascii") as file:
            file.write(text)
    project = ["22.11.2026", "<>", "none.q07", "gone.BAQ", " 3 ", "74-98-6", *["0"] * 28]
    project[14], project[24] = '";"', "273.15"
    for name, cas in ("odd.QC6", "74-98-6"), ("no_cas.QC6", "1-1-1"):
        project[5] = cas
        with open(os.path.join(folder, name), "w", encoding="ascii", newline="") as file:
            file.write("\r\n".join(project) + "\r\n")
    with open(schema_path, encoding="utf-8") as file:
        check = Check(quomc, program_folder, json.load(file), folder)

    examples = {}
    for line, status in GOOD:
        check.check(line, status)
        examples.setdefault(line.split()[0], line)
    for line, status in FAILING:
        check.check(line, status)
    for command, line in examples.items():
        for more, status in REFUSED_BY_ALL:
            if command not in ("starter", "kinds") or "--db" not in more:  # looks at the installed ones alone
                check.check(line + more, status)
        if command not in ("list", "find", "audit", "data", "project", "starter", "kinds"):
            check.check(line.replace(line.split()[1], "qqqqqqqq", 1), 1)
    check.check_refusals(check.answer("state propane --T 80 --p 500", 0))

    known = re.search("A command is needed: (.*)\\.", check.answer("", 2)["message"]).group(1).split(", ")
    for command in sorted(set(known) - set(examples)):
        check.fault(command, "no call of this command is checked")

    for fault in check.faults:
        print(fault)
    print(f"{check.calls} calls, {len(check.faults)} faults")
    return 1 if check.faults else 0


if __name__ == "__main__":
    sys.exit(main())
