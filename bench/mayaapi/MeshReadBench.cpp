#include <maya/MDagPath.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <standin/SceneBuilder.h>

#include <benchmark/benchmark.h>

namespace {

using namespace standin;

// A grid of quads split into triangles: 708 x 708 cells give 1,002,528 triangles.
constexpr int kCells = 708;

MObject BuildGrid()
{
  NewScene();
  MeshDescription description;
  UVSpec uvs;
  const int side = kCells + 1;
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      description.points.emplace_back(x, 0.01 * ((x * 7 + y * 13) % 5), y);
      uvs.u.push_back(static_cast<float>(x) / kCells);
      uvs.v.push_back(static_cast<float>(y) / kCells);
    }
  for (int y = 0; y < kCells; ++y)
    for (int x = 0; x < kCells; ++x) {
      const int a = y * side + x;
      for (int v : {a, a + side, a + 1, a + 1, a + side, a + side + 1}) {
        description.connects.push_back(v);
        uvs.ids.push_back(v);
      }
      description.counts.push_back(3);
      description.counts.push_back(3);
    }
  const MObject transform = CreateNode("transform", "grid");
  SetAttr("grid.translate", 1.0, 2.0, 3.0);
  const MObject shape = CreateMesh("gridShape", transform, description);
  SetUVs(shape, uvs);
  return shape;
}

void ComputeNormalsAndTangents(benchmark::State& state)
{
  for (auto _ : state) {
    state.PauseTiming();
    const MObject shape = BuildGrid();
    MFnMesh fn(shape);
    MFloatVectorArray tangents;
    state.ResumeTiming();
    fn.getFaceVertexTangents(0, tangents);
    benchmark::DoNotOptimize(tangents.length());
  }
  state.counters["triangles"] = 2.0 * kCells * kCells;
}

void ReadEveryCornerThroughIterators(benchmark::State& state)
{
  const MObject shape = BuildGrid();
  const MDagPath path = PathTo("|grid|gridShape");
  MFnMesh fn(path);
  MFloatVectorArray tangents;
  MFloatVectorArray binormals;
  fn.getFaceVertexTangents(0, tangents);
  const MString mapName("map1");
  for (auto _ : state) {
    double sum = 0.0;
    for (MItMeshVertex vertices(path); !vertices.isDone(); vertices.next())
      sum += vertices.position(MSpace::kWorld).x;
    MItMeshPolygon polygons(path);
    const int faceCount = static_cast<int>(polygons.count());
    for (int f = 0; f < faceCount; ++f) {
      int previous = 0;
      polygons.setIndex(f, previous);
      fn.getFaceVertexTangents(f, tangents);
      fn.getFaceVertexBinormals(f, binormals);
      const unsigned int corners = polygons.polygonVertexCount();
      for (unsigned int k = 0; k < corners; ++k) {
        int uv = 0;
        polygons.getUVIndex(static_cast<int>(k), uv, &mapName);
        MVector normal;
        polygons.getNormal(k, normal, MSpace::kWorld);
        sum += polygons.vertexIndex(static_cast<int>(k)) + uv + normal.y + tangents[k].x + binormals[k].z;
      }
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["triangles"] = 2.0 * kCells * kCells;
}

}

BENCHMARK(ComputeNormalsAndTangents)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(ReadEveryCornerThroughIterators)->Unit(benchmark::kMillisecond);
