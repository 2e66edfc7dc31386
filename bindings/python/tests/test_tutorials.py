"""The tutorials run; each asserts what it tells, and draws one small picture."""
import runpy
from pathlib import Path

import matplotlib
import pytest
from matplotlib.figure import Figure

matplotlib.use("Agg")
FOLDER = Path(__file__).parents[3] / "docs/tutorials"
TUTORIALS = sorted(FOLDER.glob("*.py"))


def test_there_are_tutorials():
    assert {path.stem for path in TUTORIALS} == {"plate", "portal", "strip", "net"}


@pytest.mark.parametrize("path", TUTORIALS, ids=lambda path: path.stem)
def test_a_tutorial_runs_and_draws(path, tmp_path, monkeypatch):
    drawn = []
    save = Figure.savefig

    def into_tmp(self, target, **options):
        drawn.append(Path(target).name)
        save(self, tmp_path / Path(target).name, **options)

    monkeypatch.setattr(Figure, "savefig", into_tmp)
    runpy.run_path(str(path))
    assert drawn == [path.stem + ".png"]
    for folder in (tmp_path, FOLDER):
        assert 5_000 < (folder / drawn[0]).stat().st_size < 100_000
