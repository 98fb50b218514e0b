# SPDX-License-Identifier: MIT
"""The examples of the package's README, on the demonstration reader."""

import doctest
import pathlib

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
