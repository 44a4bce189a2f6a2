import gmsh

gmsh.initialize()
gmsh.option.setNumber("General.Terminal", 0)
gmsh.option.setNumber("Mesh.Binary", 0)
gmsh.merge("in.stl")
nodes, coordinates, _ = gmsh.model.mesh.getNodes()
_, (facets,), (corners,) = gmsh.model.mesh.getElements(2)

gmsh.model.add("moved")
surface = gmsh.model.addDiscreteEntity(2)
moved = coordinates.reshape(-1, 3) * (1.5, 2, 0.5) + (1, 2, 3)
gmsh.model.mesh.addNodes(2, surface, nodes, moved.ravel())
gmsh.model.mesh.addElementsByType(surface, 2, facets, corners)
gmsh.write("out.stl")
gmsh.finalize()
