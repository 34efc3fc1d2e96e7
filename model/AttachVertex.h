#pragma once
// The only ways to change a skin influence: both keep the bone's vertex list and the vertex's
// slots in step, so that a bone lists a vertex exactly when the vertex lists the bone.

class VMBone;
struct VMSkinVertex;

// Weights below this are never stored.
inline constexpr float kSmallestStoredWeight = 0.0009765625f;

// Adds (bone, weight) to the vertex and the vertex to the bone. A weight below
// kSmallestStoredWeight attaches nothing and answers 0. A vertex with four influences gives up its
// weakest (the first of equal minima) for a strictly stronger one and refuses any other (-1, the
// bone unchanged). -1 for a null bone or vertex.
int AttachVertex(VMBone* bone, VMSkinVertex* vertex, float weight);

// Removes the vertex's slot for the bone (later slots move up) and the bone's entry for the
// vertex (later entries move up). -1 when either side does not hold the pair.
int DetachVertex(VMBone* bone, VMSkinVertex* vertex);
