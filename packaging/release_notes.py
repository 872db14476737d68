"""release_notes.py CHANGELOG VERSION metainfo TEMPLATE | debian MAINTAINER: releases in the form that a package wants.

Writes to standard output: the AppStream template with its releases, or a Debian changelog. A release is a heading "##
VERSION (YYYY-MM-DD)" with a list under it. What stands under "## Unreleased" is VERSION's, of the last commit's day (or of
SOURCE_DATE_EPOCH's), unless VERSION has a heading of its own.
"""

import os
import re
import subprocess
import sys
import textwrap
from datetime import datetime, timezone
from email.utils import format_datetime
from pathlib import Path
from xml.sax.saxutils import escape

HEADING = re.compile(r"## (?:(Unreleased)|(\d\S*) \((\d{4}-\d\d-\d\d)\))$")
WIDTH = 78  # of a Debian changelog's line


class Release:
    def __init__(self, version, date, finished):
        self.version = version
        self.date = date
        self.finished = finished
        self.notes = []


def day_of_source(folder):
    """When the source was made: what a rebuild of it, wherever and whenever, says too."""
    seconds = os.environ.get("SOURCE_DATE_EPOCH")
    if not seconds:
        command = ["git", "-C", folder, "log", "-1", "--format=%ct"]
        seconds = subprocess.run(command, capture_output=True, text=True).stdout.strip()
    moment = datetime.fromtimestamp(int(seconds), timezone.utc) if seconds else datetime.now(timezone.utc)
    return moment.date().isoformat()


def read_releases(changelog, version):
    """The releases, newest first."""
    releases = []
    for line in changelog.read_text().splitlines():
        if heading := HEADING.match(line):
            unreleased, number, date = heading.groups()
            releases.append(Release(number or version, date or day_of_source(changelog.parent), not unreleased))
        elif line.startswith("## "):
            raise SystemExit(f'{changelog}: "{line}" is no heading of the form "## VERSION (YYYY-MM-DD)"')
        elif line.startswith("- ") and releases:
            releases[-1].notes.append(line[2:])
        elif line.strip() and releases and releases[-1].notes:
            releases[-1].notes[-1] += " " + line.strip()
    finished = {release.version for release in releases if release.finished}
    return [release for release in releases if release.notes and (release.finished or version not in finished)]


def print_metainfo(releases, template):
    lines = ["<releases>"]
    for release in releases:
        kind = "stable" if release.finished else "development"
        lines.append(f'    <release version="{release.version}" date="{release.date}" type="{kind}">')
        lines.append("      <description>\n        <ul>")
        lines += [f"          <li>{escape(note.replace('`', ''))}</li>" for note in release.notes]
        lines.append("        </ul>\n      </description>\n    </release>")
    lines.append("  </releases>")
    print(template.read_text().replace("@RELEASES@", "\n".join(lines)), end="")


def print_debian(releases, maintainer):
    for release in releases:
        noon = datetime.fromisoformat(release.date + "T12:00:00+00:00")
        print(f"brinewhirl ({release.version}) {'unstable' if release.finished else 'UNRELEASED'}; urgency=medium\n")
        for note in release.notes:
            print(textwrap.fill(note, WIDTH, initial_indent="  * ", subsequent_indent="    ",
                                break_on_hyphens=False))
        print(f"\n -- {maintainer}  {format_datetime(noon)}\n")


def main(changelog, version, form, given):
    releases = read_releases(Path(changelog), version)
    if form == "metainfo":
        print_metainfo(releases, Path(given))
    else:
        print_debian(releases, given)


if __name__ == "__main__":
    if len(sys.argv) != 5 or sys.argv[3] not in ("metainfo", "debian"):
        sys.exit(__doc__)
    main(*sys.argv[1:])
