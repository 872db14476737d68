#!/usr/bin/env python3
"""check_package.py DEB: has the package looked over by the tools that know its files, and installs it in a temporary
root, where it is run as a user would, upgraded, removed and purged: nothing of it may stay, and all of the user's must."""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "e2e"))
from virtual_display import Game, VirtualDisplay

APP_ID = "org.brinewhirl.Brinewhirl"
SECONDS = 10  # that the game is played
EDIT = """\
5 key f1 down
6 bar FileName = mine
7 bar Make default box
8 bar Save Level
"""


def run(*command, **options):
    """What the command prints, on both channels; ends the check when it fails."""
    done = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          **options)
    if done.returncode != 0:
        raise SystemExit(f"{' '.join(map(str, command))}: exit code {done.returncode}\n{done.stdout}")
    return done.stdout


def expect(holds, what):
    if not holds:
        raise SystemExit(f"the package fails: {what}")


def files_in(folder):
    return {path.relative_to(folder): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


class Root:
    """A root with a package system of its own and nothing in it. What the package depends on stays the machine's."""

    def __init__(self, folder):
        self.folder = folder
        self.admin = folder / "var/lib/dpkg"
        for name in ("info", "updates", "triggers"):
            (self.admin / name).mkdir(parents=True)
        (self.admin / "status").touch()
        self.log = folder.parent / "dpkg.log"

    def dpkg(self, *arguments):
        as_root = [] if os.geteuid() == 0 else ["fakeroot"]
        path = os.environ["PATH"] + ":/usr/sbin:/sbin"
        return run(*as_root, "dpkg", f"--root={self.folder}", f"--log={self.log}", "--force-depends", *arguments,
                   env={**os.environ, "PATH": path})

    def left(self):
        """Everything outside the package system's own folder."""
        own = {self.admin, *self.admin.parents}
        return [path for path in self.folder.rglob("*") if path not in own and self.admin not in path.parents]


class User:
    """Somebody who is not root to the program: a home of his own, and no way to write elsewhere."""

    def __init__(self, folder, programs):
        self.home = folder / "home"
        self.home.mkdir()
        self.data = self.home / ".local/share/brinewhirl"
        self.programs = programs
        self.environment = {**os.environ, "HOME": str(self.home), "ALSOFT_DRIVERS": "null"}
        self.environment.pop("XDG_DATA_HOME", None)

    def simulate(self, *arguments, program=None):
        return run(program or self.programs / "brinewhirl-tool", "simulate", *arguments, cwd="/", env=self.environment)

    def play(self):
        """Through the start-up screens into a match; the picture at its end and the lines of the game."""
        with VirtualDisplay(1280, 720) as display:
            display.environment.update(self.environment)
            game = Game(display, self.programs / "brinewhirl")
            game.reach_match()
            game.sleep_until(SECONDS)
            picture = display.take_picture()
            expect(game.quit() == 0, "the game does not end as it should:\n" + game.output)
            return picture, game.output


def look_over(package, unpacked):
    share = unpacked / "usr/share"
    run("desktop-file-validate", share / f"applications/{APP_ID}.desktop")
    run("appstreamcli", "validate", "--no-net", share / f"metainfo/{APP_ID}.metainfo.xml")
    print(run("lintian", "--fail-on", "error,warning", "--tag-display-limit", "0", package))
    for size in (16, 22, 24, 32, 48, 64, 128, 256, 512):
        icon = share / f"icons/hicolor/{size}x{size}/apps/{APP_ID}.png"
        expect(int.from_bytes(icon.read_bytes()[16:20], "big") == size, f"{icon} is not {size} pixels wide")


def check_runs(user):
    said = user.simulate("--match", "--frames", "600", "--check")
    expect("Error" not in said and "Could not" not in said, "a match is not what it should be:\n" + said)
    picture, said = user.play()
    expect("Error" not in said and "Could not" not in said, "the game complains:\n" + said)
    expect(len(set(picture.rgb)) > 100, "the game shows nothing")


def check_edits(user, folder):
    """What is made goes to the user's folder, and comes before what was installed."""
    steps = folder / "edit.input"
    steps.write_text(EDIT)
    said = user.simulate("--match", "--frames", "20", "--input", steps)
    expect(f"saved the level as mine in {user.data}\n" in said, "the bar does not say where it saved:\n" + said)
    expect((user.data / "mine").exists() and (user.data / "autosaves/autosave-0-mine").exists(), "nothing is saved")
    lint = [user.programs / "brinewhirl-tool", "lint", user.data / "mine"]
    said = subprocess.run(lint, env=user.environment, capture_output=True, text=True).stdout
    expect("tstc.png" in said and "missing" not in said, "lint does not see the installed pictures:\n" + said)
    before = user.simulate("--match", "--frames", "300", "--digest")
    level = user.data / "crateyard"
    level.write_text("{\n}\n")
    after = user.simulate("--match", "--frames", "300", "--digest")
    expect(digest_of(before) != digest_of(after), "a level of the user's own is not read")
    level.unlink()


def digest_of(said):
    return [line for line in said.splitlines() if line.startswith("digest ")]


def check_copied_folder(user, installed, folder):
    """A folder with program and data is whole: nothing of the user's is read or written."""
    copy = folder / "copy"
    shutil.copytree(installed / "usr/share/games/brinewhirl", copy)
    tool = shutil.copy2(user.programs / "brinewhirl-tool", copy)
    before = files_in(user.home)
    user.simulate("--match", "--frames", "1", "--save", "beside", program=tool)
    expect((copy / "beside").exists() and files_in(user.home) == before, "a copied folder is not whole in itself")
    user.simulate("--data", copy, "--level", "beside", "--frames", "1")


def main(package):
    with tempfile.TemporaryDirectory(prefix="brinewhirl-package-") as scratch:
        folder = Path(scratch).resolve()
        (folder / "root").mkdir()
        root = Root(folder / "root")
        run("apt-get", "install", "--simulate", package)  # what it depends on can be had
        root.dpkg("--install", package)
        look_over(package, root.folder)
        user = User(folder, root.folder / "usr/bin")
        check_runs(user)
        check_edits(user, folder)
        check_copied_folder(user, root.folder, folder)
        kept = files_in(user.home)
        expect(len(kept) >= 2, "the user has nothing that could be lost")
        root.dpkg("--install", package)
        user.simulate("--level", "mine", "--frames", "10")
        root.dpkg("--remove", "brinewhirl")
        root.dpkg("--purge", "brinewhirl")
        expect(not root.left(), f"left behind: {root.left()[:5]}")
        expect(files_in(user.home) == kept, "something of the user's has changed")
    print("installed, played, edited, upgraded, removed and purged")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(Path(sys.argv[1]).resolve())
