// The Maya ASCII reader on generated scenes: a grid of quads with UVs, written as Maya writes a mesh (vertices,
// edges, polyFaces with UV ids), read from memory into the stand-in. ReadMayaAscii/<quads per side> gives the
// time per file size, which must stay flat as the file grows (linear reading); AgainstAssimpObj compares the
// 1,002,528-triangle grid (about 60 MB) with Assimp reading the same grid from an OBJ of about the same size
// into the stand-in, in the same binary.

#include "importers/BuildScene.h"
#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/ReadAssimpScene.h"
#include "importers/mayaascii/ImportMayaAscii.h"

#include <standin/SceneBuilder.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

// 708 x 708 quads are 1,002,528 triangles.
constexpr int kLargeGrid = 708;

template <typename... Values>
void Append(std::string& text, const char* format, Values... values)
{
    char line[96];
    const int written = std::snprintf(line, sizeof line, format, values...);
    text.append(line, static_cast<size_t>(written));
}

// Vertices of a gently waving grid, so that the numbers take as many digits as real scans do.
double Height(int x, int y) { return 0.001 * ((x * 7 + y * 13) % 1000) + 0.5; }

std::string MayaAsciiGrid(int n)
{
    const int row = n + 1;
    std::string text = "//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l centimeter -a degree -t film;\n"
                       "createNode transform -n \"grid\";\ncreateNode mesh -n \"gridShape\" -p \"grid\";\n";
    text += "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n\tsetAttr \".uvst[0].uvsp[0:" +
            std::to_string(row * row - 1) + "]\" -type \"float2\"";
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x)
            Append(text, " %.4f %.4f", static_cast<double>(x) / n, static_cast<double>(y) / n);
    text += ";\n\tsetAttr \".vt[0:" + std::to_string(row * row - 1) + "]\"";
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x)
            Append(text, " %.1f %.3f %.1f", x * 0.5, Height(x, y), y * 0.5);
    // Edges: the horizontal ones row by row, then the vertical ones; quad (x, y) has bottom edge y * n + x, top
    // edge (y + 1) * n + x, left edge h + y * row + x and right edge h + y * row + x + 1.
    const int horizontal = n * row;
    text += ";\n\tsetAttr \".ed[0:" + std::to_string(horizontal + n * row - 1) + "]\"";
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x < n; ++x)
            Append(text, " %d %d 0", y * row + x, y * row + x + 1);
    for (int y = 0; y < n; ++y)
        for (int x = 0; x <= n; ++x)
            Append(text, " %d %d 0", y * row + x, (y + 1) * row + x);
    text += ";\n\tsetAttr \".fc[0:" + std::to_string(n * n - 1) + "]\" -type \"polyFaces\"";
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const int bottom = y * n + x;
            const int top = (y + 1) * n + x;
            const int left = horizontal + y * row + x;
            const int corner = y * row + x;
            Append(text, " f 4 %d %d %d %d mu 0 4 %d %d %d %d", bottom, left + 1, -1 - top, -1 - left, corner, corner + 1,
                   corner + row + 1, corner + row);
        }
    text += ";\nconnectAttr \"gridShape.iog\" \":initialShadingGroup.dsm\" -na;\n// End of grid.ma\n";
    return text;
}

// The same grid as OBJ triangles with UVs and normals, which brings it to about the size of the Maya file.
std::string ObjGrid(int n)
{
    const int row = n + 1;
    std::string text = "o grid\n";
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x)
            Append(text, "v %.1f %.3f %.1f\n", x * 0.5, Height(x, y), y * 0.5);
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x)
            Append(text, "vt %.4f %.4f\n", static_cast<double>(x) / n, static_cast<double>(y) / n);
    text += "vn 0 1 0\n";
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const int a = y * row + x + 1;
            Append(text, "f %d/%d/1 %d/%d/1 %d/%d/1\n", a, a, a + 1, a + 1, a + row + 1, a + row + 1);
            Append(text, "f %d/%d/1 %d/%d/1 %d/%d/1\n", a, a, a + row + 1, a + row + 1, a + row, a + row);
        }
    return text;
}

void ReadMayaAscii(benchmark::State& state)
{
    const std::string text = MayaAsciiGrid(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        standin::NewScene();
        ImportResult result;
        if (!ImportMayaAsciiText(text, std::string(), result))
            state.SkipWithError(result.Error.c_str());
    }
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
    state.counters["s/GB"] = benchmark::Counter(static_cast<double>(text.size()) / 1e9,
                                                benchmark::Counter::kIsIterationInvariantRate |
                                                    benchmark::Counter::kInvert);
}
BENCHMARK(ReadMayaAscii)->Arg(100)->Arg(250)->Arg(500)->Arg(kLargeGrid)->Unit(benchmark::kMillisecond)->UseRealTime();

void AgainstAssimpObj(benchmark::State& state)
{
    const bool maya = state.range(0) == 0;
    const std::string text = maya ? MayaAsciiGrid(kLargeGrid) : ObjGrid(kLargeGrid);
    for (auto _ : state) {
        standin::NewScene();
        ImportResult result;
        SceneRecord record;
        const bool read = maya ? ImportMayaAsciiText(text, std::string(), result)
                               : ReadAssimpMemory(text.data(), text.size(), "obj", record, result) && BuildScene(record, result);
        if (!read)
            state.SkipWithError(result.Error.c_str());
    }
    state.SetLabel(maya ? "Maya ASCII" : "OBJ through Assimp");
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}
BENCHMARK(AgainstAssimpObj)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace
