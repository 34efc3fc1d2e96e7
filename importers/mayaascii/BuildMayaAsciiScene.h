#pragma once
// Builds the record of a Maya ASCII file into the current stand-in scene as Maya holds the file once opened: its
// units, nodes with their DAG and instances, attribute values, dynamic attributes and connections, and the data the
// stand-in keeps outside attributes (mesh geometry, keys, skin weights, bind poses).

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <functional>
#include <string>

// How the scene reaches the files it names.
struct MaFileAccess {
    // The system path of a file the scene names as written (forward slashes, perhaps an absolute path of the
    // machine that saved it); empty when no such file can be found.
    std::function<std::string(const std::string& written)> Locate;
    // Reads a Maya ASCII file (a system path) into a record; false with result.Error when it cannot.
    std::function<bool(const std::string& path, MaRecord& record, ImportResult& result)> Read;
};

// Every command Maya would refuse (a node of a type the stand-in does not have, an attribute it lacks, values that
// do not fit) is passed over with a warning naming its line, as Maya reports it and goes on loading. Texture file
// names that can be located are given as the located paths, so that a scene saved on another machine finds the
// images beside it.
void BuildMayaAsciiScene(const MaRecord& record, const MaFileAccess& files, ImportResult& result);
