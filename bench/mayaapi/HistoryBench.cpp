#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <standin/SceneBuilder.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

// A 708 x 708 plane, triangulated (1,002,528 triangles), moved by a tweak and a blend shape whose target stores an
// offset for every vertex: the history a modelled and rigged mesh carries, evaluated whole at each weight.
constexpr int kCells = 708;

void BuildHistory()
{
  NewScene();
  CreateNode("polyPlane", "plane");
  SetAttr("plane.subdivisionsWidth", kCells);
  SetAttr("plane.subdivisionsHeight", kCells);
  CreateNode("polyTriangulate", "tri");
  CreateNode("tweak", "tweak1");
  SetAttr("tweak1.vlist[0].vertex[7]", 0.0, 1.0, 0.0);
  CreateNode("blendShape", "blend");
  const int vertices = (kCells + 1) * (kCells + 1);
  std::vector<MPoint> offsets(static_cast<size_t>(vertices), MPoint(0.0, 0.5, 0.0, 1.0));
  SetPoints("blend.it[0].itg[0].iti[6000].ipt", offsets);
  SetComponents("blend.it[0].itg[0].iti[6000].ict", {"vtx[0:" + std::to_string(vertices - 1) + "]"});
  ConnectAttr("plane.output", "tri.inputPolymesh");
  ConnectAttr("tri.output", "tweak1.input[0].inputGeometry");
  ConnectAttr("tweak1.outputGeometry[0]", "blend.input[0].inputGeometry");
  CreateNode("mesh", "gridShape");
  ConnectAttr("blend.outputGeometry[0]", "gridShape.inMesh");
}

void EvaluateTheWholeHistory(benchmark::State& state)
{
  BuildHistory();
  const MDagPath path = PathTo("gridShape");
  double weight = 0.0;
  for (auto _ : state) {
    SetAttr("blend.weight[0]", weight += 0.125);
    MFnMesh fn(path);
    benchmark::DoNotOptimize(fn.numPolygons());
  }
  state.counters["triangles"] = 2.0 * kCells * kCells;
}

}

BENCHMARK(EvaluateTheWholeHistory)->Unit(benchmark::kMillisecond)->Iterations(5);
