"""manual_form.py: turns what `brinewhirl-tool --help-all` prints, on standard input, into the form that help2man reads: a
heading for each command and each group of its options, and every option's text on the line of its name."""

import re
import sys

GROUP = re.compile(r"\[Option Group: (.*)\]")
NOISE = re.compile(r":INT in \[[^]]*\]| TEXT(?= \.\.\. REQUIRED| REQUIRED)| REQUIRED| (?:Excludes|Needs): .*")
DROPPED = ("Options:", "Positionals:", "Subcommands:", "[At most 1 of the following options are allowed]", "")
NAME_WIDTH = 28  # of the column before an option's text
TEXT_INDENT = 30  # what is indented by so much is the text of an option alone, whose name was too long for its column


def indentation(line):
    return len(line) - len(line.lstrip())


def convert(lines):
    commands = lines.index("Subcommands:")
    yield from lines[:commands]
    described = True
    for number, line in enumerate(lines[commands + 1 :], commands + 1):
        inner = line.strip()
        after = lines[number + 1] if number + 1 < len(lines) else ""
        if inner in DROPPED:
            continue
        if group := GROUP.match(inner):
            yield f"\n{group[1].capitalize()}, at most one of:"
        elif indentation(line) == 0:
            yield f"\nCommand {line}:"
            described = False
        elif not described:
            yield f"  {inner}\n"
            described = True
        elif indentation(after) >= TEXT_INDENT:
            yield f"  {NOISE.sub('', inner)}  {after.strip()}"
        elif indentation(line) < TEXT_INDENT:
            yield f"  {NOISE.sub('', inner[:NAME_WIDTH].strip())}  {inner[NAME_WIDTH:]}"


print("\n".join(convert(sys.stdin.read().splitlines())))
