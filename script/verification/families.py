"""The families of problems: which decks, which value of each, its reference, and the band in which the ratio must lie.

Bands are set by what a flat element of this kind can be asked for on the finest mesh, not by what came out:
  1e-9   a patch of constant strain or curvature: exact up to rounding
  1 %    deflections and frequencies of plates, whose elements converge with h^2
  2 %    curved shells, of which facets are an approximation, and the membrane of Cook, whose stresses are infinite at a
         corner
  2-3 %  moments at nodes, which lose an order to the deflections, and buckling factors
  3 %    bending of bricks, whose parasitic shear and constant contraction in a layer fade with h^2
  5 %    the skew plate of 30 degrees, whose moments are infinite at the obtuse corners
  3 %    collapse of simply supported plates: the surface of the whole-section model is exact in pure bending, and the
         path is followed until the load grows by less than 1e-3
  10 %   collapse of clamped plates: the hinge at the edge lies at the integration points, 0.21 of an element inside it,
         and the load goes with the square of the span that is left
"""

from dataclasses import dataclass, field
from functools import lru_cache
import math

import curved_shells
import plastic_plates
import plates
import references
import solids
from shell_deck import FORMS


@dataclass
class Series:
    """One quantity of one form on a family of meshes."""

    quantity: str
    form: tuple
    reference: float
    source: str
    band: float  # of |ratio - 1| on the finest mesh; None: shown, not judged
    values: list = field(default_factory=list)  # pairs of mesh and value, the finest mesh last

    def ratio(self, i=-1):
        return self.values[i][1] / self.reference

    def good(self):
        return self.band is None or abs(self.ratio() - 1) <= self.band


@dataclass
class Family:
    name: str
    title: str
    text: str
    mesh: str  # what N counts
    series: list


def label(form):
    return f"{form[0]} {form[1].lower()}".strip()


def shorten(form, *parts):
    return "_".join([*map(str, parts), *form]).replace(" ", "_").replace(".", "p").replace("=", "")


MACNEAL = "MacNeal and Harder (1985)"
MEMBRANES = [("M3D3", ""), ("M3D4", "")]


def curved_family(runs, name, title, text, reference, source, band, problem, read, meshes, counted="elements per side"):
    """`reference`: a value, or a function of the form."""
    series = []
    for form in FORMS:
        one = Series("deflection", form, reference(form) if callable(reference) else reference, source, band)
        for n in meshes:
            run, nodes = runs.of(shorten(form, name, n), lambda: problem(form, n))
            one.values.append((n, read(run, nodes)))
        series.append(one)
    return Family(name, title, text, counted, series)


def scordelis_lo(runs):
    return curved_family(
        runs, "scordelis_lo", "Scordelis-Lo roof",
        "Radius 25, length 50, thickness 0.25, half angle 40 degrees, E 4.32e8, nu 0, weight 90 per unit area; a "
        "quarter. Deflection at the middle of the free edge. The published value is that of a shallow theory; "
        "elements of deep shells converge to 0.3006, the ratio 0.994.",
        -0.3024, "Scordelis and Lo (1964)", 0.02, curved_shells.scordelis_lo,
        lambda run, nodes: run.displacement(nodes["free edge"], "uz"), (4, 8, 16, 32, 64))


def pinched_cylinder(runs):
    return curved_family(
        runs, "pinched_cylinder", "Pinched cylinder with end diaphragms",
        "Radius 300, length 600, thickness 3, E 3e6, nu 0.3, two opposite unit forces; an eighth. Deflection under the "
        "force. Short waves around the forces make this the slowest of the curved shells to converge. With transverse "
        "shear the deflection under a point force has no limit: thick elements slowly exceed the value of the thin "
        "shell.",
        -1.8248e-5, "Lindberg, Olson and Cowper (1969)", 0.02, curved_shells.pinched_cylinder,
        lambda run, nodes: run.displacement(nodes["force"], "uz"), (4, 8, 16, 32, 64))


def pinched_hemisphere(runs):
    return curved_family(
        runs, "pinched_hemisphere", "Pinched hemisphere with a hole of 18 degrees",
        "Radius 10, thickness 0.04, E 6.825e7, nu 0.3, forces of 2 at the equator, alternately outwards and inwards; a "
        "quarter. Deflection under the force. Nearly inextensional: membrane locking shows on coarse meshes. Later "
        "converged values lie near 0.0930 (Simo, Fox and Rifai, 1989), the ratio 0.989.",
        0.0940, MACNEAL, 0.02, curved_shells.pinched_hemisphere,
        lambda run, nodes: run.displacement(nodes["outwards"], "ux"), (4, 8, 16, 32))


