// Harvest of a generated scene of about a million triangles in a few hundred mesh nodes,
// through the Maya stand-in: the precalculation pass and the static mesh pass.

#include "../common/TiledGridScene.h"
#include "harvest/CountTriangles.h"
#include "harvest/HarvestState.h"
#include "harvest/StaticSceneVisitor.h"
#include "model/VMWorld.h"
#include "report/KestrelReportMessage.h"


#include <benchmark/benchmark.h>


namespace {

HarvestParameters Parameters()
{
    HarvestParameters parameters;
    parameters.FormatKind = kFormatKindStatic;
    parameters.Options.ExportTangents = true;
    return parameters;
}

void BM_HarvestStaticScene(benchmark::State& benchState)
{
    BuildTiledGridScene();
    KestrelReportMessage report;
    const HarvestParameters parameters = Parameters();
    int64_t triangles = 0;
    for (auto _ : benchState) {
        HarvestState state(parameters, report);
        state.StartExport();
        CountTriangles(state);
        state.MeshNodes.Reset(state.Stats.MeshNodeCount);
        StaticSceneVisitor visitor(state);
        visitor.Iterate(MDagPath(), false, true);
        VMWorld world;
        GetMeshes(state, world, visitor);
        benchmark::DoNotOptimize(world.Vertices.Count());
        triangles = static_cast<int64_t>(world.Polygons.Count()) * 2;
        report.Clear();
    }
    benchState.counters["triangles"] = static_cast<double>(triangles);
    benchState.counters["triangles/s"] =
        benchmark::Counter(static_cast<double>(triangles), benchmark::Counter::kIsIterationInvariantRate);
}

BENCHMARK(BM_HarvestStaticScene)->Unit(benchmark::kMillisecond)->Iterations(3);

}
