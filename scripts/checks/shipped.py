#!/usr/bin/env python3
"""Checks what users get: which files are installed, and that all of them tell the same version.

  shipped.py prefix FOLDER --libdir lib --version 0.1.0 --soversion 0.1
  shipped.py packages FOLDER --build BUILD --cpack cpack --libdir ... --version ... --soversion ...

The second makes the Debian packages of a build in FOLDER, unpacks them there and looks at each; it
exits with 77, for skipped, where this machine can't pack.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys

import tree

SKIPPED = 77

# What is installed beside the headers, by component.
FILES = {
    "runtime": ["{lib}/libpxdutil.so.{version}", "{lib}/libpxdutil.so.{soversion}"],
    "dev": [
        "{lib}/libpxdutil.a",
        "{lib}/libpxdutil.so",
        "{lib}/cmake/pxdutil/pxdutilConfig.cmake",
        "{lib}/cmake/pxdutil/pxdutilConfigVersion.cmake",
        "{lib}/cmake/pxdutil/pxdutilTargets.cmake",
        "{lib}/cmake/pxdutil/pxdutilTargets-{configuration}.cmake",
        "{lib}/pkgconfig/pxdutil.pc",
        "share/doc/pxdutil/LICENSE",
        "share/doc/pxdutil/README.md",
        "share/doc/pxdutil/CHANGELOG.md",
    ],
    "tools": [
        "bin/pxd",
        "share/man/man1/pxd.1",
        "share/bash-completion/completions/pxd",
        "share/zsh/vendor-completions/_pxd",
        "share/fish/vendor_completions.d/pxd.fish",
    ],
}
PAPERS = ["share/doc/{package}/copyright", "share/doc/{package}/changelog.Debian.gz"]


def run(*command, **environment):
    return subprocess.run(
        [str(word) for word in command],
        capture_output=True,
        text=True,
        check=True,
        env={**os.environ, **environment},
    ).stdout


def expected_files(component, names):
    files = {file.format(**names) for file in FILES[component]}
    if component == "dev":
        files.update(
            f"include/{path.relative_to(tree.ROOT).as_posix()}"
            for path in tree.files(tree.ROOT, ".h", under=("pxdutil",))
        )
        files.update(
            f"share/doc/pxdutil/docs/{path.relative_to(tree.ROOT / 'docs').as_posix()}"
            for path in tree.files(tree.ROOT, ".md", under=("docs",))
        )
    return files


def files_below(folder):
    return {
        path.relative_to(folder).as_posix()
        for path in folder.rglob("*")
        if path.is_symlink() or not path.is_dir()
    }


def differences(place, found, expected):
    return [f"{place}: {name}: missing" for name in sorted(expected - found)] + [
        f"{place}: {name}: not expected" for name in sorted(found - expected)
    ]


def check_runtime(prefix, names):
    problems = []
    library = prefix / names["lib"] / f"libpxdutil.so.{names['version']}"
    soname = re.search(r"SONAME.*\[(.*)\]", run("readelf", "-d", library))[1]
    if soname != f"libpxdutil.so.{names['soversion']}":
        problems.append(f"the shared library's SONAME is {soname}")
    link = library.parent / soname
    if not link.is_symlink() or os.readlink(link) != library.name:
        problems.append(f"{link.name} is no link to {library.name}")
    return problems


def check_dev(prefix, names):
    problems = []
    link = os.readlink(prefix / names["lib"] / "libpxdutil.so")
    if link != f"libpxdutil.so.{names['soversion']}":
        problems.append(f"libpxdutil.so is a link to {link}")
    header = (prefix / "include/pxdutil/version.h").read_text(encoding="utf-8")
    numbers = [
        re.search(rf"PXDUTIL_VERSION_{part} (\d+)$", header, re.MULTILINE)[1]
        for part in ("MAJOR", "MINOR", "PATCH")
    ]
    if ".".join(numbers) != names["version"] or f'"{names["version"]}"' not in header:
        problems.append(f"version.h tells another version than {names['version']}")
    if shutil.which("pkg-config"):
        asked = {"PKG_CONFIG_PATH": str(prefix / names["lib"] / "pkgconfig")}
        if run("pkg-config", "--modversion", "pxdutil", **asked).strip() != names["version"]:
            problems.append("pxdutil.pc tells another version")
        told = run("pkg-config", "--variable=prefix", "pxdutil", **asked).strip()
        if pathlib.Path(told).resolve() != prefix.resolve():
            problems.append(f"pxdutil.pc takes {told} for its prefix")
    return problems


def check_tools(prefix, names):
    told = run(prefix / "bin/pxd", "--version").strip()
    return [] if told == f"pxd {names['version']}" else [f"pxd --version says {told}"]


CHECKS = {"runtime": check_runtime, "dev": check_dev, "tools": check_tools}


def check_prefix(prefix, names):
    expected = set().union(*(expected_files(component, names) for component in FILES))
    problems = differences("prefix", files_below(prefix), expected)
    if not problems:
        problems = [problem for look in CHECKS.values() for problem in look(prefix, names)]
    return problems, len(expected)


def check_package(component, package, folder, names):
    """One package, unpacked into a folder of its own."""
    debs = list(folder.glob(f"{package}_*.deb"))
    if len(debs) != 1:
        return [f"{package}: {len(debs)} packages"], 0
    root = folder / component
    run("dpkg-deb", "-x", debs[0], root)
    expected = {f"usr/{file}" for file in expected_files(component, names)}
    expected |= {f"usr/{paper.format(package=package)}" for paper in PAPERS}
    expected = {re.sub(r"(/man1/.*\.1)$", r"\1.gz", file) for file in expected}
    problems = differences(package, files_below(root), expected)
    if not problems:
        problems = [f"{package}: {problem}" for problem in CHECKS[component](root / "usr", names)]
    owners = {line.split()[1] for line in run("dpkg-deb", "-c", debs[0]).splitlines()}
    if owners != {"root/root"}:
        problems.append(f"{package}: owned by {owners}")
    for field, rule in FIELDS[component].items():
        value = run("dpkg-deb", "-f", debs[0], field).strip()
        if not re.search(rule.format(**names), value):
            problems.append(f"{package}: {field} is {value!r}")
    return problems, len(expected)


_COMMON = {"Version": r"^{version}-1$", "Maintainer": "^.+ <.+@.+>$", "Description": "^.+\n .+"}
FIELDS = {
    "runtime": {**_COMMON, "Section": "^libs$", "Depends": "libstdc"},
    "dev": {
        **_COMMON,
        "Section": "^libdevel$",
        "Depends": r"^libpxdutil{soversion} \(= {version}-1\)$",
    },
    "tools": {**_COMMON, "Section": "^utils$", "Depends": "libstdc"},
}


def check_packages(folder, build, cpack, names):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    run(cpack, "-G", "DEB", "--config", build / "CPackConfig.cmake", "-B", folder)
    packages = {
        "runtime": f"libpxdutil{names['soversion']}",
        "dev": "libpxdutil-dev",
        "tools": "pxd-tools",
    }
    problems = []
    looked_at = 0
    for component, package in packages.items():
        found, count = check_package(component, package, folder, names)
        problems += found
        looked_at += count
    return problems, looked_at


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("what", choices=("prefix", "packages"))
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--build", type=pathlib.Path)
    parser.add_argument("--cpack", default="cpack")
    for name in ("libdir", "version", "soversion", "configuration"):
        parser.add_argument(f"--{name}", required=True)
    arguments = parser.parse_args()
    told = {
        "lib": arguments.libdir,
        "version": arguments.version,
        "soversion": arguments.soversion,
        "configuration": arguments.configuration.lower() or "noconfig",
    }
    if arguments.what == "prefix":
        tree.report("shipped", *check_prefix(arguments.folder, told))
    if not (shutil.which("dpkg-deb") and shutil.which("dpkg-shlibdeps")):
        print("skipped: dpkg-dev isn't here (scripts/setup test)")
        sys.exit(SKIPPED)
    try:
        result = check_packages(arguments.folder, arguments.build, arguments.cpack, told)
    except subprocess.CalledProcessError as error:
        print(error.stdout, error.stderr, sep="")
        raise
    tree.report("shipped", *result)
