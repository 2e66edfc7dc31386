#!/usr/bin/env python3
"""Writes freecad_*.inp as FreeCAD's FEM workbench exports them, which needs freecad-python3 and gmsh; the tests read the
decks and do not need this program.

    freecad_exports.py FOLDER

A cantilever of 40 by 10 by 10 as tetrahedra, with a force at its end, and its frequencies; a shell and a beam of
the same length under a force. Units: mm, N, t.
"""
import pathlib
import shutil
import sys
import tempfile

sys.path += ["/usr/lib/freecad/lib", "/usr/lib/freecad-python3/lib", "/usr/share/freecad/Mod", "/usr/lib/freecad/Mod",
             "/usr/share/freecad/Mod/Fem", "/usr/lib/freecad/Mod/Fem"]
import FreeCAD  # noqa: E402
import Part  # noqa: E402
import ObjectsFem  # noqa: E402
from femmesh import meshsetsgetter  # noqa: E402
from femmesh.gmshtools import GmshTools  # noqa: E402
from femsolver.calculix.writer import FemInputWriterCcx  # noqa: E402
from femtools import membertools  # noqa: E402


def start(name):
    document = FreeCAD.newDocument(name)
    analysis = ObjectsFem.makeAnalysis(document, "Analysis")
    solver = ObjectsFem.makeSolverCalculixCcxTools(document, "CalculiXccxTools")
    analysis.addObject(solver)
    material = ObjectsFem.makeMaterialSolid(document, "MechanicalMaterial")
    material.Material = {**material.Material, "Name": "Steel-Generic", "YoungsModulus": "210000 MPa",
                         "PoissonRatio": "0.30", "Density": "7900 kg/m^3"}
    analysis.addObject(material)
    return document, analysis, solver


def shape_of(document, shape):
    feature = document.addObject("Part::Feature", "Shape")
    feature.Shape = shape
    document.recompute()
    return feature


def write(document, analysis, solver, feature, size, path):
    mesh = ObjectsFem.makeMeshGmsh(document, "FEMMeshGmsh")
    mesh.Part = feature
    mesh.CharacteristicLengthMax = size
    mesh.ElementOrder = "1st"
    analysis.addObject(mesh)
    document.recompute()
    GmshTools(mesh).create_mesh()
    getter = meshsetsgetter.MeshSetsGetter(analysis, solver, mesh, membertools.AnalysisMember(analysis))
    getter.get_mesh_sets()
    with tempfile.TemporaryDirectory() as folder:
        writer = FemInputWriterCcx(analysis, solver, mesh, getter.member, folder, getter.mat_geo_sets)
        shutil.copy(writer.write_solver_input(), path)


def fixed(document, analysis, feature, name):
    constraint = ObjectsFem.makeConstraintFixed(document, "ConstraintFixed")
    constraint.References = [(feature, name)]
    analysis.addObject(constraint)


def force(document, analysis, feature, name, value, direction):
    constraint = ObjectsFem.makeConstraintForce(document, "ConstraintForce")
    constraint.References = [(feature, name)]
    constraint.Force = value
    constraint.DirectionVector = FreeCAD.Vector(*direction)
    analysis.addObject(constraint)
    document.recompute()
    constraint.DirectionVector = FreeCAD.Vector(*direction)


def solid(path, frequencies=False):
    document, analysis, solver = start("solid")
    box = shape_of(document, Part.makeBox(40, 10, 10))
    fixed(document, analysis, box, "Face1")
    if frequencies:
        solver.AnalysisType = "frequency"
        solver.EigenmodesCount = 3
        solver.EigenmodeLowLimit, solver.EigenmodeHighLimit = 0.0, 1000000.0
    else:
        force(document, analysis, box, "Face2", 100.0, (0, 0, -1))
        pressure = ObjectsFem.makeConstraintPressure(document, "ConstraintPressure")
        pressure.References = [(box, "Face6")]
        pressure.Pressure = 0.5
        analysis.addObject(pressure)
    write(document, analysis, solver, box, 5, path)


def shell(path):
    document, analysis, solver = start("shell")
    plate = shape_of(document, Part.makePlane(40, 10))
    thickness = ObjectsFem.makeElementGeometry2D(document, 1.0, "ElementGeometry2D")
    analysis.addObject(thickness)
    fixed(document, analysis, plate, "Edge1")
    force(document, analysis, plate, "Edge3", 1.0, (0, 0, -1))
    write(document, analysis, solver, plate, 4, path)


def beam(path):
    document, analysis, solver = start("beam")
    line = shape_of(document, Part.makeLine(FreeCAD.Vector(0, 0, 0), FreeCAD.Vector(40, 0, 0)))
    section = ObjectsFem.makeElementGeometry1D(document, "Rectangular", 10.0, 10.0, "ElementGeometry1D")
    analysis.addObject(section)
    fixed(document, analysis, line, "Vertex1")
    force(document, analysis, line, "Vertex2", 100.0, (0, 0, -1))
    write(document, analysis, solver, line, 10, path)


if __name__ == "__main__":
    target = pathlib.Path(sys.argv[1])
    solid(target / "freecad_solid.inp")
    solid(target / "freecad_frequency.inp", frequencies=True)
    shell(target / "freecad_shell.inp")
    beam(target / "freecad_beam.inp")
