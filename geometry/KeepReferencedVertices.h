#pragma once
// Rebuilds a world's vertex list from the vertices that its primitives reference.
//
// The list is emptied and every vertex referenced by a polygon, a tri-list, a patch or a
// heightfield (in that order, corners in order) is appended once, in order of discovery; a
// vertex already appended carries ReferencedVertexMark in its index until the next enumeration.
// The vertices that nothing references leave the list and are freed. Logs the three survival
// lines. Every corner must be a vertex of the world's list. Answers 0, or -301 when memory runs out (the list is then left as it was).

#include <cstdint>

class VMWorld;

constexpr uint32_t ReferencedVertexMark = 0x0DA6D00Fu;

int KeepReferencedVertices(VMWorld& world);
