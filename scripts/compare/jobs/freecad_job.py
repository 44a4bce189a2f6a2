import FreeCAD
import Mesh

change = FreeCAD.Matrix()
change.scale(1.5, 2, 0.5)
change.move(1, 2, 3)
mesh = Mesh.Mesh("in.stl")
mesh.transform(change)
mesh.write("out.stl", "AST")
