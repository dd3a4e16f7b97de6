# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

import json
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).parents[2] / "scripts" / "benchmark-ratios.py"


def aggregate(name, time, kind="median", unit="ns", **more):
    return {"name": f"{name}_{kind}", "run_name": name, "aggregate_name": kind, "real_time": time, "time_unit": unit, **more}


def run(*results):
    """The script's exit status and its lines as lists of cells, for one file per result."""
    with tempfile.TemporaryDirectory() as folder:
        for number, result in enumerate(results):
            text = json.dumps({"benchmarks": result}) if isinstance(result, list) else result
            (pathlib.Path(folder) / f"{number}.json").write_text(text)
        done = subprocess.run([SCRIPT, folder], capture_output=True, text=True)
    return done.returncode, [line.split("  ") for line in done.stdout.splitlines()[1:]]


def cells(row):
    return [cell.strip() for cell in row if cell.strip()]


class BenchmarkRatios(unittest.TestCase):
    def rows(self, *results):
        status, lines = run(*results)
        self.assertEqual(status, 0)
        return [cells(line) for line in lines[1:]]

    def test_ours_stands_beside_every_peer_of_its_size(self):
        self.assertEqual(
            self.rows([aggregate("sort/ours/10", 50), aggregate("sort/ours/10", 999, "mean"),
                       aggregate("sort/qsort/10", 100), aggregate("sort/std/10", 40), aggregate("sort/std/99", 1)]),
            [["sort", "10", "50 ns", "100 ns", "qsort", "0.50"], ["sort", "10", "50 ns", "40 ns", "std", "1.25"]])

    def test_names(self):
        for ours, peer, subject, size in [
                ("call/ours", "call/virtual", "call", "-"),
                ("base64/encode/ours/64", "base64/encode/qt/64", "base64/encode", "64"),
                ("call/ours/iterations:5/real_time", "call/virtual/real_time", "call", "-"),
                ("call/ours/8/threads:2", "call/virtual/8/threads:2", "call", "8/threads:2")]:
            with self.subTest(ours):
                self.assertEqual(self.rows([aggregate(ours, 1), aggregate(peer, 1)])[0][:2], [subject, size])

    def test_units_rates_and_a_case_without_peer(self):
        for time, unit, shown in [(0.5, "us", "500 ns"), (1500, "us", "1.5 ms"), (2, "s", "2 s")]:
            with self.subTest(shown):
                self.assertEqual(self.rows([aggregate("a/ours/1", time, unit=unit, bytes_per_second=2.5e9)]),
                                 [["a", "1", f"{shown} (2.5 GB/s)", "-", "-", "-"]])

    def test_results_without_repetitions_and_a_file_without_any(self):
        single = {"name": "a/ours", "run_name": "a/ours", "real_time": 3, "time_unit": "ns"}
        self.assertEqual(self.rows("", [single], []), [["a", "-", "3 ns", "-", "-", "-"]])

    def test_nothing_run_and_a_failed_case_are_errors(self):
        for result in ["", [], [aggregate("a/ours", 1, error_occurred=True)]]:
            self.assertNotEqual(run(result)[0], 0, result)


if __name__ == "__main__":
    unittest.main()
