"""Pictures of convergence: a panel for each quantity, errors over the size of elements in logarithmic axes."""

import math

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np
from PIL import Image

from families import label

# Colour and sign by form; signs of thin elements are larger, so that they show round those of thick ones.
STYLES = {"S3 thin": ("tab:blue", "^", 7), "S4 thin": ("tab:orange", "s", 7), "S3 thick": ("tab:green", "v", 4.5),
          "S4 thick": ("tab:red", "D", 4), "M3D3": ("tab:olive", "<", 4), "M3D4": ("tab:purple", "P", 5),
          "C3D8": ("tab:brown", "s", 6), "C3D6": ("tab:cyan", "^", 6)}
LEAST = 1e-6  # an error below it is drawn here


def errors(series):
    """Sizes of elements and errors, the coarsest mesh first."""
    sizes = np.array([1.0 / mesh for mesh, _ in series.values])
    return sizes, np.array([max(abs(series.ratio(i) - 1), LEAST) for i in range(len(sizes))])


def slope(series):
    sizes, found = errors(series)
    return np.polyfit(np.log(sizes), np.log(found), 1)[0]


def draw(axes, series):
    colour, sign, size = STYLES[label(series.form)]
    sizes, found = errors(series)
    axes.plot(sizes, found, color=colour, linewidth=1)
    for i, (h, error) in enumerate(zip(sizes, found)):
        above = series.ratio(i) > 1
        axes.plot(h, error, color=colour, marker=sign, markersize=size, markerfacecolor=colour if above else "white",
                  markeredgewidth=1, clip_on=False, zorder=3)


def triangle(axes, steepness):
    """Below the curves on the right, with its slope beside it."""
    if steepness < 0.5:  # the curves end on a level
        return
    (least, most), (low, high) = axes.get_xlim(), axes.get_ylim()
    wide = (most / least) ** 0.25
    right, bottom = most / (most / least) ** 0.05, low * (high / low) ** 0.04
    left, top = right / wide, bottom * wide ** steepness
    axes.fill([left, right, right], [bottom, bottom, top], facecolor="0.85", edgecolor="0.35", linewidth=0.7, zorder=1)
    axes.text(left / wide ** 0.12, bottom, f"{steepness:.1f}", fontsize=7, ha="right", va="bottom", color="0.25")


def panel(axes, quantity, all_series):
    found = np.concatenate([errors(s)[1] for s in all_series])
    meshes = sorted({mesh for s in all_series for mesh, _ in s.values})
    bands = [s.band for s in all_series if s.band is not None]
    axes.set_xscale("log", base=2)
    axes.set_yscale("log")
    steepness = float(np.median([slope(s) for s in all_series]))
    low, high = min([*found, *bands]), max([*found, *bands])
    axes.set_xlim(1 / meshes[-1] / 1.25, 1 / meshes[0] * 1.25)
    room = (meshes[-1] / meshes[0] * 1.6) ** (0.25 * max(steepness, 0.5))  # below the curves, for the triangle
    bottom, top = low / 1.6 / room, max(high * 1.6, low * 10)
    if math.floor(math.log10(top)) - math.ceil(math.log10(bottom)) < 1:  # two decades at least have a number
        bottom = min(bottom, 10.0 ** (math.floor(math.log10(top)) - 1) / 1.1)
    axes.set_ylim(bottom, top)
    for band in sorted(set(bands)):
        axes.axhspan(axes.get_ylim()[0], band, color="0.94", zorder=0)
        axes.axhline(band, color="0.6", linewidth=0.6, linestyle="--", zorder=0)
    triangle(axes, steepness)
    for one in all_series:
        draw(axes, one)
    axes.set_title(quantity, fontsize=7.5)
    axes.set_xticks([1 / mesh for mesh in meshes])
    axes.set_xticklabels([f"1/{mesh}" if mesh > 1 else "1" for mesh in meshes], fontsize=7)
    axes.tick_params(axis="y", labelsize=7)
    axes.minorticks_off()
    axes.grid(linewidth=0.3, which="major")


def shape_of(count):
    """Columns and rows, and the size of a panel in inches: few are larger."""
    columns = {1: 1, 2: 2, 4: 2, 7: 4, 8: 4, 10: 4}.get(count, 3 if count <= 12 else 4)
    return columns, math.ceil(count / columns), {1: (4.2, 2.9), 2: (3.1, 2.5)}.get(columns, (2.35, 2.1))


def legend(figure, forms, banded):
    handles = [plt.Line2D([], [], color=STYLES[f][0], marker=STYLES[f][1], markersize=5, label=f) for f in forms]
    handles += [plt.Line2D([], [], color="0.3", marker="o", linestyle="", markersize=5, label="above"),
                plt.Line2D([], [], color="0.3", marker="o", linestyle="", markersize=5, markerfacecolor="white",
                           label="below")]
    if banded:
        handles.append(plt.Rectangle((0, 0), 1, 1, facecolor="0.92", edgecolor="0.6", linewidth=0.6, linestyle="--",
                                     label="band"))
    figure.legend(handles=handles, fontsize=7.5, loc="center right", frameon=False, ncol=1)


def picture(family, path):
    quantities = list(dict.fromkeys(s.quantity for s in family.series))
    columns, rows, panel_size = shape_of(len(quantities))
    side = 1.0  # inches, for the legend
    width, height = columns * panel_size[0] + side + 0.25, rows * panel_size[1] + 0.5
    figure, all_axes = plt.subplots(rows, columns, figsize=(width, height), dpi=100, squeeze=False)
    for axes in all_axes.flat[len(quantities):]:
        axes.set_visible(False)
    for axes, quantity in zip(all_axes.flat, quantities):
        panel(axes, quantity, [s for s in family.series if s.quantity == quantity])
    forms = list(dict.fromkeys(label(s.form) for s in family.series))
    legend(figure, forms, any(s.band is not None for s in family.series))
    figure.suptitle(family.title, fontsize=10, x=(width - side) / 2 / width)
    figure.supxlabel(f"size of elements, 1 / N (N: {family.mesh})", fontsize=8, x=(width - side) / 2 / width)
    figure.supylabel("error of the value", fontsize=8)
    figure.tight_layout(rect=(0, 0, 1 - side / width, 1))
    figure.savefig(path)
    plt.close(figure)
    Image.open(path).convert("RGB").quantize(64).save(path, optimize=True)  # a palette keeps the file small