def twisted_beam(runs):
    series = []
    for thickness, load, values, meshes in ((0.32, 1.0, (0.005424, 0.001754), (2, 4, 8, 16)),
                                            (0.0032, 1e-6, (0.005256, 0.001294), (2, 4, 8, 16, 32))):
        for step, (direction, quantity) in enumerate((("uz", "in plane"), ("uy", "out of plane")), start=1):
            for form in FORMS:
                one = Series(f"t {thickness:g}, {quantity}", form, values[step - 1], MACNEAL, 0.02)
                for n in meshes:
                    run, nodes = runs.of(shorten(form, "twisted_beam", thickness, n),
                                         lambda: curved_shells.twisted_beam(form, n, thickness, load))
                    one.values.append((n, run.displacement(nodes["tip"], direction, step)))
                series.append(one)
    return Family(
        "twisted_beam", "Twisted beam",
        "Length 12, width 1.1, twisted by 90 degrees, E 29e6, nu 0.22, a unit force (1e-6 on the thin beam) at the "
        "tip, along the width or along the normal; N across, 6 N along. The Ritz method of `shell_ritz.py` gives "
        "0.005416 and 0.001753, thin 0.005241 and 0.001293. On a surface that is twisted everywhere the bending along "
        "the beam turns into rotations about the normal unless they are tied to the sheet: with `DRILLING=0` the "
        "deflections are up to 330 times too large. Quadrilaterals of this mesh are warped and have rigid offsets; on "
        "the thin beam the offsets are long compared with the thickness, and they converge slowly.", "elements across",
        series)


def curved_beam(runs):
    series = []
    for step, (direction, quantity) in enumerate((("ux", "in plane"), ("uz", "out of plane")), start=1):
        for form in FORMS:
            reference = references.curved_beam_in_plane() if step == 1 else references.curved_beam_out_of_plane(form)
            source = "Golovin (1881)" if step == 1 else "Castigliano (computed)"
            one = Series(quantity, form, reference, source, 0.02)
            for n in (2, 4, 8, 16):
                run, nodes = runs.of(shorten(form, "curved_beam", n), lambda: curved_shells.curved_beam(form, n))
                one.values.append((n, run.displacement(nodes["tip"], direction, step)))
            series.append(one)
    return Family(
        "curved_beam", "Curved beam of MacNeal and Harder",
        "A quarter of a flat ring, radii 4.12 and 4.32, thickness 0.1, E 1e7, nu 0.25, held at one end; a unit force "
        "at the other, along the radius or along the normal; N across, 24 N along. The published 0.08734 of the first "
        "load lies 1.4 per cent below the theory of elasticity. Under the second load the beam twists: its edges "
        "carry the shear of torsion in a strip as wide as the thickness, which a Kirchhoff plate does not have, so "
        "that it is 9 per cent stiffer; each theory has its own reference.",
        "elements across", series)


def raasch_hook(runs):
    return curved_family(
        runs, "raasch_hook", "Raasch hook",
        "A strip of width 20 and thickness 2 along two arcs, 60 degrees of radius 14 to one side and 150 degrees of "
        "radius 46 to the other, E 3300, nu 0.35, held at one end, a shear force of 8.7 along the width at the other; "
        "N across, 8 N along. The hook twists: with `DRILLING=0` its thick elements become softer without limit. As "
        "in the curved beam Kirchhoff's torsion is stiffer, and each theory has its own reference; thick elements "
        "resolve the edges once they are smaller than the thickness. 42.95 is published for the thick one (4.9366 "
        "under a unit force), of coarser meshes (Knight, 1997).",
        references.raasch_hook, "Ritz method (computed)", 0.02, curved_shells.raasch_hook,
        lambda run, nodes: run.displacement(nodes["tip"], "uz"), (2, 4, 8, 16, 32), "elements across")


def clamped_hypar(runs):
    return curved_family(
        runs, "clamped_hypar", "Clamped hyperbolic paraboloid",
        "Side 100, corners 10 above and below the middle, straight edges along x and y, thickness 0.8, E 28500, nu "
        "0.4, clamped on all sides, a load of 0.01 downwards. Deflection in the middle. Quadrilaterals are warped "
        "everywhere.",
        references.clamped_hypar, "Ritz method (computed)", 0.02, curved_shells.clamped_hypar,
        lambda run, nodes: run.displacement(nodes["middle"], "uz"), (4, 8, 16, 32, 64))


