#pragma once
// Maya's skinning into the model's vertex weights, after the mesh pass has made the vertices and
// the bones: rigid skinning (joint clusters), smooth skinning (skin clusters), then a check that
// binds every vertex left without weights. Weights are taken as Maya gives them; limiting and
// normalising come later.

struct HarvestState;
class VMModel;
struct VMSkinVertex;

// The three passes below, in order, after the line "GetSkins()".
void GetSkins(HarvestState& state, VMModel& model);

// Every joint cluster in Maya's node order: its members' vertices get the joint's bone with the
// cluster's weight, when that weight is above 0.001.
void GetRigidSkins(HarvestState& state, VMModel& model);

// Every skin cluster in Maya's node order: each deformed mesh's vertices get their influences'
// bones (matched by full path name). With the option ExportBlended every weight above 0.001
// counts; without it only the strongest influence, at weight 1. An influence without a path
// raises "NULL bone found in skin influence list" and ends the smooth pass.
void GetSmoothSkins(HarvestState& state, VMModel& model);

// Vertices without weights: a split copy takes its source's weights, any other vertex the root
// bone at weight 1 (counted and raised as "Vertex without skinning information"). A skeleton
// without bones raises "No bones found in animation" instead.
void BindUnweightedVertices(HarvestState& state, VMModel& model);

// The model vertex of a Maya vertex of the mesh node table's entry; null when the index lies
// outside the node's vertices, so that weights of a mesh that changed since the mesh pass go
// nowhere.
VMSkinVertex* MeshNodeVertex(const HarvestState& state, const VMModel& model, int entry, int mayaIndex);
