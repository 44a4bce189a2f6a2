translate([1, 2, 3]) scale([1.5, 2, 0.5]) import("in.stl");
