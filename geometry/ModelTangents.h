#pragma once
// Tangents for a model whose vertices carry none (a model read from a file that had none, or
// built by hand), made with our tangent-frame generator (TangentFrames.h).

class VMModel;

// Frames every skin vertex from the triangles around it. A vertex whose triangles disagree is
// split: the copy is appended to the vertex list, takes the triangles of its frame, names as its
// source the vertex it was split from (or that vertex's own source), and is bound to the bones
// of the vertex it was split from with the same weights. Each stored tangent is T - N (N . T) made
// unit length, with T the frame's unit tangent and N the vertex normal, and lengthened to
// 1.7320508 where the frame is mirrored ((N x T) . B > 0, B the frame's binormal), so that the
// engine can tell the mirrored side from its length; a tangent that comes out NaN or infinite
// becomes (1, 0, 0). Faces of other than three corners keep their corners and add to no frame.
// The model is then numbered and marked as carrying tangents. Answers 0, or -301 when memory
// runs out (the model is then unchanged).
int ComputeModelTangents(VMModel& model);