def cook(runs):
    series = []
    for form in [*FORMS, *MEMBRANES]:
        one = Series("deflection", form, references.cook(), "Ritz method (computed); Cook (1974)", 0.02)
        for n in (2, 4, 8, 16, 32, 64):
            run, nodes = runs.of(shorten(form, "cook", n), lambda: plates.cook(form, n))
            one.values.append((n, run.displacement(nodes["middle of the edge"], "uy")))
        series.append(one)
    return Family(
        "cook", "Cook's membrane",
        "A panel of width 48 between a held edge of 44 and an edge of 16 under a shear force of 1, in its plane; "
        "thickness 1, E 1, nu 1/3. Deflection in the middle of the loaded edge. The tie of the rotations stiffens "
        "shells of triangles by less than 1e-3.",
        "elements per side", series)


def square_deflections(runs):
    series = []
    flexural = references.flexural(plates.YOUNG, plates.POISSON, 1e-3)
    thin, moment = references.simple_square_thin()
    rows = [("simple", 1, "w, pressure", thin, "Navier's series (computed)", 0.01),
            ("simple", 2, "w, force", references.simple_square_force(), "Navier's series (computed)", 0.01),
            ("clamped", 1, "w, pressure", 0.00126532, "Ritz series (computed); Taylor and Govindjee (2004)", 0.01),
            ("clamped", 2, "w, force", 0.0056120, "Taylor and Govindjee (2004)", 0.01),
            ("simple", 1, "M middle", moment, "Navier's series (computed)", 0.02),
            ("clamped", 1, "M middle", 0.022905, "Taylor and Govindjee (2004)", 0.02),
            ("clamped", 1, "M edge", -0.0513, "Timoshenko and Woinowsky-Krieger (1959)", 0.03)]
    for support, step, quantity, reference, source, band in rows:
        for distorted in (False, True):
            if distorted and quantity != "w, pressure":
                continue
            for form in FORMS:
                name = f"{support}, {quantity}" + (", distorted" if distorted else "")
                one = Series(name, form, reference, source, band)
                for n in (4, 8, 16, 32):
                    deck = shorten(form, "square", support, "d" if distorted else "r", n)
                    run, nodes = runs.of(deck, lambda: plates.square_plate(form, n, support, 1e-3, distorted))
                    if quantity.startswith("w"):
                        value = run.displacement(nodes["middle"], "uz", step) * flexural
                    else:
                        node = nodes["middle" if quantity == "M middle" else "middle of the edge"]
                        value = run.stress(node, "sx_top", step) * 1e-6 / 6
                    one.values.append((n, value))
                series.append(one)
    return Family(
        "square_plate", "Square plates",
        "Side 1, thickness 1/1000, nu 0.3, unit pressure or a unit force in the middle; a quarter. Deflections by "
        "q a^4 / D and P a^2 / D, moments by q a^2, from the stresses averaged at the node.",
        "elements on half a side", series)


@lru_cache(maxsize=None)
def clamped_reference(ratio):
    return references.clamped_square_ritz(plates.POISSON, ratio, 7)


def thickness_sweep(runs):
    series = []
    for support in ("simple", "clamped"):
        for form in FORMS:
            for ratio in (1e-4, 1e-3, 1e-2, 0.05, 0.1, 0.2):
                if form[1] == "THIN":
                    reference = references.simple_square_thin()[0] if support == "simple" else 0.00126532
                    source = "Kirchhoff"
                elif support == "simple":
                    reference = references.simple_square_thick(plates.POISSON, ratio)
                    source = "Mindlin, series (computed)"
                else:
                    reference, source = clamped_reference(ratio), "Mindlin, Ritz series (computed)"
                one = Series(f"{support}, h/a {ratio:g}", form, reference, source, 0.01)
                for n in (8, 16):
                    run, nodes = runs.of(shorten(form, "sweep", support, ratio, n),
                                         lambda: plates.square_plate(form, n, support, ratio))
                    value = run.displacement(nodes["middle"], "uz")
                    one.values.append((n, value * references.flexural(plates.YOUNG, plates.POISSON, ratio)))
                series.append(one)
    return Family(
        "thickness", "Square plates from very thin to thick",
        "The same plates under pressure, thickness by side from 1e-4 to 0.2. Thin elements keep Kirchhoff's value "
        "whatever the thickness; thick ones must follow Mindlin's (shear factor 5/6) without locking at 1e-4.",
        "elements on half a side", series)


