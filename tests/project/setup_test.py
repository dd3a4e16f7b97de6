# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).parents[2] / "scripts" / "setup.sh"
NEEDED = "bash env printf rm"
DPKG_QUERY = """case " $MISSING " in *" ${!#} "*) exit 1;; esac; printf installed"""


class Setup(unittest.TestCase):
    """Runs setup.sh with a PATH of stand-ins, of which apt-get and sudo write down how they were called."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.bin = pathlib.Path(folder.name)
        self.calls = self.bin / "calls"
        for tool in NEEDED.split():
            (self.bin / tool).symlink_to(shutil.which(tool))
        self.tool("dpkg-query", DPKG_QUERY)
        self.tool("apt-get", 'echo "apt-get $*" >>"$CALLS"; [ "$1" != "$FAILS" ]')
        self.tool("sudo", 'echo "sudo" >>"$CALLS"; exec "$@"')
        self.tool("id", "echo ${USER_ID:-0}")

    def tool(self, name, script):
        path = self.bin / name
        path.write_text(f"#!{self.bin}/bash\n{script}\n")
        path.chmod(0o755)

    def run_setup(self, *purposes, **environment):
        environment = {"MISSING": "", "FAILS": "", **environment, "PATH": str(self.bin), "CALLS": str(self.calls)}
        done = subprocess.run([shutil.which("bash"), SCRIPT, *purposes], capture_output=True, text=True, env=environment)
        calls = self.calls.read_text().splitlines() if self.calls.exists() else []
        return done.returncode, calls, done.stderr

    def test_a_set_up_machine_calls_no_apt(self):
        self.assertEqual(self.run_setup("build", "tests"), (0, [], ""))

    def test_only_what_is_missing_is_installed_after_one_update(self):
        status, calls, _ = self.run_setup("build", "ci", MISSING="ccache doxygen libgtest-dev")
        self.assertEqual((status, calls), (0, [
            "apt-get update -qq", "apt-get install -y -qq --no-install-recommends ccache doxygen"]))

    def test_sudo_only_when_not_root(self):
        self.assertEqual(self.run_setup("build", MISSING="ccache", USER_ID="1000")[1].count("sudo"), 2)

    def test_what_is_missing_is_listed_when_it_cannot_be_installed(self):
        for absent, environment in [("apt-get", {}), ("sudo", {"USER_ID": "1000"}), (None, {"FAILS": "install"})]:
            with self.subTest(absent):
                if absent:
                    os.remove(self.bin / absent)
                status, _, message = self.run_setup("build", MISSING="ccache ninja-build", **environment)
                self.assertEqual(status, 1)
                self.assertIn("    ninja-build\n    ccache\n", message)
                self.setUp()

    def test_switched_off(self):
        self.assertEqual(self.run_setup("build", MISSING="ccache", DRAVELIN_SETUP="off"), (0, [], ""))

    def test_an_unknown_purpose_is_refused(self):
        self.assertEqual(self.run_setup("cooking")[0], 2)


if __name__ == "__main__":
    unittest.main()
