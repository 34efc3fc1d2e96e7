#pragma once
// Assimp 5.2's COLLADA reader trusts the indices of a skin and the sizes of an accessor: a joint or weight index
// past its source, a <vertex_weights> list shorter than the mesh's positions, or an accessor claiming more values
// than its array holds make it read and write outside its buffers. Such files are refused before Assimp sees them.

#include <string>
#include <string_view>

// Empty when every accessor fits its array and every skin's indices stay inside their sources; otherwise what is
// wrong, for the user. A document that does not parse is left to Assimp, which names the XML error itself.
std::string ColladaSkinProblem(std::string_view text);
