#pragma once
// A scene record and the importer's answer as bytes, so that a process which read a file can hand what it
// read to another. Both ends are the same build on the same machine: values keep their in-memory layout.

#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"

#include <string>
#include <string_view>

// read: whether reading succeeded (result.Error says why not).
std::string PackSceneRecord(bool read, const SceneRecord& record, const ImportResult& result);
// False when the bytes end early or hold more than a record: they did not come whole from PackSceneRecord.
bool UnpackSceneRecord(std::string_view bytes, bool& read, SceneRecord& record, ImportResult& result);
