#pragma once
// The open parts of one mesh node while it is read. Everything is released with the record, on
// every exit path.

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <cstdint>
#include <memory>
#include <vector>

struct MeshAccess {
    MDagPath Path;
    MFnDagNode DagNode;
    MFnMesh Mesh;
    // The skin cluster's input mesh when the pre-skin mesh is read, else null.
    MObject InputMesh;
    std::unique_ptr<MItMeshPolygon> Polygons;
    std::unique_ptr<MItMeshVertex> Vertices;
    // Where the points read lie in the world: the path's inclusive matrix, or for a skin cluster's
    // input mesh the cluster's geomMatrix. Maya skins the input points from there, so that is where
    // they stand against the joints' bind matrices; an input mesh has no place of its own.
    MMatrix Placement;
    MMatrix PlacementInverse;

    // (u, 1 - v) pairs of the current UV set, by UV index.
    std::vector<float> BaseUVs;
    // (u, 1 - v) pairs of the "lightmap" set.
    std::vector<float> LightmapUVs;
    MString LightmapSetName;

    uint8_t InvalidUVIndexSeen = 0;
    uint8_t InvalidTangentsSeen = 0;

    MPoint WorldPosition() const { return Vertices->position(MSpace::kObject) * Placement; }
    int BaseUVCount() const { return static_cast<int>(BaseUVs.size() / 2); }
    int LightmapUVCount() const { return static_cast<int>(LightmapUVs.size() / 2); }
};

// Opens the node for reading, on the skin cluster's input mesh when usePreSkin is set and the
// node is skinned. False, with the reason traced, when the node cannot be read or has no
// vertices or no polygons.
bool OpenMeshAccess(MeshAccess& access, const MDagPath& path, bool usePreSkin);
