# SPDX-License-Identifier: MIT
"""The package under mypy, and the types that a program sees."""

import os
import pathlib
import shutil
import subprocess

import pytest

PACKAGE = pathlib.Path(__file__).resolve().parents[2] / "bindings" / "python"
PROGRAM = """\
import datetime
import zeltag
from typing import Optional, Tuple

for reader in zeltag.readers():
    card: Optional[zeltag.Card] = reader.read()
    hold: zeltag.Quantity = reader.settings.iIDHoldTO
    beeps: bool = reader.settings.CfgFlags2.bBeepID
    reader.settings.iIDHoldTO = datetime.timedelta(seconds=1)
    step: int = zeltag.TimeParms.iIDHoldTO.step
with zeltag.connect("/dev/ttyUSB0") as connection:
    colours: Tuple[int, ...] = connection.stripe_readers[0].settings.LedColor
"""
MISTAKE = "import zeltag\nfor reader in zeltag.readers():\n    reader.settings.bBeepID = 'yes'\n"


@pytest.fixture
def check(tmp_path):
    """Runs mypy on what it is given."""
    mypy = "/usr/bin/mypy" if os.access("/usr/bin/mypy", os.X_OK) else shutil.which("mypy")
    if mypy is None:
        pytest.skip("mypy not found: mypy of Debian")
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}

    def run(*arguments):
        return subprocess.run(
            [mypy, "--strict", "--cache-dir", tmp_path / "cache", *arguments],
            cwd=tmp_path, capture_output=True, text=True,
            env={**environment, "MYPYPATH": str(PACKAGE)}).stdout
    return run


def test_package_is_typed(check):
    assert check("-p", "zeltag").startswith("Success: no issues found")


def test_program_sees_the_types(check, tmp_path):
    (tmp_path / "program.py").write_text(PROGRAM)
    assert check("program.py").startswith("Success: no issues found")


def test_mistake_is_found(check, tmp_path):
    (tmp_path / "mistake.py").write_text(MISTAKE)
    assert "Incompatible types in assignment" in check("mistake.py")
