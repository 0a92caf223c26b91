#!/usr/bin/env python3
"""Runs one scenario file against a program that speaks the automation protocol.

A scenario is JSON: {"fixture": {...} | "fixtureFile": "path", "steps": [...]}. Each step sends one
request ("send", or "raw": a line sent as it is, for input that is no JSON) and checks the response: "expect" maps JSON pointers to expected values (or to
matchers: {"$contains": x}, {"$len": n}, {"$approx": x}, {"$startsWith": s}, {"$absent": true}),
"expectError" checks that the request failed. A final "expectExit" checks how the program ended
(status non-zero and text on standard error) when a step is meant to end it.
"""
import json
import os
import subprocess
import sys
import tempfile


def resolve(document, pointer):
    if pointer == "":
        return True, document
    node = document
    for raw in pointer.lstrip("/").split("/"):
        part = raw.replace("~1", "/").replace("~0", "~")
        if isinstance(node, list):
            if not part.lstrip("-").isdigit():
                return False, None
            index = int(part)
            if index < 0:
                index += len(node)
            if index < 0 or index >= len(node):
                return False, None
            node = node[index]
        elif isinstance(node, dict):
            if part not in node:
                return False, None
            node = node[part]
        else:
            return False, None
    return True, node


def matches(found, present, expected):
    if isinstance(expected, dict) and len(expected) == 1:
        (key, value), = expected.items()
        if key == "$absent":
            return (not present) == bool(value)
        if not present:
            return False
        if key == "$contains":
            return value in found
        if key == "$len":
            return len(found) == value
        if key == "$approx":
            return isinstance(found, (int, float)) and abs(found - value) < 1e-6
        if key == "$startsWith":
            return isinstance(found, str) and found.startswith(value)
    return present and found == expected


def main():
    program, scenario_path = sys.argv[1], sys.argv[2]
    with open(scenario_path, encoding="utf-8") as f:
        scenario = json.load(f)
    base = os.path.dirname(os.path.abspath(scenario_path))
    with tempfile.TemporaryDirectory() as scratch:
        if "fixtureFile" in scenario:
            fixture_path = os.path.normpath(os.path.join(base, scenario["fixtureFile"]))
        else:
            fixture_path = os.path.join(scratch, "fixture.json")
            with open(fixture_path, "w", encoding="utf-8") as f:
                json.dump(scenario.get("fixture", {}), f)
        env = dict(os.environ, TMPDIR=scratch)
        proc = subprocess.Popen([program, "--fixture", fixture_path], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=env)
        failures = []
        for number, step in enumerate(scenario["steps"], 1):
            request = step["send"] if "send" in step else step["raw"]
            try:
                proc.stdin.write((json.dumps(request) if "send" in step else request) + "\n")
                proc.stdin.flush()
                line = proc.stdout.readline()
            except BrokenPipeError:
                line = ""
            if not line:
                if "expectExit" in scenario and number == len(scenario["steps"]):
                    break
                failures.append(f"step {number} {request}: the program ended")
                break
            response = json.loads(line)
            if step.get("expectError"):
                if response.get("ok") is not False:
                    failures.append(f"step {number} {request}: expected an error, got {line.strip()}")
                continue
            if response.get("ok") is not True:
                failures.append(f"step {number} {request}: {response.get('error')}")
                continue
            for pointer, expected in step.get("expect", {}).items():
                present, found = resolve(response, pointer)
                if not matches(found, present, expected):
                    shown = json.dumps(found) if present else "nothing"
                    failures.append(f"step {number} {request}: {pointer} is {shown}, expected {json.dumps(expected)}")
        try:
            proc.stdin.close()
        except BrokenPipeError:
            pass
        stderr = proc.stderr.read()
        status = proc.wait(timeout=60)
        if "expectExit" in scenario:
            want = scenario["expectExit"]
            if status == 0:
                failures.append("the program was expected to end abnormally but exited 0")
            if want.get("stderr") and want["stderr"] not in stderr:
                failures.append(f"standard error lacks {want['stderr']!r}:\n{stderr}")
        elif status != 0:
            failures.append(f"the program exited with {status}:\n{stderr}")
    if failures:
        print(f"{scenario_path}:")
        for failure in failures:
            print("  " + failure)
        sys.exit(1)


if __name__ == "__main__":
    main()
