"""A sweep that was broken off goes on: what is there is not played again, and the table is that of an unbroken one.

Usage: test_balance.py TOOL
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path()  # set from the command line
ROOT = Path(__file__).resolve().parents[2]


class BalanceTest(unittest.TestCase):
    def test_a_broken_sweep_goes_on_to_the_same_table(self):
        with tempfile.TemporaryDirectory() as scratch:
            out = Path(scratch) / "sweep"
            command = [ROOT / "tools" / "balance", "--tool", TOOL, "--stages", ROOT / "game" / "goldrush", "--seeds", "3",
                       "--line-ups", "lead,hop,hop,hop", "--no-pictures", "--out", out]

            def play(*more):
                return subprocess.run([*command, *more], capture_output=True, text=True)

            whole = play()
            self.assertEqual(whole.returncode, 0, whole.stderr)
            self.assertIn("matches 3\n", whole.stdout)
            results = sorted((out / "results").iterdir())
            times = {path: path.stat().st_mtime_ns for path in results}
            results[1].unlink()
            self.assertEqual(play("--report").returncode, 1, "a match is missing")
            (out / "results" / (results[1].name + ".part.1")).write_text("match 1 1 1")
            again = play()
            self.assertEqual(again.stdout, whole.stdout, again.stderr)
            self.assertNotEqual(results[1].stat().st_mtime_ns, times[results[1]])
            self.assertEqual(results[0].stat().st_mtime_ns, times[results[0]])
            page = (out / "report" / "index.html").read_text()
            self.assertEqual(page.count("<svg"), 6)
            self.assertNotIn('src="http', page)
            (out / "pack" / "digest").write_text("another build's")
            self.assertIn("another build", play().stderr)


if __name__ == "__main__":
    TOOL = Path(sys.argv.pop(1)).resolve()
    unittest.main()
