#pragma once
// The geometry a Maya ASCII file stores on a mesh node (vertices, edges with their smoothing, polyFaces,
// UV sets, colour sets, user normals), gathered over the node's setAttr commands and built into the stand-in's
// shape once the file has been read.

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <maya/MObject.h>

#include <string>
#include <vector>

class MaMeshData {
public:
    // True for the attributes whose values this class keeps instead of the stand-in's plugs.
    static bool Holds(const MaPlugPath& path);

    // Keeps one setAttr of such an attribute; false with why when its values do not fit.
    bool Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why);
    // True when the file gave the node geometry of its own.
    bool HasGeometry() const { return !m_points.empty() || !m_faceChunks.empty(); }

    // Builds the geometry into the shape; what does not fit together (an edge naming a missing vertex, a face
    // naming a missing edge) is reported with the node's name and the line of its createNode.
    void Build(const MObject& shape, const std::string& name, int line, ImportResult& result) const;

private:
    struct UVSetData {
        std::string Name;
        std::vector<float> UV; // u, v pairs by UV id
    };
    struct ColorSetData {
        std::string Name;
        int Representation = 4; // channels per colour in the file: 1 alpha, 3 RGB, 4 RGBA
        std::vector<float> RGBA;
    };
    struct FaceChunk {
        unsigned int FirstFace = 0;
        std::shared_ptr<const MaPolyFaces> Faces;
    };

    static bool StoreColors(ColorSetData& colors, const MaPlugSegment& segment, const std::vector<double>& values,
                            std::string& why);

    std::vector<float> m_points;
    std::vector<int> m_edges; // three per edge: start vertex, end vertex, smooth (1) or hard (0)
    std::vector<FaceChunk> m_faceChunks;
    std::vector<UVSetData> m_uvSets;
    std::string m_currentUVSet;
    std::string m_currentColorSet;
    std::vector<ColorSetData> m_colorSets;
    std::vector<float> m_normals; // three per face-vertex; 1e20 where none is set
};
