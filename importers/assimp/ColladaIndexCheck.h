#pragma once
// Assimp 5.2's COLLADA reader stops advancing at a stray character inside an index list (<p>, <vcount>, <v>,
// <h>) and keeps appending zeros until memory runs out, so such files are refused before Assimp sees them.

#include <string_view>

// False when an index list holds anything but digits, signs and white space.
bool ColladaIndexListsAreNumeric(std::string_view text);
