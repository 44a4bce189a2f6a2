import bpy

bpy.ops.wm.read_factory_settings(use_empty=True)
bpy.ops.wm.stl_import(filepath="in.stl")
mesh = bpy.context.object
mesh.scale = (1.5, 2, 0.5)
mesh.location = (1, 2, 3)
bpy.ops.export_mesh.stl(filepath="out.stl", ascii=True)