def circular_plates(runs):
    series = []
    for support in ("simple", "clamped"):
        for form in FORMS:
            for ratio in (0.01, 0.2) if form[1] == "THICK" else (0.01,):
                thick = form[1] == "THICK"
                w, middle, rim = references.circular(plates.POISSON, ratio, support, thick)
                wanted = [("w", w, 0.01), ("M middle", middle, 0.02)]
                if support == "clamped":
                    wanted.append(("M rim", rim, 0.03))
                for quantity, reference, band in wanted:
                    one = Series(f"{support}, h/R {ratio:g}, {quantity}", form, reference,
                                 "Timoshenko and Woinowsky-Krieger (1959)", band)
                    for n in (2, 4, 8, 16):
                        run, nodes = runs.of(shorten(form, "circular", support, ratio, n),
                                             lambda: plates.circular_plate(form, n, support, ratio))
                        if quantity == "w":
                            value = run.displacement(nodes["middle"], "uz") * references.flexural(
                                plates.YOUNG, plates.POISSON, ratio)
                        else:
                            node = nodes["rim" if quantity == "M rim" else "middle"]
                            value = run.stress(node, "sx_top") * ratio**2 / 6
                        one.values.append((n, value))
                    series.append(one)
    return Family(
        "circular_plate", "Circular plates",
        "Radius 1, nu 0.3, unit pressure; a quarter in three blocks of N by N. Deflections by q R^4 / D, moments by q "
        "R^2.",
        "elements on a side of a block", series)


def skew_plates(runs):
    series = []
    flexural = references.flexural(plates.YOUNG, plates.POISSON, 0.01)
    for degrees, reference, source, band in ((60.0, 0.002553, "Ritz series", 0.02),
                                             (30.0, 0.000408, "Morley (1963)", 0.05)):
        for form in FORMS:
            one = Series(f"{degrees:g} degrees, w", form, reference, source, band)
            for n in (4, 8, 16, 32, 64):
                run, nodes = runs.of(shorten(form, "skew", degrees, n),
                                     lambda: plates.skew_plate(form, n, degrees))
                one.values.append((n, run.displacement(nodes["middle"], "uz") * flexural))
            series.append(one)
    return Family(
        "skew_plate", "Skew plates",
        "Rhombic plates, side 1, thickness 1/100, simply supported (only deflections are held), unit pressure. "
        "Deflection in the middle by q a^4 / D. At the obtuse corners of the 30 degree plate the moments are "
        "infinite, and convergence is slow.", "elements per side", series)


BUCKLING = {"simple": (4.0, 2.0, 9.3246), "clamped": (10.074, 5.3036, 14.642)}


def buckling(runs):
    series = []
    unit = math.pi**2 * references.flexural(plates.YOUNG, plates.POISSON, 1e-3)
    for support, factors in BUCKLING.items():
        for step, (loading, reference) in enumerate(zip(("one way", "both ways", "shear"), factors), start=1):
            for form in FORMS:
                one = Series(f"{support}, {loading}, k", form, reference, "Ritz series; Timoshenko and Gere (1961)",
                             0.02)
                for n in (8, 16, 32):
                    run, _ = runs.of(shorten(form, "buckling", support, n),
                                     lambda: plates.plate_buckling(form, n, support))
                    one.values.append((n, run.mode(1, step) / unit))
                series.append(one)
    return Family(
        "plate_buckling", "Buckling of square plates",
        "Side 1, thickness 1/1000, compressed along x, along x and y, or sheared. k with N = k pi^2 D / a^2.",
        "elements per side", series)


FREQUENCIES = {"simple": (19.739, 49.348, 49.348, 78.957), "clamped": (35.985, 73.394, 73.394, 108.22)}
STEEL = {"free": (3, (1.622, 2.360, 2.922, 4.233, 4.233, 7.416)),
         "cantilever": (0, (0.421, 1.029, 2.582, 3.306, 3.753, 6.555))}


