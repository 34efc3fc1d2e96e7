#pragma once
// The text "kestrel info" prints for a scene loaded into the Maya stand-in: what Maya's outliner and hypershade
// would show, with the import's clips and warnings.

#include "importers/ImportResult.h"

#include <string>

std::string DescribeScene(const ImportResult& import);
