"""Runs all families and writes the page: main.py <finites-solve> <folder for decks> <docs>. Exit status 1: a ratio lies
outside its band."""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "decks"))

import families
import report
from runs import Runs


def main():
    program, folder, docs = sys.argv[1:4]
    only = sys.argv[4:]
    runs = Runs(program, folder)
    done, bad = [], []
    for make in families.ALL:
        if only and make.__name__ not in only:
            continue
        start = time.monotonic()
        family = make(runs)
        done.append(family)
        judged = [s for s in family.series if s.band is not None]
        worst = max(judged, key=lambda s: abs(s.ratio() - 1) / s.band)
        print(f"  {family.title}: worst {worst.ratio():.5f} of {worst.quantity}, {families.label(worst.form)}, band "
              f"{worst.band:g} ({time.monotonic() - start:.0f} s)", flush=True)
        bad += [(family, s) for s in family.series if not s.good()]
    report.write(done, docs, runs)
    for family, s in bad:
        print(f"{family.title}, {s.quantity}, {families.label(s.form)}: {s.values[-1][1]:.6g} against "
              f"{s.reference:.6g}, ratio {s.ratio():.5f}, band {s.band:g}", file=sys.stderr)
    print(f"  {sum(len(f.series) for f in done)} values from {len(runs)} decks, {len(bad)} outside their bands")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