def frequencies(runs):
    series = []
    unit = math.sqrt(references.flexural(plates.YOUNG, plates.POISSON, 1e-3) / 1e-3) / (2 * math.pi)
    for support, values in FREQUENCIES.items():
        for number, reference in enumerate(values, start=1):
            for form in FORMS:
                one = Series(f"{support}, mode {number}", form, reference, "Leissa (1973)", 0.02)
                for n in (8, 16, 32):
                    run, _ = runs.of(shorten(form, "frequencies", support, n),
                                     lambda: plates.plate_frequencies(form, n, support))
                    one.values.append((n, run.mode(number) / unit))
                series.append(one)
    for support, (rigid, values) in STEEL.items():
        for number, reference in enumerate(values, start=1):
            for form in FORMS:
                one = Series(f"{support} plate of steel, mode {number}, Hz", form, reference, "NAFEMS (1990)", 0.02)
                for n in (8, 16, 32):
                    run, _ = runs.of(shorten(form, "steel", support, n), lambda: plates.steel_plate(form, n, support))
                    one.values.append((n, run.mode(rigid + number)))
                series.append(one)
    return Family(
        "plate_frequencies", "Frequencies of plates",
        "A square of side 1 and thickness 1/1000: omega a^2 sqrt(rho h / D). A square of steel, 10 by 10 by 0.05, "
        "free or held at one side.", "elements per side", series)


def patches(runs):
    series = []
    normal, shear = 1e6 / 0.75 * 1e-3, 1e6 / 2.5 * 1e-3
    for form in [*FORMS, *MEMBRANES]:
        run, _ = runs.of(shorten(form, "membrane_patch"), lambda: plates.membrane_patch(form))
        series += worst(run, form, "membrane", (("sx_top", normal), ("sy_bottom", normal), ("sxy_middle", shear)))
    flexural = 1e6 / (12 * (1 - 0.0625))  # 6 D / t^2 = E t / 2 (1 - nu^2), t = 1e-3
    bent, twisted = 6 * flexural * 1.25e-3 * 1e-3, 6 * flexural * 0.75 * 0.5e-3 * 1e-3
    for form in FORMS:
        run, _ = runs.of(shorten(form, "bending_patch"), lambda: plates.bending_patch(form))
        series += worst(run, form, "bending", (("sx_bottom", bent), ("sy_top", -bent), ("sxy_top", -twisted)))
    return Family(
        "patches", "Patches of MacNeal and Harder",
        "A sheet of 0.24 by 0.12, thickness 0.001, E 1e6, nu 0.25, in five distorted quadrilaterals or ten triangles, "
        "whose border follows a field of constant strain or constant curvature. The worst stress of all nodes.", "",
        series)


def worst(run, form, patch, columns):
    series = []
    for column, reference in columns:
        values = [float(row[column]) for row in run.stresses()]
        one = Series(f"{patch}, {column.replace('_', ' ')}", form, reference, MACNEAL, 1e-9)
        one.values.append((1, max(values, key=lambda v: abs(v / reference - 1))))
        series.append(one)
    return series


SEVEN_POINTS = references.moment_share(7)
HODGE, HOPKINS = "Hodge and Belytschko (1968)", "Hopkins and Wang (1955)"
PLASTIC_PLATES = ((plastic_plates.square, "simple", 25.019, HODGE, 0.03),
                  (plastic_plates.square, "clamped", 44.134, HODGE, 0.1),
                  (plastic_plates.circle, "simple", 6.516, HOPKINS, 0.03),
                  (plastic_plates.circle, "clamped", 12.552, HOPKINS, 0.1))
PLASTIC_MESHES = {"square": (4, 8, 16), "circle": (3, 6, 12)}
PLASTIC_MODELS = (("whole section", {"model": "SECTION"}, 1.0),
                  ("layered", {"model": "LAYERED", "points": 7}, SEVEN_POINTS))


def collapse(runs):
    series = []
    for plate, support, reference, source, band in PLASTIC_PLATES:
        for model, choice, share in PLASTIC_MODELS:
            for form in FORMS:
                one = Series(f"{plate.__name__}, {support}, {model}", form, reference, source, band)
                for n in PLASTIC_MESHES[plate.__name__]:
                    run, _ = runs.of(shorten(form, "collapse", plate.__name__, support, choice["model"], n),
                                     lambda: (plate(form, n, support, increments=500, **choice), None))
                    one.values.append((n, run.limit_load() / share))
                series.append(one)
    return Family(
        "collapse", "Collapse of square and circular plates",
        "Steel without hardening, von Mises, uniform load; a quarter, thickness 1/50 of the side, 1/25 of the radius. "
        "Load by Mp / L^2 or Mp / R^2, Mp = fy h^2 / 4. References are the best upper bounds of limit analysis for "
        "Kirchhoff plates; published bounds are 24.86 to 26.54 and 42.86 to 49.25 for the squares, 6.51 and 12.5 for "
        f"the circles. The layered model has seven points, whose rule gives {SEVEN_POINTS:.4f} of Mp: its loads are "
        "divided by that. The surface of the whole-section model is exact in pure bending and in pure tension; "
        "between them it lies from 3.6 per cent inside the exact one to 3.4 per cent outside.",
        "elements per side (square), per side of each of three blocks (circle)", series)


