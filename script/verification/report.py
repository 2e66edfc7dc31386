"""docs/verification.md and its pictures."""

import pathlib
import textwrap

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
from PIL import Image

from families import label

COLOURS = {"S3 thin": "tab:blue", "S4 thin": "tab:orange", "S3 thick": "tab:green", "S4 thick": "tab:red",
           "M3D3": "tab:olive", "M3D4": "tab:purple", "C3D8": "tab:brown", "C3D6": "tab:cyan"}
MARKERS = ("o", "s", "^", "D", "v", "P", "X", "*", "<", ">")


def picture(family, path):
    """Ratio against mesh, a line a series: colours for the form, markers for the quantity."""
    quantities = list(dict.fromkeys(s.quantity for s in family.series))
    figure, axes = plt.subplots(figsize=(7.5, 4.2), dpi=90)
    for s in family.series:
        meshes = [mesh for mesh, _ in s.values]
        ratios = [s.ratio(i) for i in range(len(meshes))]
        axes.plot(meshes, ratios, color=COLOURS[label(s.form)], marker=MARKERS[quantities.index(s.quantity) % 10],
                  markersize=4, linewidth=0.9)
    axes.set_xscale("log", base=2)
    axes.axhline(1.0, color="black", linewidth=0.7)
    axes.set_xlabel(family.mesh)
    axes.set_ylabel("value / reference")
    axes.set_ylim(*limits(family))
    axes.set_xticks(sorted({mesh for s in family.series for mesh, _ in s.values}))
    axes.get_xaxis().set_major_formatter(matplotlib.ticker.ScalarFormatter())
    axes.get_xaxis().set_minor_formatter(matplotlib.ticker.NullFormatter())
    axes.grid(linewidth=0.3)
    forms = list(dict.fromkeys(label(s.form) for s in family.series))
    handles = [plt.Line2D([], [], color=COLOURS[form], label=form) for form in forms]
    if 1 < len(quantities) <= 10:
        handles += [plt.Line2D([], [], color="grey", marker=MARKERS[i], linestyle="", markersize=4, label=quantity)
                    for i, quantity in enumerate(quantities)]
    axes.legend(handles=handles, fontsize=6.5, ncol=2)
    axes.set_title(family.title, fontsize=10)
    figure.tight_layout()
    figure.savefig(path)
    plt.close(figure)
    Image.open(path).convert("RGB").quantize(64).save(path, optimize=True)  # a palette keeps the file small


def limits(family):
    """What the finest meshes do must stay visible beside the coarsest."""
    ratios = [s.ratio(i) for s in family.series if s.band is not None for i in range(len(s.values))]
    low, high = max(0.0, min(ratios)), min(1.6, max(ratios))
    margin = 0.05 * max(high - low, 0.02)
    return min(low, 1.0) - margin, max(high, 1.0) + margin


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
"""


def wrapped(text):
    return textwrap.fill(text, 118, break_long_words=False, break_on_hyphens=False)


def write(families, folder):
    """The page and a picture for each family with more than one mesh."""
    folder = pathlib.Path(folder)
    pictures = folder / "verification"
    pictures.mkdir(parents=True, exist_ok=True)
    lines = [HEAD]
    for family in families:
        lines += [f"## {family.title}", "", wrapped(family.text), ""]
        if family.mesh:
            lines += [f"N counts {family.mesh}.", ""]
            picture(family, pictures / f"{family.name}.png")
            lines += [f"![{family.title}: ratio to the reference by mesh](verification/{family.name}.png)", ""]
        lines += [*table(family), ""]
    (folder / "verification.md").write_text("\n".join(lines).rstrip() + "\n")
