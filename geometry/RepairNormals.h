#pragma once
// Normal repair for worlds read from the older model file, whose vertex normals may be missing
// or unnormalised.

class VMWorld;

// Vertices whose normal has a squared length strictly between 0.9 and 1.1 keep it. The others
// get the sum, over the polygon corners that list them as sibling (themselves, or a sibling of
// the same group number sharing a smoothing-mask bit), of the corner angle times the polygon's
// face normal, then normalised; a normal that stays shorter than 1.1920929e-7 is left zero and
// counted in the log. Polygons of fewer than 3 corners are skipped. Sets every vertex's index
// to its list position. Answers 0.
int RepairNormals(VMWorld& world);
