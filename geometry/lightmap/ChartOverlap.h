#pragma once
// Whether a chart's flattening lays parts of it over each other although no face is folded.

struct Chart;

// True when the faces around some point wind more than once around it in the flattening (two
// fans that only meet at that point, opened on top of each other), or when two edges of the
// chart's border that share no point cross, touch or run along each other. A flattening without
// folded faces that passes both tests covers every spot of the plane at most once.
bool OverlapsItself(const Chart& chart);
