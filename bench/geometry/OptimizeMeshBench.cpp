// OptimizeMesh on skinned models of 100k, 1M and 4M triangles harvested with one vertex per
// triangle corner and 100 bones, 4 influences per vertex, against meshoptimizer's exact vertex
// remap of the same corner records as the yardstick. Run one size at a time (--benchmark_filter)
// to read the peak memory of that size alone; see AdjustTrianglesBench.cpp for how the figures
// are taken.

#include "GeneratedMeshes.h"
#include "geometry/OptimizeMesh.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <meshoptimizer.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int BoneRows = 10;
constexpr int BoneCount = BoneRows * BoneRows;

// What identity compares of a skin vertex, as one record per corner.
struct SkinnedCorner {
    HarvestedCorner Base;
    float SecondUV[2];
    float Tangent[3];
    uint8_t Colour[4];
    uint32_t Bones[4];
    float Weights[4];
};

// The bones lie on a 10 x 10 grid over the mesh; each corner follows the four around it with
// bilinear weights, so corners at one position are bound alike.
std::vector<SkinnedCorner> Skin(const HarvestedMesh& mesh)
{
    float min[2] = {1e30f, 1e30f};
    float max[2] = {-1e30f, -1e30f};
    for (const HarvestedCorner& corner : mesh.Corners) {
        for (int axis = 0; axis < 2; ++axis) {
            min[axis] = std::min(min[axis], corner.Position[axis]);
            max[axis] = std::max(max[axis], corner.Position[axis]);
        }
    }
    std::vector<SkinnedCorner> corners(mesh.Corners.size());
    for (size_t i = 0; i < corners.size(); ++i) {
        SkinnedCorner& out = corners[i];
        out = SkinnedCorner {mesh.Corners[i], {0, 0}, {1, 0, 0}, {255, 255, 255, 255}, {}, {}};
        float cell[2];
        int low[2];
        for (int axis = 0; axis < 2; ++axis) {
            const float at = (out.Base.Position[axis] - min[axis]) / (max[axis] - min[axis]) * (BoneRows - 1);
            low[axis] = std::clamp(static_cast<int>(std::floor(at)), 0, BoneRows - 2);
            cell[axis] = at - static_cast<float>(low[axis]);
        }
        for (int k = 0; k < 4; ++k) {
            const int dx = k & 1;
            const int dy = k >> 1;
            out.Bones[k] = static_cast<uint32_t>((low[1] + dy) * BoneRows + low[0] + dx);
            out.Weights[k] = (dx ? cell[0] : 1.0f - cell[0]) * (dy ? cell[1] : 1.0f - cell[1]);
        }
    }
    return corners;
}

struct SkinnedMesh {
    int Triangles = 0;
    std::vector<SkinnedCorner> Corners;
};

const SkinnedMesh& Mesh(int triangles)
{
    static std::map<int, SkinnedMesh> cache;
    auto [it, added] = cache.try_emplace(triangles);
    if (added)
        it->second = SkinnedMesh {triangles, Skin(MakeNoisyTerrain(triangles, 5))};
    return it->second;
}

std::unique_ptr<VMModel> MakeSkinnedModel(const SkinnedMesh& mesh)
{
    auto model = std::make_unique<VMModel>();
    model->Skeleton = VMModel::NewSkeleton();
    std::vector<VMBone*> bones;
    for (int b = 0; b < BoneCount; ++b) {
        bones.push_back(VMModel::NewBone().release());
        bones.back()->Name = "bone" + std::to_string(b);
        model->Skeleton->Bones.Add(bones.back());
    }
    VMMaterial* material = VMModel::NewMaterial().release();
    model->Materials.Add(material);
    model->Vertices.Reserve(static_cast<int>(mesh.Corners.size()));
    for (const SkinnedCorner& corner : mesh.Corners) {
        VMSkinVertex* vertex = VMModel::NewVertex().release();
        std::copy_n(corner.Base.Position, 3, vertex->Position);
        std::copy_n(corner.Base.Normal, 3, vertex->Normal);
        std::copy_n(corner.Base.UV, 2, vertex->BaseUV);
        std::copy_n(corner.Tangent, 3, vertex->Tangent);
        vertex->MaterialLink = material;
        for (int k = 0; k < 4; ++k)
            AttachVertex(bones[corner.Bones[k]], vertex, corner.Weights[k]);
        model->Vertices.Add(vertex);
    }
    model->Faces.Reserve(mesh.Triangles);
    for (int t = 0; t < mesh.Triangles; ++t) {
        VMFace* face = VMModel::NewFace().release();
        for (int k = 0; k < 3; ++k)
            face->AddCorner(model->Vertices[3 * t + k]);
        face->SetMaterial(material);
        model->Faces.Add(face);
    }
    return model;
}

void OptimizeSkinnedMesh(benchmark::State& state)
{
    const SkinnedMesh& mesh = Mesh(static_cast<int>(state.range(0)));
    int vertices = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMModel> model = MakeSkinnedModel(mesh);
        malloc_trim(0);
        state.ResumeTiming();
        benchmark::DoNotOptimize(OptimizeMesh(*model, 0.0f));
        state.PauseTiming();
        vertices = model->Vertices.Count();
        model.reset();
        state.ResumeTiming();
    }
    state.counters["vertices"] = vertices;
    state.SetItemsProcessed(state.iterations() * mesh.Triangles);
}

void MeshoptSkinnedRemap(benchmark::State& state)
{
    const SkinnedMesh& mesh = Mesh(static_cast<int>(state.range(0)));
    std::vector<unsigned int> remap(mesh.Corners.size());
    size_t unique = 0;
    for (auto _ : state) {
        state.PauseTiming();
        malloc_trim(0);
        state.ResumeTiming();
        unique = meshopt_generateVertexRemap(remap.data(), nullptr, mesh.Corners.size(), mesh.Corners.data(),
                                             mesh.Corners.size(), sizeof(SkinnedCorner));
        benchmark::DoNotOptimize(remap.data());
    }
    state.counters["vertices"] = static_cast<double>(unique);
    state.SetItemsProcessed(state.iterations() * mesh.Triangles);
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles"});
    for (int triangles : {100000, 1000000, 4000000})
        benchmark->Args({triangles});
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5)->ReportAggregatesOnly(true);
    benchmark->ComputeStatistics("min", [](const std::vector<double>& runs) {
        return *std::min_element(runs.begin(), runs.end());
    });
}

} // namespace

BENCHMARK(MeshoptSkinnedRemap)->Apply(Sizes);
BENCHMARK(OptimizeSkinnedMesh)->Apply(Sizes);
