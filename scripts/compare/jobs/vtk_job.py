import sys

from vtkmodules.vtkCommonTransforms import vtkTransform
from vtkmodules.vtkFiltersGeneral import vtkTransformPolyDataFilter
from vtkmodules.vtkIOGeometry import vtkSTLReader, vtkSTLWriter

reader = vtkSTLReader()
reader.SetFileName("in.stl")
reader.MergingOff()

change = vtkTransform()
change.Translate(1, 2, 3)
change.Scale(1.5, 2, 0.5)
moved = vtkTransformPolyDataFilter()
moved.SetTransform(change)
moved.SetInputConnection(reader.GetOutputPort())

writer = vtkSTLWriter()
writer.SetFileName("out.stl")
writer.SetFileTypeToASCII()
writer.SetInputConnection(moved.GetOutputPort())
sys.exit(writer.Write() != 1)
