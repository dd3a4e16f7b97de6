#!/usr/bin/env python3
# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT
"""Prints ours beside each peer of the same run: benchmark-ratios.py FOLDER, a folder of Google Benchmark's JSON results.

Cases are named subject/ours/size and subject/PEER/size; a subject may have slashes of its own, and the size may be missing.
"""
import json
import pathlib
import re
import sys

UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
OPTION = re.compile(r"(real_time|process_time|manual_time|(iterations|repeats|min_time|min_warmup_time):.*)$")


def medians(result):
    """The (name, seconds, bytes per second or None) of each case of one result file; without repetitions, of its only run."""
    cases = {}
    for entry in result["benchmarks"]:
        if entry.get("error_occurred"):
            raise ValueError(f"{entry['name']}: {entry.get('error_message', 'failed')}")
        if entry.get("aggregate_name", "median") == "median":
            name = tuple(part for part in entry["run_name"].split("/") if not OPTION.match(part))
            time = entry["real_time"] * UNITS[entry["time_unit"]]
            cases.setdefault(name, (time, entry.get("bytes_per_second")))
    return cases


def rows(cases):
    """One (subject, size, ours, peer's name, peer) per pair; peer's name and peer are None where there is no peer."""
    for name, ours in cases.items():
        if "ours" not in name:
            continue
        at = name.index("ours")
        before, after = name[:at], name[at + 1:]
        peers = [(other[at], value) for other, value in cases.items()
                 if other != name and len(other) == len(name) and other[:at] == before and other[at + 1:] == after]
        for peer in peers or [(None, None)]:
            yield "/".join(before), "/".join(after), ours, *peer


def shown(case):
    if case is None:
        return "-"
    time, rate = case
    unit = next((unit for unit in ("s", "ms", "us") if time >= UNITS[unit]), "ns")
    text = f"{time / UNITS[unit]:.3g} {unit}" if time < 1000 else f"{time:.0f} s"
    return f"{text} ({rate / 1e9:.3g} GB/s)" if rate else text


def table(cases):
    lines = [("subject", "size", "ours", "peer", "peer's name", "ours/peer")]
    for subject, size, ours, name, peer in rows(cases):
        ratio = f"{ours[0] / peer[0]:.2f}" if peer else "-"
        lines.append((subject, size or "-", shown(ours), shown(peer), name or "-", ratio))
    widths = [max(map(len, column)) for column in zip(*lines)]
    return ["  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip() for line in lines]


def main(folder):
    cases = {}
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        text = path.read_text()
        if text.strip():  # a program of which no case was asked for writes nothing
            cases.update(medians(json.loads(text)))
    if not cases:
        sys.exit("No benchmark was run.")
    print("Medians of real time; ours/peer below 1: ours is faster.")
    print("\n".join(table(cases)))


if __name__ == "__main__":
    main(sys.argv[1])
