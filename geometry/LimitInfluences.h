#pragma once
// Cutting each skin vertex's influences down to what the export options allow. Both passes keep
// bones and vertices in step (model/SkinInfluences.h).

class VMModel;

// While a vertex has more than maximum influences its weakest (the first of equal minima) is
// detached; then its weights are normalised, also when nothing was removed. A maximum outside
// 1..4 changes nothing and answers -1; else 0.
int LimitInfluences(VMModel& model, int maximum);

// On each vertex of two or more influences: normalise, and while the weakest weight lies strictly
// below threshold, detach it and normalise again. A vertex never loses its last influence. A
// threshold outside 0..0.5 (or not a number) changes nothing and answers -1; else 0.
int ApplyBlendThreshold(VMModel& model, float threshold);