BRICKS, WEDGES = ("C3D8", ""), ("C3D6", "")


def solid_patch(runs):
    run, _ = runs.of("solid_patch", solids.patch)
    series = []
    for column, reference in (("sxx", 2000.0), ("syy", 2000.0), ("szz", 2000.0), ("sxy", 400.0), ("syz", 400.0),
                              ("sxz", 400.0)):
        values = [float(row[column]) for row in run.solids()]
        one = Series(f"stress {column[1:]}", BRICKS, reference, MACNEAL, 1e-9)
        one.values.append((1, max(values, key=lambda v: abs(v / reference - 1))))
        series.append(one)
    return Family(
        "solid_patch", "Solid patch of MacNeal and Harder",
        "A cube of side 1, E 1e6, nu 0.25, of a distorted brick and six around it, whose border follows a field of "
        "constant strain. The worst stress of all nodes. One brick of the published mesh has a negative volume at a "
        "corner, which a note reports.",
        "", series)


def solid_quantity(runs, problem, form, meshes, quantity, reference, source, band, read):
    one = Series(quantity, form, reference, source, band)
    for n in meshes:
        run, nodes = runs.of(shorten(form, problem.__name__, n), lambda: problem(form[0], n))
        one.values.append((n, read(run, nodes)))
    return one


def solid_beams(runs):
    meshes = (1, 2, 4)
    return Family(
        "solid_beams", "Cantilever and column of bricks",
        "The cantilever is 10 by 1 by 1 (nu 0.3) under a force at its end, by beam theory with shear; the column 20 "
        "by 1 by 1.5 (nu 0), Euler's load with shear. N layers across, 20 N elements along. Fully integrated bricks "
        "are too stiff in bending: their parasitic shear gives 1 + (l/h)^2 / 2 (1 + nu) for elements of length l in a "
        "beam of height h, whatever the number of layers, and a contraction that is constant in each layer adds up to "
        "0.35 / N^2 for nu 0.3. The coarse meshes show this. The column has l/h = 1/N: the factor is 1.5, 1.125, "
        "1.031. Wedges, whose strain is constant in the plane of bending, lock more and are shown without a band.",
        "layers across", [
            solid_quantity(runs, solids.cantilever, form, meshes, "cantilever, deflection",
                           solids.cantilever_deflection(),
                           "beam theory, Cowper (1966)", band, lambda run, nodes: run.displacement(nodes["tip"], "uy"))
            for form, band in ((BRICKS, 0.03), (WEDGES, None))] + [
            solid_quantity(runs, solids.column, BRICKS, (*meshes, 8), "column, buckling factor", solids.column_load(),
                           "Euler, Engesser (1891)", 0.03, lambda run, nodes: run.mode(1))])


def solid_cylinder(runs):
    series = []
    for form in (BRICKS, WEDGES):
        for place, radius in (("inside", 1.0), ("outside", 2.0)):
            series.append(solid_quantity(
                runs, solids.thick_cylinder, form, (2, 4, 8, 16), f"displacement {place}",
                solids.lame_displacement(radius),
                "Lame", 0.01, lambda run, nodes: run.displacement(nodes[place], "ux")))
    return Family("solid_cylinder", "Thick cylinder",
                  "Radii 1 and 2, unit pressure inside, nu 0.3, plane strain; a quarter. "
                  "The pressure acts on flat facets.", "elements through the wall", series)


def solid_bar(runs):
    series = [solid_quantity(runs, solids.vibrating_bar, BRICKS, (4, 8, 16), f"frequency {mode}",
                             solids.bar_frequency(mode),
                             "theory of the bar", 0.02, lambda run, nodes: run.mode(mode)) for mode in (1, 2, 3)]
    return Family("solid_bar", "Bar of bricks that vibrates along itself",
                  "Length 10, held at one end and across. Consistent masses "
                  "make linear elements too fast by (k l)^2 / 24, l being the length of an element.", "elements along",
                  series)


ALL = (patches, cook, curved_beam, scordelis_lo, pinched_cylinder, pinched_hemisphere, twisted_beam, raasch_hook,
       clamped_hypar, square_deflections, thickness_sweep,
       circular_plates, skew_plates, buckling, frequencies, collapse, solid_patch, solid_beams,
       solid_cylinder, solid_bar)
