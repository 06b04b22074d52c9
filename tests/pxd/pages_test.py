#!/usr/bin/env python3
"""What is installed beside pxd: the manual page says all that the help says, its examples run, and
three shells complete a command line.

  pages_test.py PXD PXD_PAGES manual|bash|zsh|fish

Exits with 77, for skipped, where this machine lacks the program that reads the page.
"""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PXD, PAGES, SUBJECT = (sys.argv[1:] + [""] * 3)[:3]
NEEDS = {"manual": "groff", "bash": "bash", "zsh": "zsh", "fish": "fish"}
SKIPPED = 77


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, timeout=60, **options)


class Pages(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.pages = self.folder / "pages"
        self.pages.mkdir()
        self.assertEqual(run(PAGES, str(self.pages)).returncode, 0)
        (self.folder / "trades.csv").touch()
        (self.folder / "two words.csv").touch()


def squeezed(text):
    return re.sub(r"\s+", " ", text)


def help_of(*command):
    return run(PXD, *command, "--help").stdout


def commands():
    text = help_of()
    return re.findall(r"^  (\w+)", text[text.index("Subcommands:") :], re.MULTILINE)


class Manual(Pages):
    def lines(self):
        """The page as a terminal shows it, without hyphens at the ends of lines."""
        page = str(self.pages / "pxd.1")
        result = run("groff", "-man", "-Tascii", "-P-cbou", "-rLL=200n", "-rHY=0", page)
        self.assertEqual(result.returncode, 0)
        return result.stdout

    def rendered(self):
        return squeezed(self.lines())

    def test_troff_has_nothing_to_say(self):
        result = run("groff", "-man", "-ww", "-z", str(self.pages / "pxd.1"))
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def test_every_command_and_option_of_the_help_is_there(self):
        page = self.rendered()
        self.assertGreaterEqual(len(commands()), 11)
        for command in commands():
            text = help_of(command)
            start = page.index(f" {command} pxd {command} ")
            options = re.findall(r"^ +(-\S+)", text, re.MULTILINE)
            self.assertGreaterEqual(len(options), 1, command)
            for names in options:
                if names != "-h,--help":
                    self.assertIn(f" {names.replace(',', ', ')} ", page[start:], command)

    def test_what_the_help_ends_with_is_there(self):
        page = self.rendered()
        for command in commands():
            notes = help_of(command).rpartition("\n\n\n")[2]
            for paragraph in notes.split("\n\n"):
                self.assertIn(squeezed(paragraph).strip(), page, command)

    def test_examples_run_one_after_the_other(self):
        page = self.lines()
        examples = re.findall(r"^ +(pxd .*)$", page[page.index("EXAMPLES") :], re.MULTILINE)
        self.assertGreaterEqual(len(examples), 5)
        work = self.folder / "work"
        work.mkdir()
        path = f"{pathlib.Path(PXD).parent}{os.pathsep}{os.environ['PATH']}"
        for example in examples:
            result = run("sh", "-c", example, cwd=work, env={**os.environ, "PATH": path})
            self.assertEqual(result.returncode, 0, f"{example}\n{result.stderr}")

    def test_same_sources_give_the_same_bytes(self):
        again = self.folder / "again"
        again.mkdir()
        run(PAGES, str(again), env={**os.environ, "TZ": "Asia/Tokyo", "LC_ALL": "C"})
        for page in self.pages.iterdir():
            self.assertEqual(page.read_bytes(), (again / page.name).read_bytes(), page.name)
        self.assertTrue((self.pages / "pxd.1").read_text().startswith('.TH PXD 1 "" '))


class Bash(Pages):
    def complete(self, *words):
        script = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _pxd\n'
        script += 'printf "%s\\n" "${COMPREPLY[@]}"'
        result = run("bash", "-uc", script, "bash", str(self.pages / "pxd.bash"), *words, cwd=self.folder)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return sorted(result.stdout.split("\n")[:-1])

    def test_table(self):
        files = ["pages", "trades.csv", "two words.csv"]
        for words, expected in (
            (["pxd", ""], sorted(commands())),
            (["pxd", "ex"], ["exchanges", "export"]),
            (["pxd", "--v"], ["--version"]),
            (["pxd", "show", "--h"], ["--head", "--help"]),
            (["pxd", "fields", "--re"], ["--resolutions"]),
            (["pxd", "bars", ""], files),
            (["pxd", "bars", "tw"], ["two words.csv"]),
            (["pxd", "bars", "-o", "tr"], ["trades.csv"]),
            (["pxd", "bars", "--output", "=", "tr"], ["trades.csv"]),
            (["pxd", "export", "--to", ""], ["csv", "json"]),
            (["pxd", "export", "--to", "="], ["csv", "json"]),
            (["pxd", "export", "--to", "=", "j"], ["json"]),
            (["pxd", "adjust", "--target", ""], ["openint", "prices", "volumes"]),
            (["pxd", "adjust", "--operation", "d"], ["divide"]),
            (["pxd", "sample", "--market", "o"], ["overnight"]),
            # A value that nothing is known of, and a command without files.
            (["pxd", "bars", "--sessions", ""], [""]),
            (["pxd", "exchanges", ""], [""]),
            (["pxd", "nothing", ""], [""]),
        ):
            with self.subTest(words):
                self.assertEqual(self.complete(*words), expected)

    def test_every_option_of_the_help_is_offered(self):
        for command in commands():
            names = re.findall(r"^ +(-\S+)", help_of(command), re.MULTILINE)
            expected = sorted(name for row in names for name in row.split(","))
            self.assertEqual(self.complete("pxd", command, "-"), expected, command)


class Fish(Pages):
    def complete(self, line):
        script = f"source {self.pages}/pxd.fish; complete -C '{line}'"
        home = {**os.environ, "HOME": str(self.folder), "XDG_CONFIG_HOME": str(self.folder)}
        result = run("fish", "--no-config", "-c", script, cwd=self.folder, env=home)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return sorted(row.partition("\t")[0] for row in result.stdout.splitlines())

    def test_table(self):
        for line, expected in (
            ("pxd ", sorted(commands())),
            ("pxd ex", ["exchanges", "export"]),
            ("pxd show --h", ["--head", "--help"]),
            ("pxd bars tr", ["trades.csv"]),
            ("pxd bars -o tr", ["trades.csv"]),
            ("pxd export --to ", ["csv", "json"]),
            ("pxd adjust --target=v", ["--target=volumes"]),
            ("pxd exchanges tr", []),
        ):
            with self.subTest(line):
                self.assertEqual(self.complete(line), expected)


class Zsh(Pages):
    def typed(self, keys, until):
        """What an interactive shell shows once the keys were typed and `until` turned up."""
        (self.folder / "functions").mkdir(exist_ok=True)
        shutil.copy(self.pages / "pxd.zsh", self.folder / "functions" / "_pxd")
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.folder)
            os.environ.update(TERM="dumb", ZDOTDIR=str(self.folder))
            os.execvp("zsh", ["zsh", "-f", "-i"])
        try:
            start = "fpath=($PWD/functions $fpath); autoload -U compinit; compinit -u -D; "
            os.write(terminal, (start + "PS1='%%%%%%'; echo rea''dy\n").encode())
            self.read(terminal, "ready\r\n")
            os.write(terminal, keys.encode())
            return self.read(terminal, until)
        finally:
            os.close(terminal)
            os.waitpid(process, 0)

    def read(self, terminal, until):
        seen = ""
        deadline = time.monotonic() + 20
        while until not in seen:
            if not select.select([terminal], [], [], max(0, deadline - time.monotonic()))[0]:
                self.fail(f"no {until!r} in {seen!r}")
            seen += os.read(terminal, 4096).decode(errors="replace")
        return seen

    def test_table(self):
        for keys, until in (
            ("pxd samp\t", "pxd sample "),
            ("pxd show --hea\t", "--head="),
            ("pxd bars tra\t", "trades.csv"),
            ("pxd export --to j\t", "json"),
            ("pxd adjust --operation=rec\t", "reciprocal"),
            ("pxd fields --stor\t", "--storable"),
        ):
            with self.subTest(keys):
                self.typed(keys, until)


if __name__ == "__main__":
    if shutil.which(NEEDS[SUBJECT]) is None:
        print(f"skipped: {NEEDS[SUBJECT]} isn't here (scripts/setup test)")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1], defaultTest=SUBJECT.capitalize())
