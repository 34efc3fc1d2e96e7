#pragma once
// The weights a Maya ASCII file stores on a skin cluster (".wl[vertex].w[influence]"), gathered over its setAttr
// commands and given to the stand-in's cluster once its influences are connected.

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <maya/MObject.h>

#include <string>
#include <utility>
#include <vector>

class MaSkinWeights {
public:
    static bool Holds(const MaPlugPath& path);

    bool Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why);
    // Influences are the logical indices of the cluster's "matrix" elements, as the file names them.
    void Build(const MObject& skinCluster, const std::string& name, int line, ImportResult& result) const;

private:
    bool Set(size_t vertex, unsigned int influence, double weight, std::string& why);

    // Per vertex: (influence logical index, weight) in the order given.
    std::vector<std::vector<std::pair<unsigned int, double>>> m_weights;
    size_t m_given = 0;
};
