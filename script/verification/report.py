"""docs/verification.md and its pictures."""

import pathlib
import textwrap

import panels
from families import label


def band_text(band):
    if band is None:
        return "none"
    return f"{100 * band:g} %" if band > 1e-6 else f"{band:g}"


def ratio_text(ratio, band):
    return f"{ratio:.4f}" if band is None or band > 1e-6 else f"1 {'+' if ratio >= 1 else '-'} {abs(ratio - 1):.1e}"


def table(family):
    yield "| Quantity | Elements | N | Value | Reference | Ratio | Band | Coarser meshes | Source |"
    yield "|---|---|---|---|---|---|---|---|---|"
    for s in family.series:
        mesh, value = s.values[-1]
        coarser = ", ".join(f"{s.ratio(i):.3f}" for i in range(len(s.values) - 1))
        mark = "" if s.good() else " **outside**"
        yield (f"| {s.quantity} | {label(s.form)} | {mesh} | {value:.6g} | {s.reference:.6g} | "
               f"{ratio_text(s.ratio(), s.band)}{mark} | {band_text(s.band)} | {coarser} | {s.source} |")


HEAD = """# Verification

Problems with known answers, solved by `finites-solve` on families of meshes. `script/verify` makes the decks
(`decks/plates.py`, `decks/curved_shells.py`, `decks/plastic_plates.py`, `decks/solids.py`), runs them, writes this
page and fails when a ratio on the finest mesh is outside its band. The bands are what flat elements and bricks of
this kind can reach (`script/verification/families.py`); none was fitted to the results. Rows with the band "none"
show where an element is not reliable; the text of the family explains why.

S3 and S4 are triangles and quadrilaterals, thin (Kirchhoff) and thick (Mindlin), M3D3 and M3D4 membranes, C3D8 and
C3D6 bricks and wedges. Ratio is value by reference; the coarser meshes are listed from the coarsest on. "Computed"
references come from `script/verification/references.py`, which does not use the elements of the library.

Pictures show the error of a value, |value / reference - 1|, over the size of the elements, 1 / N, a panel for each
quantity. The band is grey. A filled sign lies above the reference, an open one below. The triangle has the slope of
the panel: the median of its curves, each taken as a straight line through all of its points; it is left out below 0.5.
Where a published reference has three digits, or is that of another theory, curves end on a level. All numbers come
from the files of the solver (`--csv`, `--stresses`, `--solids`, `--json`), none from what it prints.
"""


def wrapped(text):
    return textwrap.fill(text, 118, break_long_words=False, break_on_hyphens=False)


def write(families, folder, runs):
    """The page and a picture for each family with more than one mesh."""
    folder = pathlib.Path(folder)
    pictures = folder / "verification"
    pictures.mkdir(parents=True, exist_ok=True)
    lines = [HEAD]
    for family in families:
        lines += [f"## {family.title}", "", wrapped(family.text), ""]
        if family.mesh:
            lines += [f"N counts {family.mesh}.", ""]
            panels.picture(family, pictures / f"{family.name}.png")
            lines += [f"![{family.title}: error by the size of the elements](verification/{family.name}.png)", ""]
        lines += [*table(family), ""]
    worst, deck = runs.imbalance()
    lines += ["## Sums", "", wrapped(
        "In all of these decks that end in displacements the loads and the reactions are in balance: the largest sum, "
        "of forces by the largest force and of moments by that and the size of the model, is "
        f"{worst:.1e} (`{deck}`)."), ""]
    (folder / "verification.md").write_text("\n".join(lines).rstrip() + "\n")
