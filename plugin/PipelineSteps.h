#pragma once
// What the model and the static geometry pipelines do alike around their phases.

#include <maya/MDagPath.h>

struct ExportSession;
class VExportState;
class VReport;

// The engine indexes a mesh's vertices with 16 bits where it can; beyond this the artist may be
// warned (WarnIfMoreThan64kVerts).
inline constexpr int MaxVerticesWithoutWarning = 65535;

// Hands the session's options, paths and flags to the harvest and empties its per-export helpers,
// the mesh node table sized by the precalculation.
void StartHarvest(ExportSession& session);

// With centre method 4 a nested export of a prefab node (root valid) is placed at that node.
void TakeRootPlacement(VExportState& state, int centerMethod, const MDagPath& root);

// A geometry pass that ran out of memory (-301) leaves the model or world as far as it got,
// which is still exported; the artist learns from the report, which names the pass, that it is
// incomplete.
void ReportPassResult(const char* pass, int result, VReport& report);

// MeshFactor scales only when it lies outside [0.99999, 1.00001].
bool NeedsScaling(float meshFactor);
