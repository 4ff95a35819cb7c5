#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

"""contract.py BIN-DIR [GROUP...]

Runs the table of calls and replies (`table`, beside this file) against the lab's stand-ins. A virtual machine with the
real tools runs the same table, see appliance/.
"""

import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))


def groups():
    """Returns the table's groups: name and numbered lines."""
    found = {}
    with open(f"{HERE}/table", encoding="utf-8") as table:
        for number, line in enumerate(table, 1):
            line = line.rstrip("\n")
            if header := re.fullmatch(r"\[(.+)\]", line):
                steps = found[header[1]] = []
            elif line and not line.startswith("#"):
                steps.append((number, line))
    return found


def contains(reply, expected):
    """Whether a JSON reply has all that is expected; a list has an element for each expected one."""
    if isinstance(expected, dict):
        return isinstance(reply, dict) and all(key in reply and contains(reply[key], value)
                                               for key, value in expected.items())
    if isinstance(expected, list):
        return isinstance(reply, list) and all(any(contains(one, value) for one in reply) for value in expected)
    return type(reply) is type(expected) and reply == expected


def matches(output, expected):
    if expected.startswith("LAST "):
        return output.split("\n")[-1] == expected[len("LAST "):]
    if expected[:2] in ("{\"", "[{"):
        try:
            return contains(json.loads(output), json.loads(expected))
        except ValueError:
            return False
    return re.fullmatch(expected, output) is not None


def check(device, line):
    """Runs one line of the table. Returns what is wrong, or nothing."""
    call, arrow, expected = re.fullmatch(r"(.*?) (->|~>) (.*)", line).groups()
    status, _, output = expected.partition(" ")
    end = time.monotonic() + (60 if arrow == "~>" else 0)
    while True:
        got_status, got_output = device.call(shlex.split(call))
        got_output = got_output.strip()
        if re.fullmatch(status, str(got_status)) and (not output or matches(got_output, output)):
            return None
        if time.monotonic() >= end:
            return f"status {got_status}: {got_output[-600:]}"
        time.sleep(0.5)


def run(device, wanted=()):
    """Runs the groups on a device and prints what fails. Returns how many calls were made, and how many failed."""
    calls, failures = 0, 0
    for group, steps in groups().items():
        if wanted and group not in wanted:
            continue
        device.prepare(group)
        for number, line in steps:
            if limit := re.match(r"(lab|device): ", line):
                if limit[1] != device.name:
                    continue
                line = line[limit.end():]
            if line.startswith("! "):
                step, _, argument = line[2:].partition(" ")
                getattr(device, step)(argument)
                continue
            calls += 1
            if wrong := check(device, line):
                failures += 1
                print(f"table:{number}: {line}\n    {wrong}", flush=True)
    return calls, failures


def merged(document, change):
    """Returns a document with the members of another one laid over it."""
    if not isinstance(document, dict) or not isinstance(change, dict):
        return change
    return {**document, **{key: merged(document.get(key), value) for key, value in change.items()}}


class Lab:
    """A device root with the stand-ins, a new one for each group."""

    name = "lab"

    def __init__(self, binaries):
        self.binaries = os.path.abspath(binaries)
        self.folder = self.root = None

    def prepare(self, _group):
        self.folder = tempfile.TemporaryDirectory()
        self.root = self.folder.name
        subprocess.run([f"{self.binaries}/kt-lab", "make-root", self.root], check=True, stdout=subprocess.DEVNULL)

    def call(self, words):
        environment = {"KT_DEVICE_ROOT": self.root, "PATH": f"{self.root}/usr/bin:{self.root}/usr/sbin"}
        if words[0] == "cat":
            with open(self.root + words[1], encoding="utf-8") as file:
                return 0, file.read()
        folders = [""] if words[0].startswith("/") else ["/usr/bin/", "/usr/sbin/"]
        program = next(path for path in (self.root + folder + words[0] for folder in folders) if os.path.exists(path))
        result = subprocess.run([program, *words[1:]], env=environment, capture_output=True, timeout=30, check=False)
        return result.returncode, result.stdout.decode()

    def cable(self, action):
        self.lab("cable", action)

    def lab(self, *words):
        subprocess.run([f"{self.binaries}/kt-lab", *words], env={"KT_DEVICE_ROOT": self.root}, check=True,
                       stdout=subprocess.DEVNULL)

    def document(self, text):
        with open(f"{HERE}/../../lab/demo-config.json", encoding="utf-8") as file:
            document = json.load(file)
        path = f"{self.root}/var/lib/kt964/config.json"
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            json.dump(merged(document, json.loads(text)) if text != "null" else {}, file)

    def certificates(self, _argument):
        folder = f"{self.root}/var/lib/kt964/certificates"
        os.makedirs(f"{folder}/cacerts", exist_ok=True)
        for name in ("cacerts/hospital-ca.pem", "cacerts/other-ca.pem", "nurse.p12"):
            with open(f"{folder}/{name}", "w", encoding="ascii"):
                pass


def main():
    calls, failures = run(Lab(sys.argv[1]), sys.argv[2:])
    print(f"{calls} calls, {failures} failed")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
