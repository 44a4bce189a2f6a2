"""The programs that are compared, and what each is told to do."""

from typing import NamedTuple


class Program(NamedTuple):
    name: str
    package: str  # whose version is the program's; none for our own
    command: str  # in a folder with in.stl and the files of jobs/; writes out.stl
    method: str


PROGRAMS = [
    Program(
        "Meshvane",
        "",
        "meshvane-cli --force --quiet --x-scale 1.5 --y-scale 2 --z-scale 0.5"
        " --x-offset-after 1 --y-offset-after 2 --z-offset-after 3 in.stl out.stl",
        "the command, which does the same run as the window",
    ),
    Program(
        "VTK",
        "python3-vtk9",
        "/usr/bin/python3 vtk_job.py",
        "reader, transform filter, writer; merging of points off",
    ),
    Program("assimp", "libassimp-dev", "assimp_job", "importer without post-processing, exporter `stl`"),
    Program("FreeCAD", "freecad", "freecadcmd freecad_job.py", "the Mesh module, without a document"),
    Program(
        "MeshLab",
        "meshlab",
        "meshlabserver -i in.stl -o out.stl -m sa -s meshlab_job.mlx",
        "a filter script; the server needs a display with OpenGL",
    ),
    Program("Gmsh", "gmsh", "/usr/bin/python3 gmsh_job.py", "its Python interface: nodes and facets into a new model"),
    Program("OpenSCAD", "openscad", "openscad -o out.stl openscad_job.scad", "`translate`, `scale`, `import`"),
    Program(
        "Blender",
        "blender",
        "blender --background --factory-startup --python-exit-code 1 --python blender_job.py",
        "the faster of its two importers, an object's scale and location, the exporter",
    ),
]
