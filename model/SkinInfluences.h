#pragma once
// The only ways to change a skin vertex's influences. A bone and its vertices mirror each other:
// the vertex names the bone in a slot exactly when the bone lists the vertex, with the same
// weight on both sides. Each slot also remembers where its entry sits in the bone's arrays, so
// that detaching costs the same for a bone of ten vertices and one of a million.
//
// A bone's arrays are unordered: detaching moves the bone's last entry into the freed place.
// A vertex's slots keep their order: detaching shifts the later slots down.

struct VMSkinVertex;
class VMBone;

// Weights below this are too small to matter to the engine and are never attached.
inline constexpr float SmallestAttachedWeight = 0.0009765625f;

// Adds the influence of bone with weight to vertex, on both sides. A weight below
// SmallestAttachedWeight (or not a number) attaches nothing and answers 0. A vertex with four influences makes room
// only for a weight strictly greater than its weakest one (the first of equal minima): that one
// is detached and the new influence takes the last slot; otherwise the vertex refuses and the
// answer is -1 with nothing changed. -1 also for a null bone or vertex. Otherwise 0.
int AttachVertex(VMBone* bone, VMSkinVertex* vertex, float weight);

// Removes the first influence of bone from vertex, on both sides. -1 (nothing changed) when the
// vertex has none, or for a null argument; else 0.
int DetachVertex(VMBone* bone, VMSkinVertex* vertex);

// Removes the influence in one slot, on both sides; for passes that choose an influence by its
// weight. The slot must be below the vertex's influence count.
void DetachSlot(VMSkinVertex& vertex, int slot);

// Brings the weights of the used slots to a sum of one, on both sides. The sum is formed in
// single precision; below 0.0001 the answer is -1 and nothing changes, strictly between 0.9999
// and 1.0001 nothing changes either. Answers 0 otherwise.
int NormalizeWeights(VMSkinVertex& vertex);

// The slot whose weight is the smallest (the first of equal minima); -1 without influences.
int WeakestSlot(const VMSkinVertex& vertex);
