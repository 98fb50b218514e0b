# SPDX-License-Identifier: MIT
"""The command line of a test script that has a function for each case."""

import argparse
import pathlib


def run_case(description, cases, make):
    """Runs the case that is named on what `make` gives for build, version and library folder."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--libdir", required=True)
    parser.add_argument("case", choices=cases)
    told = parser.parse_args()
    cases[told.case](make(told.build.resolve(), told.version, told.libdir))
