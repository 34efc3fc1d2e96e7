#pragma once
// What the model and the static geometry pipelines do alike around their phases.

struct ExportSession;
class VReport;

// The engine indexes a mesh's vertices with 16 bits where it can; beyond this the artist may be
// warned (WarnIfMoreThan64kVerts).
inline constexpr int MaxVerticesWithoutWarning = 65535;

// Hands the session's options, paths and flags to the harvest, once per export.
void FillHarvestParameters(ExportSession& session);

// A geometry pass that ran out of memory (-301) leaves the model or world as far as it got,
// which is still exported; the artist learns from the report, which names the pass, that it is
// incomplete.
void ReportPassResult(const char* pass, int result, VReport& report);

// MeshFactor scales only when it lies outside [0.99999, 1.00001].
bool NeedsScaling(float meshFactor);
