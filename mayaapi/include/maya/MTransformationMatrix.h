#pragma once

class MTransformationMatrix {
public:
  enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };
};
