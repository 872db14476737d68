"""What every proof shares: its state between breaks, its row of docs/proof.md, and how a program is run."""
import datetime
import json
import os
import pathlib
import re
import subprocess
from concurrent.futures import ThreadPoolExecutor, as_completed

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "proof.md"
STATE = ROOT / "build" / "proof"
TOOL = ROOT / "build" / "brinewhirl-tool"


class State(dict):
    """Figures that outlast a break, in build/proof/NAME.json; save() replaces the file in one step."""

    def __init__(self, name, fresh=False, **initial):
        super().__init__(initial)
        self.path = STATE / f"{name}.json"
        if fresh:
            self.path.unlink(missing_ok=True)
        if self.path.exists():
            self.update(json.loads(self.path.read_text()))

    def save(self):
        self.path.parent.mkdir(parents=True, exist_ok=True)
        new = self.path.with_suffix(".new")
        new.write_text(json.dumps(self, indent=1))
        new.replace(self.path)


def each(items, work, jobs=os.cpu_count()):
    """Yields (item, work(item)) as they end, `jobs` side by side."""
    with ThreadPoolExecutor(jobs) as pool:
        waiting = {pool.submit(work, item): item for item in items}
        try:
            for ended in as_completed(waiting):
                yield waiting[ended], ended.result()
        finally:
            pool.shutdown(wait=True, cancel_futures=True)


def machine():
    info = pathlib.Path("/proc/cpuinfo").read_text()
    kind = re.search(r"model name\s*:\s*(.+)", info)
    return f"{os.cpu_count()} cores, {kind.group(1).strip() if kind else os.uname().machine}"


def write(proof, what, tried, result):
    """Puts the row `what` of a proof (1 to 8) into the page, in the place of the one that stood there, and prints it."""
    line = f"| {what} | {tried} | {result} | {datetime.date.today()}, {machine()} |"
    begin, end = f"<!-- rows {proof} -->\n", f"<!-- end of rows {proof} -->\n"
    before, rest = PAGE.read_text().split(begin)
    rows, after = rest.split(end)
    lines = rows.splitlines()
    for number, old in enumerate(lines):
        if old.startswith(f"| {what} |"):
            lines[number] = line
            break
    else:
        lines.append(line)
    new = PAGE.with_suffix(".new")
    new.write_text(before + begin + "".join(f"{row}\n" for row in lines) + end + after)
    new.replace(PAGE)
    print(line, flush=True)


def run(*command, seconds=600, **options):
    """The finished process, with both channels in stdout as text. A run that takes longer has the return code None."""
    try:
        return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, errors="replace", timeout=seconds, **options)
    except subprocess.TimeoutExpired as late:
        text = late.stdout or b""
        return subprocess.CompletedProcess(command, None, text.decode(errors="replace") if isinstance(text, bytes) else text)


def figure(text, name):
    """The number behind `name` at the beginning of a line, or None."""
    found = re.search(rf"^{re.escape(name)}:?\s+([0-9A-F.]+)$", text, re.MULTILINE)
    return found.group(1) if found else None
