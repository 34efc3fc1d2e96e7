#include "importers/mayaascii/MayaAsciiSkinWeights.h"

#include <standin/SceneBuilder.h>

#include <algorithm>

namespace {

bool Named(const MaPlugSegment& segment, const char* longName, const char* shortName)
{
    return segment.Name == longName || segment.Name == shortName;
}

bool IsIndex(double value) { return value >= 0.0 && value <= 2147483647.0 && value == static_cast<double>(static_cast<long long>(value)); }

} // namespace

bool MaSkinWeights::Holds(const MaPlugPath& path) { return Named(path.Segments.front(), "weightList", "wl"); }

bool MaSkinWeights::Set(size_t vertex, unsigned int influence, double weight, std::string& why)
{
    // A vertex far beyond those weighted so far is a damaged file; every vertex of a skinned mesh has weights.
    if (vertex > m_weights.size() + 65536) {
        why = "it weights vertex " + std::to_string(vertex) + " far beyond the vertices before it";
        return false;
    }
    if (m_weights.size() <= vertex)
        m_weights.resize(vertex + 1);
    auto& row = m_weights[vertex];
    auto existing = std::find_if(row.begin(), row.end(), [&](const auto& entry) { return entry.first == influence; });
    if (existing != row.end())
        existing->second = weight;
    else
        row.emplace_back(influence, weight);
    ++m_given;
    return true;
}

bool MaSkinWeights::Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why)
{
    if (path.Segments.size() < 2)
        return true; // "setAttr -s 422 .wl" only announces how many vertices follow
    const MaPlugSegment& list = path.Segments[0];
    const MaPlugSegment& weights = path.Segments[1];
    if (!list.First || !Named(weights, "weights", "w")) {
        why = "skin weights are written as .wl[vertex].w[influence]";
        return false;
    }
    const std::vector<double>& values = set.Numbers;
    size_t at = 0;
    for (size_t vertex = *list.First; vertex <= list.Last; ++vertex) {
        if (weights.First) {
            // ".wl[v].w[a:b]" gives the weights of consecutive influences.
            for (unsigned int influence = *weights.First; influence <= weights.Last; ++influence) {
                if (at >= values.size()) {
                    why = "it gives fewer weights than it names";
                    return false;
                }
                if (!Set(vertex, influence, values[at++], why))
                    return false;
            }
            continue;
        }
        // ".wl[a:b].w" gives each vertex's weights sparsely: a count, then influence index and weight pairs.
        if (at >= values.size() || !IsIndex(values[at])) {
            why = "it gives no weight count for vertex " + std::to_string(vertex);
            return false;
        }
        const size_t count = static_cast<size_t>(values[at++]);
        for (size_t i = 0; i < count; ++i) {
            if (at + 1 >= values.size() || !IsIndex(values[at])) {
                why = "it gives fewer weights than it announces for vertex " + std::to_string(vertex);
                return false;
            }
            const auto influence = static_cast<unsigned int>(values[at]);
            if (!Set(vertex, influence, values[at + 1], why))
                return false;
            at += 2;
        }
    }
    if (at != values.size()) {
        why = "it gives more weights than it names";
        return false;
    }
    return true;
}

void MaSkinWeights::Build(const MObject& skinCluster, const std::string& name, int line, ImportResult& result) const
{
    if (m_given == 0)
        return;
    standin::SkinWeights weights;
    for (const auto& row : m_weights) {
        for (const auto& [influence, weight] : row)
            weights.Add(influence, weight);
        weights.EndVertex();
    }
    if (!standin::SetSkinWeights(skinCluster, 0, weights))
        result.Warn("the weights of the skin cluster '" + name + "' could not be set", line);
}
