// Harvest through the Maya stand-in of two generated scenes of about a million triangles: a few hundred static
// mesh nodes (the precalculation pass and the static mesh pass), and one mesh skinned to 100 joints with four
// influences a vertex (the model's mesh pass with its bones, then the skins).

#include "../common/SkinnedGridScene.h"
#include "../common/TiledGridScene.h"
#include "harvest/CountTriangles.h"
#include "harvest/EnterBindPose.h"
#include "harvest/GetSkins.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/HarvestState.h"
#include "harvest/StaticSceneVisitor.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/KestrelReportMessage.h"


#include <benchmark/benchmark.h>

#include <chrono>


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

double SecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Argument: quads along the chain, with half as many across (1000 gives a million triangles).
void BM_HarvestSkinnedModel(benchmark::State& benchState)
{
    const int quadsX = static_cast<int>(benchState.range(0));
    BuildSkinnedGridScene(quadsX, quadsX / 2);
    KestrelReportMessage report;
    HarvestParameters parameters = Parameters();
    parameters.FormatKind = kFormatKindModel;
    parameters.Options.ExportBones = true;
    double meshSeconds = 0.0;
    double skinSeconds = 0.0;
    int64_t triangles = 0;
    for (auto _ : benchState) {
        HarvestState state(parameters, report);
        state.StartExport();
        CountTriangles(state);
        EnterBindPose(state);
        VMModel model;
        auto start = std::chrono::steady_clock::now();
        GetMeshes(state, model, 3);
        meshSeconds += SecondsSince(start);
        start = std::chrono::steady_clock::now();
        GetSkins(state, model);
        skinSeconds += SecondsSince(start);
        benchmark::DoNotOptimize(model.Vertices.Count());
        triangles = static_cast<int64_t>(model.Faces.Count()) * 2;
        report.Clear();
    }
    benchState.counters["triangles"] = static_cast<double>(triangles);
    benchState.counters["GetMeshes_s"] = benchmark::Counter(meshSeconds, benchmark::Counter::kAvgIterations);
    benchState.counters["GetSkins_s"] = benchmark::Counter(skinSeconds, benchmark::Counter::kAvgIterations);
}

BENCHMARK(BM_HarvestSkinnedModel)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond)->Iterations(2);

}
