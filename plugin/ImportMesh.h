#pragma once
// The static translators' reader: a static mesh (.qmesh), its collision mesh (.qcolmesh), a model
// (.model) or an older world text file (*.V3D) back into Maya as one mesh with a new blinn shader, so that an exported asset can be
// looked at, edited or handed on.

#include <maya/MStatus.h>

#include <string>
#include <vector>

class MFileObject;
class VMessageBox;

// A mesh in Maya's terms: points in Maya's axes and centimetres, a corner count per polygon and
// the point numbers of every polygon's corners in order.
struct ImportedMesh {
    std::vector<float> Points;
    std::vector<int> Counts;
    std::vector<int> Connects;
};

// False with the reason in error for a file of another kind or one that cannot be read. Our own
// static and collision meshes come back where they were exported from (the inverse of the export's axes);
// models and world text files take Maya (x, y, z) = the file's (y, z, x).
bool LoadImportedMesh(const std::string& path, ImportedMesh& mesh, std::string& error);

// The reader: creates the mesh and assigns it a blinn shader. A mesh that Maya cannot create is
// shown in a message box ("Import error"); a file that cannot be read fails with its reason in
// Maya's script editor.
MStatus ImportMesh(const MFileObject& file, VMessageBox& messageBox);
