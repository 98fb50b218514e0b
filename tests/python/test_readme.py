# SPDX-License-Identifier: MIT
"""The examples of the package's README, on the demonstration reader."""

import doctest
import os
import pathlib
import subprocess
import sys

README = pathlib.Path(__file__).resolve().parents[2] / "bindings" / "python" / "README.md"


def test_examples_run_as_they_stand(bench, tmp_path, monkeypatch):
    bench.demo()
    monkeypatch.chdir(tmp_path)
    text = README.read_text("utf-8").replace("\n```\n", "\n\n")
    examples = doctest.DocTestParser().get_doctest(text, {}, "README.md", str(README), 0)
    runner = doctest.DocTestRunner()
    said = []
    result = runner.run(examples, out=said.append)
    assert result.failed == 0, "".join(said)
    assert result.attempted > 15


def test_preloaded_simulator_is_found():
    """The one that the README names, on the real clock."""
    simulator = pathlib.Path(os.environ["ZELTAG_LIBRARY"]).parent / "libzelsim.so"
    code = "import zeltag; print([(reader.name, reader.read()) for reader in zeltag.readers()])"
    result = subprocess.run([sys.executable, "-c", code], check=True, capture_output=True,
                            text=True, env=dict(os.environ, LD_PRELOAD=str(simulator)))
    assert result.stdout == ("[('sim:zeltag-0', Card(bits=26, "
                             "data=b'p\\x1b4\\x02'))]\n")
