#pragma once
// Reads the text of a Maya ASCII file into a record of its commands. Nothing is built here.

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <string_view>

// False with result.Error naming the line when the text cannot be read as a whole (it ends inside a command or a
// string). A command Maya would refuse (an unknown flag, a value that is not a number, a polyFaces value out of
// shape) is passed over with a warning naming its line, as Maya reports it and goes on loading.
bool ParseMayaAscii(std::string_view text, MaRecord& record, ImportResult& result);
